#include "tarvelon/platform/hx/Blocks.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace hx {

TARVELON_THREAD_LOCAL ThisThread tThread;

namespace {

/// The counts of those that have ended.
struct Threads {
  std::mutex guard;
  ThisThread* first = nullptr;
  std::array<std::ptrdiff_t, kCounted> ended{};
};
constinit Threads gThreads;

void leaveList() noexcept {
  const std::scoped_lock lock(gThreads.guard);
  for (std::size_t what = 0; what < kCounted; ++what) {
    gThreads.ended[what] += tThread.counts[what].exchange(0, std::memory_order_relaxed);
  }
  if (tThread.next) tThread.next->previous = tThread.previous;
  (tThread.previous ? tThread.previous->next : gThreads.first) = tThread.next;
  tThread.isListed = false;
}

TARVELON_THREAD_LOCAL ThreadEnd tLeaveList{&leaveList};

}  // namespace

void listThread() noexcept {
  // Where memory is exhausted it is tried again with the next count.
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

/// Sees to the thread's end, once; false when that cannot be done, or has come.
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
    give(size, storage);
  } else {
    utFree(storage);
  }
}

}  // namespace hx
