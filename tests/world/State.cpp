#include "tests/world/State.h"

#include <algorithm>

namespace world {

namespace {

using Difference = std::ptrdiff_t;

auto placeOf(Items& items, int element) { return std::ranges::find(items, element, &Item::object); }

}  // namespace

const Items& State::items(int id, unsigned slot) const {
  static const Items none;
  const auto& values = at(id).values;
  const auto found = values.find(slot);
  return found == values.end() ? none : found->second;
}

bool State::contains(int id, unsigned slot, int element) const {
  return std::ranges::find(items(id, slot), element, &Item::object) != items(id, slot).end();
}

bool State::holdsOrIs(int above, int below) const {
  for (int each = below; each >= 0; each = at(each).owner) {
    if (each == above) return true;
  }
  return false;
}

std::vector<int> State::tree(int id) const {
  std::vector<int> all{id};
  for (const auto& [slot, values] : at(id).values) {
    if (!slotAt(id, slot).holds()) continue;
    for (const Item& held : values) {
      const auto below = tree(held.object);
      all.insert(all.end(), below.begin(), below.end());
    }
  }
  return all;
}

std::vector<std::pair<int, unsigned>> State::referrers(int id) const {
  std::vector<std::pair<int, unsigned>> found;
  for (const auto& [other, object] : objects) {
    for (const auto& [slot, values] : object.values) {
      const Slot& place = object.cls->slots[slot];
      if (place.isReference() && !place.holds() && contains(other, slot, id)) found.emplace_back(other, slot);
    }
  }
  return found;
}

std::u16string State::name(int id) const {
  const unsigned slot = at(id).cls->nameSlot;
  if (slot == Class::kNone || items(id, slot).empty()) return {};
  return items(id, slot)[0].text;
}

std::u16string State::qualifiedName(int id) const {
  if (name(id).empty()) return {};
  std::u16string all;
  for (int each = id; each >= 0; each = at(each).owner) {
    if (!name(each).empty()) all.insert(0, u"/" + name(each));
  }
  return all;
}

unsigned State::backSlot(int id, unsigned slot, int element) const {
  const Slot& place = slotAt(id, slot);
  if (!place.row().opposite) return Class::kNone;
  return at(element).cls->slotOf(*place.type->find(place.row().opposite)->row);
}

void State::link(int id, unsigned slot, int element) {
  if (!slotAt(id, slot).holds()) return;
  objects[element].owner = id;
  objects[element].ownerSlot = slot;
}

void State::unlink(int id, unsigned slot, int element) {
  if (!slotAt(id, slot).holds()) return;
  objects[element].owner = -1;
  objects[element].ownerSlot = 0;
}

void State::takeOut(int id, unsigned slot, int element) {
  Items& values = objects[id].values[slot];
  values.erase(placeOf(values, element));
  if (values.empty()) objects[id].values.erase(slot);
  unlink(id, slot, element);
}

void State::removeFromOwner(int element) {
  const Object& object = at(element);
  if (object.owner >= 0) takeOut(object.owner, object.ownerSlot, element);
}

void State::linkBack(int id, unsigned slot, int element) {
  const unsigned back = backSlot(id, slot, element);
  if (back == Class::kNone || contains(element, back, id)) return;
  Items& values = objects[element].values[back];
  if (!slotAt(element, back).isMany() && !values.empty()) {
    // The opposite is single-valued, so its former target loses the reference.
    const int former = values[0].object;
    values.clear();
    const unsigned formerSlot = at(former).cls->slotOf(*slotAt(id, slot).all[0].row);
    if (contains(former, formerSlot, element)) takeOut(former, formerSlot, element);
  }
  objects[element].values[back].push_back({0, {}, id});
}

void State::unlinkBack(int id, unsigned slot, int element) {
  const unsigned back = backSlot(id, slot, element);
  if (back != Class::kNone && contains(element, back, id)) takeOut(element, back, id);
}

bool State::set(int id, unsigned slot, const Item& value) {
  if (!slotAt(id, slot).isReference()) {
    objects[id].values[slot] = {value};
    return true;
  }
  if (contains(id, slot, value.object)) return false;
  if (!items(id, slot).empty()) {
    const int former = items(id, slot)[0].object;
    unlinkBack(id, slot, former);
    if (contains(id, slot, former)) takeOut(id, slot, former);
  }
  if (slotAt(id, slot).holds()) removeFromOwner(value.object);
  objects[id].values[slot] = {value};
  link(id, slot, value.object);
  linkBack(id, slot, value.object);
  return true;
}

bool State::unset(int id, unsigned slot) {
  const Items old = items(id, slot);
  if (old.empty()) return false;
  if (slotAt(id, slot).isReference()) {
    unlinkBack(id, slot, old[0].object);
    if (contains(id, slot, old[0].object)) takeOut(id, slot, old[0].object);
  } else {
    objects[id].values.erase(slot);
  }
  return true;
}

bool State::append(int id, unsigned slot, const Item& value) {
  if (slotAt(id, slot).isReference() && contains(id, slot, value.object)) return false;
  return insert(id, slot, items(id, slot).size(), value);
}

bool State::prepend(int id, unsigned slot, const Item& value) {
  if (slotAt(id, slot).isReference() && contains(id, slot, value.object)) return false;
  return insert(id, slot, 0, value);
}

bool State::insert(int id, unsigned slot, std::size_t index, const Item& value) {
  const bool isReference = slotAt(id, slot).isReference();
  if (isReference && contains(id, slot, value.object)) {
    Items& values = objects[id].values[slot];
    const auto from = static_cast<std::size_t>(placeOf(values, value.object) - values.begin());
    const std::size_t to = from < index ? index - 1 : index;
    values.erase(values.begin() + static_cast<Difference>(from));
    values.insert(values.begin() + static_cast<Difference>(to), value);
    return from != to;
  }
  if (isReference && slotAt(id, slot).holds()) removeFromOwner(value.object);
  Items& values = objects[id].values[slot];
  values.insert(values.begin() + static_cast<Difference>(index), value);
  if (isReference) {
    link(id, slot, value.object);
    linkBack(id, slot, value.object);
  }
  return true;
}

bool State::replace(int id, unsigned slot, std::size_t index, const Item& value) {
  if (!slotAt(id, slot).isReference()) {
    objects[id].values[slot][index] = value;
    return true;
  }
  const int old = items(id, slot)[index].object;
  if (old == value.object) return false;
  if (contains(id, slot, value.object)) {
    // The two elements are swapped.
    Items& values = objects[id].values[slot];
    std::swap(*placeOf(values, value.object), values[index]);
    return true;
  }
  if (slotAt(id, slot).holds()) removeFromOwner(value.object);
  objects[id].values[slot][index] = value;
  unlink(id, slot, old);
  link(id, slot, value.object);
  unlinkBack(id, slot, old);
  linkBack(id, slot, value.object);
  return true;
}

bool State::erase(int id, unsigned slot, std::size_t first, std::size_t last) {
  if (first == last) return false;
  const Items all = items(id, slot);
  if (!slotAt(id, slot).isReference()) {
    Items& values = objects[id].values[slot];
    values.erase(values.begin() + static_cast<Difference>(first),
                 values.begin() + static_cast<Difference>(last));
    if (values.empty()) objects[id].values.erase(slot);
    return true;
  }
  for (std::size_t index = first; index < last; ++index) {
    unlinkBack(id, slot, all[index].object);
    if (contains(id, slot, all[index].object)) takeOut(id, slot, all[index].object);
  }
  return true;
}

bool State::removeAll(int id, unsigned slot, const Item& value) {
  bool isChanged = false;
  for (std::size_t index = items(id, slot).size(); index-- > 0;) {
    if (items(id, slot)[index] == value) isChanged = erase(id, slot, index, index + 1) || isChanged;
  }
  return isChanged;
}

bool State::assign(int id, unsigned slot, const Items& values) {
  if (items(id, slot) == values) return false;
  if (slotAt(id, slot).isReference()) {
    for (const Item& old : Items(items(id, slot))) {
      if (std::ranges::find(values, old) == values.end()) removeAll(id, slot, old);
    }
    for (const Item& value : values) append(id, slot, value);
  }
  objects[id].values[slot] = values;
  if (values.empty()) objects[id].values.erase(slot);
  return true;
}

bool State::destroy(int id) {
  const std::vector<int> all = tree(id);
  removeFromOwner(id);
  for (const int dead : all) objects.erase(dead);
  const auto isDead = [&](const Item& item) { return std::ranges::find(all, item.object) != all.end(); };
  for (auto& entry : objects) {
    Object& object = entry.second;
    for (auto place = object.values.begin(); place != object.values.end();) {
      if (object.cls->slots[place->first].isReference()) std::erase_if(place->second, isDead);
      place = place->second.empty() ? object.values.erase(place) : std::next(place);
    }
  }
  return true;
}

}  // namespace world
