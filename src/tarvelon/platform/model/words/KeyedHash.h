#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "tarvelon/boundary/Export.h"

namespace Tarvelon::metamodel::native {

/// Spreads the bits of a number; the same everywhere.
constexpr std::uint64_t mixed(std::uint64_t value) noexcept {
  value = (value ^ value >> 30) * 0xBF58476D1CE4E5B9;
  value = (value ^ value >> 27) * 0x94D049BB133111EB;
  return value ^ value >> 31;
}

/// What keys the hashes of this process: it is drawn anew for each.
struct HashKey {
  std::uint64_t first;
  std::uint64_t second;
};
TARVELON_API extern const HashKey kHashKey;

/// Both halves of the product in one. When one factor has a key in it that nobody knows, nobody knows either
/// how a difference of the other one shows.
inline std::uint64_t folded(std::uint64_t left, std::uint64_t right) noexcept {
  __extension__ using Product = unsigned __int128;
  const Product product = static_cast<Product>(left) * right;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

/// Hashes that nobody can foresee who writes a file, so that no file has ids or names that all fall onto one
/// place of a table, which would take time with the square of their number. They differ from process to
/// process: nothing that is kept, shown or put in an order may follow from one.
inline std::uint64_t keyedHash(std::uint64_t number) noexcept {
  return mixed(mixed(number ^ kHashKey.first) + kHashKey.second);
}
/// Of two numbers, in this order.
inline std::uint64_t keyedHash(std::uint64_t first, std::uint64_t second) noexcept {
  return folded(folded(first ^ kHashKey.first, kHashKey.second) ^ second, kHashKey.first);
}
/// Of a number and bytes. Each block of these is multiplied with all that comes before it: the differences
/// of two blocks never meet before a key has changed the first one.
inline std::uint64_t keyedHash(std::uint64_t number, const void* bytes, std::size_t size) noexcept {
  constexpr std::size_t kBlock = sizeof(std::uint64_t);
  const auto* at = static_cast<const unsigned char*>(bytes);
  const auto read = [](const unsigned char* from, std::size_t count) {
    std::uint64_t block = 0;
    std::memcpy(&block, from, count);
    return block;
  };
  // The size keeps apart what ends in zeros.
  std::uint64_t hash = folded(number ^ kHashKey.first, size ^ kHashKey.second);
  std::size_t left = size;
  for (; left > 2 * kBlock; left -= 2 * kBlock, at += 2 * kBlock) {
    hash = folded(read(at, kBlock) ^ kHashKey.second, read(at + kBlock, kBlock) ^ hash);
  }
  std::uint64_t first = 0;
  std::uint64_t last = 0;
  if (left >= kBlock) {
    // They overlap, which is faster than to read less than a block.
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

/// The same for the standard's containers.
struct KeyedTextHash {
  std::size_t operator()(const std::string& text) const noexcept { return keyedHash(std::string_view(text)); }
};

}  // namespace Tarvelon::metamodel::native
