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

/// A destructor of a thread_local would do the same, but entering it allocates and may not fail. The first
/// keys of a process have their place in each thread; for a later one the C library may have to allocate, and
/// says when it cannot.
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
