#pragma once

#include <span>

#include "python/host/Values.h"

namespace pyhost {

/// What the records leave silent or undefined, a Python call refuses before it is made: nothing where an
/// element, an iterator or an enumeration value is meant, and an iterator that stands in another sequence.

/// Raises K7Q.WrongType or K7Q.WrongValue for such a call of `overloads` on the class; `self` may be null.
void requireMeaningful(const HostType& type, const ruvo::OverloadSet& overloads, PyObject* self,
                       const Arguments& converted, std::span<PyObject* const> given);

/// Gives an iterator that came out of a call on `self` the sequence that it walks.
void keepSequence(PyObject* result, PyObject* self);

}  // namespace pyhost
