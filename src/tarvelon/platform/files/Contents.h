#pragma once

#include <bit>

#include "tarvelon/platform/tarvelon/ClassData.h"
#include "tarvelon/platform/tarvelon/Instance.h"
#include "tarvelon/platform/tarvelon/WordList.h"

/// What objects hold, as files nest it.
namespace Tarvelon::files {

/// Calls visit(Instance& held, unsigned slot, std::uint32_t index) for each, in order of slot and list.
template <class Visit>
void forEachHeld(const metamodel::native::Instance& object, Visit visit) {
  const auto& cls = object.cls();
  for (std::uint64_t slots = object.presence() & cls.holdingSlots; slots != 0; slots &= slots - 1) {
    const auto slot = static_cast<unsigned>(std::countr_zero(slots));
    const metamodel::native::Word word = *object.find(slot);
    if ((cls.listSlots >> slot & 1) == 0) {
      visit(*word.object, slot, std::uint32_t{0});
      continue;
    }
    for (std::uint32_t index = 0; index < word.list->size(); ++index)
      visit(*word.list->at(index).object, slot, index);
  }
}

/// Raises K7Q::Exception when an object stands deeper than a file may nest it.
void requireDepth(const metamodel::native::Instance& object, int depth);

}  // namespace Tarvelon::files
