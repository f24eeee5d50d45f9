#include "tarvelon/platform/model/audit/Auditor.h"

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/values/Refusal.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::metamodel::native {

namespace {

constexpr std::uint32_t kAnyLength = WordList::kMaxSize;
/// The longest list that checkSteps() reads.
constexpr std::uint32_t kShort = 64;
constexpr const char* kOwners = "owners and contained objects agree";
constexpr const char* kReferrers = "references and referrers agree";

bool isReferring(const Instance& object, unsigned slot) noexcept {
  return (object.cls().referringSlots & bitOf(slot)) != 0;
}

}  // namespace

void violate(std::string_view invariant, const std::string& what) {
  throw Violation{std::string(invariant) + ": " + what};
}

void Auditor::checkAll() {
  checkNumbers();
  checkFreePlaces();
  checkClasses();
  checkOwners();
  checkObjects();
  checkIds();
  checkNames();
  checkJournal();
}

void Auditor::checkSteps(std::span<const Step> steps) {
  const Instance* last = nullptr;
  for (const Step& step : steps) {
    if (step.object == last) continue;
    last = step.object;
    if (!isThere(last))
      violate("each step refers to an existing object", "the object of a step no longer exists");
    if (last->isAlive()) checkReferences(*last, kShort);
  }
}

bool Auditor::isThere(const Instance* object) const noexcept {
  return object && mModel.instances().find(object->number()) == object && !object->hasExpired();
}

/// Walks down from the objects without an owner. So each object is met exactly once.
void Auditor::checkOwners() {
  UnnoticedVector<Instance*> pending;
  UnnoticedVector<const Instance*> met;
  mModel.instances().forEach([&](Instance& object) {
    if (met.size() <= object.number()) met.resize(object.number() + std::size_t{1});
    if (!object.owner()) pending.push_back(&object);
  });
  while (!pending.empty()) {
    Instance& owner = *pending.back();
    pending.pop_back();
    met[owner.number()] = &owner;
    forEachHeld(owner, [&](Instance& held, unsigned slot) {
      checkOwned(owner, held, slot);
      if (met[held.number()]) {
        violate(kOwners, shownObject(&held) + " has two owners, one of them is " + shownObject(&owner));
      }
      met[held.number()] = &held;
      pending.push_back(&held);
    });
  }
  mModel.instances().forEach([&](const Instance& object) {
    if (met[object.number()]) return;
    violate(kOwners, shownObject(&object) + " has the owner " + shownObject(object.owner()) +
                         ", but cannot be reached from an object without an owner");
  });
}

void Auditor::checkOwned(const Instance& owner, Instance& held, unsigned slot) {
  ++mCost;
  const auto what = [&] { return shownObject(&owner) + " contains in " + shownSlot(owner, slot) + " "; };
  if (!isThere(&held)) violate(kOwners, what() + "an object that no longer exists");
  if (held.owner() != &owner || held.ownerSlot() != slot) {
    violate(kOwners, what() + shownObject(&held) + ", whose owner is " + shownObject(held.owner()));
  }
  if (held.isAlive() != owner.isAlive()) violate(kOwners, what() + shownObject(&held));
}

void Auditor::checkObjects() {
  mReferences = 0;
  mModel.instances().forEach([this](const Instance& object) {
    ++mCost;
    if (object.isDying())
      violate("no destruction is incomplete", shownObject(&object) + " is only partly destroyed");
    checkValues(object);
    checkReferences(object, kAnyLength);
    checkReferrers(object);
  });
  if (mReferences == mReferrers) return;
  violate(kReferrers, std::to_string(mReferences) + " references are in the model, but " +
                          std::to_string(mReferrers) + " are listed as referrers of their targets");
}

void Auditor::checkReferences(const Instance& object, std::uint32_t longest) {
  const ClassData& cls = object.cls();
  forEachSlot(object.presence() & (cls.holdingSlots | cls.referringSlots), [&](unsigned slot) {
    if (!isList(object, slot)) {
      checkReference(object, slot, *object.find(slot)->object);
      return;
    }
    const WordList& list = *listOf(object, slot);
    if (list.size() > longest) return;
    for (std::uint32_t index = 0; index < list.size(); ++index)
      checkReference(object, slot, *list.at(index).object);
  });
}

void Auditor::checkReference(const Instance& object, unsigned slot, const Instance& element) {
  ++mCost;
  const auto what = [&] {
    return shownObject(&object) + " has in " + shownSlot(object, slot) + " " + shownObject(&element);
  };
  if (!isThere(&element) || (object.isAlive() && !element.isAlive())) {
    violate("an existing object refers to no destroyed one", what());
  }
  if (isReferring(object, slot)) {
    ++mReferences;
    if (!containsElement(object, slot, element))
      violate(kReferrers, what() + ", which does not list it as a referrer");
  } else if (!containsElement(object, slot, element)) {
    violate(kOwners, what() + ", whose owner is " + shownObject(element.owner()));
  }
  if (object.isAlive()) checkOpposite(object, slot, element);
}

void Auditor::checkOpposite(const Instance& object, unsigned slot, const Instance& element) {
  if ((object.cls().oppositeSlots & bitOf(slot)) == 0) return;
  const Property& back = *object.cls().slotProperties[slot]->opposite();
  const unsigned backSlot = element.cls().placeOf(back.ownerClass().data(), back.id()).slot;
  if (element.has(backSlot) && containsElement(element, backSlot, object)) return;
  violate("opposites agree", shownObject(&object) + " has in " + shownSlot(object, slot) + " " +
                                 shownObject(&element) + ", but that object does not have it in " +
                                 shownSlot(element, backSlot));
}

/// Checks that each referrer of the object is an object of the model, and that its slot has a value. If the
/// slot has a list, the function does not search the list for the object. An object that is missing from such
/// a list is found by checkObjects(): it compares the number of references with the number of referrers.
void Auditor::checkReferrers(const Instance& object) {
  const Word* word = object.find(Instance::kReferrerSlot);
  if (!word) return;
  std::uint64_t bits = word->bits;
  Referrers(bits).forEach([&](Referrer referrer) {
    ++mReferrers;
    const Instance* referring = mModel.instances().find(referrer.instance);
    const auto what = [&] {
      return shownObject(&object) + " lists as referrer the number " + std::to_string(referrer.instance) +
             ", slot " + std::to_string(referrer.slot) + ", ";
    };
    if (!isThere(referring)) violate(kReferrers, what() + "but no object has that number");
    if (!isReferring(*referring, referrer.slot))
      violate(kReferrers, what() + "but that slot holds no reference");
    const Word* place = referring->find(referrer.slot);
    if (!place || (!isList(*referring, referrer.slot) && place->object != &object)) {
      violate(kReferrers, what() + "but " + shownObject(referring) + " does not refer to it there");
    }
  });
}

void Auditor::checkValues(const Instance& object) {
  const ClassData& cls = object.cls();
  forEachSlot(object.presence(), [&](unsigned slot) {
    ++mCost;
    if (slot >= cls.slotProperties.size() && slot < ClassData::kMaxPropertySlots) {
      violate("each value belongs to a property",
              shownObject(&object) + " has a value in " + shownSlot(object, slot));
    }
    if ((cls.textSlots & bitOf(slot)) == 0) return;
    const Word word = *object.find(slot);
    if (!isList(cls, slot)) {
      countText(object, word);
      return;
    }
    for (std::uint32_t index = 0; index < word.list->size(); ++index) countText(object, word.list->at(index));
  });
}

void Auditor::countText(const Instance& object, Word word) {
  ++mCost;
  if (!word.text) return;
  if (++mTexts[word.text] <= word.text->numRef()) return;
  violate("texts count their references", "a text of " + shownObject(&object) + " has " +
                                              std::to_string(word.text->numRef()) +
                                              " references but is stored more often");
}

}  // namespace Tarvelon::metamodel::native
