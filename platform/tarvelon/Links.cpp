#include "platform/tarvelon/Links.h"

#include "boundary/k7q/Primitives.h"
#include "platform/tarvelon/Instance.h"
#include "platform/tarvelon/NativeModel.h"
#include "platform/tarvelon/Refusal.h"
#include "platform/tarvelon/WordList.h"

namespace Tarvelon::metamodel::native {

namespace {

constexpr std::uint64_t bitOf(unsigned slot) noexcept { return std::uint64_t{1} << slot; }
bool holds(const Instance& object, unsigned slot) noexcept {
  return (object.cls().holdingSlots & bitOf(slot)) != 0;
}
bool isList(const Instance& object, unsigned slot) noexcept {
  return (object.cls().listSlots & bitOf(slot)) != 0;
}

Referrer referrer(const Instance& object, unsigned slot) noexcept {
  return {object.number(), static_cast<std::uint8_t>(slot)};
}

/// Makes what reserveLink() made room for.
void link(Instance& object, unsigned slot, Instance& element) noexcept {
  if (holds(object, slot)) {
    element.setOwner(&object, slot);
    object.model().noteOwnership(object);
  } else {
    element.addReferrer(referrer(object, slot));
  }
}

void unlink(Instance& object, unsigned slot, Instance& element) noexcept {
  if (holds(object, slot)) {
    element.setOwner(nullptr, 0);
    object.model().noteOwnership(object);
  } else {
    element.removeReferrer(referrer(object, slot));
  }
}

void reserveLink(const Instance& object, unsigned slot, Instance& element) {
  if (!holds(object, slot)) element.reserveReferrer();
}

void storeReference(Instance& object, unsigned slot, Instance& element) {
  const Word* old = object.find(slot);
  if (old && old->object == &element) return;
  reserveLink(object, slot, element);
  // An object that refers to itself needs room for the reference and for the referrer.
  object.reserve((old ? 0U : 1U) + (&object == &element ? 1U : 0U));
  if (old) unlink(object, slot, *object.find(slot)->object);
  if (holds(object, slot)) leaveOwner(element);
  object.put(slot, Word{.object = &element});
  link(object, slot, element);
}

void storeText(Instance& object, unsigned slot, K7Q::NSInterface::StringIntf* text) {
  if (Word* word = object.find(slot)) {
    if (text) text->addRef();
    auto* old = word->text;
    word->text = text;
    if (old) old->release();
    return;
  }
  object.reserve(1);
  if (text) text->addRef();
  object.put(slot, Word{.text = text});
}

void clear(Instance& object, unsigned slot) noexcept {
  Word* word = object.find(slot);
  if (!word) return;
  const Word old = *word;
  object.remove(slot);
  const Storage storage = object.cls().slotProperties[slot]->storage();
  if (storage == Storage::Text && old.text) old.text->release();
  if (storage == Storage::Reference) unlink(object, slot, *old.object);
}

WordList& reserveList(Instance& object, unsigned slot) {
  WordList* list = listOf(object, slot);
  if (!list) {
    object.reserve(1);
    list = WordList::make();
    object.put(slot, Word{.list = list});
  }
  list->reserve(1);
  return *list;
}

}  // namespace

void leaveOwner(Instance& element) noexcept {
  Instance* owner = element.owner();
  if (!owner) return;
  const unsigned slot = element.ownerSlot();
  if (isList(*owner, slot)) {
    WordList& list = *listOf(*owner, slot);
    list.erase(list.find(&element), 1);
  } else {
    owner->remove(slot);
  }
  owner->model().noteOwnership(*owner);
  element.setOwner(nullptr, 0);
}

WordList* listOf(const Instance& object, unsigned slot) noexcept {
  const Word* word = object.find(slot);
  return word ? word->list : nullptr;
}

void store(Instance& object, unsigned slot, Prepared value) {
  if (value.isEmpty) {
    clear(object, slot);
    return;
  }
  switch (object.cls().slotProperties[slot]->storage()) {
    case Storage::Reference:
      storeReference(object, slot, *value.word.object);
      break;
    case Storage::Text:
      storeText(object, slot, value.word.text);
      break;
    default:
      if (Word* word = object.find(slot)) {
        *word = value.word;
      } else {
        object.reserve(1);
        object.put(slot, value.word);
      }
  }
}

void requireNoCycle(const Instance& object, const Property& property, const Instance& element) {
  if (!property.holds()) return;
  // What holds nothing can only hold the object by being it: so a chain is built downwards without walking up
  // it.
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
  reserveLink(object, slot, element);
  WordList& list = reserveList(object, slot);
  if (&object == &element) reserveLink(object, slot, element);
  if (holds(object, slot)) leaveOwner(element);
  list.insert(index, Word{.object = &element});
  link(object, slot, element);
}

void replaceElement(Instance& object, unsigned slot, std::uint32_t index, Instance& element) {
  WordList& list = *listOf(object, slot);
  Instance& old = *list.at(index).object;
  if (&old == &element) return;
  if (containsElement(object, slot, element)) {
    const std::uint32_t place = list.find(&element);
    list.set(index, Word{.object = &element});
    list.erase(place, 1);
    unlink(object, slot, old);
    return;
  }
  reserveLink(object, slot, element);
  if (holds(object, slot)) leaveOwner(element);
  list.set(index, Word{.object = &element});
  unlink(object, slot, old);
  link(object, slot, element);
}

void eraseElements(Instance& object, unsigned slot, std::uint32_t first, std::uint32_t count) noexcept {
  WordList& list = *listOf(object, slot);
  for (std::uint32_t index = first; index < first + count; ++index)
    unlink(object, slot, *list.at(index).object);
  list.erase(first, count);
}

void insertText(Instance& object, unsigned slot, std::uint32_t index, K7Q::NSInterface::StringIntf* text) {
  WordList& list = reserveList(object, slot);
  text->addRef();
  list.insert(index, Word{.text = text});
}

void replaceText(Instance& object, unsigned slot, std::uint32_t index,
                 K7Q::NSInterface::StringIntf* text) noexcept {
  WordList& list = *listOf(object, slot);
  const auto* old = list.at(index).text;
  text->addRef();
  list.set(index, Word{.text = text});
  old->release();
}

void eraseTexts(Instance& object, unsigned slot, std::uint32_t first, std::uint32_t count) noexcept {
  WordList& list = *listOf(object, slot);
  for (std::uint32_t index = first; index < first + count; ++index) list.at(index).text->release();
  list.erase(first, count);
}

void insertNumber(Instance& object, unsigned slot, std::uint32_t index, std::int32_t number) {
  reserveList(object, slot).insert(index, wordOf(number));
}

void replaceNumber(Instance& object, unsigned slot, std::uint32_t index, std::int32_t number) noexcept {
  listOf(object, slot)->set(index, wordOf(number));
}

void eraseNumbers(Instance& object, unsigned slot, std::uint32_t first, std::uint32_t count) noexcept {
  listOf(object, slot)->erase(first, count);
}

}  // namespace Tarvelon::metamodel::native
