#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo::testing {
namespace {

class ConversionTest : public RuvoTest {
 protected:
  /// The slot for a value, in a record with one parameter of type `type`.
  std::uint64_t wordOf(const char* type, const HostValue& value) {
    std::uint64_t word = 0;
    Class& cls = addClass(uniqueName("Taking"), [&](Definition& x) {
      x.staticMethod("f", {type},
                     [&](std::uint32_t&, RVOValue*, int, const RVOValue* slots) { word = slots[0].word(); });
    });
    callStatic(cls, "f", Arguments{value});
    return word;
  }
  std::int32_t int32Of(const HostValue& value) {
    return RVOValue::ofWord(wordOf("int32 scalar", value)).int32();
  }
  double doubleOf(const HostValue& value) {
    return RVOValue::ofWord(wordOf("double scalar", value)).number();
  }
  bool logicalOf(const HostValue& value) { return wordOf("logical scalar", value) == 1; }
};

constexpr auto kMin = std::numeric_limits<std::int32_t>::min();
constexpr auto kMax = std::numeric_limits<std::int32_t>::max();
constexpr auto kInfinity = std::numeric_limits<double>::infinity();
constexpr auto kNan = std::numeric_limits<double>::quiet_NaN();

TEST_F(ConversionTest, AnyNumberIsALogicalTrueWhenNotZero) {
  EXPECT_TRUE(logicalOf(logical(true)));
  EXPECT_FALSE(logicalOf(logical(false)));
  EXPECT_TRUE(logicalOf(integer(2)));
  EXPECT_FALSE(logicalOf(integer(0)));
  EXPECT_TRUE(logicalOf(integer(std::numeric_limits<std::int64_t>::max())));
  EXPECT_TRUE(logicalOf(number(0.5)));
  EXPECT_FALSE(logicalOf(number(-0.0)));
  EXPECT_TRUE(logicalOf(number(kNan)));
}

TEST_F(ConversionTest, WholeNumbersOf32BitsAreInt32) {
  EXPECT_EQ(int32Of(integer(kMin)), kMin);
  EXPECT_EQ(int32Of(integer(kMax)), kMax);
  EXPECT_EQ(int32Of(number(kMin)), kMin);
  EXPECT_EQ(int32Of(number(kMax)), kMax);
  EXPECT_EQ(int32Of(number(-0.0)), 0);
  EXPECT_EQ(int32Of(logical(true)), 1);
  EXPECT_EQ(int32Of(logical(false)), 0);
}

TEST_F(ConversionTest, OtherNumbersAreNoInt32) {
  for (const double value :
       {0.5, -0.5, 2147483647.5, 2147483648.0, -2147483649.0, kInfinity, -kInfinity, kNan}) {
    EXPECT_THROW(int32Of(number(value)), K7Q::OutOfRange) << value;
  }
  EXPECT_THROW(int32Of(integer(std::int64_t{kMax} + 1)), K7Q::OutOfRange);
  EXPECT_THROW(int32Of(integer(std::int64_t{kMin} - 1)), K7Q::OutOfRange);
  EXPECT_THROW(int32Of(integer(std::int64_t{1} << 32)), K7Q::OutOfRange);
}

TEST_F(ConversionTest, NumbersThatItHoldsExactlyAreDouble) {
  EXPECT_EQ(doubleOf(number(0.1)), 0.1);
  EXPECT_EQ(doubleOf(number(kInfinity)), kInfinity);
  EXPECT_TRUE(std::isnan(doubleOf(number(kNan))));
  EXPECT_EQ(doubleOf(integer(-3)), -3);
  EXPECT_EQ(doubleOf(integer(std::int64_t{1} << 53)), 0x1p53);
  EXPECT_EQ(doubleOf(integer(std::numeric_limits<std::int64_t>::min())), -0x1p63);
  EXPECT_EQ(doubleOf(logical(true)), 1);
}

TEST_F(ConversionTest, OtherIntegersAreNoDouble) {
  EXPECT_THROW(doubleOf(integer((std::int64_t{1} << 53) + 1)), K7Q::OutOfRange);
  EXPECT_THROW(doubleOf(integer(std::numeric_limits<std::int64_t>::max())), K7Q::OutOfRange);
}

TEST_F(ConversionTest, TextIsNoNumberAndNoNumberIsText) {
  EXPECT_THROW(logicalOf(text(u"yes")), K7Q::WrongType);
  EXPECT_THROW(int32Of(text(u"1")), K7Q::WrongType);
  EXPECT_THROW(wordOf("char", integer(1)), K7Q::WrongType);
  EXPECT_THROW(wordOf("char vector", logical(true)), K7Q::WrongType);
}

TEST_F(ConversionTest, NothingFitsVoid) {
  EXPECT_THROW(wordOf("void", HostValue()), K7Q::WrongType);
  EXPECT_THROW(wordOf("void", integer(1)), K7Q::WrongType);
}

TEST_F(ConversionTest, TextsBecomeCharacterArrays) {
  std::optional<std::u16string> seen;
  Class& cls = addClass("X", [&](Definition& x) {
    x.staticMethod("f", {"char"}, [&](std::uint32_t&, RVOValue*, int, const RVOValue* slots) {
      seen = hx::get_ustring(slots[0].array());
    });
  });
  for (const std::u16string& given :
       {std::u16string(), std::u16string(u"aé€🚗"), std::u16string(u"a\0b", 3)}) {
    callStatic(cls, "f", Arguments{text(given)});
    EXPECT_EQ(seen, given);
  }
}

TEST_F(ConversionTest, NoObjectBecomesTheEmptyArrayOfTheParametersClass) {
  Class& cls = addClass("X", [this](Definition& x) {
    x.staticMethod("f", {full("X").c_str()}, [this](std::uint32_t&, RVOValue*, int, const RVOValue* slots) {
      EXPECT_EQ(hx::hxGetNumberOfElements(slots[0].array()), 0U);
      EXPECT_EQ(hx::hxGetClassId(slots[0].array()), hx::hxObject);
      EXPECT_STREQ(hx::hxGetClassName(slots[0].array()), full("X").c_str());
    });
  });
  callStatic(cls, "f", Arguments{HostValue()});
  callStatic(cls, "f", Arguments{HostValue::ofObject(nullptr)});
}

using HostValueTest = RuvoTest;

TEST_F(HostValueTest, OfAnArrayOfOneIsThatValue) {
  const hx::ArrayPtr boolean(hx::hxCreateLogicalScalar(true));
  const hx::ArrayPtr whole(hx::hxCreateInt32Scalar(-7));
  const hx::ArrayPtr real(hx::hxCreateDoubleScalar(0.5));
  const hx::ArrayPtr characters(hx::hxCreateString_UTF16(u"a"));
  EXPECT_EQ(HostValue::ofArray(boolean.get()).kind(), HostValue::Kind::Logical);
  EXPECT_EQ(HostValue::ofArray(whole.get()).kind(), HostValue::Kind::Integer);
  EXPECT_EQ(HostValue::ofArray(whole.get()).integer(), -7);
  EXPECT_EQ(HostValue::ofArray(real.get()).real(), 0.5);
  EXPECT_EQ(HostValue::ofArray(characters.get()).text(), u"a");
}

TEST_F(HostValueTest, OfAnEmptyArrayIsEmptyAndOfAnEmptyTextTheEmptyText) {
  const hx::ArrayPtr numbers(hx::hxCreateNumericMatrix(0, 5, hx::hxInt32, hx::hxReal));
  const hx::ArrayPtr characters(hx::hxCreateString_UTF16(u""));
  EXPECT_EQ(HostValue::ofArray(nullptr).kind(), HostValue::Kind::Empty);
  EXPECT_EQ(HostValue::ofArray(numbers.get()).kind(), HostValue::Kind::Empty);
  EXPECT_EQ(HostValue::ofArray(characters.get()).kind(), HostValue::Kind::Text);
}

TEST_F(HostValueTest, OfSeveralObjectsIsTheFirst) {
  Class& cls = addClass("X");
  Native native;
  const RVOInterfacePtr first = object(cls, native);
  const hx::ArrayPtr array(hx::hxCreateObjectMatrix(1, 2, "X"));
  EXPECT_EQ(HostValue::ofArray(array.get()).kind(), HostValue::Kind::Empty);
  hx::hxSetElement(array.get(), 0, first);
  EXPECT_EQ(HostValue::ofArray(array.get()).kind(), HostValue::Kind::Object);
  EXPECT_EQ(HostValue::ofArray(array.get()).object(), first);
}

TEST_F(HostValueTest, OfSeveralNumbersIsTheArray) {
  const hx::ArrayPtr numbers(hx::hxCreateNumericMatrix(2, 1, hx::hxInt32, hx::hxReal));
  EXPECT_EQ(HostValue::ofArray(numbers.get()).kind(), HostValue::Kind::Array);
  EXPECT_EQ(HostValue::ofArray(numbers.get()).array(), numbers.get());
}

using HostResultTest = RuvoTest;

TEST_F(HostResultTest, WithoutATypeIsVoid) {
  HostResult result;
  EXPECT_TRUE(result.isVoid());
  EXPECT_FALSE(result.isRaw() || result.isArray());
  EXPECT_EQ(result.object(), nullptr);
  EXPECT_EQ(std::move(result).toArray(), nullptr);
}

TEST_F(HostResultTest, BoxesRawScalars) {
  const hx::ArrayPtr boolean(HostResult(RVOValue::ofLogical(true), InternedName("logical scalar")).toArray());
  const hx::ArrayPtr whole(HostResult(RVOValue::ofInt32(-7), InternedName("int32 scalar")).toArray());
  const hx::ArrayPtr real(HostResult(RVOValue::ofDouble(0.5), InternedName("double scalar")).toArray());
  EXPECT_EQ(hx::hxGetClassId(boolean.get()), hx::hxLogical);
  EXPECT_EQ(hx::hxGetNumber(whole.get(), 0), -7);
  EXPECT_EQ(hx::hxGetNumber(real.get(), 0), 0.5);
}

TEST_F(HostResultTest, HandsItsArrayOver) {
  hx::hxArray* array = hx::hxCreateString_UTF16(u"a");
  HostResult result(RVOValue(array), InternedName("char"));
  const hx::ArrayPtr taken(std::move(result).toArray());
  EXPECT_EQ(taken.get(), array);
}

TEST_F(HostResultTest, MovesItsArray) {
  HostResult first(RVOValue(hx::hxCreateString_UTF16(u"a")), InternedName("char"));
  HostResult second(std::move(first));
  EXPECT_TRUE(first.isVoid());  // NOLINT(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
  first = std::move(second);
  EXPECT_TRUE(first.isArray());
  EXPECT_EQ(first.object(), nullptr) << "a text is no object";
}

}  // namespace
}  // namespace ruvo::testing
