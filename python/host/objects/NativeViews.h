#pragma once

#include "python/host/objects/Objects.h"
#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/platform/k7q/sequences/Rewritable.h"

namespace pyhost {

/// Direct access to the native sequence of a Python object, for loops that read it in every iteration. The
/// caller must hold a reference on the Python object as long as it uses this access.
struct NativeSequence {
  K7Q::Generic::SequenceIntf* interface = nullptr;
  K7Q::Deviant deviant;

  explicit operator bool() const noexcept { return interface != nullptr; }
  int size() const { return interface->generic_size(deviant); }
};

/// The native sequence; empty if the object is not a sequence.
NativeSequence nativeSequence(PyObject* sequence) noexcept;

/// The sequence as a RewritableIntf, which checks its iterators itself and can be replaced as a whole. Null
/// for sequences of enumeration values that a script creates.
K7Q::RewritableIntf* asRewritable(const NativeSequence& sequence) noexcept;

/// The number of an enumeration value. REQUIRES: `value` is an enumeration value.
std::int32_t enumerationNumber(PyObject* value);

/// The native iterator; null if it no longer exists.
const K7Q::Generic::IteratorIntf* nativeIterator(const HostIterator& iterator) noexcept;

/// Whether an iterator is behind the last element, or on the first one. False if its sequence is not known.
bool standsAtEnd(const HostIterator& iterator);
bool standsAtBegin(const HostIterator& iterator);
/// Whether the iterator is invalid: its element was removed or the sequence has changed. An iterator at the
/// end is not stale.
bool isStale(const HostIterator& iterator);

}  // namespace pyhost
