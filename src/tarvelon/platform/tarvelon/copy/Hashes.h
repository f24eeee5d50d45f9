#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "tarvelon/platform/tarvelon/copy/Tree.h"

namespace Tarvelon::metamodel::native {

using Hash = std::uint64_t;

/// Both in order; what is hashed must be mixed once, since low bits are used as they are.
inline constexpr Hash mix(Hash left, Hash right) noexcept {
  Hash hash = (left ^ (right + 0x9E3779B97F4A7C15U + (left << 6) + (left >> 2))) * 0xFF51AFD7ED558CCDU;
  return hash ^ (hash >> 32);
}
Hash hashOf(std::u16string_view text) noexcept;

/// Of each node the names from its root down to it, as far as an object counts: with isNamed() equal for
/// nodes of equal qualified name. What does not count has the hash of what holds it.
std::vector<Hash> pathHashes(const Tree& tree, bool (*counts)(const Instance&));

/// What a node is and holds, without its references.
struct Contents {
  /// Its class, its values but for the name, and all it holds.
  std::vector<Hash> body;
  /// The same with the name.
  std::vector<Hash> whole;
};
Contents contentHashes(const Tree& tree);

}  // namespace Tarvelon::metamodel::native
