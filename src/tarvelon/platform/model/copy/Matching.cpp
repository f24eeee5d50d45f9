#include "tarvelon/platform/model/copy/Matching.h"

#include <algorithm>
#include <functional>
#include <string>

#include "tarvelon/platform/model/copy/Paths.h"
#include "tarvelon/platform/model/copy/Visit.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/words/KeyedHash.h"

namespace Tarvelon::metamodel::native {

namespace {

const ClassData& classOf(const Tree& tree, std::uint32_t node) noexcept { return tree[node].object->cls(); }
bool isNamed(const Tree& tree, std::uint32_t node) { return hasName(classOf(tree, node)); }

}  // namespace

Matching::Side::Side(const Tree& nodes)
    : tree(nodes),
      match(nodes.size(), kNone),
      paths(pathHashes(nodes, [](const Instance& object) { return hasName(object.cls()); })),
      contents(contentHashes(nodes)),
      referring(nodes.size()) {}

Matching::Matching(const Tree& older, const Tree& newer, bool areRootsOne) : mOlder(older), mNewer(newer) {
  if (areRootsOne) pair(0, 0);
  matchNamesBelow();
  matchNames();
  matchRenamed(true);
  matchMoved();
  matchRenamed(false);
  hashReferences(mOlder, false);
  hashReferences(mNewer, true);
  matchUnnamed();
}

void Matching::pair(std::uint32_t older, std::uint32_t newer) noexcept {
  mOlder.match[older] = newer;
  mNewer.match[newer] = older;
}

/// Pairs two nodes with equal content, and the nodes they contain.
void Matching::pairTrees(std::uint32_t older, std::uint32_t newer) noexcept {
  const std::uint32_t size = mOlder.tree[older].end - older;
  pair(older, newer);
  if (mNewer.tree[newer].end - newer != size) return;
  for (std::uint32_t each = 1; each < size; ++each) {
    const bool isOpen = mOlder.isOpen(older + each) && mNewer.isOpen(newer + each);
    if (isOpen && &classOf(mOlder.tree, older + each) == &classOf(mNewer.tree, newer + each)) {
      pair(older + each, newer + each);
    }
  }
}

template <class KeyOf, class Pair>
void Matching::round(KeyOf keyOf, Pair pairUp) {
  const auto open = [](const Side& side) {
    std::vector<std::uint32_t> nodes;
    for (std::uint32_t node = 0; node < side.tree.size(); ++node) {
      if (side.isOpen(node)) nodes.push_back(node);
    }
    return nodes;
  };
  roundAmong(open(mOlder), open(mNewer), keyOf, pairUp);
}

template <class KeyOf, class Pair>
void Matching::roundAmong(Nodes older, Nodes newer, KeyOf keyOf, Pair pairUp) {
  if (older.empty() || newer.empty()) return;
  mKeys.reset(newer.size());
  for (auto node = newer.rbegin(); node != newer.rend(); ++node) {
    const Hash key = mNewer.isOpen(*node) ? keyOf(mNewer, *node) : 0;
    if (key != 0) mKeys.push(key, *node);
  }
  for (const std::uint32_t node : older) {
    const Hash key = mOlder.isOpen(node) ? keyOf(mOlder, node) : 0;
    if (key == 0) continue;
    const std::uint32_t found = mKeys.take(key, [&](std::uint32_t each) {
      return mNewer.isOpen(each) && &classOf(mNewer.tree, each) == &classOf(mOlder.tree, node);
    });
    if (found != kNone) pairUp(node, found);
  }
}

namespace {

/// The nodes whose class has a name property, grouped by the number of such owners above them.
struct Levels {
  explicit Levels(const Tree& tree);

  std::vector<std::vector<std::uint32_t>> nodes;
  /// For each node: the nearest owner whose class has a name property.
  std::vector<std::uint32_t> holders;
};

Levels::Levels(const Tree& tree) : holders(tree.size(), Tree::kNone) {
  std::vector<std::uint32_t> level(tree.size());
  for (std::uint32_t node = 0; node < tree.size(); ++node) {
    const std::uint32_t parent = tree[node].parent;
    if (parent != Tree::kNone) {
      holders[node] = isNamed(tree, parent) ? parent : holders[parent];
      level[node] = level[parent] + (isNamed(tree, parent) ? 1 : 0);
    }
    if (!isNamed(tree, node)) continue;
    if (level[node] >= nodes.size()) nodes.resize(level[node] + 1);
    nodes[level[node]].push_back(node);
  }
}

}  // namespace

// Goes from the top down, level by level. So objects below different owners of the same name stay apart. If
// several nodes have the same name, three rounds pair them: first nodes with equal content in the same place,
// then nodes with equal content, then the others.
void Matching::matchNamesBelow() {
  Levels older(mOlder.tree);
  Levels newer(mNewer.tree);
  const auto byName = [&](const Side& side, std::uint32_t node) -> Hash {
    const bool isNewer = &side == &mNewer;
    std::uint32_t holder = (isNewer ? newer : older).holders[node];
    if (holder != kNone && !isNewer) {
      holder = mOlder.match[holder];
      if (holder == kNone) return 0;
    }
    const Instance& object = *side.tree[node].object;
    return mix(mix(holder, hashOf(ownName(object))), object.cls().ordinal);
  };
  const auto byContents = [&](const Side& side, std::uint32_t node) {
    const Hash name = byName(side, node);
    return name == 0 ? 0 : mix(name, side.contents.body[node]);
  };
  const auto byPlace = [&](const Side& side, std::uint32_t node) {
    const Hash contents = byContents(side, node);
    return contents == 0 ? 0 : mix(contents, mix(side.tree[node].slot, side.tree[node].position));
  };
  const auto one = [this](std::uint32_t before, std::uint32_t after) { pair(before, after); };
  const std::size_t depth = std::min(older.nodes.size(), newer.nodes.size());
  for (std::size_t level = 0; level < depth; ++level) {
    roundAmong(older.nodes[level], newer.nodes[level], byPlace, one);
    // Most nodes are paired by now.
    std::erase_if(older.nodes[level], [&](std::uint32_t node) { return !mOlder.isOpen(node); });
    std::erase_if(newer.nodes[level], [&](std::uint32_t node) { return !mNewer.isOpen(node); });
    roundAmong(older.nodes[level], newer.nodes[level], byContents, one);
    roundAmong(older.nodes[level], newer.nodes[level], byName, one);
  }
}

// A node that is still open has moved to another owner with the same qualified name.
void Matching::matchNames() {
  const auto one = [this](std::uint32_t older, std::uint32_t newer) { pair(older, newer); };
  const auto byName = [](const Side& side, std::uint32_t node) {
    return isNamed(side.tree, node) ? mix(side.paths[node], classOf(side.tree, node).ordinal) : 0;
  };
  round(
      [&](const Side& side, std::uint32_t node) {
        return isNamed(side.tree, node) ? mix(byName(side, node), side.contents.body[node]) : 0;
      },
      one);
  round(byName, one);
}

void Matching::matchMoved() {
  round([](const Side& side,
           std::uint32_t node) { return isNamed(side.tree, node) ? side.contents.whole[node] : 0; },
        [this](std::uint32_t older, std::uint32_t newer) { pairTrees(older, newer); });
}

// The owners must match. Nodes that contain something are tried before moved nodes; otherwise the objects
// they contain would be reported as moved.
void Matching::matchRenamed(bool isHolding) {
  round(
      [&](const Side& side, std::uint32_t node) -> Hash {
        const Tree::Node& each = side.tree[node];
        if (!isNamed(side.tree, node) || (each.end != node + 1) != isHolding) return 0;
        const bool isNewer = &side == &mNewer;
        const std::uint32_t owner = each.parent == kNone || isNewer ? each.parent : mOlder.match[each.parent];
        if (owner == kNone && each.parent != kNone) return 0;
        return mix(side.contents.body[node], mix(owner, each.slot));
      },
      [this](std::uint32_t older, std::uint32_t newer) { pairTrees(older, newer); });
}

/// Identifies the target of a reference in both trees: by its pair or by its name.
Hash Matching::targetHash(const Side& side, bool isNewer, const Instance& target) const {
  std::uint32_t node = side.tree.find(target);
  if (node == kNone) return keyedHash(std::string_view(side.outside.path(target)));
  const Hash cls = classOf(side.tree, node).ordinal;
  while (node != kNone && !isNamed(side.tree, node)) node = side.tree[node].parent;
  if (node == kNone) return cls;
  if (side.isOpen(node)) return mix(side.paths[node], cls);
  return mix(isNewer ? side.match[node] : node, cls);
}

void Matching::hashReferences(Side& side, bool isNewer) const {
  for (std::uint32_t node = side.tree.size(); node-- > 0;) {
    const Instance& object = *side.tree[node].object;
    Hash hash = mix(side.contents.whole[node], side.referring[node]);
    forEachTarget(object, object.cls().referringSlots,
                  [&](const Instance& target, unsigned slot, std::uint32_t /*position*/) {
                    hash = mix(hash, mix(slot, targetHash(side, isNewer, target)));
                  });
    side.referring[node] = hash;
    const std::uint32_t parent = side.tree[node].parent;
    if (parent != kNone) side.referring[parent] = mix(side.referring[parent], hash);
  }
}

// From the top: an owner is matched before the objects it contains. Equal nodes that are still open after
// that were moved to another place.
void Matching::matchUnnamed() {
  matchChildren(kNone, kNone);
  for (std::uint32_t node = 0; node < mOlder.tree.size(); ++node) {
    if (!mOlder.isOpen(node)) matchChildren(node, mOlder.match[node]);
  }
  round([](const Side& side,
           std::uint32_t node) { return isNamed(side.tree, node) ? 0 : side.referring[node]; },
        [this](std::uint32_t older, std::uint32_t newer) { pairTrees(older, newer); });
}

void Matching::matchChildren(std::uint32_t older, std::uint32_t newer) {
  std::vector<std::uint32_t> olderOpen;
  std::vector<std::uint32_t> newerOpen;
  const auto collect = [](const Side& side, std::uint32_t parent, std::vector<std::uint32_t>& open) {
    side.tree.forEachChild(parent, [&](std::uint32_t child) {
      if (side.isOpen(child) && !isNamed(side.tree, child)) open.push_back(child);
    });
  };
  collect(mOlder, older, olderOpen);
  if (olderOpen.empty()) return;
  collect(mNewer, newer, newerOpen);
  if (!newerOpen.empty()) matchGroups(olderOpen, newerOpen);
}

/// Pairs equal nodes at the beginning and at the end of both lists and, if the lists have the same length,
/// equal nodes at the same index. Mostly this pairs everything.
void Matching::matchPlaces(Nodes older, Nodes newer) {
  const auto pairEqual = [&](std::size_t left, std::size_t right) {
    const std::uint32_t before = older[left];
    const std::uint32_t after = newer[right];
    const bool isEqual = mOlder.referring[before] == mNewer.referring[after] &&
                         mOlder.tree[before].slot == mNewer.tree[after].slot;
    if (isEqual) pair(before, after);
    return isEqual;
  };
  const std::size_t shorter = std::min(older.size(), newer.size());
  std::size_t front = 0;
  while (front < shorter && pairEqual(front, front)) ++front;
  std::size_t back = 0;
  while (back < shorter - front && pairEqual(older.size() - back - 1, newer.size() - back - 1)) ++back;
  if (older.size() != newer.size()) return;
  for (std::size_t place = front; place + back < shorter; ++place) pairEqual(place, place);
}

/// Pairs the children of one pair of nodes: first equal ones, then those that differ only in references, then
/// those that have the same class and come behind the same pair of matched nodes.
void Matching::matchGroups(Nodes older, Nodes newer) {
  matchPlaces(older, newer);
  const auto isOpen = [this](std::uint32_t node) { return mOlder.isOpen(node); };
  if (std::ranges::none_of(older, isOpen)) return;
  using HashOf = Hash (*)(const Side&, std::uint32_t);
  for (const HashOf hashOf :
       {HashOf([](const Side&side, std::uint32_t node) { return side.referring[node]; }),
        HashOf([](const Side&side, std::uint32_t node) { return side.contents.whole[node]; })}) {
    const auto keysOf = [&](const Side& side, Nodes nodes) {
      std::vector<Hash> keys;
      keys.reserve(nodes.size());
      for (const std::uint32_t node : nodes) keys.push_back(mix(hashOf(side, node), side.tree[node].slot));
      return keys;
    };
    matchKeys(older, keysOf(mOlder, older), newer, keysOf(mNewer, newer));
  }
  // The position of a node is described by the last matched node before it.
  const auto keysOf = [](const Side& side, Nodes nodes, auto newerOf) {
    std::vector<Hash> keys;
    keys.reserve(nodes.size());
    std::uint32_t before = kNone;
    for (const std::uint32_t node : nodes) {
      if (!side.isOpen(node)) before = newerOf(node);
      keys.push_back(mix(mix(classOf(side.tree, node).ordinal, before), side.tree[node].slot));
    }
    return keys;
  };
  matchKeys(older, keysOf(mOlder, older, [this](std::uint32_t node) { return mOlder.match[node]; }), newer,
            keysOf(mNewer, newer, [](std::uint32_t node) { return node; }));
}

/// Pairs open nodes with equal keys, in their order.
void Matching::matchKeys(Nodes older, const std::vector<Hash>& olderKeys, Nodes newer,
                         const std::vector<Hash>& newerKeys) {
  mKeys.reset(newer.size());
  for (std::size_t each = newer.size(); each-- > 0;) {
    if (mNewer.isOpen(newer[each])) mKeys.push(newerKeys[each], newer[each]);
  }
  for (std::size_t each = 0; each < older.size(); ++each) {
    if (!mOlder.isOpen(older[each])) continue;
    const std::uint32_t found = mKeys.take(olderKeys[each], [&](std::uint32_t node) {
      return &classOf(mNewer.tree, node) == &classOf(mOlder.tree, older[each]);
    });
    if (found != kNone) pair(older[each], found);
  }
}

bool Matching::areSame(const Instance& olderTarget, const Instance& newerTarget) const {
  const std::uint32_t older = mOlder.tree.find(olderTarget);
  const std::uint32_t newer = mNewer.tree.find(newerTarget);
  if (older != kNone && newer != kNone) return mOlder.match[older] == newer;
  if (older != newer) return false;
  if (&olderTarget == &newerTarget) return true;
  return &olderTarget.cls() == &newerTarget.cls() &&
         mOlder.outside.areEqual(olderTarget, mNewer.outside, newerTarget);
}

}  // namespace Tarvelon::metamodel::native
