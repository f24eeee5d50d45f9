#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace Tarvelon::metamodel {

/// One way in which a newer model or object differs from an older one.
///
/// Paths are those of toJson(): qualified names, and steps by property and index for what has no name. Of
/// more than 1000 levels or 4096 bytes there is the end alone, behind "...". All texts are UTF-8.
struct Difference {
  enum class Kind : std::uint8_t {
    Added,    ///< an object with what it holds
    Removed,  ///< likewise
    Changed,  ///< a value or the references of one property
    Moved,    ///< an object stands elsewhere: with another owner, in another property or at another index
    Renamed   ///< an object has another name at the same owner
  };
  Kind kind;
  /// Of the object in the older one; of one that was added, in the newer.
  std::string path;
  /// "behavior.Runnable"
  std::string_view cls;
  /// Of what was moved or renamed, its path in the newer one.
  std::string newPath;
  /// Of what was moved: where it stood and where it stands, "/Brakes.PackagedElement[3]".
  std::string place;
  std::string newPlace;
  /// Of what was changed: the property by the host's name, and its values as JSON, null for none.
  std::string_view property;
  std::string before;
  std::string after;
  /// Whether these are references: then they are paths.
  bool isReference = false;
  /// How many objects were added or removed, with the one itself.
  std::uint32_t objects = 0;
};

/// What must be done to the older one to make it equal to the newer one. Both are models or both objects of
/// one class, of one model or two; these match whatever they are called, and where they stand is not
/// compared.
///
/// Which object is which: objects of equal qualified name and class; if several have it, the equal ones
/// first, then the others in their order, and what they hold stays with them. What is left and is equal with
/// all it holds, references apart, is the same object moved (by its name) or renamed (by its owner and
/// property). What has no name is found in the same property of the same owner: the equal ones first, then
/// those of one class that stand behind the same one.
///
/// Order: what was removed, added, moved and renamed, changed; each in the order of the models.
/// K7Q::WrongType if the two are not of one kind. Cost: near linear in the objects and references of both.
/// Threads: one at a time, which uses both models.
TARVELON_API std::vector<Difference> differences(const K7Q::ObjectHandle& older,
                                                 const K7Q::ObjectHandle& newer);

}  // namespace Tarvelon::metamodel
