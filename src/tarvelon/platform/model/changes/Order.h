#pragma once

#include <cstdint>
#include <span>

/// Reordering a list of any type. No element is inserted or removed, and no reference changes.
///
/// Failure: Room for the steps is allocated first. If a function raises, nothing has changed.
namespace Tarvelon::metamodel::native {

class Instance;

/// Moves the element at index `from` to index `to`.
void moveElement(Instance& object, unsigned slot, std::uint32_t from, std::uint32_t to);
/// Swaps two elements.
void exchangeElements(Instance& object, unsigned slot, std::uint32_t left, std::uint32_t right);
/// Reorders the list: the element at index order[i] moves to index i. Each step brings one element to its
/// final place.
/// REQUIRES: `order` contains each index of the list once.
/// Cost:     Proportional to the length of the list.
void arrangeElements(Instance& object, unsigned slot, std::span<const std::uint32_t> order);

}  // namespace Tarvelon::metamodel::native
