#include <stdexcept>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo::testing {
namespace {

/// A class with a property p, and an object of the class.
class PropertyAccessTest : public RuvoTest {
 protected:
  void declare(const std::string& type, TestProperty::Traits traits = {}) {
    mClass =
        &addClass("X", [this, type, traits](Definition& x) { mProperty = &x.property("p", type, traits); });
    mObject = object(*mClass, mNative);
    mClass->define();
  }
  void declareOptional(const std::string& type) { declare(type, {.isOptional = true}); }

  void set(const HostValue& value) { setProperty(mObject, "p", value); }
  HostResult get() { return getProperty(mObject, "p"); }

  /// Sets a value that must be refused; nothing may be written.
  template <class E>
  std::string refusal(const HostValue& value) {
    const int before = mProperty->writes;
    const std::string text = errorOf<E>([&] { set(value); });
    EXPECT_EQ(mProperty->writes, before);
    return text;
  }

  void TearDown() override {
    // The property keeps its last value until the class is destroyed, which never happens.
    if (mProperty) mProperty->array.reset();
    mObject = RVOInterfacePtr();
  }

  Native mNative;
  Class* mClass = nullptr;
  TestProperty* mProperty = nullptr;
  RVOInterfacePtr mObject;
};

TEST_F(PropertyAccessTest, ScalarsAreWrittenAndReadRaw) {
  declare("int32 scalar");
  set(integer(-7));
  const HostResult result = get();
  EXPECT_TRUE(result.isRaw());
  EXPECT_EQ(result.type(), InternedName("int32 scalar"));
  EXPECT_EQ(result.slot().int32(), -7);
  set(number(3));
  EXPECT_EQ(get().slot().int32(), 3);
}

TEST_F(PropertyAccessTest, ScalarsOfAnotherKindAreRefused) {
  declare("logical scalar");
  EXPECT_EQ(refusal<K7Q::WrongType>(text(u"yes")), "X.p: expected logical scalar, got char vector \"yes\"");
  EXPECT_EQ(refusal<K7Q::WrongType>(testing::object(mObject)),
            "X.p: expected logical scalar, got " + full("X"));
}

TEST_F(PropertyAccessTest, NumbersOutOfRangeAreRefused) {
  declare("int32 scalar");
  EXPECT_EQ(
      refusal<K7Q::OutOfRange>(number(0.5)),
      "X.p: expected int32 scalar (a whole number from -2147483648 to 2147483647), got double scalar 0.5");
  EXPECT_EQ(refusal<K7Q::OutOfRange>(integer(2147483648)),
            "X.p: expected int32 scalar (a whole number from -2147483648 to 2147483647), got whole number "
            "2147483648");
}

TEST_F(PropertyAccessTest, EmptyValueOfARequiredPropertyIsRefused) {
  declare("double scalar");
  EXPECT_EQ(refusal<K7Q::WrongValue>(HostValue()),
            "X.p: expected double scalar, got an empty value; the property is required and cannot be unset");
}

TEST_F(PropertyAccessTest, TextIsWrittenAndRead) {
  declare("char");
  set(text(u"aé€🚗"));
  const HostResult result = get();
  EXPECT_EQ(result.type(), InternedName("char"));
  EXPECT_EQ(hx::get_ustring(result.slot().array()), u"aé€🚗");
  set(text(u""));
  EXPECT_EQ(hx::hxGetNumberOfElements(get().slot().array()), 0U);
}

TEST_F(PropertyAccessTest, EmptyTextArrayIsAText) {
  declare("char");
  const hx::ArrayPtr empty(hx::hxCreateString_UTF16(u""));
  set(HostValue::ofArray(empty.get()));
  EXPECT_EQ(mProperty->writes, 1);
}

TEST_F(PropertyAccessTest, EmptyValueUnsetsAnOptionalText) {
  declareOptional("char");
  set(HostValue());
  EXPECT_EQ(hx::hxGetNumberOfElements(mProperty->array.get()), 0U);
  EXPECT_EQ(hx::hxGetClassId(mProperty->array.get()), hx::hxChar);
}

TEST_F(PropertyAccessTest, EmptyValueOfARequiredTextIsRefused) {
  declare("char");
  EXPECT_EQ(refusal<K7Q::WrongValue>(HostValue()),
            "X.p: expected char vector, got an empty value; the property is required and cannot be unset");
}

TEST_F(PropertyAccessTest, NumberIsNoText) {
  declare("char");
  EXPECT_EQ(refusal<K7Q::WrongType>(integer(1)), "X.p: expected char vector, got int32 scalar 1");
}

TEST_F(PropertyAccessTest, OptionalScalarsAreArraysOfTheirClass) {
  struct Row {
    const char* type;
    hx::hxClassId classId;
    double expected;
  };
  const Row rows[] = {
      {"k7qlogical", hx::hxLogical, 1}, {"k7qint32", hx::hxInt32, 3}, {"k7qdouble", hx::hxDouble, 3}};
  Class& cls = addClass("X", [&](Definition& x) {
    for (const Row& row : rows) x.property(row.type, row.type, {.isOptional = true});
  });
  const auto object = RuvoTest::object(cls, mNative);
  for (const Row& row : rows) {
    for (const HostValue& value : {integer(3), number(3)}) {
      setProperty(object, row.type, value);
      const auto* array = static_cast<TestProperty*>(cls.findProperty(row.type)->property)->array.get();
      EXPECT_EQ(hx::hxGetClassId(array), row.classId);
      EXPECT_EQ(hx::hxGetNumberOfElements(array), 1U);
      EXPECT_EQ(hx::hxGetNumber(array, 0), row.expected);
    }
    setProperty(object, row.type, HostValue());
    auto& stored = static_cast<TestProperty*>(cls.findProperty(row.type)->property)->array;
    EXPECT_EQ(hx::hxGetNumberOfElements(stored.get()), 0U);
    stored.reset();
  }
}

TEST_F(PropertyAccessTest, OptionalScalarRefusesWhatItCannotHold) {
  declareOptional("k7qint32");
  EXPECT_EQ(
      refusal<K7Q::OutOfRange>(number(0.5)),
      "X.p: expected int32 scalar (a whole number from -2147483648 to 2147483647), got double scalar 0.5");
  EXPECT_EQ(refusal<K7Q::WrongType>(text(u"1")),
            "X.p: expected int32 scalar or an empty value, got char vector \"1\"");
  EXPECT_EQ(refusal<K7Q::WrongType>(testing::object(mObject)),
            "X.p: expected int32 scalar or an empty value, got " + full("X"));
}

TEST_F(PropertyAccessTest, OptionalScalarLeavesSeveralElementsToItsRecord) {
  declareOptional("k7qint32");
  const hx::ArrayPtr numbers(hx::hxCreateNumericMatrix(1, 2, hx::hxDouble, hx::hxReal));
  const hx::ArrayPtr objects(hx::hxCreateObjectMatrix(1, 2, "X"));
  hx::hxSetElement(objects.get(), 0, mObject);
  for (const auto* array : {numbers.get(), objects.get()}) {
    set(HostValue::ofArray(array));
    EXPECT_EQ(hx::hxGetNumberOfElements(mProperty->array.get()), 2U);
    EXPECT_EQ(hx::hxGetClassId(mProperty->array.get()), hx::hxGetClassId(array));
  }
}

TEST_F(PropertyAccessTest, ObjectOfTheClassOrASubclassIsWritten) {
  addClass("Base");
  Class& derived = addClass("Derived", [this](Definition& x) { x.base(full("Base")); });
  declare(full("Base"));
  Native native;
  const auto value = object(derived, native);
  set(testing::object(value));
  const HostResult result = get();
  EXPECT_EQ(result.object(), value);
  EXPECT_STREQ(hx::hxGetClassName(mProperty->array.get()), full("Base").c_str());
  // The property would keep the object longer than the object's native object lives.
  mProperty->array.reset();
}

TEST_F(PropertyAccessTest, ObjectOfAnotherClassIsRefused) {
  addClass("Base");
  Class& other = addClass("Other");
  declare(full("Base"));
  Native native;
  const auto value = object(other, native);
  EXPECT_EQ(refusal<K7Q::WrongType>(testing::object(value)),
            "X.p: expected " + full("Base") + ", got " + full("Other"));
  EXPECT_EQ(refusal<K7Q::WrongType>(text(u"a")), "X.p: expected " + full("Base") + ", got char vector \"a\"");
}

TEST_F(PropertyAccessTest, ObjectOfAClassThatDoesNotExistYetIsLeftToItsRecord) {
  declareOptional(full("Later"));
  set(testing::object(mObject));
  EXPECT_EQ(mProperty->writes, 1);
}

TEST_F(PropertyAccessTest, EmptyValueUnsetsAnOptionalObject) {
  declareOptional(full("X"));
  const hx::ArrayPtr numbers(hx::hxCreateNumericMatrix(0, 0, hx::hxDouble, hx::hxReal));
  const hx::ArrayPtr characters(hx::hxCreateString_UTF16(u""));
  for (const HostValue& value :
       {HostValue(), HostValue::ofArray(numbers.get()), HostValue::ofArray(characters.get())}) {
    set(value);
    EXPECT_EQ(hx::hxGetNumberOfElements(mProperty->array.get()), 0U);
    EXPECT_EQ(hx::hxGetClassId(mProperty->array.get()), hx::hxObject);
  }
}

TEST_F(PropertyAccessTest, EmptyValueOfARequiredObjectIsRefused) {
  declare(full("X"));
  EXPECT_EQ(
      refusal<K7Q::WrongValue>(HostValue()),
      "X.p: expected " + full("X") + ", got an empty value; the property is required and cannot be unset");
}

TEST_F(PropertyAccessTest, GuardIsAskedBeforeTheValueIsLookedAt) {
  for (const bool isMany : {true, false}) {
    mClass = &addClass(uniqueName("Guarded"), [&](Definition& x) {
      mProperty = &x.property("p", "int32 scalar", {.isMany = isMany, .isReadOnly = true});
    });
    mObject = object(*mClass, mNative, true);
    mClass->define();
    EXPECT_EQ(refusal<std::runtime_error>(text(u"no number")), isMany ? "many" : "read-only");
    mObject = RVOInterfacePtr();
  }
}

TEST_F(PropertyAccessTest, WriteThroughAnImmutableObjectIsRefusedBeforeTheValueIsLookedAt) {
  declare("int32 scalar");
  mObject = object(*mClass, mNative, true);
  EXPECT_EQ(refusal<std::runtime_error>(text(u"no number")), "immutable");
}

TEST_F(PropertyAccessTest, UnknownPropertyIsNamedWithTheNearest) {
  Class& cls = addClass("Runnable", [](Definition& x) { x.property("symbol", "char"); });
  const auto object = RuvoTest::object(cls, mNative);
  const std::string expected =
      "class '" + full("Runnable") + "' has no property 'symbl'; did you mean 'symbol'?";
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { getProperty(object, "symbl"); }), expected);
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { setProperty(object, "symbl", HostValue()); }), expected);
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { getProperty(object, "entirely different"); }),
            "class '" + full("Runnable") + "' has no property 'entirely different'");
}

TEST_F(PropertyAccessTest, InheritedPropertyIsNamedByTheObjectsOwnClass) {
  addClass("ImmutableRunnable",
           [](Definition& x) { x.property("canBeInvokedConcurrently", "logical scalar"); });
  Class& cls = addClass("Runnable", [this](Definition& x) { x.base(full("ImmutableRunnable")); });
  const auto object = RuvoTest::object(cls, mNative);
  EXPECT_EQ(errorOf<K7Q::WrongType>([&] { setProperty(object, "canBeInvokedConcurrently", text(u"yes")); }),
            "Runnable.canBeInvokedConcurrently: expected logical scalar, got char vector \"yes\"");
}

TEST_F(PropertyAccessTest, AllocationThatFailsWritesNothing) {
  declare("char");
  const PropertySlot& slot = *mClass->findProperty("p");
  utFailAllocation(1);
  EXPECT_THROW(setProperty(mObject, slot, text(u"a")), bedrock::core::except::bad_alloc);
  EXPECT_EQ(mProperty->writes, 0);
}

}  // namespace
}  // namespace ruvo::testing
