#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/boundary/ruvo/Interned.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo {
namespace {

using internal::findInterned;
using internal::internedCount;
using internal::makeInterned;
using internal::TypeKind;

TEST(MakeInterned, GivesTheEmptyNameForNoText) {
  EXPECT_EQ(makeInterned(nullptr), nullptr);
  EXPECT_EQ(makeInterned(""), nullptr);
  EXPECT_EQ(makeInterned(std::string_view()), nullptr);
  EXPECT_TRUE(InternedName().empty());
  EXPECT_TRUE(InternedName(static_cast<const char*>(nullptr)).empty());
  EXPECT_STREQ(InternedName().c_str(), "");
}

TEST(MakeInterned, GivesOneEntryForEqualTexts) {
  const std::string text = testing::uniqueName("interned.");
  const std::vector<char> copy(text.c_str(), text.c_str() + text.size() + 1);
  EXPECT_EQ(InternedName(std::string_view(text)), InternedName(makeInterned(copy.data())));
  EXPECT_FALSE(InternedName(std::string_view(text)) == InternedName(std::string_view(text + "x")));
}

TEST(MakeInterned, KeepsItsOwnCopyOfTheText) {
  std::string text = testing::uniqueName("copied.");
  const std::string copy = text;
  const InternedName name{std::string_view(text)};
  text.assign(text.size(), '?');
  EXPECT_EQ(name.view(), copy);
  EXPECT_STREQ(name.c_str(), copy.c_str());
}

TEST(MakeInterned, KeepsEntriesWhereTheyAreAsTheTableGrows) {
  const std::string stem = testing::uniqueName("growing.");
  const InternedName first{std::string_view(stem)};
  for (int i = 0; i < 20000; ++i) makeInterned(stem + "." + std::to_string(i));
  EXPECT_EQ(findInterned(stem), first.entry());
  for (int i = 0; i < 20000; i += 997) {
    const std::string text = stem + "." + std::to_string(i);
    ASSERT_NE(findInterned(text), nullptr);
    EXPECT_EQ(InternedName(findInterned(text)).view(), text);
  }
}

TEST(MakeInterned, TakesTextsOfAnyLength) {
  const std::string text = testing::uniqueName(std::string(100000, 'x'));
  EXPECT_EQ(InternedName(std::string_view(text)).view(), text);
}

TEST(FindInterned, KeepsNothing) {
  const std::string text = testing::uniqueName("never interned.");
  const std::size_t before = internedCount();
  EXPECT_EQ(findInterned(text), nullptr);
  EXPECT_EQ(findInterned(""), nullptr);
  EXPECT_EQ(internedCount(), before);
  makeInterned(text);
  makeInterned(text);
  EXPECT_EQ(internedCount(), before + 1);
}

TEST(TypeKind, IsKnownOfTheSixWordsWithoutAnyPreparation) {
  EXPECT_EQ(InternedName("void").kind(), TypeKind::Void);
  EXPECT_EQ(InternedName("logical scalar").kind(), TypeKind::Logical);
  EXPECT_EQ(InternedName("int32 scalar").kind(), TypeKind::Int32);
  EXPECT_EQ(InternedName("double scalar").kind(), TypeKind::Double);
  EXPECT_EQ(InternedName("char").kind(), TypeKind::Char);
  EXPECT_EQ(InternedName("char vector").kind(), TypeKind::CharVector);
}

TEST(TypeKind, OfEveryOtherNameIsAClass) {
  for (const char* text : {"K7Q.Object", "k7qlogical", "Void", "logical", "char  vector"}) {
    EXPECT_EQ(InternedName(text).kind(), TypeKind::Class) << text;
  }
  EXPECT_EQ(InternedName().kind(), TypeKind::Class);
}

TEST(InitStringDataTypes, InternsTheWordsAndMayBeCalledAgain) {
  for (int i = 0; i < 1000; ++i) factory::detail::initStringDataTypes();
  const std::size_t before = internedCount();
  factory::detail::initStringDataTypes();
  EXPECT_EQ(internedCount(), before);
  ASSERT_NE(findInterned("double scalar"), nullptr);
  EXPECT_EQ(InternedName("double scalar").kind(), TypeKind::Double);
}

TEST(LiteralName, IsInternedWhenItIsFirstAskedFor) {
  static constinit LiteralName literal("a literal that only this test names");
  EXPECT_EQ(findInterned(literal.text()), nullptr);
  EXPECT_EQ(literal.get().view(), literal.text());
  EXPECT_EQ(literal.get(), InternedName(literal.text()));
}

}  // namespace
}  // namespace ruvo
