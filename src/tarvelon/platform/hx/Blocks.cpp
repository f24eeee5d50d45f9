#include "tarvelon/platform/hx/Blocks.h"

#include <algorithm>
#include <mutex>
#include <pthread.h>
#include <utility>

namespace hx {

TARVELON_THREAD_LOCAL ThisThread tThread;

namespace {

/// The list of living threads, and the sums of the counts of all ended threads.
struct Threads {
  std::mutex guard;
  ThisThread* first = nullptr;
  std::array<std::ptrdiff_t, kCounted> ended{};
};
constinit Threads gThreads;

/// REQUIRES: gThreads.guard is locked.
void addTo(std::array<std::ptrdiff_t, kCounted>& sums, const ThisThread& thread) noexcept {
  for (std::size_t what = 0; what < kCounted; ++what) {
    sums[what] += thread.counts[what].load(std::memory_order_relaxed);
  }
}

/// Moves the counts of the calling thread to the sums of the ended threads.
/// REQUIRES: gThreads.guard is locked.
void settle() noexcept {
  addTo(gThreads.ended, tThread);
  for (auto& count : tThread.counts) count.store(0, std::memory_order_relaxed);
}

void leaveList() noexcept {
  const std::scoped_lock lock(gThreads.guard);
  settle();
  if (tThread.next) tThread.next->previous = tThread.previous;
  (tThread.previous ? tThread.previous->next : gThreads.first) = tThread.next;
  tThread.isListed = false;
  tThread.hasLeft = true;
}

TARVELON_THREAD_LOCAL ThreadEnd tLeaveList{&leaveList};

/// Keeps the counts correct over fork(): only the calling thread exists in the child process.
struct Fork {
  Fork() noexcept { pthread_atfork(&prepare, &goOn, &beChild); }

  static void prepare() noexcept {
    threadEnds().lock();
    gThreads.guard.lock();
    gOthers = {};
    for (const ThisThread* thread = gThreads.first; thread; thread = thread->next) {
      if (thread != &tThread) addTo(gOthers, *thread);
    }
  }
  static void goOn() noexcept {
    gThreads.guard.unlock();
    threadEnds().unlock();
  }
  static void beChild() noexcept {
    for (std::size_t what = 0; what < kCounted; ++what) gThreads.ended[what] += gOthers[what];
    gThreads.first = tThread.isListed ? &tThread : nullptr;
    tThread.previous = nullptr;
    tThread.next = nullptr;
    goOn();
  }

  /// The counts of all living threads except the forking thread.
  static std::array<std::ptrdiff_t, kCounted> gOthers;
};
constinit std::array<std::ptrdiff_t, kCounted> Fork::gOthers{};
const Fork kFork;

}  // namespace

void listThread() noexcept {
  if (tThread.hasLeft) {
    // A thread may still count after leaveList() has run for it. It is not listed again, because nothing
    // would remove it from the list a second time.
    const std::scoped_lock lock(gThreads.guard);
    settle();
    return;
  }
  // Without memory for the entry, the next count tries again.
  if (!runAtThreadEnd(tLeaveList)) return;
  const std::scoped_lock lock(gThreads.guard);
  tThread.previous = nullptr;
  tThread.next = std::exchange(gThreads.first, &tThread);
  if (tThread.next) tThread.next->previous = &tThread;
  tThread.isListed = true;
}

std::size_t sumOf(Counted what) noexcept {
  const auto index = static_cast<std::size_t>(what);
  const std::scoped_lock lock(gThreads.guard);
  std::ptrdiff_t sum = gThreads.ended[index];
  for (const ThisThread* thread = gThreads.first; thread; thread = thread->next) {
    sum += thread->counts[index].load(std::memory_order_relaxed);
  }
  return static_cast<std::size_t>(sum);
}

void Blocks::freeAll() noexcept {
  tThread.hasEnded = true;
  for (List& list : tThread.blocks) {
    list.room = 0;
    while (list.first) utFree(std::exchange(list.first, list.first->next));
  }
}

/// Enables the thread's free lists and registers freeAll() for the thread's end. True if this call has
/// enabled them; false if they were enabled before, memory is exhausted, the thread is ending or blocks are
/// never kept.
bool Blocks::prepare() noexcept {
  static TARVELON_THREAD_LOCAL ThreadEnd tFreeAll{&Blocks::freeAll};
  static TARVELON_THREAD_LOCAL bool tIsPrepared = false;
  if (kKept == 0 || tIsPrepared || tThread.hasEnded || !runAtThreadEnd(tFreeAll)) return false;
  tIsPrepared = true;
  for (List& list : tThread.blocks) list.room = kKept;
  return true;
}

void Blocks::giveFirst(std::size_t size, void* storage) noexcept {
  if (prepare()) {
    keep(tThread.blocks[size], storage);
  } else {
    utFree(storage);
  }
}

}  // namespace hx
