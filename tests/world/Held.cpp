// Steps on things that a program keeps while the model changes: handles of all views, sequences and
// iterators.

#include <algorithm>

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tests/world/Fault.h"
#include "tests/world/World.h"

namespace world {

namespace {

namespace foundation = Tarvelon::metamodel::foundation;
using K7Q::Generic::IteratorIntf;

bool isThere(const Mirror& model, int id) { return !model.isClosed && model.now.objects.contains(id); }

/// What an iterator must do. If the list has the same contents but may have changed in between, either is
/// allowed.
Expect freshnessOf(const HeldPlace& place) {
  if (!isThere(*place.mirror, place.id)) return Expect::Refused;
  if (place.mirror->now.items(place.id, place.slot) != place.items) return Expect::Refused;
  return place.mirror->touches == place.touches ? Expect::Ok : Expect::Any;
}

}  // namespace

void World::hold() {
  const int id = anyObject();
  if (id < 0) return;
  if (mHeld.size() == kMostHeld) mHeld.erase(mHeld.begin());
  const bool isFrozen = mIn->oneIn(4);
  const K7Q::Deviant view = isFrozen ? mirror().native.frozen().getDeviant() : K7Q::Deviant{};
  HeldObject held{mModels[mCurrent], id, mirror().handle(id, view), isFrozen, {}, false};
  if (isByName()) {
    held.isHostImmutable = mIn->oneIn(2);
    if (!attempt(Expect::Ok, [&] { held.host = hostOf(held.handle, held.isHostImmutable); })) return;
  }
  say("hold " + told(id) + (isFrozen ? " frozen" : "") + (held.host ? " by name" : "") +
      (held.isHostImmutable ? " immutable" : ""));
  mHeld.push_back(std::move(held));
}

/// Reads and writes through a held handle. A destroyed object refuses both, an immutable view refuses
/// writing.
void World::useHeld() {
  if (mHeld.empty()) return;
  const HeldObject held = mIn->pick(mHeld);
  const bool isAlive = isThere(*held.mirror, held.id);
  const auto named = foundation::NamedElement::cast(held.handle);
  if (named.isNull()) return;
  say("use held o" + std::to_string(held.mirror->number) + "_" + std::to_string(held.id));
  std::u16string name;
  attempt(isAlive ? Expect::Ok : Expect::Refused, [&] { name = std::u16string(named.get<"Name">()); });
  if (isAlive && !name.empty() && name != held.mirror->now.name(held.id))
    throw Fault("a held handle reads another name");
  if (held.host) {
    attempt(isAlive ? Expect::Ok : Expect::Refused, [&] { ruvo::getProperty(held.host, "Name"); });
    if (!isAlive || held.isFrozen || held.isHostImmutable) {
      attempt(Expect::Refused, [&] { ruvo::setProperty(held.host, "Name", ruvo::HostValue::ofText(u"x")); });
    }
  }
  if (isAlive && !held.isFrozen) return;
  attempt(Expect::Refused, [&] { named.set<"Name">(u"x"); });
  attempt(Expect::Refused, [&] { named.destroy(); });
}

void World::drop() {
  if (mIn->oneIn(2)) {
    if (!mHeld.empty()) mHeld.erase(mHeld.begin() + static_cast<std::ptrdiff_t>(below(mHeld.size())));
  } else if (!mPlaces.empty()) {
    mPlaces.erase(mPlaces.begin() + static_cast<std::ptrdiff_t>(below(mPlaces.size())));
  }
}

void World::holdPlace() {
  Mirror& model = mirror();
  const int id = anyObject();
  const unsigned slot = anyList(id, !mIn->oneIn(4));
  if (slot == Class::kNone) return;
  if (mPlaces.size() == kMostHeld) mPlaces.erase(mPlaces.begin());
  HeldPlace place{mModels[mCurrent], id, slot, {}, nullptr, 0, model.now.items(id, slot), model.touches};
  const bool isAtEnd = mIn->oneIn(3);
  place.index = isAtEnd ? place.items.size() : 0;
  say("hold " + told(id, slot) + (isAtEnd ? ".end()" : ".begin()"));
  const bool isMade = attempt(Expect::Ok, [&] {
    place.sequence = sequenceOf(model.handle(id).getClassObject(), model.now.slotAt(id, slot));
    place.iterator = isAtEnd ? place.sequence.get().generic_end({}) : place.sequence.get().generic_begin({});
  });
  if (isMade) mPlaces.push_back(std::move(place));
}

void World::usePlace() {
  if (mPlaces.empty()) return;
  // Moved out of the list first, because a listener may clear the list.
  const auto at = mPlaces.begin() + static_cast<std::ptrdiff_t>(below(mPlaces.size()));
  HeldPlace place = std::move(*at);
  mPlaces.erase(at);
  const Expect freshness = freshnessOf(place);
  say("use place " + std::to_string(place.index) + " of #" + std::to_string(place.id));
  const auto owner = std::ranges::find(mModels, place.mirror);
  if (owner != mModels.end()) mCurrent = static_cast<std::size_t>(owner - mModels.begin());
  if (mIn->oneIn(3) && owner != mModels.end()) {
    changeAt(place, freshness);
  } else {
    useIterator(place, freshness);
  }
  if (place.iterator) mPlaces.push_back(std::move(place));
}

void World::useIterator(HeldPlace& place, Expect freshness) {
  IteratorIntf& iterator = *place.iterator;
  const std::size_t how = below(4);
  if (how == 0 && place.index < place.items.size()) {
    if (attempt(freshness, [&] { iterator.next({}); })) ++place.index;
  } else if (how == 1 && place.index > 0) {
    if (attempt(freshness, [&] { iterator.previous({}); })) --place.index;
  } else if (how == 2) {
    std::unique_ptr<IteratorIntf> copy;
    const bool isAlive = isThere(*place.mirror, place.id);
    if (!attempt(isAlive ? Expect::Ok : Expect::Any, [&] { copy = iterator.clone(); })) return;
    if (freshness == Expect::Ok && !copy->equal(&iterator)) throw Fault("an iterator differs from its clone");
    place.iterator = std::move(copy);
  } else {
    const bool isBehind = place.index >= place.items.size();
    K7Q::Generic::Ref found;
    if (!attempt(isBehind ? Expect::Refused : freshness, [&] { found = iterator.current({}); })) return;
    const Mirror& model = *place.mirror;
    const Slot& slot = model.now.slotAt(place.id, place.slot);
    if (itemOf(found, slot, model.ids()) != model.now.items(place.id, place.slot)[place.index])
      throw Fault("an iterator gives another element");
  }
}

void World::moveTo(HeldPlace& place, std::unique_ptr<IteratorIntf> iterator, std::size_t index) {
  place.iterator = std::move(iterator);
  place.index = index;
  place.items = isThere(*place.mirror, place.id) ? place.mirror->now.items(place.id, place.slot) : Items{};
  place.touches = place.mirror->touches;
}

/// Inserts or erases at the iterator, and continues with the iterator that this returns.
void World::changeAt(HeldPlace& place, Expect freshness) {
  Mirror& model = mirror();
  std::unique_ptr<IteratorIntf> result;
  auto& list = place.sequence.get();
  if (!isThere(model, place.id)) {
    attempt(Expect::Refused, [&] { result = list.generic_erase({}, place.iterator.get()); });
    return;
  }
  State next = model.now;
  if (mIn->oneIn(2)) {
    const bool isBehind = place.index >= place.items.size();
    if (!attempt(isBehind ? Expect::Refused : freshness,
                 [&] { result = list.generic_erase({}, place.iterator.get()); }))
      return;
    model.commit((next.erase(place.id, place.slot, place.index, place.index + 1), next), true);
    return moveTo(place, std::move(result), place.index);
  }
  const Slot& slot = model.now.slotAt(place.id, place.slot);
  const auto item = anyItem(slot);
  if (!item) return;
  const bool isCircle = makesCircle(place.id, place.slot, *item);
  if (!attempt(isCircle ? Expect::Refused : freshness, [&] {
        result = list.generic_insert({}, place.iterator.get(), refOf(*item, slot.row(), model.pointers));
      }))
    return;
  const bool hasSteps = next.insert(place.id, place.slot, place.index, *item);
  model.commit(std::move(next), hasSteps);
  const Items& items = model.now.items(place.id, place.slot);
  std::size_t index = place.index;
  if (slot.isReference())
    index = static_cast<std::size_t>(std::ranges::find(items, item->object, &Item::object) - items.begin());
  moveTo(place, std::move(result), index);
}

}  // namespace world
