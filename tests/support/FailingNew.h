#pragma once

#include <atomic>
#include <cstddef>
#include <new>
#include <stdexcept>

#include "tarvelon/boundary/ut/Memory.h"

/// An operator new that counts allocations and can be made to fail. A test program uses it by including
/// tests/support/ReplaceNew.h in one source.
namespace failing {

inline std::atomic<std::size_t> gLive = 0;
// Only for tests with a single thread.
inline std::size_t gCountdown = 0;
// The allocated bytes, now and at most.
inline std::atomic<std::size_t> gBytes = 0;
inline std::atomic<std::size_t> gMostBytes = 0;

/// The maximum number of bytes that `action` allocates at the same time with operator new.
template <class Action>
std::size_t peakOf(Action action) {
  const std::size_t before = gBytes;
  gMostBytes = before;
  action();
  return gMostBytes - before;
}

/// The number of allocations of operator new that were not freed yet.
inline std::size_t live() noexcept { return gLive; }

/// Runs `action` with a failing n-th allocation, for n = 1, 2, ... until it succeeds: first for operator new,
/// then for utMalloc() and utCalloc(). Calls `prepare` before each run and `check` after each failure.
/// Returns the number of failures.
template <class Prepare, class Action, class Check>
int eachAllocation(Prepare prepare, Action action, Check check) {
  constexpr std::size_t kTooMany = 2000;
  int failures = 0;
  for (const auto arm :
       {+[](std::size_t n) { gCountdown = n; }, +[](std::size_t n) { utFailAllocation(n); }}) {
    for (std::size_t n = 1;; ++n) {
      if (n == kTooMany) throw std::logic_error("the action fails for good");
      prepare();
      arm(n);
      try {
        action();
        arm(0);
        break;
      } catch (const std::bad_alloc&) {
        arm(0);
        ++failures;
      }
      check(n);
    }
  }
  return failures;
}

}  // namespace failing
