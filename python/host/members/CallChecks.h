#pragma once

#include <span>

#include "python/host/objects/Values.h"

namespace pyhost {

/// Checks of a Python call before it is made, for mistakes that the records do not detect or that would be
/// undefined behaviour: None instead of an element, iterator or enumeration value, and an iterator of another
/// sequence.

/// Raises K7Q.WrongType or K7Q.WrongValue for such a call of `overloads` on the class. `self` may be null.
void requireMeaningful(const HostType& type, const ruvo::OverloadSet& overloads, PyObject* self,
                       const Arguments& converted, std::span<PyObject* const> given);

/// If `result` is an iterator returned by a call on `self`, connects it with the sequence that it iterates.
void keepSequence(PyObject* result, PyObject* self);

}  // namespace pyhost
