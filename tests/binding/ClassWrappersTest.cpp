#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/binding/ClassWrappers.h"
#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tests/support/Host.h"

namespace {

using host::RVOInterfacePtr;

const std::string kNullText =
    "Assertion failed: Cannot access NULL ref. Use isValid() before calling methods at ";

class ClassWrappers : public testing::Test {
 protected:
  void SetUp() override {
    host::openModule();
    mModel = host::newModel();
  }
  RVOInterfacePtr make(const char* className) { return host::make(className, {host::object(mModel)}); }
  RVOInterfacePtr named(const char* className, std::u16string_view name) {
    return host::make(className, {host::object(mModel), host::text(name)});
  }
  RVOInterfacePtr mModel;
};

std::vector<std::string_view> methodNames(const char* className) {
  std::vector<std::string_view> names;
  for (const auto* record : host::cls(className).methods()) names.push_back(record->getName().view());
  return names;
}

std::vector<std::string_view> superClasses(const char* className) {
  std::vector<std::string_view> names;
  for (const auto& name : host::cls(className).superClassNames()) names.push_back(name.view());
  return names;
}

std::vector<std::string_view> castArguments(const char* className) {
  std::vector<std::string_view> arguments;
  for (const auto* record : host::cls(className).methods()) {
    if (record->getName().view() == "cast")
      arguments.push_back(record->getSignature()->arguments()[0].view());
  }
  return arguments;
}

TEST_F(ClassWrappers, ImmutableClassDeclaresItsMembersInOrder) {
  const std::vector<std::string_view> expected = {"MetaClass", "MetaProperty", "getMetaType", "cast", "cast"};
  EXPECT_EQ(methodNames("common.ImmutableReferrable"), expected);
}

TEST_F(ClassWrappers, MutableClassDeclaresItsMembersInOrder) {
  const std::string_view name = "Tarvelon.metamodel.arplatform.common.Sdg";
  const std::vector<std::string_view> expected = {name,           name,          "MetaClass",
                                                  "MetaProperty", "getMetaType", "cast"};
  EXPECT_EQ(methodNames("common.Sdg"), expected);
}

TEST_F(ClassWrappers, TwoBasesBringTheFiveMethodsInTheirPlaces) {
  const std::vector<std::string_view> immutable = {"isvalid",     "MetaClass", "MetaProperty",
                                                   "getMetaType", "asDeviant", "asImmutable",
                                                   "asMutable",   "cast",      "cast"};
  EXPECT_EQ(methodNames("common.ImmutableSd"), immutable);
  const std::string_view name = "Tarvelon.metamodel.arplatform.common.Sd";
  const std::vector<std::string_view> mutableNames = {
      name,      name,        "isvalid",     "MetaClass", "MetaProperty",
      "destroy", "asDeviant", "getMetaType", "cast",      "asImmutable"};
  EXPECT_EQ(methodNames("common.Sd"), mutableNames);
}

TEST_F(ClassWrappers, MutableClassPutsItsImmutablePeerFirst) {
  const std::vector<std::string_view> expected = {"Tarvelon.metamodel.arplatform.common.ImmutablePackage",
                                                  "Tarvelon.metamodel.arplatform.common.Identifiable",
                                                  "Tarvelon.metamodel.foundation.Package"};
  EXPECT_EQ(superClasses("common.Package"), expected);
}

TEST_F(ClassWrappers, ImmutableClassCastsFromBothAndMutableFromMutable) {
  EXPECT_EQ(castArguments("common.ImmutablePackage"),
            (std::vector<std::string_view>{"K7Q.ImmutableObject", "K7Q.Object"}));
  EXPECT_EQ(castArguments("common.Package"), (std::vector<std::string_view>{"K7Q.Object"}));
}

TEST_F(ClassWrappers, AbstractClassHasNoConstructorAndDoesNotSaySo) {
  auto& cls = host::cls("common.Data");
  EXPECT_EQ(methodNames("common.Data"),
            (std::vector<std::string_view>{"MetaClass", "MetaProperty", "getMetaType", "cast"}));
  EXPECT_FALSE(cls.info().isAbstract());
  EXPECT_THROW(make("common.Data"), K7Q::WrongType);
}

TEST_F(ClassWrappers, BothConstructorsGiveTheMutableClass) {
  EXPECT_EQ(host::className(make("common.Package")), "Tarvelon.metamodel.arplatform.common.Package");
  EXPECT_EQ(host::className(named("common.Package", u"P")), "Tarvelon.metamodel.arplatform.common.Package");
}

TEST_F(ClassWrappers, ConstructorFillsThePropertiesThatItsArgumentsName) {
  const auto sd = host::make("common.Sd", {host::object(mModel), host::text(u"id"), host::text(u"value")});
  EXPECT_EQ(host::getText(sd, "gid"), "id");
  EXPECT_EQ(host::getText(sd, "Value"), "value");
}

TEST_F(ClassWrappers, ConstructorWithANullModelRaisesTheNullText) {
  EXPECT_EQ(host::raised([] { host::make("common.Package", {host::nothing()}); }).substr(0, kNullText.size()),
            kNullText);
}

TEST_F(ClassWrappers, CastToAnUnrelatedClassIsEmpty) {
  const auto sdg = make("common.Sdg");
  const auto result = host::callStatic("common.Package", "cast", {host::object(sdg)});
  EXPECT_EQ(result.object(), nullptr);
  EXPECT_STREQ(hx::hxGetClassName(result.slot().array()), "K7Q.Object");
}

TEST_F(ClassWrappers, CastOfNothingIsEmpty) {
  EXPECT_EQ(host::callStatic("common.Package", "cast", {host::nothing()}).object(), nullptr);
}

TEST_F(ClassWrappers, CastToABaseGivesTheSameHostObject) {
  const auto package = make("common.Package");
  EXPECT_EQ(host::callStatic("common.Identifiable", "cast", {host::object(package)}).object(), package);
}

TEST_F(ClassWrappers, DestroyMakesTheObjectInvalid) {
  const auto package = make("common.Package");
  EXPECT_TRUE(host::call(package, "isvalid").slot().logical());
  host::call(package, "destroy");
  EXPECT_FALSE(host::call(package, "isvalid").slot().logical());
  EXPECT_EQ(host::raised([&] { host::call(package, "destroy"); }).substr(0, kNullText.size()), kNullText);
}

TEST_F(ClassWrappers, InheritedLifetimeMethodsServeClassesWithOneBase) {
  const auto constant = make("variant.SystemConst");
  EXPECT_TRUE(host::call(constant, "isvalid").slot().logical());
  EXPECT_EQ(host::className(host::callObject(constant, "asImmutable")),
            "Tarvelon.metamodel.arplatform.variant.ImmutableSystemConst");
  host::call(constant, "destroy");
  EXPECT_FALSE(host::call(constant, "isvalid").slot().logical());
}

TEST_F(ClassWrappers, AsImmutableKeepsTheDeviant) {
  const auto package = make("common.Package");
  const auto frozen = host::callObject(mModel, "frozen");
  const auto view = host::callObject(package, "asDeviant", {host::object(frozen)});
  const auto immutable = host::callObject(view, "asImmutable");
  const auto word = [](const RVOInterfacePtr& object) {
    return K7Q::DeviantRegistry::getVariantInfo(object->getBoundPointer({})).deviant.word;
  };
  EXPECT_EQ(word(immutable), word(view));
  EXPECT_NE(word(view), word(package));
}

TEST_F(ClassWrappers, AsMutableLeavesTheImmutableObjectImmutable) {
  const auto package = make("common.Package");
  const auto immutable = host::callObject(package, "asImmutable");
  EXPECT_EQ(host::callObject(immutable, "asMutable"), package);
  EXPECT_TRUE(K7Q::DeviantRegistry::isImmutable(immutable->getBoundPointer({})));
}

TEST_F(ClassWrappers, AsDeviantOfNothingIsTheDeviantZero) {
  const auto package = make("common.Package");
  EXPECT_EQ(host::callObject(package, "asDeviant", {host::nothing()}), package);
}

TEST_F(ClassWrappers, AFrozenViewIsMutableAndRefusesWriting) {
  const auto package = make("common.Package");
  const auto frozen = host::callObject(mModel, "frozen");
  const auto view = host::callObject(package, "asDeviant", {host::object(frozen)});
  EXPECT_EQ(host::className(view), "Tarvelon.metamodel.arplatform.common.Package");
  EXPECT_THROW(host::set(view, "Name", host::text(u"X")), K7Q::Exception);
  EXPECT_THROW(host::call(view, "destroy"), K7Q::Exception);
  EXPECT_EQ(host::getText(package, "Name"), "");
}

TEST_F(ClassWrappers, NoChainOfViewsThawsAFrozenOne) {
  const auto package = make("common.Package");
  const auto frozen = host::callObject(mModel, "frozen");
  const std::vector<std::function<RVOInterfacePtr(const RVOInterfacePtr&)>> steps{
      [](const auto& view) { return host::callObject(view, "asImmutable"); },
      [](const auto& view) { return host::callObject(host::callObject(view, "asImmutable"), "asMutable"); },
      [](const auto& view) { return host::callObject(view, "asDeviant", {host::nothing()}); },
      [&](const auto& view) { return host::callObject(view, "asDeviant", {host::object(frozen)}); },
      [](const auto& view) {
        const auto model = host::callObject(view, "getModel");
        return host::callObject(view, "asDeviant", {host::object(model)});
      },
  };
  std::mt19937 random(20);
  auto view = host::callObject(package, "asDeviant", {host::object(frozen)});
  for (int step = 0; step < 1000; ++step) {
    view = steps[random() % steps.size()](view);
    const auto word = K7Q::DeviantRegistry::getVariantInfo(view->getBoundPointer({})).deviant.word;
    ASSERT_NE(word & K7Q::Deviant::kFrozen, 0U) << "after " << step + 1 << " steps";
  }
}

TEST_F(ClassWrappers, AssertionsThatAreOffLetAFrozenViewWrite) {
  const auto package = make("common.Package");
  const auto frozen = host::callObject(mModel, "frozen");
  const auto view = host::callObject(package, "asDeviant", {host::object(frozen)});
  K7Q::DeviantAssertions::enableAssertions(false);
  host::set(view, "Name", host::text(u"X"));
  EXPECT_FALSE(K7Q::DeviantAssertions::enableAssertions(true));
  EXPECT_EQ(host::getText(package, "Name"), "X");
}

TEST_F(ClassWrappers, MetaClassIsTheSameFromTheClassAndItsPeer) {
  const auto cls = host::callStatic("common.Package", "MetaClass");
  const auto immutable = host::callStatic("common.ImmutablePackage", "MetaClass");
  ASSERT_NE(cls.object(), nullptr);
  EXPECT_EQ(cls.object(), immutable.object());
}

TEST_F(ClassWrappers, GetMetaTypeIsHiddenAndGivesTheObjectsOwnClass) {
  const auto sdg = make("common.Sdg");
  const auto type = host::call(sdg, "getMetaType");
  const auto cls = host::callStatic("common.Sdg", "MetaClass");
  EXPECT_EQ(type.object(), cls.object());
  for (const auto* record : host::cls("common.Sdg").methods()) {
    const bool isIt = record->getName().view() == "getMetaType";
    EXPECT_TRUE(!isIt || record->getFlags() == 2U);
  }
}

TEST_F(ClassWrappers, MetaPropertyGivesANewDummyEachTime) {
  const auto before = ruvo::factory::basic::BindingRegistry::size();
  {
    const auto first = host::callStatic("common.Package", "MetaProperty");
    const auto second = host::callStatic("common.Package", "MetaProperty");
    EXPECT_NE(first.object(), second.object());
    EXPECT_EQ(ruvo::factory::basic::BindingRegistry::size(), before + 2);
  }
  EXPECT_EQ(ruvo::factory::basic::BindingRegistry::size(), before);
}

TEST_F(ClassWrappers, ExtensionRunsUnderTheMutableNameOnTheImmutableClassBeforeCast) {
  auto& extensions = K7Q::mi::RuvoExtensionsRegistry::instance();
  static std::string definedClass;
  extensions.addNonConstCallback("Tarvelon.metamodel.arplatform.common.SymbolProps",
                                 [](ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) {
                                   definedClass = cls->getClassName();
                                   binding::MethodTable table(*cls);
                                   table.add(
                                       {"extra", 0, "", binding::named("logical scalar"), {}}, {},
                                       +[] { return true; });
                                 });
  const auto names = methodNames("common.ImmutableSymbolProps");
  EXPECT_EQ(definedClass, "Tarvelon.metamodel.arplatform.common.ImmutableSymbolProps");
  EXPECT_EQ(names, (std::vector<std::string_view>{"MetaClass", "MetaProperty", "getMetaType", "extra", "cast",
                                                  "cast"}));
  EXPECT_TRUE(host::callStatic("common.SymbolProps", "extra").slot().logical());
  extensions.clear();
}

TEST_F(ClassWrappers, AnExtensionThatThrowsFailsTheClassForGood) {
  auto& extensions = K7Q::mi::RuvoExtensionsRegistry::instance();
  static int calls = 0;
  extensions.addNonConstCallback("Tarvelon.metamodel.arplatform.common.ModeRequestTypeMap",
                                 [](ruvo::RVOClass* /*cls*/, const ruvo::RVOClient* /*client*/) {
                                   ++calls;
                                   throw K7Q::Exception("the extension failed");
                                 });
  EXPECT_EQ(host::raised([] { host::cls("common.ImmutableModeRequestTypeMap").methods(); }),
            "the extension failed");
  EXPECT_EQ(host::raised([] { host::cls("common.ImmutableModeRequestTypeMap").methods(); }),
            "the extension failed");
  EXPECT_EQ(calls, 1);
  extensions.clear();
}

}  // namespace
