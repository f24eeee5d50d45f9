#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace Tarvelon::metamodel {

/// One difference between an older and a newer model, or between an older and a newer object.
///
/// Paths have the form that toJson() uses: the qualified name of the object, followed by property and index
/// for objects without a name. A path of more than 1000 levels or 4096 bytes is shortened to its end, after
/// "...". All texts are UTF-8.
struct Difference {
  enum class Kind : std::uint8_t {
    Added,    ///< an object was added, with everything it contains
    Removed,  ///< an object was removed, with everything it contained
    Changed,  ///< a value or the references of one property have changed
    Moved,    ///< an object has another owner, property or index
    Renamed   ///< an object has another name and the same owner
  };
  Kind kind;
  /// The path of the object in the older model. For Kind::Added: in the newer model.
  std::string path;
  /// The class of the object: "behavior.Runnable".
  std::string_view cls;
  /// Only for Moved and Renamed: the path of the object in the newer model.
  std::string newPath;
  /// Only for Moved: the property and index of the owner in the older and in the newer model,
  /// "/Brakes.PackagedElement[3]".
  std::string place;
  std::string newPlace;
  /// Only for Changed: the property, under the name that the host shows, and its value before and after as
  /// JSON. `null` means that there was no value.
  std::string_view property;
  std::string before;
  std::string after;
  /// Only for Changed: true if `before` and `after` are paths of referenced objects.
  bool isReference = false;
  /// Only for Added and Removed: the number of objects, the object itself included.
  std::uint32_t objects = 0;
};

/// Returns the changes that would make the older model equal to the newer one.
///
/// Both arguments are models, or both are objects of one class. The two may belong to one model or to two.
/// If two objects are given, they match each other whatever their names are, and their owners are not
/// compared.
///
/// Which older object matches which newer object is decided in this order. Matching objects always have the
/// same class.
/// - Objects with equal qualified names match. If several have the same name, objects with equal content
///   match first, then the others in their order. Objects that they contain stay with them.
/// - Of the remaining objects, two match if everything that they contain is equal. Cross references are not
///   compared here. They match as moved if they have the same name, and as renamed if they have the same
///   owner and property.
/// - Objects without a name match in the same property of the same owner: first those with equal content,
///   then those that have the same class and come behind the same pair of matched objects.
///
/// Order:   Removed, added, moved, renamed, changed; each in the order of the models.
/// Errors:  K7Q::WrongType if the two are neither two models nor two objects of one class. K7Q::Exception if
///          one of them is not valid.
/// Cost:    Nearly linear in the number of objects and references of both.
/// Threads: One thread at a time, which uses both models.
///
/// Example:
///   for (const Difference& each : differences(before, after)) std::puts(each.path.c_str());
TARVELON_API std::vector<Difference> differences(const K7Q::ObjectHandle& older,
                                                 const K7Q::ObjectHandle& newer);

}  // namespace Tarvelon::metamodel
