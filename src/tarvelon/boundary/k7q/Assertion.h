#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Exception.h"

namespace K7Q {

/// The result of a tested condition and, if the condition was false, the message to report.
///
/// Example:
///   LocalAsserter("kernel/sequence", 131) = Asserter(index >= 0).Make("sequence index must be positive");
///
/// If the condition is false, this statement throws a K7Q::Exception with the text "Assertion failed:
/// sequence index must be positive at kernel/sequence:131: ". Without a call of Make(), the text is "Internal
/// assertion without a message detected! Please fix me asap".
///
/// Ownership: an asserter keeps its own copy of the message, and so does a copy of the asserter.
/// Threads:   any.
/// Cost:      if the condition is true, nothing is formatted or allocated.
class TARVELON_API Asserter {
 public:
  /// `passed` is the tested condition.
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
  /// The formatted message, the empty text if there is none. Valid as long as the asserter.
  const char* message() const noexcept { return mMessage; }

  /// Sets the message if the condition was false. The text is used as it is: `%` has no meaning.
  Asserter& Make(const char* message) noexcept {
    if (!mPassed) format("%s", message);
    return *this;
  }
  /// Sets the message from a printf() format if the condition was false. The message is cut after
  /// kBufferSize - 1 bytes.
  template <class... Arguments>
  Asserter& Make(const char* messageFormat, Arguments... arguments) noexcept {
    if (!mPassed) format(messageFormat, arguments...);
    return *this;
  }
  /// Returns an asserter that has failed with this message, for a place that must not be reached.
  template <class E = Exception>
  static Asserter MakeAlways(const char* message) noexcept {
    Asserter asserter(false);
    asserter.format("%s", message);
    return asserter;
  }

  /// The whole text of the exception: message, file, line and detail.
  static std::string text(const char* message, const char* file, int line, const char* detail);

  static constexpr std::size_t kBufferSize = 4097;
  /// The message of the assertion that failed last in any thread, for debuggers. Another thread may overwrite
  /// the buffer at any time; a program should use message() or the text of the exception.
  static char fLogBuf[kBufferSize];

 private:
  /// Formats into fLogBuf under a lock and keeps a copy.
  void format(const char* messageFormat, ...) noexcept __attribute__((format(printf, 2, 3)));
  /// Makes mMessage a copy of the text, or a fixed text when memory is exhausted.
  void keep(const char* message) noexcept;
  void drop() noexcept;
  bool mPassed;
  const char* mMessage = "";
  char* mOwned = nullptr;
};

/// Throws an exception of type E for a failed asserter, and does nothing for one that passed. Use AsserterEx
/// for another exception than K7Q::Exception, or for a message with a detail behind the line number.
///
/// Example:
///   const Asserter failed = Asserter::MakeAlways(kNullReference);
///   AsserterEx<Exception>(failed).handle(__FILE__, __LINE__, "Package.Name: the object was destroyed");
///
/// REQUIRES: the asserter outlives this object, which keeps a reference to it.
template <class E>
class AsserterEx {
 public:
  explicit AsserterEx(const Asserter& asserter) noexcept : mAsserter(asserter) {}
  /// Throws E if the asserter has failed. The text of the exception ends with `detail`.
  void handle(const char* file, int line, const char* detail = "") const {
    if (!mAsserter.passed()) throw E(Asserter::text(mAsserter.message(), file, line, detail));
  }

 private:
  const Asserter& mAsserter;
};

/// The source position of an assertion. Assigning a failed Asserter throws a K7Q::Exception that names this
/// position; assigning one that passed does nothing.
///
/// REQUIRES: `file` is a literal, or lives as long as this object.
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

/// The message of the K7Q::Exception that is thrown for a null handle, a destroyed object or a closed model.
inline constexpr const char* kNullReference = "Cannot access NULL ref. Use isValid() before calling methods";

}  // namespace K7Q
