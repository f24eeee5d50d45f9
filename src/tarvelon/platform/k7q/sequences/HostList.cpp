#include "tarvelon/platform/k7q/sequences/HostList.h"

#include <algorithm>
#include <utility>

#include "tarvelon/platform/k7q/sequences/HostListIterator.h"
#include "tarvelon/platform/k7q/values/Texts.h"

namespace K7Q {

RewritableIntf::~RewritableIntf() = default;

namespace {

using Generic::IteratorIntf;
using Generic::Ref;

void require(bool condition, const char* message, const std::string& detail, int line) {
  Asserter asserter(condition);
  AsserterEx<Exception>(asserter.Make(message)).handle(__FILE__, line, detail.c_str());
}

void require(bool condition, const char* message, int line = __builtin_LINE()) {
  LocalAsserter(__FILE__, line) = Asserter(condition).Make(message);
}

auto offset(std::size_t position) { return static_cast<std::ptrdiff_t>(position); }

}  // namespace

HostList::HostList(const ElementKind& kind, const ruvo::InternedName& elementClass, bool isUnique,
                   const ImmutableModel& model)
    : mKind(kind),
      mElementClass(elementClass),
      mModel(model),
      mDestructionsSeen(model.isNull() ? 0 : model.getModelInterface()->destructions()),
      mIndex(isUnique ? std::make_unique<Index>(0, Hash{&kind}, Same{&kind}) : nullptr) {}

HostList::~HostList() = default;

HostList::Elements& HostList::elements() const {
  if (!mModel.isNull()) mModel.requireValid(__FILE__, __LINE__);
  if (!mKind.isAlive) return mElements;
  // Without a model there is no counter of destructions to compare: the elements may belong to several
  // models.
  if (mModel.isNull()) {
    dropDead();
  } else if (const auto now = mModel.getModelInterface()->destructions(); now != mDestructionsSeen) {
    dropDead();
    mDestructionsSeen = now;
  }
  return mElements;
}

std::string HostList::shown() const {
  if (&mKind == &kTextElements) return "the sequence of texts";
  return "the sequence of " + std::string(mElementClass.empty() ? "objects" : mElementClass.view());
}

std::size_t HostList::checkedIndex(int index, std::size_t end, int line) const {
  if (index >= 0 && static_cast<std::size_t>(index) < end) return static_cast<std::size_t>(index);
  require(false, index < 0 ? text::kIndexNotPositive : text::kIndexOutOfBounds,
          text::indexDetail(shown(), index, mElements.size()), line);
  __builtin_unreachable();
}

void HostList::requireNotEmpty(int line) const {
  if (elements().empty()) require(false, text::kSequenceEmpty, shown(), line);
}

void HostList::dropDead() const {
  const auto isDead = [this](const Ref& ref) { return !mKind.isAlive(ref); };
  if (mIndex) {
    for (const Ref& ref : mElements) {
      if (isDead(ref)) mIndex->erase(ref.value());
    }
  }
  const std::size_t before = mElements.size();
  mElements.erase(std::remove_if(mElements.begin(), mElements.end(), isDead), mElements.end());
  if (mElements.size() != before) ++mChanges;
}

std::size_t HostList::find(const Ref& ref) const {
  const auto found = std::find_if(mElements.begin(), mElements.end(),
                                  [&ref](const Ref& element) { return element.equals(ref); });
  return static_cast<std::size_t>(found - mElements.begin());
}

bool HostList::holds(const Ref& ref) const {
  return mIndex ? mIndex->count(ref.value()) != 0 : find(ref) != mElements.size();
}

std::size_t HostList::positionOf(const IteratorIntf* iterator) const {
  const auto* position = dynamic_cast<const HostListIterator*>(iterator);
  require(position && position->list() == this, text::kIteratorOfOther);
  position->requireFresh();  // NOLINT(clang-analyzer-core.CallAndMessage): a null one was refused
  return position->position();
}

std::unique_ptr<HostListIterator> HostList::iteratorAt(std::size_t position) const {
  return std::make_unique<HostListIterator>(*this, position);
}

void HostList::addAt(std::size_t position, Ref ref) {
  const void* value = ref.value();
  if (mIndex && !mIndex->insert(value).second) return;
  try {
    mElements.insert(mElements.begin() + offset(position), std::move(ref));
  } catch (...) {
    if (mIndex) mIndex->erase(value);
    throw;
  }
  ++mChanges;
}

std::size_t HostList::placeOf(std::size_t position, const Ref& ref) const {
  if (!mIndex || !holds(ref)) return position;
  // Removing the element from its old position shifts the later elements forward by one.
  return find(ref) < position ? position - 1 : position;
}

void HostList::insertAt(std::size_t position, Ref ref) {
  if (mIndex && holds(ref)) {
    moveTo(find(ref), placeOf(position, ref));
  } else {
    addAt(position, std::move(ref));
  }
}

void HostList::moveTo(std::size_t from, std::size_t to) noexcept {
  if (from == to) return;
  const auto begin = mElements.begin();
  if (from < to) {
    std::rotate(begin + offset(from), begin + offset(from) + 1, begin + offset(to) + 1);
  } else {
    std::rotate(begin + offset(to), begin + offset(from), begin + offset(from) + 1);
  }
  ++mChanges;
}

void HostList::eraseRange(std::size_t first, std::size_t last) {
  if (first == last) return;
  for (std::size_t i = first; mIndex && i < last; ++i) mIndex->erase(mElements[i].value());
  mElements.erase(mElements.begin() + offset(first), mElements.begin() + offset(last));
  ++mChanges;
}

Ref HostList::generic_at(const Deviant& /*aDeviant*/, int index) const {
  const auto& all = elements();
  return all[checkedIndex(index, all.size())];
}

Ref HostList::generic_front(const Deviant& /*aDeviant*/) const {
  requireNotEmpty();
  return mElements.front();
}

Ref HostList::generic_back(const Deviant& /*aDeviant*/) const {
  requireNotEmpty();
  return mElements.back();
}

std::unique_ptr<IteratorIntf> HostList::generic_begin(const Deviant& /*aDeviant*/) const {
  elements();
  return iteratorAt(0);
}

std::unique_ptr<IteratorIntf> HostList::generic_end(const Deviant& /*aDeviant*/) const {
  return iteratorAt(elements().size());
}

void HostList::generic_clear(const Deviant& /*aDeviant*/) {
  elements();
  if (mElements.empty()) return;
  if (mIndex) mIndex->clear();
  mElements.clear();
  ++mChanges;
}

int HostList::generic_size(const Deviant& /*aDeviant*/) const { return static_cast<int>(elements().size()); }
bool HostList::generic_empty(const Deviant& /*aDeviant*/) const { return elements().empty(); }

void HostList::generic_insert(const Deviant& /*aDeviant*/, int index, Ref ref) {
  const std::size_t position = checkedIndex(index, elements().size() + 1);
  requireElement(ref);
  insertAt(position, std::move(ref));
}

std::unique_ptr<IteratorIntf> HostList::generic_insert(const Deviant& /*aDeviant*/,
                                                       const IteratorIntf* iterator, Ref ref) {
  elements();
  const std::size_t position = positionOf(iterator);
  requireElement(ref);
  auto result = iteratorAt(placeOf(position, ref));
  insertAt(position, std::move(ref));
  result->refresh();
  return result;
}

std::unique_ptr<IteratorIntf> HostList::generic_erase(const Deviant& /*aDeviant*/,
                                                      const IteratorIntf* iterator) {
  elements();
  const std::size_t position = positionOf(iterator);
  require(position < mElements.size(), text::kIteratorAtEnd);
  auto result = iteratorAt(position);
  eraseRange(position, position + 1);
  result->refresh();
  return result;
}

std::unique_ptr<IteratorIntf> HostList::generic_erase(const Deviant& /*aDeviant*/, const IteratorIntf* first,
                                                      const IteratorIntf* last) {
  elements();
  const std::size_t begin = positionOf(first);
  const std::size_t end = positionOf(last);
  require(begin <= end, text::kIndexOutOfBounds);
  auto result = iteratorAt(begin);
  eraseRange(begin, end);
  result->refresh();
  return result;
}

void HostList::generic_erase(const Deviant& /*aDeviant*/, int index) {
  const std::size_t position = checkedIndex(index, elements().size());
  eraseRange(position, position + 1);
}

void HostList::generic_pop_back(const Deviant& /*aDeviant*/) {
  requireNotEmpty();
  eraseRange(mElements.size() - 1, mElements.size());
}

void HostList::generic_pop_front(const Deviant& /*aDeviant*/) {
  requireNotEmpty();
  eraseRange(0, 1);
}

void HostList::generic_push_back(const Deviant& /*aDeviant*/, Ref ref) {
  const std::size_t end = elements().size();
  requireElement(ref);
  addAt(end, std::move(ref));
}

void HostList::generic_push_front(const Deviant& /*aDeviant*/, Ref ref) {
  elements();
  requireElement(ref);
  addAt(0, std::move(ref));
}

void HostList::generic_replace(const Deviant& /*aDeviant*/, int index, Ref ref) {
  const std::size_t position = checkedIndex(index, elements().size());
  requireElement(ref);
  Ref& element = mElements[position];
  if (element.equals(ref)) return;
  if (mIndex && holds(ref)) {
    std::swap(element, mElements[find(ref)]);
  } else {
    if (mIndex) {
      mIndex->insert(ref.value());
      mIndex->erase(element.value());
    }
    element = std::move(ref);
  }
  ++mChanges;
}

bool HostList::generic_contains(const Deviant& /*aDeviant*/, Ref ref) const {
  elements();
  return ref.value() && holds(ref);
}

const char* HostList::generic_getRuvoName(bool /*isSequenceImmutable*/, bool /*isElementImmutable*/,
                                          const char* name) const {
  return name;
}

int HostList::generic_removeAll(const Deviant& /*aDeviant*/, Ref ref) {
  const std::size_t before = elements().size();
  if (!ref.value() || (mIndex && mIndex->erase(ref.value()) == 0)) return 0;
  mElements.erase(std::remove_if(mElements.begin(), mElements.end(),
                                 [&ref](const Ref& element) { return element.equals(ref); }),
                  mElements.end());
  if (mElements.size() != before) ++mChanges;
  return static_cast<int>(before - mElements.size());
}

void HostList::rewrite(const Deviant& /*aDeviant*/, std::span<const Ref> given) {
  elements();
  for (const Ref& ref : given) requireElement(ref);
  auto index = mIndex ? std::make_unique<Index>(0, mIndex->hash_function(), mIndex->key_eq()) : nullptr;
  Elements taken;
  taken.reserve(given.size());
  for (const Ref& ref : given) {
    if (!index || index->insert(ref.value()).second) taken.push_back(ref);
  }
  const auto isSame = [](const Ref& left, const Ref& right) { return left.equals(right); };
  if (std::equal(taken.begin(), taken.end(), mElements.begin(), mElements.end(), isSame)) return;
  mElements.swap(taken);
  mIndex.swap(index);
  ++mChanges;
}

}  // namespace K7Q
