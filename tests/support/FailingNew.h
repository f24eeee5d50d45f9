#pragma once

#include <atomic>
#include <cstddef>
#include <new>
#include <stdexcept>

#include "tarvelon/boundary/ut/Memory.h"

/// An operator new that counts and that fails by request. A test program that wants it has a source that
/// includes tests/support/ReplaceNew.h.
namespace failing {

inline std::atomic<std::size_t> gLive = 0;
// Armed by tests with one thread alone.
inline std::size_t gCountdown = 0;
// Of what is given out.
inline std::atomic<std::size_t> gBytes = 0;
inline std::atomic<std::size_t> gMostBytes = 0;

/// How many bytes of operator new an action needs at once, beside those that were given out before.
template <class Action>
std::size_t peakOf(Action action) {
  const std::size_t before = gBytes;
  gMostBytes = before;
  action();
  return gMostBytes - before;
}

/// How many calls of operator new have not been given back.
inline std::size_t live() noexcept { return gLive; }

/// Lets the n-th allocation of `action` fail, for n from 1 until none does, of operator new first and of
/// utMalloc() and utCalloc() then. `prepare` comes before each turn, `check` behind each failure. Returns how
/// many failed.
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
