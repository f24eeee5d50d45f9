#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "python/host/interpreter/Reference.h"

namespace pyhost {

/// A str of UTF-16 text. A lone surrogate (only native code can write one) becomes U+FFFD.
PyObject* toUnicode(std::u16string_view text);

/// Why the model cannot store a text, and where. Thrown by TextBuffer.
struct RefusedText {
  std::size_t position;
  const char* what;
};
/// Raises K7Q.WrongValue for a refused text. The message starts with `where`.
[[noreturn]] void raiseRefused(const RefusedText& refused, PyObject* text, const std::string& where);

/// The UTF-16 form of the texts of one call. The results are valid while the TextBuffer and the str objects
/// live.
class TextBuffer {
 public:
  TextBuffer() noexcept = default;
  TextBuffer(const TextBuffer&) = delete;
  TextBuffer& operator=(const TextBuffer&) = delete;

  /// Throws RefusedText if the text contains a NUL or a lone surrogate.
  std::u16string_view convert(PyObject* text);

 private:
  char16_t* take(std::size_t units);
  std::u16string_view widen(PyObject* text, std::size_t length);
  std::u16string_view borrow(PyObject* text, std::size_t length) const;
  std::u16string_view encode(PyObject* text, std::size_t length);

  static constexpr std::size_t kInline = 256;
  std::size_t mUsed = 0;
  std::vector<std::unique_ptr<char16_t[]>> mLarge;
  char16_t mInline[kInline];
};

}  // namespace pyhost
