#pragma once

#include <cstddef>

/// Counts the program's allocations with operator new and makes them fail.
namespace allocations {

/// The number of allocations so far.
std::size_t count() noexcept;

/// The number of allocations that were not freed yet.
std::size_t live() noexcept;

/// Makes the n-th allocation from now fail with std::bad_alloc (1 is the next one); 0 disarms.
void fail(std::size_t countdown) noexcept;

}  // namespace allocations
