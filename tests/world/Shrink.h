#pragma once

#include <functional>
#include <string>

#include "tests/world/World.h"

/// Programs in processes of their own, so that one that crashes can be made smaller like any other.
namespace world {

/// How a program ended.
struct Ending {
  bool hasFailed = false;
  /// What it printed: the steps if it was verbose, the fault, a sanitizer's report.
  std::string output;
};

/// Runs `action` in a child. What it raises, a crash, a leak and more than that many seconds are failures.
Ending inChild(const std::function<void()>& action, unsigned seconds = 60);

/// The least that still fails: steps are left out in ever smaller pieces, then operands become 0.
/// Cost: at most `tries` runs.
Program shrink(Program program, const std::function<bool(const Program&)>& fails, unsigned tries = 600);

/// Runs a program in a child. When it fails: the program made as small as it gets, as text and step by step
/// with what it does, and how it ended; else empty.
std::string faultOf(const Program& program, const Options& options);

}  // namespace world
