#pragma once

#include <cstdint>
#include <cstring>

#include "tarvelon/boundary/hx/Array.h"

namespace ruvo {

using hx::hxArray;

/// An argument, a result or a property value that passes between a host and a module: one machine word.
///
/// A value of type "logical scalar", "int32 scalar" or "double scalar" is stored in the word itself. Any
/// other value is a pointer to an hxArray. The slot does not know which of them it contains; the signature of
/// the method or the type of the property says so.
///
/// Ownership: a slot does not own its array. The function that takes or returns the slot says who destroys
///            the array.
///
/// Example:
///   const RVOValue count = RVOValue::ofInt32(7);             // count.int32() == 7
///   const RVOValue name(hx::hxCreateString_UTF8("Brakes"));  // name.array() points to the new array
///   hx::hxDestroyArray(name.array());
class RVOValue {
 public:
  constexpr RVOValue() noexcept = default;
  /// A slot with a pointer to an array, which may be null. The slot does not own the array.
  explicit RVOValue(hxArray* array) noexcept : mWord(reinterpret_cast<std::uintptr_t>(array)) {}

  /// The next three functions create a slot with a scalar in the word itself.
  static RVOValue ofLogical(bool value) noexcept { return ofWord(value ? 1 : 0); }
  static RVOValue ofInt32(std::int32_t value) noexcept { return ofWord(static_cast<std::uint32_t>(value)); }
  static RVOValue ofDouble(double value) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, &value, sizeof word);
    return ofWord(word);
  }
  /// A slot with exactly this word.
  static constexpr RVOValue ofWord(std::uint64_t word) noexcept {
    RVOValue value;
    value.mWord = word;
    return value;
  }

  /// The next four functions read the word as a value of one type; word() returns it without a conversion.
  /// REQUIRES, for these four: the slot contains a value of that type.
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
