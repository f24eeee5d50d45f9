#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string>

namespace fuzz {

/// Reads the bytes of a program from the front. Every sequence of bytes is a program: behind the end, all
/// values are 0.
class Input {
 public:
  explicit Input(std::span<const std::uint8_t> bytes) noexcept : mBytes(bytes) {}

  bool isEmpty() const noexcept { return mBytes.empty(); }

  std::uint8_t byte() noexcept {
    if (mBytes.empty()) return 0;
    const std::uint8_t first = mBytes.front();
    mBytes = mBytes.subspan(1);
    return first;
  }

  std::uint64_t bits(unsigned bytes) noexcept {
    std::uint64_t result = 0;
    for (unsigned i = 0; i < bytes; ++i) result = result << 8 | byte();
    return result;
  }

  /// REQUIRES: count > 0.
  std::size_t below(std::size_t count) noexcept { return bits(count > 256 ? 2 : 1) % count; }

  /// True for one byte value in `count`; false behind the end.
  bool oneIn(unsigned count) noexcept { return byte() % count == count - 1; }

  template <class Range>
  auto& pick(Range& range) noexcept {
    return range[below(std::size(range))];
  }

 private:
  std::span<const std::uint8_t> mBytes;
};

}  // namespace fuzz
