#include "python/host/sequences/SequenceContents.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <unordered_set>

#include "python/host/objects/ElementReader.h"
#include "python/host/objects/IteratorGuard.h"
#include "python/host/objects/Values.h"
#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/boundary/tarvelon/PrimitiveCell.h"

namespace pyhost {

namespace {

using K7Q::Generic::Ref;
using K7Q::NSInterface::ObjectIntf;
using K7Q::NSInterface::StringIntf;
using Numbers = std::vector<std::int32_t>;

std::u16string_view textOf(const Ref& element) noexcept {
  return static_cast<const StringIntf*>(element.value())->view();
}
std::int32_t numberOf(const Ref& element) noexcept {
  return *static_cast<const std::int32_t*>(element.value());
}

Ref textElement(PyObject* value, const std::string& where) {
  TextBuffer texts;
  try {
    return K7Q::makeStringRef(K7Q::String(std::u16string(texts.convert(value))));
  } catch (const RefusedText& refused) {
    raiseRefused(refused, value, where);
  }
}

/// Writes enumeration values into a sequence that only has operations for single elements.
///
/// A unique sequence ignores a value that it holds at another index. So each index that changes first gets a
/// number that no element has, and then its new value. All memory is allocated before the first change.
class NumberWriter {
 public:
  NumberWriter(const NativeSequence& sequence, const Numbers& before, const Numbers& after)
      : mSequence(sequence), mBefore(before.size()), mAfter(after.size()) {
    const std::size_t least = std::min(mBefore, mAfter);
    while (mHead < least && before[mHead] == after[mHead]) ++mHead;
    while (mTail < least - mHead && before[mBefore - mTail - 1] == after[mAfter - mTail - 1]) ++mTail;
    std::unordered_set<std::int32_t> taken(before.begin(), before.end());
    taken.insert(after.begin(), after.end());
    std::int32_t unused = std::numeric_limits<std::int32_t>::min();
    for (std::size_t place = mHead; place < mAfter - mTail; ++place, ++unused) {
      while (taken.contains(unused)) ++unused;
      mUnused.push_back(K7Q::makeNumberRef(unused));
      mElements.push_back(K7Q::makeNumberRef(after[place]));
    }
  }

  void write(PyObject* sequence) const {
    if (mAfter < mBefore) {
      shrink(sequence);
    } else {
      grow();
    }
    for (const auto* round : {&mUnused, &mElements}) {
      for (std::size_t i = 0; i < round->size(); ++i) {
        mSequence.interface->generic_replace(mSequence.deviant, static_cast<int>(mHead + i), (*round)[i]);
      }
    }
  }

 private:
  void grow() const {
    const auto first = static_cast<int>(mBefore - mTail);
    const auto last = static_cast<int>(mAfter - mTail);
    for (int place = first; place < last; ++place) {
      try {
        mSequence.interface->generic_insert(mSequence.deviant, place,
                                            mUnused[static_cast<std::size_t>(place) - mHead]);
      } catch (...) {
        while (place-- > first) mSequence.interface->generic_erase(mSequence.deviant, place);
        throw;
      }
    }
  }
  void shrink(PyObject* sequence) const {
    const auto first = static_cast<int>(mAfter - mTail);
    const auto last = static_cast<int>(mBefore - mTail);
    const IteratorsToInvalidate iterators(sequence, first, last);
    for (int place = last; place-- > first;) mSequence.interface->generic_erase(mSequence.deviant, place);
    iterators.mark();
  }

  const NativeSequence& mSequence;
  std::size_t mBefore;
  std::size_t mAfter;
  /// The number of elements at the front that do not change; mTail is the number of those at the end. These
  /// elements are not written.
  std::size_t mHead = 0;
  std::size_t mTail = 0;
  Contents mUnused;
  Contents mElements;
};

}  // namespace

SequenceContents::SequenceContents(PyObject* sequence)
    : mSequence(sequence), mNative(nativeSequence(sequence)), mHeld(mNative.interface, mNative.deviant) {
  const ElementReader reader(sequence);
  // Raises if the sequence no longer exists.
  static_cast<void>(reader.size());
  mElements = elementsOf(*typeOf(sequence));
  mElementClass = ruvo::Class::find(typeOf(sequence)->at->getSignature()->result());
}

Contents SequenceContents::read() const {
  Contents contents;
  const int size = mNative.size();
  for (int index = 0; index < size; ++index) {
    contents.push_back(mNative.interface->generic_at(mNative.deviant, index));
  }
  return contents;
}

Ref SequenceContents::element(PyObject* value, const std::string& where) const {
  const bool isText = mElements == Elements::Texts;
  if (isText && PyUnicode_Check(value)) return textElement(value, where);
  if (isText || !isHostObject(value) || !mElementClass || !typeOf(value)->cls->isKindOf(*mElementClass)) {
    const std::string expected = isText ? "a str" : std::string(mElementClass->getFullName().view());
    raise(errors().wrongType, where + "expected " + expected + ", got " + describePython(value));
  }
  if (mElements == Elements::Values) return K7Q::makeNumberRef(enumerationNumber(value));
  const auto info =
      K7Q::DeviantRegistry::getVariantInfo(interfaceOf(value)->getBoundPointer(ruvo::InternedName()));
  auto* object =
      info.object ? static_cast<ObjectIntf*>(info.object->cast(K7Q::tagsOf<ObjectIntf>())) : nullptr;
  return K7Q::makeObjectRef(object, info.deviant);
}

bool SequenceContents::isUnique() const {
  if (const auto* rewritable = asRewritable(mNative)) return rewritable->isUnique();
  // The sequence has no function that tells this. So its last element is appended a second time: a unique
  // sequence ignores this. Removing the appended element affects no other element and no iterator.
  auto& sequence = *mNative.interface;
  const bool isEmpty = sequence.generic_empty(mNative.deviant);
  if (isEmpty) sequence.generic_push_back(mNative.deviant, K7Q::makeNumberRef(0));
  const int size = mNative.size();
  try {
    sequence.generic_push_back(mNative.deviant, sequence.generic_back(mNative.deviant));
  } catch (...) {
    if (isEmpty) sequence.generic_pop_back(mNative.deviant);
    throw;
  }
  const bool isUnique = mNative.size() == size;
  if (!isUnique) sequence.generic_pop_back(mNative.deviant);
  if (isEmpty) sequence.generic_pop_back(mNative.deviant);
  return isUnique;
}

bool SequenceContents::keepsIterators() const noexcept { return asRewritable(mNative) == nullptr; }

void SequenceContents::write(const Contents& contents) const {
  if (auto* rewritable = asRewritable(mNative)) {
    rewritable->rewrite(mNative.deviant, contents);
  } else {
    writeNumbers(contents);
  }
}

void SequenceContents::writeNumbers(const Contents& contents) const {
  Numbers before;
  for (const Ref& element : read()) before.push_back(numberOf(element));
  Numbers after;
  for (const Ref& element : contents) after.push_back(numberOf(element));
  NumberWriter(mNative, before, after).write(mSequence);
}

std::size_t SequenceContents::hash(const Ref& element) const noexcept {
  switch (mElements) {
    case Elements::Texts:
      return std::hash<std::u16string_view>()(textOf(element));
    case Elements::Values:
      return std::hash<std::int32_t>()(numberOf(element));
    default:
      return std::hash<const void*>()(element.value());
  }
}

bool SequenceContents::isSame(const Ref& left, const Ref& right) const noexcept {
  switch (mElements) {
    case Elements::Texts:
      return textOf(left) == textOf(right);
    case Elements::Values:
      return numberOf(left) == numberOf(right);
    default:
      return left.value() == right.value();
  }
}

}  // namespace pyhost
