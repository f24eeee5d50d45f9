#include "tarvelon/platform/files/arxml/Values.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

#include "tarvelon/platform/files/arxml/Document.h"
#include "tarvelon/platform/files/arxml/Format.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"

namespace Tarvelon::files::arxml {

using metamodel::native::Property;
using metamodel::native::Storage;
using metamodel::native::Word;

namespace {

/// A whole number without its sign, in the base that its beginning says.
ScalarFault readDigits(std::string_view text, std::uint64_t& number) noexcept {
  int base = 10;
  if (text.size() > 1 && text[0] == '0') {
    const char mark = text[1];
    base = mark == 'x' || mark == 'X' ? 16 : mark == 'b' || mark == 'B' ? 2 : 8;
    text.remove_prefix(base == 8 ? 1 : 2);
  }
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (error == std::errc::invalid_argument || end != text.data() + text.size()) return ScalarFault::NoValue;
  return error == std::errc::result_out_of_range ? ScalarFault::OutOfRange : ScalarFault::None;
}

ScalarFault readInteger(std::string_view text, std::int32_t& number) noexcept {
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  std::uint64_t digits = 0;
  const ScalarFault fault = readDigits(text, digits);
  if (fault != ScalarFault::None) return fault;
  const std::uint64_t limit = std::uint64_t{std::numeric_limits<std::int32_t>::max()} + (isNegative ? 1 : 0);
  if (digits > limit) return ScalarFault::OutOfRange;
  const auto magnitude = static_cast<std::int64_t>(digits);
  number = static_cast<std::int32_t>(isNegative ? -magnitude : magnitude);
  return ScalarFault::None;
}

ScalarFault readNumber(std::string_view text, double& number) noexcept {
  if (text == "INF" || text == "+INF") {
    number = std::numeric_limits<double>::infinity();
  } else if (text == "-INF") {
    number = -std::numeric_limits<double>::infinity();
  } else if (text == "NaN") {
    number = std::numeric_limits<double>::quiet_NaN();
  } else {
    if (text.starts_with("+-")) return ScalarFault::NoValue;
    if (text.starts_with('+')) text.remove_prefix(1);
    const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
    const bool isDecimal = digits.find_first_not_of("0123456789.eE+-") == std::string_view::npos;
    const bool isOctal = digits.size() > 1 && digits[0] == '0' &&
                         digits.find_first_not_of("01234567") == std::string_view::npos;
    if (!isDecimal || isOctal) {
      std::uint64_t whole = 0;
      const ScalarFault fault = readDigits(digits, whole);
      number = static_cast<double>(whole) * (digits.size() == text.size() ? 1 : -1);
      return fault;
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::invalid_argument || end != text.data() + text.size()) return ScalarFault::NoValue;
    return error == std::errc::result_out_of_range ? ScalarFault::OutOfRange : ScalarFault::None;
  }
  return ScalarFault::None;
}

ScalarFault readItem(const Property& property, std::string_view text, Word& word) noexcept {
  const auto texts = Format::get().textsOf(property.enumeration()->fullName().view());
  for (std::size_t value = 0; value < texts.size(); ++value) {
    if (text.empty() || texts[value] != text) continue;
    word = metamodel::native::wordOf(static_cast<std::int32_t>(value));
    return ScalarFault::None;
  }
  return ScalarFault::NoValue;
}

}  // namespace

ScalarFault readValue(const Property& property, std::string_view text, Word& word) {
  switch (property.storage()) {
    case Storage::Boolean:
      word.bits = text == "true" || text == "1" ? 1 : 0;
      return word.bits != 0 || text == "false" || text == "0" ? ScalarFault::None : ScalarFault::NoValue;
    case Storage::Integer: {
      std::int32_t number = 0;
      const ScalarFault fault = readInteger(text, number);
      word = metamodel::native::wordOf(number);
      return fault;
    }
    case Storage::Double:
    case Storage::Real: {
      double number = 0;
      const ScalarFault fault = readNumber(text, number);
      word.bits = std::bit_cast<std::uint64_t>(number);
      return fault;
    }
    case Storage::Enumeration:
    case Storage::Enumerations:
      return readItem(property, text, word);
    default:
      return ScalarFault::NoValue;
  }
}

std::string valueText(const Property& property, Word word) {
  const Storage storage = property.storage();
  if (storage == Storage::Enumeration || storage == Storage::Enumerations) {
    const auto texts = Format::get().textsOf(property.enumeration()->fullName().view());
    const auto value = static_cast<std::size_t>(integerOf(word));
    return value < texts.size() ? std::string(texts[value]) : std::string();
  }
  const double number = std::bit_cast<double>(word.bits);
  if ((storage == Storage::Double || storage == Storage::Real) && std::isinf(number))
    return number > 0 ? "INF" : "-INF";
  return std::string(ScalarText(property, word).view());
}

std::string expectedText(const Property& property) {
  switch (property.storage()) {
    case Storage::Boolean:
      return "true or false";
    case Storage::Integer:
      return "a whole number from -2147483648 to 2147483647";
    case Storage::Enumeration:
    case Storage::Enumerations: {
      std::string list;
      for (const std::string_view text : Format::get().textsOf(property.enumeration()->fullName().view())) {
        if (text.empty()) continue;
        list += list.empty() ? "one of " : ", ";
        list += text;
      }
      return list.empty() ? "no text, since no file can have a value" : list;
    }
    default:
      return "a number";
  }
}

void appendEscaped(std::string& target, std::string_view text) {
  for (const char each : text) {
    if (each == '&') {
      target += "&amp;";
    } else if (each == '<') {
      target += "&lt;";
    } else if (each == '>') {
      target += "&gt;";
    } else if (each == '\r') {
      target += "&#13;";
    } else {
      target.push_back(each);
    }
  }
}

void appendAttribute(std::string& target, std::string_view text) {
  std::string escaped;
  appendEscaped(escaped, text);
  for (const char each : escaped) {
    if (each == '"') {
      target += "&quot;";
    } else if (each == '\t' || each == '\n') {
      target += each == '\t' ? "&#9;" : "&#10;";
    } else {
      target.push_back(each);
    }
  }
}

std::string withAttribute(std::string tag, std::string_view name, const std::string& value) {
  std::size_t begin = tag.find_first_of(" \t\r\n/>");
  for (;;) {
    const std::size_t start = tag.find_first_not_of(" \t\r\n", begin);
    if (tag[start] == '>' || tag[start] == '/') {
      if (value.empty()) return tag;
      std::string attribute = " " + std::string(name) + "=\"";
      appendAttribute(attribute, value);
      return tag.insert(begin, attribute + "\"");
    }
    const std::size_t nameEnd = tag.find_first_of(" \t\r\n=", start);
    const std::size_t quote = tag.find_first_of("\"'", nameEnd);
    const std::size_t end = tag.find(tag[quote], quote + 1);
    if (std::string_view(tag).substr(start, nameEnd - start) == name) {
      const std::string_view old = std::string_view(tag).substr(quote + 1, end - quote - 1);
      if (plainText(old) == value) return tag;
      if (value.empty()) return tag.erase(begin, end + 1 - begin);
      std::string written;
      appendAttribute(written, value);
      return tag.replace(quote, end + 1 - quote, "\"" + written + "\"");
    }
    begin = end + 1;
  }
}

}  // namespace Tarvelon::files::arxml
