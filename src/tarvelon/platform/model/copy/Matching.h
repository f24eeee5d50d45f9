#pragma once

#include <vector>

#include "tarvelon/platform/model/copy/Hashes.h"
#include "tarvelon/platform/model/copy/KeyIndex.h"
#include "tarvelon/platform/model/copy/Paths.h"
#include "tarvelon/platform/model/copy/Tree.h"

namespace Tarvelon::metamodel::native {

/// Decides which node of an older tree corresponds to which node of a newer tree, by the rules of
/// differences(). Two nodes that match always have the same class.
class Matching {
 public:
  static constexpr std::uint32_t kNone = Tree::kNone;

  /// If `areRootsOne` is true, each tree has one root, and the roots match whatever their names are.
  /// REQUIRES: both trees are indexed and outlive this object.
  Matching(const Tree& older, const Tree& newer, bool areRootsOne);

  /// The matching node in the other tree, kNone if there is none.
  std::uint32_t newerOf(std::uint32_t node) const noexcept { return mOlder.match[node]; }
  std::uint32_t olderOf(std::uint32_t node) const noexcept { return mNewer.match[node]; }
  /// Whether the targets of two references are the same object.
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
    /// Hashes of the content with references. They are computed after the named nodes have been matched.
    std::vector<Hash> referring;
    /// Paths of referenced objects outside the tree.
    Paths outside;
  };

  void pair(std::uint32_t older, std::uint32_t newer) noexcept;
  void pairTrees(std::uint32_t older, std::uint32_t newer) noexcept;
  /// Pairs open nodes with equal keys. keyOf(side, node) returns 0 for a node that does not take part.
  template <class KeyOf, class Pair>
  void round(KeyOf keyOf, Pair pairUp);
  /// The same for some of the nodes, in the order of the trees.
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
