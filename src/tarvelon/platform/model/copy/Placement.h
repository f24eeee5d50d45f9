#pragma once

#include <string_view>

namespace Tarvelon::metamodel::native {

class Instance;

/// The slot of `owner` that is to hold a copy of `object`, told by the rules of clone(), or by name if
/// `property` is not empty. Raises what clone() does.
unsigned placeFor(const Instance& object, const Instance& owner, std::string_view property);

}  // namespace Tarvelon::metamodel::native
