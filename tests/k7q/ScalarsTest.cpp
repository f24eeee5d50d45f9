#include <limits>

#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tests/support/Host.h"

using host::raised;
using K7Q::Boolean;
using K7Q::Double;
using K7Q::Integer;
using K7Q::Object;
using K7Q::Real;

TEST(Scalars, ComeBackFromTheirObjectForm) {
  EXPECT_EQ(Boolean(Object(Boolean(true))), true);
  EXPECT_EQ(Integer(Object(Integer(std::numeric_limits<int>::min()))), std::numeric_limits<int>::min());
  EXPECT_EQ(Integer(Object(Integer(-1))), -1);
  EXPECT_EQ(Double(Object(Double(-0.25))), -0.25);
  EXPECT_EQ(Real(Object(Real(1e300))), 1e300);
}

TEST(Scalars, AreNothingForAnEmptyObject) {
  EXPECT_EQ(Boolean(Object()), false);
  EXPECT_EQ(Integer(Object()), 0);
  EXPECT_EQ(Double(Object()), 0.0);
  EXPECT_EQ(Real(Object()), 0.0);
}

TEST(Scalars, ConvertIntoEachOtherWhenExact) {
  EXPECT_EQ(Integer(Object(Double(7))), 7);
  EXPECT_EQ(Integer(Object(Boolean(true))), 1);
  EXPECT_EQ(Double(Object(Integer(-7))), -7.0);
  EXPECT_EQ(Real(Object(Double(0.5))), 0.5);
  EXPECT_EQ(Boolean(Object(Integer(2))), true);
  EXPECT_EQ(Boolean(Object(Double(0))), false);
}

TEST(Scalars, RefuseANumberThatDoesNotFit) {
  EXPECT_THROW(Integer{Object(Double(0.5))}, K7Q::OutOfRange);
  EXPECT_THROW(Integer{Object(Double(2147483648.0))}, K7Q::OutOfRange);
  const Object nan = Double(std::numeric_limits<double>::quiet_NaN());
  EXPECT_THROW(Integer{nan}, K7Q::OutOfRange);
  EXPECT_EQ(raised([] { Integer(Object(Double(0.5))); }),
            "value: expected int32 scalar, got double scalar 0.5");
}

TEST(Scalars, RefuseAnObjectThatIsNoNumber) {
  const Object text = K7Q::String(u"7");
  EXPECT_THROW(Boolean{text}, K7Q::WrongType);
  EXPECT_THROW(Integer{text}, K7Q::WrongType);
  EXPECT_THROW(Double{text}, K7Q::WrongType);
  EXPECT_THROW(Real{text}, K7Q::WrongType);
  EXPECT_EQ(raised([&text] { Integer{text}; }),
            "value: expected int32 scalar, got an object of class K7Q.String");
}

TEST(Scalars, DescribeTheirType) {
  const Object object = Integer(1);
  const auto type = object.getInterface()->getMetaType(object.getDeviant());
  const auto& description = dynamic_cast<const K7Q::NSInterface::DataTypeIntf&>(*type.getInterface());
  EXPECT_EQ(description.name(), u"Integer");
  EXPECT_EQ(description.fullName().view(), "K7Q.Integer");
  EXPECT_TRUE(description.literals().empty());
  EXPECT_EQ(object.getInterface()->getRuvoName(true).view(), "K7Q.Integer");
  EXPECT_EQ(description.getRuvoName(false).view(), "K7Q.ImmutableDataType");
}
