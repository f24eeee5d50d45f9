#pragma once

#include <span>
#include <vector>

#include "python/host/NativeViews.h"
#include "tarvelon/platform/ruvo/HostValue.h"

namespace pyhost {

/// Native iterators over a made sequence of enumeration values are bare places: one whose element has been
/// taken out dangles, and nothing in the native library tells. Here each sequence knows the Python iterators
/// that walk it, and those whose element goes are marked before anybody reads through them.
///
/// The sequence of a property needs none of this: its native iterators know that they are stale.

/// Makes the sequence know an iterator that walks it, and the iterator hold the sequence.
void watchIterator(HostIterator& iterator, PyObject* sequence) noexcept;
/// The sequence forgets the iterator, which is about to go.
void forgetIterator(HostIterator& iterator) noexcept;

/// The iterators whose elements a call is about to take out of a sequence: found and held before it, marked
/// behind it, when it has taken them out.
class IteratorsToRetire {
 public:
  /// Nothing for a method that takes no element out. Raises K7Q.WrongValue for iterators that name no
  /// elements. `converted` is what the call takes for `arguments`.
  IteratorsToRetire(PyObject* sequence, std::string_view method, std::span<PyObject* const> arguments,
                    std::span<const ruvo::HostValue> converted);
  /// The same for what stands from one index up to another. REQUIRES: a sequence of enumeration values.
  IteratorsToRetire(PyObject* sequence, int first, int last);
  IteratorsToRetire(const IteratorsToRetire&) = delete;
  IteratorsToRetire& operator=(const IteratorsToRetire&) = delete;
  /// A call may fail behind its change, when there is no memory for the result: the size tells.
  ~IteratorsToRetire() {
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
