#include <new>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/module/EntryPoints.h"
#include "tarvelon/module/Packages.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace arplatform = Tarvelon::metamodel::arplatform;

namespace {

const std::vector<std::string_view> kChildren = {
    "documentation", "common", "variant",  "interface",       "port",  "component", "behavior", "instance",
    "composition",   "ecuc",   "manifest", "timingExtension", "system"};

ruvo::Package& root() { return ruvo::Package::get("Tarvelon.metamodel.arplatform"); }

TEST(RootPackage, HasItsThirteenChildrenInOrder) {
  ZtInitialize_mm_arplatform_mi();
  EXPECT_EQ(root().packageNames(), kChildren);
}

TEST(RootPackage, LeavesItsChildrenUnpopulated) {
  ZtInitialize_mm_arplatform_mi();
  root().packageNames();
  EXPECT_EQ(arplatform::common::mi::getcommonRVOPackage(), nullptr);
}

TEST(Getter, IsNullUntilThePackageIsTouched) {
  ZtInitialize_mm_arplatform_mi();
  EXPECT_EQ(arplatform::mi::getarplatformRVOPackage(), nullptr);
  ruvo::Package& package = root();
  EXPECT_EQ(arplatform::mi::getarplatformRVOPackage(), &package);
}

TEST(Initialiser, AttachesOnceWhateverPackageItIsGiven) {
  ZtInitialize_mm_arplatform_mi();
  root().packageNames();
  ruvo::Package& other = *ruvo::Package::find("Tarvelon");
  for (ruvo::RVOPackage* given :
       {static_cast<ruvo::RVOPackage*>(nullptr), static_cast<ruvo::RVOPackage*>(&other)}) {
    arplatform::common::mi::initcommonPackageWrapper(given);
  }
  EXPECT_EQ(root().packageNames(), kChildren);
  // If there were two wrappers, each class would be registered twice, which the package refuses.
  EXPECT_NE(ruvo::Class::find("Tarvelon.metamodel.arplatform.common.Package"), nullptr);
}

TEST(Initialiser, BringsAMissingParentIntoBeing) {
  arplatform::common::mi::initcommonPackageWrapper(nullptr);
  EXPECT_NE(ruvo::Package::find("Tarvelon.metamodel.arplatform.common"), nullptr);
  EXPECT_NE(arplatform::common::mi::getcommonRVOPackage(), nullptr);
}

TEST(Initialiser, IsNotRetriedAfterAFailedAllocation) {
  ruvo::factory::registerRuvoPackage("Tarvelon.metamodel.arplatform", [](ruvo::RVOPackage*) {});
  utFailAllocation(1);
  EXPECT_THROW(arplatform::common::mi::initcommonPackageWrapper(nullptr), bedrock::core::except::bad_alloc);
  utFailAllocation(0);
  arplatform::common::mi::initcommonPackageWrapper(nullptr);
  EXPECT_EQ(ruvo::Package::find("Tarvelon.metamodel.arplatform.common"), nullptr);
}

TEST(Initialiser, LeavesThePackageToTheNextRunOfTheRootPackageAfterAFailedAllocation) {
  ZtInitialize_mm_arplatform_mi();
  ruvo::Package* package = nullptr;
  for (unsigned long n = 1; !package; ++n) {
    utFailAllocation(n);
    try {
      package = ruvo::Package::find("Tarvelon.metamodel.arplatform");
    } catch (const std::bad_alloc&) {
      EXPECT_LT(n, 1000U);
    }
    utFailAllocation(0);
  }
  EXPECT_EQ(package->packageNames(), kChildren);
  EXPECT_EQ(package->classNames().size(), 2U);
  EXPECT_EQ(package->functions().size(), 1U);
}

TEST(StaticInitialiser, RegistersNoClassOnANullPackage) {
  EXPECT_NO_THROW(arplatform::documentation::mi::documentationStaticInitializePackage(nullptr));
  EXPECT_TRUE(ruvo::Class::globals().empty());
}

std::vector<std::string_view> globalNames() {
  std::vector<std::string_view> names;
  for (const auto* cls : ruvo::Class::globals()) names.emplace_back(cls->info().getName());
  return names;
}

TEST(StaticInitialiser, RegistersAllFiveInfosOfAnEnumerationGloballyOnANullPackage) {
  arplatform::variant::mi::variantStaticInitializePackage(nullptr);
  const std::vector<std::string_view> expected = {
      "BindingTimeKind", "SequenceOfBindingTimeKind", "ImmutableSequenceOfBindingTimeKind",
      "BindingTimeKindIterator", "BindingTimeKindImmutableIterator"};
  EXPECT_EQ(globalNames(), expected);
}

TEST(StaticInitialiser, RegistersTheFactoriesGloballyOnANullPackage) {
  arplatform::mi::arplatformStaticInitializePackage(nullptr);
  const std::vector<std::string_view> expected = {"Factory", "ImmutableFactory"};
  EXPECT_EQ(globalNames(), expected);
}

TEST(StaticInitialiser, RegistersTheFactoriesInTheRootPackage) {
  ZtInitialize_mm_arplatform_mi();
  const std::vector<std::string_view> expected = {"Factory", "ImmutableFactory"};
  EXPECT_EQ(root().classNames(), expected);
  for (const auto name : expected) EXPECT_EQ(root().findClass(name)->access(), 2);
}

TEST(Population, MakesClassInfosWithoutDefiningThem) {
  ZtInitialize_mm_arplatform_mi();
  auto* package = ruvo::Package::find("Tarvelon.metamodel.arplatform.common");
  ASSERT_NE(package, nullptr);
  auto* cls = package->findClass("ImmutablePackage");
  ASSERT_NE(cls, nullptr);
  EXPECT_EQ(cls->info().getName(), std::string_view("ImmutablePackage"));
  EXPECT_EQ(cls->info().getDescription(), std::string_view(""));
  EXPECT_EQ(cls->access(), 2);
  EXPECT_FALSE(cls->isDefined());
}

TEST(Population, GivesElevenHostClassesAClass) {
  ZtInitialize_mm_arplatform_mi();
  auto names = ruvo::Package::get("Tarvelon.metamodel.arplatform.documentation").classNames();
  ASSERT_EQ(names.size(), 110U);
  names.resize(11);
  const std::vector<std::string_view> expected = {"ImmutableDocumentationBlock",
                                                  "DocumentationBlock",
                                                  "DocumentationBlockMetaProperty",
                                                  "SequenceOfDocumentationBlock",
                                                  "SequenceOfImmutableDocumentationBlock",
                                                  "ImmutableSequenceOfDocumentationBlock",
                                                  "ImmutableSequenceOfImmutableDocumentationBlock",
                                                  "DocumentationBlockIterator",
                                                  "ImmutableDocumentationBlockIterator",
                                                  "DocumentationBlockImmutableIterator",
                                                  "ImmutableDocumentationBlockImmutableIterator"};
  EXPECT_EQ(names, expected);
}

TEST(MetaPackage, IsAFunctionOfEveryPackage) {
  ZtInitialize_mm_arplatform_mi();
  for (const auto child : kChildren) {
    auto* package = root().findPackage(child);
    ASSERT_NE(package, nullptr) << child;
    ASSERT_EQ(package->functions().size(), 1U) << child;
    const auto* function = package->functions()[0];
    EXPECT_EQ(function->getName().view(), "MetaPackage");
    EXPECT_EQ(function->getFlags(), 8U);
    EXPECT_EQ(function->getSignature()->result().view(), "K7Q.ImmutablePackage");
  }
}

}  // namespace
