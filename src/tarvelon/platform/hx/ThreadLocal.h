#pragma once

#include <mutex>

#include "tarvelon/boundary/Export.h"

namespace hx {

/// What is to run when the calling thread ends: an entry of a list without allocations. The entry is a
/// TARVELON_THREAD_LOCAL variable. Not run for the thread that ends the process.
struct ThreadEnd {
  void (*run)() noexcept;
  ThreadEnd* next = nullptr;
};

/// Enters it, until it has run. False when memory is exhausted. REQUIRES: it is not entered.
TARVELON_API bool runAtThreadEnd(ThreadEnd& entry) noexcept;

/// Held while the entries of a thread run. Who forks holds it meanwhile: then no lock that an entry takes is
/// left behind in the child by a thread that the child does not have.
std::mutex& threadEnds() noexcept;

}  // namespace hx
