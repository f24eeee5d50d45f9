#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/arplatform/Names.h"
#include "tarvelon/binding/Enumeration.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/support/Host.h"

namespace {

using host::RVOInterfacePtr;

constexpr const char* kKind = "variant.BindingTimeKind";

class Enumeration : public testing::Test {
 protected:
  void SetUp() override { host::openModule(); }
  static RVOInterfacePtr literal(const char* name) {
    return RVOInterfacePtr(host::callStatic(kKind, name).object());
  }
  static bool compare(const char* method, const char* left, const char* right) {
    return host::callStatic(kKind, method, {host::object(literal(left)), host::object(literal(right))})
        .slot()
        .logical();
  }
};

std::string gPrinted;
void capture(const char* text, std::size_t length) { gPrinted.append(text, length); }

TEST_F(Enumeration, DeclaresItsMembersInOrder) {
  std::vector<std::string_view> names;
  for (const auto* record : host::cls(kKind).methods()) names.push_back(record->getName().view());
  const std::vector<std::string_view> expected = {"isvalid",
                                                  "MetaDataType",
                                                  "getMetaDataType",
                                                  "getMetaType",
                                                  "fromString",
                                                  "toString",
                                                  "disp",
                                                  "SystemDesignTime",
                                                  "CodeGenerationTime",
                                                  "PreCompileTime",
                                                  "LinkTime",
                                                  "eq",
                                                  "ne",
                                                  "gt",
                                                  "ge",
                                                  "lt",
                                                  "le"};
  EXPECT_EQ(names, expected);
}

TEST_F(Enumeration, IsAnOrdinaryClassWithoutSuperclass) {
  auto& cls = host::cls(kKind);
  EXPECT_TRUE(cls.superClassNames().empty());
  EXPECT_FALSE(cls.info().isEnumeration());
  EXPECT_STREQ(cls.info().getDescription(), "An enumeration");
}

TEST_F(Enumeration, TextOfALiteralIsItsName) {
  EXPECT_EQ(host::textOf(host::call(literal("SystemDesignTime"), "toString")), "SystemDesignTime");
  EXPECT_EQ(host::textOf(host::call(literal("LinkTime"), "toString")), "LinkTime");
}

TEST_F(Enumeration, TextOfANumberWithoutLiteralIsTheNumber) {
  using Tarvelon::metamodel::arplatform::variant::BindingTimeKind;
  EXPECT_EQ(BindingTimeKind(17).toString().view(), u"17");
  EXPECT_EQ(BindingTimeKind(-1).toString().view(), u"-1");
}

TEST_F(Enumeration, ComparesByValue) {
  EXPECT_TRUE(compare("eq", "LinkTime", "LinkTime"));
  EXPECT_FALSE(compare("ne", "LinkTime", "LinkTime"));
  EXPECT_TRUE(compare("gt", "LinkTime", "PreCompileTime"));
  EXPECT_FALSE(compare("gt", "LinkTime", "LinkTime"));
  EXPECT_TRUE(compare("ge", "LinkTime", "LinkTime"));
  EXPECT_TRUE(compare("lt", "SystemDesignTime", "LinkTime"));
  EXPECT_TRUE(compare("le", "LinkTime", "LinkTime"));
}

TEST_F(Enumeration, FromStringTakesTheExactName) {
  const auto value = host::callStatic(kKind, "fromString", {host::text(u"LinkTime")});
  EXPECT_TRUE(host::callStatic(kKind, "eq",
                               {host::HostValue::ofObject(value.object()), host::object(literal("LinkTime"))})
                  .slot()
                  .logical());
}

TEST_F(Enumeration, FromStringNamesTheLiteralsWhenThereIsNoSuch) {
  for (const auto* unknown : {u"linkTime", u"", u"LinkTime "}) {
    const auto text = host::raised([&] { host::callStatic(kKind, "fromString", {host::text(unknown)}); });
    EXPECT_NE(text.find("'SystemDesignTime', 'CodeGenerationTime', 'PreCompileTime', 'LinkTime'"),
              std::string::npos)
        << text;
  }
}

TEST_F(Enumeration, TwoCallsOfALiteralGiveEqualValuesInTwoObjects) {
  const auto first = literal("LinkTime");
  const auto second = literal("LinkTime");
  EXPECT_NE(first, second);
  EXPECT_TRUE(host::callStatic(kKind, "eq", {host::object(first), host::object(second)}).slot().logical());
}

TEST_F(Enumeration, DispPrintsOneLineAndReturnsNothing) {
  gPrinted.clear();
  utSetPrintSink(&capture);
  EXPECT_TRUE(host::call(literal("LinkTime"), "disp").isVoid());
  utSetPrintSink(nullptr);
  EXPECT_EQ(gPrinted, "LinkTime\n");
}

TEST_F(Enumeration, IsAlwaysValid) {
  using Tarvelon::metamodel::arplatform::variant::BindingTimeKind;
  EXPECT_TRUE(host::call(literal("LinkTime"), "isvalid").slot().logical());
  EXPECT_TRUE(BindingTimeKind(99).isValid());
}

TEST_F(Enumeration, ItsTypeTellsTheLiterals) {
  const auto type = host::callStatic(kKind, "MetaDataType");
  ASSERT_NE(type.object(), nullptr);
  EXPECT_STREQ(type.object()->getClass()->getClassName(), "K7Q.ImmutableDataType");
  EXPECT_EQ(host::call(literal("LinkTime"), "getMetaDataType").object(), type.object());
  EXPECT_EQ(host::call(literal("LinkTime"), "getMetaType").object(), type.object());
}

TEST_F(Enumeration, IsSetAndReadAsAProperty) {
  const auto model = host::newModel();
  const auto condition =
      host::make("variant.ConditionByFormula",
                 {host::object(model), host::object(literal("LinkTime")), host::text(u"a > 1")});
  EXPECT_EQ(host::textOf(host::call(host::getObject(condition, "BindingTime"), "toString")), "LinkTime");
  EXPECT_THROW(host::set(condition, "BindingTime", host::nothing()), K7Q::WrongValue);
  EXPECT_EQ(host::textOf(host::call(host::getObject(condition, "BindingTime"), "toString")), "LinkTime");
}

}  // namespace
