#pragma once

#include <vector>

#include "tarvelon/platform/model/copy/Hashes.h"
#include "tarvelon/platform/model/copy/KeyIndex.h"
#include "tarvelon/platform/model/copy/Paths.h"
#include "tarvelon/platform/model/copy/Tree.h"

namespace Tarvelon::metamodel::native {

/// Which node of an older tree is which of a newer one, by the rules of differences().
///
/// Two nodes that match have the same class.
class Matching {
 public:
  static constexpr std::uint32_t kNone = Tree::kNone;

  /// `areRootsOne` says that each tree has one root and that these match, whatever they are called.
  /// REQUIRES: both trees are indexed and stay as long as this.
  Matching(const Tree& older, const Tree& newer, bool areRootsOne);

  /// The node on the other side, kNone for one that has none.
  std::uint32_t newerOf(std::uint32_t node) const noexcept { return mOlder.match[node]; }
  std::uint32_t olderOf(std::uint32_t node) const noexcept { return mNewer.match[node]; }
  /// Whether what the older node refers to is what the newer one refers to.
  bool areSame(const Instance& olderTarget, const Instance& newerTarget) const;

 private:
  using Nodes = const std::vector<std::uint32_t>&;
  struct Side {
    explicit Side(const Tree& nodes);
    bool isOpen(std::uint32_t node) const noexcept { return match[node] == kNone; }

    const Tree& tree;
    std::vector<std::uint32_t> match;
    std::vector<Hash> paths;
    Contents contents;
    /// With references, which takes the names to be matched.
    std::vector<Hash> referring;
    /// For what is referred to and stands outside the tree.
    Paths outside;
  };

  void pair(std::uint32_t older, std::uint32_t newer) noexcept;
  void pairTrees(std::uint32_t older, std::uint32_t newer) noexcept;
  /// Pairs open nodes of equal key: keyOf(side, node) gives 0 for a node that has no part in it.
  template <class KeyOf, class Pair>
  void round(KeyOf keyOf, Pair pairUp);
  /// The same among some nodes, in the order of the trees.
  template <class KeyOf, class Pair>
  void roundAmong(Nodes older, Nodes newer, KeyOf keyOf, Pair pairUp);
  void matchNamesBelow();
  void matchNames();
  void matchMoved();
  void matchRenamed(bool isHolding);
  void hashReferences(Side& side, bool isNewer) const;
  Hash targetHash(const Side& side, bool isNewer, const Instance& target) const;
  void matchUnnamed();
  void matchChildren(std::uint32_t older, std::uint32_t newer);
  void matchPlaces(Nodes older, Nodes newer);
  void matchGroups(Nodes older, Nodes newer);
  void matchKeys(Nodes older, const std::vector<Hash>& olderKeys, Nodes newer,
                 const std::vector<Hash>& newerKeys);

  Side mOlder;
  Side mNewer;
  KeyIndex mKeys;
};

}  // namespace Tarvelon::metamodel::native
