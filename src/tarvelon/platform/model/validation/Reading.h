#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/boundary/tarvelon/Typed.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/words/WordList.h"

/// Read access to objects for the rules: by class and property, whose names the compiler checks, and without
/// handles. A value that was never set reads as null.
namespace Tarvelon::metamodel::native::validation {

template <class X>
const ClassData& classOf() {
  return static_cast<const ClassMethods&>(X::Interface::sIntrospectiveMethods).data();
}

template <class X>
bool isA(const Instance& object) {
  return object.cls().isKindOf(classOf<X>().ordinal);
}
template <class X>
bool isA(const Instance* object) {
  return object && isA<X>(*object);
}

/// The slot of a property. Name is the name under which the host shows the property.
/// REQUIRES: isA<X>(object).
template <class X, FixedString Name>
unsigned slotOf(const Instance& object) {
  using Found = PropertyAccess<X, Name>;
  return object.cls().placeOf(classOf<typename Found::Owner>(), Found::kProperty.id).slot;
}

template <class X, FixedString Name>
const Word* wordOf(const Instance& object) {
  return object.find(slotOf<X, Name>(object));
}

/// The object that a single-valued reference leads to, null if it is unset.
template <class X, FixedString Name>
const Instance* get(const Instance& object) {
  const Word* word = wordOf<X, Name>(object);
  return word ? word->object : nullptr;
}
/// The same for an object that may be null or of another class; then the result is null.
template <class X, FixedString Name>
const Instance* getOf(const Instance* object) {
  return isA<X>(object) ? get<X, Name>(*object) : nullptr;
}

/// The number of an enumeration value, or an integer. 0 if it was never set: a handle reads the same value.
template <class X, FixedString Name>
std::int32_t number(const Instance& object) {
  const Word* word = wordOf<X, Name>(object);
  return word ? integerOf(*word) : 0;
}

/// The objects in a list. The list may be null, if it was never filled.
class Objects {
 public:
  explicit Objects(const WordList* list) noexcept : mList(list) {}
  std::uint32_t size() const noexcept { return mList ? mList->size() : 0; }
  bool empty() const noexcept { return size() == 0; }
  const Instance* at(std::uint32_t index) const noexcept { return mList->at(index).object; }
  bool contains(const Instance* object) const noexcept {
    return mList && mList->find(object) != WordList::kNotFound;
  }

  class Position {
   public:
    Position(const WordList* list, std::uint32_t index) noexcept : mList(list), mIndex(index) {}
    const Instance* operator*() const noexcept { return mList->at(mIndex).object; }
    Position& operator++() noexcept {
      ++mIndex;
      return *this;
    }
    bool operator!=(const Position& other) const noexcept { return mIndex != other.mIndex; }

   private:
    const WordList* mList;
    std::uint32_t mIndex;
  };
  std::vector<const Instance*> copied() const {
    std::vector<const Instance*> objects;
    for (const Instance* object : *this) objects.push_back(object);
    return objects;
  }
  Position begin() const noexcept { return {mList, 0}; }
  Position end() const noexcept { return {mList, size()}; }

 private:
  const WordList* mList;
};

template <class X, FixedString Name>
Objects all(const Instance& object) {
  const Word* word = wordOf<X, Name>(object);
  return Objects(word ? word->list : nullptr);
}

/// Calls visit(const Instance*, unsigned slot) for each entry in the given slots, in order. Unlike
/// forEachObject() it accepts broken models, in which an entry may be null.
template <class Visit>
void forEachIn(const Instance& object, std::uint64_t slots, Visit visit) {
  forEachSlot(slots & object.presence(), [&](unsigned slot) {
    const Word word = *object.find(slot);
    if (!isList(object, slot)) {
      visit(word.object, slot);
      return;
    }
    for (const Instance* entry : Objects(word.list)) visit(entry, slot);
  });
}

/// The nearest owner of class X above the object, null if there is none.
template <class X>
const Instance* holderOf(const Instance* object) {
  if (!object) return nullptr;
  const Instance* holder = object->owner();
  while (holder && !isA<X>(*holder)) holder = holder->owner();
  return holder;
}

/// Pushes the contained objects on the stack, the first one on top. Leaves out broken entries (see
/// checkHeld).
void pushHeld(const Instance& object, std::vector<const Instance*>& stack);

/// The name under which the host shows the property of a slot. If a class redefines the property, this is the
/// name in the most derived declaration that the host shows.
const char* hostNameOf(const ClassData& cls, unsigned slot) noexcept;

/// The name of the class without its packages.
std::string classText(const Instance& object);
/// The object as messages show it: its name in quotes, or else its class.
std::string shown(const Instance& object);
/// The index that was last found in each list. When the paths of many objects are asked for in order, each
/// search begins at the previous index and takes constant time.
using Places = std::unordered_map<const WordList*, std::uint32_t>;
/// The path of the object as messages show it.
std::string shownPath(const Instance& object, Places* places = nullptr);

}  // namespace Tarvelon::metamodel::native::validation
