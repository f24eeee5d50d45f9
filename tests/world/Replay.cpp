// Updates a copy of a model from the changes that a listener is told.

#include <algorithm>

#include "tarvelon/boundary/tarvelon/PrimitiveCell.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tests/world/Fault.h"
#include "tests/world/Mirror.h"

namespace world {

namespace {

using Kind = api::Change::Kind;

std::optional<Item> plainItem(const K7Q::Object& value, const PropertyRow& row) {
  if (value.isNull()) return {};
  if (row.role != Tarvelon::metamodel::Role::Value) return Item{};
  return itemOf(value, row, {});
}

/// One change, applied to the copy.
class Replayed {
 public:
  Replayed(State& state, const Told& told, const Ids& ids) : mState(state), mTold(told), mIds(ids) {
    mId = idOf(told.object);
    if (!told.row) return;
    mSlot = object().cls->slotOf(*told.row);
    if (mSlot == Class::kNone) throw Fault("a change of a property that the object does not have");
  }

  void set() {
    if (mTold.before) check(values().size() == 1 && values()[0] == before());
    if (!mTold.before) check(values().empty());
    unlink();
    values().clear();
    if (mTold.after) values().push_back(after());
    link();
    tidy();
  }
  void added() {
    check(mTold.index <= values().size());
    values().insert(place(mTold.index), after());
    link();
  }
  void removed() {
    check(mTold.index < values().size() && values()[mTold.index] == before());
    values().erase(place(mTold.index));
    unlink();
    tidy();
  }
  void replaced() {
    check(mTold.index < values().size() && values()[mTold.index] == before());
    values()[mTold.index] = after();
    unlink();
    link();
  }
  void moved() {
    check(mTold.from < values().size() && mTold.index < values().size());
    const Item item = values()[mTold.from];
    values().erase(place(mTold.from));
    values().insert(place(mTold.index), item);
  }

 private:
  static void check(bool isRight) {
    if (!isRight) throw Fault("a listener was told of a change from what was not there");
  }
  int idOf(const K7Q::NSInterface::ObjectIntf* pointer) const {
    const auto found = mIds.find(pointer);
    if (found == mIds.end()) throw Fault("a listener was told of an object that nobody knows");
    return found->second;
  }
  Object& object() {
    const auto found = mState.objects.find(mId);
    if (found == mState.objects.end()) throw Fault("a listener was told of a change of what is gone");
    return found->second;
  }
  Items& values() { return object().values[mSlot]; }
  Items::iterator place(std::uint32_t index) { return values().begin() + std::ptrdiff_t{index}; }
  Item itemFor(const Item& item, const K7Q::NSInterface::ObjectIntf* pointer) const {
    return pointer ? Item{0, {}, idOf(pointer)} : item;
  }
  Item before() const { return itemFor(*mTold.before, mTold.beforeObject); }
  Item after() const { return itemFor(*mTold.after, mTold.afterObject); }
  bool holds() { return object().cls->slots[mSlot].holds(); }
  void unlink() {
    if (!mTold.before || !holds()) return;
    const auto held = mState.objects.find(before().object);
    if (held == mState.objects.end()) return;
    held->second.owner = -1;
    held->second.ownerSlot = 0;
  }
  void link() {
    if (!mTold.after || !holds()) return;
    Object& held = mState.objects.at(after().object);
    held.owner = mId;
    held.ownerSlot = mSlot;
  }
  void tidy() {
    if (values().empty()) object().values.erase(mSlot);
  }

  State& mState;
  const Told& mTold;
  const Ids& mIds;
  int mId = -1;
  unsigned mSlot = Class::kNone;
};

}  // namespace

Told toldOf(const api::Change& change) {
  Told told{
      change.kind, change.object.getInterface(), nullptr, nullptr, {}, {}, nullptr, nullptr, change.index,
      change.from};
  if (change.kind == Kind::Made) told.cls = &classOf(*told.object);
  if (!change.property) return told;
  told.row = &api::rowOf(*change.property);
  told.before = plainItem(change.before, *told.row);
  told.after = plainItem(change.after, *told.row);
  if (told.row->role == Tarvelon::metamodel::Role::Value) return told;
  told.beforeObject = change.before.getInterface();
  told.afterObject = change.after.getInterface();
  return told;
}

void replay(Follower& follower, const Told& told, const Ids& ids) {
  State& state = follower.shadow;
  if (follower.isLost) return;
  if (told.kind == Kind::Made) {
    const int id = ids.at(told.object);
    const auto gone = follower.gone.find(id);
    follower.isLost = follower.isLost || (gone == follower.gone.end() && id < follower.firstId);
    state.objects[id] = gone == follower.gone.end() ? Object{told.cls, -1, 0, {}} : gone->second;
    return;
  }
  if (told.kind == Kind::Destroyed) {
    const int id = ids.at(told.object);
    follower.gone[id] = state.objects.at(id);
    state.objects.erase(id);
    return;
  }
  Replayed change(state, told, ids);
  switch (told.kind) {
    case Kind::Set:
      return change.set();
    case Kind::Added:
      return change.added();
    case Kind::Removed:
      return change.removed();
    case Kind::Replaced:
      return change.replaced();
    default:
      return change.moved();
  }
}

}  // namespace world
