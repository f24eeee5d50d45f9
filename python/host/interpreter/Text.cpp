#include "python/host/interpreter/Text.h"

#include <algorithm>
#include <cstring>

#include "python/host/interpreter/Errors.h"

namespace pyhost {

namespace {

constexpr bool isSurrogate(char32_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDFFF; }

constexpr const char* kNul = "a NUL character";
constexpr const char* kLone = "half of a surrogate pair";

/// A text as error texts show it: whole if it is short, otherwise the part around the position.
std::string excerpt(PyObject* text, std::size_t position) {
  constexpr Py_ssize_t kLongest = 60;
  constexpr Py_ssize_t kAround = 20;
  const Py_ssize_t length = PyUnicode_GET_LENGTH(text);
  const auto at = static_cast<Py_ssize_t>(position);
  const Py_ssize_t from = length <= kLongest ? 0 : std::max<Py_ssize_t>(at - kAround, 0);
  const Py_ssize_t to = length <= kLongest ? length : std::min(at + kAround, length);
  const Reference part = owned(PyUnicode_Substring, text, from, to);
  const std::string shown = toUtf8(owned(PyObject_Repr, part.get()).get());
  return (from > 0 ? "..." : "") + shown + (to < length ? "..." : "");
}

}  // namespace

void raiseRefused(const RefusedText& refused, PyObject* text, const std::string& where) {
  raise(errors().wrongValue, where + "a text must not contain " + refused.what + " (at position " +
                                 std::to_string(refused.position) + " of " + excerpt(text, refused.position) +
                                 "); remove it");
}

PyObject* toUnicode(std::u16string_view text) {
  char16_t all = 0;
  for (const char16_t unit : text) all = static_cast<char16_t>(all | unit);
  const auto length = static_cast<Py_ssize_t>(text.size());
  if (all < 0x100) {
    PyObject* made = owned(PyUnicode_New, length, all < 0x80 ? Py_UCS4{0x7F} : Py_UCS4{0xFF}).release();
    if (length > 0) {
      std::transform(text.begin(), text.end(), PyUnicode_1BYTE_DATA(made),
                     [](char16_t unit) { return static_cast<Py_UCS1>(unit); });
    }
    return made;
  }
  if (all < 0xD800 || std::none_of(text.begin(), text.end(), isSurrogate)) {
    return owned(PyUnicode_FromKindAndData, PyUnicode_2BYTE_KIND, text.data(), length).release();
  }
  int order = -1;  // little endian, like all supported machines
  return owned(
             PyUnicode_DecodeUTF16(reinterpret_cast<const char*>(text.data()), 2 * length, "replace", &order))
      .release();
}

char16_t* TextBuffer::take(std::size_t units) {
  if (units <= kInline - mUsed) {
    char16_t* place = mInline + mUsed;
    mUsed += units;
    return place;
  }
  mLarge.push_back(std::make_unique_for_overwrite<char16_t[]>(units));
  return mLarge.back().get();
}

std::u16string_view TextBuffer::widen(PyObject* text, std::size_t length) {
  const Py_UCS1* data = PyUnicode_1BYTE_DATA(text);
  if (const void* nul = std::memchr(data, 0, length)) {
    throw RefusedText{static_cast<std::size_t>(static_cast<const Py_UCS1*>(nul) - data), kNul};
  }
  char16_t* place = take(length);
  std::copy(data, data + length, place);
  return {place, length};
}

std::u16string_view TextBuffer::borrow(PyObject* text, std::size_t length) const {
  const Py_UCS2* data = PyUnicode_2BYTE_DATA(text);
  for (std::size_t at = 0; at < length; ++at) {
    if (data[at] == 0) throw RefusedText{at, kNul};
    if (isSurrogate(data[at])) throw RefusedText{at, kLone};
  }
  static_assert(sizeof(Py_UCS2) == sizeof(char16_t));
  return {reinterpret_cast<const char16_t*>(data), length};
}

std::u16string_view TextBuffer::encode(PyObject* text, std::size_t length) {
  const Py_UCS4* data = PyUnicode_4BYTE_DATA(text);
  char16_t* const place = take(2 * length);
  char16_t* end = place;
  for (std::size_t at = 0; at < length; ++at) {
    const Py_UCS4 point = data[at];
    if (point == 0) throw RefusedText{at, kNul};
    if (isSurrogate(point)) throw RefusedText{at, kLone};
    if (point < 0x10000) {
      *end++ = static_cast<char16_t>(point);
    } else {
      *end++ = static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
      *end++ = static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
    }
  }
  return {place, static_cast<std::size_t>(end - place)};
}

std::u16string_view TextBuffer::convert(PyObject* text) {
  require(PyUnicode_READY, text);
  const auto length = static_cast<std::size_t>(PyUnicode_GET_LENGTH(text));
  switch (PyUnicode_KIND(text)) {
    case PyUnicode_1BYTE_KIND:
      return widen(text, length);
    case PyUnicode_2BYTE_KIND:
      return borrow(text, length);
    default:
      return encode(text, length);
  }
}

}  // namespace pyhost
