#include "tarvelon/platform/model/copy/Hashes.h"

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/copy/JsonValues.h"
#include "tarvelon/platform/model/copy/Visit.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/words/KeyedHash.h"

namespace Tarvelon::metamodel::native {

namespace {

Hash valueHash(const ClassData& cls, unsigned slot, Word word) noexcept {
  if ((cls.textSlots >> slot & 1) == 0) return word.bits;
  return hashOf(word.text ? word.text->view() : std::u16string_view());
}

/// The hash of the class and the values, without the name and the references.
Hash ownHash(const Instance& object) {
  const ClassData& cls = object.cls();
  const std::uint8_t name = cls.nameSlot;
  Hash hash = mix(cls.ordinal, 0);
  forEachSlot(valueSlots(object) & ~(cls.holdingSlots | cls.referringSlots), [&](unsigned slot) {
    if (slot == name || !isShown(object, slot)) return;
    Hash values = 0;
    forEachWord(object, slot, [&](Word word, std::uint32_t /*position*/) {
      values = mix(values, valueHash(cls, slot, word));
    });
    hash = mix(mix(hash, slot), values);
  });
  return hash;
}

}  // namespace

Hash hashOf(std::u16string_view text) noexcept { return keyedHash(text); }

std::vector<Hash> pathHashes(const Tree& tree, bool (*counts)(const Instance&)) {
  std::vector<Hash> hashes(tree.size());
  for (std::uint32_t node = 0; node < tree.size(); ++node) {
    const std::uint32_t parent = tree[node].parent;
    const Hash above = parent == Tree::kNone ? 0 : hashes[parent];
    const Instance& object = *tree[node].object;
    hashes[node] = counts(object) ? mix(above, hashOf(ownName(object))) : above;
  }
  return hashes;
}

Contents contentHashes(const Tree& tree) {
  Contents hashes;
  hashes.body.resize(tree.size());
  hashes.whole.resize(tree.size());
  // In reverse order: contained objects come after their owner, so each node is complete when it is reached.
  for (std::uint32_t node = tree.size(); node-- > 0;) {
    const Instance& object = *tree[node].object;
    hashes.body[node] = mix(ownHash(object), hashes.body[node]);
    hashes.whole[node] = mix(hashes.body[node], hashOf(ownName(object)));
    const std::uint32_t parent = tree[node].parent;
    if (parent == Tree::kNone) continue;
    hashes.body[parent] = mix(hashes.body[parent], mix(hashes.whole[node], tree[node].slot));
  }
  return hashes;
}

}  // namespace Tarvelon::metamodel::native
