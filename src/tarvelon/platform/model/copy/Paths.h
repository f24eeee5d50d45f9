#pragma once

#include <string>
#include <vector>

#include "tarvelon/platform/model/copy/Tree.h"
#include "tarvelon/platform/model/names/PathText.h"

namespace Tarvelon::metamodel::native {

/// What tells one object of a model from all others: its qualified name or, where it has none, the way to it
/// from what holds it. "/Brakes/Controller.dataAccess[2]" stands at index 2, counted from 0; what nothing
/// holds is "behavior.Runnable#3", the model's root of that index.
///
/// A property and an index name what has a name as well: uniquePath() says so where a name is not enough.
/// What stands very deep, or has very long names above it, is told by the end of its path: see PathText.
/// Cost: proportional to the depth, up to PathText's bound, and, for what stands in a list or nowhere and was
/// not met in the tree, to that list or the model.
class Paths {
 public:
  /// REQUIRES: tree.index(), and the tree stays as long as this.
  explicit Paths(const Tree& tree) noexcept : mTree(&tree) {}
  /// For objects of any kind, without a tree that knows where they stand.
  Paths() noexcept = default;

  std::string path(const Instance& object) const;
  std::string uniquePath(const Instance& object) const;
  /// The place in the property of its owner: "/Brakes.PackagedElement[3]". `isUnique` tells owners of one
  /// name apart.
  std::string place(const Instance& object, bool isUnique = false) const;
  /// Whether the path is so long that it is told by its end, and so may be that of another object as well.
  bool isCut(const Instance& object) const;
  /// Whether the path of one object is that of another, which may belong to another model: all of both.
  bool areEqual(const Instance& object, const Paths& others, const Instance& other) const;

 private:
  void walk(PathText& path, const Instance* from, bool isByName) const;
  std::string stepTo(const Instance& object) const;
  std::uint32_t positionOf(const Instance& object) const;
  std::uint32_t rootNumber(const Instance& root) const;

  const Tree* mTree = nullptr;
  /// Made when first asked for.
  mutable std::vector<Instance*> mRoots;
};

}  // namespace Tarvelon::metamodel::native
