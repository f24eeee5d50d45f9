#pragma once

#include <exception>
#include <latch>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

// Helpers for the tests of threads.

namespace threads {

inline constexpr int kThreads = 4;

/// Calls action(number) on four threads that start at the same time, and waits for them. An exception of the
/// action is a failure of the test.
template <class Action>
void onEach(Action action) {
  std::latch start(kThreads);
  std::vector<std::thread> running;
  running.reserve(kThreads);
  for (int number = 0; number < kThreads; ++number) {
    running.emplace_back([&start, &action, number] {
      start.arrive_and_wait();
      try {
        action(number);
      } catch (const std::exception& problem) {
        ADD_FAILURE() << "thread " << number << ": " << problem.what();
      }
    });
  }
  for (std::thread& each : running) each.join();
}

/// Calls the action on another thread and waits for it.
template <class Action>
void onAnother(Action action) {
  std::thread([&action] {
    try {
      action();
    } catch (const std::exception& problem) {
      ADD_FAILURE() << problem.what();
    }
  }).join();
}

}  // namespace threads
