#include "tests/collections/Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> gCount = 0;
std::atomic<std::size_t> gLive = 0;
// Only for tests with a single thread.
std::size_t gCountdown = 0;

}  // namespace

std::size_t allocations::count() noexcept { return gCount; }
std::size_t allocations::live() noexcept { return gLive; }
void allocations::fail(std::size_t countdown) noexcept { gCountdown = countdown; }

void* operator new(std::size_t size) {
  if (gCountdown != 0 && --gCountdown == 0) throw std::bad_alloc();
  void* storage = std::malloc(size != 0 ? size : 1);
  if (!storage) throw std::bad_alloc();
  ++gCount;
  ++gLive;
  return storage;
}

void operator delete(void* storage) noexcept {
  if (storage) --gLive;
  std::free(storage);
}

void operator delete(void* storage, std::size_t /*size*/) noexcept { operator delete(storage); }
