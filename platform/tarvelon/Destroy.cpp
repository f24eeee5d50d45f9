#include <bit>

#include "platform/k7q/Destruction.h"
#include "platform/tarvelon/Instance.h"
#include "platform/tarvelon/Links.h"
#include "platform/tarvelon/NativeModel.h"
#include "platform/tarvelon/WordList.h"

// An object goes with all that it holds, however deep that is: no recursion, and nothing that could fail.
// What is to go is chained up through the objects themselves; then every tie to what stays is cut; then they
// are freed.
namespace Tarvelon::metamodel::native {

namespace {

template <class Visit>
void forEachSlot(std::uint64_t slots, Visit visit) {
  for (; slots != 0; slots &= slots - 1) visit(static_cast<unsigned>(std::countr_zero(slots)));
}

/// Calls visit(Instance&) for each object in those of the object's slots.
template <class Visit>
void forEachObject(const Instance& object, std::uint64_t slots, Visit visit) {
  forEachSlot(object.presence() & slots, [&](unsigned slot) {
    const Word word = *object.find(slot);
    if ((object.cls().listSlots >> slot & 1) == 0) {
      visit(*word.object, slot);
      return;
    }
    for (std::uint32_t index = 0; index < word.list->size(); ++index)
      visit(*word.list->at(index).object, slot);
  });
}

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

/// Takes a dying object out of the referrers of everything outside that it refers to.
void leaveReferred(Instance& object) noexcept {
  forEachObject(object, object.cls().referringSlots, [&object](Instance& referred, unsigned slot) {
    if (referred.isDying()) return;
    referred.removeReferrer({object.number(), static_cast<std::uint8_t>(slot)});
  });
}

}  // namespace

void destroyTree(Instance& root) noexcept {
  NativeModel& model = root.model();
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
