#include "tarvelon/boundary/k7q/Assertion.h"

#include <cstdarg>
#include <cstring>

#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/k7q/Texts.h"

namespace K7Q {

char Asserter::fLogBuf[Asserter::kBufferSize] = {};

void Asserter::format(const char* messageFormat, ...) noexcept {
  std::va_list arguments;
  va_start(arguments, messageFormat);
  const int length = utVSNprintf(fLogBuf, kBufferSize, messageFormat, arguments);
  va_end(arguments);
  if (length < 0) std::memset(fLogBuf, 0, kBufferSize);
  mMessage = fLogBuf;
}

std::string Asserter::text(const char* message, const char* file, int line, const char* detail) {
  if (*message == '\0') return text::kNoMessage;
  return std::string("Assertion failed: ") + message + " at " + file + ":" + std::to_string(line) + ": " +
         detail;
}

}  // namespace K7Q
