#pragma once

#include <string>
#include <string_view>

namespace Tarvelon::files {

/// Calls visit(char32_t) for each character of UTF-8 text. REQUIRES: well-formed UTF-8, as a parser delivers
/// it.
template <class Visit>
void forEachCharacter(std::string_view text, Visit visit) {
  for (std::size_t place = 0; place < text.size();) {
    const auto lead = static_cast<unsigned char>(text[place++]);
    if (lead < 0x80) {
      visit(char32_t{lead});
      continue;
    }
    const int more = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    char32_t point = lead & (0x3FU >> more);
    for (int count = 0; count < more && place < text.size(); ++count)
      point = point << 6 | (static_cast<unsigned char>(text[place++]) & 0x3F);
    visit(point);
  }
}

/// Calls put(char16_t) for the one or two UTF-16 units of a character.
template <class Put>
void toUtf16(char32_t point, Put put) {
  if (point < 0x10000) return put(static_cast<char16_t>(point));
  put(static_cast<char16_t>(0xD7C0 + (point >> 10)));
  put(static_cast<char16_t>(0xDC00 | (point & 0x3FF)));
}

/// Calls put(char) for the bytes of a character in UTF-8.
template <class Put>
void toUtf8(char32_t point, Put put) {
  const auto tail = [&](unsigned shift) { put(static_cast<char>(0x80 | (point >> shift & 0x3F))); };
  if (point < 0x80) return put(static_cast<char>(point));
  if (point < 0x800) {
    put(static_cast<char>(0xC0 | point >> 6));
  } else {
    if (point < 0x10000) {
      put(static_cast<char>(0xE0 | point >> 12));
    } else {
      put(static_cast<char>(0xF0 | point >> 18));
      tail(12);
    }
    tail(6);
  }
  tail(0);
}

/// Appends a character in UTF-8.
inline void appendUtf8(std::string& text, char32_t point) {
  toUtf8(point, [&text](char byte) { text.push_back(byte); });
}

/// Converts UTF-8 to UTF-16 in a buffer that is used again for each text. REQUIRES: as forEachCharacter().
inline void decode(std::string_view text, std::u16string& units) {
  units.clear();
  units.reserve(text.size());
  forEachCharacter(
      text, [&units](char32_t point) { toUtf16(point, [&units](char16_t unit) { units.push_back(unit); }); });
}

}  // namespace Tarvelon::files
