#pragma once

#include <cstddef>
#include <type_traits>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ut/Memory.h"

namespace Tarvelon::metamodel::native {

/// Allocates storage for a model. Throws bedrock::core::except::bad_alloc.
inline void* allocate(std::size_t size) {
  void* storage = utMalloc(size);
  if (!storage) throw bedrock::core::except::bad_alloc();
  return storage;
}

/// Allocates uninitialised storage for `count` values of a trivial type.
template <class T>
requires std::is_trivially_copyable_v<T> T* allocateArray(std::size_t count) {
  return static_cast<T*>(allocate(count * sizeof(T)));
}

}  // namespace Tarvelon::metamodel::native
