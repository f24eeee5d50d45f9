#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <pthread.h>
#include <stdexcept>

/// Runs code on a thread with a small stack, as some programs have. A recursive function overflows it soon.
namespace host {

inline constexpr std::size_t kSmallStack = std::size_t{256} * 1024;

/// Runs the action on such a thread and waits. Exceptions of the action are raised here.
inline void onSmallStack(std::function<void()> action) {
  struct Run {
    std::function<void()> action;
    std::exception_ptr raised;
  } run{std::move(action), nullptr};
  pthread_attr_t attributes;
  pthread_t thread{};
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, kSmallStack);
  const auto body = [](void* data) -> void* {
    auto& own = *static_cast<Run*>(data);
    try {
      own.action();
    } catch (...) {
      own.raised = std::current_exception();
    }
    return nullptr;
  };
  const int failed = pthread_create(&thread, &attributes, body, &run);
  pthread_attr_destroy(&attributes);
  if (failed != 0) throw std::runtime_error("the thread cannot be started");
  pthread_join(thread, nullptr);
  if (run.raised) std::rethrow_exception(run.raised);
}

}  // namespace host
