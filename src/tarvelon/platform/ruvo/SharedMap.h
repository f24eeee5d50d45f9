#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace ruvo {

/// An insert-only hash map from addresses to addresses. Any thread may read without a lock while one thread
/// inserts. REQUIRES: keys and values are not null.
template <class Value>
class SharedMap {
 public:
  /// The value of a key, null if there is none.
  Value* find(const void* key) const noexcept {
    const Table* table = mTable.load(std::memory_order_acquire);
    if (!table) return nullptr;
    for (std::size_t i = home(key);; ++i) {
      const Slot& slot = table->slots[i & table->mask];
      const void* found = slot.key.load(std::memory_order_acquire);
      if (found == key) return slot.value;
      if (!found) return nullptr;
    }
  }

  /// Adds an entry. REQUIRES: the key is not in the map, and no other thread inserts at the same time.
  void insert(const void* key, Value* value) {
    if (mTables.empty() || (mSize + 1) * 4 > mTables.back()->slots.size() * 3) grow();
    place(*mTables.back(), key, value);
    ++mSize;
  }

 private:
  struct Slot {
    std::atomic<const void*> key = nullptr;
    Value* value = nullptr;
  };
  struct Table {
    explicit Table(std::size_t capacity) : slots(capacity), mask(capacity - 1) {}
    std::vector<Slot> slots;
    std::size_t mask;
  };
  static constexpr std::size_t kFirst = 8;

  static std::size_t home(const void* key) noexcept {
    const auto mixed =
        static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(key)) * 0x9E3779B97F4A7C15U;
    return static_cast<std::size_t>(mixed >> 32);
  }

  static void place(Table& table, const void* key, Value* value) noexcept {
    std::size_t i = home(key);
    while (table.slots[i & table.mask].key.load(std::memory_order_relaxed)) ++i;
    Slot& slot = table.slots[i & table.mask];
    slot.value = value;
    slot.key.store(key, std::memory_order_release);
  }

  void grow() {
    mTables.reserve(mTables.size() + 1);
    auto larger = std::make_unique<Table>(mTables.empty() ? kFirst : 2 * mTables.back()->slots.size());
    if (!mTables.empty()) {
      for (const Slot& slot : mTables.back()->slots) {
        const void* key = slot.key.load(std::memory_order_relaxed);
        if (key) place(*larger, key, slot.value);
      }
    }
    mTables.push_back(std::move(larger));
    mTable.store(mTables.back().get(), std::memory_order_release);
  }

  std::atomic<const Table*> mTable = nullptr;
  /// The last table is the current one. Former tables are kept because readers may still use them.
  std::vector<std::unique_ptr<Table>> mTables;
  std::size_t mSize = 0;
};

}  // namespace ruvo
