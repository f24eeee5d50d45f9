#pragma once

#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace Tarvelon::files {

/// A destination for the bytes of a file.
class Sink {
 public:
  virtual ~Sink() = default;
  virtual void write(const char* bytes, std::size_t count) = 0;
};

class TextSink final : public Sink {
 public:
  void write(const char* bytes, std::size_t count) override { mText.append(bytes, count); }
  std::string take() noexcept { return std::move(mText); }

 private:
  std::string mText;
};

/// Writes XML text to a sink, through a buffer.
class Output {
 public:
  explicit Output(Sink& sink) : mSink(sink), mBuffer(std::make_unique<char[]>(kCapacity)) {}
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void raw(std::string_view text) {
    if (text.empty()) return;
    if (text.size() > kCapacity - mUsed) {
      flush();
      if (text.size() > kCapacity) return mSink.write(text.data(), text.size());
    }
    std::memcpy(mBuffer.get() + mUsed, text.data(), text.size());
    mUsed += text.size();
  }
  void put(char character) {
    if (mUsed == kCapacity) flush();
    mBuffer[mUsed++] = character;
  }
  /// Writes a line end and `indent` spaces.
  void line(unsigned indent);
  /// Writes the text of an attribute value or of an element. Characters that a parser would read differently
  /// are escaped.
  void attributeText(std::u16string_view text) { escaped(text, true); }
  void elementText(std::u16string_view text) { escaped(text, false); }
  void flush() {
    if (mUsed != 0) mSink.write(mBuffer.get(), mUsed);
    mUsed = 0;
  }

 private:
  static constexpr std::size_t kCapacity = std::size_t{1} << 16;
  void escaped(std::u16string_view text, bool isAttribute);
  void escape(char16_t unit);
  void encode(char32_t point);

  Sink& mSink;
  std::unique_ptr<char[]> mBuffer;
  std::size_t mUsed = 0;
};

}  // namespace Tarvelon::files
