#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "tarvelon/platform/model/copy/Tree.h"
#include "tarvelon/platform/model/words/KeyedHash.h"

namespace Tarvelon::metamodel::native {

using Hash = std::uint64_t;

/// The hash of two values in this order. It is keyed, since the values may come from a file.
inline Hash mix(Hash left, Hash right) noexcept { return keyedHash(left, right); }
Hash hashOf(std::u16string_view text) noexcept;

/// For each node, the hash of the names from its root down to it. Only objects for which `counts` returns
/// true contribute; other nodes have the hash of their owner. With isNamed(), nodes with equal qualified
/// names have equal hashes.
std::vector<Hash> pathHashes(const Tree& tree, bool (*counts)(const Instance&));

/// Hashes of the content of each node, without cross references.
struct Contents {
  /// The class, all values except the name, and all contained objects.
  std::vector<Hash> body;
  /// The same with the name.
  std::vector<Hash> whole;
};
Contents contentHashes(const Tree& tree);

}  // namespace Tarvelon::metamodel::native
