#include "tarvelon/platform/model/copy/Paths.h"

#include <algorithm>

#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/copy/Visit.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/objects/ModelObjects.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/objects/Slots.h"

namespace Tarvelon::metamodel::native {

std::uint32_t Paths::rootNumber(const Instance& root) const {
  if (mTree && mTree->isWhole()) return (*mTree)[mTree->find(root)].position;
  if (mRoots.empty()) mRoots = rootsOf(root.model());
  return static_cast<std::uint32_t>(std::ranges::find(mRoots, &root) - mRoots.begin());
}

std::uint32_t Paths::positionOf(const Instance& object) const {
  const std::uint32_t node = mTree ? mTree->find(object) : Tree::kNone;
  if (node != Tree::kNone && (*mTree)[node].parent != Tree::kNone) return (*mTree)[node].position;
  return listOf(*object.owner(), object.ownerSlot())->find(&object);
}

std::string Paths::stepTo(const Instance& object) const {
  const Instance* owner = object.owner();
  if (!owner) return std::string(shortName(object.cls())) + "#" + std::to_string(rootNumber(object));
  const unsigned slot = object.ownerSlot();
  std::string step = std::string(".") + owner->cls().slotProperties[slot]->row().name;
  if (isList(owner->cls(), slot)) step.append("[").append(std::to_string(positionOf(object))).append("]");
  return step;
}

/// Uses property and index up to the first named object, and only names from there on.
void Paths::walk(PathText& path, const Instance* from, bool isByName) const {
  const Instance* each = from;
  for (; each && !(isByName && isNamed(*each)); each = each->owner(), isByName = true) {
    if (!path.prepend(stepTo(*each))) return;
  }
  for (; each; each = each->owner()) {
    if (!(isNamed(*each) ? path.prependName(ownName(*each)) : path.pass())) return;
  }
}

std::string Paths::path(const Instance& object) const {
  PathText path(object);
  walk(path, &object, true);
  return path.text();
}

std::string Paths::uniquePath(const Instance& object) const {
  PathText path(object);
  walk(path, &object, false);
  return path.text();
}

std::string Paths::place(const Instance& object, bool isUnique) const {
  PathText path(object);
  if (path.prepend(stepTo(object))) walk(path, object.owner(), !isUnique);
  return path.text();
}

bool Paths::isCut(const Instance& object) const {
  PathText path(object);
  if (path.isCut()) return true;
  // Most paths are short, which an upper bound of their length shows without building the text.
  constexpr std::size_t kStep = 128;
  std::size_t most = 0;
  for (const Instance* each = &object; each; each = each->owner()) most += kStep + 3 * ownName(*each).size();
  if (most <= PathText::kMostBytes) return false;
  walk(path, &object, false);
  return path.isCut();
}

bool Paths::areEqual(const Instance& object, const Paths& others, const Instance& other) const {
  const Instance* one = &object;
  const Instance* two = &other;
  bool isBelowName = false;
  for (;;) {
    if (isBelowName) {
      while (one && !isNamed(*one)) one = one->owner();
      while (two && !isNamed(*two)) two = two->owner();
    }
    if (!one || !two) return one == two;
    if (isNamed(*one) != isNamed(*two)) return false;
    if (isNamed(*one) ? ownName(*one) != ownName(*two) : stepTo(*one) != others.stepTo(*two)) return false;
    isBelowName = isBelowName || isNamed(*one);
    one = one->owner();
    two = two->owner();
  }
}

}  // namespace Tarvelon::metamodel::native
