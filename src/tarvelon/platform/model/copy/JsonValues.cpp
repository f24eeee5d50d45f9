#include "tarvelon/platform/model/copy/JsonValues.h"

#include <array>
#include <charconv>
#include <cmath>

#include "tarvelon/boundary/k7q/Primitives.h"

namespace Tarvelon::metamodel::native {

namespace {

constexpr bool isPlain(char32_t unit) noexcept { return unit >= 0x20 && unit != '"' && unit != '\\'; }

void appendEscaped(std::string& out, char32_t character) {
  switch (character) {
    case '"':
      out.append("\\\"");
      break;
    case '\\':
      out.append("\\\\");
      break;
    case '\n':
      out.append("\\n");
      break;
    case '\t':
      out.append("\\t");
      break;
    case '\r':
      out.append("\\r");
      break;
    default: {
      constexpr std::string_view kDigits = "0123456789abcdef";
      out.append("\\u00").push_back(kDigits[character >> 4 & 0xF]);
      out.push_back(kDigits[character & 0xF]);
    }
  }
}

}  // namespace

void appendJson(std::string& out, std::string_view utf8) {
  out.push_back('"');
  for (const char unit : utf8) {
    const auto character = static_cast<unsigned char>(unit);
    if (isPlain(character)) {
      out.push_back(unit);
    } else {
      appendEscaped(out, character);
    }
  }
  out.push_back('"');
}

// Most texts are plain ASCII and need no second buffer.
void appendJson(std::string& out, std::u16string_view text) {
  const std::size_t start = out.size();
  out.resize(start + text.size() + 2);
  char* place = out.data() + start;
  *place++ = '"';
  for (const char16_t unit : text) {
    if (!isPlain(unit) || unit >= 0x80) {
      out.resize(start);
      appendJson(out, std::string_view(K7Q::String::to_string(text)));
      return;
    }
    *place++ = static_cast<char>(unit);
  }
  *place = '"';
}

void appendJson(std::string& out, double number) {
  if (!std::isfinite(number)) {
    out.append(std::isnan(number) ? "\"NaN\"" : number > 0 ? "\"Infinity\"" : "\"-Infinity\"");
    return;
  }
  std::array<char, 32> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  const std::string_view digits(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
  out.append(digits);
  // Makes sure that the number is read back as a floating point number.
  if (digits.find_first_of(".e") == std::string_view::npos) out.append(".0");
}

bool isShown(const Instance& object, unsigned slot) noexcept {
  const Word* word = object.find(slot);
  if (!word) return false;
  if (isList(object.cls(), slot)) return !word->list->empty();
  return (object.cls().textSlots >> slot & 1) == 0 || (word->text && word->text->length() != 0);
}

}  // namespace Tarvelon::metamodel::native
