#include "tarvelon/boundary/ut/Memory.h"

#include <cstdlib>

#include "tarvelon/platform/hx/Blocks.h"

namespace {

bool isToFail() noexcept {
  auto& countdown = hx::tThread.allocationsUntilFailure;
  return countdown != 0 && --countdown == 0;
}

}  // namespace

void* utMalloc(std::size_t size) noexcept {
  // Always allocates at least one byte, so that null only ever means that memory is exhausted.
  return isToFail() ? nullptr : std::malloc(size ? size : 1);
}

void* utCalloc(std::size_t count, std::size_t size) noexcept {
  const bool isNothing = count == 0 || size == 0;
  return isToFail() ? nullptr : std::calloc(isNothing ? 1 : count, isNothing ? 1 : size);
}

void utFree(void* storage) noexcept { std::free(storage); }

void utFailAllocation(unsigned long countdown) noexcept { hx::tThread.allocationsUntilFailure = countdown; }
