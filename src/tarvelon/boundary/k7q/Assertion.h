#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Exception.h"

namespace K7Q {

/// The outcome of a test and, when it failed, the message and detail to report.
///
///   LocalAsserter("kernel/sequence", 131) = Asserter(index >= 0).Make("sequence index must be positive");
///
/// raises "Assertion failed: sequence index must be positive at kernel/sequence:131: ", or without a message
/// the bare text "Internal assertion without a message detected! Please fix me asap". Cost: nothing but the
/// test when it passes. Threads: any.
class TARVELON_API Asserter {
 public:
  explicit Asserter(bool passed) noexcept : mPassed(passed) {}
  Asserter(Asserter&& other) noexcept
      : mPassed(other.mPassed),
        mMessage(std::exchange(other.mMessage, "")),
        mOwned(std::exchange(other.mOwned, nullptr)) {}
  Asserter(const Asserter& other) noexcept : mPassed(other.mPassed) {
    if (!mPassed) keep(other.mMessage);
  }
  Asserter& operator=(Asserter other) noexcept {
    std::swap(mPassed, other.mPassed);
    std::swap(mMessage, other.mMessage);
    std::swap(mOwned, other.mOwned);
    return *this;
  }
  ~Asserter() {
    if (mOwned) drop();
  }

  bool passed() const noexcept { return mPassed; }
  const char* message() const noexcept { return mMessage; }

  /// Formats the message into the shared buffer when the test failed, and keeps a copy of it.
  Asserter& Make(const char* message) noexcept {
    if (!mPassed) format("%s", message);
    return *this;
  }
  template <class... Arguments>
  Asserter& Make(const char* messageFormat, Arguments... arguments) noexcept {
    if (!mPassed) format(messageFormat, arguments...);
    return *this;
  }
  /// The same, whatever the test gave. E is the exception to raise.
  template <class E = Exception>
  static Asserter MakeAlways(const char* message) noexcept {
    Asserter asserter(false);
    asserter.format("%s", message);
    return asserter;
  }

  /// The text that a failed assertion raises.
  static std::string text(const char* message, const char* file, int line, const char* detail);

  static constexpr std::size_t kBufferSize = 4097;
  /// What the last failed assertion said, of whatever thread: to be read while no other one fails.
  static char fLogBuf[kBufferSize];

 private:
  void format(const char* messageFormat, ...) noexcept __attribute__((format(printf, 2, 3)));
  /// Lets the message be a copy of the text.
  void keep(const char* message) noexcept;
  void drop() noexcept;
  bool mPassed;
  const char* mMessage = "";
  char* mOwned = nullptr;
};

/// Raises E for a failed asserter, does nothing for one that passed.
template <class E>
class AsserterEx {
 public:
  explicit AsserterEx(const Asserter& asserter) noexcept : mAsserter(asserter) {}
  void handle(const char* file, int line, const char* detail = "") const {
    if (!mAsserter.passed()) throw E(Asserter::text(mAsserter.message(), file, line, detail));
  }

 private:
  const Asserter& mAsserter;
};

/// The place at which an assertion stands.
class LocalAsserter {
 public:
  constexpr LocalAsserter(const char* file, int line) noexcept : mFile(file), mLine(line) {}
  LocalAsserter(const LocalAsserter&) = delete;
  ~LocalAsserter() = default;
  void operator=(const Asserter& asserter) const {  // NOLINT(misc-unconventional-assign-operator)
    if (!asserter.passed()) AsserterEx<Exception>(asserter).handle(mFile, mLine);
  }

 private:
  const char* mFile;
  int mLine;
};

/// What a method says that was called on an empty handle.
inline constexpr const char* kNullReference = "Cannot access NULL ref. Use isValid() before calling methods";

}  // namespace K7Q
