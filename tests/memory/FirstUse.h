#pragma once

#include <functional>
#include <string>

/// Tests of the first use of something while memory runs out.
///
/// A first use happens only once in a process, so each attempt runs in its own child process.
namespace firstuse {

struct Case {
  /// Runs first in each child process, with enough memory.
  std::function<void()> prepare;
  /// The tested action. It is repeated after a failure and must then succeed.
  std::function<void()> act;
  /// Describes everything that act() may change; called before and after act().
  std::function<std::string()> show;
};

/// Makes each allocation of act() fail in turn: first those of operator new, then those of utMalloc(). The
/// test fails if a child process crashes or terminates, if an exception other than std::bad_alloc is raised,
/// if anything has changed after a failure, or if the second attempt fails or has another result.
///
/// Only every `stride`-th allocation is tested; with TARVELON_EVERY_ALLOCATION in the environment, all are.
std::size_t expectSafe(const Case& what, std::size_t stride = 1);

}  // namespace firstuse
