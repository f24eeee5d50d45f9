#include <vector>

#include "platform/k7q/Destruction.h"
#include "platform/tarvelon/Held.h"
#include "platform/tarvelon/Instance.h"
#include "platform/tarvelon/Journal.h"
#include "platform/tarvelon/Links.h"
#include "platform/tarvelon/NativeModel.h"
#include "platform/tarvelon/Steps.h"
#include "platform/tarvelon/WordList.h"

// An object goes with all that it holds, however deep that is: no recursion, and nothing that could fail.
// What is to go is chained up through the objects themselves; then every tie to what stays is cut; then they
// are freed.
namespace Tarvelon::metamodel::native {

namespace {

void chainUp(Instance& root) noexcept {
  root.markDying();
  Instance* last = &root;
  for (Instance* object = &root; object; object = object->nextDying()) {
    forEachObject(*object, object->cls().holdingSlots, [&last](Instance& held, unsigned /*slot*/) {
      held.markDying();
      last->setNextDying(&held);
      last = &held;
    });
  }
}

/// Takes a dying object out of a list of references. One that stands far inside takes all that are dying
/// along: so a tree is destroyed in one pass over each list, however many of its objects stand in it and in
/// whatever order.
void leaveList(Instance& referring, unsigned slot, const Instance& object) noexcept {
  constexpr std::uint32_t kNear = 32;
  WordList& list = *listOf(referring, slot);
  const std::uint32_t place = list.findNearEnds(&object, kNear);
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

/// Empties every place outside that refers to a dying object.
void leaveReferrers(Instance& object) noexcept {
  Word* word = object.find(Instance::kReferrerSlot);
  if (!word) return;
  Referrers(word->bits).forEach([&object](Referrer referrer) {
    Instance& referring = object.model().instance(referrer.instance);
    if (referring.isDying()) return;
    if ((referring.cls().listSlots >> referrer.slot & 1) != 0) {
      leaveList(referring, referrer.slot, object);
    } else {
      referring.remove(referrer.slot);
    }
  });
}

/// The object and all that it holds, holders first.
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

/// Where something outside the tree, which is marked as dying, refers into it.
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

void leave(const Mention& mention) noexcept {
  Instance& object = *mention.object;
  if ((object.cls().listSlots >> mention.slot & 1) == 0) {
    make(valueStep(object, mention.slot, false, {}));
    return;
  }
  const std::uint32_t index = listOf(object, mention.slot)->find(mention.element);
  make({&object, Word{.object = mention.element}, {}, index, mention.slot, Step::Kind::Element, true, false});
}

/// The way of a model with a journal, which can bring back what is destroyed: the tree stays as it is and is
/// buried, so that nothing but what refers into it has to be put back.
void buryTree(Instance& root, Journal& journal) {
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
  for (Instance* object : tree) object->setDying(false);
  leaveOwner(root);
  for (const Mention& mention : mentions) leave(mention);
  ++K7Q::mi::gDestructions;
  for (Instance* object : tree) make({object, {}, {}, 0, 0, Step::Kind::Life, true, false});
}

}  // namespace

void leaveReferred(Instance& object) noexcept {
  const bool keepsRoom = object.model().journal() != nullptr;
  forEachObject(object, object.cls().referringSlots, [&object, keepsRoom](Instance& referred, unsigned slot) {
    if (referred.isDying()) return;
    referred.removeReferrer({object.number(), static_cast<std::uint8_t>(slot)}, keepsRoom);
  });
}

void destroyTree(Instance& root) {
  NativeModel& model = root.model();
  if (Journal* journal = model.journal()) {
    Batch batch(model);
    buryTree(root, *journal);
    return;
  }
  leaveOwner(root);
  chainUp(root);
  for (Instance* object = &root; object; object = object->nextDying()) {
    leaveReferrers(*object);
    leaveReferred(*object);
  }
  ++K7Q::mi::gDestructions;
  for (Instance* object = &root; object;) {
    Instance* next = object->nextDying();
    model.expire(*object);
    object = next;
  }
}

}  // namespace Tarvelon::metamodel::native
