#pragma once

#include "python/host/Objects.h"
#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/platform/k7q/sequences/Rewritable.h"

namespace pyhost {

/// A sequence or an iterator behind a host object, for questions that are asked with every step of a loop.
/// The host object must be held meanwhile.
struct NativeSequence {
  K7Q::Generic::SequenceIntf* interface = nullptr;
  K7Q::Deviant deviant;

  explicit operator bool() const noexcept { return interface != nullptr; }
  int size() const { return interface->generic_size(deviant); }
};

/// Null for an object that is no sequence.
NativeSequence nativeSequence(PyObject* sequence) noexcept;

/// The sequence as one of the platform: it tests its iterators itself, and can be rewritten as a whole. Null
/// for the metamodel's own sequences of enumeration values, which a script makes.
K7Q::RewritableIntf* asRewritable(const NativeSequence& sequence) noexcept;

/// The number of an enumeration's value. REQUIRES: a value of an enumeration.
std::int32_t enumerationNumber(PyObject* value);

/// The place that an iterator is; null for one that is gone.
const K7Q::Generic::IteratorIntf* nativeIterator(const HostIterator& iterator) noexcept;

/// Whether an iterator stands behind the last element, or on the first; false if its sequence is not known.
bool standsAtEnd(const HostIterator& iterator);
bool standsAtBegin(const HostIterator& iterator);
/// Whether what the iterator stood on is gone: it stands on no element, and not at the end either.
bool isStale(const HostIterator& iterator);

}  // namespace pyhost
