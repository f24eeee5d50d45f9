#pragma once

#include <string>
#include <vector>

#include "tarvelon/platform/model/copy/Tree.h"
#include "tarvelon/platform/model/names/PathText.h"

namespace Tarvelon::metamodel::native {

/// Paths that identify objects of a model: the qualified name or, for objects without a name, property and
/// index below the nearest named owner: "/Brakes/Controller.dataAccess[2]", with indices from 0. A root
/// without a name is "behavior.Runnable#3", with its index among the roots of the model.
///
/// uniquePath() uses property and index for the object even if it has a name, for names that are ambiguous.
/// A very long path is shortened to its end: see PathText.
/// Cost: Proportional to the depth, up to the limit of PathText. In addition, for an object outside the tree,
///       proportional to the length of its list or, for a root, to the size of the model.
class Paths {
 public:
  /// REQUIRES: tree.index() was called, and the tree outlives this object.
  explicit Paths(const Tree& tree) noexcept : mTree(&tree) {}
  /// For any objects, without a tree that knows their positions.
  Paths() noexcept = default;

  std::string path(const Instance& object) const;
  std::string uniquePath(const Instance& object) const;
  /// The object's property and index below its owner: "/Brakes.PackagedElement[3]". If `isUnique` is true,
  /// the owner is identified by property and index instead of its name.
  std::string place(const Instance& object, bool isUnique = false) const;
  /// Whether uniquePath() of the object is shortened. Then it may be the path of another object as well.
  bool isCut(const Instance& object) const;
  /// Whether two objects, which may belong to different models, have the same path. Compares the full paths.
  bool areEqual(const Instance& object, const Paths& others, const Instance& other) const;

 private:
  void walk(PathText& path, const Instance* from, bool isByName) const;
  std::string stepTo(const Instance& object) const;
  std::uint32_t positionOf(const Instance& object) const;
  std::uint32_t rootNumber(const Instance& root) const;

  const Tree* mTree = nullptr;
  /// Lazily filled.
  mutable std::vector<Instance*> mRoots;
};

}  // namespace Tarvelon::metamodel::native
