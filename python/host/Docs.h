#pragma once

#include <string>
#include <vector>

#include "python/host/Objects.h"

namespace pyhost {

/// The texts that help(), `__doc__` and the page of `describe` show.

/// The type of a property's values for people, who write to it what they read: "behavior.Runnable" of
/// "Tarvelon.metamodel.arplatform.behavior.ImmutableSequenceOfImmutableRunnable".
std::string plainType(std::string_view type);
/// The names of all arguments of each constructor of a class, the model among them: {{"model"}, ...}. Empty
/// for a class without constructors or rows.
std::vector<std::vector<std::string>> constructorNames(std::string_view className);
/// "char, 0..1, writable".
std::string describeProperty(const ruvo::PropertySlot& slot);
/// One line a signature, as it is called on an object: "at(int32 scalar) -> char vector".
std::string describeMethod(const ruvo::OverloadSet& overloads, std::string_view shownName);
/// What a class is for, how it is constructed, and its properties, inherited ones too.
std::string describeClass(ruvo::Class& cls);

}  // namespace pyhost
