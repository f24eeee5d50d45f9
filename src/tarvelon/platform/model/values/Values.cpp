#include "tarvelon/platform/model/values/Values.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/values/Refusal.h"

namespace Tarvelon::metamodel::native {

namespace {

using K7Q::NSInterface::ScalarIntf;
using K7Q::NSInterface::StringIntf;

// Checks four code units at a time. Returns true if one of them is below U+0020, is a surrogate or is above
// U+FFFD. The last, incomplete group of four is not checked.
bool mayBeRefused(std::u16string_view text) noexcept {
  constexpr std::uint64_t kOnes = 0x0001000100010001;
  constexpr std::uint64_t kHighs = 0x8000800080008000;
  const auto below = [](std::uint64_t word, std::uint64_t limit) { return (word - limit * kOnes) & ~word; };
  std::uint64_t found = 0;
  for (std::size_t position = 0; position + 4 <= text.size(); position += 4) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + position, sizeof(word));
    const std::uint64_t surrogate = (word & (0xF800 * kOnes)) ^ (0xD800 * kOnes);
    found |= below(word, 0x20) | below(surrogate, 1) | below(~word, 2);
  }
  return (found & kHighs) != 0;
}

// Code units that XML cannot represent.
constexpr bool isOutsideXml(char16_t unit) noexcept {
  const bool isControl = unit < 0x20 && unit != u'\t' && unit != u'\n' && unit != u'\r';
  return isControl || unit > 0xFFFD;
}
constexpr bool isLeading(char16_t unit) noexcept { return (unit & 0xFC00) == 0xD800; }
constexpr bool isTrailing(char16_t unit) noexcept { return (unit & 0xFC00) == 0xDC00; }

double numberOf(const Target& target, const K7Q::Object& value) {
  const auto* object = value.getInterface();
  if (object == &ScalarIntf::sInteger) return K7Q::Integer(value);
  if (object == &ScalarIntf::sDouble) return K7Q::Double(value);
  if (object == &ScalarIntf::sBoolean) return K7Q::Boolean(value) ? 1 : 0;
  if (object == &ScalarIntf::sReal) return K7Q::Real(value);
  refuseKind(target.cls, target.property, value);
}

std::int32_t prepareInteger(const Target& target, const K7Q::Object& value) {
  if (value.getInterface() == &ScalarIntf::sInteger) return K7Q::Integer(value);
  const double number = numberOf(target, value);
  const bool isInside = number >= std::numeric_limits<std::int32_t>::min() &&
                        number <= std::numeric_limits<std::int32_t>::max() && number == std::trunc(number);
  if (!isInside) refuseRange(target.cls, target.property, value);
  return static_cast<std::int32_t>(number);
}

std::int32_t prepareEnumeration(const Target& target, const K7Q::Object& value) {
  const EnumerationCell* cell = asCell(value.getInterface());
  if (!cell || &cell->type() != target.property.enumeration()) refuseKind(target.cls, target.property, value);
  if (!cell->type().hasLiteral(cell->value())) refuseRange(target.cls, target.property, value);
  return cell->value();
}

Prepared prepareText(const Target& target, const K7Q::Object& value) {
  auto* object = value.getInterface();
  if (object && typeid(*object) != typeid(StringIntf)) refuseKind(target.cls, target.property, value);
  auto* text = static_cast<StringIntf*>(object);
  if (!text || text->length() == 0) return {Word{.text = nullptr}, !target.property.isRequired()};
  checkText(target, text->view());
  return {Word{.text = text}, false};
}

Prepared scalar(std::uint64_t bits) { return {Word{.bits = bits}, false}; }

}  // namespace

void checkText(const Target& target, std::u16string_view text) {
  std::size_t position = mayBeRefused(text) ? 0 : text.size() / 4 * 4;
  for (; position < text.size(); ++position) {
    const char16_t unit = text[position];
    if (isLeading(unit) && position + 1 < text.size() && isTrailing(text[position + 1])) {
      ++position;
    } else if (isOutsideXml(unit) || isLeading(unit) || isTrailing(unit)) {
      refuseText(target.cls, target.property, unit, position);
    }
  }
}

Instance& prepareElement(const Target& target, const K7Q::Object& value) {
  if (value.isNull()) refuseEmpty(target.cls, target.property);
  Instance* object = asInstance(value.getInterface());
  if (!object || !target.property.type()->isInstance(*object)) refuseKind(target.cls, target.property, value);
  if (!object->isAlive()) refuseDead(target.cls, target.property, value);
  if (&object->model() != &target.model) refuseForeign(target.cls, target.property, value);
  return *object;
}

Prepared prepare(const Target& target, const K7Q::Object& value) {
  const Property& property = target.property;
  if (property.storage() == Storage::Text) return prepareText(target, value);
  if (value.isNull()) {
    if (property.isRequired()) refuseEmpty(target.cls, property);
    return {{}, true};
  }
  switch (property.storage()) {
    case Storage::Boolean:
      return scalar(numberOf(target, value) != 0 ? 1 : 0);
    case Storage::Integer:
      return {wordOf(prepareInteger(target, value)), false};
    case Storage::Double:
    case Storage::Real:
      return scalar(std::bit_cast<std::uint64_t>(numberOf(target, value)));
    case Storage::Enumeration:
      return {wordOf(prepareEnumeration(target, value)), false};
    case Storage::Reference:
      return {Word{.object = &prepareElement(target, value)}, false};
    case Storage::Text:
    case Storage::Texts:
    case Storage::Enumerations:
    case Storage::References:
    case Storage::None:
      break;
  }
  refuseReadOnly(target.cls, property);
}

K7Q::Object toObject(const Property& property, const Word* word, K7Q::Deviant deviant) {
  if (!word && !property.isRequired()) return {};
  const Word value = word ? *word : Word{};
  switch (property.storage()) {
    case Storage::Boolean:
      return K7Q::Boolean(value.bits != 0);
    case Storage::Integer:
      return K7Q::Integer(integerOf(value));
    case Storage::Double:
      return K7Q::Double(std::bit_cast<double>(value.bits));
    case Storage::Real:
      return K7Q::Real(std::bit_cast<double>(value.bits));
    case Storage::Enumeration:
      return property.enumeration()->box(integerOf(value));
    case Storage::Text:
      return value.text ? K7Q::Object(value.text, K7Q::Deviant{}) : K7Q::Object(K7Q::String());
    case Storage::Reference:
      return {value.object, deviant};
    default:
      return {};
  }
}

}  // namespace Tarvelon::metamodel::native
