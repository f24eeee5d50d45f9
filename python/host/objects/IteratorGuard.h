#pragma once

#include <span>
#include <vector>

#include "python/host/objects/NativeViews.h"
#include "tarvelon/platform/ruvo/HostValue.h"

namespace pyhost {

/// Guards iterators of sequences of enumeration values that a script creates. Their native iterators are
/// plain positions: after the element is removed, the iterator dangles, and the native library does not
/// detect that. Therefore each sequence has a list of its Python iterators, and the iterators whose element
/// is removed are marked before anybody can use them.
///
/// The sequence of a property needs no guard, because its native iterators detect changes.

/// Adds the iterator to the list of its sequence. The iterator gets a reference on the sequence.
void watchIterator(HostIterator& iterator, PyObject* sequence) noexcept;
/// Removes an iterator from the list of its sequence, before the iterator is freed.
void forgetIterator(HostIterator& iterator) noexcept;

/// The iterators whose elements a call is about to remove from a sequence. They are collected before the
/// call, with a reference on each. After the call, they are marked as retired.
class IteratorsToInvalidate {
 public:
  /// Collects nothing for a method that removes no elements. Raises K7Q.WrongValue if the given iterators are
  /// not a valid range. `converted` are the converted `arguments`.
  IteratorsToInvalidate(PyObject* sequence, std::string_view method, std::span<PyObject* const> arguments,
                        std::span<const ruvo::HostValue> converted);
  /// Collects the iterators of the elements in [first, last). REQUIRES: a sequence of enumeration values.
  IteratorsToInvalidate(PyObject* sequence, int first, int last);
  IteratorsToInvalidate(const IteratorsToInvalidate&) = delete;
  IteratorsToInvalidate& operator=(const IteratorsToInvalidate&) = delete;
  /// Marks the iterators if the sequence has become smaller. The call itself may have failed even then: it
  /// removes the elements, and then there may be no memory for its result.
  ~IteratorsToInvalidate() {
    if (!mIterators.empty() && mSequence.size() < mSize) mark();
  }
  void mark() const noexcept {
    for (const Reference& each : mIterators) reinterpret_cast<HostIterator*>(each.get())->isRetired = true;
  }

 private:
  NativeSequence mSequence;
  int mSize = 0;
  std::vector<Reference> mIterators;
};

}  // namespace pyhost
