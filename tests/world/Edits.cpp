// Steps that create, change and destroy single objects and values.

#include <bit>

#include "tarvelon/boundary/tarvelon/Factory.h"
#include "tests/world/Fault.h"
#include "tests/world/World.h"

namespace world {

namespace {

/// Sets a value in the state. An empty text unsets an optional property.
bool setIn(State& state, int id, unsigned slot, const Item& item) {
  const Slot& place = state.slotAt(id, slot);
  const bool isText = place.row().type->kind == Tarvelon::metamodel::Kind::String;
  if (isText && item.text.empty() && !place.isRequired()) return state.unset(id, slot);
  return state.set(id, slot, item);
}

}  // namespace

void World::create() { createAs(anyClass()); }

/// Creates an object of a class that a reference property of another object accepts, and adds it there.
void World::grow() {
  const int id = anyObject();
  const unsigned slot = anySlot(id, [](const Slot& each) { return each.isReference(); });
  if (slot == Class::kNone) return createAs(anyClass());
  const Slot& place = mirror().now.slotAt(id, slot);
  std::vector<const Class*> fitting;
  for (const Class* cls : concrete()) {
    if (cls->isKindOf(*place.type)) fitting.push_back(cls);
  }
  if (fitting.empty()) return;
  const std::size_t before = mirror().pointers.size();
  // Often creates an object like an existing one: code that tells objects apart must tell these two apart.
  const Items& there = mirror().now.items(id, slot);
  const bool isTwin = !there.empty() && mIn->oneIn(2);
  createAs(isTwin ? *mirror().now.at(there[0].object).cls : *mIn->pick(fitting));
  if (mirror().pointers.size() == before) return;
  const Item made{0, {}, static_cast<int>(before)};
  if (!mirror().now.objects.contains(made.object)) return;
  if (makesCircle(id, slot, made)) return;
  if (place.isMany()) {
    addItem(id, slot, made);
  } else {
    setItem(id, slot, made);
  }
}

ObjectPointer World::construct(const Class& cls, unsigned constructor,
                               const std::vector<std::optional<Item>>& given, bool byName) {
  if (byName) {
    mHosts.push_back(hostOf(mirror().native));
    std::vector<ruvo::HostValue> arguments{ruvo::HostValue::ofObject(mHosts.back())};
    for (std::size_t index = 0; index < given.size(); ++index) {
      const Slot& slot = cls.slots[cls.constructors[constructor].slots[index]];
      arguments.push_back(given[index] ? hostValue(*given[index], slot.row()) : ruvo::HostValue());
    }
    const auto made = ruvo::construct(ruvo::Class::get(cls.name()), arguments);
    return static_cast<ObjectPointer>(nativeOf(made));
  }
  std::vector<K7Q::Object> arguments;
  for (std::size_t index = 0; index < given.size(); ++index) {
    const Slot& slot = cls.slots[cls.constructors[constructor].slots[index]];
    arguments.push_back(given[index] ? valueOf(*given[index], slot.row(), mirror().pointers) : K7Q::Object());
  }
  return cls.methods->create(mirror().native, constructor, arguments).getClassObject();
}

void World::createAs(const Class& cls) {
  Mirror& model = mirror();
  if (model.now.objects.size() >= kMostObjects) return;
  const auto constructor = static_cast<unsigned>(below(cls.constructors.size()));
  const auto& slots = cls.constructors[constructor].slots;
  const int id = static_cast<int>(model.pointers.size());
  State next = model.now;
  next.create(id, cls);
  Expect expected = Expect::Ok;
  std::vector<std::optional<Item>> given;
  for (const unsigned slot : slots) {
    given.push_back(anyItem(cls.slots[slot]));
    if (!given.back() && cls.slots[slot].isRequired()) expected = Expect::Refused;
  }
  for (const bool isHeld : {false, true}) {
    for (std::size_t index = 0; index < slots.size(); ++index) {
      if (cls.slots[slots[index]].holds() == isHeld && given[index])
        setIn(next, id, slots[index], *given[index]);
    }
  }
  // In a call by name, an empty argument may select another constructor.
  bool byName = isByName() && expected == Expect::Ok;
  for (const auto& each : given) byName = byName && each.has_value();
  say(told(id) + " = " + std::string(cls.name()) + " by constructor " + std::to_string(constructor) +
      (byName ? " by name" : ""));
  ObjectPointer made = nullptr;
  if (!attempt(expected, [&] { made = construct(cls, constructor, given, byName); })) return;
  model.add(made);
  model.commit(std::move(next), true);
}

void World::set() {
  const int id = anyObject();
  const unsigned slot = anySlot(id, [](const Slot& each) { return !each.isMany(); });
  if (slot == Class::kNone) return;
  const auto item = anyItem(mirror().now.slotAt(id, slot));
  if (item) setItem(id, slot, *item);
}

void World::setItem(int id, unsigned slot, const Item& item) {
  Mirror& model = mirror();
  const Slot& place = model.now.slotAt(id, slot);
  const bool isCircle = makesCircle(id, slot, item);
  const bool byName = exposed(place) && isByName();
  State next = model.now;
  const bool hasSteps = !isCircle && setIn(next, id, slot, item);
  say(told(id, slot) + " = " + shown(item, place.row()) + (byName ? " by name" : ""));
  const Property& through = declaration(place);
  const bool isMade = attempt(isCircle ? Expect::Refused : Expect::Ok, [&] {
    if (byName) {
      ruvo::setProperty(hostOf(model.handle(id)), exposed(place)->row->name, hostValue(item, place.row()));
    } else {
      through.owner->methods->set(model.handle(id).getClassObject(), {}, through.row->id,
                                  valueOf(item, place.row(), model.pointers));
    }
  });
  if (isMade) model.commit(std::move(next), hasSteps);
}

void World::unset() {
  Mirror& model = mirror();
  const int id = anyObject();
  const unsigned slot = anyOptional(id, !mIn->oneIn(8));
  if (slot == Class::kNone) return;
  const Slot& place = model.now.slotAt(id, slot);
  const bool byName = exposed(place) && isByName();
  State next = model.now;
  const bool hasSteps = next.unset(id, slot);
  say(told(id, slot) + " = nothing" + (byName ? " by name" : ""));
  const Property& through = declaration(place);
  const bool isMade =
      attempt(through.row->multiplicity == K7Q::mi::Multiplicity::One ? Expect::Any : Expect::Ok, [&] {
        if (byName) {
          ruvo::setProperty(hostOf(model.handle(id)), exposed(place)->row->name, {});
        } else {
          through.owner->methods->unset(model.handle(id).getClassObject(), {}, through.row->id);
        }
      });
  if (isMade) model.commit(std::move(next), hasSteps);
}

void World::destroy() {
  Mirror& model = mirror();
  const int id = anyObject();
  if (id < 0) return;
  State next = model.now;
  next.destroy(id);
  const bool byName = isByName();
  say(told(id) + ".destroy()" + (byName ? " by name" : ""));
  const bool isMade = attempt(Expect::Ok, [&] {
    if (byName) {
      ruvo::call(hostOf(model.handle(id)), "destroy", {});
    } else {
      model.handle(id).getClassObject()->destroy({});
    }
  });
  if (isMade) model.commit(std::move(next), true);
}

}  // namespace world
