#pragma once

#include <cstdint>
#include <cstring>

#include "tarvelon/boundary/hx/Array.h"

namespace ruvo {

using hx::hxArray;

/// One argument or result slot: a machine word.
///
/// A `logical scalar`, `int32 scalar` or `double scalar` travels raw, everything else as an hxArray. The slot
/// does not know which: the signature says so. A slot owns nothing; who fills it with an array says who
/// destroys that array.
class RVOValue {
 public:
  constexpr RVOValue() noexcept = default;
  explicit RVOValue(hxArray* array) noexcept : mWord(reinterpret_cast<std::uintptr_t>(array)) {}

  static RVOValue ofLogical(bool value) noexcept { return ofWord(value ? 1 : 0); }
  static RVOValue ofInt32(std::int32_t value) noexcept { return ofWord(static_cast<std::uint32_t>(value)); }
  static RVOValue ofDouble(double value) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, &value, sizeof word);
    return ofWord(word);
  }
  static constexpr RVOValue ofWord(std::uint64_t word) noexcept {
    RVOValue value;
    value.mWord = word;
    return value;
  }

  hxArray* array() const noexcept { return reinterpret_cast<hxArray*>(static_cast<std::uintptr_t>(mWord)); }
  bool logical() const noexcept { return mWord != 0; }
  std::int32_t int32() const noexcept { return static_cast<std::int32_t>(static_cast<std::uint32_t>(mWord)); }
  double number() const noexcept {
    double value = 0;
    std::memcpy(&value, &mWord, sizeof value);
    return value;
  }
  std::uint64_t word() const noexcept { return mWord; }

 private:
  std::uint64_t mWord = 0;
};

static_assert(sizeof(RVOValue) == 8, "a slot is one machine word");

}  // namespace ruvo
