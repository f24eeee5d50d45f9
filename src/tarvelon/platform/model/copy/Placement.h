#pragma once

#include <string_view>

namespace Tarvelon::metamodel::native {

class Instance;

/// Returns the slot of `owner` in which a copy of `object` is placed: by the rules of clone() or, if
/// `property` is not empty, by that name. Raises the exceptions of clone().
unsigned placeFor(const Instance& object, const Instance& owner, std::string_view property);

}  // namespace Tarvelon::metamodel::native
