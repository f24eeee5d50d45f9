#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace ruvo {

/// A hash map from addresses to addresses. Open addressing in one block; no allocation for each entry.
/// REQUIRES: keys and values are not null.
template <class Value>
class PointerMap {
 public:
  std::size_t size() const noexcept { return mSize; }

  /// The value of a key, null if there is none.
  Value* find(const void* key) const noexcept {
    if (mSlots.empty()) return nullptr;
    for (std::size_t i = home(key);; i = next(i)) {
      if (mSlots[i].key == key) return mSlots[i].value;
      if (!mSlots[i].key) return nullptr;
    }
  }

  /// Adds an entry and returns true. If the key exists, keeps its value and returns false.
  bool insert(const void* key, Value* value) {
    if (find(key)) return false;
    if ((mSize + 1) * 4 > mSlots.size() * 3) grow();
    place({key, value});
    ++mSize;
    return true;
  }

  bool erase(const void* key) noexcept {
    if (!find(key)) return false;
    std::size_t hole = home(key);
    while (mSlots[hole].key != key) hole = next(hole);
    // Moves later entries of the probe sequence into the hole, so that no tombstones are needed.
    for (std::size_t i = next(hole); mSlots[i].key; i = next(i)) {
      const std::size_t distance = (i - home(mSlots[i].key)) & (mSlots.size() - 1);
      const std::size_t gap = (i - hole) & (mSlots.size() - 1);
      if (distance >= gap) mSlots[std::exchange(hole, i)] = mSlots[i];
    }
    mSlots[hole] = Slot{};
    --mSize;
    return true;
  }

 private:
  struct Slot {
    const void* key = nullptr;
    Value* value = nullptr;
  };

  std::size_t next(std::size_t index) const noexcept { return (index + 1) & (mSlots.size() - 1); }

  std::size_t home(const void* key) const noexcept {
    const auto mixed =
        static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(key)) * 0x9E3779B97F4A7C15U;
    return static_cast<std::size_t>(mixed >> 32) & (mSlots.size() - 1);
  }

  void place(Slot slot) noexcept {
    std::size_t i = home(slot.key);
    while (mSlots[i].key) i = next(i);
    mSlots[i] = slot;
  }

  void grow() {
    std::vector<Slot> old(mSlots.empty() ? 8 : mSlots.size() * 2);
    old.swap(mSlots);
    for (const Slot& slot : old) {
      if (slot.key) place(slot);
    }
  }

  std::vector<Slot> mSlots;
  std::size_t mSize = 0;
};

}  // namespace ruvo
