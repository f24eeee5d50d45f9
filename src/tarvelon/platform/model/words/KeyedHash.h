#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "tarvelon/boundary/Export.h"

namespace Tarvelon::metamodel::native {

/// Mixes the bits of a number. Not keyed: the result is the same in every process.
constexpr std::uint64_t mixed(std::uint64_t value) noexcept {
  value = (value ^ value >> 30) * 0xBF58476D1CE4E5B9;
  value = (value ^ value >> 27) * 0x94D049BB133111EB;
  return value ^ value >> 31;
}

/// The random key of this process's hashes.
struct HashKey {
  std::uint64_t first;
  std::uint64_t second;
};
TARVELON_API extern const HashKey kHashKey;

/// Multiplies two numbers and combines both halves of the product. If one factor contains a secret key,
/// nobody can predict how a change of the other factor changes the result.
inline std::uint64_t folded(std::uint64_t left, std::uint64_t right) noexcept {
  __extension__ using Product = unsigned __int128;
  const Product product = static_cast<Product>(left) * right;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

/// Keyed hashes. The author of a file cannot predict them, so no file can make all its ids or names collide
/// in a hash table, which would take quadratic time. They differ from process to process: nothing that is
/// stored, shown or ordered may depend on them.
inline std::uint64_t keyedHash(std::uint64_t number) noexcept {
  return mixed(mixed(number ^ kHashKey.first) + kHashKey.second);
}
/// The hash of two numbers, in this order.
inline std::uint64_t keyedHash(std::uint64_t first, std::uint64_t second) noexcept {
  return folded(folded(first ^ kHashKey.first, kHashKey.second) ^ second, kHashKey.first);
}
/// The hash of a number and bytes. Each block of bytes is multiplied with the hash of everything before it;
/// so two blocks are combined only after a key was mixed into the first one.
inline std::uint64_t keyedHash(std::uint64_t number, const void* bytes, std::size_t size) noexcept {
  constexpr std::size_t kBlock = sizeof(std::uint64_t);
  const auto* at = static_cast<const unsigned char*>(bytes);
  const auto read = [](const unsigned char* from, std::size_t count) {
    std::uint64_t block = 0;
    std::memcpy(&block, from, count);
    return block;
  };
  // The size distinguishes inputs that differ only in zeros at the end.
  std::uint64_t hash = folded(number ^ kHashKey.first, size ^ kHashKey.second);
  std::size_t left = size;
  for (; left > 2 * kBlock; left -= 2 * kBlock, at += 2 * kBlock) {
    hash = folded(read(at, kBlock) ^ kHashKey.second, read(at + kBlock, kBlock) ^ hash);
  }
  std::uint64_t first = 0;
  std::uint64_t last = 0;
  if (left >= kBlock) {
    // The two blocks may overlap; this is faster than reading less than a block.
    first = read(at, kBlock);
    last = read(at + left - kBlock, kBlock);
  } else if (left >= 4) {
    first = read(at, 4);
    last = read(at + left - 4, 4);
  } else if (left >= 2) {
    first = read(at, 2);
    last = at[left - 1];
  } else if (left == 1) {
    first = *at;
  }
  hash = folded(first ^ kHashKey.second, last ^ hash);
  return folded(hash ^ kHashKey.first, kHashKey.second);
}
inline std::uint64_t keyedHash(std::uint64_t number, std::u16string_view text) noexcept {
  return keyedHash(number, text.data(), text.size() * sizeof(char16_t));
}
TARVELON_API std::uint64_t keyedHash(std::string_view text) noexcept;
TARVELON_API std::uint64_t keyedHash(std::u16string_view text) noexcept;

/// The keyed hash for standard containers.
struct KeyedTextHash {
  std::size_t operator()(const std::string& text) const noexcept { return keyedHash(std::string_view(text)); }
};

}  // namespace Tarvelon::metamodel::native
