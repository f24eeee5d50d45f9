#include "tarvelon/platform/files/shared/Output.h"

#include <algorithm>

#include "tarvelon/platform/files/shared/Utf.h"

namespace Tarvelon::files {

namespace {

/// The ASCII characters that need no escape, in an element and in an attribute.
struct Plain {
  std::array<bool, 128> inElement{};
  std::array<bool, 128> inAttribute{};
};

constexpr Plain makePlain() {
  Plain plain;
  for (std::size_t unit = 0x20; unit < 0x7F; ++unit) {
    const bool isMarkup = unit == '<' || unit == '>' || unit == '&';
    plain.inElement[unit] = !isMarkup;
    plain.inAttribute[unit] = !isMarkup && unit != '"';
  }
  // A parser turns line ends and tabs in attributes into spaces, and carriage returns anywhere into line
  // ends.
  plain.inElement['\n'] = plain.inElement['\t'] = true;
  return plain;
}
constexpr Plain kPlain = makePlain();

constexpr bool isLeading(char16_t unit) noexcept { return (unit & 0xFC00) == 0xD800; }

}  // namespace

void Output::line(unsigned indent) {
  static constexpr std::string_view kSpaces =
      "\n                                                                ";
  raw(kSpaces.substr(0, std::min<std::size_t>(indent + 1, kSpaces.size())));
  for (std::size_t rest = kSpaces.size(); rest < indent + 1; ++rest) put(' ');
}

void Output::escaped(std::u16string_view text, bool isAttribute) {
  const auto& plain = isAttribute ? kPlain.inAttribute : kPlain.inElement;
  for (std::size_t place = 0; place < text.size();) {
    if (mUsed == kCapacity) flush();
    const std::size_t room = std::min(text.size() - place, kCapacity - mUsed);
    char* out = mBuffer.get() + mUsed;
    std::size_t count = 0;
    for (; count < room; ++count) {
      const char16_t unit = text[place + count];
      if (unit >= plain.size() || !plain[unit]) break;
      out[count] = static_cast<char>(unit);
    }
    mUsed += count;
    place += count;
    if (count == room) continue;
    const char16_t unit = text[place++];
    if (unit < plain.size()) {
      escape(unit);
    } else if (isLeading(unit)) {
      encode(0x10000 + ((char32_t{unit} - 0xD800) << 10) + (char32_t{text[place++]} - 0xDC00));
    } else {
      encode(unit);
    }
  }
}

void Output::escape(char16_t unit) {
  static constexpr std::string_view kHex = "0123456789ABCDEF";
  switch (unit) {
    case '<':
      return raw("&lt;");
    case '>':
      return raw("&gt;");
    case '&':
      return raw("&amp;");
    case '"':
      return raw("&quot;");
    default:
      raw("&#x");
      if (unit >= 16) put(kHex[unit >> 4]);
      put(kHex[unit & 15]);
      put(';');
  }
}

void Output::encode(char32_t point) {
  toUtf8(point, [this](char byte) { put(byte); });
}

}  // namespace Tarvelon::files
