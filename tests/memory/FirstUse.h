#pragma once

#include <functional>
#include <string>

/// What a program does for the first time while memory runs out.
///
/// A fault at a first use cannot be asked for twice in one process: each turn runs in a child of its own.
namespace firstuse {

struct Case {
  /// Runs in each child with memory enough.
  std::function<void()> prepare;
  /// What is to be done. Once more behind a failure it must come through.
  std::function<void()> act;
  /// Everything that can be seen of what is there, before and behind act().
  std::function<std::string()> show;
};

/// Lets each allocation of act() fail in turn, of operator new first and of the host's memory then.
/// Complains, as a test that fails, of a child that a signal or std::terminate() ends, of an exception other
/// than std::bad_alloc, of what has changed behind a failure, and of a second attempt that fails or gives
/// another result.
///
/// `stride` tells how many points are left out between two; TARVELON_EVERY_ALLOCATION in the environment
/// takes all.
std::size_t expectSafe(const Case& what, std::size_t stride = 1);

}  // namespace firstuse
