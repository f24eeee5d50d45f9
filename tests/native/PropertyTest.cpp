// Single-valued properties: the values before and after a set, and refused values.

#include <limits>

#include "tests/native/Support.h"

namespace {

class Property : public testing::Test {
 protected:
  K7Q::Model mModel = K7Q::Model::create();
};

}  // namespace

TEST_F(Property, ThatIsRequiredReadsAsTheDefaultUntilItIsSet) {
  const auto base = common::ReferenceBase::create(mModel);
  EXPECT_FALSE(base.get<"IsDefault">());
  EXPECT_EQ(base.get<"ShortLabel">(), K7Q::String());
  EXPECT_TRUE(base.get<"Package">().isNull());
  EXPECT_EQ(common::ApplicationError::create(mModel).get<"errorCode">(), 0);
  EXPECT_EQ(variant::SystemConstValue::create(mModel).get<"Value">(), 0.0);
  EXPECT_EQ(variant::ConditionByFormula::create(mModel).get<"BindingTime">(),
            variant::BindingTimeKind::SystemDesignTime);
}

TEST_F(Property, ThatIsOptionalReadsAsNothingUntilItIsSet) {
  const auto group = common::ModeDeclarationGroup::create(mModel);
  EXPECT_FALSE(group.get<"OnTransitionValue">().has_value());
  EXPECT_TRUE(group.get<"InitialMode">().isNull());
  EXPECT_EQ(group.get<"category">(), K7Q::String());
  EXPECT_TRUE((Access<common::Identifiable>(group, "Category").get().isNull()));
}

TEST_F(Property, HasNoValueUntilItIsSet) {
  const auto error = common::ApplicationError::create(mModel);
  const Access<common::ApplicationError> code(error, "ErrorCode");
  EXPECT_FALSE(code.has());
  code.set(K7Q::Integer(0));
  EXPECT_TRUE(code.has());
}

TEST_F(Property, GivesBackEachKindOfScalar) {
  const auto base = common::ReferenceBase::create(mModel);
  base.set<"IsDefault">(true);
  EXPECT_TRUE(base.get<"IsDefault">());
  const auto error = common::ApplicationError::create(mModel);
  error.set<"errorCode">(std::numeric_limits<int>::min());
  EXPECT_EQ(error.get<"errorCode">(), std::numeric_limits<int>::min());
  const auto value = variant::SystemConstValue::create(mModel);
  value.set<"Value">(-0.1);
  EXPECT_EQ(value.get<"Value">(), -0.1);
  const auto condition = variant::ConditionByFormula::create(mModel);
  condition.set<"BindingTime">(variant::BindingTimeKind::LinkTime);
  EXPECT_EQ(condition.get<"BindingTime">(), variant::BindingTimeKind::LinkTime);
}

TEST_F(Property, OfTextSharesTheCellThatWasSet) {
  const auto package = common::Package::create(mModel);
  const K7Q::Object text = K7Q::String(u"Brakes");
  const Access<foundation::NamedElement> name(package, "Name");
  name.set(text);
  EXPECT_EQ(name.get().getInterface(), text.getInterface());
}

TEST_F(Property, OfTextTakesAllOfUnicode) {
  const auto package = common::Package::create(mModel);
  package.set<"Name">(u"Größe \U0001F697 \uFFFD\u007F");
  EXPECT_EQ(package.get<"Name">(), K7Q::String(u"Größe \U0001F697 \uFFFD\u007F"));
}

TEST_F(Property, IsKeptBesideManyOthers) {
  const auto revision = documentation::DocRevision::create(mModel, u"2026-11-21");
  revision.set<"state">(u"draft");
  revision.set<"issuedBy">(u"me");
  revision.set<"revisionLabelP2">(u"p2");
  revision.set<"revisionLabel">(u"r");
  revision.set<"revisionLabelP1">(u"p1");
  revision.unset<"revisionLabel">();
  revision.set<"issuedBy">(u"you");
  EXPECT_EQ(revision.get<"date">(), K7Q::String(u"2026-11-21"));
  EXPECT_EQ(revision.get<"issuedBy">(), K7Q::String(u"you"));
  EXPECT_EQ(revision.get<"revisionLabel">(), K7Q::String());
  EXPECT_EQ(revision.get<"revisionLabelP1">(), K7Q::String(u"p1"));
  EXPECT_EQ(revision.get<"revisionLabelP2">(), K7Q::String(u"p2"));
  EXPECT_EQ(revision.get<"state">(), K7Q::String(u"draft"));
}

TEST_F(Property, ThatIsOptionalIsUnsetByTheEmptyText) {
  const auto package = common::Package::create(mModel);
  const Access<common::Identifiable> category(package, "Category");
  category.set(K7Q::String(u"STANDARD"));
  EXPECT_TRUE(category.has());
  category.set(K7Q::String());
  EXPECT_FALSE(category.has());
}

TEST_F(Property, ThatIsRequiredKeepsTheEmptyText) {
  const auto package = common::Package::create(mModel, u"Brakes");
  const Access<foundation::NamedElement> name(package, "Name");
  name.set(K7Q::String());
  EXPECT_TRUE(name.has());
  EXPECT_EQ(package.get<"Name">(), K7Q::String());
}

TEST_F(Property, ThatIsOptionalIsUnsetAndSetAgain) {
  const auto mode = common::ModeDeclaration::create(mModel, u"On");
  mode.set<"Value">(7);
  mode.unset<"Value">();
  EXPECT_FALSE(mode.get<"Value">().has_value());
  EXPECT_NO_THROW(mode.unset<"Value">());
  mode.set<"Value">(8);
  EXPECT_EQ(mode.get<"Value">(), K7Q::Integer(8));
}

TEST_F(Property, ThatIsOptionalIsUnsetByAnEmptyObject) {
  const auto mode = common::ModeDeclaration::create(mModel, u"On");
  mode.set<"Value">(7);
  Access<common::ModeDeclaration>(mode, "Value").set(K7Q::Object());
  EXPECT_FALSE(mode.get<"Value">().has_value());
}

TEST_F(Property, ThatIsRequiredCannotBeUnset) {
  const auto error = common::ApplicationError::create(mModel, 7, u"E");
  const Access<common::ApplicationError> code(error, "ErrorCode");
  EXPECT_EQ(
      refusalOf<K7Q::WrongValue>([&] { code.unset(); }),
      "ApplicationError.errorCode is required and cannot be unset; give a whole number from -2147483648 "
      "to 2147483647");
  EXPECT_EQ(refusalOf<K7Q::WrongValue>([&] { code.set(K7Q::Object()); }),
            "ApplicationError.errorCode: expected int32 scalar, got nothing; give a whole number from "
            "-2147483648 to 2147483647");
  EXPECT_EQ(error.get<"errorCode">(), 7);
}

TEST_F(Property, ConvertsNumbersThatFit) {
  const Access<common::ApplicationError> code(common::ApplicationError::create(mModel), "ErrorCode");
  code.set(K7Q::Double(-3.0));
  EXPECT_EQ(K7Q::Integer(code.get()), -3);
  const Access<common::ReferenceBase> isDefault(common::ReferenceBase::create(mModel), "IsDefault");
  isDefault.set(K7Q::Double(0.5));
  EXPECT_TRUE(K7Q::Boolean(isDefault.get()));
  isDefault.set(K7Q::Integer(0));
  EXPECT_FALSE(K7Q::Boolean(isDefault.get()));
  const Access<variant::SystemConstValue> value(variant::SystemConstValue::create(mModel), "Value");
  value.set(K7Q::Integer(4));
  EXPECT_EQ(K7Q::Double(value.get()), 4.0);
}

TEST_F(Property, RefusesNumbersThatDoNotFit) {
  const auto error = common::ApplicationError::create(mModel, 7, u"E");
  const Access<common::ApplicationError> code(error, "ErrorCode");
  EXPECT_EQ(refusalOf<K7Q::OutOfRange>([&] { code.set(K7Q::Double(0.5)); }),
            "ApplicationError.errorCode: expected int32 scalar, got double scalar 0.5; give a whole number "
            "from -2147483648 to 2147483647");
  refusalOf<K7Q::OutOfRange>([&] { code.set(K7Q::Double(2147483648.0)); });
  refusalOf<K7Q::OutOfRange>([&] { code.set(K7Q::Double(-2147483649.0)); });
  refusalOf<K7Q::OutOfRange>([&] { code.set(K7Q::Double(std::numeric_limits<double>::quiet_NaN())); });
  refusalOf<K7Q::OutOfRange>([&] { code.set(K7Q::Double(std::numeric_limits<double>::infinity())); });
  EXPECT_EQ(error.get<"errorCode">(), 7);
}

TEST_F(Property, RefusesAValueOfTheWrongKind) {
  const auto error = common::ApplicationError::create(mModel, 7, u"E");
  const Access<common::ApplicationError> code(error, "ErrorCode");
  EXPECT_EQ(refusalOf<K7Q::WrongType>([&] { code.set(K7Q::String(u"yes")); }),
            "ApplicationError.errorCode: expected int32 scalar, got char vector \"yes\"; give a whole number "
            "from -2147483648 to 2147483647");
  refusalOf<K7Q::WrongType>([&] { code.set(error); });
  refusalOf<K7Q::WrongType>([&] { code.set(variant::BindingTimeKind(1)); });
  const Access<foundation::NamedElement> name(error, "Name");
  EXPECT_EQ(refusalOf<K7Q::WrongType>([&] { name.set(K7Q::Boolean(true)); }),
            "ApplicationError.Name: expected char vector, got logical scalar true; give a text");
  EXPECT_EQ(error.get<"Name">(), K7Q::String(u"E"));
  EXPECT_EQ(error.get<"errorCode">(), 7);
}

TEST_F(Property, RefusesTextThatNoFileCouldHold) {
  const auto package = common::Package::create(mModel, u"Brakes");
  const auto refused = [&](std::u16string text) {
    return refusalOf<K7Q::WrongValue>([&] { package.set<"Name">(K7Q::String(text)); });
  };
  EXPECT_EQ(refused(std::u16string(u"a\0b", 3)),
            "Package.Name: expected Unicode text that a file can hold, got U+0000 at position 2; remove it");
  EXPECT_EQ(refused(u"abcd\xD800"),
            "Package.Name: expected Unicode text that a file can hold, got the lone surrogate U+D800 at "
            "position 5; remove it");
  EXPECT_EQ(refused(u"ab\x07"),
            "Package.Name: expected Unicode text that a file can hold, got the control character U+0007 at "
            "position 3; remove it");
  EXPECT_EQ(refused(u"\xFFFF"),
            "Package.Name: expected Unicode text that a file can hold, got U+FFFF at position 1; remove it");
  // At each position within a group of four, because the check processes four UTF-16 units at once.
  for (std::size_t position = 0; position < 9; ++position) {
    for (const char16_t unit : {u'\0', u'\x01', u'\x1F', u'\x0B', char16_t{0xD8FF}, char16_t{0xDC00},
                                char16_t{0xFFFE}, char16_t{0xFFFF}}) {
      std::u16string text(9, u'\U0000D7FF');
      text[position] = unit;
      EXPECT_NE(refused(text).find(" at position " + std::to_string(position + 1) + ";"), std::string::npos);
    }
  }
  EXPECT_EQ(package.get<"Name">(), K7Q::String(u"Brakes"));
}

TEST_F(Property, TakesEveryOtherUnitAtEveryPlace) {
  const auto package = common::Package::create(mModel, u"Brakes");
  for (std::size_t position = 0; position < 5; ++position) {
    for (const char16_t unit : {u'\t', u'\n', u'\r', u' ', u'\x7F', u'\x85', char16_t{0xD7FF},
                                char16_t{0xE000}, char16_t{0xFFFD}}) {
      std::u16string text(5, u'a');
      text[position] = unit;
      package.set<"Name">(K7Q::String(text));
      EXPECT_EQ(package.get<"Name">(), K7Q::String(text));
    }
  }
}

TEST_F(Property, TakesAPairOfSurrogatesAtEveryPlace) {
  const auto package = common::Package::create(mModel);
  for (std::size_t position = 0; position < 9; ++position) {
    std::u16string text(9, u'a');
    text.insert(position, u"\U0001F697");
    package.set<"Name">(K7Q::String(text));
    EXPECT_EQ(package.get<"Name">().view(), text);
  }
}

TEST_F(Property, OfAnEnumerationRefusesAnotherAndANumberWithoutLiteral) {
  const auto condition = variant::ConditionByFormula::create(mModel);
  const Access<variant::ConditionByFormula> time(condition, "BindingTime");
  EXPECT_EQ(
      refusalOf<K7Q::WrongType>([&] { time.set(foundation::VisibilityKind(1)); }),
      "ConditionByFormula.BindingTime: expected Tarvelon.metamodel.arplatform.variant.BindingTimeKind, got "
      "Tarvelon.metamodel.foundation.VisibilityKind Private; give one of 'SystemDesignTime', "
      "'CodeGenerationTime', 'PreCompileTime', 'LinkTime'");
  EXPECT_NE(
      refusalOf<K7Q::OutOfRange>([&] { time.set(variant::BindingTimeKind(4)); }).find("BindingTimeKind 4;"),
      std::string::npos);
  refusalOf<K7Q::WrongType>([&] { time.set(K7Q::Integer(1)); });
  EXPECT_FALSE(time.has());
}

TEST_F(Property, ThatIsComputedIsReadOnly) {
  const auto package = common::Package::create(mModel, u"Brakes");
  const Access<foundation::Element> owner(package, "Owner");
  EXPECT_EQ(refusalOf([&] { owner.set(package); }),
            "Package.Owner is read-only and cannot be changed; change the values that it is computed from");
  refusalOf([&] { owner.unset(); });
}

TEST_F(Property, OfManyValuesIsNotReadOrSetAsOne) {
  const auto package = common::Package::create(mModel, u"Brakes");
  const Access<foundation::Package> elements(package, "PackagedElement");
  EXPECT_EQ(refusalOf([&] { elements.set(package); }),
            "Package.PackagedElement holds many values and cannot be set; change its sequence");
  refusalOf([&] { elements.unset(); });
  refusalOf([&] { elements.get(); });
  refusalOf([&] { Access<foundation::NamedElement>(package, "Name").sequence(); });
}

TEST_F(Property, IsRefusedThroughTheTableOfAnotherClass) {
  const auto package = common::Package::create(mModel, u"Brakes");
  K7Q::Object value;
  EXPECT_EQ(
      refusalOf<K7Q::WrongType>([&] { table<common::Sdg>().get(value, package.getClassObject(), {}, 2); }),
      "expected an object of class 'Tarvelon.metamodel.arplatform.common.Sdg', got "
      "Tarvelon.metamodel.arplatform.common.Package; use the class of that object");
  expectNullReference([&] { table<common::Sdg>().get(value, nullptr, {}, 2); });
  EXPECT_EQ(
      refusalOf([&] { table<foundation::Namespace>().get(value, package.getClassObject(), {}, 2); }),
      "class 'Tarvelon.metamodel.foundation.Namespace' has no property with id 2; its ids run from 1 to 3");
}

TEST_F(Property, RedefinedSharesTheStorageOfWhatItRedefines) {
  const auto sd = common::Sd::create(mModel, u"gid", u"value");
  const Access<foundation::Comment> body(sd, "Body");
  EXPECT_EQ(K7Q::String(body.get()), K7Q::String(u"value"));
  body.set(K7Q::String(u"other"));
  EXPECT_EQ(sd.get<"Value">(), K7Q::String(u"other"));

  const auto root = common::AUTOSAR::create(mModel);
  Access<common::AUTOSAR>(root, "PackagedElement")
      .sequence()
      .get()
      .generic_push_back({}, refOf(common::Package::create(mModel, u"Brakes")));
  EXPECT_EQ(root.get<"PackagedElement">().size(), 1);
}

TEST_F(Property, OfADiamondIsStoredOnce) {
  const auto package = common::Package::create(mModel, u"Brakes");
  const common::Identifiable asIdentifiable = package;
  const foundation::Package asPackage = package;
  asIdentifiable.set<"Name">(u"Doors");
  EXPECT_EQ(asPackage.get<"Name">(), K7Q::String(u"Doors"));
}
