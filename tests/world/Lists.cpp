// Steps that change lists: contained objects, references, texts, enumeration values.

#include "tests/world/World.h"

namespace world {

namespace {

using ruvo::HostValue;

/// The ways to add an element to a list.
enum class Way { Append, Prepend, Insert };

}  // namespace

void World::add() {
  const int id = anyObject();
  const unsigned slot = anyList(id, false);
  if (slot == Class::kNone) return;
  const auto item = anyItem(mirror().now.slotAt(id, slot));
  if (item) addItem(id, slot, *item);
}

void World::addItem(int id, unsigned slot, const Item& item) {
  Mirror& model = mirror();
  const Slot& place = model.now.slotAt(id, slot);
  const auto way = static_cast<Way>(below(3));
  const std::size_t index = way == Way::Insert ? below(model.now.items(id, slot).size() + 1) : 0;
  const bool isCircle = makesCircle(id, slot, item);
  const bool byName = exposed(place) && isByName();
  State next = model.now;
  const bool hasSteps = !isCircle && (way == Way::Append    ? next.append(id, slot, item)
                                      : way == Way::Prepend ? next.prepend(id, slot, item)
                                                            : next.insert(id, slot, index, item));
  constexpr const char* kNames[] = {"append", "push_front", "insert"};
  const char* method = kNames[static_cast<std::size_t>(way)];
  say(told(id, slot) + "." + method + "(" + (way == Way::Insert ? std::to_string(index) + ", " : "") +
      shown(item, place.row()) + ")" + (byName ? " by name" : ""));
  const bool isMade = attempt(isCircle ? Expect::Refused : Expect::Ok, [&] {
    if (byName) {
      std::vector<HostValue> arguments;
      if (way == Way::Insert) arguments.push_back(HostValue::ofInteger(static_cast<int>(index) + 1));
      arguments.push_back(hostValue(item, place.row()));
      return callHostList(id, place, method, arguments);
    }
    const auto sequence = sequenceOf(model.handle(id).getClassObject(), place);
    auto ref = refOf(item, place.row(), model.pointers);
    if (way == Way::Append) return sequence.get().generic_push_back({}, ref);
    if (way == Way::Prepend) return sequence.get().generic_push_front({}, ref);
    sequence.get().generic_insert({}, static_cast<int>(index), ref);
  });
  if (isMade) model.commit(std::move(next), hasSteps);
}

void World::replace() {
  Mirror& model = mirror();
  const int id = anyObject();
  const unsigned slot = anyList(id, true);
  if (slot == Class::kNone) return;
  const Slot& place = model.now.slotAt(id, slot);
  const auto item = anyItem(place);
  if (!item) return;
  const std::size_t index = below(model.now.items(id, slot).size());
  const bool isCircle = makesCircle(id, slot, *item);
  const bool byName = exposed(place) && isByName();
  State next = model.now;
  const bool hasSteps = !isCircle && next.replace(id, slot, index, *item);
  say(told(id, slot) + "[" + std::to_string(index) + "] = " + shown(*item, place.row()) +
      (byName ? " by name" : ""));
  const bool isMade = attempt(isCircle ? Expect::Refused : Expect::Ok, [&] {
    if (byName) {
      const auto place1 = HostValue::ofInteger(static_cast<int>(index) + 1);
      return callHostList(id, place, "replace", {place1, hostValue(*item, place.row())});
    }
    const auto sequence = sequenceOf(model.handle(id).getClassObject(), place);
    sequence.get().generic_replace({}, static_cast<int>(index), refOf(*item, place.row(), model.pointers));
  });
  if (isMade) model.commit(std::move(next), hasSteps);
}

/// Removes one element by index or from an end, all elements, or all that equal a value.
void World::erase() {
  Mirror& model = mirror();
  const int id = anyObject();
  const unsigned slot = anyList(id, !mIn->oneIn(8));
  if (slot == Class::kNone || model.now.items(id, slot).empty()) return;
  const Slot& place = model.now.slotAt(id, slot);
  const std::size_t size = model.now.items(id, slot).size();
  enum How { At, Back, Front, Clear, Equal };
  const auto how = static_cast<How>(below(5));
  const std::size_t index = how == Back ? size - 1 : how == Front || how == Clear ? 0 : below(size);
  const Item item = model.now.items(id, slot)[index];
  const bool byName = exposed(place) && isByName();
  State next = model.now;
  const bool hasSteps = how == Equal ? next.removeAll(id, slot, item)
                                     : next.erase(id, slot, index, how == Clear ? size : index + 1);
  constexpr const char* kNames[] = {"erase", "pop_back", "pop_front", "clear", "removeAll"};
  say(told(id, slot) + "." + kNames[how] + "(" + std::to_string(index) + ")" + (byName ? " by name" : ""));
  const bool isMade = attempt(Expect::Ok, [&] {
    if (byName) {
      std::vector<HostValue> arguments;
      if (how == At) arguments.push_back(HostValue::ofInteger(static_cast<int>(index) + 1));
      if (how == Equal) arguments.push_back(hostValue(item, place.row()));
      return callHostList(id, place, kNames[how], arguments);
    }
    const auto sequence = sequenceOf(model.handle(id).getClassObject(), place);
    if (how == At) return sequence.get().generic_erase({}, static_cast<int>(index));
    if (how == Back) return sequence.get().generic_pop_back({});
    if (how == Front) return sequence.get().generic_pop_front({});
    if (how == Clear) return sequence.get().generic_clear({});
    sequence.get().generic_removeAll({}, refOf(item, place.row(), model.pointers));
  });
  if (isMade) model.commit(std::move(next), hasSteps);
}

/// Assigns the whole list of another object, or of the object itself.
void World::assign() {
  Mirror& model = mirror();
  const int id = anyObject();
  const unsigned slot = anyList(id, false);
  if (slot == Class::kNone) return;
  const Slot& place = model.now.slotAt(id, slot);
  const int from = anyObject(*place.all[0].owner);
  const unsigned fromSlot = model.now.at(from).cls->slotOf(*place.all[0].row);
  const Items items = model.now.items(from, fromSlot);
  State next = model.now;
  bool isRefused = false;
  for (const Item& item : items) {
    const bool isOfClass = !place.isReference() || model.now.at(item.object).cls->isKindOf(*place.type);
    isRefused = isRefused || !isOfClass || makesCircle(id, slot, item);
  }
  const bool hasSteps = !isRefused && next.assign(id, slot, items);
  say(told(id, slot) + " = list of " + told(from));
  const bool isMade = attempt(isRefused ? Expect::Refused : Expect::Ok, [&] {
    const auto sequence = sequenceOf(model.handle(id).getClassObject(), place);
    const auto source = sequenceOf(model.handle(from).getClassObject(), model.now.slotAt(from, fromSlot));
    sequence.get().specialized_assign(source.getInterface());
  });
  if (isMade) model.commit(std::move(next), hasSteps);
}

}  // namespace world
