#pragma once

#include <string>
#include <vector>

#include "tarvelon/platform/tarvelon/copy/Tree.h"

namespace Tarvelon::metamodel::native {

/// What tells one object of a model from all others: its qualified name or, where it has none, the way to it
/// from what holds it. "/Brakes/Controller.dataAccess[2]" stands at index 2, counted from 0; what nothing
/// holds is "behavior.Runnable#3", the model's root of that index.
///
/// A property and an index name what has a name as well: uniquePath() says so where a name is not enough.
/// Cost: proportional to the depth and, for what stands in a list or nowhere and was not met in the tree, to
/// that list or the model.
class Paths {
 public:
  /// REQUIRES: tree.index(), and the tree stays as long as this.
  explicit Paths(const Tree& tree) noexcept : mTree(&tree) {}
  /// For objects of any kind, without a tree that knows where they stand.
  Paths() noexcept = default;

  std::string path(const Instance& object) const { return walk(object, true); }
  std::string uniquePath(const Instance& object) const { return walk(object, false); }
  /// The place in the property of its owner: "/Brakes.PackagedElement[3]". `isUnique` tells owners of one
  /// name apart.
  std::string place(const Instance& object, bool isUnique = false) const;

 private:
  std::string walk(const Instance& object, bool isByName) const;
  void appendStep(std::string& path, const Instance& object) const;
  std::uint32_t positionOf(const Instance& object) const;
  std::uint32_t rootNumber(const Instance& root) const;

  const Tree* mTree = nullptr;
  /// Made when first asked for.
  mutable std::vector<Instance*> mRoots;
};

}  // namespace Tarvelon::metamodel::native
