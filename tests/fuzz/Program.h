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

/// The results of all calls so far.
struct Tally {
  struct Row {
    std::uint64_t made = 0;
    std::uint64_t refused = 0;
    /// Not called, because the outcome would be undefined.
    std::uint64_t left = 0;
  };
  std::array<Row, kActions> rows;
  void print() const;
};

/// Runs the program in the input: random calls with random arguments. A refused call is expected. Other
/// exceptions leave this function; a refused call that has an effect aborts.
void run(Input& input, Tally& tally);

}  // namespace fuzz
