#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/hx/Array.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/hx/ArrayPtr.h"
#include "tarvelon/platform/hx/Utf.h"

namespace hx {
namespace {

std::u16string fromUtf8(std::string_view text) {
  return get_ustring(ArrayPtr(hxCreateString_UTF8(text)).get());
}

std::string viaArray(std::u16string_view text) {
  const ArrayPtr array(hxCreateString_UTF16(text));
  const std::unique_ptr<char, decltype(&hxFree)> result(hxArrayToString_UTF8(array.get()), &hxFree);
  return result.get();
}

TEST(FromUtf8, DecodesEveryLength) {
  EXPECT_EQ(fromUtf8(""), u"");
  EXPECT_EQ(fromUtf8("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x9A\x97z"), u"aé€🚗z");
  EXPECT_EQ(fromUtf8(std::string_view("a\0b", 3)), std::u16string(u"a\0b", 3));
  EXPECT_EQ(fromUtf8("\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"),
            u"\u007f\u0080\u07ff\u0800\uffff\U00010000\U0010ffff");
}

class MalformedUtf8 : public ::testing::TestWithParam<const char*> {};

TEST_P(MalformedUtf8, IsRefusedWithItsPlace) {
  const std::size_t before = hxLiveArrays();
  try {
    fromUtf8("ab" + std::string(GetParam()));
    FAIL() << "accepted";
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "malformed UTF-8 at byte 2");
  }
  EXPECT_EQ(hxLiveArrays(), before);
}

// In this order: a continuation byte alone, overlong forms of 2, 3 and 4 bytes, surrogates, above the last
// character, an invalid first byte, truncated at the end and by another character.
INSTANTIATE_TEST_SUITE_P(Texts, MalformedUtf8,
                         ::testing::Values("\x80", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF",
                                           "\xED\xA0\x80", "\xED\xBF\xBF", "\xF4\x90\x80\x80",
                                           "\xF5\x80\x80\x80", "\xFF", "\xC3", "\xE2\x82", "\xF0\x9F\x9A",
                                           "\xC3x", "\xE2\x82x"));

TEST(ToUtf8, EncodesEveryLength) {
  EXPECT_EQ(viaArray(u""), "");
  EXPECT_EQ(viaArray(u"aé€🚗z"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x9A\x97z");
  EXPECT_EQ(toUtf8(u"\u007f\u0080\u07ff\u0800\uffff\U00010000\U0010ffff"),
            "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(ToUtf8, ReplacesLoneSurrogates) {
  EXPECT_EQ(viaArray(std::u16string{u'a', char16_t{0xD83D}}), "a\xEF\xBF\xBD");
  EXPECT_EQ(viaArray(std::u16string{char16_t{0xD83D}, u'a'}),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(viaArray(std::u16string{char16_t{0xDE97}, char16_t{0xD83D}}), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(ToUtf8, OfANumericArrayIsEmpty) {
  const ArrayPtr array(hxCreateDoubleScalar(65));
  const std::unique_ptr<char, decltype(&hxFree)> result(hxArrayToString_UTF8(array.get()), &hxFree);
  EXPECT_STREQ(result.get(), "");
}

TEST(ToUtf8, TellsThatMemoryIsExhausted) {
  const ArrayPtr array(hxCreateString_UTF16(u"a"));
  utFailAllocation(1);
  EXPECT_THROW(hxArrayToString_UTF8(array.get()), bedrock::core::except::bad_alloc);
}

TEST(Free, AllowsNull) { hxFree(nullptr); }

}  // namespace
}  // namespace hx
