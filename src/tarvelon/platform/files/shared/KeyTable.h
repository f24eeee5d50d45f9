#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "tarvelon/platform/model/words/KeyedHash.h"

namespace Tarvelon::files {

/// Values by numbers: open addressing, at most three quarters full. Where a number stands nobody can foresee
/// who writes a file: see keyedHash().
template <class Value>
class KeyTable {
 public:
  using Key = std::uint64_t;
  /// Is no key.
  static constexpr Key kNone = ~Key{0};
  struct Entry {
    Key key = kNone;
    [[no_unique_address]] Value value{};
  };

  /// Null for one that is not there. Valid until the next insert().
  const Entry* find(Key key) const noexcept {
    if (mEntries.empty()) return nullptr;
    const Entry& entry = mEntries[placeOf(key)];
    return entry.key == kNone ? nullptr : &entry;
  }
  /// False if it is there already.
  bool insert(Key key, Value value = {}) {
    if (4 * (mCount + 1) > 3 * mEntries.size()) reserve(mCount + 1);
    Entry& entry = mEntries[placeOf(key)];
    if (entry.key != kNone) return false;
    entry = {key, value};
    ++mCount;
    return true;
  }
  /// Makes room for that many in all.
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
  /// How many places are looked at for the key that is found last of all.
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
