#pragma once

#include <cstdint>
#include <span>

/// The order of a list of anything that an object keeps: no element comes or goes, no reference changes.
///
/// Failure: room for the steps is made first; a function that raises has changed nothing.
namespace Tarvelon::metamodel::native {

class Instance;

/// Moves an element to where it then stands.
void moveElement(Instance& object, unsigned slot, std::uint32_t from, std::uint32_t to);
/// Lets two elements change places.
void exchangeElements(Instance& object, unsigned slot, std::uint32_t left, std::uint32_t right);
/// Puts the list into another order: what stood at order[i] then stands at i. REQUIRES: each index of the
/// list once. Cost: proportional to the list; each step brings one element to its place.
void arrangeElements(Instance& object, unsigned slot, std::span<const std::uint32_t> order);

}  // namespace Tarvelon::metamodel::native
