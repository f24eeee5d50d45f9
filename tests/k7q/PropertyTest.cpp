#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tests/k7q/Fake.h"
#include "tests/k7q/FakeSequence.h"

using host::raised;
using K7Q::mi::K7qmiProperty;

namespace {

std::string refusal(const ruvo::RVOInterfacePtr& object, const char* property) {
  fake::journal().clear();
  auto text = raised([&] { fake::record(property).setValue(object, ruvo::RVOValue()); });
  EXPECT_TRUE(fake::journal().empty()) << property << " was touched";
  return text;
}

bool says(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace

TEST(Property, RefusesASetInTheOrderManyValuedReadOnlyImmutable) {
  const auto thing = fake::thing();
  const auto immutable = fake::immutableOf(thing);
  for (const auto& object : {thing, immutable}) {
    EXPECT_TRUE(
        says(refusal(object, "otherMany"), "You cannot set a multi-valued property at platform/k7q/"));
    EXPECT_TRUE(
        says(refusal(object, "fixedMany"), "You cannot set a multi-valued property at platform/k7q/"));
    EXPECT_TRUE(says(refusal(object, "textMany"), "You cannot set a multi-valued property at platform/k7q/"));
    EXPECT_TRUE(says(refusal(object, "fixed"), "You cannot set a read-only property at platform/k7q/"));
  }
  for (const char* name : {"text", "textMaybe", "flag", "flagMaybe", "number", "numberMaybe", "real",
                           "realMaybe", "kind", "kindMaybe", "other", "otherMaybe"}) {
    EXPECT_EQ(refusal(immutable, name),
              "You cannot set a property through an immutable object; use the mutable object, which "
              "asMutable() returns")
        << name;
  }
}

TEST(Property, RefusesASetOnAViewThatIsNotWritable) {
  const auto frozen = fake::frozenOf(fake::thing());
  for (const char* name : {"text", "flag", "numberMaybe", "kind", "otherMaybe"}) {
    EXPECT_TRUE(says(refusal(frozen, name), "the view is read-only")) << name;
  }
}

TEST(Property, RefusesADestroyedObjectForReadingAndWriting) {
  const auto thing = fake::thing();
  fake::nativeOf(thing).destroy(K7Q::Deviant());
  for (const char* name : {"text", "flag", "realMaybe", "kind", "other", "otherMany"}) {
    EXPECT_TRUE(says(raised([&] { fake::record(name).getValue(thing); }), K7Q::kNullReference)) << name;
  }
  EXPECT_TRUE(says(refusal(thing, "text"), K7Q::kNullReference));
}

TEST(Property, RefusesAHostObjectWithoutANativeOne) {
  const auto thing = fake::thing();
  auto* object = K7Q::DeviantRegistry::getVariantInfo(thing->getBoundPointer(ruvo::InternedName())).object;
  K7Q::DeviantRegistry::retract(object);
  object->release();
  EXPECT_TRUE(says(raised([&] { fake::record("text").getValue(thing); }), K7Q::kNullReference));
  EXPECT_TRUE(says(raised([&] { fake::record("text").getValue(nullptr); }), K7Q::kNullReference));
}

TEST(Property, TellsMultiplicityMutabilityAndWord) {
  using K7Q::mi::Multiplicity;
  using K7Q::mi::Mutability;
  struct Row {
    const char* name;
    const char* kind;
    const char* type;
    Multiplicity multiplicity;
    Mutability mutability;
  };
  constexpr auto kMaybe = Multiplicity::Optional;
  constexpr auto kOne = Multiplicity::One;
  constexpr auto kMany = Multiplicity::Many;
  constexpr auto kWritable = Mutability::Writable;
  const Row rows[] = {
      {"text", "String", "char", kOne, kWritable},
      {"textMaybe", "String", "char", kMaybe, kWritable},
      {"flag", "Primitive", "logical scalar", kOne, kWritable},
      {"flagMaybe", "OptionalPrimitive", "k7qlogical", kMaybe, kWritable},
      {"number", "Primitive", "int32 scalar", kOne, kWritable},
      {"numberMaybe", "OptionalPrimitive", "k7qint32", kMaybe, kWritable},
      {"real", "Primitive", "double scalar", kOne, kWritable},
      {"realMaybe", "OptionalPrimitive", "k7qdouble", kMaybe, kWritable},
      {"kind", "DataType", "Fake.Kind", kOne, kWritable},
      {"other", "ClassObject", "Fake.ImmutableBase", kOne, kWritable},
      {"otherMany", "ClassObject", "Fake.ImmutableSequenceOfImmutableBase", kMany, kWritable},
      {"fixedMany", "ClassObject", "Fake.ImmutableSequenceOfImmutableBase", kMany, Mutability::ReadOnly},
      {"textMany", "PrimitiveSequence", "K7Q.ImmutableSequenceOfString", kMany, kWritable},
  };
  for (const Row& row : rows) {
    const auto& record = fake::record(row.name);
    EXPECT_STREQ(record.getName(), row.name);
    EXPECT_STREQ(record.kind(), row.kind) << row.name;
    EXPECT_EQ(record.getDataType().view(), row.type) << row.name;
    EXPECT_EQ(record.multiplicity(), row.multiplicity) << row.name;
    EXPECT_EQ(record.mutability(), row.mutability) << row.name;
    EXPECT_EQ(record.isOptional(), row.multiplicity == kMaybe) << row.name;
    EXPECT_EQ(record.isMany(), row.multiplicity == kMany) << row.name;
    EXPECT_EQ(record.isReadOnly(), row.mutability == Mutability::ReadOnly) << row.name;
    EXPECT_STREQ(record.getDescription(), "") << row.name;
    EXPECT_EQ(record.getMemberGetAccess() + record.getMemberSetAccess(), 0) << row.name;
    EXPECT_EQ(record.ownerName().view(), "Fake.ImmutableThing") << row.name;
    EXPECT_EQ(&record.methods(), &fake::methodsOf(fake::thingMethods())) << row.name;
  }
  EXPECT_EQ(fake::record("number").id(), fake::kNumber);
  EXPECT_EQ(fake::record("text").attributeWord(), 2048U);
  EXPECT_FALSE(fake::record("text").predicate25());
  EXPECT_TRUE(fake::record("number").predicate25());
}

TEST(Property, IsSmall) {
  // The records add at most one pointer to this size.
  EXPECT_LE(sizeof(K7qmiProperty), 88U);
}

TEST(Property, NamesClassPropertyExpectedAndGivenForAWrongValue) {
  const auto thing = fake::thing();
  hx::hxArray* given = hx::hxCreateString_UTF16(u"yes");
  EXPECT_THROW(fake::record("flag").throwWrongValue(thing, given), K7Q::WrongType);
  EXPECT_EQ(raised([&] { fake::record("flag").throwWrongValue(thing, given); }),
            "Thing.flag: expected logical scalar, got char vector \"yes\"");
  EXPECT_EQ(raised([&] { fake::record("numberMaybe").throwWrongValue(thing, given); }),
            "Thing.numberMaybe: expected int32 scalar or an empty value, got char vector \"yes\"");
  hx::hxDestroyArray(given);
  EXPECT_EQ(raised([&] { fake::record("text").throwWrongValue(nullptr, nullptr); }),
            "Thing.text: expected char vector, got an empty value");
}

TEST(Property, ShowsAListUnderTheClassThatFollowsTheObject) {
  const auto thing = fake::thing();
  const auto immutable = fake::immutableOf(thing);
  const auto classOf = [](const ruvo::RVOInterfacePtr& object, const char* name) {
    return host::className(host::getObject(object, name));
  };
  EXPECT_EQ(classOf(thing, "otherMany"), "Fake.SequenceOfBase");
  EXPECT_EQ(classOf(immutable, "otherMany"), "Fake.ImmutableSequenceOfImmutableBase");
  EXPECT_EQ(classOf(thing, "fixedMany"), "Fake.ImmutableSequenceOfBase");
  EXPECT_EQ(classOf(immutable, "fixedMany"), "Fake.ImmutableSequenceOfImmutableBase");
  EXPECT_EQ(classOf(thing, "textMany"), "K7Q.SequenceOfString");
  EXPECT_EQ(classOf(immutable, "textMany"), "K7Q.ImmutableSequenceOfString");
}

TEST(Property, GivesTheViewThatMayOrMayNotBeChanged) {
  const auto thing = fake::thing();
  const auto viewOf = [](const ruvo::RVOInterfacePtr& object, const char* name) {
    const auto sequence = host::getObject(object, name);
    const auto info = K7Q::DeviantRegistry::getVariantInfo(sequence->getBoundPointer(ruvo::InternedName()));
    return dynamic_cast<fake::Sequence&>(*info.object).isImmutable();
  };
  EXPECT_FALSE(viewOf(thing, "otherMany"));
  EXPECT_TRUE(viewOf(thing, "fixedMany"));
  EXPECT_TRUE(viewOf(fake::immutableOf(thing), "otherMany"));
}

TEST(Property, ListIsALiveView) {
  const auto thing = fake::thing();
  const auto other = fake::hostOf(fake::newBase());
  const auto list = host::getObject(thing, "otherMany");
  host::call(list, "push_back", {host::object(other)});
  EXPECT_EQ(host::call(host::getObject(thing, "otherMany"), "size").slot().int32(), 1);
  EXPECT_EQ(static_cast<ruvo::RVOInterface*>(host::callObject(list, "at", {host::integer(1)})),
            static_cast<ruvo::RVOInterface*>(other));
}
