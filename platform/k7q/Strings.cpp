#include <algorithm>
#include <limits>
#include <new>
#include <stdexcept>

#include "boundary/bedrock/Except.h"
#include "boundary/k7q/Primitives.h"
#include "boundary/ut/Memory.h"
#include "platform/hx/ArrayPtr.h"
#include "platform/hx/Utf.h"
#include "platform/k7q/Characters.h"
#include "platform/k7q/PrimitiveTypes.h"
#include "platform/k7q/Texts.h"

namespace K7Q {

namespace NSInterface {

StringIntf* StringIntf::make(std::u16string_view text) {
  constexpr std::size_t kLongest = std::numeric_limits<std::uint32_t>::max();
  void* block =
      text.size() > kLongest ? nullptr : utMalloc(sizeof(StringIntf) + (text.size() + 1) * sizeof(char16_t));
  if (!block) throw bedrock::core::except::bad_alloc();
  auto* cell = ::new (block) StringIntf(static_cast<std::uint32_t>(text.size()));
  auto* units = reinterpret_cast<char16_t*>(cell + 1);
  std::copy(text.begin(), text.end(), units);
  units[text.size()] = 0;
  return cell;
}

StringIntf::~StringIntf() = default;

void StringIntf::dispose() const noexcept {
  auto* cell = const_cast<StringIntf*>(this);
  cell->~StringIntf();
  utFree(cell);
}

const ruvo::InternedName& StringIntf::getRuvoName(bool /*immutable*/) const {
  return stringType().fullName();
}
ImmutableType StringIntf::getMetaType(Deviant deviant) const { return {&stringType(), deviant}; }

}  // namespace NSInterface

namespace {

using NSInterface::StringIntf;

/// An empty text has no cell of its own, but as an object it is one.
StringIntf* emptyCell() {
  static StringIntf* const cell = StringIntf::make({});
  return cell;
}

}  // namespace

void throwNoText(const NSInterface::ObjectIntf& object) {
  throw WrongType(text::mismatch("value", "char vector", text::shown(object)));
}

String::String(std::u16string_view text) : mCell(text.empty() ? nullptr : StringIntf::make(text)) {}
String::String(const Object& object) : mCell(const_cast<StringIntf*>(textCellOf(object))) {
  if (mCell) mCell->addRef();
}

String::operator Object() const { return {mCell ? mCell : emptyCell(), Deviant()}; }

std::string String::to_string(const String& text) { return hx::toUtf8(text.view()); }
std::string String::to_string(std::u16string_view text) { return hx::toUtf8(text); }

String String::fromUtf8(std::string_view text) {
  try {
    const hx::ArrayPtr array(hx::hxCreateString_UTF8(text));
    return hx::hxGetText(array.get());
  } catch (const std::invalid_argument& malformed) {
    throw WrongValue(malformed.what());
  }
}

}  // namespace K7Q
