#include <algorithm>
#include <iterator>
#include <limits>
#include <new>
#include <stdexcept>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/hx/ArrayPtr.h"
#include "tarvelon/platform/hx/FreeList.h"
#include "tarvelon/platform/hx/Utf.h"
#include "tarvelon/platform/k7q/Characters.h"
#include "tarvelon/platform/k7q/PrimitiveTypes.h"
#include "tarvelon/platform/k7q/Texts.h"

namespace K7Q {

namespace NSInterface {

namespace {

// What malloc() can hand out without a rest; longer texts are not kept.
constexpr std::size_t kLeast = 40;
constexpr std::size_t kStep = 16;
constinit hx::FreeList gFree[] = {hx::FreeList(kLeast),
                                  hx::FreeList(kLeast + kStep),
                                  hx::FreeList(kLeast + 2 * kStep),
                                  hx::FreeList(kLeast + 3 * kStep),
                                  hx::FreeList(kLeast + 4 * kStep),
                                  hx::FreeList(kLeast + 5 * kStep)};

std::size_t bytesFor(std::size_t units) noexcept {
  return sizeof(StringIntf) + (units + 1) * sizeof(char16_t);
}

/// The list for blocks of that size, null if there is none.
hx::FreeList* listFor(std::size_t bytes) noexcept {
  const std::size_t index = bytes <= kLeast ? 0 : (bytes - kLeast + kStep - 1) / kStep;
  return index < std::size(gFree) ? &gFree[index] : nullptr;
}

}  // namespace

StringIntf* StringIntf::make(std::u16string_view text) {
  constexpr std::size_t kLongest = std::numeric_limits<std::uint32_t>::max();
  if (text.size() > kLongest) throw bedrock::core::except::bad_alloc();
  const std::size_t bytes = bytesFor(text.size());
  hx::FreeList* list = listFor(bytes);
  void* block = list ? list->take() : utMalloc(bytes);
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
  hx::FreeList* list = listFor(bytesFor(cell->view().size()));
  cell->~StringIntf();
  if (list) {
    list->give(cell);
  } else {
    utFree(cell);
  }
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
