#pragma once

#include <bit>
#include <cstdint>
#include <string_view>
#include <vector>

#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/words/KeyedHash.h"

namespace Tarvelon::files::arxml {

/// Finds objects by their path: a hash table with open addressing. Paths are compared by a keyed hash of 64
/// bits: nobody can write a file in which two paths have the same one.
class PathIndex {
 public:
  static constexpr std::uint64_t kRoot = 0;
  /// The hash of a path from the hash of the path before its last name.
  static std::uint64_t append(std::uint64_t path, std::string_view name) noexcept {
    return metamodel::native::keyedHash(path, name.data(), name.size());
  }
  /// The hash of "/A/B", relative to another path.
  static std::uint64_t hashOf(std::string_view path, std::uint64_t from = kRoot) noexcept {
    while (!path.empty()) {
      if (path.front() == '/') path.remove_prefix(1);
      const std::size_t end = path.find('/');
      from = append(from, path.substr(0, end));
      path = end == std::string_view::npos ? std::string_view() : path.substr(end);
    }
    return from;
  }

  /// Makes room for that many objects in total.
  void reserve(std::size_t count) {
    const std::size_t capacity = std::bit_ceil(2 * count + 2);
    if (capacity <= mEntries.size()) return;
    std::vector<Entry> old(capacity);
    old.swap(mEntries);
    for (const Entry& entry : old) {
      if (entry.object) mEntries[placeOf(entry.path)] = entry;
    }
  }
  /// Returns false if another object has this path already.
  bool add(std::uint64_t path, metamodel::native::Instance& object) {
    if (2 * (mSize + 1) > mEntries.size()) reserve(2 * (mSize + 1));
    Entry& entry = mEntries[placeOf(path)];
    if (entry.object) return false;
    entry = {path, &object};
    ++mSize;
    return true;
  }
  metamodel::native::Instance* find(std::uint64_t path) const noexcept {
    return mEntries.empty() ? nullptr : mEntries[placeOf(path)].object;
  }

 private:
  struct Entry {
    std::uint64_t path = 0;
    metamodel::native::Instance* object = nullptr;
  };

  /// Where the entry of a path is, or would be.
  std::size_t placeOf(std::uint64_t path) const noexcept {
    const std::size_t mask = mEntries.size() - 1;
    std::size_t place = path & mask;
    while (mEntries[place].object && mEntries[place].path != path) place = (place + 1) & mask;
    return place;
  }

  std::vector<Entry> mEntries;
  std::size_t mSize = 0;
};

}  // namespace Tarvelon::files::arxml
