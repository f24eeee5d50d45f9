#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/words/KeyedHash.h"

namespace Tarvelon::files::arxml {

/// Finds objects by their path. Paths are compared by a keyed hash of 64 bits: nobody can write a file in
/// which two paths have the same one.
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

  void reserve(std::size_t count) { mObjects.reserve(count); }
  /// Returns false if another object has this path already.
  bool add(std::uint64_t path, metamodel::native::Instance& object) {
    return mObjects.try_emplace(path, &object).second;
  }
  metamodel::native::Instance* find(std::uint64_t path) const noexcept {
    const auto found = mObjects.find(path);
    return found == mObjects.end() ? nullptr : found->second;
  }

 private:
  struct Same {
    std::size_t operator()(std::uint64_t hash) const noexcept { return hash; }
  };
  std::unordered_map<std::uint64_t, metamodel::native::Instance*, Same> mObjects;
};

}  // namespace Tarvelon::files::arxml
