// Checks of the journal: an undo or redo must find each place in the state that its steps expect, and enough
// room.

#include <algorithm>
#include <bit>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/audit/Auditor.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::metamodel::native {

namespace {

/// A slot of an object, or all values of the object, or its referrers.
struct Place {
  const Instance* object;
  unsigned slot;
  bool operator==(const Place&) const noexcept = default;
};
constexpr unsigned kAllValues = Instance::kReferrerSlot + 1;

struct PlaceHash {
  std::size_t operator()(const Place& place) const noexcept {
    return (std::bit_cast<std::uintptr_t>(place.object) >> 3) * 64 + place.slot;
  }
};

/// The number of values, elements or referrers at a place during a simulated undo or redo, relative to the
/// number now, and its maximum.
struct Level {
  std::int64_t now = 0;
  std::int64_t most = 0;
  void add(std::int64_t count) noexcept {
    now += count;
    most = std::max(most, now);
  }
};

struct Value {
  bool isThere;
  std::uint64_t bits;
  bool operator==(const Value&) const noexcept = default;
};

/// Simulates an undo or redo without changing anything.
class Rehearsal {
 public:
  void play(const Step& step) {
    switch (step.kind) {
      case Step::Kind::Value:
        playValue(step);
        break;
      case Step::Kind::Element:
        playElement(step);
        break;
      case Step::Kind::Move:
      case Step::Kind::Exchange:
      case Step::Kind::Life:
        break;
    }
  }
  /// begin() saves the current state; goBack() returns to it. The maxima are kept.
  void begin() {
    mStart = mLevels;
    mStartValues = mValues;
  }
  void goBack() {
    for (auto& [place, level] : mLevels) {
      const auto before = mStart.find(place);
      level.now = before == mStart.end() ? 0 : before->second.now;
    }
    mValues = mStartValues;
  }
  void checkRoom() const;

 private:
  void playValue(const Step& step);
  void playElement(const Step& step);
  void playLinks(const Step& step);
  static std::int64_t roomOf(const Place& place);

  UnnoticedMap<Place, Level, PlaceHash> mLevels;
  UnnoticedMap<Place, Level, PlaceHash> mStart;
  UnnoticedMap<Place, Value, PlaceHash> mValues;
  UnnoticedMap<Place, Value, PlaceHash> mStartValues;
};

std::int64_t change(const Step& step) noexcept { return (step.hasAfter ? 1 : 0) - (step.hasBefore ? 1 : 0); }

Value valueAt(const Place& place) noexcept {
  const Word* word = place.object->find(place.slot);
  return {word != nullptr, word ? std::bit_cast<std::uint64_t>(*word) : 0};
}

void Rehearsal::playValue(const Step& step) {
  const Place place{step.object, step.slot};
  const auto known = mValues.try_emplace(place, valueAt(place)).first;
  const Value expected{step.hasBefore, step.hasBefore ? std::bit_cast<std::uint64_t>(step.before) : 0};
  if (known->second != expected) {
    violate(
        "every change is recorded in the journal",
        shownObject(step.object) + " was changed without a step, in " + shownSlot(*step.object, step.slot));
  }
  known->second = {step.hasAfter, step.hasAfter ? std::bit_cast<std::uint64_t>(step.after) : 0};
  mLevels[{step.object, kAllValues}].add(change(step));
  playLinks(step);
}

void Rehearsal::playElement(const Step& step) {
  const WordList* list = listOf(*step.object, step.slot);
  Level& level = mLevels[{step.object, step.slot}];
  const std::int64_t size = (list ? list->size() : 0) + level.now;
  const std::int64_t end = step.hasBefore ? size : size + 1;
  if (!list || step.index >= end) {
    violate("every change is recorded in the journal", shownObject(step.object) + " has in " +
                                                           shownSlot(*step.object, step.slot) +
                                                           " a list that is too short for a step");
  }
  level.add(change(step));
  playLinks(step);
}

void Rehearsal::playLinks(const Step& step) {
  if ((step.object->cls().referringSlots & bitOf(step.slot)) == 0) return;
  if (step.hasBefore) mLevels[{step.before.object, Instance::kReferrerSlot}].add(-1);
  if (step.hasAfter) mLevels[{step.after.object, Instance::kReferrerSlot}].add(1);
}

std::int64_t Rehearsal::roomOf(const Place& place) {
  const Instance& object = *place.object;
  if (place.slot == kAllValues) return object.room();
  if (place.slot != Instance::kReferrerSlot) return listOf(object, place.slot)->room();
  const Word* word = object.find(Instance::kReferrerSlot);
  if (!word) return 0;
  std::uint64_t bits = word->bits;
  return Referrers(bits).room();
}

void Rehearsal::checkRoom() const {
  for (const auto& [place, level] : mLevels) {
    if (level.most <= roomOf(place)) continue;
    const std::string where = place.slot == kAllValues                ? "values"
                              : place.slot == Instance::kReferrerSlot ? "referrers"
                                                                      : shownSlot(*place.object, place.slot);
    violate("undo and redo have reserved memory",
            shownObject(place.object) + " has room for " + std::to_string(roomOf(place)) +
                " more entries in its " + where + ", but undo or redo can add " + std::to_string(level.most));
  }
}

}  // namespace

void Auditor::checkJournal() {
  const Journal* journal = mModel.journal();
  if (journal && journal->isTelling()) return;
  if (journal) checkHistory(*journal);
  checkBuried(journal);
  if (!journal) return;
  Rehearsal rehearsal;
  const auto takeBack = [&](const Journal::Steps& steps) {
    mCost += steps.size();
    // clang 14 has no reverse view with this library.
    std::for_each(steps.rbegin(), steps.rend(), [&](const Step& step) { rehearsal.play(step.inverse()); });
  };
  takeBack(journal->mOpen);
  rehearsal.begin();
  const std::span undo = std::span(journal->mUndo).subspan(journal->mForgotten);
  std::for_each(undo.rbegin(), undo.rend(), takeBack);
  rehearsal.goBack();
  std::for_each(journal->mRedo.rbegin(), journal->mRedo.rend(), [&](const Journal::Steps& steps) {
    mCost += steps.size();
    for (const Step& step : steps) rehearsal.play(step);
  });
  rehearsal.checkRoom();
}

void Auditor::checkHistory(const Journal& journal) {
  constexpr const char* kHistory = "the history keeps at most its limit and has memory for it";
  const std::size_t limit = journal.mLimit;
  if (journal.undoable() + journal.redoable() > limit)
    violate(kHistory, "it keeps more batches than its limit");
  if (journal.mUndo.capacity() < 2 * limit || journal.mRedo.capacity() < limit) {
    violate(kHistory, "the memory is not reserved");
  }
  if (journal.mDepth < journal.mTransactions.size()) {
    violate("each open transaction is an open batch",
            std::to_string(journal.mTransactions.size()) +
                " transactions are open, but batches are nested to a depth of " +
                std::to_string(journal.mDepth));
  }
  if (journal.mDepth == 0 && !journal.mOpen.empty()) {
    violate("no step is open after the last batch has ended",
            std::to_string(journal.mOpen.size()) + " steps are open");
  }
}

/// Checks that a step can restore each deleted object that is kept. Otherwise nobody would free the object
/// before its model ends.
void Auditor::checkBuried(const Journal* journal) {
  UnnoticedVector<const Instance*> known;
  const auto add = [&](const Journal::Steps& steps, bool isTakenBack) {
    for (const Step& step : steps) {
      if (step.kind != Step::Kind::Life || step.object->isAlive()) continue;
      if (isTakenBack ? step.hasAfter : step.hasBefore) known.push_back(step.object);
    }
  };
  if (journal) {
    add(journal->mOpen, false);
    for (const Journal::Steps& steps : journal->mUndo) add(steps, false);
    for (const Journal::Steps& steps : journal->mRedo) add(steps, true);
  }
  std::ranges::sort(known);
  mModel.instances().forEach([&](const Instance& object) {
    if (object.isAlive() || std::ranges::binary_search(known, &object)) return;
    violate("a destroyed object is kept only if a step can restore it",
            "no step restores " + shownObject(&object));
  });
}

}  // namespace Tarvelon::metamodel::native
