#pragma once

#include <cstdlib>
#include <malloc.h>

#include "tests/support/FailingNew.h"

// Replaces operator new in the program that includes this file. Include it in one source that contains
// nothing else: if the functions are inlined into other code, the compiler warns of malloc() with a
// mismatched delete.

void* operator new(std::size_t size) {
  if (failing::gCountdown != 0 && --failing::gCountdown == 0) throw std::bad_alloc();
  void* storage = std::malloc(size != 0 ? size : 1);
  if (!storage) throw std::bad_alloc();
  ++failing::gLive;
  const std::size_t bytes = failing::gBytes += malloc_usable_size(storage);
  if (bytes > failing::gMostBytes) failing::gMostBytes = bytes;
  return storage;
}
// The C++ library calls this operator for optional memory. Without this definition, a sanitizer would provide
// it.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void operator delete(void* storage) noexcept {
  if (storage) --failing::gLive;
  failing::gBytes -= malloc_usable_size(storage);
  std::free(storage);
}
void operator delete(void* storage, std::size_t /*size*/) noexcept { operator delete(storage); }
