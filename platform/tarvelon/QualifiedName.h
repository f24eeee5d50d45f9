#pragma once

#include <string>
#include <string_view>

namespace Tarvelon::metamodel::native {

class Instance;
struct ClassData;

/// How objects are called when they are spoken of.
///
/// A qualified name has a segment for the object and for each one that holds it, from the top, as far as
/// their classes have the property Name: "/Brakes/BrakeController/Behavior". An object without a name
/// contributes none: alone, it is told by who holds it.

/// Whether objects of the class have the property Name.
bool hasName(const ClassData& cls) noexcept;
/// The object's own name; empty for none. Valid until the name is written.
std::u16string_view ownName(const Instance& object) noexcept;

/// The nearest holder whose class has the property Name, null if there is none.
const Instance* namingHolder(const Instance& object) noexcept;

/// In UTF-8; empty for an object without a name that nothing with a name holds.
/// Cost: proportional to the depth.
std::string qualifiedName(const Instance& object);

/// A class as people write it: its name and its package's, "behavior.Runnable".
std::string_view shortName(const ClassData& cls) noexcept;

}  // namespace Tarvelon::metamodel::native
