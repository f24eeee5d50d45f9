// Steps that must be refused and must not change anything.

#include "tests/world/Fault.h"
#include "tests/world/World.h"

namespace world {

void World::wrong() {
  switch (below(4)) {
    case 0:
      return wrongValue();
    case 1:
      return wrongIndex();
    case 2:
      return wrongView();
    default:
      return wrongMoment();
  }
}

/// A value of another type, class or model, or no value.
void World::wrongValue() {
  Mirror& model = mirror();
  const int id = anyObject();
  const unsigned slot = anySlot(id, [](const Slot& each) { return each.isReference(); });
  if (slot == Class::kNone) return;
  const Slot& place = model.now.slotAt(id, slot);
  K7Q::Object value;
  const int other = anyObject();
  Mirror& foreign = *mModels[below(mModels.size())];
  if (mIn->oneIn(3)) {
    value = K7Q::String(u"text");
  } else if (&foreign != &model && !foreign.now.objects.empty()) {
    value = foreign.handle(foreign.now.objects.begin()->first);
  } else if (!model.now.at(other).cls->isKindOf(*place.type)) {
    value = model.handle(other);
  } else {
    return;
  }
  say(told(id, slot) + " = what does not fit");
  const auto object = model.handle(id).getClassObject();
  attempt(Expect::Refused, [&] {
    if (!place.isMany()) {
      place.narrowest.owner->methods->set(object, {}, place.narrowest.row->id, value);
    } else {
      sequenceOf(object, place).get().generic_push_back({}, K7Q::makeObjectRef(value.getInterface(), {}));
    }
  });
}

void World::wrongIndex() {
  Mirror& model = mirror();
  const int id = anyObject();
  const unsigned slot = anyList(id, false);
  if (slot == Class::kNone) return;
  const Slot& place = model.now.slotAt(id, slot);
  const auto item = anyItem(place);
  const int size = static_cast<int>(model.now.items(id, slot).size());
  const int index = mIn->oneIn(2) ? -1 - static_cast<int>(below(3)) : size + 1 + static_cast<int>(below(3));
  if (!item) return;
  say(told(id, slot) + " at " + std::to_string(index));
  const auto sequence = sequenceOf(model.handle(id).getClassObject(), place);
  const auto ref = refOf(*item, place.row(), model.pointers);
  attempt(Expect::Refused, [&] { sequence.get().generic_insert({}, index, ref); });
  attempt(Expect::Refused, [&] { sequence.get().generic_replace({}, index, ref); });
  attempt(Expect::Refused, [&] { sequence.get().generic_erase({}, index); });
  attempt(Expect::Refused, [&] { sequence.get().generic_at({}, index); });
}

/// Writes through an immutable sequence, or a sequence under a frozen view.
void World::wrongView() {
  Mirror& model = mirror();
  const int id = anyObject();
  const unsigned slot = anyList(id, false);
  if (slot == Class::kNone) return;
  const Slot& place = model.now.slotAt(id, slot);
  const auto item = anyItem(place);
  if (!item) return;
  const bool isFrozen = mIn->oneIn(2);
  const K7Q::Deviant view = isFrozen ? model.native.frozen().getDeviant() : K7Q::Deviant{};
  say(told(id, slot) + (isFrozen ? " frozen" : " immutable") + ".append()");
  const auto sequence = sequenceOf(model.handle(id).getClassObject(), place, !isFrozen, view);
  const auto ref = refOf(*item, place.row(), model.pointers);
  attempt(Expect::Refused, [&] { sequence.get().generic_push_back(view, ref); });
  attempt(Expect::Refused, [&] { sequence.get().generic_clear(view); });
  attempt(Expect::Refused, [&] { sequence.get().generic_removeAll(view, ref); });
}

/// Unsets a required property, or changes a model from inside one of its listeners.
void World::wrongMoment() {
  Mirror& model = mirror();
  const int id = anyObject();
  if (id < 0) return;
  const unsigned slot = anySlot(id, [](const Slot& each) { return !each.isMany() && each.isRequired(); });
  if (slot != Class::kNone && mIn->oneIn(2)) {
    const Property& property = model.now.slotAt(id, slot).narrowest;
    say(told(id, slot) + " is required = nothing");
    attempt(Expect::Refused,
            [&] { property.owner->methods->unset(model.handle(id).getClassObject(), {}, property.row->id); });
    return;
  }
  say("a listener that destroys " + told(id));
  const std::uint64_t listener = api::listen(model.native, [&](std::span<const api::Change>) {
    if (model.handle(id).isValid()) model.handle(id).getClassObject()->destroy({});
  });
  setNameOf(id);
  api::unlisten(model.native, listener);
  if (!model.handle(id).isValid()) throw Fault("a listener has changed the model");
}

void World::setNameOf(int id) {
  const unsigned slot = mirror().now.at(id).cls->nameSlot;
  if (slot != Class::kNone) setItem(id, slot, {0, u"renamed", -1});
}

}  // namespace world
