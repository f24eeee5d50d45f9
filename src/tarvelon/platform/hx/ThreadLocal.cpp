#include "tarvelon/platform/hx/ThreadLocal.h"

#include <pthread.h>
#include <utility>

namespace hx {

namespace {

TARVELON_THREAD_LOCAL ThreadEnd* tFirst = nullptr;

void runAll(void* /*value*/) {
  const std::scoped_lock lock(threadEnds());
  while (tFirst) {
    ThreadEnd* const entry = std::exchange(tFirst, tFirst->next);
    entry->run();
  }
}

/// The key whose destructor runs the entries at thread end. A thread_local variable with a destructor would
/// do the same, but registering the destructor allocates and cannot report a failure. pthread_setspecific()
/// needs no allocation for the first keys of a process, and reports a failure for later keys.
struct Key {
  Key() noexcept : isMade(pthread_key_create(&key, &runAll) == 0) {}
  pthread_key_t key{};
  bool isMade;
} const kKey;

}  // namespace

std::mutex& threadEnds() noexcept {
  static constinit std::mutex mutex;
  return mutex;
}

bool runAtThreadEnd(ThreadEnd& entry) noexcept {
  if (!tFirst && (!kKey.isMade || pthread_setspecific(kKey.key, &tFirst) != 0)) return false;
  entry.next = std::exchange(tFirst, &entry);
  return true;
}

}  // namespace hx
