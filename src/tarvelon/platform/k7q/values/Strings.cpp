#include <algorithm>
#include <limits>
#include <new>
#include <stdexcept>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/hx/ArrayPtr.h"
#include "tarvelon/platform/hx/Blocks.h"
#include "tarvelon/platform/hx/Utf.h"
#include "tarvelon/platform/k7q/values/Characters.h"
#include "tarvelon/platform/k7q/values/PrimitiveTypes.h"
#include "tarvelon/platform/k7q/values/Texts.h"

namespace K7Q {

namespace NSInterface {

namespace {

std::size_t bytesFor(std::size_t units) noexcept {
  return sizeof(StringIntf) + (units + 1) * sizeof(char16_t);
}

}  // namespace

StringIntf* StringIntf::make(std::u16string_view text) {
  constexpr std::size_t kLongest = std::numeric_limits<std::uint32_t>::max();
  if (text.size() > kLongest) throw bedrock::core::except::bad_alloc();
  const std::size_t bytes = bytesFor(text.size());
  const std::size_t size = hx::Blocks::sizeFor(bytes);
  void* block = size < hx::Blocks::kSizes ? hx::Blocks::take(size) : utMalloc(bytes);
  if (!block) throw bedrock::core::except::bad_alloc();
  auto* cell = ::new (block) StringIntf(static_cast<std::uint32_t>(text.size()));
  auto* units = reinterpret_cast<char16_t*>(cell + 1);
  std::copy(text.begin(), text.end(), units);
  units[text.size()] = 0;
  return cell;
}

// An empty String has no text cell, but its object form needs one. This cell is shared and never freed.
StringIntf* StringIntf::empty() {
  static StringIntf* const cell = [] {
    StringIntf* made = make({});
    made->share();
    made->mReferences = kUncounted;
    return made;
  }();
  return cell;
}

StringIntf::~StringIntf() = default;

void StringIntf::dispose() const noexcept {
  auto* cell = const_cast<StringIntf*>(this);
  const std::size_t size = hx::Blocks::sizeFor(bytesFor(cell->view().size()));
  cell->~StringIntf();
  if (size < hx::Blocks::kSizes) {
    hx::Blocks::give(size, cell);
  } else {
    utFree(cell);
  }
}

const ruvo::InternedName& StringIntf::getRuvoName(bool /*immutable*/) const {
  return stringType().fullName();
}
ImmutableType StringIntf::getMetaType(Deviant deviant) const { return {&stringType(), deviant}; }

}  // namespace NSInterface

using NSInterface::StringIntf;

void throwNoText(const NSInterface::ObjectIntf& object) {
  throw WrongType(text::mismatch("value", "char vector", text::shown(object)));
}

String::String(std::u16string_view text) : mCell(text.empty() ? nullptr : StringIntf::make(text)) {}
String::String(const Object& object) : mCell(const_cast<StringIntf*>(textCellOf(object))) {
  if (mCell) mCell->addRef();
}

String::operator Object() const& { return {mCell ? mCell : StringIntf::empty(), Deviant()}; }
String::operator Object() && {
  const String handedOver(std::move(*this));
  return handedOver;
}

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
