#include "tarvelon/platform/files/References.h"

#include "tarvelon/platform/files/Ids.h"

namespace Tarvelon::files {

IdTable::Key IdTable::keyOf(std::string_view text) {
  if (const auto number = idNumber(text)) return *number;
  const auto [found, isNew] = mForeign.try_emplace(std::string(text), kForeign | mForeign.size());
  if (isNew) mForeignTexts.push_back(&found->first);
  return found->second;
}

std::string IdTable::textOf(Key key) const {
  if ((key & kForeign) != 0) return *mForeignTexts[key & ~kForeign];
  const auto text = idText(key);
  return {text.data(), text.size()};
}

std::size_t IdTable::placeOf(Key key) const noexcept {
  std::size_t place = mixed(key) & (mEntries.size() - 1);
  while (mEntries[place].key != kNone && mEntries[place].key != key)
    place = (place + 1) & (mEntries.size() - 1);
  return place;
}

const IdTable::Entry* IdTable::find(Key key) const noexcept {
  if (mEntries.empty()) return nullptr;
  const Entry& entry = mEntries[placeOf(key)];
  return entry.key == kNone ? nullptr : &entry;
}

bool IdTable::insert(Key key, native::Instance* object) {
  if (4 * (mCount + 1) > 3 * mEntries.size()) grow();
  Entry& entry = mEntries[placeOf(key)];
  if (entry.key != kNone) return false;
  entry = {key, object};
  ++mCount;
  return true;
}

void IdTable::grow() {
  constexpr std::size_t kFirst = 64;
  std::vector<Entry> old(mEntries.empty() ? kFirst : 2 * mEntries.size());
  old.swap(mEntries);
  for (const Entry& entry : old) {
    if (entry.key != kNone) mEntries[placeOf(entry.key)] = entry;
  }
}

}  // namespace Tarvelon::files
