#include "tarvelon/platform/files/shared/ScalarText.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

#include "tarvelon/platform/model/metamodel/EnumerationType.h"

namespace Tarvelon::files {

using metamodel::native::EnumerationType;
using metamodel::native::Property;
using metamodel::native::Storage;
using metamodel::native::Word;

namespace {

/// Texts for not-a-number and infinities. The first three are written; the others are only read.
struct Special {
  std::string_view text;
  double value;
};
constexpr Special kSpecials[] = {{"NaN", std::numeric_limits<double>::quiet_NaN()},
                                 {"Infinity", std::numeric_limits<double>::infinity()},
                                 {"-Infinity", -std::numeric_limits<double>::infinity()},
                                 {"INF", std::numeric_limits<double>::infinity()},
                                 {"-INF", -std::numeric_limits<double>::infinity()}};

template <class Number>
ScalarFault readNumber(std::string_view text, Number& number) noexcept {
  if (text.starts_with("+-")) return ScalarFault::NoValue;
  if (text.starts_with('+')) text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc::invalid_argument || end != text.data() + text.size()) return ScalarFault::NoValue;
  return error == std::errc::result_out_of_range ? ScalarFault::OutOfRange : ScalarFault::None;
}

ScalarFault readDouble(std::string_view text, Word& word) noexcept {
  for (const Special& special : kSpecials) {
    if (special.text != text) continue;
    word.bits = std::bit_cast<std::uint64_t>(special.value);
    return ScalarFault::None;
  }
  double number = 0;
  const ScalarFault fault = readNumber(text, number);
  // from_chars() also accepts other spellings of not-a-number and infinity, which are refused here.
  if (fault == ScalarFault::None && !std::isfinite(number)) return ScalarFault::NoValue;
  word.bits = std::bit_cast<std::uint64_t>(number);
  return fault;
}

ScalarFault readLiteral(const EnumerationType& type, std::string_view text, Word& word) noexcept {
  const auto literals = type.literals();
  for (std::size_t value = 0; value < literals.size(); ++value) {
    if (literals[value] != text) continue;
    word = metamodel::native::wordOf(static_cast<std::int32_t>(value));
    return ScalarFault::None;
  }
  return ScalarFault::NoValue;
}

ScalarFault readBoolean(std::string_view text, Word& word) noexcept {
  word.bits = text == "true" || text == "1" ? 1 : 0;
  const bool isOne = word.bits != 0 || text == "false" || text == "0";
  return isOne ? ScalarFault::None : ScalarFault::NoValue;
}

}  // namespace

ScalarText::ScalarText(const Property& property, Word word) {
  switch (property.storage()) {
    case Storage::Boolean:
      mView = word.bits != 0 ? "true" : "false";
      break;
    case Storage::Double:
    case Storage::Real:
      set(std::bit_cast<double>(word.bits));
      break;
    case Storage::Enumeration:
    case Storage::Enumerations:
      mView = property.enumeration()->literals()[static_cast<std::size_t>(integerOf(word))];
      break;
    default: {
      const auto written = std::to_chars(mBuffer.data(), mBuffer.data() + mBuffer.size(), integerOf(word));
      mView = {mBuffer.data(), static_cast<std::size_t>(written.ptr - mBuffer.data())};
    }
  }
}

void ScalarText::set(double number) noexcept {
  if (std::isnan(number)) {
    mView = "NaN";
  } else if (std::isinf(number)) {
    mView = number > 0 ? "Infinity" : "-Infinity";
  } else {
    // The shortest text that reads as the same number.
    const auto written = std::to_chars(mBuffer.data(), mBuffer.data() + mBuffer.size(), number);
    mView = {mBuffer.data(), static_cast<std::size_t>(written.ptr - mBuffer.data())};
  }
}

ScalarFault readScalar(const Property& property, std::string_view text, Word& word) noexcept {
  switch (property.storage()) {
    case Storage::Boolean:
      return readBoolean(text, word);
    case Storage::Integer: {
      std::int32_t number = 0;
      const ScalarFault fault = readNumber(text, number);
      word = metamodel::native::wordOf(number);
      return fault;
    }
    case Storage::Double:
    case Storage::Real:
      return readDouble(text, word);
    case Storage::Enumeration:
    case Storage::Enumerations:
      return readLiteral(*property.enumeration(), text, word);
    default:
      return ScalarFault::NoValue;
  }
}

}  // namespace Tarvelon::files
