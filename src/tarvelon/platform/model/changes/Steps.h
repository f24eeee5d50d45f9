#pragma once

#include <cstdint>
#include <span>

#include "tarvelon/platform/model/words/Word.h"

namespace Tarvelon::metamodel::native {

/// One change of one place of a model: what stood there and what stands there now.
///
/// Every change is made of such steps, so that whoever wants to know of changes, or to take them back, sees
/// them all. A step that is turned round undoes itself.
struct Step {
  enum class Kind : std::uint8_t {
    Value,     ///< of a slot of one value; of a list's slot never
    Element,   ///< of a list at `index`: put in, taken out or replaced
    Move,      ///< within a list, from the index in `before` to the one in `after`
    Exchange,  ///< within a list, of the elements at the indices in `before` and `after`
    Life,      ///< of the object: with an `after` it has come, with a `before` it has gone
  };

  Instance* object;
  Word before;
  Word after;
  std::uint32_t index;
  std::uint8_t slot;
  Kind kind;
  bool hasBefore;
  bool hasAfter;

  Step turned() const noexcept { return {object, after, before, index, slot, kind, hasAfter, hasBefore}; }
};
static_assert(sizeof(Step) == 32);

/// Makes a step: stores, counts texts, ties and unties referrers and owners.
///
/// REQUIRES: room where a value, an element or a referrer is added; that the place is as `before` says.
void apply(const Step& step) noexcept;

/// Makes steps one behind the other, or takes them back from the last one on.
///
/// Cost: a row of steps that take elements out of one list, each from before the one taken out last, or put
/// them in, each behind the one put in last, goes through the list once.
void apply(std::span<const Step> steps) noexcept;
void takeBack(std::span<const Step> steps) noexcept;

/// Makes one step, noted in the model's journal if it keeps one. REQUIRES: also room in the journal.
void make(const Step& step) noexcept;

/// The step by which a slot of one value gets another or, without one, is emptied.
Step valueStep(Instance& object, unsigned slot, bool hasValue, Word value) noexcept;

}  // namespace Tarvelon::metamodel::native
