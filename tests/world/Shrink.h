#pragma once

#include <functional>
#include <string>

#include "tests/world/World.h"

/// Runs programs in child processes, so that a program that crashes can be shrunk like any other.
namespace world {

/// The result of a program.
struct Ending {
  bool hasFailed = false;
  /// The output: the steps if it was verbose, the fault, the report of a sanitizer.
  std::string output;
};

/// Runs `action` in a child process. An exception, a crash, a leak, or more than that many seconds is a
/// failure.
Ending inChild(const std::function<void()>& action, unsigned seconds = 60);

/// Makes a failing program as small as possible: removes steps in smaller and smaller pieces, then sets
/// operands to 0.
/// Cost: at most `tries` runs.
Program shrink(Program program, const std::function<bool(const Program&)>& fails, unsigned tries = 600);

/// Runs a program in a child process. If it fails, returns the shrunk program as text, its steps, and the
/// output; otherwise an empty text.
std::string faultOf(const Program& program, const Options& options);

}  // namespace world
