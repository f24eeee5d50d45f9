#pragma once

#include <cstddef>

/// What the program's operator new is asked for, and the failing of it by request.
namespace allocations {

/// How many there have been.
std::size_t count() noexcept;

/// How many are there to be given back.
std::size_t live() noexcept;

/// The n-th allocation from now (1 is the next one) fails with std::bad_alloc; 0 disarms.
void fail(std::size_t countdown) noexcept;

}  // namespace allocations
