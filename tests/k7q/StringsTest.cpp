#include <string>

#include <gtest/gtest.h>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/support/Host.h"

using K7Q::Object;
using K7Q::String;
using namespace std::string_view_literals;

TEST(String, KeepsItsCharacters) {
  const String text(u"a\0b"sv);
  EXPECT_EQ(text.view(), u"a\0b"sv);
  EXPECT_EQ(String(u"abc").c_str(), std::u16string(u"abc"));
  EXPECT_EQ(String(std::u16string(u"abc")), String(u"abc"));
  EXPECT_FALSE(text == String(u"a"));
}

TEST(String, SharesOneCellAmongItsCopies) {
  const String text(u"shared");
  const String copy = text;  // NOLINT(performance-unnecessary-copy-initialization)
  const Object object = copy;
  EXPECT_EQ(text.c_str(), copy.c_str());
  EXPECT_EQ(object.getInterface()->numRef(), 3);
  EXPECT_EQ(String(object).c_str(), text.c_str());
}

TEST(String, HasNoCellWhenItIsEmpty) {
  utFailAllocation(1);
  const String empty(u"");
  const String copy = empty;  // NOLINT(performance-unnecessary-copy-initialization)
  utFailAllocation(0);
  EXPECT_TRUE(copy.empty());
  EXPECT_EQ(copy.view(), u"");
  EXPECT_STREQ(reinterpret_cast<const char*>(copy.c_str()), "");
}

TEST(String, IsAnObjectAlsoWhenItIsEmpty) {
  const Object object = String();
  ASSERT_FALSE(object.isNull());
  EXPECT_TRUE(String(object).empty());
  EXPECT_TRUE(String(Object()).empty());
}

TEST(String, RefusesAnObjectThatIsNoText) {
  const Object number = K7Q::Integer(1);
  EXPECT_THROW(String{number}, K7Q::WrongType);
  EXPECT_EQ(host::raised([&number] { String{number}; }),
            "value: expected char vector, got an object of class K7Q.Integer");
}

TEST(String, TurnsIntoUtf8AndBack) {
  const char* utf8 = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80";
  const String text = String::fromUtf8(utf8);
  EXPECT_EQ(text.view(), u"a\u00E4\u20AC\U0001F600");
  EXPECT_EQ(String::to_string(text), utf8);
  EXPECT_EQ(String::to_string(u"\xD800"sv), "\xEF\xBF\xBD");
  EXPECT_THROW(String::fromUtf8("\xC3"), K7Q::WrongValue);
  EXPECT_TRUE(String::fromUtf8("").empty());
}

TEST(String, ReportsExhaustedMemory) {
  utFailAllocation(1);
  EXPECT_THROW(String(u"x"), bedrock::core::except::bad_alloc);
  utFailAllocation(0);
}

TEST(String, DescribesItsType) {
  const Object object = String(u"x");
  EXPECT_EQ(object.getInterface()->getRuvoName(false).view(), "K7Q.String");
  const auto type = object.getInterface()->getMetaType(object.getDeviant());
  EXPECT_EQ(dynamic_cast<const K7Q::NSInterface::TypeIntf&>(*type.getInterface()).name(), u"String");
}
