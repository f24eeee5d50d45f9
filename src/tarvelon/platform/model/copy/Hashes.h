#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "tarvelon/platform/model/copy/Tree.h"
#include "tarvelon/platform/model/words/KeyedHash.h"

namespace Tarvelon::metamodel::native {

using Hash = std::uint64_t;

/// Of both in this order. Values come from files and are hashed as they are, so it has a key.
inline Hash mix(Hash left, Hash right) noexcept { return keyedHash(left, right); }
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
