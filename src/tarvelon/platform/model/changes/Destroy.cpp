#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "tarvelon/platform/model/changes/AuditHooks.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/changes/Steps.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/words/WordList.h"

// Destroying an object together with everything it contains, at any depth: without recursion and without
// anything that can fail.
//
// First the objects of the tree are linked into a list through the objects themselves, each followed by the
// objects that it contains; this is mostly the order of their creation, and so of their memory. In the same
// pass each object is removed from the referrers of the objects that it refers to. So the only remaining
// referrers are outside the tree. Then the references from outside are removed, and the objects are freed.
namespace Tarvelon::metamodel::native {

namespace {

void chainUp(Instance& root) noexcept {
  root.markDying();
  for (Instance* object = &root; object; object = object->nextDying()) {
    Instance* const rest = object->nextDying();
    Instance* last = object;
    forEachObject(*object, object->cls().holdingSlots, [&last](Instance& held, unsigned /*slot*/) {
      held.markDying();
      last->setNextDying(&held);
      last = &held;
    });
    last->setNextDying(rest);
    removeFromReferred(*object);
  }
}

/// Removes a marked object, one that is being destroyed, from a list of references. If there are many marked
/// objects and this one is not near an end of the list, all marked objects are removed from the list in one
/// pass. So destroying a tree takes one pass over each list, however many of its objects the list contains
/// and in whatever order.
void leaveList(Instance& referring, unsigned slot, const Instance& object, bool isOneOfMany) noexcept {
  constexpr std::uint32_t kNear = 32;
  WordList& list = *listOf(referring, slot);
  const std::uint32_t place = isOneOfMany ? list.findNearEnds(&object, kNear) : list.find(&object);
  if (place != WordList::kNotFound) {
    list.erase(place, 1);
    list.shrink();
    return;
  }
  const Referrer referrer{referring.number(), static_cast<std::uint8_t>(slot)};
  list.eraseIf([&](Word word) {
    if (word.object->isDying() && word.object != &object) word.object->removeReferrer(referrer);
    return word.object->isDying();
  });
}

/// Removes all references to a marked object. REQUIRES: all its referrers are outside the tree.
void leaveReferrers(Instance& object, bool isOneOfMany, StepRoom room) noexcept {
  Word* word = object.find(Instance::kReferrerSlot);
  if (!word) return;
  Referrers(word->bits).forEach([&object, isOneOfMany, room](Referrer referrer) {
    Instance& referring = object.model().instance(referrer.instance);
    referring.noteChange();
    if (isList(referring, referrer.slot)) {
      leaveList(referring, referrer.slot, object, isOneOfMany);
    } else {
      referring.remove(referrer.slot, room);
    }
  });
}

/// The object and everything it contains, owners first.
std::vector<Instance*> treeOf(Instance& root) {
  std::vector<Instance*> tree{&root};
  for (std::size_t index = 0; index < tree.size(); ++index) {
    forEachHeld(*tree[index], [&tree](Instance& held, unsigned /*slot*/) { tree.push_back(&held); });
  }
  return tree;
}

struct Mention {
  Instance* object;
  std::uint8_t slot;
  Instance* element;
};

/// The references from outside the tree into the tree. REQUIRES: the objects of the tree are marked.
std::vector<Mention> mentionsOf(const std::vector<Instance*>& tree) {
  std::vector<Mention> mentions;
  for (Instance* object : tree) {
    Word* word = object->find(Instance::kReferrerSlot);
    if (!word) continue;
    Referrers(word->bits).forEach([&](Referrer referrer) {
      Instance& referring = object->model().instance(referrer.instance);
      if (!referring.isDying() && referring.isAlive())
        mentions.push_back({&referring, referrer.slot, object});
    });
  }
  return mentions;
}

Step leaving(const Mention& mention, std::uint32_t index) noexcept {
  const Word element{.object = mention.element};
  return {mention.object, element, {}, index, mention.slot, Step::Kind::Element, true, false};
}

/// Removes the references of one place. A few are searched for in a list one by one. Many are collected in
/// one pass over the list and removed in another.
void leavePlace(std::span<const Mention> mentions, Journal& journal) noexcept {
  constexpr std::size_t kFew = 32;
  const Mention& first = mentions[0];
  Instance& object = *first.object;
  if (!isList(object, first.slot)) {
    make(valueStep(object, first.slot, false, {}));
    return;
  }
  const WordList& list = *listOf(object, first.slot);
  if (mentions.size() <= kFew) {
    for (const Mention& each : mentions) make(leaving(each, list.find(each.element)));
    return;
  }
  for (std::uint32_t index = list.size(); index-- > 0;) {
    Instance& element = *list.at(index).object;
    if (element.isDying()) journal.note(leaving({&object, first.slot, &element}, index));
  }
  apply(journal.lastSteps(mentions.size()));
}

/// Removes the references of all places, place by place.
void leaveAll(std::vector<Mention>& mentions, Journal& journal) noexcept {
  const auto place = [](const Mention& each) { return std::pair(each.object->number(), each.slot); };
  std::ranges::sort(mentions, {}, place);
  for (auto first = mentions.begin(); first != mentions.end();) {
    const auto last = std::find_if(first, mentions.end(),
                                   [&](const Mention& each) { return place(each) != place(*first); });
    leavePlace({first, last}, journal);
    first = last;
  }
}

/// For a model with a journal, which can restore deleted objects. The tree keeps its values, so only the
/// references from outside must be put back.
void deleteTree(Instance& root, Journal& journal) {
  const std::vector<Instance*> tree = treeOf(root);
  for (Instance* object : tree) object->setDying(true);
  std::vector<Mention> mentions;
  try {
    mentions = mentionsOf(tree);
    journal.reserve(1 + mentions.size() + tree.size());
  } catch (...) {
    for (Instance* object : tree) object->setDying(false);
    throw;
  }
  removeFromOwner(root);
  leaveAll(mentions, journal);
  for (Instance* object : tree) object->setDying(false);
  root.model().noteDestruction();
  for (Instance* object : tree) make({object, {}, {}, 0, 0, Step::Kind::Life, true, false});
}

/// For a model without a journal: nothing is kept.
void freeTree(Instance& root, StepRoom room) noexcept {
  NativeModel& model = root.model();
  removeFromOwner(root);
  chainUp(root);
  const bool areMany = root.nextDying() != nullptr;
  model.noteDestruction();
  for (Instance* object = &root; object;) {
    Instance* next = object->nextDying();
    leaveReferrers(*object, areMany, room);
    model.expire(*object);
    object = next;
  }
}

}  // namespace

void removeFromReferred(Instance& object) noexcept {
  const bool keepsRoom = object.model().journal() != nullptr;
  forEachObject(object, object.cls().referringSlots, [&object, keepsRoom](Instance& referred, unsigned slot) {
    referred.removeReferrer({object.number(), static_cast<std::uint8_t>(slot)}, keepsRoom);
  });
}

void destroyTree(Instance& root) {
  NativeModel& model = root.model();
  if (const auto room = model.unjournaled()) {
    freeTree(root, *room);
    auditAfter(model);
    return;
  }
  Batch batch(model);
  deleteTree(root, *model.journal());
}

}  // namespace Tarvelon::metamodel::native
