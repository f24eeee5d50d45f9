#pragma once

#include <bit>
#include <cstdint>

#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::metamodel::native {

/// An iterator over some slots of an object and over the elements of their lists. A walk over a tree keeps
/// one cursor for each level, so it needs no recursion.
class Cursor {
 public:
  /// An empty cursor.
  Cursor() noexcept = default;
  Cursor(const Instance& object, std::uint64_t slots) noexcept
      : mObject(&object), mSlots(object.presence() & slots) {}

  /// Advances to the next value. Returns false at the end. After true, value(), slot() and index() describe
  /// the value.
  bool next() noexcept {
    for (; mSlots != 0; mSlots &= mSlots - 1, mNext = 0) {
      mSlot = static_cast<unsigned>(std::countr_zero(mSlots));
      const Word* word = mObject->find(mSlot);
      const bool isList = native::isList(*mObject, mSlot);
      if (mNext == (isList ? word->list->size() : 1)) continue;
      mIndex = mNext++;
      mValue = isList ? word->list->at(mIndex) : *word;
      return true;
    }
    return false;
  }
  Word value() const noexcept { return mValue; }
  unsigned slot() const noexcept { return mSlot; }
  std::uint32_t index() const noexcept { return mIndex; }

 private:
  const Instance* mObject = nullptr;
  std::uint64_t mSlots = 0;
  Word mValue{};
  unsigned mSlot = 0;
  std::uint32_t mIndex = 0;
  std::uint32_t mNext = 0;
};

}  // namespace Tarvelon::metamodel::native
