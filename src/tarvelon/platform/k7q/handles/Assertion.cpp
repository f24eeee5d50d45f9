#include "tarvelon/boundary/k7q/Assertion.h"

#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>

#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/k7q/values/Texts.h"

namespace K7Q {

char Asserter::fLogBuf[Asserter::kBufferSize] = {};

void Asserter::format(const char* messageFormat, ...) noexcept {
  static constinit std::mutex guard;
  const std::scoped_lock lock(guard);
  std::va_list arguments;
  va_start(arguments, messageFormat);
  const int length = utVSNprintf(fLogBuf, kBufferSize, messageFormat, arguments);
  va_end(arguments);
  if (length < 0) std::memset(fLogBuf, 0, kBufferSize);
  keep(fLogBuf);
}

void Asserter::keep(const char* message) noexcept {
  drop();
  const std::size_t size = std::strlen(message) + 1;
  mOwned = static_cast<char*>(std::malloc(size));
  // Without memory for the text, the exception has a shorter text; file and line are still reported.
  mMessage = mOwned ? static_cast<const char*>(std::memcpy(mOwned, message, size)) : "memory is exhausted";
}

void Asserter::drop() noexcept { std::free(std::exchange(mOwned, nullptr)); }

std::string Asserter::text(const char* message, const char* file, int line, const char* detail) {
  if (*message == '\0') return text::kNoMessage;
  return std::string("Assertion failed: ") + message + " at " + file + ":" + std::to_string(line) + ": " +
         detail;
}

}  // namespace K7Q
