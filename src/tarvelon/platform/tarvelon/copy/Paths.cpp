#include "tarvelon/platform/tarvelon/copy/Paths.h"

#include <algorithm>

#include "tarvelon/platform/tarvelon/Links.h"
#include "tarvelon/platform/tarvelon/ModelObjects.h"
#include "tarvelon/platform/tarvelon/NativeModel.h"
#include "tarvelon/platform/tarvelon/QualifiedName.h"
#include "tarvelon/platform/tarvelon/copy/Visit.h"

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

void Paths::appendStep(std::string& path, const Instance& object) const {
  const Instance* owner = object.owner();
  if (!owner) {
    path.append(shortName(object.cls())).append("#").append(std::to_string(rootNumber(object)));
    return;
  }
  const unsigned slot = object.ownerSlot();
  path.append(".").append(owner->cls().slotProperties[slot]->row().name);
  if (isList(owner->cls(), slot)) path.append("[").append(std::to_string(positionOf(object))).append("]");
}

std::string Paths::walk(const Instance& object, bool isByName) const {
  std::vector<const Instance*> steps;
  for (const Instance* each = &object; each; each = each->owner()) {
    steps.push_back(each);
    if (isNamed(*each) && (isByName || each != &object)) break;
  }
  // The names above a named object are its qualified name; what is below it goes by property and index.
  const bool startsNamed = isNamed(*steps.back()) && (isByName || steps.size() > 1);
  std::string path = startsNamed ? qualifiedName(*steps.back()) : std::string();
  if (startsNamed) steps.pop_back();
  for (auto each = steps.rbegin(); each != steps.rend(); ++each) appendStep(path, **each);
  return path;
}

std::string Paths::place(const Instance& object, bool isUnique) const {
  std::string path = object.owner() ? walk(*object.owner(), !isUnique) : std::string();
  appendStep(path, object);
  return path;
}

}  // namespace Tarvelon::metamodel::native
