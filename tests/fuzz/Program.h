#pragma once

#include <array>
#include <cstdint>

#include "tests/fuzz/Input.h"

namespace fuzz {

/// What a step of a program does.
enum class Action : std::uint8_t {
  Construct,
  Set,
  Add,
  Get,
  Call,
  CallClass,
  CallPackage,
  Misspell,
  Drop,
  Destroy
};
inline constexpr std::size_t kActions = 10;

/// How the calls of all programs so far ended.
struct Tally {
  struct Row {
    std::uint64_t made = 0;
    std::uint64_t refused = 0;
    /// Not called, since the outcome is undefined.
    std::uint64_t left = 0;
  };
  std::array<Row, kActions> rows;
  void print() const;
};

/// Runs the program that the input holds: calls on random objects with random arguments. A refusal is part of
/// it; anything else that is thrown gets out, and what a refused call has changed all the same aborts.
void run(Input& input, Tally& tally);

}  // namespace fuzz
