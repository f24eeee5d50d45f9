#include "tarvelon/platform/model/copy/KeyIndex.h"

#include <algorithm>
#include <bit>

namespace Tarvelon::metamodel::native {

void KeyIndex::reset(std::size_t count) {
  mEntries.assign(std::max<std::size_t>(8, std::bit_ceil(2 * count)), {0, kNone});
  mItems.clear();
  mItems.reserve(count);
}

KeyIndex::Entry& KeyIndex::place(std::uint64_t key) noexcept {
  std::size_t at = key & (mEntries.size() - 1);
  while (mEntries[at].key != 0 && mEntries[at].key != key) at = (at + 1) & (mEntries.size() - 1);
  return mEntries[at];
}

KeyIndex::Entry* KeyIndex::find(std::uint64_t key) noexcept {
  if (mEntries.empty()) return nullptr;
  Entry& entry = place(stored(key));
  return entry.key != 0 ? &entry : nullptr;
}

void KeyIndex::push(std::uint64_t key, std::uint32_t number) noexcept {
  Entry& entry = place(stored(key));
  entry.key = stored(key);
  mItems.push_back({number, entry.head});
  entry.head = static_cast<std::uint32_t>(mItems.size() - 1);
}

}  // namespace Tarvelon::metamodel::native
