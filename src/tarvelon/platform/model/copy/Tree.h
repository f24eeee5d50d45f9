#pragma once

#include <cstdint>
#include <vector>

namespace Tarvelon::metamodel::native {

class Instance;
class NativeModel;

/// Objects with all that they hold, at one moment, in a row: each before what it holds, that in the order of
/// its properties and their lists. So what one object holds stands in a row behind it.
class Tree {
 public:
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

  struct Node {
    Instance* object;
    /// The node that holds it, kNone for a root.
    std::uint32_t parent;
    /// Its place in the list that holds it, or among the roots.
    std::uint32_t position;
    /// Behind the last of what it holds.
    std::uint32_t end;
    /// The property of its owner that holds it. REQUIRES: it is no root.
    std::uint8_t slot;
  };

  /// One object, whoever holds it.
  explicit Tree(Instance& root);
  /// A whole model: the roots are what nothing holds.
  explicit Tree(const NativeModel& model);

  std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(mNodes.size()); }
  const Node& operator[](std::uint32_t index) const noexcept { return mNodes[index]; }
  const std::vector<Node>& nodes() const noexcept { return mNodes; }
  /// Whether it is the tree of a model.
  bool isWhole() const noexcept { return mIsWhole; }

  /// Lets find() find. Cost: linear.
  void index();
  /// The node of an object of the same model, kNone if it is not there. REQUIRES: index(). Constant time.
  std::uint32_t find(const Instance& object) const noexcept;

  /// Calls visit(node index) for each that the node holds itself; for the roots when it is kNone.
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
