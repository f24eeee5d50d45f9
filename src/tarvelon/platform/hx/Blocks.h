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

/// Small blocks of memory, kept by size for the next who wants one.
///
/// Each thread keeps its own, so that no two meet; a block may come back on another thread than the one that
/// took it. Every block is one of utMalloc(), so that more than a list keeps go back at once, and those of a
/// thread when it ends. While an allocation is to fail by request no block is reused, so that a test can
/// count on the n-th one; in a build with AddressSanitizer none ever is, so that a use after the end and a
/// leak are seen. Threads: any.
class Blocks {
 public:
  /// What malloc() can hand out without a rest: 40, 56, 72 bytes and so on.
  static constexpr std::size_t kLeast = 40;
  static constexpr std::size_t kStep = 16;
  static constexpr std::uint32_t kSizes = 14;
  static constexpr std::size_t kLargest = kLeast + (kSizes - 1) * kStep;

  /// The smallest size of a block with that many bytes, kSizes or more if there is none.
  static constexpr std::size_t sizeFor(std::size_t bytes) noexcept {
    return bytes <= kLeast ? 0 : (bytes - kLeast + kStep - 1) / kStep;
  }

  /// A block of the calling thread, null when memory is exhausted. REQUIRES: size < kSizes.
  static void* take(std::size_t size) noexcept;
  static void give(std::size_t size, void* storage) noexcept;

 private:
  struct Block {
    Block* next;
  };
  struct List {
    Block* first = nullptr;
    /// How many more it keeps: none before the thread's end is seen to, and after it.
    std::uint32_t room = 0;
  };
  static constexpr std::uint32_t kKept = kHasAsan ? 0 : 4096;

  friend struct ThisThread;
  /// For a list without room: it is full, or the thread has kept no block before.
  TARVELON_API static void giveFirst(std::size_t size, void* storage) noexcept;
  /// REQUIRES: the list has room.
  static void keep(List& list, void* storage) noexcept {
    list.first = ::new (storage) Block{list.first};
    --list.room;
  }
  static void freeAll() noexcept;
  static bool prepare() noexcept;
};

/// What the libraries count in all threads together.
enum class Counted : std::uint8_t { Arrays, Bindings, ModelObjects };
inline constexpr std::size_t kCounted = 3;

/// What the libraries keep for each thread.
struct ThisThread {
  std::array<Blocks::List, Blocks::kSizes> blocks;
  /// What this thread has made less what it has ended. It alone writes them, others read them.
  std::array<std::atomic<std::ptrdiff_t>, kCounted> counts{};
  /// Allocations of this thread until utMalloc() fails by request, 0 while none is to fail.
  unsigned long allocationsUntilFailure = 0;
  /// The threads whose counts belong to the sums.
  ThisThread* previous = nullptr;
  ThisThread* next = nullptr;
  bool isListed = false;
  /// It was taken off the list at its end.
  bool hasLeft = false;
  /// It keeps no block any more.
  bool hasEnded = false;
};

TARVELON_API extern TARVELON_THREAD_LOCAL ThisThread tThread;

/// Lets the thread's counts belong to the sums, until it ends and after.
TARVELON_API void listThread() noexcept;

/// Counts on the calling thread: no other one is waited for.
inline void addTo(Counted what, std::ptrdiff_t by) noexcept {
  auto& counted = tThread.counts[static_cast<std::size_t>(what)];
  counted.store(counted.load(std::memory_order_relaxed) + by, std::memory_order_relaxed);
  if (!tThread.isListed) [[unlikely]]
    listThread();
}

/// The sum of all threads, those that have ended among them. Exact when no thread counts meanwhile.
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
