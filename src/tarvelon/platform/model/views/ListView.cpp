#include "tarvelon/platform/model/views/ListView.h"

#include <string>
#include <vector>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/platform/k7q/values/Texts.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/values/Refusal.h"
#include "tarvelon/platform/model/views/ListIterator.h"

namespace Tarvelon::metamodel::native {

namespace {

/// Whether both hold objects, both texts or both enumeration values. Each kind is read in its own way.
bool holdsSameKind(const Property& left, const Property& right) noexcept {
  if (left.type() || right.type()) return left.type() && right.type();
  return left.storage() == right.storage();
}

}  // namespace

ListView::ListView(Instance& object, const Property& property, bool immutable)
    : mObject(&object), mProperty(&property), mIsImmutable(immutable || property.isReadOnly()) {
  mObject->addRef();
}

ListView::~ListView() { mObject->release(); }

bool ListView::isThere() const noexcept { return mObject->isAlive(); }

Instance& ListView::object() const {
  if (!mObject->isAlive()) {
    raiseAssertion(K7Q::kNullReference, nameOf(mObject->cls(), *mProperty) + ": " + lossOf(*mObject));
  }
  return *mObject;
}

void ListView::requireWritable(const K7Q::Deviant& deviant) const {
  const Instance& host = object();
  if (mIsImmutable) refuseImmutableView(host.cls(), *mProperty);
  K7Q::DeviantAssertions::assertWritable(deviant, mObject);
}

void ListView::requireElement() const {
  if (count() == 0) raiseAssertion("sequence is empty", nameOf(object().cls(), *mProperty));
}

/// `limit` itself is not allowed.
std::uint32_t ListView::requireIndex(std::int64_t index, std::uint32_t limit) const {
  if (index >= 0 && index < std::int64_t{limit}) return static_cast<std::uint32_t>(index);
  raiseAssertion(index < 0 ? "sequence index must be positive" : "sequence index out of bounds",
                 K7Q::text::indexDetail(nameOf(object().cls(), *mProperty), index, count()));
}

std::uint32_t ListView::positionOf(const K7Q::Generic::IteratorIntf* iterator) const {
  if (!iterator) raiseNullReference();
  const auto* own = dynamic_cast<const ListIterator*>(iterator);
  if (!own || !own->view().showsSameAs(*this)) refuseIterator(object().cls(), *mProperty);
  requireFresh(*own);
  return requireIndex(own->index(), count() + 1);
}

void ListView::requireFresh(const ListIterator& iterator) const {
  if (iterator.isStale()) refuseStaleIterator(object().cls(), *mProperty);
}

std::unique_ptr<ListIterator> ListView::iteratorAt(std::uint32_t index) const {
  return std::make_unique<ListIterator>(*this, static_cast<int>(index));
}

ListView::Ref ListView::generic_at(const K7Q::Deviant& aDeviant, int index) const {
  return refAt(requireIndex(index, count()), aDeviant);
}

ListView::Ref ListView::generic_front(const K7Q::Deviant& aDeviant) const {
  requireElement();
  return refAt(0, aDeviant);
}

ListView::Ref ListView::generic_back(const K7Q::Deviant& aDeviant) const {
  requireElement();
  return refAt(count() - 1, aDeviant);
}

ListView::Iterator ListView::generic_begin(const K7Q::Deviant& /*aDeviant*/) const {
  object();
  return iteratorAt(0);
}

ListView::Iterator ListView::generic_end(const K7Q::Deviant& /*aDeviant*/) const {
  return iteratorAt(count());
}

int ListView::generic_size(const K7Q::Deviant& /*aDeviant*/) const { return static_cast<int>(count()); }

bool ListView::generic_empty(const K7Q::Deviant& /*aDeviant*/) const { return count() == 0; }

void ListView::generic_clear(const K7Q::Deviant& aDeviant) {
  requireWritable(aDeviant);
  if (count() != 0) eraseAt(0, count());
}

void ListView::generic_insert(const K7Q::Deviant& aDeviant, int index, Ref ref) {
  requireWritable(aDeviant);
  const std::uint32_t place = requireIndex(index, count() + 1);
  check(ref);
  insertAt(place, ref);
}

ListView::Iterator ListView::generic_insert(const K7Q::Deviant& aDeviant,
                                            const K7Q::Generic::IteratorIntf* iterator, Ref ref) {
  requireWritable(aDeviant);
  const std::uint32_t place = positionOf(iterator);
  check(ref);
  auto result = iteratorAt(place);
  result->moveTo(insertAt(place, ref));
  return result;
}

ListView::Iterator ListView::generic_erase(const K7Q::Deviant& aDeviant,
                                           const K7Q::Generic::IteratorIntf* iterator) {
  requireWritable(aDeviant);
  const std::uint32_t place = requireIndex(positionOf(iterator), count());
  auto result = iteratorAt(place);
  eraseAt(place, place + 1);
  result->refresh();
  return result;
}

ListView::Iterator ListView::generic_erase(const K7Q::Deviant& aDeviant,
                                           const K7Q::Generic::IteratorIntf* first,
                                           const K7Q::Generic::IteratorIntf* last) {
  requireWritable(aDeviant);
  const std::uint32_t end = positionOf(last);
  const std::uint32_t start = requireIndex(positionOf(first), end + 1);
  auto result = iteratorAt(start);
  if (start != end) eraseAt(start, end);
  result->refresh();
  return result;
}

void ListView::generic_erase(const K7Q::Deviant& aDeviant, int index) {
  requireWritable(aDeviant);
  const std::uint32_t place = requireIndex(index, count());
  eraseAt(place, place + 1);
}

void ListView::generic_pop_back(const K7Q::Deviant& aDeviant) {
  requireWritable(aDeviant);
  requireElement();
  eraseAt(count() - 1, count());
}

void ListView::generic_pop_front(const K7Q::Deviant& aDeviant) {
  requireWritable(aDeviant);
  requireElement();
  eraseAt(0, 1);
}

void ListView::generic_push_back(const K7Q::Deviant& aDeviant, Ref ref) {
  requireWritable(aDeviant);
  check(ref);
  append(ref);
}

void ListView::generic_push_front(const K7Q::Deviant& aDeviant, Ref ref) {
  requireWritable(aDeviant);
  check(ref);
  prepend(ref);
}

void ListView::generic_replace(const K7Q::Deviant& aDeviant, int index, Ref ref) {
  requireWritable(aDeviant);
  const std::uint32_t place = requireIndex(index, count());
  check(ref);
  replaceAt(place, ref);
}

bool ListView::generic_contains(const K7Q::Deviant& /*aDeviant*/, Ref ref) const {
  object();
  return contains(ref);
}

int ListView::generic_removeAll(const K7Q::Deviant& aDeviant, Ref ref) {
  requireWritable(aDeviant);
  if (!contains(ref)) return 0;
  Batch batch(object().model());
  int removed = 0;
  for (std::uint32_t index = count(); index-- > 0;) {
    if (!isAt(index, ref)) continue;
    eraseAt(index, index + 1);
    ++removed;
  }
  return removed;
}

void ListView::rewrite(const K7Q::Deviant& aDeviant, std::span<const Ref> elements) {
  requireWritable(aDeviant);
  for (const Ref& element : elements) check(element);
  // Several changes that must be applied together: the journal undoes them if a later one runs out of memory.
  NativeModel& model = object().model();
  model.requireJournal();
  Batch batch(model);
  rewriteAs(elements);
}

bool ListView::specialized_equal(const SequenceIntf* other) const {
  const K7Q::Deviant deviant;
  if (!other || other->generic_size(deviant) != generic_size(deviant)) return false;
  for (std::uint32_t index = 0; index < count(); ++index) {
    if (!refAt(index, deviant).equals(other->generic_at(deviant, static_cast<int>(index)))) return false;
  }
  return true;
}

bool ListView::specialized_assign(const SequenceIntf* other) {
  const K7Q::Deviant deviant;
  requireWritable(deviant);
  const auto* source = dynamic_cast<const ListView*>(other);
  if (!source || !holdsSameKind(*source->mProperty, *mProperty)) return false;
  // Copied first: the other view may be this one, or may lose elements that this one takes over.
  std::vector<Ref> elements;
  for (std::uint32_t index = 0; index < source->count(); ++index) {
    elements.push_back(source->refAt(index, deviant));
  }
  rewrite(deviant, elements);
  return true;
}

}  // namespace Tarvelon::metamodel::native
