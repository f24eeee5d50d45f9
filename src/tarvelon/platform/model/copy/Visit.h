#pragma once

#include <cstdint>

#include "tarvelon/platform/model/objects/Slots.h"

namespace Tarvelon::metamodel::native {

/// The bit mask of the slots with a value of a property: without the referrers and the ids in files.
inline std::uint64_t valueSlots(const Instance& object) noexcept {
  return object.presence() & (bitOf(static_cast<unsigned>(object.cls().slotProperties.size())) - 1);
}
inline bool isReference(const ClassData& cls, unsigned slot) noexcept {
  return ((cls.holdingSlots | cls.referringSlots) >> slot & 1) != 0;
}

/// Calls visit(word, position) for the value of one slot or for each element of its list.
/// REQUIRES: the slot has a value.
template <class Visit>
void forEachWord(const Instance& object, unsigned slot, Visit visit) {
  const Word word = *object.find(slot);
  if (!isList(object.cls(), slot)) {
    visit(word, 0U);
    return;
  }
  for (std::uint32_t index = 0; index < word.list->size(); ++index) visit(word.list->at(index), index);
}

/// Calls visit(target, slot, position) for each object in the given slots.
template <class Visit>
void forEachTarget(const Instance& object, std::uint64_t slots, Visit visit) {
  forEachSlot(valueSlots(object) & slots, [&](unsigned slot) {
    forEachWord(object, slot,
                [&](Word word, std::uint32_t position) { visit(*word.object, slot, position); });
  });
}

}  // namespace Tarvelon::metamodel::native
