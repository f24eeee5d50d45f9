#include "tests/memory/FirstUse.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <new>
#include <stdexcept>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tarvelon/platform/hx/Blocks.h"
#include "tarvelon/platform/hx/Sanitizer.h"
#include "tests/support/FailingNew.h"

#ifdef TARVELON_HAS_ASAN
#include <sanitizer/lsan_interface.h>
#endif

namespace firstuse {

namespace {

/// A kind of allocation that fails, and how to find out whether it has failed.
struct Kind {
  const char* name;
  void (*arm)(std::size_t);
  bool (*isArmed)();
};

const Kind kKinds[] = {
    {"operator new", [](std::size_t n) { failing::gCountdown = n; }, [] { return failing::gCountdown != 0; }},
    {"utMalloc", [](std::size_t n) { utFailAllocation(n); },
     [] { return hx::tThread.allocationsUntilFailure != 0; }},
};

/// The results of a child process, in this order.
struct Seen {
  bool hasEnded = false;
  bool hasFailed = false;
  std::string fault;
  std::string behindFailure;
  std::string atTheEnd;
};

constexpr char kSeparator = '\0';

std::string written(const Seen& seen) {
  std::string text(1, seen.hasEnded ? 'E' : '-');
  text += seen.hasFailed ? 'F' : '-';
  for (const std::string* each : {&seen.fault, &seen.behindFailure, &seen.atTheEnd}) {
    text += *each;
    text += kSeparator;
  }
  return text;
}

Seen parsed(std::string_view text) {
  Seen seen;
  seen.hasEnded = text[0] == 'E';
  seen.hasFailed = text[1] == 'F';
  text.remove_prefix(2);
  for (std::string* each : {&seen.fault, &seen.behindFailure, &seen.atTheEnd}) {
    const std::size_t end = std::min(text.find(kSeparator), text.size());
    *each = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return seen;
}

/// Runs act() with its n-th allocation failing. Returns whether it failed.
bool hasFailed(const Case& what, const Kind& kind, std::size_t n, Seen& seen) {
  kind.arm(n);
  try {
    what.act();
  } catch (const std::bad_alloc&) {
    kind.arm(0);
    return true;
  } catch (const std::exception& error) {
    kind.arm(0);
    seen.fault = std::string("raised ") + error.what();
    return true;
  }
  seen.hasEnded = kind.isArmed();
  kind.arm(0);
  return false;
}

Seen watch(const Case& what, const Kind& kind, std::size_t n) {
  Seen seen;
  try {
    what.prepare();
    seen.hasFailed = hasFailed(what, kind, n, seen);
    if (seen.hasFailed) {
      seen.behindFailure = what.show();
      what.act();
    }
    seen.atTheEnd = what.show();
  } catch (const std::exception& error) {
    seen.fault += std::string(" and the second attempt raised ") + error.what();
  }
  if (testing::Test::HasFailure()) seen.fault += " and a check of the action failed";
#ifdef TARVELON_HAS_ASAN
  if (__lsan_do_recoverable_leak_check() != 0) seen.fault += " and left memory behind";
#endif
  return seen;
}

/// Reads everything that the child writes until it ends.
std::string readAll(int from) {
  std::string text;
  char buffer[4096];
  for (ssize_t count = 0; (count = ::read(from, buffer, sizeof buffer)) > 0;) {
    text.append(buffer, static_cast<std::size_t>(count));
  }
  ::close(from);
  return text;
}

void writeAll(int to, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(to, text.data(), text.size());
    if (count <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

/// Runs one attempt in a child process. Returns a null text if the child crashed.
std::string inChild(const std::function<Seen()>& turn) {
  int ends[2] = {};
  if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(ends[0]);
    ::alarm(60);
    writeAll(ends[1], written(turn()));
    std::_Exit(0);
  }
  ::close(ends[1]);
  std::string text = readAll(ends[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  if (status != 0) return {};
  return text;
}

Seen undisturbed(const Case& what, bool isToAct) {
  return parsed(inChild([&] {
    Seen seen;
    what.prepare();
    if (isToAct) what.act();
    seen.atTheEnd = what.show();
    return seen;
  }));
}

}  // namespace

std::size_t expectSafe(const Case& what, std::size_t stride) {
#ifdef TARVELON_HAS_ASAN
  // With leak detection, a child process takes twenty times as long.
  stride *= 13;
#endif
  if (std::getenv("TARVELON_EVERY_ALLOCATION")) stride = 1;
  const std::string before = undisturbed(what, false).atTheEnd;
  const std::string after = undisturbed(what, true).atTheEnd;
  std::size_t failures = 0;
  for (const Kind& kind : kKinds) {
    for (std::size_t n = 1;; n += stride) {
      SCOPED_TRACE(std::string(kind.name) + ", allocation " + std::to_string(n));
      const std::string told = inChild([&] { return watch(what, kind, n); });
      if (told.empty()) {
        ADD_FAILURE() << "the process came to an end";
        continue;
      }
      const Seen seen = parsed(told);
      EXPECT_EQ(seen.fault, "");
      EXPECT_EQ(seen.atTheEnd, after);
      if (seen.hasFailed) {
        EXPECT_EQ(seen.behindFailure, before);
      }
      failures += seen.hasFailed ? 1 : 0;
      if (seen.hasEnded) break;
    }
  }
  return failures;
}

}  // namespace firstuse
