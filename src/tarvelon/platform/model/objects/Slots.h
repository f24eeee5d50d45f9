#pragma once

#include <bit>
#include <cstdint>

#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/words/WordList.h"

/// Iteration over the references of one object.
namespace Tarvelon::metamodel::native {

inline constexpr std::uint64_t bitOf(unsigned slot) noexcept { return std::uint64_t{1} << slot; }

inline bool isList(const ClassData& cls, unsigned slot) noexcept {
  return (cls.listSlots & bitOf(slot)) != 0;
}
inline bool isList(const Instance& object, unsigned slot) noexcept { return isList(object.cls(), slot); }
inline bool holds(const ClassData& cls, unsigned slot) noexcept {
  return (cls.holdingSlots & bitOf(slot)) != 0;
}
inline bool holds(const Instance& object, unsigned slot) noexcept { return holds(object.cls(), slot); }

/// The list of a many-valued property. Null until the first element is inserted.
inline WordList* listOf(const Instance& object, unsigned slot) noexcept {
  const Word* word = object.find(slot);
  return word ? word->list : nullptr;
}

/// Calls visit(slot) for each slot of the bit mask, lowest first.
template <class Visit>
void forEachSlot(std::uint64_t slots, Visit visit) {
  for (; slots != 0; slots &= slots - 1) visit(static_cast<unsigned>(std::countr_zero(slots)));
}

/// Calls visit(Instance&, slot) for each object in the given slots of an object, in order. visit() must not
/// change the object.
template <class Visit>
void forEachObject(const Instance& object, std::uint64_t slots, Visit visit) {
  forEachSlot(object.presence() & slots, [&](unsigned slot) {
    const Word word = *object.find(slot);
    if (!isList(object, slot)) {
      visit(*word.object, slot);
      return;
    }
    for (std::uint32_t index = 0; index < word.list->size(); ++index) {
      visit(*word.list->at(index).object, slot);
    }
  });
}

/// The same for the objects that the object contains.
template <class Visit>
void forEachHeld(const Instance& object, Visit visit) {
  forEachObject(object, object.cls().holdingSlots, visit);
}

}  // namespace Tarvelon::metamodel::native
