#pragma once

#include "tests/fuzz/World.h"

namespace fuzz {

/// Whether the outcome of a call is undefined, so that a host must not make it: iterators over enumeration
/// values are unchecked positions in their containers. `self` is null for a call on the class.
bool isUndefined(World& world, ruvo::Class& cls, std::string_view method, ruvo::RVOInterface* self,
                 std::span<const ruvo::HostValue> arguments);

/// Whether a call on a sequence of enumeration values may remove elements, and so invalidate iterators.
bool takesElementsOut(ruvo::Class& cls, std::string_view method);

}  // namespace fuzz
