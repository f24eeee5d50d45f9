#pragma once

#include <string>

#include "python/host/Objects.h"

namespace pyhost {

/// The texts that help(), `__doc__` and the page of `describe` show.

/// "char, 0..1, writable".
std::string describeProperty(const ruvo::PropertySlot& slot);
/// One line a signature, as it is called on an object: "at(int32 scalar) -> char vector".
std::string describeMethod(const ruvo::OverloadSet& overloads, std::string_view shownName);
/// What a class is, how it is constructed, and its properties, inherited ones too.
std::string describeClass(ruvo::Class& cls);

}  // namespace pyhost
