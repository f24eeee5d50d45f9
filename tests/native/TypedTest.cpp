// What the native handles take, which the compiler decides, and the sequences that they give.

#include "tests/native/Support.h"

namespace {

using K7Q::Model;

template <class X, class... Arguments>
concept CanCreate = requires(const Model& model, Arguments... arguments) {
  X::create(model, arguments...);
};

template <class X, class Value>
concept CanSetCode = requires(const X& object, Value value) {
  object.template set<"errorCode">(value);
};

// Whole numbers that an int32 scalar holds whatever their value; nothing that would have to be cut.
static_assert(CanCreate<common::ApplicationError, int, const char16_t*>);
static_assert(CanCreate<common::ApplicationError, short, const char16_t*>);
static_assert(CanCreate<common::ApplicationError, unsigned short, const char16_t*>);
static_assert(CanCreate<common::ApplicationError, K7Q::Integer, const char16_t*>);
static_assert(!CanCreate<common::ApplicationError, unsigned, const char16_t*>);
static_assert(!CanCreate<common::ApplicationError, long, const char16_t*>);
static_assert(!CanCreate<common::ApplicationError, char, const char16_t*>);
static_assert(!CanCreate<common::ApplicationError, char16_t, const char16_t*>);
static_assert(!CanCreate<common::ApplicationError, bool, const char16_t*>);
static_assert(!CanCreate<common::ApplicationError, double, const char16_t*>);

// A double scalar takes what it holds exactly.
static_assert(CanCreate<variant::SystemConstValue, double, variant::SystemConst>);
static_assert(CanCreate<variant::SystemConstValue, float, variant::SystemConst>);
static_assert(CanCreate<variant::SystemConstValue, int, variant::SystemConst>);
static_assert(!CanCreate<variant::SystemConstValue, long, variant::SystemConst>);
static_assert(!CanCreate<variant::SystemConstValue, long double, variant::SystemConst>);
static_assert(!CanCreate<variant::SystemConstValue, char, variant::SystemConst>);
static_assert(!CanCreate<variant::SystemConstValue, double, common::Package>);

TEST(NativeSequence, OfTextsIsReadAndChanged) {
  const Model model = Model::create();
  const auto condition = variant::PostBuildVariantCondition::create(model);
  const auto texts = condition.get<"ValueVariationPoint">();

  texts.add(u"a");
  texts.add(K7Q::String(u"b"));
  texts.add(u"a");

  ASSERT_EQ(texts.size(), 3);
  EXPECT_EQ(texts[0].view(), u"a");
  EXPECT_EQ(texts.at(1).view(), u"b");
  std::u16string all;
  for (const K7Q::String& text : texts) all += text.view();
  EXPECT_EQ(all, u"aba");
  EXPECT_TRUE(texts.remove(u"a"));
  EXPECT_FALSE(texts.remove(u"a"));
  ASSERT_EQ(texts.size(), 1);
  EXPECT_EQ(condition.get<"ValueVariationPoint">()[0].view(), u"b");
}

TEST(NativeSequence, OfObjectsGivesHandlesOfTheElementsClass) {
  const Model model = Model::create();
  const auto package = common::Package::create(model, u"P");
  const auto constant = variant::SystemConst::create(model, u"C");

  package.get<"PackagedElement">().add(constant);

  const foundation::PackageableElement element = package.get<"PackagedElement">()[0];
  EXPECT_EQ(element, constant);
  EXPECT_FALSE(package.get<"PackagedElement">().remove(package));
  EXPECT_TRUE(package.get<"PackagedElement">().remove(constant));
}

}  // namespace
