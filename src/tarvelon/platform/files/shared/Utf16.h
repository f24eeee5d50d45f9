#pragma once

#include <string>
#include <string_view>

namespace Tarvelon::files {

/// Converts UTF-8 to UTF-16 in a buffer that is used again for each text. REQUIRES: well-formed UTF-8, as a
/// parser delivers it.
inline void decode(std::string_view text, std::u16string& units) {
  units.clear();
  units.reserve(text.size());
  for (std::size_t place = 0; place < text.size();) {
    const auto lead = static_cast<unsigned char>(text[place++]);
    if (lead < 0x80) {
      units.push_back(lead);
      continue;
    }
    const int more = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    char32_t point = lead & (0x3FU >> more);
    for (int count = 0; count < more && place < text.size(); ++count)
      point = point << 6 | (static_cast<unsigned char>(text[place++]) & 0x3F);
    if (point < 0x10000) {
      units.push_back(static_cast<char16_t>(point));
    } else {
      units.push_back(static_cast<char16_t>(0xD7C0 + (point >> 10)));
      units.push_back(static_cast<char16_t>(0xDC00 | (point & 0x3FF)));
    }
  }
}

}  // namespace Tarvelon::files
