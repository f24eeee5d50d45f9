#pragma once

#include <string>
#include <string_view>

namespace Tarvelon::metamodel::native {

class Instance;
struct ClassData;

/// How objects are called when they are spoken of.
///
/// A qualified name has a segment for the object and for each one that holds it, from the top, as far as they
/// have names: "/Brakes/BrakeController/Behavior". What has none is passed over, be it that its class has no
/// property Name or that it was not given one, as the root of an AUTOSAR model mostly is not.

/// Whether objects of the class have the property Name.
bool hasName(const ClassData& cls) noexcept;
/// The object's own name; empty for none. Valid until the name is written.
std::u16string_view ownName(const Instance& object) noexcept;

/// Whether the object has a name of its own.
bool isNamed(const Instance& object) noexcept;

/// The nearest holder that has a name, null if there is none.
const Instance* namingHolder(const Instance& object) noexcept;
/// Whether namingHolder() is `holder`, which is null or has a name.
bool isNamedBelow(const Instance& object, const Instance* holder) noexcept;

/// In UTF-8; empty for an object without a name.
/// Cost: proportional to the depth.
std::string qualifiedName(const Instance& object);

/// A class as people write it: its name and its package's, "behavior.Runnable".
std::string_view shortName(const ClassData& cls) noexcept;

}  // namespace Tarvelon::metamodel::native
