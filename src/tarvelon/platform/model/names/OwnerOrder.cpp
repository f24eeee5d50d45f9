#include "tarvelon/platform/model/names/OwnerOrder.h"

#include <algorithm>
#include <functional>

#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::metamodel::native {

OwnerOrder::OwnerOrder(std::span<Instance* const> objects, const Instance* holder) {
  mNodes.reserve(objects.size() + 1);
  mNodes.push_back({nullptr, holder, kNone, kNone});
  for (Instance* object : objects) {
    const std::uint32_t owner = ownerNode(*object, holder);
    if (owner != kNone) add(object, *object, owner);
  }
}

std::uint32_t OwnerOrder::ownerNode(const Instance& object, const Instance* holder) {
  std::uint32_t node = 0;
  mPassed.clear();
  for (const Instance* each = object.owner(); each != holder; each = each->owner()) {
    if (!each || isNamed(*each)) {
      node = kNone;
      break;
    }
    const auto known = mBetween.find(each);
    if (known != mBetween.end()) {
      node = known->second;
      break;
    }
    mPassed.push_back(each);
  }
  for (auto each = mPassed.rbegin(); each != mPassed.rend(); ++each) {
    if (node != kNone) node = add(nullptr, **each, node);
    mBetween.emplace(*each, node);
  }
  return node;
}

std::uint32_t OwnerOrder::add(Instance* named, const Instance& object, std::uint32_t owner) {
  const auto node = static_cast<std::uint32_t>(mNodes.size());
  mNodes.push_back({named, &object, kNone, mNodes[owner].firstChild});
  mNodes[owner].firstChild = node;
  return node;
}

std::vector<OwnerOrder::Place> OwnerOrder::childrenOf(std::uint32_t node) const {
  std::vector<Place> children;
  for (std::uint32_t each = mNodes[node].firstChild; each != kNone; each = mNodes[each].nextSibling) {
    const Instance& object = *mNodes[each].object;
    children.push_back({object.owner() ? object.ownerSlot() : 0U, object.number(), each});
  }
  if (children.size() > 1 && mNodes[children[0].node].object->owner()) findPositions(children, mNodes);
  return children;
}

// A long list is searched in one pass for all children in it; a short list is searched for each child.
void OwnerOrder::findPositions(std::vector<Place>& children, const std::vector<Node>& nodes) {
  constexpr std::uint32_t kShort = 64;
  std::unordered_map<const Instance*, Place*> sought;
  std::vector<unsigned> longSlots;
  const Instance& owner = *nodes[children[0].node].object->owner();
  for (Place& child : children) {
    const Instance& object = *nodes[child.node].object;
    const WordList* list = isList(owner, child.slot) ? listOf(owner, child.slot) : nullptr;
    if (list && list->size() > kShort) {
      sought.emplace(&object, &child);
      if (std::ranges::find(longSlots, child.slot) == longSlots.end()) longSlots.push_back(child.slot);
    } else {
      child.position = list ? list->find(&object) : 0U;
    }
  }
  for (const unsigned slot : longSlots) {
    const WordList& list = *listOf(owner, slot);
    for (std::uint32_t position = 0; position < list.size(); ++position) {
      const auto found = sought.find(list.at(position).object);
      if (found != sought.end()) found->second->position = position;
    }
  }
}

Instance* OwnerOrder::first() const {
  std::uint32_t node = 0;
  while (mNodes[node].firstChild != kNone) node = std::ranges::min(childrenOf(node)).node;
  return mNodes[node].named;
}

std::vector<Instance*> OwnerOrder::all() const {
  std::vector<Instance*> objects;
  std::vector<std::uint32_t> open{0};
  while (!open.empty()) {
    const Node& node = mNodes[open.back()];
    std::vector<Place> children = childrenOf(open.back());
    open.pop_back();
    if (node.named) objects.push_back(node.named);
    std::ranges::sort(children, std::greater());
    for (const Place& child : children) open.push_back(child.node);
  }
  return objects;
}

}  // namespace Tarvelon::metamodel::native
