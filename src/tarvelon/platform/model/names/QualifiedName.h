#pragma once

#include <string>
#include <string_view>

namespace Tarvelon::metamodel::native {

class Instance;
struct ClassData;

/// The names of objects in texts and searches.
///
/// A qualified name consists of the names of the object and of all its owners, from the root down:
/// "/Brakes/BrakeController/Behavior". Owners without a name are left out: their class has no property Name,
/// or the name was not set, as mostly for the root of an AUTOSAR model.

/// Whether objects of the class have the property Name.
bool hasName(const ClassData& cls) noexcept;
/// The object's own name, empty if there is none. Valid until the name is changed.
std::u16string_view ownName(const Instance& object) noexcept;

/// Whether the object has a name of its own.
bool isNamed(const Instance& object) noexcept;

/// The nearest owner that has a name, null if there is none.
const Instance* namingHolder(const Instance& object) noexcept;
/// Whether namingHolder() is `holder`. REQUIRES: `holder` is null or has a name.
bool isNamedBelow(const Instance& object, const Instance* holder) noexcept;

/// The qualified name, in UTF-16 and in UTF-8. Empty for an object without a name.
/// Cost: Proportional to the depth of the object.
std::u16string qualifiedText(const Instance& object);
std::string qualifiedName(const Instance& object);

/// The name of a class with that of its package, as people write it: "behavior.Runnable".
std::string_view shortName(const ClassData& cls) noexcept;

}  // namespace Tarvelon::metamodel::native
