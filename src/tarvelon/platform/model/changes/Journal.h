#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "tarvelon/platform/model/changes/Delay.h"
#include "tarvelon/platform/model/changes/Steps.h"
#include "tarvelon/platform/model/changes/Subscribers.h"

namespace Tarvelon::metamodel::native {

class Instance;
class NativeModel;

/// The steps of a model in the order they were made, for as long as somebody wants to know of them: an open
/// transaction, the history, a listener, a watch. A model that nobody asks has no journal.
///
/// Steps form batches: what one change does, or all that happens between the begin and the end of a
/// transaction. Batches nest; the outermost one goes into the history and to the listeners when it ends.
///
/// Objects that are destroyed stay buried for as long as a step can bring them back.
/// Failure: reserve() and setLimit() allocate; what takes steps back does not.
class Journal {
 public:
  /// With the object that it was put on, null for the whole model: steps at others are not for it.
  using Listener = Subscribers::Listener;

  explicit Journal(NativeModel& model) noexcept : mModel(model) {}
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;
  ~Journal();

  /// Makes room for that many steps.
  void reserve(std::size_t steps);
  /// REQUIRES: room.
  void note(const Step& step) noexcept;

  /// Begins a batch and gives where it starts.
  std::size_t begin() noexcept;
  /// Ends the innermost batch.
  void end() noexcept;
  /// Takes back all that has happened since a batch began there, and ends it. A transaction that was begun
  /// meanwhile stays open, and one that was rolled back meanwhile has taken its own part back already.
  void rollBack(std::size_t start) noexcept;

  /// A batch that may outlive the scope it began in. REQUIRES: no batch of a scope is open, but perhaps a
  /// delayed one.
  std::uint64_t beginTransaction();
  bool isOpen(std::uint64_t transaction) const noexcept;
  bool isInnermost(std::uint64_t transaction) const noexcept;
  /// Ends the innermost one.
  void commit() noexcept;
  /// Ends those that were begun in it as well. REQUIRES: isOpen().
  void rollBackTransaction(std::uint64_t transaction) noexcept;
  unsigned depth() const noexcept { return mDepth; }

  /// How many batches can be taken back; 0 keeps none. Fewer than there are drop the oldest and, if that is
  /// not enough, all that could be made again.
  void setLimit(std::size_t limit);
  std::size_t limit() const noexcept { return mLimit; }
  std::size_t undoable() const noexcept { return mUndo.size() - mForgotten; }
  std::size_t redoable() const noexcept { return mRedo.size(); }
  /// REQUIRES: depth() is 0, undoable() or redoable() is not.
  void undo() noexcept;
  void redo() noexcept;

  /// Called with each batch when it has ended. What a listener raises is lost, and it may not change the
  /// model. One that leaves meanwhile is not told any more, one that comes is told of the next batch.
  /// With an object: only of the steps at that object, until it is freed.
  std::uint64_t listen(Listener listener, const Instance* object = nullptr);
  void unlisten(std::uint64_t id) noexcept { mListeners.leave(id); }
  /// An object is freed: nobody listens to it any more.
  void forget(const Instance& object) noexcept { mListeners.leaveAll(object); }
  /// Gives away one who has left, null when there is none: what goes with a listener may come back to the
  /// model, and so goes when nothing is under way.
  std::shared_ptr<void> takeLeft() noexcept { return mListeners.takeLeft(); }
  bool isTelling() const noexcept { return mIsTelling; }
  bool hasListeners() const noexcept { return !mListeners.empty(); }
  /// Differs from before when anything has changed, also when it was taken back.
  std::uint64_t changes() const noexcept { return mChanges; }
  bool isWatched() const noexcept { return mWatches != 0; }
  /// Raises K7Q::Exception while listeners are called.
  void requireQuiet() const;
  /// The newest steps that are open or can be taken back, `most` of them or fewer.
  std::span<const Step> lastSteps(std::size_t most) const noexcept;
  /// The batch that undo() would take back, and the one that redo() would make again: empty without one.
  std::span<const Step> nextUndo() const noexcept;
  std::span<const Step> nextRedo() const noexcept;
  /// Whether nextRedo() gives inverse steps in inverse order, as it does while listeners are told of an undo.
  bool isNextRedoTurned() const noexcept { return mIsTurned; }

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
  static void turn(Steps& steps) noexcept;
  /// Drops steps. Objects go with them that these have buried and nothing can bring back any more: the ones
  /// that were destroyed or, of steps that were taken back, the ones that were made.
  /// `start` is where the first batch is cut.
  void discard(std::span<Steps> batches, std::size_t start, bool areTakenBack) noexcept;

  NativeModel& mModel;
  Steps mOpen;
  std::vector<Transaction> mTransactions;
  /// The oldest come first; those that were forgotten leave their places until there are many.
  std::vector<Steps> mUndo;
  std::size_t mForgotten = 0;
  std::vector<Steps> mRedo;
  Subscribers mListeners;
  std::size_t mLimit = 0;
  std::uint64_t mChanges = 0;
  unsigned mWatches = 0;
  unsigned mDepth = 0;
  bool mIsTelling = false;
  bool mIsTurned = false;
};

/// A batch for the length of a scope: one that an exception leaves takes back what happened in it. Costs a
/// branch when the model has no journal.
class Batch {
 public:
  explicit Batch(NativeModel& model);
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;
  ~Batch();
  /// From now on the outermost batch on this thread that is noted lasts until endDelay().
  static void delay(Delay& scope) noexcept;
  /// Ends that batch, or takes back what happened in it. Says whether one was noted.
  /// REQUIRES: the scope is the innermost one of this thread.
  static bool endDelay(Delay& scope, bool isToTakeBack = false) noexcept;
  /// Tells delay() of a new object.
  static void noteMade(Instance& object) noexcept;
  /// The model and its journal go: no batch of it is left to end.
  static void forget(const NativeModel& model) noexcept;
  /// Makes room for that many steps.
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

/// Sees whether a model changes while somebody who walks it calls what is not his.
class ChangeWatch {
 public:
  explicit ChangeWatch(NativeModel& model);
  ChangeWatch(const ChangeWatch&) = delete;
  ChangeWatch& operator=(const ChangeWatch&) = delete;
  ~ChangeWatch();
  /// Whether the model has changed or was closed.
  bool hasChanged() const noexcept;

 private:
  NativeModel& mModel;
  Journal* mJournal;
  std::uint64_t mSeen;
};

}  // namespace Tarvelon::metamodel::native
