#include <array>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/ClassMetaData.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/k7q/PropertyRecords.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/support/Host.h"

namespace {

using host::RVOInterfacePtr;

class Properties : public testing::Test {
 protected:
  void SetUp() override {
    host::openModule();
    mModel = host::newModel();
  }
  RVOInterfacePtr make(const char* className) { return host::make(className, {host::object(mModel)}); }
  RVOInterfacePtr immutable(const RVOInterfacePtr& object) { return host::callObject(object, "asImmutable"); }
  ruvo::RVOPropInfo& record(const RVOInterfacePtr& object, const char* name) {
    return *ruvo::classOf(*object).findProperty(name)->property;
  }
  RVOInterfacePtr mModel;
};

std::size_t elements(const host::HostResult& result) {
  return hx::hxGetNumberOfElements(result.slot().array());
}

TEST_F(Properties, RequiredScalarIsReadAndWrittenWithoutAnyAllocation) {
  const auto error = make("common.ApplicationError");
  host::set(error, "errorCode", host::integer(1));
  auto* record = ruvo::classOf(*error).findProperty("errorCode")->property;
  // No block is reused while a failing allocation is armed, so any allocation would be detected.
  utFailAllocation(1);
  record->setValue(error, ruvo::RVOValue::ofInt32(2));
  const int read = record->getValue(error).int32();
  utFailAllocation(0);
  EXPECT_EQ(read, 2);
}

TEST_F(Properties, OptionalPrimitiveReadsEmptyUntilSetAndAfterUnset) {
  const auto mode = make("common.ModeDeclaration");
  EXPECT_EQ(elements(host::get(mode, "Value")), 0U);
  host::set(mode, "Value", host::integer(7));
  EXPECT_EQ(hx::hxGetNumber(host::get(mode, "Value").slot().array(), 0), 7);
  host::set(mode, "Value", host::nothing());
  EXPECT_EQ(elements(host::get(mode, "Value")), 0U);
}

TEST_F(Properties, OptionalPrimitiveRefusesASecondElementAndWritesNothing) {
  const auto mode = make("common.ModeDeclaration");
  host::set(mode, "Value", host::integer(7));
  hx::hxArray* two = hx::hxCreateNumericMatrix(1, 2, hx::hxInt32, hx::hxReal);
  const auto text = host::raised([&] { host::set(mode, "Value", host::HostValue::ofArray(two)); });
  hx::hxDestroyArray(two);
  EXPECT_NE(text.find(k7q::getTooManyElementsMessage()), std::string::npos) << text;
  EXPECT_EQ(hx::hxGetNumber(host::get(mode, "Value").slot().array(), 0), 7);
}

TEST_F(Properties, BooleanStoresTrueForAnyOtherNumberThanZero) {
  const auto base = make("common.ReferenceBase");
  for (const double value : {2.0, -0.5, 1e300}) {
    host::set(base, "IsDefault", host::logical(false));
    host::set(base, "IsDefault", host::number(value));
    EXPECT_TRUE(host::get(base, "IsDefault").slot().logical()) << value;
  }
  host::set(base, "IsDefault", host::number(0));
  EXPECT_FALSE(host::get(base, "IsDefault").slot().logical());
}

TEST_F(Properties, IntegerRefusesWhatItCannotHold) {
  const auto error = make("common.ApplicationError");
  host::set(error, "errorCode", host::integer(7));
  for (const double value : {0.5, 2147483648.0, -2147483649.0, std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity()}) {
    EXPECT_THROW(host::set(error, "errorCode", host::number(value)), K7Q::OutOfRange) << value;
  }
  EXPECT_EQ(host::get(error, "errorCode").slot().int32(), 7);
  host::set(error, "errorCode", host::integer(std::numeric_limits<std::int32_t>::min()));
  EXPECT_EQ(host::get(error, "errorCode").slot().int32(), std::numeric_limits<std::int32_t>::min());
}

TEST_F(Properties, RequiredOnesReadAsTheirDefaults) {
  EXPECT_FALSE(host::get(make("common.ReferenceBase"), "IsDefault").slot().logical());
  EXPECT_EQ(host::get(make("common.ApplicationError"), "errorCode").slot().int32(), 0);
  EXPECT_EQ(host::get(make("variant.SystemConstValue"), "Value").slot().number(), 0.0);
  EXPECT_EQ(host::getText(make("common.SymbolProps"), "Symbol"), "");
  EXPECT_EQ(host::getObject(make("common.ReferenceBase"), "Package"), nullptr);
  const auto kind = host::getObject(make("variant.ConditionByFormula"), "BindingTime");
  EXPECT_EQ(host::textOf(host::call(kind, "toString")), "SystemDesignTime");
}

TEST_F(Properties, RefusalsComeInTheirOrderWhateverTheValue) {
  const auto package = make("common.Package");
  const auto view = immutable(package);
  EXPECT_NE(host::raised([&] {
              host::set(view, "ReferenceBase", host::number(1));
            }).find("Assertion failed: You cannot set a multi-valued property at "),
            std::string::npos);
  const auto many = host::raised([&] { host::set(package, "OwnedElement", host::number(1)); });
  EXPECT_NE(many.find("You cannot set a multi-valued property"), std::string::npos) << many;
  const auto readOnly = host::raised([&] { host::set(view, "Owner", host::number(1)); });
  EXPECT_NE(readOnly.find("You cannot set a read-only property"), std::string::npos) << readOnly;
  const auto prohibited = host::raised([] { K7Q::mi::K7qmiProperty::throwSetProhibitedException(); });
  EXPECT_EQ(host::raised([&] { host::set(view, "category", host::number(1)); }), prohibited);
}

TEST_F(Properties, RecordRefusesInTheSameOrderWithoutAHost) {
  const auto view = immutable(make("common.Package"));
  EXPECT_NE(host::raised([&] {
              record(view, "ReferenceBase").setValue(view, ruvo::RVOValue());
            }).find("You cannot set a multi-valued property"),
            std::string::npos);
  const auto prohibited = host::raised([] { K7Q::mi::K7qmiProperty::throwSetProhibitedException(); });
  EXPECT_EQ(host::raised([&] { record(view, "category").setValue(view, ruvo::RVOValue()); }), prohibited);
}

TEST_F(Properties, StringRecordReportsCharWhateverTheRow) {
  const auto package = make("common.Package");
  EXPECT_EQ(record(package, "category").getDataType().view(), "char");
  EXPECT_EQ(record(make("documentation.DocRevision"), "date").getDataType().view(), "char");
}

TEST_F(Properties, InvertedPredicateFollowsTheAttribute) {
  EXPECT_FALSE(record(make("common.Package"), "category").predicate25());
  EXPECT_TRUE(record(make("common.SymbolProps"), "Symbol").predicate25());
}

TEST_F(Properties, ReferencesFollowTheHandleTheyAreReadThrough) {
  const auto base = make("common.ReferenceBase");
  const auto package = make("common.Package");
  host::set(base, "Package", host::object(package));
  EXPECT_EQ(host::getObject(base, "Package"), package);
  const auto seen = host::getObject(immutable(base), "Package");
  EXPECT_EQ(host::className(seen), "Tarvelon.metamodel.arplatform.common.ImmutablePackage");
}

TEST_F(Properties, SequencesFollowTheHandleTheyAreReadThrough) {
  const auto package = make("common.Package");
  EXPECT_EQ(host::className(host::getObject(package, "ReferenceBase")),
            "Tarvelon.metamodel.arplatform.common.SequenceOfReferenceBase");
  EXPECT_EQ(host::className(host::getObject(immutable(package), "ReferenceBase")),
            "Tarvelon.metamodel.arplatform.common.ImmutableSequenceOfImmutableReferenceBase");
  EXPECT_EQ(host::className(host::getObject(package, "OwnedElement")),
            "Tarvelon.metamodel.foundation.ImmutableSequenceOfElement");
}

TEST_F(Properties, TwoViewsOfOneListAreTwoSequences) {
  const auto package = make("common.Package");
  EXPECT_NE(host::getObject(package, "ReferenceBase"), host::getObject(package, "ReferenceBase"));
}

TEST_F(Properties, RequiredReferenceRefusesNothing) {
  const auto base = make("common.ReferenceBase");
  const auto package = make("common.Package");
  host::set(base, "Package", host::object(package));
  EXPECT_THROW(host::set(base, "Package", host::nothing()), K7Q::WrongValue);
  EXPECT_EQ(host::getObject(base, "Package"), package);
}

TEST_F(Properties, ReferenceRefusesAnotherClassAndAnotherModel) {
  const auto base = make("common.ReferenceBase");
  EXPECT_THROW(host::set(base, "Package", host::object(make("common.Sdg"))), K7Q::WrongType);
  const auto other = host::newModel();
  const auto foreign = host::make("common.Package", {host::object(other)});
  EXPECT_THROW(host::set(base, "Package", host::object(foreign)), K7Q::WrongValue);
  EXPECT_EQ(host::getObject(base, "Package"), nullptr);
}

TEST_F(Properties, RedefinitionSharesTheStorage) {
  const auto sd = make("common.Sd");
  host::set(sd, "Value", host::text(u"42"));
  EXPECT_EQ(host::getText(sd, "Body"), "42");
  host::set(sd, "Body", host::text(u"43"));
  EXPECT_EQ(host::getText(sd, "Value"), "43");
}

TEST_F(Properties, OfAPackageYetToComeReadEmptyAndRefuse) {
  const auto method = make("common.SwAddrMethod");
  EXPECT_EQ(host::getObject(method, "SectionType"), nullptr);
  const auto kind = host::callStatic("variant.BindingTimeKind", "LinkTime");
  EXPECT_THROW(host::set(method, "SectionType", host::HostValue::ofObject(kind.object())), K7Q::Exception);
  const auto point = make("variant.VariationPoint");
  EXPECT_EQ(host::getObject(point, "VariationPoint"), nullptr);
  EXPECT_THROW(host::set(point, "VariationPoint", host::object(make("common.Sdg"))), K7Q::Exception);
}

TEST_F(Properties, StringSequenceIsChangedThroughItself) {
  const auto value = make("variant.SystemConstValue");
  const auto points = host::getObject(value, "ValueVariationPoint");
  EXPECT_EQ(host::className(points), "K7Q.SequenceOfString");
  host::call(points, "push_back", {host::text(u"a + 1")});
  EXPECT_EQ(host::call(host::getObject(value, "ValueVariationPoint"), "size").slot().int32(), 1);
}

TEST_F(Properties, UnknownNameOffersTheNearest) {
  const auto base = make("common.ReferenceBase");
  EXPECT_NE(host::raised([&] { host::get(base, "ShortLabl"); }).find("did you mean 'ShortLabel'?"),
            std::string::npos);
  EXPECT_THROW(host::set(base, "ShortLabl", host::text(u"x")), K7Q::UnknownName);
}

}  // namespace
