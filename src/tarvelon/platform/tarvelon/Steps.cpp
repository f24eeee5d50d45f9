#include "tarvelon/platform/tarvelon/Steps.h"

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/tarvelon/ClassData.h"
#include "tarvelon/platform/tarvelon/Held.h"
#include "tarvelon/platform/tarvelon/Instance.h"
#include "tarvelon/platform/tarvelon/Journal.h"
#include "tarvelon/platform/tarvelon/NativeModel.h"
#include "tarvelon/platform/tarvelon/WordList.h"

namespace Tarvelon::metamodel::native {

namespace {

void tie(Instance& object, unsigned slot, Instance& element) noexcept {
  if (holds(object, slot)) {
    element.setOwner(&object, slot);
    object.model().noteOwnership(object);
    object.model().noteNamesOf(element);
  } else {
    element.addReferrer({object.number(), static_cast<std::uint8_t>(slot)});
  }
}

void untie(Instance& object, unsigned slot, Instance& element, bool keepsRoom) noexcept {
  if (holds(object, slot)) {
    element.setOwner(nullptr, 0);
    object.model().noteOwnership(object);
    object.model().noteNamesOf(element);
  } else {
    element.removeReferrer({object.number(), static_cast<std::uint8_t>(slot)}, keepsRoom);
  }
}

/// Elements of a list change places. What is computed from those that are held has their order.
void applyOrder(const Step& step) noexcept {
  WordList& list = *step.object->find(step.slot)->list;
  const auto from = static_cast<std::uint32_t>(step.before.bits);
  const auto to = static_cast<std::uint32_t>(step.after.bits);
  if (step.kind == Step::Kind::Move) {
    list.move(from, to);
  } else {
    list.exchange(from, to);
  }
  if (holds(*step.object, step.slot)) step.object->model().noteOwnership(*step.object);
}

void applyElement(const Step& step, bool keepsRoom) noexcept {
  WordList& list = *step.object->find(step.slot)->list;
  if (step.hasBefore && step.hasAfter) {
    list.set(step.index, step.after);
  } else if (step.hasAfter) {
    list.insert(step.index, step.after);
  } else {
    list.erase(step.index, 1);
    if (!keepsRoom) list.shrink();
  }
}

void applyValue(const Step& step, StepRoom room) noexcept {
  if (step.hasAfter) {
    step.object->put(step.slot, step.after, room);
  } else {
    step.object->remove(step.slot, room);
  }
}

void applyLife(const Step& step) noexcept {
  if (step.hasAfter) {
    step.object->revive();
    // An index that was built meanwhile does not know it.
    step.object->model().noteNameOf(*step.object, true);
  } else {
    step.object->bury();
  }
}

/// What is stored at the place: texts are counted, references tied.
void applyStored(const Step& step, StepRoom room) noexcept {
  const ClassData& cls = step.object->cls();
  const bool isText = (cls.textSlots & bitOf(step.slot)) != 0;
  const bool isReference = ((cls.holdingSlots | cls.referringSlots) & bitOf(step.slot)) != 0;
  // Who may take a step back must find the room that it was made with.
  const bool keepsRoom = step.object->model().journal() != nullptr;
  if (isText && step.hasAfter && step.after.text) step.after.text->addRef();
  if (isReference && step.hasBefore) untie(*step.object, step.slot, *step.before.object, keepsRoom);
  if (step.kind == Step::Kind::Element) {
    applyElement(step, keepsRoom);
  } else {
    applyValue(step, room);
  }
  if (isReference && step.hasAfter) tie(*step.object, step.slot, *step.after.object);
  if (isText && step.hasBefore && step.before.text) step.before.text->release();
  if (step.slot == cls.nameSlot)
    step.object->model().noteNameOf(*step.object, step.hasBefore && step.before.text);
}

}  // namespace

void apply(const Step& step) noexcept {
  switch (step.kind) {
    case Step::Kind::Value:
    case Step::Kind::Element:
      applyStored(step, StepRoom());
      break;
    case Step::Kind::Move:
    case Step::Kind::Exchange:
      applyOrder(step);
      break;
    case Step::Kind::Life:
      applyLife(step);
      break;
  }
}

void make(const Step& step) noexcept {
  // Noted first: the journal takes its references on texts while both are there.
  if (Journal* journal = step.object->model().journal()) journal->note(step);
  apply(step);
}

Step valueStep(Instance& object, unsigned slot, bool hasValue, Word value) noexcept {
  const Word* old = object.find(slot);
  return {&object,
          old ? *old : Word{},
          hasValue ? value : Word{},
          0,
          static_cast<std::uint8_t>(slot),
          Step::Kind::Value,
          old != nullptr,
          hasValue};
}

}  // namespace Tarvelon::metamodel::native
