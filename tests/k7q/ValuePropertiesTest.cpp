#include <limits>

#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tests/k7q/Fake.h"

using host::raised;
using hx::hxArray;

namespace {

/// Owns an array during the test.
struct Given {
  hxArray* array;
  explicit Given(hxArray* given) : array(given) {}
  Given(const Given&) = delete;
  Given& operator=(const Given&) = delete;
  ~Given() { hx::hxDestroyArray(array); }
};

void set(const ruvo::RVOInterfacePtr& object, const char* property, hxArray* array) {
  const Given given(array);
  fake::journal().clear();
  fake::record(property).setValue(object, ruvo::RVOValue(array));
}

std::string refused(const ruvo::RVOInterfacePtr& object, const char* property, hxArray* array) {
  auto text = raised([&] { set(object, property, array); });
  EXPECT_TRUE(fake::journal().empty());
  return text;
}

/// The value returned by the record; raw for a scalar.
struct Read {
  Read(const ruvo::RVOInterfacePtr& object, const char* property)
      : mRecord(fake::record(property)), mObject(object), slot(mRecord.getValue(object)) {}
  Read(const Read&) = delete;
  Read& operator=(const Read&) = delete;
  ~Read() { mRecord.releaseValue(mObject, slot); }

 private:
  K7Q::mi::K7qmiProperty& mRecord;
  ruvo::RVOInterfacePtr mObject;

 public:
  ruvo::RVOValue slot;
};

std::u16string textOf(const ruvo::RVOInterfacePtr& object, const char* property) {
  return std::u16string(hx::hxGetText(Read(object, property).slot.array()));
}

std::size_t countOf(const ruvo::RVOInterfacePtr& object, const char* property) {
  return hx::hxGetNumberOfElements(Read(object, property).slot.array());
}

double elementOf(const ruvo::RVOInterfacePtr& object, const char* property) {
  return hx::hxGetNumber(Read(object, property).slot.array(), 0);
}

using Journal = std::vector<std::string>;

}  // namespace

TEST(StringProperty, StoresCharacters) {
  const auto thing = fake::thing();
  set(thing, "text", hx::hxCreateString_UTF16(u"Grüße"));
  EXPECT_EQ(textOf(thing, "text"), u"Grüße");
}

TEST(StringProperty, EmptyTextUnsetsAnOptionalOneAndIsStoredInARequiredOne) {
  const auto thing = fake::thing();
  set(thing, "textMaybe", hx::hxCreateString_UTF16(u"x"));
  set(thing, "textMaybe", hx::hxCreateString_UTF16(u""));
  EXPECT_EQ(fake::journal(), Journal{"unset 2"});
  set(thing, "text", hx::hxCreateString_UTF16(u""));
  EXPECT_EQ(fake::journal(), Journal{"set 1"});
  EXPECT_EQ(fake::nativeOf(thing).values.count(fake::kText), 1U);
}

TEST(StringProperty, ReadsEmptyWhenUnset) {
  const auto thing = fake::thing();
  for (const char* name : {"text", "textMaybe"}) {
    const Read read(thing, name);
    EXPECT_EQ(hx::hxGetClassId(read.slot.array()), hx::hxChar);
    EXPECT_EQ(hx::hxGetNumberOfElements(read.slot.array()), 0U);
  }
}

TEST(StringProperty, RefusesWhatIsNoText) {
  const auto thing = fake::thing();
  EXPECT_EQ(refused(thing, "text", hx::hxCreateInt32Scalar(7)),
            "Thing.text: expected char vector, got int32 scalar 7");
  EXPECT_THROW(set(thing, "text", nullptr), K7Q::WrongType);
  set(thing, "textMaybe", nullptr);
  EXPECT_EQ(fake::journal(), Journal{"unset 2"});
}

TEST(PrimitiveProperty, TravelsRaw) {
  const auto thing = fake::thing();
  EXPECT_EQ(Read(thing, "flag").slot.word(), 0U);
  EXPECT_EQ(Read(thing, "number").slot.int32(), 0);
  EXPECT_EQ(Read(thing, "real").slot.number(), 0.0);

  fake::record("flag").setValue(thing, ruvo::RVOValue::ofWord(2));
  fake::record("number").setValue(thing, ruvo::RVOValue::ofInt32(-7));
  fake::record("real").setValue(thing, ruvo::RVOValue::ofDouble(0.125));
  EXPECT_EQ(Read(thing, "flag").slot.word(), 1U);
  EXPECT_EQ(Read(thing, "number").slot.int32(), -7);
  EXPECT_EQ(Read(thing, "real").slot.number(), 0.125);
}

TEST(OptionalPrimitiveProperty, HoldsOneValueOrNone) {
  const auto thing = fake::thing();
  EXPECT_EQ(countOf(thing, "numberMaybe"), 0U);
  EXPECT_STREQ(hx::hxGetClassName(Read(thing, "numberMaybe").slot.array()), "k7qint32");

  set(thing, "numberMaybe", hx::hxCreateInt32Scalar(7));
  set(thing, "flagMaybe", hx::hxCreateLogicalScalar(true));
  set(thing, "realMaybe", hx::hxCreateDoubleScalar(0.5));
  EXPECT_EQ(elementOf(thing, "numberMaybe"), 7);
  EXPECT_EQ(elementOf(thing, "flagMaybe"), 1);
  EXPECT_EQ(elementOf(thing, "realMaybe"), 0.5);
  EXPECT_EQ(hx::hxGetClassId(Read(thing, "numberMaybe").slot.array()), hx::hxInt32);
  EXPECT_EQ(hx::hxGetClassId(Read(thing, "flagMaybe").slot.array()), hx::hxLogical);
  EXPECT_EQ(hx::hxGetClassId(Read(thing, "realMaybe").slot.array()), hx::hxDouble);

  set(thing, "numberMaybe", hx::hxCreateNumericMatrix(0, 0, hx::hxInt32, hx::hxReal));
  EXPECT_EQ(fake::journal(), Journal{"unset 6"});
  EXPECT_EQ(countOf(thing, "numberMaybe"), 0U);
}

TEST(OptionalPrimitiveProperty, RefusesASecondElementAndWritesNothing) {
  const auto thing = fake::thing();
  set(thing, "numberMaybe", hx::hxCreateInt32Scalar(7));
  const auto text = refused(thing, "numberMaybe", hx::hxCreateNumericMatrix(1, 2, hx::hxInt32, hx::hxReal));
  EXPECT_NE(
      text.find("too many elements: set an optional value to one element, or unset it with an empty array"),
      std::string::npos);
  EXPECT_EQ(elementOf(thing, "numberMaybe"), 7);
}

TEST(OptionalPrimitiveProperty, ConvertsANumberOnlyWhenExact) {
  const auto thing = fake::thing();
  set(thing, "numberMaybe", hx::hxCreateDoubleScalar(7));
  EXPECT_EQ(elementOf(thing, "numberMaybe"), 7);
  set(thing, "flagMaybe", hx::hxCreateDoubleScalar(0.5));
  EXPECT_EQ(elementOf(thing, "flagMaybe"), 1);

  EXPECT_EQ(refused(thing, "numberMaybe", hx::hxCreateDoubleScalar(0.5)),
            "Thing.numberMaybe: expected int32 scalar or an empty value, got double scalar 0.5");
  EXPECT_THROW(set(thing, "numberMaybe", hx::hxCreateDoubleScalar(2147483648.0)), K7Q::OutOfRange);
  EXPECT_THROW(set(thing, "numberMaybe", hx::hxCreateDoubleScalar(std::numeric_limits<double>::quiet_NaN())),
               K7Q::OutOfRange);
  EXPECT_THROW(set(thing, "numberMaybe", hx::hxCreateString_UTF16(u"7")), K7Q::WrongType);
  EXPECT_EQ(elementOf(thing, "numberMaybe"), 7);
}

TEST(DataTypeProperty, StoresAnEnumerationValue) {
  const auto thing = fake::thing();
  host::set(thing, "kind", host::object(fake::kind(2)));
  const auto read = host::getObject(thing, "kind");
  EXPECT_EQ(fake::kindOf(read), 2);
  EXPECT_EQ(host::className(read), "Fake.Kind");
}

TEST(DataTypeProperty, ReadsLiteralZeroWhenRequiredAndEmptyWhenOptional) {
  const auto thing = fake::thing();
  EXPECT_EQ(fake::kindOf(host::getObject(thing, "kind")), 0);
  EXPECT_FALSE(host::getObject(thing, "kindMaybe"));
  EXPECT_STREQ(hx::hxGetClassName(Read(thing, "kindMaybe").slot.array()), "Fake.Kind");
}

TEST(DataTypeProperty, EmptyUnsetsAnOptionalOneAndIsRefusedByARequiredOne) {
  const auto thing = fake::thing();
  host::set(thing, "kindMaybe", host::object(fake::kind(2)));
  set(thing, "kindMaybe", hx::hxCreateObjectMatrix(0, 0, "Fake.Kind"));
  EXPECT_FALSE(host::getObject(thing, "kindMaybe"));

  EXPECT_EQ(
      refused(thing, "kind", hx::hxCreateObjectMatrix(0, 0, "Fake.Kind")),
      "Thing.kind: expected Fake.Kind, got an empty value; the property is required and cannot be unset");
  EXPECT_THROW(set(thing, "kind", nullptr), K7Q::WrongValue);
  EXPECT_THROW(set(thing, "kind", hx::hxCreateInt32Scalar(1)), K7Q::WrongType);
}

TEST(ReferenceProperty, GivesBackTheObjectUnderItsOwnClassAsItIsSeen) {
  const auto thing = fake::thing();
  const auto other = fake::thing();
  host::set(thing, "other", host::object(other));

  EXPECT_EQ(static_cast<ruvo::RVOInterface*>(host::getObject(thing, "other")),
            static_cast<ruvo::RVOInterface*>(other));
  const auto immutable = host::getObject(fake::immutableOf(thing), "other");
  EXPECT_EQ(host::className(immutable), "Fake.ImmutableThing");
  EXPECT_EQ(&fake::nativeOf(immutable), &fake::nativeOf(other));
}

TEST(ReferenceProperty, IsEmptyOfTheClassThatFollowsTheObject) {
  const auto thing = fake::thing();
  EXPECT_STREQ(hx::hxGetClassName(Read(thing, "otherMaybe").slot.array()), "Fake.Base");
  EXPECT_STREQ(hx::hxGetClassName(Read(fake::immutableOf(thing), "otherMaybe").slot.array()),
               "Fake.ImmutableBase");
  EXPECT_EQ(countOf(thing, "other"), 0U);
}

TEST(ReferenceProperty, EmptyUnsetsAnOptionalOneAndIsRefusedByARequiredOne) {
  const auto thing = fake::thing();
  host::set(thing, "otherMaybe", host::object(fake::thing()));
  set(thing, "otherMaybe", hx::hxCreateObjectMatrix(0, 0, "Fake.Base"));
  EXPECT_EQ(fake::journal(), Journal{"unset 12"});
  EXPECT_FALSE(host::getObject(thing, "otherMaybe"));

  EXPECT_EQ(
      refused(thing, "other", hx::hxCreateObjectMatrix(0, 0, "Fake.Base")),
      "Thing.other: expected Fake.ImmutableBase, got an empty value; the property is required and cannot be "
      "unset");
  EXPECT_THROW(set(thing, "other", nullptr), K7Q::WrongValue);
  EXPECT_THROW(set(thing, "other", hx::hxCreateString_UTF16(u"x")), K7Q::WrongType);
}

TEST(ReferenceProperty, TakesElementZeroOfSeveral) {
  const auto thing = fake::thing();
  const auto first = fake::thing();
  hxArray* two = hx::hxCreateObjectMatrix(1, 2, "Fake.Base");
  hx::hxSetElement(two, 0, first);
  hx::hxSetElement(two, 1, thing);
  set(thing, "other", two);
  EXPECT_EQ(&fake::nativeOf(host::getObject(thing, "other")), &fake::nativeOf(first));
}

TEST(MetaPropertyEntry, GivesTheDescriptorAndIsNoOrdinaryMethod) {
  fake::publish();
  auto& cls = ruvo::Class::get("Fake.ThingMetaProperty");
  ASSERT_EQ(cls.methods().size(), 1U);
  const auto& entry = dynamic_cast<const K7Q::mi::MetaPropertyEntry&>(*cls.methods()[0]);
  EXPECT_EQ(entry.getName().view(), "Text");
  EXPECT_EQ(entry.id(), fake::kText);
  EXPECT_EQ(&entry.owner(), &fake::methodsOf(fake::thingMethods()));
  EXPECT_EQ(entry.getFlags(), 8U);
  EXPECT_EQ(entry.getSignature()->result().view(), "K7Q.ImmutableProperty");

  const auto result = fake::callStatic("Fake.ThingMetaProperty", "Text", {});
  const ruvo::RVOInterfacePtr property(result.object());
  EXPECT_EQ(host::className(property), "K7Q.ImmutableProperty");
  EXPECT_EQ(host::textOf(host::call(property, "name")), "Text");
}
