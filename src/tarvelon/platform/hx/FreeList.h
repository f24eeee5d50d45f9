#pragma once

#include <cstddef>
#include <new>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/hx/Sanitizer.h"

namespace hx {

/// Allocations until utMalloc() fails by request, 0 while none is to fail.
TARVELON_API extern unsigned long gAllocationsUntilFailure;

/// Blocks of one size, kept for the next who wants one.
///
/// Every block is one of utMalloc(), so that more than the list keeps go back at once. While an allocation is
/// to fail by request no block is reused, so that a test can count on the n-th one; in a build with
/// AddressSanitizer none ever is, so that a use after the end and a leak are seen. Threads: one at a time.
class FreeList {
 public:
  /// REQUIRES: a size of a pointer at least.
  explicit constexpr FreeList(std::size_t size) noexcept : mSize(size) {}
  FreeList(const FreeList&) = delete;
  FreeList& operator=(const FreeList&) = delete;

  /// A block, null when memory is exhausted.
  void* take() noexcept {
    if (!mFirst || gAllocationsUntilFailure != 0) return utMalloc(mSize);
    Block* block = mFirst;
    mFirst = block->next;
    --mCount;
    return block;
  }

  void give(void* storage) noexcept {
    if (mCount == kKept) return utFree(storage);
    mFirst = ::new (storage) Block{mFirst};
    ++mCount;
  }

 private:
  struct Block {
    Block* next;
  };

  static constexpr std::size_t kKept = kHasAsan ? 0 : 4096;

  std::size_t mSize;
  Block* mFirst = nullptr;
  std::size_t mCount = 0;
};

}  // namespace hx
