#pragma once

#include <cstdint>
#include <vector>

namespace Tarvelon::metamodel::native {

/// A hash table from keys to stacks of numbers. It matches the nodes of two trees in linear time.
class KeyIndex {
 public:
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

  /// Removes everything and makes room for `count` numbers.
  void reset(std::size_t count);
  /// Puts a number in front of the other numbers of the key. REQUIRES: room for it.
  void push(std::uint64_t key, std::uint32_t number) noexcept;
  /// Removes and returns the first number of the key for which `isWanted` returns true, and removes all
  /// numbers in front of it. Returns kNone, with no numbers left, if there is none.
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
  /// Whether the key has more than one number.
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
