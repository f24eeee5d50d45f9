#include "tarvelon/platform/files/arxml/Encoding.h"

#include <algorithm>
#include <cstring>

#include "tarvelon/platform/files/shared/Utf.h"

namespace Tarvelon::files::arxml {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleMark = "\xFF\xFE";
constexpr std::string_view kBigMark = "\xFE\xFF";

char16_t unitAt(std::string_view bytes, std::size_t place, bool isBig) noexcept {
  const auto first = static_cast<unsigned char>(bytes[place]);
  const auto second = static_cast<unsigned char>(bytes[place + 1]);
  return static_cast<char16_t>(isBig ? first << 8 | second : second << 8 | first);
}

bool isLead(char16_t unit) noexcept { return unit >= 0xD800 && unit < 0xDC00; }
bool isTrail(char16_t unit) noexcept { return unit >= 0xDC00 && unit < 0xE000; }

void decodeUtf16(std::string_view bytes, bool isBig, Decoded& result) {
  if (bytes.size() % 2 != 0)
    result.fault = "the file has an odd number of bytes, which UTF-16 does not allow";
  result.text.reserve(bytes.size());
  for (std::size_t place = 0; place + 1 < bytes.size(); place += 2) {
    const char16_t unit = unitAt(bytes, place, isBig);
    if (isLead(unit) && place + 3 < bytes.size() && isTrail(unitAt(bytes, place + 2, isBig))) {
      const char16_t trail = unitAt(bytes, place + 2, isBig);
      appendUtf8(result.text, 0x10000 + ((char32_t{unit} - 0xD800) << 10) + (char32_t{trail} - 0xDC00));
      place += 2;
    } else {
      if (isLead(unit) || isTrail(unit)) result.fault = "a surrogate of UTF-16 stands alone";
      appendUtf8(result.text, unit);
    }
  }
}

void decodeLatin1(std::string_view bytes, Decoded& result) {
  result.text.reserve(bytes.size() + bytes.size() / 16);
  for (const char each : bytes) appendUtf8(result.text, static_cast<unsigned char>(each));
}

/// The value of the pseudo attribute `encoding` of the XML declaration, in capital letters. Empty if there is
/// none.
std::string declaredEncoding(std::string_view text) {
  constexpr std::string_view kSpaces = " \t\r\n";
  if (!text.starts_with("<?xml") || text.size() < 6 || kSpaces.find(text[5]) == std::string_view::npos)
    return {};
  const std::string_view declaration = text.substr(0, text.find("?>"));
  std::size_t place = declaration.find("encoding");
  if (place == std::string_view::npos) return {};
  place = declaration.find_first_of("\"'", place);
  if (place == std::string_view::npos) return {};
  const std::size_t end = declaration.find(declaration[place], place + 1);
  if (end == std::string_view::npos) return {};
  std::string name(declaration.substr(place + 1, end - place - 1));
  std::ranges::transform(name, name.begin(), [](char each) {
    return each >= 'a' && each <= 'z' ? static_cast<char>(each - 32) : each;
  });
  return name;
}

/// The number of bytes of the character that begins at `place`; 0 if it is not allowed.
std::size_t lengthAt(std::string_view text, std::size_t place) noexcept {
  const auto byte = [&](std::size_t index) -> unsigned {
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
  };
  const auto follows = [&](std::size_t index) { return (byte(index) & 0xC0U) == 0x80U; };
  const unsigned lead = byte(place);
  if (lead < 0x80) return lead >= 0x20 || lead == '\t' || lead == '\n' || lead == '\r' ? 1 : 0;
  if (lead < 0xC2 || lead > 0xF4 || !follows(place + 1)) return 0;
  if (lead < 0xE0) return 2;
  const unsigned second = byte(place + 1);
  if (!follows(place + 2)) return 0;
  if (lead < 0xF0) {
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F)) return 0;
    return lead == 0xEF && second == 0xBF && byte(place + 2) >= 0xBE ? 0 : 3;
  }
  if (!follows(place + 3) || (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F)) return 0;
  return 4;
}

/// Whether none of 8 bytes needs a closer look: all are printable ASCII.
bool isPlain(const char* bytes) noexcept {
  std::uint64_t block = 0;
  std::memcpy(&block, bytes, sizeof(block));
  constexpr std::uint64_t kHigh = 0x8080808080808080;
  constexpr std::uint64_t kSpaces = 0x2020202020202020;
  return ((block | (block - kSpaces)) & kHigh) == 0;
}

}  // namespace

std::size_t findBadCharacter(std::string_view text) noexcept {
  std::size_t place = 0;
  while (place < text.size()) {
    if (place + 8 <= text.size() && isPlain(text.data() + place)) {
      place += 8;
      continue;
    }
    // At least one of the next characters is not plain; all that begin within the block are looked at.
    const std::size_t end = std::min(place + 8, text.size());
    while (place < end) {
      const std::size_t length = lengthAt(text, place);
      if (length == 0) return place;
      place += length;
    }
  }
  return std::string_view::npos;
}

Decoded decoded(std::string bytes) {
  Decoded result;
  const std::string_view view = bytes;
  const auto isUtf16 = [&](std::string_view mark, std::string_view begin) {
    result.encoding.hasMark = view.starts_with(mark);
    return result.encoding.hasMark || view.starts_with(begin);
  };
  using namespace std::string_view_literals;
  if (isUtf16(kLittleMark, "<\0"sv)) {
    result.encoding.kind = Encoding::Kind::Utf16Little;
    decodeUtf16(view.substr(result.encoding.hasMark ? 2 : 0), false, result);
  } else if (isUtf16(kBigMark, "\0<"sv)) {
    result.encoding.kind = Encoding::Kind::Utf16Big;
    decodeUtf16(view.substr(result.encoding.hasMark ? 2 : 0), true, result);
  } else if (view.starts_with(kUtf8Mark)) {
    result.encoding.hasMark = true;
    bytes.erase(0, kUtf8Mark.size());
    result.text = std::move(bytes);
  } else {
    const std::string name = declaredEncoding(view);
    if (name == "ISO-8859-1" || name == "LATIN1") {
      result.encoding.kind = Encoding::Kind::Latin1;
      decodeLatin1(view, result);
    } else {
      if (name == "US-ASCII" || name == "ASCII") {
        result.encoding.kind = Encoding::Kind::Ascii;
      } else if (!name.empty() && name != "UTF-8" && name != "UTF8") {
        result.fault = "the encoding " + name + " is not supported; save the file in UTF-8";
      }
      result.text = std::move(bytes);
    }
  }
  return result;
}

namespace {

std::string bytesOfUtf16(std::string_view text, bool isBig, bool hasMark) {
  std::string bytes(hasMark ? isBig ? kBigMark : kLittleMark : std::string_view());
  const auto put = [&](char16_t unit) {
    const auto high = static_cast<char>(unit >> 8);
    const auto low = static_cast<char>(unit & 0xFF);
    bytes.push_back(isBig ? high : low);
    bytes.push_back(isBig ? low : high);
  };
  forEachCharacter(text, [&](char32_t point) { toUtf16(point, put); });
  return bytes;
}

/// Characters from `limit` on become references.
std::string toBytes(std::string_view text, char32_t limit) {
  std::string bytes;
  forEachCharacter(text, [&](char32_t point) {
    if (point < limit) {
      bytes.push_back(static_cast<char>(point));
    } else {
      bytes += "&#" + std::to_string(static_cast<std::uint32_t>(point)) + ";";
    }
  });
  return bytes;
}

}  // namespace

std::string encoded(std::string text, Encoding encoding) {
  switch (encoding.kind) {
    case Encoding::Kind::Utf16Little:
      return bytesOfUtf16(text, false, encoding.hasMark);
    case Encoding::Kind::Utf16Big:
      return bytesOfUtf16(text, true, encoding.hasMark);
    case Encoding::Kind::Latin1:
      return toBytes(text, 0x100);
    case Encoding::Kind::Ascii:
      return toBytes(text, 0x80);
    default:
      return encoding.hasMark ? std::string(kUtf8Mark) + text : text;
  }
}

}  // namespace Tarvelon::files::arxml
