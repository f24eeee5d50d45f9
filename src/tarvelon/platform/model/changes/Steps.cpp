#include "tarvelon/platform/model/changes/Steps.h"

#include <algorithm>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/changes/StepText.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::metamodel::native {

namespace {

void link(Instance& object, unsigned slot, Instance& element) noexcept {
  if (holds(object, slot)) {
    element.setOwner(&object, slot);
    object.model().noteOwnership(object);
    object.model().noteNamesOf(element);
  } else {
    element.addReferrer({object.number(), static_cast<std::uint8_t>(slot)});
  }
}

void unlink(Instance& object, unsigned slot, Instance& element, bool keepsRoom) noexcept {
  if (holds(object, slot)) {
    element.setOwner(nullptr, 0);
    object.model().noteOwnership(object);
    object.model().noteNamesOf(element);
  } else {
    element.removeReferrer({object.number(), static_cast<std::uint8_t>(slot)}, keepsRoom);
  }
}

/// Reorders the elements of a list. Derived lists have the order of the containment lists they are computed
/// from.
void applyOrder(const Step& step) noexcept {
  step.object->noteChange();
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
    step.object->restore();
    // If an index of names was built while the object did not exist, it has no entry for the object.
    step.object->model().noteNameOf(*step.object, true);
  } else {
    step.object->markDeleted();
  }
}

// Storing the value of a place keeps reference counts and links consistent. A new text gets its reference
// before it is stored, and an old text loses its reference after it was removed. A new reference is linked
// after it was stored, and an old reference is unlinked before it is removed.

bool isText(const Step& step) noexcept { return (step.object->cls().textSlots & bitOf(step.slot)) != 0; }

bool isReference(const Step& step) noexcept {
  const ClassData& cls = step.object->cls();
  return ((cls.holdingSlots | cls.referringSlots) & bitOf(step.slot)) != 0;
}

/// An undo of the step must find the room that the step has freed.
bool mustKeepRoom(const Step& step) noexcept { return step.object->model().journal() != nullptr; }

void beginStored(const Step& step) noexcept {
  step.object->noteChange();
  if (isText(step) && step.hasAfter && step.after.text) step.after.text->addRef();
  if (isReference(step) && step.hasBefore)
    unlink(*step.object, step.slot, *step.before.object, mustKeepRoom(step));
}

void endStored(const Step& step) noexcept {
  if (isReference(step) && step.hasAfter) link(*step.object, step.slot, *step.after.object);
  if (isText(step) && step.hasBefore && step.before.text) step.before.text->release();
}

void applyStored(const Step& step, StepRoom room) noexcept {
  beginStored(step);
  if (step.kind == Step::Kind::Element) {
    applyElement(step, mustKeepRoom(step));
  } else {
    applyValue(step, room);
  }
  endStored(step);
  if (step.slot == step.object->cls().nameSlot)
    step.object->model().noteNameOf(*step.object, step.hasBefore && step.before.text);
}

/// Whether both steps remove an element from the same list, the later step at a smaller index, or both insert
/// one, the later step at a greater index. Then each index is also the element's index in the list that
/// contains all of these elements.
bool isRow(const Step& step, const Step& next) noexcept {
  if (step.kind != Step::Kind::Element || next.kind != Step::Kind::Element) return false;
  if (step.object != next.object || step.slot != next.slot) return false;
  if (step.hasBefore == step.hasAfter || next.hasBefore != step.hasBefore || next.hasAfter != step.hasAfter)
    return false;
  return step.hasAfter ? step.index < next.index : step.index > next.index;
}

/// A run of such steps, or one step of any kind. apply() applies the run, or undoes it if `isTakenBack` is
/// true. mAreInserted says whether this inserts elements; otherwise it removes them.
class StepRun {
 public:
  StepRun(std::span<const Step> steps, bool isTakenBack) noexcept
      : mSteps(steps), mIsTakenBack(isTakenBack), mAreInserted(steps[0].hasAfter != isTakenBack) {}
  void apply() const noexcept {
    if (mSteps.size() > 1 && isShorterAtOnce()) {
      applyAtOnce();
    } else {
      applyEach();
    }
  }

 private:
  WordList& list() const noexcept { return *mSteps[0].object->find(mSteps[0].slot)->list; }
  std::uint32_t count() const noexcept { return static_cast<std::uint32_t>(mSteps.size()); }
  /// The step that is applied at this position. For an undo: the inverse steps in reverse order.
  Step at(std::size_t index) const noexcept {
    return mIsTakenBack ? mSteps[mSteps.size() - 1 - index].inverse() : mSteps[index];
  }
  /// The step at this position in the order of indices in the list.
  Step inOrder(std::size_t index) const noexcept {
    return at(mAreInserted ? index : mSteps.size() - 1 - index);
  }
  /// Whether one pass over the list moves fewer elements than single insertions or removals. Each of these
  /// moves the elements up to the nearer end.
  bool isShorterAtOnce() const noexcept {
    const std::uint32_t size = list().size() + (mAreInserted ? count() : 0);
    std::uint64_t moved = 0;
    for (const Step& step : mSteps) moved += std::min(step.index, size - step.index);
    return moved > size;
  }
  void applyEach() const noexcept {
    for (std::size_t index = 0; index < mSteps.size(); ++index) native::apply(at(index));
  }
  void applyAtOnce() const noexcept {
    for (std::size_t index = 0; index < mSteps.size(); ++index) {
      if (kLogsSteps) [[unlikely]]
        logStep(at(index));
      beginStored(at(index));
    }
    const auto placeAt = [this](std::size_t index) { return inOrder(index).index; };
    if (mAreInserted) {
      list().insertMany(count(), placeAt, [this](std::size_t index) { return inOrder(index).after; });
    } else {
      list().eraseMany(count(), placeAt);
      if (!mustKeepRoom(mSteps[0])) list().shrink();
    }
    for (std::size_t index = 0; index < mSteps.size(); ++index) endStored(at(index));
  }

  std::span<const Step> mSteps;
  bool mIsTakenBack;
  bool mAreInserted;
};

}  // namespace

void apply(const Step& step) noexcept {
  if (kLogsSteps) [[unlikely]]
    logStep(step);
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

void apply(std::span<const Step> steps) noexcept {
  while (!steps.empty()) {
    std::size_t count = 1;
    while (count < steps.size() && isRow(steps[count - 1], steps[count])) ++count;
    StepRun(steps.first(count), false).apply();
    steps = steps.subspan(count);
  }
}

void takeBack(std::span<const Step> steps) noexcept {
  while (!steps.empty()) {
    std::size_t start = steps.size() - 1;
    while (start > 0 && isRow(steps[start - 1], steps[start])) --start;
    StepRun(steps.subspan(start), true).apply();
    steps = steps.first(start);
  }
}

void make(const Step& step) noexcept {
  // Recorded first: the journal takes its references on the texts while both texts still exist.
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
