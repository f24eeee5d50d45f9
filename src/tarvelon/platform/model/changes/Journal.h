#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "tarvelon/platform/model/api/Delay.h"
#include "tarvelon/platform/model/changes/Steps.h"
#include "tarvelon/platform/model/changes/Subscribers.h"

namespace Tarvelon::metamodel::native {

class Instance;
class NativeModel;

/// The log of a model's steps, in the order in which they were made. A model has a journal only while
/// something needs it: an open transaction, the history, a listener or a ChangeWatch.
///
/// Steps are grouped into batches. A batch holds the steps of one change, or all steps between the begin and
/// the end of a transaction. Batches may be nested. When the outermost batch ends, it goes into the history
/// and to the listeners.
///
/// An object that is destroyed is kept, with its values, as long as a step can restore it.
///
/// Failure: reserve(), beginTransaction(), setLimit() and listen() allocate. Undoing, redoing and rolling
///          back do not.
class Journal {
 public:
  /// A listener receives the steps of a batch and the object that it was registered for; the object is null
  /// for a listener of the whole model. A listener of an object must ignore steps of other objects.
  using Listener = Subscribers::Listener;

  explicit Journal(NativeModel& model) noexcept : mModel(model) {}
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;
  ~Journal();

  /// Makes room for `steps` more steps.
  void reserve(std::size_t steps);
  /// Records a step. REQUIRES: room.
  void note(const Step& step) noexcept;

  /// Begins a batch and returns the index of its first step.
  std::size_t begin() noexcept;
  /// Ends the innermost batch.
  void end() noexcept;
  /// Undoes all steps since the batch that began at `start`, and ends this batch. A transaction that was
  /// begun within the batch stays open. A transaction that was rolled back within it has undone its own steps
  /// already.
  void rollBack(std::size_t start) noexcept;

  /// Begins a batch that may outlive the current scope, and returns its id. REQUIRES: no batch of a scope is
  /// open, except a delayed one.
  std::uint64_t beginTransaction();
  bool isOpen(std::uint64_t transaction) const noexcept;
  bool isInnermost(std::uint64_t transaction) const noexcept;
  /// Ends the innermost transaction and keeps its steps.
  void commit() noexcept;
  /// Undoes and ends a transaction together with all transactions that were begun in it. REQUIRES: isOpen().
  void rollBackTransaction(std::uint64_t transaction) noexcept;
  unsigned depth() const noexcept { return mDepth; }

  /// Sets how many batches the history keeps for undo and redo together; 0 keeps none. If there are more, all
  /// batches for redo are dropped first, then the oldest batches for undo.
  void setLimit(std::size_t limit);
  std::size_t limit() const noexcept { return mLimit; }
  std::size_t undoable() const noexcept { return mUndo.size() - mForgotten; }
  std::size_t redoable() const noexcept { return mRedo.size(); }
  /// REQUIRES: depth() == 0; undoable() != 0 for undo(), redoable() != 0 for redo().
  void undo() noexcept;
  void redo() noexcept;

  /// Registers a listener and returns its id. The listener is called with each batch after the batch has
  /// ended. It must not change the model, and its exceptions are ignored. A listener that is removed during a
  /// notification is not called any more; one that is added then is called from the next batch on.
  /// With `object`: only for batches with steps of that object, until the object is freed.
  std::uint64_t listen(Listener listener, const Instance* object = nullptr);
  void unlisten(std::uint64_t id) noexcept { mListeners.leave(id); }
  /// Removes all listeners of an object that is being freed.
  void forget(const Instance& object) noexcept { mListeners.leaveAll(object); }
  /// Hands out one removed listener so that the caller can free it; null if there is none. Destroying a
  /// listener's captures may call back into the model, so this happens only when no change is in progress.
  std::shared_ptr<void> takeLeft() noexcept { return mListeners.takeLeft(); }
  bool isTelling() const noexcept { return mIsTelling; }
  bool hasListeners() const noexcept { return !mListeners.empty(); }
  /// Differs from an earlier result if anything has changed since, even if the change was undone.
  std::uint64_t changes() const noexcept { return mChanges; }
  bool isWatched() const noexcept { return mWatches != 0; }
  /// Raises K7Q::Exception while listeners are being called.
  void requireQuiet() const;
  /// The newest steps, up to `most`: those of the open batch or, if none is open, of the last batch in the
  /// history.
  std::span<const Step> lastSteps(std::size_t most) const noexcept;
  /// The batches that undo() would undo and redo() would apply. Empty if there is none.
  std::span<const Step> nextUndo() const noexcept;
  std::span<const Step> nextRedo() const noexcept;
  /// Whether nextRedo() currently returns inverse steps in reverse order. This is so while listeners are told
  /// of an undo.
  bool isNextRedoInverse() const noexcept { return mIsInverse; }

 private:
  friend class Auditor;
  friend class ChangeWatch;
  using Steps = std::vector<Step>;
  struct Transaction {
    std::uint64_t id;
    std::size_t start;
  };

  void finish() noexcept;
  void remember(Steps steps) noexcept;
  void forgetOldest() noexcept;
  void tell(const Steps& steps) noexcept;
  void takeBack(Steps& steps, std::size_t start) noexcept;
  static void invert(Steps& steps) noexcept;
  /// Drops steps from the journal. `start` is the index of the first step to drop in the first batch. Deleted
  /// objects that only these steps could restore are freed: objects that the steps destroyed or, if the steps
  /// were undone (`areTakenBack`), objects that the steps created.
  void discard(std::span<Steps> batches, std::size_t start, bool areTakenBack) noexcept;

  NativeModel& mModel;
  Steps mOpen;
  std::vector<Transaction> mTransactions;
  /// The history, oldest batch first. The first mForgotten batches are empty; they are erased when there are
  /// many.
  std::vector<Steps> mUndo;
  std::size_t mForgotten = 0;
  std::vector<Steps> mRedo;
  Subscribers mListeners;
  std::size_t mLimit = 0;
  std::uint64_t mChanges = 0;
  unsigned mWatches = 0;
  unsigned mDepth = 0;
  bool mIsTelling = false;
  bool mIsInverse = false;
};

/// A batch that lasts as long as a scope. If an exception leaves the scope, the steps of the batch are
/// undone. In a model without a journal this costs one branch.
class Batch {
 public:
  explicit Batch(NativeModel& model);
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;
  ~Batch();
  /// From now on, the next outermost batch on this thread stays open until endDelay().
  static void delay(Delay& scope) noexcept;
  /// Ends the delayed batch, or undoes its steps. Returns whether there was one. REQUIRES: the scope is the
  /// innermost one of this thread.
  static bool endDelay(Delay& scope, bool isToTakeBack = false) noexcept;
  /// Stores a new object in Delay::made of the current scope.
  static void noteMade(Instance& object) noexcept;
  /// Forgets the delayed batches of a model that is being closed or freed.
  static void forget(const NativeModel& model) noexcept;
  /// Makes room for `steps` more steps.
  void reserve(std::size_t steps) {
    if (mJournal) mJournal->reserve(steps);
  }

 private:
  void begin();
  void end() noexcept;

  NativeModel& mModel;
  Journal* mJournal;
  std::size_t mStart = 0;
  int mExceptions = 0;
};

/// Detects whether a model changes while code that iterates over the model calls foreign code.
class ChangeWatch {
 public:
  explicit ChangeWatch(NativeModel& model);
  ChangeWatch(const ChangeWatch&) = delete;
  ChangeWatch& operator=(const ChangeWatch&) = delete;
  ~ChangeWatch();
  /// Whether the model was changed or closed since construction.
  bool hasChanged() const noexcept;

 private:
  NativeModel& mModel;
  Journal* mJournal;
  std::uint64_t mSeen;
};

}  // namespace Tarvelon::metamodel::native
