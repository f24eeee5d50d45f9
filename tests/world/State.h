#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/world/Metamodel.h"

/// The naive model: the expected contents of a model, stored as simply as possible. To undo a change, it goes
/// back to a copy of the former state.
namespace world {

/// A value: a number or literal, a text, or an object by its id.
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
  /// The values by slot. A slot without a value has no entry.
  std::map<unsigned, Items> values;
  friend bool operator==(const Object&, const Object&) = default;
};

/// REQUIRES for each edit: the ids of existing objects, and values that the slot accepts.
/// Each edit returns whether the engine records a change, which it may do even if the value stays the same.
class State {
 public:
  std::map<int, Object> objects;
  friend bool operator==(const State&, const State&) = default;

  const Object& at(int id) const { return objects.at(id); }
  const Slot& slotAt(int id, unsigned slot) const { return at(id).cls->slots[slot]; }
  const Items& items(int id, unsigned slot) const;
  bool contains(int id, unsigned slot, int element) const;
  /// Whether `above` is `below` or contains it, directly or indirectly.
  bool holdsOrIs(int above, int below) const;
  /// The object and all objects it contains. Each comes before the objects it contains; in order of slots and
  /// lists.
  std::vector<int> tree(int id) const;
  /// The references to the object: id and slot of the referring object, sorted.
  std::vector<std::pair<int, unsigned>> referrers(int id) const;
  /// The object's qualified name; empty if it has no name.
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
  /// The slot of the opposite reference in the element, kNone if there is none.
  unsigned backSlot(int id, unsigned slot, int element) const;
  void link(int id, unsigned slot, int element);
  void unlink(int id, unsigned slot, int element);
  void removeFromOwner(int element);
  void takeOut(int id, unsigned slot, int element);
  void linkBack(int id, unsigned slot, int element);
  void unlinkBack(int id, unsigned slot, int element);
};

}  // namespace world
