#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/hx/Sanitizer.h"
#include "tarvelon/platform/hx/ThreadLocal.h"

namespace hx {

/// Free lists of small memory blocks, one list for each block size.
///
/// Each thread has its own lists, so no lock is needed. A thread may give back a block that another thread
/// took. Every block comes from utMalloc(); a list keeps at most kKept blocks and frees the others at once.
/// All kept blocks of a thread are freed when the thread ends.
///
/// No block is reused while utFailAllocation() is armed, so that a test can count allocations. A build with
/// AddressSanitizer keeps no blocks at all, so that the sanitizer sees leaks and uses after free.
///
/// Threads: any.
class Blocks {
 public:
  /// The block sizes are the sizes that malloc() provides without waste: 40, 56, 72 bytes and so on.
  static constexpr std::size_t kLeast = 40;
  static constexpr std::size_t kStep = 16;
  static constexpr std::uint32_t kSizes = 14;
  static constexpr std::size_t kLargest = kLeast + (kSizes - 1) * kStep;

  /// The index of the smallest block size with room for `bytes`; at least kSizes if no size is large enough.
  static constexpr std::size_t sizeFor(std::size_t bytes) noexcept {
    return bytes <= kLeast ? 0 : (bytes - kLeast + kStep - 1) / kStep;
  }

  /// Returns a block of the given size index, null when memory is exhausted. REQUIRES: size < kSizes.
  static void* take(std::size_t size) noexcept;
  static void give(std::size_t size, void* storage) noexcept;

 private:
  struct Block {
    Block* next;
  };
  struct List {
    Block* first = nullptr;
    /// How many more blocks the list may keep: 0 before prepare() has run, and 0 after freeAll().
    std::uint32_t room = 0;
  };
  static constexpr std::uint32_t kKept = kHasAsan ? 0 : 4096;

  friend struct ThisThread;
  /// Handles a list without room: the list is full, or the thread has not kept a block yet.
  TARVELON_API static void giveFirst(std::size_t size, void* storage) noexcept;
  /// REQUIRES: list.room > 0.
  static void keep(List& list, void* storage) noexcept {
    list.first = ::new (storage) Block{list.first};
    --list.room;
  }
  static void freeAll() noexcept;
  static bool prepare() noexcept;
};

/// Object counts that are summed over all threads.
enum class Counted : std::uint8_t { Arrays, Bindings, ModelObjects };
inline constexpr std::size_t kCounted = 3;

/// The thread-local data of the platform libraries.
struct ThisThread {
  std::array<Blocks::List, Blocks::kSizes> blocks;
  /// Created objects minus destroyed objects. Only the owning thread writes; other threads read.
  std::array<std::atomic<std::ptrdiff_t>, kCounted> counts{};
  /// The countdown of utFailAllocation() for this thread, 0 when not armed.
  unsigned long allocationsUntilFailure = 0;
  /// Neighbours in the list of living threads (see listThread()).
  ThisThread* previous = nullptr;
  ThisThread* next = nullptr;
  bool isListed = false;
  /// Set when the thread was removed from the list at its end.
  bool hasLeft = false;
  /// Set when freeAll() has run: the thread keeps no more blocks.
  bool hasEnded = false;
};

TARVELON_API extern TARVELON_THREAD_LOCAL ThisThread tThread;

/// Adds the calling thread to the list of threads that sumOf() reads. The thread's counts stay part of the
/// sums after its end.
TARVELON_API void listThread() noexcept;

/// Adds `by` to a count of the calling thread. Takes no lock.
inline void addTo(Counted what, std::ptrdiff_t by) noexcept {
  auto& counted = tThread.counts[static_cast<std::size_t>(what)];
  counted.store(counted.load(std::memory_order_relaxed) + by, std::memory_order_relaxed);
  if (!tThread.isListed) [[unlikely]]
    listThread();
}

/// The sum of a count over all threads, ended threads included. Exact only while no thread is counting.
TARVELON_API std::size_t sumOf(Counted what) noexcept;

inline void* Blocks::take(std::size_t size) noexcept {
  List& list = tThread.blocks[size];
  Block* block = list.first;
  if (!block || tThread.allocationsUntilFailure != 0) return utMalloc(kLeast + size * kStep);
  list.first = block->next;
  ++list.room;
  return block;
}

inline void Blocks::give(std::size_t size, void* storage) noexcept {
  List& list = tThread.blocks[size];
  if (list.room == 0) [[unlikely]]
    return giveFirst(size, storage);
  keep(list, storage);
}

}  // namespace hx
