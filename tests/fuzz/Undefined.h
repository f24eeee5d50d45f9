#pragma once

#include "tests/fuzz/World.h"

namespace fuzz {

/// Whether a call is one of those whose outcome nobody promises, so that a host must not make it: the
/// iterators over values of an enumeration are bare places in their containers. `self` is null for a call on
/// the class.
bool isUndefined(World& world, ruvo::Class& cls, std::string_view method, ruvo::RVOInterface* self,
                 std::span<const ruvo::HostValue> arguments);

/// Whether a call on a sequence of values may take elements out, and with them the places of iterators.
bool takesElementsOut(ruvo::Class& cls, std::string_view method);

}  // namespace fuzz
