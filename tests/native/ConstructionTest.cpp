// Constructors: which argument sets which property, and the effects of a failed constructor.

#include <vector>

#include "tarvelon/boundary/tarvelon/Packages.h"
#include "tests/native/Support.h"

namespace {

class Construction : public testing::Test {
 protected:
  K7Q::Model mModel = K7Q::Model::create();

  template <class X>
  K7Q::ClassObject create(unsigned constructor, const std::vector<K7Q::Object>& arguments) const {
    return table<X>().create(mModel, constructor, arguments);
  }
};

}  // namespace

TEST_F(Construction, FillsThePropertiesTheArgumentsAreNamedAfter) {
  const auto symbol = common::SymbolProps::create(mModel, u"symbol", u"name");
  EXPECT_EQ(symbol.get<"Symbol">(), K7Q::String(u"symbol"));
  EXPECT_EQ(symbol.get<"Name">(), K7Q::String(u"name"));

  const auto domain = foundation::Domain::create(mModel, u"d");
  const auto root = common::AUTOSAR::create(mModel, u"1", u"2", u"3", u"4", u"5", domain, u"6");
  EXPECT_EQ(root.get<"ComponentQualifiedName">(), K7Q::String(u"1"));
  EXPECT_EQ(root.get<"DataTypePackage">(), K7Q::String(u"2"));
  EXPECT_EQ(root.get<"ImplementationQualifiedName">(), K7Q::String(u"3"));
  EXPECT_EQ(root.get<"InterfacePackage">(), K7Q::String(u"4"));
  EXPECT_EQ(root.get<"InternalBehaviorQualifiedName">(), K7Q::String(u"5"));
  EXPECT_TRUE(root.get<"Domain">() == domain);
  EXPECT_EQ(root.get<"Name">(), K7Q::String(u"6"));

  const auto condition =
      variant::ConditionByFormula::create(mModel, variant::BindingTimeKind::LinkTime, u"a>b");
  EXPECT_EQ(condition.get<"BindingTime">(), variant::BindingTimeKind::LinkTime);
  EXPECT_EQ(condition.get<"Body">(), K7Q::String(u"a>b"));
}

TEST_F(Construction, TakesOwnershipLikeASet) {
  const auto text = documentation::MultiLanguageOverviewParagraph::create(mModel);
  const auto first = documentation::Modification::create(mModel, text);
  const auto second = documentation::Modification::create(mModel, text);
  EXPECT_TRUE(first.get<"change">().isNull());
  EXPECT_TRUE(second.get<"change">() == text);
}

TEST_F(Construction, LeavesAnOptionalPropertyUnsetForAnEmptyArgument) {
  const K7Q::Object text = K7Q::String(u"t");
  const auto root = create<common::AUTOSAR>(1, {text, text, text, text, text, K7Q::Object(), text});
  EXPECT_FALSE((Access<foundation::DomainRoot>(root, "Domain").has()));
}

TEST_F(Construction, RefusesAnArgumentAsASetWouldAndLeavesNoObject) {
  const auto first = common::ApplicationError::create(mModel);
  EXPECT_EQ(
      refusalOf<K7Q::WrongType>([&] {
        create<common::ApplicationError>(1, {K7Q::String(u"x"), K7Q::String(u"name")});
      }),
      "ApplicationError.errorCode: expected int32 scalar, got char vector \"x\"; give a whole number from "
      "-2147483648 to 2147483647");
  refusalOf<K7Q::WrongValue>([&] { create<documentation::Modification>(1, {K7Q::Object()}); });
  // The failed object has left no gap: the next object has the next number.
  EXPECT_EQ(mModel.getInterface()->numRef(), 2);
}

TEST_F(Construction, ThatFailsTakesNothingFromItsArguments) {
  const auto other = K7Q::Model::create();
  const auto brakes = common::Package::create(other, u"P");
  refusalOf<K7Q::WrongValue>([&] { common::ReferenceBase::create(mModel, true, u"b", brakes); });
  const auto text = documentation::MultiLanguageOverviewParagraph::create(other);
  const auto change = documentation::Modification::create(other, text);
  refusalOf<K7Q::WrongValue>([&] { documentation::Modification::create(mModel, text); });
  EXPECT_TRUE(change.get<"change">() == text);
}

TEST_F(Construction, RefusesAnAbstractClassAndAWrongArgumentList) {
  EXPECT_EQ(
      refusalOf<K7Q::WrongType>([&] { create<documentation::LanguageSpecific>(0, {}); }),
      "class 'Tarvelon.metamodel.arplatform.documentation.LanguageSpecific' is abstract: it has no "
      "constructor; construct one of its subclasses: Tarvelon.metamodel.arplatform.documentation.LLongName, "
      "Tarvelon.metamodel.arplatform.documentation.LOverviewParagraph, "
      "Tarvelon.metamodel.arplatform.documentation.LPlainText");
  EXPECT_EQ(
      refusalOf([&] { create<common::Package>(2, {}); }),
      "class 'Tarvelon.metamodel.arplatform.common.Package' has no constructor 2; it has 2, counted from 0");
  EXPECT_EQ(refusalOf<K7Q::WrongType>([&] { create<common::Package>(1, {}); }),
            "constructor 1 of class 'Tarvelon.metamodel.arplatform.common.Package': expected 1 arguments "
            "after the model, got 0");
}

TEST_F(Construction, MakesAnObjectOfEveryConcreteClass) {
  for (const char* package :
       {"Tarvelon.metamodel.foundation", "Tarvelon.metamodel.types", "Tarvelon.metamodel.arplatform.common",
        "Tarvelon.metamodel.arplatform.documentation", "Tarvelon.metamodel.arplatform.variant"}) {
    for (const auto* cls : Tarvelon::metamodel::native::metaPackage(package).getPackage()->classes()) {
      if (cls->methods().isAbstract()) continue;
      const auto object = cls->methods().create(mModel, 0, {});
      ASSERT_TRUE(object.isValid()) << cls->fullName().view();
      EXPECT_EQ(object.getInterface()->getRuvoName(false), cls->fullName());
      EXPECT_TRUE(cls->methods().isInstance(object.getInterface()));
      object.getClassObject()->destroy({});
    }
  }
}
