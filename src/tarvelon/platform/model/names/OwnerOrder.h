#pragma once

#include <compare>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace Tarvelon::metamodel::native {

class Instance;

/// Sorts named objects below one holder in the order of containment: by slot, then by index in the list.
/// There may be objects without a name between the holder and a named object; each of them is visited once.
/// Cost: Time and memory are proportional to the number of objects and of objects between them, plus the
///       length of each long list that contains several of them.
class OwnerOrder {
 public:
  /// Keeps those of the objects whose naming holder is `holder`. A null holder stands for "no named owner".
  /// REQUIRES: no object occurs twice.
  OwnerOrder(std::span<Instance* const> objects, const Instance* holder);

  /// The first object, null if there is none.
  Instance* first() const;
  std::vector<Instance*> all() const;

 private:
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};
  struct Node {
    /// The object. Null for an object without a name between the holder and named objects.
    Instance* named;
    const Instance* object;
    std::uint32_t firstChild;
    std::uint32_t nextSibling;
  };
  /// The position of a child in its owner. A root uses its object number instead.
  struct Place {
    unsigned slot;
    std::uint32_t position;
    std::uint32_t node;
    auto operator<=>(const Place&) const = default;  // NOLINT(modernize-use-nullptr): none is written
  };

  /// The node of the object's owner, kNone if `holder` is not the naming holder of the object.
  std::uint32_t ownerNode(const Instance& object, const Instance* holder);
  std::uint32_t add(Instance* named, const Instance& object, std::uint32_t owner);
  /// The children, unordered. Their positions are filled in only if there are several.
  std::vector<Place> childrenOf(std::uint32_t node) const;
  static void findPositions(std::vector<Place>& children, const std::vector<Node>& nodes);

  /// The first node is that of the holder.
  std::vector<Node> mNodes;
  std::unordered_map<const Instance*, std::uint32_t> mBetween;
  std::vector<const Instance*> mPassed;
};

}  // namespace Tarvelon::metamodel::native
