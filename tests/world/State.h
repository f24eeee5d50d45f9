#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/world/Metamodel.h"

/// The naive model: what a model must look like, written down as plainly as possible. Copying a state is how
/// the naive model undoes.
namespace world {

/// One value: a number or literal, a text, or an object by its id.
struct Item {
  std::uint64_t bits = 0;
  std::u16string text;
  int object = -1;
  friend bool operator==(const Item&, const Item&) = default;
};
using Items = std::vector<Item>;

struct Object {
  const Class* cls = nullptr;
  int owner = -1;
  unsigned ownerSlot = 0;
  /// By slot; a slot without a value has no entry.
  std::map<unsigned, Items> values;
  friend bool operator==(const Object&, const Object&) = default;
};

/// REQUIRES, of each edit: ids of objects that are there, values that the slot takes.
/// Each edit says whether the engine notes a step for it, even if the value is the same afterwards.
class State {
 public:
  std::map<int, Object> objects;
  friend bool operator==(const State&, const State&) = default;

  const Object& at(int id) const { return objects.at(id); }
  const Slot& slotAt(int id, unsigned slot) const { return at(id).cls->slots[slot]; }
  const Items& items(int id, unsigned slot) const;
  bool contains(int id, unsigned slot, int element) const;
  /// Whether `above` is `below` or holds it, however deep.
  bool holdsOrIs(int above, int below) const;
  /// The object and all that it holds, each in front of what it holds, in order of slots and lists.
  std::vector<int> tree(int id) const;
  /// Who refers to the object: id and slot, sorted.
  std::vector<std::pair<int, unsigned>> referrers(int id) const;
  /// The name that finds the object, empty for one without a name.
  std::u16string qualifiedName(int id) const;
  std::u16string name(int id) const;

  void create(int id, const Class& cls) { objects[id].cls = &cls; }
  bool set(int id, unsigned slot, const Item& value);
  bool unset(int id, unsigned slot);
  bool append(int id, unsigned slot, const Item& value);
  bool prepend(int id, unsigned slot, const Item& value);
  bool insert(int id, unsigned slot, std::size_t index, const Item& value);
  bool replace(int id, unsigned slot, std::size_t index, const Item& value);
  bool erase(int id, unsigned slot, std::size_t first, std::size_t last);
  bool removeAll(int id, unsigned slot, const Item& value);
  bool assign(int id, unsigned slot, const Items& values);
  bool destroy(int id);

 private:
  /// The slot of the element in which it refers back, kNone if it does not.
  unsigned backSlot(int id, unsigned slot, int element) const;
  void tie(int id, unsigned slot, int element);
  void untie(int id, unsigned slot, int element);
  void leaveOwner(int element);
  void takeOut(int id, unsigned slot, int element);
  void linkBack(int id, unsigned slot, int element);
  void unlinkBack(int id, unsigned slot, int element);
};

}  // namespace world
