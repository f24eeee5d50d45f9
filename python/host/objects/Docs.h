#pragma once

#include <string>
#include <vector>

#include "python/host/objects/Objects.h"

namespace pyhost {

/// The texts for help(), `__doc__` and the pages of `describe`.

/// The type of a property's values in a short form for users: "behavior.Runnable" for
/// "Tarvelon.metamodel.arplatform.behavior.ImmutableSequenceOfImmutableRunnable".
std::string plainType(std::string_view type);
/// The argument names of each constructor of a class, including the model: {{"model"}, ...}. Empty if the
/// class has no constructors or is not described in the metamodel's tables.
std::vector<std::vector<std::string>> constructorNames(std::string_view className);
/// For example "char, 0..1, writable".
std::string describeProperty(const ruvo::PropertySlot& slot);
/// One line for each signature, without the object: "at(int32 scalar) -> char vector".
std::string describeMethod(const ruvo::OverloadSet& overloads, std::string_view shownName);
/// The purpose of a class, its constructors, and its own and inherited properties.
std::string describeClass(ruvo::Class& cls);

}  // namespace pyhost
