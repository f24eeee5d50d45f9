// Steps that clone, within a model and between two models.

#include "tarvelon/platform/model/api/Copy.h"
#include "tests/world/Fault.h"
#include "tests/world/World.h"

namespace world {

namespace {

using Tarvelon::metamodel::Outside;

/// Copies a tree of the naive model.
class Copier {
 public:
  Copier(const State& from, const std::vector<int>& tree, State& to, int first, bool isSameModel)
      : mFrom(from), mTree(tree), mTo(to), mIsSameModel(isSameModel) {
    for (const int id : tree) mCopies.emplace(id, first++);
  }

  void copyAll() {
    for (const int id : mTree) copyValues(id);
    for (const int id : mTree) hold(id);
    for (const bool isOfLists : {true, false}) {
      for (const int id : mTree) refer(id, isOfLists);
    }
  }
  /// Whether an object of the tree refers to an object outside the tree.
  bool leadsOut() const {
    for (const int id : mTree) {
      for (const auto& [slot, items] : mFrom.at(id).values) {
        for (const Item& item : items) {
          if (mFrom.slotAt(id, slot).isReference() && !mCopies.contains(item.object)) return true;
        }
      }
    }
    return false;
  }

 private:
  void copyValues(int id) {
    const Object& original = mFrom.at(id);
    mTo.create(mCopies.at(id), *original.cls);
    for (const auto& [slot, items] : original.values) {
      if (!original.cls->slots[slot].isReference()) mTo.objects[mCopies.at(id)].values[slot] = items;
    }
  }
  void hold(int id) {
    if (id == mTree.front()) return;
    const Object& original = mFrom.at(id);
    put(mCopies.at(original.owner), original.ownerSlot, mCopies.at(id));
  }
  void refer(int id, bool isOfLists) {
    const Object& original = mFrom.at(id);
    for (const auto& [slot, items] : original.values) {
      const Slot& place = original.cls->slots[slot];
      if (!place.isReference() || place.holds() || place.isMany() != isOfLists) continue;
      for (const Item& item : items) {
        const int target = counterpart(place, item.object);
        if (target >= 0) put(mCopies.at(id), slot, target);
      }
    }
  }
  int counterpart(const Slot& slot, int target) const {
    const auto copy = mCopies.find(target);
    if (copy != mCopies.end()) return copy->second;
    const char* back = slot.row().opposite;
    // A target whose opposite property is single-valued keeps its reference to the original.
    const bool isTaken = back && !slot.type->find(back)->row->isMany();
    return mIsSameModel && !isTaken ? target : -1;
  }
  void put(int id, unsigned slot, int element) {
    if (mTo.slotAt(id, slot).isMany()) {
      mTo.append(id, slot, {0, {}, element});
    } else {
      mTo.set(id, slot, {0, {}, element});
    }
  }

  const State& mFrom;
  const std::vector<int>& mTree;
  State& mTo;
  std::map<int, int> mCopies;
  bool mIsSameModel;
};

/// The owner's slot in which the engine has put the contained object.
unsigned slotHolding(ObjectPointer owner, const K7Q::NSInterface::ObjectIntf* held) {
  const auto& slots = classOf(*owner).slots;
  for (unsigned slot = 0; slot < slots.size(); ++slot) {
    if (!slots[slot].holds()) continue;
    const Property& property = slots[slot].narrowest;
    if (!slots[slot].isMany()) {
      K7Q::Object value;
      property.owner->methods->get(value, owner, {}, property.row->id);
      if (value.getInterface() == held) return slot;
      continue;
    }
    const auto sequence = sequenceOf(owner, slots[slot]);
    const int size = sequence.get().generic_size({});
    if (size > 0 && sequence.get().generic_at({}, size - 1).value() == held) return slot;
  }
  throw Fault("a clone does not stand in its owner");
}

}  // namespace

void World::clone() {
  Mirror& from = mirror();
  const int id = anyObject();
  if (id < 0) return;
  const bool isSameModel = mIn->oneIn(2);
  const std::size_t target = isSameModel ? mCurrent : below(mModels.size());
  const std::string what = told(id);
  mCurrent = target;
  Mirror& to = mirror();
  const auto tree = from.now.tree(id);
  if (to.now.objects.size() + tree.size() > kMostObjects) return;
  const int owner = mIn->oneIn(2) ? anyObject() : -1;
  const auto outside = mIn->oneIn(2) ? Outside::Refused : Outside::LeftOut;
  State next = to.now;
  const State original = from.now;
  const int first = static_cast<int>(to.pointers.size());
  Copier copier(original, tree, next, first, &from == &to);
  copier.copyAll();
  const bool isRefused = &from != &to && outside == Outside::Refused && copier.leadsOut();
  say(what + ".clone(" + (owner < 0 ? "model " + std::to_string(to.number) : told(owner)) + ")" +
      (outside == Outside::Refused ? "" : " with what leads outside left out"));
  K7Q::ClassObject made;
  const K7Q::Object place = owner < 0 ? K7Q::Object(to.native) : K7Q::Object(to.handle(owner));
  const Expect expected = isRefused ? Expect::Refused : owner < 0 ? Expect::Ok : Expect::Any;
  if (!attempt(expected, [&] { made = Tarvelon::metamodel::clone(from.handle(id), place, outside); })) return;
  if (owner >= 0) {
    const unsigned slot = slotHolding(to.handle(owner).getClassObject(), made.getInterface());
    if (next.slotAt(owner, slot).isMany()) {
      next.append(owner, slot, {0, {}, first});
    } else {
      next.set(owner, slot, {0, {}, first});
    }
  }
  const auto objects = treeOf(made.getClassObject());
  if (objects.size() != tree.size()) throw Fault("a clone has another number of objects");
  for (ObjectPointer object : objects) to.add(object);
  to.commit(std::move(next), true);
}

void World::cloneModel() {
  Mirror& original = mirror();
  say("clone of model " + std::to_string(original.number) + " as model " + std::to_string(mNumbers));
  K7Q::Model made;
  if (!attempt(Expect::Ok, [&] { made = Tarvelon::metamodel::cloneModel(original.native); })) return;
  adoptWhole(original, made, false);
}

}  // namespace world
