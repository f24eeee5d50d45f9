#pragma once

#include <cstdint>
#include <vector>

namespace Tarvelon::metamodel::native {

/// Numbers by key, several under one key in a queue: what matches the nodes of two trees in linear time.
class KeyIndex {
 public:
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

  /// Empties it and makes room for that many.
  void reset(std::size_t count);
  /// Puts a number in front of those that are there under the key. REQUIRES: room for it.
  void push(std::uint64_t key, std::uint32_t number) noexcept;
  /// Takes the first number of the key that `isWanted` says yes to, and those in front of it. kNone if there
  /// is none.
  template <class IsWanted>
  std::uint32_t take(std::uint64_t key, IsWanted isWanted) noexcept {
    Entry* entry = find(key);
    while (entry && entry->head != kNone) {
      const Item item = mItems[entry->head];
      entry->head = item.next;
      if (isWanted(item.number)) return item.number;
    }
    return kNone;
  }
  /// Whether there is more than one number under the key.
  bool isShared(std::uint64_t key) noexcept {
    const Entry* entry = find(key);
    return entry && entry->head != kNone && mItems[entry->head].next != kNone;
  }

 private:
  struct Entry {
    std::uint64_t key;  ///< 0 for a free place
    std::uint32_t head;
  };
  struct Item {
    std::uint32_t number;
    std::uint32_t next;
  };
  static std::uint64_t stored(std::uint64_t key) noexcept { return key != 0 ? key : 1; }
  Entry& place(std::uint64_t key) noexcept;
  Entry* find(std::uint64_t key) noexcept;

  /// Open addressing, at most half full.
  std::vector<Entry> mEntries;
  std::vector<Item> mItems;
};

}  // namespace Tarvelon::metamodel::native
