#include <cstring>
#include <stdexcept>
#include <string>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/hx/Array.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/hx/ArrayPtr.h"
#include "tarvelon/platform/hx/Utf.h"

namespace hx {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isContinuation(char byte) noexcept { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }
bool isLeadSurrogate(char32_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isTrailSurrogate(char32_t unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }

[[noreturn]] void throwMalformed(std::size_t offset) {
  throw std::invalid_argument("malformed UTF-8 at byte " + std::to_string(offset));
}

/// The length in bytes of the UTF-8 sequence that starts with `lead`; 0 if no sequence starts with it.
std::size_t sequenceLength(unsigned char lead) noexcept {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

/// Decodes the character at `offset` and advances `offset` behind it.
char32_t decode(std::string_view text, std::size_t& offset) {
  const auto lead = static_cast<unsigned char>(text[offset]);
  const std::size_t length = sequenceLength(lead);
  if (length == 1) {
    ++offset;
    return lead;
  }
  if (length == 0 || text.size() - offset < length) throwMalformed(offset);
  char32_t code = lead & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if (!isContinuation(text[offset + i])) throwMalformed(offset);
    code = code << 6 | (static_cast<unsigned char>(text[offset + i]) & 0x3F);
  }
  const bool isOverlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  if (isOverlong || code > 0x10FFFF || isLeadSurrogate(code) || isTrailSurrogate(code))
    throwMalformed(offset);
  offset += length;
  return code;
}

std::size_t countUnits(std::string_view text) {
  std::size_t units = 0;
  for (std::size_t offset = 0; offset < text.size();) units += decode(text, offset) > 0xFFFF ? 2 : 1;
  return units;
}

/// Decodes the character at `index` and advances `index` behind it.
char32_t decode(std::u16string_view text, std::size_t& index) noexcept {
  const char32_t unit = text[index++];
  if (isLeadSurrogate(unit) && index < text.size() && isTrailSurrogate(text[index])) {
    return 0x10000 + ((unit - 0xD800) << 10) + (text[index++] - 0xDC00U);
  }
  return isLeadSurrogate(unit) || isTrailSurrogate(unit) ? kReplacement : unit;
}

std::size_t encodedLength(char32_t code) noexcept {
  if (code < 0x80) return 1;
  if (code < 0x800) return 2;
  return code < 0x10000 ? 3 : 4;
}

std::size_t encodedLength(std::u16string_view text) noexcept {
  std::size_t bytes = 0;
  for (std::size_t index = 0; index < text.size();) bytes += encodedLength(decode(text, index));
  return bytes;
}

char* encode(char32_t code, char* out) noexcept {
  constexpr unsigned kLeads[] = {0, 0, 0xC0, 0xE0, 0xF0};
  const std::size_t length = encodedLength(code);
  if (length == 1) {
    *out = static_cast<char>(code);
    return out + 1;
  }
  for (std::size_t i = length - 1; i > 0; --i, code >>= 6) out[i] = static_cast<char>(0x80 | (code & 0x3F));
  *out = static_cast<char>(kLeads[length] | code);
  return out + length;
}

void encode(std::u16string_view text, char* out) noexcept {
  for (std::size_t index = 0; index < text.size();) out = encode(decode(text, index), out);
}

}  // namespace

hxArray* hxCreateString_UTF8(std::string_view text) {
  ArrayPtr array(hxCreateNumericMatrix(1, countUnits(text), hxChar, hxReal));
  auto* unit = static_cast<char16_t*>(hxGetData(array.get()));
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t code = decode(text, offset);
    if (code > 0xFFFF) {
      *unit++ = static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
      *unit++ = static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
    } else {
      *unit++ = static_cast<char16_t>(code);
    }
  }
  return array.release();
}

char* hxArrayToString_UTF8(const hxArray* array) {
  const std::u16string_view text = hxGetText(array);
  const std::size_t length = encodedLength(text);
  auto* result = static_cast<char*>(utMalloc(length + 1));
  if (!result) throw bedrock::core::except::bad_alloc();
  encode(text, result);
  result[length] = '\0';
  return result;
}

void hxFree(void* text) noexcept { utFree(text); }

std::string toUtf8(std::u16string_view text) {
  std::string result(encodedLength(text), '\0');
  encode(text, result.data());
  return result;
}

}  // namespace hx
