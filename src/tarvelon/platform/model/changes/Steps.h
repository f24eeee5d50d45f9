#pragma once

#include <cstdint>
#include <span>

#include "tarvelon/platform/model/words/Word.h"

namespace Tarvelon::metamodel::native {

/// An elementary change of a model: one place, its value before and its value after.
///
/// Every change of a model consists of steps. So transactions, undo and listeners see every change by
/// recording steps. The inverse of a step undoes the step.
struct Step {
  enum class Kind : std::uint8_t {
    Value,     ///< a single-valued property: sets, replaces or unsets the value
    Element,   ///< a list: inserts, removes or replaces the element at `index`
    Move,      ///< a list: moves the element at index `before` to index `after`
    Exchange,  ///< a list: swaps the elements at the indices `before` and `after`
    Life,      ///< creates or restores the object (hasAfter), or destroys it (hasBefore)
  };

  Instance* object;
  Word before;
  Word after;
  std::uint32_t index;
  std::uint8_t slot;
  Kind kind;
  bool hasBefore;
  bool hasAfter;

  Step inverse() const noexcept { return {object, after, before, index, slot, kind, hasAfter, hasBefore}; }
};
static_assert(sizeof(Step) == 32);

/// Applies a step: stores the value, adjusts the reference counts of texts, and links or unlinks owners and
/// referrers.
///
/// REQUIRES: the place has the value `before`, and there is room for the value, element or referrer that is
/// added.
void apply(const Step& step) noexcept;

/// Applies steps in their order, or undoes them in reverse order.
///
/// Cost: A run of removals from one list with descending indices, or of insertions into one list with
///       ascending indices, takes a single pass over the list.
void apply(std::span<const Step> steps) noexcept;
void takeBack(std::span<const Step> steps) noexcept;

/// Applies one step and records it in the model's journal, if there is one. REQUIRES: as apply(), and room in
/// the journal.
void make(const Step& step) noexcept;

/// Returns the step that sets a single-valued property to `value`, or unsets it if `hasValue` is false.
Step valueStep(Instance& object, unsigned slot, bool hasValue, Word value) noexcept;

}  // namespace Tarvelon::metamodel::native
