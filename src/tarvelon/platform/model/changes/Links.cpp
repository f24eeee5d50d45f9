#include "tarvelon/platform/model/changes/Links.h"

#include <array>
#include <utility>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/changes/AuditHooks.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/changes/Order.h"
#include "tarvelon/platform/model/changes/Steps.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/values/Refusal.h"
#include "tarvelon/platform/model/words/TextCell.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::metamodel::native {

namespace {

using Kind = Step::Kind;

/// The slot of a property in the object's class. REQUIRES: the property belongs to this class or a base.
std::uint8_t slotOf(const Instance& object, const Property& property) noexcept {
  return object.cls().placeOf(property.ownerClass().data(), property.id()).slot;
}

Referrer referrer(const Instance& object, unsigned slot) noexcept {
  return {object.number(), static_cast<std::uint8_t>(slot)};
}

Step insertion(Instance& object, unsigned slot, std::uint32_t index, Word word) noexcept {
  return {&object, {}, word, index, static_cast<std::uint8_t>(slot), Kind::Element, false, true};
}
Step removal(Instance& object, unsigned slot, std::uint32_t index) noexcept {
  const Word word = listOf(object, slot)->at(index);
  return {&object, word, {}, index, static_cast<std::uint8_t>(slot), Kind::Element, true, false};
}
Step replacement(Instance& object, unsigned slot, std::uint32_t index, Word word) noexcept {
  const Word old = listOf(object, slot)->at(index);
  return {&object, old, word, index, static_cast<std::uint8_t>(slot), Kind::Element, true, true};
}

/// Removes an element from a slot that contains it or refers to it.
void takeOut(Instance& object, unsigned slot, const Instance& element) noexcept {
  if (isList(object, slot)) {
    make(removal(object, slot, listOf(object, slot)->find(&element)));
  } else {
    make(valueStep(object, slot, false, {}));
  }
}

WordList& reserveList(Instance& object, unsigned slot) {
  WordList* list = listOf(object, slot);
  if (!list) {
    // An undo removes the first element, but not the empty list.
    LastingRoom room = object.reserveLasting();
    list = WordList::make();
    object.put(slot, Word{.list = list}, std::move(room));
  }
  list->reserve(1);
  return *list;
}

/// Makes the room in the element that linking it to the slot needs.
void reserveLink(const Instance& object, unsigned slot, Instance& element) {
  if (!holds(object, slot)) element.reserveReferrer();
}

/// Makes room in the slot itself. `values` is the number of values that the object will get.
void reservePlace(Instance& object, unsigned slot, unsigned values) {
  if (isList(object, slot)) {
    reserveList(object, slot);
  } else {
    object.reserve(values);
  }
}

/// A reference from an object to an element may have an opposite: a reference from the element back to the
/// object. This class knows the slot of the opposite in the element.
class Opposite {
 public:
  Opposite(const Instance& object, unsigned slot, Instance& element) : mElement(element) {
    if ((object.cls().oppositeSlots & bitOf(slot)) == 0) return;
    mSlot = slotOf(element, *object.cls().slotProperties[slot]->opposite());
  }
  bool isThere() const noexcept { return mSlot != ClassData::kNoSlot; }

  void reserveLinkBack(Instance& object) const { reserveLink(mElement, mSlot, object); }
  void reservePlaceBack(unsigned values) const { reservePlace(mElement, mSlot, values); }
  /// Lets the element refer back to the object. If it referred to another object before, that object's
  /// reference to the element is removed first.
  void add(Instance& object, unsigned slot) const noexcept {
    if (isList(mElement, mSlot)) {
      if (!containsElement(mElement, mSlot, object)) {
        make(insertion(mElement, mSlot, listOf(mElement, mSlot)->size(), Word{.object = &object}));
      }
      return;
    }
    if (const Word* old = mElement.find(mSlot)) {
      Instance& former = *old->object;
      if (&former == &object) return;
      // The property may have another slot in the class of that object.
      const Property& property = *object.cls().slotProperties[slot];
      const unsigned formerSlot = slotOf(former, property);
      if (containsElement(former, formerSlot, mElement)) takeOut(former, formerSlot, mElement);
    }
    make(valueStep(mElement, mSlot, true, Word{.object = &object}));
  }
  void remove(const Instance& object) const noexcept {
    if (isThere() && containsElement(mElement, mSlot, object)) takeOut(mElement, mSlot, object);
  }

 private:
  Instance& mElement;
  std::uint8_t mSlot = ClassData::kNoSlot;
};

/// Makes all the room that a new reference needs.
void reserveReference(Instance& object, unsigned slot, Instance& element, const Opposite& opposite) {
  // Room for links first: each may put a word, which would use room reserved for a value.
  reserveLink(object, slot, element);
  if (opposite.isThere()) opposite.reserveLinkBack(object);
  const unsigned values = opposite.isThere() && &object == &element ? 2 : 1;
  reservePlace(object, slot, values);
  if (opposite.isThere()) opposite.reservePlaceBack(values);
}

/// An upper bound for the number of steps that a change of one reference makes. The steps change the
/// reference itself, the previous owner, and the opposite references of the new element, of the old element
/// and of the object that the new element referred to before.
constexpr std::size_t kMostSteps = 6;

void storeReference(Instance& object, unsigned slot, Instance& element) {
  const Word* old = object.find(slot);
  if (old && old->object == &element) return;
  Batch batch(object.model());
  batch.reserve(kMostSteps);
  const Opposite opposite(object, slot, element);
  reserveReference(object, slot, element, opposite);
  if (const Word* former = object.find(slot)) {
    const Opposite back(object, slot, *former->object);
    if (back.isThere()) back.remove(object);
  }
  if (holds(object, slot)) removeFromOwner(element);
  make(valueStep(object, slot, true, Word{.object = &element}));
  if (opposite.isThere()) opposite.add(object, slot);
}

void clear(Instance& object, unsigned slot) {
  const Word* word = object.find(slot);
  if (!word) return;
  Batch batch(object.model());
  batch.reserve(kMostSteps);
  const Storage storage = object.cls().slotProperties[slot]->storage();
  if (storage == Storage::Reference) {
    const Opposite opposite(object, slot, *word->object);
    if (opposite.isThere()) opposite.remove(object);
  }
  make(valueStep(object, slot, false, {}));
}

/// The fast path for a model without a journal: does what the step would do.
void storeUnnoted(Instance& object, unsigned slot, Word word, StepRoom room) {
  const ClassData& cls = object.cls();
  const bool isText = (cls.textSlots & bitOf(slot)) != 0;
  Word* place = object.find(slot);
  if (!place) object.reserve(1);
  object.noteChange();
  if (isText) word.text = TextCell::keptOf(word.text).release();
  const bool hadText = isText && place && place->text;
  if (place) {
    const Word old = std::exchange(*place, word);
    if (hadText) old.text->release();
  } else {
    object.put(slot, word, room);
  }
  if (slot == cls.nameSlot) object.model().noteNameOf(object, hadText);
  auditAfter(object.model());
}

void storeValue(Instance& object, unsigned slot, Word word) {
  if (const auto room = object.model().unjournaled()) {
    storeUnnoted(object, slot, word, *room);
    return;
  }
  Batch batch(object.model());
  batch.reserve(1);
  if (!object.has(slot)) object.reserve(1);
  if ((object.cls().textSlots & bitOf(slot)) == 0) {
    make(valueStep(object, slot, true, word));
  } else {
    const TextCell kept = TextCell::keptOf(word.text);
    make(valueStep(object, slot, true, Word{.text = kept.get()}));
  }
}

/// Applies a run of steps on one list, so that apply() needs one pass over the list. Without a journal there
/// is no memory for all steps, so they are applied in groups of 64, with one pass for each group.
template <class StepAt>
void applyRun(Instance& object, std::uint32_t count, StepAt stepAt) noexcept {
  if (Journal* journal = object.model().journal()) {
    for (std::uint32_t done = 0; done < count; ++done) journal->note(stepAt(done));
    apply(journal->lastSteps(count));
    return;
  }
  std::array<Step, 64> steps;
  for (std::uint32_t done = 0; done < count;) {
    std::size_t filled = 0;
    while (done < count && filled < steps.size()) steps[filled++] = stepAt(done++);
    apply(std::span(steps).first(filled));
  }
}

/// REQUIRES: placeAt() gives descending indices, so that the removals are one run.
template <class PlaceAt>
void eraseMany(Instance& object, unsigned slot, std::uint32_t count, PlaceAt placeAt) {
  if (count == 0) return;
  Batch batch(object.model());
  batch.reserve(2 * std::size_t{count});
  if ((object.cls().oppositeSlots & bitOf(slot)) == 0) {
    applyRun(object, count, [&](std::uint32_t done) { return removal(object, slot, placeAt(done)); });
    return;
  }
  for (std::uint32_t done = 0; done < count; ++done) {
    const std::uint32_t index = placeAt(done);
    const Opposite opposite(object, slot, *listOf(object, slot)->at(index).object);
    opposite.remove(object);
    make(removal(object, slot, index));
  }
}

/// Inserts a value into a list, in a batch of its own.
void makeInsertion(Instance& object, unsigned slot, std::uint32_t index, Word word) {
  Batch batch(object.model());
  batch.reserve(1);
  reserveList(object, slot);
  make(insertion(object, slot, index, word));
}

void makeReplacement(Instance& object, unsigned slot, std::uint32_t index, Word word) {
  Batch batch(object.model());
  batch.reserve(1);
  make(replacement(object, slot, index, word));
}

}  // namespace

void removeFromOwner(Instance& element) noexcept {
  if (Instance* owner = element.owner()) takeOut(*owner, element.ownerSlot(), element);
}

void store(Instance& object, unsigned slot, Prepared value) {
  if (value.isEmpty) {
    clear(object, slot);
  } else if (object.cls().slotProperties[slot]->storage() == Storage::Reference) {
    storeReference(object, slot, *value.word.object);
  } else {
    storeValue(object, slot, value.word);
  }
}

void requireNoCycle(const Instance& object, const Property& property, const Instance& element) {
  if (!property.holds()) return;
  // An element without contained objects can contain `object` only by being the same object. So building a
  // chain from the top down does not walk up the chain each time.
  const bool holdsSomething = (element.presence() & element.cls().holdingSlots) != 0;
  const Instance* above = &object;
  while (above && above != &element) above = holdsSomething ? above->owner() : nullptr;
  if (above) refuseCycle(object.cls(), property, element);
}

bool containsElement(const Instance& object, unsigned slot, const Instance& element) noexcept {
  if (holds(object, slot)) return element.owner() == &object && element.ownerSlot() == slot;
  return element.isReferredBy(referrer(object, slot));
}

void insertElement(Instance& object, unsigned slot, std::uint32_t index, Instance& element) {
  Batch batch(object.model());
  batch.reserve(kMostSteps);
  const Opposite opposite(object, slot, element);
  reserveReference(object, slot, element, opposite);
  if (holds(object, slot)) removeFromOwner(element);
  make(insertion(object, slot, index, Word{.object = &element}));
  if (opposite.isThere()) opposite.add(object, slot);
}

void insertElements(Instance& object, unsigned slot, std::span<const Placed> elements) {
  if (holds(object, slot) || (object.cls().oppositeSlots & bitOf(slot)) != 0) {
    // Each insertion also makes steps elsewhere: removing the element from its previous owner, or adding the
    // opposite reference.
    for (const Placed& each : elements) insertElement(object, slot, each.index, *each.element);
    return;
  }
  if (elements.empty()) return;
  Batch batch(object.model());
  batch.reserve(elements.size());
  for (const Placed& each : elements) reserveLink(object, slot, *each.element);
  const auto count = static_cast<std::uint32_t>(elements.size());
  reserveList(object, slot).reserve(count);
  applyRun(object, count, [&](std::uint32_t done) {
    return insertion(object, slot, elements[done].index, Word{.object = elements[done].element});
  });
}

void replaceElement(Instance& object, unsigned slot, std::uint32_t index, Instance& element) {
  WordList& list = *listOf(object, slot);
  Instance& old = *list.at(index).object;
  if (&old == &element) return;
  if (containsElement(object, slot, element)) {
    exchangeElements(object, slot, list.find(&element), index);
    return;
  }
  Batch batch(object.model());
  batch.reserve(kMostSteps);
  const Opposite opposite(object, slot, element);
  reserveReference(object, slot, element, opposite);
  const Opposite back(object, slot, old);
  if (holds(object, slot)) removeFromOwner(element);
  make(replacement(object, slot, index, Word{.object = &element}));
  if (back.isThere()) back.remove(object);
  if (opposite.isThere()) opposite.add(object, slot);
}

void eraseElements(Instance& object, unsigned slot, std::uint32_t first, std::uint32_t count) {
  eraseMany(object, slot, count, [=](std::uint32_t done) { return first + count - 1 - done; });
}

void eraseElements(Instance& object, unsigned slot, std::span<const std::uint32_t> places) {
  const auto count = static_cast<std::uint32_t>(places.size());
  eraseMany(object, slot, count, [places](std::uint32_t done) { return places[done]; });
}

void insertText(Instance& object, unsigned slot, std::uint32_t index, K7Q::NSInterface::StringIntf* text) {
  const TextCell kept = TextCell::keptOf(text);
  makeInsertion(object, slot, index, Word{.text = kept.get()});
}

void replaceText(Instance& object, unsigned slot, std::uint32_t index, K7Q::NSInterface::StringIntf* text) {
  const TextCell kept = TextCell::keptOf(text);
  makeReplacement(object, slot, index, Word{.text = kept.get()});
}

void insertNumber(Instance& object, unsigned slot, std::uint32_t index, std::int32_t number) {
  makeInsertion(object, slot, index, wordOf(number));
}

void replaceNumber(Instance& object, unsigned slot, std::uint32_t index, std::int32_t number) {
  makeReplacement(object, slot, index, wordOf(number));
}

}  // namespace Tarvelon::metamodel::native
