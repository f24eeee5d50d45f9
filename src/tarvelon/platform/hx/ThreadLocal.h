#pragma once

#include <mutex>

#include "tarvelon/boundary/Export.h"

namespace hx {

/// An entry of the list of functions that run when the calling thread ends. The entry must be a
/// TARVELON_THREAD_LOCAL variable; the list itself never allocates. The functions do not run for the thread
/// that ends the process.
struct ThreadEnd {
  void (*run)() noexcept;
  ThreadEnd* next = nullptr;
};

/// Adds the entry to the calling thread's list. The entry leaves the list when its function runs. Returns
/// false when memory is exhausted. REQUIRES: the entry is not in the list.
TARVELON_API bool runAtThreadEnd(ThreadEnd& entry) noexcept;

/// A lock that is held while the entries of a thread run, and during fork(). Without it, a lock taken by an
/// entry could stay locked forever in the child process, which does not have the thread that holds it.
std::mutex& threadEnds() noexcept;

}  // namespace hx
