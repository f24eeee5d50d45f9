#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "tarvelon/platform/model/words/KeyedHash.h"

namespace Tarvelon::files {

/// A hash table with numbers as keys: open addressing, filled up to three quarters. The hashes are keyed, so
/// the author of a file cannot provoke collisions: see keyedHash().
template <class Value>
class KeyTable {
 public:
  using Key = std::uint64_t;
  /// Marks a free entry and is not a valid key.
  static constexpr Key kNone = ~Key{0};
  struct Entry {
    Key key = kNone;
    [[no_unique_address]] Value value{};
  };

  /// Null if the key is not in the table. The pointer is valid until the next insert().
  const Entry* find(Key key) const noexcept {
    if (mEntries.empty()) return nullptr;
    const Entry& entry = mEntries[placeOf(key)];
    return entry.key == kNone ? nullptr : &entry;
  }
  /// Returns false if the key is in the table already.
  bool insert(Key key, Value value = {}) {
    if (4 * (mCount + 1) > 3 * mEntries.size()) reserve(mCount + 1);
    Entry& entry = mEntries[placeOf(key)];
    if (entry.key != kNone) return false;
    entry = {key, value};
    ++mCount;
    return true;
  }
  /// Makes room for `count` keys in total.
  void reserve(std::size_t count) {
    constexpr std::size_t kFirst = 64;
    std::vector<Entry> old(std::max(kFirst, std::bit_ceil(count + count / 2 + 1)));
    old.swap(mEntries);
    for (const Entry& entry : old) {
      if (entry.key != kNone) mEntries[placeOf(entry.key)] = entry;
    }
  }
  void clear() noexcept {
    mEntries = {};
    mCount = 0;
  }
  std::size_t size() const noexcept { return mCount; }
  /// The greatest number of entries that the search for any key visits.
  std::size_t longestSearch() const noexcept {
    std::size_t longest = 0;
    for (std::size_t place = 0; place < mEntries.size(); ++place) {
      if (mEntries[place].key == kNone) continue;
      longest = std::max(longest, ((place - home(mEntries[place].key)) & (mEntries.size() - 1)) + 1);
    }
    return longest;
  }

 private:
  std::size_t home(Key key) const noexcept {
    return metamodel::native::keyedHash(key) & (mEntries.size() - 1);
  }
  std::size_t placeOf(Key key) const noexcept {
    std::size_t place = home(key);
    while (mEntries[place].key != kNone && mEntries[place].key != key)
      place = (place + 1) & (mEntries.size() - 1);
    return place;
  }

  std::vector<Entry> mEntries;
  std::size_t mCount = 0;
};

struct Nothing {};
using KeySet = KeyTable<Nothing>;

}  // namespace Tarvelon::files
