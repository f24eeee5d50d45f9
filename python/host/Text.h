#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "python/host/Reference.h"

namespace pyhost {

/// A str of UTF-16 text. A lone surrogate, which only native code can have written, becomes U+FFFD.
PyObject* toUnicode(std::u16string_view text);

/// What is wrong with a text that the model cannot hold; thrown by TextBuffer.
struct RefusedText {
  std::size_t position;
  const char* what;
};
/// Raises K7Q.WrongValue for it. `where` stands before the text.
[[noreturn]] void raiseRefused(const RefusedText& refused, PyObject* text, const std::string& where);

/// The UTF-16 form of the texts of one call, alive as long as this and the str objects are.
class TextBuffer {
 public:
  TextBuffer() noexcept = default;
  TextBuffer(const TextBuffer&) = delete;
  TextBuffer& operator=(const TextBuffer&) = delete;

  /// Throws RefusedText for a text with a NUL or a lone surrogate.
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
