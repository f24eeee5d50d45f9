#include "tarvelon/platform/model/changes/Journal.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <utility>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/changes/AuditHooks.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::metamodel::native {

namespace {

bool holdsTexts(const Step& step) noexcept {
  return (step.kind == Step::Kind::Value || step.kind == Step::Kind::Element) &&
         (step.object->cls().textSlots >> step.slot & 1) != 0;
}

void takeTexts(const Step& step) noexcept {
  if (!holdsTexts(step)) return;
  if (step.hasBefore && step.before.text) step.before.text->addRef();
  if (step.hasAfter && step.after.text) step.after.text->addRef();
}

void dropTexts(const Step& step) noexcept {
  if (!holdsTexts(step)) return;
  if (step.hasBefore && step.before.text) step.before.text->release();
  if (step.hasAfter && step.after.text) step.after.text->release();
}

/// Whether the step destroyed an object or, if it was undone, created one. The journal keeps such an object,
/// and only this step can restore it.
bool buries(const Step& step, bool isTakenBack) noexcept {
  return step.kind == Step::Kind::Life && (isTakenBack ? step.hasAfter : step.hasBefore);
}

/// Ids of listeners and transactions are never reused.
std::uint64_t nextId() noexcept {
  static std::atomic<std::uint64_t> last = 0;
  return ++last;
}

}  // namespace

Journal::~Journal() {
  discard(mRedo, 0, true);
  discard(mUndo, 0, false);
  discard({&mOpen, 1}, 0, false);
}

void Journal::reserve(std::size_t steps) {
  const std::size_t needed = mOpen.size() + steps;
  if (needed > mOpen.capacity()) mOpen.reserve(std::max(needed, 2 * mOpen.capacity()));
}

void Journal::note(const Step& step) noexcept {
  auditRoom(mOpen.size() < mOpen.capacity(), step);
  ++mChanges;
  takeTexts(step);
  mOpen.push_back(step);
}

std::size_t Journal::begin() noexcept {
  ++mDepth;
  return mOpen.size();
}

void Journal::end() noexcept {
  if (--mDepth == 0) finish();
}

void Journal::rollBack(std::size_t start) noexcept {
  start = std::min(start, mOpen.size());
  for (Transaction& transaction : mTransactions) transaction.start = std::min(transaction.start, start);
  takeBack(mOpen, start);
  discard({&mOpen, 1}, start, true);
  end();
}

std::uint64_t Journal::beginTransaction() {
  mTransactions.push_back({nextId(), mOpen.size()});
  begin();
  return mTransactions.back().id;
}

bool Journal::isOpen(std::uint64_t transaction) const noexcept {
  return std::ranges::find(mTransactions, transaction, &Transaction::id) != mTransactions.end();
}

bool Journal::isInnermost(std::uint64_t transaction) const noexcept {
  return !mTransactions.empty() && mTransactions.back().id == transaction;
}

void Journal::commit() noexcept {
  mTransactions.pop_back();
  end();
}

void Journal::rollBackTransaction(std::uint64_t transaction) noexcept {
  const auto found = std::ranges::find(mTransactions, transaction, &Transaction::id);
  const std::size_t start = found->start;
  // All these transactions end; rollBack() ends the last one. A delayed batch stays open.
  mDepth -= static_cast<unsigned>(mTransactions.end() - found) - 1;
  mTransactions.erase(found, mTransactions.end());
  rollBack(start);
}

void Journal::takeBack(Steps& steps, std::size_t start) noexcept {
  if (start == steps.size()) return;
  ++mChanges;
  mModel.noteDestruction();
  native::takeBack(std::span(steps).subspan(start));
}

void Journal::finish() noexcept {
  if (mOpen.empty()) return;
  discard(mRedo, 0, true);
  mRedo.clear();
  Steps done = std::exchange(mOpen, {});
  if (mLimit == 0) {
    tell(done);
    discard({&done, 1}, 0, false);
  } else {
    // Before the listeners are called, so that they see the new history.
    remember(std::move(done));
    tell(mUndo.back());
  }
}

void Journal::remember(Steps steps) noexcept {
  if (undoable() == mLimit) forgetOldest();
  // Cannot allocate: setLimit() has reserved twice the limit.
  mUndo.push_back(std::move(steps));
}

void Journal::forgetOldest() noexcept {
  Steps& oldest = mUndo[mForgotten];
  discard({&oldest, 1}, 0, false);
  oldest = {};
  if (++mForgotten < mLimit) return;
  mUndo.erase(mUndo.begin(), mUndo.begin() + static_cast<std::ptrdiff_t>(mForgotten));
  mForgotten = 0;
}

void Journal::tell(const Steps& steps) noexcept {
  if (mListeners.empty()) return;
  mIsTelling = true;
  mListeners.tell(steps);
  mIsTelling = false;
}

void Journal::discard(std::span<Steps> batches, std::size_t start, bool areTakenBack) noexcept {
  const auto forEach = [&](auto visit) {
    std::size_t index = start;
    for (Steps& steps : batches) {
      for (; index < steps.size(); ++index) visit(steps[index]);
      index = 0;
    }
  };
  const auto forEachDeleted = [&](auto visit) {
    forEach([&](const Step& step) {
      if (buries(step, areTakenBack)) visit(*step.object);
    });
  };
  forEach(dropTexts);
  // First, all objects are removed from the referrers of others, since objects that are freed here may refer
  // to each other.
  forEachDeleted(removeFromReferred);
  forEachDeleted([this](Instance& object) { mModel.expire(object); });
  for (Steps& steps : batches) {
    steps.erase(steps.begin() + static_cast<std::ptrdiff_t>(start), steps.end());
    start = 0;
  }
}

void Journal::setLimit(std::size_t limit) {
  mUndo.reserve(2 * limit);
  mRedo.reserve(limit);
  if (undoable() + redoable() > limit) {
    discard(mRedo, 0, true);
    mRedo.clear();
  }
  while (undoable() > limit) forgetOldest();
  mUndo.erase(mUndo.begin(), mUndo.begin() + static_cast<std::ptrdiff_t>(mForgotten));
  mForgotten = 0;
  mLimit = limit;
}

void Journal::invert(Steps& steps) noexcept {
  std::ranges::reverse(steps);
  for (Step& step : steps) step = step.inverse();
}

void Journal::undo() noexcept {
  Steps steps = std::move(mUndo.back());
  mUndo.pop_back();
  takeBack(steps, 0);
  mRedo.push_back(std::move(steps));
  if (!mListeners.empty()) {
    // Listeners of an undo receive the inverse steps, the last one first.
    invert(mRedo.back());
    mIsInverse = true;
    tell(mRedo.back());
    mIsInverse = false;
    invert(mRedo.back());
  }
}

void Journal::redo() noexcept {
  Steps steps = std::move(mRedo.back());
  mRedo.pop_back();
  ++mChanges;
  mModel.noteDestruction();
  apply(steps);
  mUndo.push_back(std::move(steps));
  tell(mUndo.back());
}

std::uint64_t Journal::listen(Listener listener, const Instance* object) {
  const std::uint64_t id = nextId();
  mListeners.add(id, std::move(listener), object);
  return id;
}

void Journal::requireQuiet() const {
  if (!mIsTelling) return;
  throw K7Q::Exception(
      "a listener must not change the model; change it after the notifying call has returned");
}

std::span<const Step> Journal::lastSteps(std::size_t most) const noexcept {
  const std::span<const Step> steps = mOpen.empty() ? nextUndo() : mOpen;
  return steps.last(std::min(most, steps.size()));
}

std::span<const Step> Journal::nextUndo() const noexcept {
  return undoable() == 0 ? std::span<const Step>() : mUndo.back();
}

std::span<const Step> Journal::nextRedo() const noexcept {
  return mRedo.empty() ? std::span<const Step>() : mRedo.back();
}

namespace {

/// The innermost scope on this thread that delays the notification of listeners.
TARVELON_THREAD_LOCAL Delay* tDelay = nullptr;

}  // namespace

void Batch::delay(Delay& scope) noexcept { scope.outer = std::exchange(tDelay, &scope); }

bool Batch::endDelay(Delay& scope, bool isToTakeBack) noexcept {
  Delay* const outer = tDelay = scope.outer;
  NativeModel* const model = scope.model;
  if (!model) return false;
  // A listener may release the last handle of the model.
  model->addRef();
  if (isToTakeBack) {
    model->journal()->rollBack(scope.start);
  } else if (outer && !outer->model) {
    // The batch stays open until the enclosing scope ends.
    outer->model = model;
    outer->start = scope.start;
  } else {
    model->journal()->end();
  }
  model->dropIdleJournal();
  auditAfter(*model);
  model->release();
  return true;
}

void Batch::noteMade(Instance& object) noexcept {
  if (tDelay && tDelay->made) *tDelay->made = K7Q::ClassObject(&object, K7Q::Deviant{});
}

void Batch::forget(const NativeModel& model) noexcept {
  for (Delay* scope = tDelay; scope; scope = scope->outer) {
    if (scope->model == &model) scope->model = nullptr;
  }
}

Batch::Batch(NativeModel& model) : mModel(model), mJournal(model.journal()) {
  if (mJournal) begin();
  beginAuditedChange();
}

void Batch::begin() {
  mJournal->requireQuiet();
  if (tDelay && !tDelay->model) {
    tDelay->model = &mModel;
    tDelay->start = mJournal->begin();
  }
  mStart = mJournal->begin();
  mExceptions = std::uncaught_exceptions();
  // A listener may release the last handle of the model.
  mModel.addRef();
}

Batch::~Batch() {
  if (mJournal) end();
  endAuditedChange();
  auditAfter(mModel);
  if (mJournal) mModel.release();
}

void Batch::end() noexcept {
  if (std::uncaught_exceptions() > mExceptions) {
    mJournal->rollBack(mStart);
  } else {
    mJournal->end();
  }
  // A listener may have been removed during the notification, or together with its object.
  if (mJournal->depth() == 0) mModel.dropIdleJournal();
}

ChangeWatch::ChangeWatch(NativeModel& model)
    : mModel(model), mJournal(&model.requireJournal()), mSeen(mJournal->changes()) {
  ++mJournal->mWatches;
}

ChangeWatch::~ChangeWatch() {
  if (mModel.journal() != mJournal) return;
  --mJournal->mWatches;
  mModel.dropIdleJournal();
}

// A closed model has no journal.
bool ChangeWatch::hasChanged() const noexcept {
  return mModel.journal() != mJournal || mJournal->changes() != mSeen;
}

}  // namespace Tarvelon::metamodel::native
