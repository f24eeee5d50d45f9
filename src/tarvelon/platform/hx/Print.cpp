#include <atomic>
#include <cstdio>
#include <string>

#include "tarvelon/boundary/ut/Memory.h"

namespace {

void printToStandardOutput(const char* text, std::size_t length) { std::fwrite(text, 1, length, stdout); }

constinit std::atomic<utPrintSink> gSink = nullptr;

void print(const char* text, std::size_t length) {
  const utPrintSink sink = gSink.load(std::memory_order_acquire);
  (sink ? sink : printToStandardOutput)(text, length);
}

}  // namespace

utPrintSink utSetPrintSink(utPrintSink sink) noexcept {
  return gSink.exchange(sink, std::memory_order_acq_rel);
}

int utVSNprintf(char* buffer, std::size_t size, const char* format, std::va_list arguments) {
  const int length = std::vsnprintf(buffer, size, format, arguments);
  if (length < 0 && size > 0) buffer[0] = '\0';
  return length;
}

int utPrintf(const char* format, ...) {
  char buffer[512];
  std::va_list arguments;
  std::va_list again;
  va_start(arguments, format);
  va_copy(again, arguments);
  const int length = utVSNprintf(buffer, sizeof buffer, format, arguments);
  va_end(arguments);

  if (length >= 0) {
    const auto size = static_cast<std::size_t>(length);
    if (size < sizeof buffer) {
      print(buffer, size);
    } else {
      std::string text(size, '\0');
      utVSNprintf(text.data(), size + 1, format, again);
      print(text.c_str(), size);
    }
  }
  va_end(again);
  return length;
}
