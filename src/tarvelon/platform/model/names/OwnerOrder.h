#pragma once

#include <compare>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace Tarvelon::metamodel::native {

class Instance;

/// Named objects below one holder, in the order of a walk from it: by slots, then by places in them. Only
/// objects without a name stand between: each of these is looked at once, however many objects it holds.
/// Cost: time and memory grow with the objects and those between; a list of which several are held with its
///       length as well.
class OwnerOrder {
 public:
  /// Those of the objects that `holder` names; null means those that nothing named holds.
  /// REQUIRES: none is there twice.
  OwnerOrder(std::span<Instance* const> objects, const Instance* holder);

  /// Null if there is none.
  Instance* first() const;
  std::vector<Instance*> all() const;

 private:
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};
  struct Node {
    /// The object, null for one that stands between.
    Instance* named;
    const Instance* object;
    std::uint32_t firstChild;
    std::uint32_t nextSibling;
  };
  /// Where a child stands in its owner. What stands at the top has its number instead.
  struct Place {
    unsigned slot;
    std::uint32_t position;
    std::uint32_t node;
    auto operator<=>(const Place&) const = default;  // NOLINT(modernize-use-nullptr): none is written
  };

  /// The node of the object's owner, kNone if `holder` does not name the object.
  std::uint32_t ownerNode(const Instance& object, const Instance* holder);
  std::uint32_t add(Instance* named, const Instance& object, std::uint32_t owner);
  /// The children, in no order, with their places if there are several.
  std::vector<Place> childrenOf(std::uint32_t node) const;
  static void findPositions(std::vector<Place>& children, const std::vector<Node>& nodes);

  /// The first one stands for the holder.
  std::vector<Node> mNodes;
  std::unordered_map<const Instance*, std::uint32_t> mBetween;
  std::vector<const Instance*> mPassed;
};

}  // namespace Tarvelon::metamodel::native
