#include "tests/world/Shrink.h"

#include <array>
#include <cstdio>
#include <exception>
#include <sys/wait.h>
#include <unistd.h>

// The leak checker's function; null without a leak checker.
extern "C" __attribute__((weak)) void __lsan_do_leak_check();

namespace world {

namespace {

constexpr int kFailed = 3;

[[noreturn]] void runAndLeave(const std::function<void()>& action, unsigned seconds) {
  alarm(seconds);
  int status = 0;
  try {
    action();
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "FAULT: %s\n", fault.what());
    status = kFailed;
  } catch (...) {
    std::fprintf(stderr, "FAULT: something that is no exception\n");
    status = kFailed;
  }
  if (status == 0 && __lsan_do_leak_check) __lsan_do_leak_check();
  _exit(status);
}

std::string readAll(int end) {
  std::string text;
  std::array<char, 4096> buffer{};
  for (ssize_t count = 0; (count = read(end, buffer.data(), buffer.size())) > 0;)
    text.append(buffer.data(), static_cast<std::size_t>(count));
  return text;
}

/// Removes pieces of `length` steps as long as the program still fails.
bool leaveOut(Program& program, std::size_t length, const std::function<bool(const Program&)>& fails) {
  bool isSmaller = false;
  for (std::size_t first = 0; first < program.size();) {
    Program candidate = program;
    const auto begin = candidate.begin() + static_cast<std::ptrdiff_t>(first);
    candidate.erase(begin, begin + static_cast<std::ptrdiff_t>(std::min(length, program.size() - first)));
    if (fails(candidate)) {
      program = std::move(candidate);
      isSmaller = true;
    } else {
      first += length;
    }
  }
  return isSmaller;
}

void simplify(Program& program, const std::function<bool(const Program&)>& fails) {
  for (std::size_t step = 0; step < program.size(); ++step) {
    for (std::size_t operand = 0; operand < Step::kOperands; ++operand) {
      Program candidate = program;
      if (std::exchange(candidate[step].operands[operand], 0) == 0) continue;
      if (fails(candidate)) program = std::move(candidate);
    }
  }
}

}  // namespace

Ending inChild(const std::function<void()>& action, unsigned seconds) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no child");
  if (child == 0) {
    close(ends[0]);
    dup2(ends[1], STDERR_FILENO);
    close(ends[1]);
    runAndLeave(action, seconds);
  }
  close(ends[1]);
  Ending ending;
  ending.output = readAll(ends[0]);
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  ending.hasFailed = status != 0;
  if (WIFSIGNALED(status)) ending.output += "ended by signal " + std::to_string(WTERMSIG(status)) + "\n";
  return ending;
}

Program shrink(Program program, const std::function<bool(const Program&)>& fails, unsigned tries) {
  const auto limited = [&](const Program& candidate) { return tries > 0 && (--tries, fails(candidate)); };
  for (std::size_t length = std::max<std::size_t>(1, program.size() / 2);; length /= 2) {
    while (leaveOut(program, length, limited) && length == 1) {
    }
    if (length <= 1) break;
  }
  simplify(program, limited);
  return program;
}

std::string faultOf(const Program& program, const Options& options) {
  const auto runs = [&](const Program& candidate, bool isVerbose) {
    Options chosen = options;
    chosen.isVerbose = isVerbose;
    return inChild([&] { run(candidate, chosen); });
  };
  if (!runs(program, false).hasFailed) return {};
  const auto fails = [&](const Program& candidate) { return runs(candidate, false).hasFailed; };
  const Program least = shrink(program, fails);
  return textOf(least) + "\n" + runs(least, true).output;
}

}  // namespace world
