#pragma once

#include <cstdint>
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

/// Hashes that nobody can foresee who writes a file, so that no file has ids or names that all fall onto one
/// place of a table, which would take time with the square of their number. They differ from process to
/// process: nothing that is kept, shown or put in an order may follow from one.
inline std::uint64_t keyedHash(std::uint64_t number) noexcept {
  return mixed(mixed(number ^ kHashKey.first) + kHashKey.second);
}
TARVELON_API std::uint64_t keyedHash(std::string_view text) noexcept;
TARVELON_API std::uint64_t keyedHash(std::u16string_view text) noexcept;

/// The same for the standard's containers.
struct KeyedTextHash {
  std::size_t operator()(const std::string& text) const noexcept { return keyedHash(std::string_view(text)); }
};

}  // namespace Tarvelon::metamodel::native
