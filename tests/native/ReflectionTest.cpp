// Reading objects without knowing their classes.
#include <algorithm>

#include "tarvelon/platform/model/api/Reflection.h"
#include "tests/native/Support.h"

namespace {

using K7Q::Model;
using Tarvelon::metamodel::classNameOf;
using Tarvelon::metamodel::ObjectProperty;
using Tarvelon::metamodel::propertiesOf;

std::vector<std::string> namesOf(const foundation::Element& object) {
  std::vector<std::string> names;
  for (const auto& property : propertiesOf(object)) names.emplace_back(property->name());
  return names;
}

ObjectProperty propertyOf(const foundation::Element& object, std::string_view name) {
  for (const auto& property : propertiesOf(object)) {
    if (property->name() == name) return property;
  }
  throw std::runtime_error("no property " + std::string(name));
}

TEST(Reflection, NamesTheClassOfTheObjectItself) {
  const foundation::Element element = common::Package::create(Model::create());
  EXPECT_EQ(classNameOf(element), "Package");
}

TEST(Reflection, RefusesANullHandle) {
  expectNullReference([] { classNameOf(foundation::Element()); });
  expectNullReference([] { propertiesOf(foundation::Element()); });
}

TEST(Reflection, ListsTheClassesOwnPropertiesThenThoseOfItsBases) {
  const auto names = namesOf(common::Package::create(Model::create()));
  ASSERT_GT(names.size(), 5U);
  EXPECT_EQ(names[0], "ReferenceBase");
  EXPECT_EQ(names[1], "Category");
  EXPECT_EQ(std::count(names.begin(), names.end(), "Name"), 1);
}

TEST(Reflection, ListsAPropertyThatAClassNarrowsOnce) {
  const auto names = namesOf(common::Sd::create(Model::create()));
  EXPECT_EQ(std::count(names.begin(), names.end(), "Value"), 1);
  EXPECT_EQ(std::count(names.begin(), names.end(), "Body"), 0);
}

TEST(Reflection, GivesTheObjectsOfAReferenceAndHowManyValuesThereAre) {
  const auto model = Model::create();
  const auto package = common::Package::create(model, u"P");
  const auto constant = variant::SystemConst::create(model, u"C");
  const auto base = common::ReferenceBase::create(model, true, u"default", package);
  package.add<"PackagedElement">(constant);

  const auto elements = propertyOf(package, "PackagedElement");
  EXPECT_TRUE(elements->isContainment());
  EXPECT_TRUE(elements.isMany());
  EXPECT_EQ(elements.size(), 1);
  ASSERT_EQ(elements.objects().size(), 1U);
  EXPECT_EQ(elements.objects()[0], constant);

  const auto referred = propertyOf(base, "Package");
  EXPECT_FALSE(referred->isContainment());
  EXPECT_EQ(referred.size(), 1);
  ASSERT_EQ(referred.objects().size(), 1U);
  EXPECT_EQ(referred.objects()[0], package);
}

TEST(Reflection, CountsValuesAndGivesNoObjectsForThem) {
  const auto model = Model::create();
  const auto package = common::Package::create(model, u"P");
  EXPECT_EQ(propertyOf(package, "Name").size(), 1);
  EXPECT_TRUE(propertyOf(package, "Name").isRequired());
  EXPECT_TRUE(propertyOf(package, "Name").objects().empty());
  EXPECT_EQ(propertyOf(package, "Category").size(), 0);
  EXPECT_TRUE(propertyOf(package, "Namespace").isReadOnly());
  const auto condition = variant::PostBuildVariantCondition::create(model);
  condition.add<"ValueVariationPoint">(u"a", u"b");
  EXPECT_EQ(propertyOf(condition, "ValueVariationPoint").size(), 2);
  EXPECT_TRUE(propertyOf(condition, "ValueVariationPoint").objects().empty());
}

}  // namespace
