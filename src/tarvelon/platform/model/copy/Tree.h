#pragma once

#include <cstdint>
#include <vector>

namespace Tarvelon::metamodel::native {

class Instance;
class NativeModel;

/// A snapshot of objects and everything they contain, in depth-first order: each object comes before the
/// objects it contains, which are in the order of its properties and lists. So the subtree of an object is a
/// contiguous range.
class Tree {
 public:
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

  struct Node {
    Instance* object;
    /// The node of the owner, kNone for a root.
    std::uint32_t parent;
    /// The index in the owner's list, or among the roots.
    std::uint32_t position;
    /// The index after the last node of the subtree.
    std::uint32_t end;
    /// The owner's slot that contains the object. REQUIRES: it is not a root.
    std::uint8_t slot;
  };

  /// The tree of one object, whether the object has an owner or not.
  explicit Tree(Instance& root);
  /// The tree of a whole model. Its roots are the objects without an owner.
  explicit Tree(const NativeModel& model);

  std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(mNodes.size()); }
  const Node& operator[](std::uint32_t index) const noexcept { return mNodes[index]; }
  const std::vector<Node>& nodes() const noexcept { return mNodes; }
  /// Whether this is the tree of a whole model.
  bool isWhole() const noexcept { return mIsWhole; }

  /// Builds the table that find() uses. Cost: Linear.
  void index();
  /// Returns the node of an object of the same model, kNone if the tree does not contain it. Constant time.
  /// REQUIRES: index().
  std::uint32_t find(const Instance& object) const noexcept;

  /// Calls visit(node) for each child of the node, or for each root if `parent` is kNone.
  template <class Visit>
  void forEachChild(std::uint32_t parent, Visit visit) const {
    const std::uint32_t end = parent == kNone ? size() : mNodes[parent].end;
    for (std::uint32_t child = parent == kNone ? 0 : parent + 1; child < end; child = mNodes[child].end)
      visit(child);
  }

 private:
  struct Entry {
    std::uint32_t number;
    std::uint32_t node;
  };
  void grow(std::vector<Node> pending);
  std::uint32_t home(std::uint32_t number) const noexcept;

  bool mIsWhole = false;
  std::vector<Node> mNodes;
  /// Open addressing, at most half full.
  std::vector<Entry> mEntries;
  unsigned mShift = 0;
};

}  // namespace Tarvelon::metamodel::native
