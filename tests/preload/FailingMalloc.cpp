// A malloc() that can be made to fail, for programs that this project does not build, such as the Python
// interpreter. The interpreter is started with this library in LD_PRELOAD, so that it replaces the C
// library's malloc(), which it calls.

#include <cerrno>
#include <cstddef>

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* storage, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

}  // extern "C"

namespace {

/// The number of allocations until one fails, 0 if not armed. Only for programs with a single thread.
unsigned long gCountdown = 0;
unsigned long gCount = 0;

bool isToFail() noexcept {
  ++gCount;
  if (gCountdown == 0 || --gCountdown != 0) return false;
  errno = ENOMEM;
  return true;
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) void failingArm(unsigned long countdown) noexcept {
  gCount = 0;
  gCountdown = countdown;
}

/// Whether the armed allocation was never reached.
__attribute__((visibility("default"))) int failingDisarm() noexcept {
  const bool isLeft = gCountdown != 0;
  gCountdown = 0;
  return isLeft ? 1 : 0;
}

/// The number of allocations since it was armed.
__attribute__((visibility("default"))) unsigned long failingCount() noexcept { return gCount; }

__attribute__((visibility("default"))) void* malloc(std::size_t size) noexcept {
  return isToFail() ? nullptr : __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size) noexcept {
  return isToFail() ? nullptr : __libc_calloc(count, size);
}

__attribute__((visibility("default"))) void* realloc(void* storage, std::size_t size) noexcept {
  return isToFail() ? nullptr : __libc_realloc(storage, size);
}

__attribute__((visibility("default"))) void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return isToFail() ? nullptr : __libc_memalign(alignment, size);
}

__attribute__((visibility("default"))) int posix_memalign(void** storage, std::size_t alignment,
                                                          std::size_t size) noexcept {
  *storage = isToFail() ? nullptr : __libc_memalign(alignment, size);
  return *storage ? 0 : ENOMEM;
}

}  // extern "C"
