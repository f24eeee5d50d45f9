#include <limits>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo::testing {
namespace {

class MatchingTest : public RuvoTest {
 protected:
  MatchingTest() {
    addClass("A");
    addClass("B", [this](Definition& x) { x.base(full("A")); });
    addClass("C", [this](Definition& x) { x.base(full("B")); });
    addClass("Other");
  }

  /// A class with overloads of the static method f, one for each list of types. The n-th one returns n.
  Class& overloaded(std::vector<std::vector<std::string>> lists) {
    return addClass(uniqueName("Overloaded"), [lists](Definition& x) {
      std::int32_t n = 0;
      for (const auto& types : lists) {
        switch (types.size()) {
          case 0:
            x.staticMethod("f", {}, giving(++n), 0, "int32 scalar");
            break;
          case 1:
            x.staticMethod("f", {types[0].c_str()}, giving(++n), 0, "int32 scalar");
            break;
          default:
            x.staticMethod("f", {types[0].c_str(), types[1].c_str()}, giving(++n), 0, "int32 scalar");
            break;
        }
      }
    });
  }

  static std::int32_t chosen(Class& cls, const Arguments& arguments) {
    return callStatic(cls, "f", arguments).slot().int32();
  }

  HostValue objectOf(const std::string& name) {
    mNatives.push_back(std::make_unique<Native>());
    mObjects.push_back(object(Class::get(full(name)), *mNatives.back()));
    return testing::object(mObjects.back());
  }
  HostValue immutableOf(const std::string& name) {
    mNatives.push_back(std::make_unique<Native>());
    mObjects.push_back(object(Class::get(full(name)), *mNatives.back(), true));
    return testing::object(mObjects.back());
  }

  void TearDown() override { mObjects.clear(); }

 private:
  std::vector<std::unique_ptr<Native>> mNatives;
  std::vector<RVOInterfacePtr> mObjects;
};

TEST_F(MatchingTest, CountOfArgumentsComesFirst) {
  Class& cls = overloaded({{}, {"char"}, {"char", "char"}});
  EXPECT_EQ(chosen(cls, {}), 1);
  EXPECT_EQ(chosen(cls, {text(u"a")}), 2);
  EXPECT_EQ(chosen(cls, {text(u"a"), text(u"b")}), 3);
}

TEST_F(MatchingTest, ExactClassGoesBeforeASuperclass) {
  Class& cls = overloaded({{full("A")}, {full("B")}, {full("C")}});
  EXPECT_EQ(chosen(cls, {objectOf("A")}), 1);
  EXPECT_EQ(chosen(cls, {objectOf("B")}), 2);
  EXPECT_EQ(chosen(cls, {objectOf("C")}), 3);
}

TEST_F(MatchingTest, NearerSuperclassGoesBeforeAFartherOne) {
  EXPECT_EQ(chosen(overloaded({{full("A")}, {full("B")}}), {objectOf("C")}), 2);
}

TEST_F(MatchingTest, DistancesAreAddedUp) {
  Class& cls = overloaded({{full("A"), full("C")}, {full("B"), full("B")}, {full("B"), full("C")}});
  EXPECT_EQ(chosen(cls, {objectOf("C"), objectOf("C")}), 3);
}

TEST_F(MatchingTest, AnExactClassGoesBeforeASmallerSumOfDistances) {
  // Distances 1 + 1 compared with 2 + 0.
  EXPECT_EQ(
      chosen(overloaded({{full("B"), full("B")}, {full("A"), full("C")}}), {objectOf("C"), objectOf("C")}),
      2);
}

TEST_F(MatchingTest, OrderOfRegistrationDecidesLast) {
  EXPECT_EQ(chosen(overloaded({{"char vector"}, {"char"}}), {text(u"a")}), 1);
}

TEST_F(MatchingTest, NearerRecordGoesBeforeAnEqualOneOfASuperclass) {
  addClass("Far", [](Definition& x) { x.staticMethod("f", {"char"}, giving(1), 0, "int32 scalar"); });
  Class& cls = addClass("Near", [this](Definition& x) {
    x.base(full("Far"));
    x.staticMethod("f", {"char"}, giving(2), 0, "int32 scalar");
  });
  EXPECT_EQ(chosen(cls, {text(u"a")}), 2);
}

TEST_F(MatchingTest, BetterMatchOfASuperclassGoesBeforeANearerRecord) {
  addClass("Far",
           [this](Definition& x) { x.staticMethod("f", {full("C").c_str()}, giving(1), 0, "int32 scalar"); });
  Class& cls = addClass("Near", [this](Definition& x) {
    x.base(full("Far"));
    x.staticMethod("f", {full("A").c_str()}, giving(2), 0, "int32 scalar");
  });
  EXPECT_EQ(chosen(cls, {objectOf("C")}), 1);
}

TEST_F(MatchingTest, ObjectOfAnotherClassFitsNothing) {
  Class& cls = overloaded({{full("A")}});
  EXPECT_EQ(errorOf<K7Q::WrongType>([&] { chosen(cls, {objectOf("Other")}); }),
            std::string(cls.shortName()) + ".f: no signature takes (" + full("Other") +
                "); there is\n    f(" + full("A") + ")");
}

TEST_F(MatchingTest, NoObjectFitsEveryClassAndNoText) {
  Class& cls = overloaded({{"char vector"}, {"double scalar"}, {full("A")}});
  EXPECT_EQ(chosen(cls, {HostValue()}), 3);
  EXPECT_EQ(chosen(overloaded({{full("Unknown")}}), {HostValue()}), 1);
  EXPECT_THROW(chosen(overloaded({{"char vector"}}), {HostValue()}), K7Q::WrongType);
  EXPECT_THROW(chosen(overloaded({{"logical scalar"}}), {HostValue()}), K7Q::WrongType);
}

TEST_F(MatchingTest, EmptyArrayIsNoObject) {
  const hx::ArrayPtr objects(hx::hxCreateObjectMatrix(0, 0, "X"));
  const hx::ArrayPtr numbers(hx::hxCreateNumericMatrix(0, 0, hx::hxDouble, hx::hxReal));
  const hx::ArrayPtr characters(hx::hxCreateString_UTF16(u""));
  Class& cls = overloaded({{full("A")}});
  for (const auto* array : {objects.get(), numbers.get(), characters.get()}) {
    EXPECT_EQ(chosen(cls, {HostValue::ofArray(array)}), 1);
  }
  EXPECT_EQ(chosen(overloaded({{full("A")}, {"char"}}), {HostValue::ofArray(characters.get())}), 1)
      << "an empty text fits both, so the one registered first";
  EXPECT_EQ(chosen(overloaded({{"char"}}), {HostValue::ofArray(characters.get())}), 1);
  EXPECT_THROW(chosen(overloaded({{"char"}}), {HostValue::ofArray(numbers.get())}), K7Q::WrongType);
}

TEST_F(MatchingTest, EveryObjectIsAnImmutableObjectAndTheOthersAreObjects) {
  Class& mutables = overloaded({{"K7Q.Object"}});
  Class& all = overloaded({{"K7Q.ImmutableObject"}});
  EXPECT_EQ(chosen(mutables, {objectOf("A")}), 1);
  EXPECT_EQ(chosen(all, {objectOf("A")}), 1);
  EXPECT_EQ(chosen(all, {immutableOf("A")}), 1);
  EXPECT_THROW(chosen(mutables, {immutableOf("A")}), K7Q::WrongType);
}

TEST_F(MatchingTest, ObjectGoesBeforeImmutableObjectAndBothBehindEveryClass) {
  Class& cls = overloaded({{"K7Q.ImmutableObject"}, {"K7Q.Object"}, {full("A")}});
  EXPECT_EQ(chosen(cls, {objectOf("Other")}), 2);
  EXPECT_EQ(chosen(cls, {immutableOf("Other")}), 1);
  EXPECT_EQ(chosen(cls, {objectOf("C")}), 3);
}

TEST_F(MatchingTest, ObjectAsSelfTypeTakesWhatIsNotImmutable) {
  Class& cls = addClass("X", [](Definition& x) {
    x.method("f", {}, giving(1), 0, "K7Q.Object", "int32 scalar");
    x.method("f", {}, giving(2), 0, "K7Q.ImmutableObject", "int32 scalar");
  });
  Native native;
  const auto writable = object(cls, native);
  const auto readable = object(cls, native, true);
  EXPECT_EQ(call(writable, "f", {}).slot().int32(), 1);
  EXPECT_EQ(call(readable, "f", {}).slot().int32(), 2);
}

TEST_F(MatchingTest, ExactKindOfNumberGoesFirst) {
  Class& cls = overloaded({{"double scalar"}, {"int32 scalar"}, {"logical scalar"}});
  EXPECT_EQ(chosen(cls, {number(2)}), 1);
  EXPECT_EQ(chosen(cls, {integer(2)}), 2);
  EXPECT_EQ(chosen(cls, {logical(true)}), 3);
}

TEST_F(MatchingTest, IntegerOutOfInt32IsADoubleWhereThatIsPossible) {
  Class& cls = overloaded({{"int32 scalar"}, {"double scalar"}});
  EXPECT_EQ(chosen(cls, {integer(3'000'000'000)}), 2);
  EXPECT_EQ(chosen(cls, {integer(7)}), 1);
}

TEST_F(MatchingTest, NumberAloneOutOfRangeIsTold) {
  Class& cls = overloaded({{"char", "int32 scalar"}, {"char", full("A")}});
  const std::string head =
      std::string(cls.shortName()) +
      ".f, argument 2: expected int32 scalar (a whole number from -2147483648 to 2147483647), got ";
  EXPECT_EQ(errorOf<K7Q::OutOfRange>([&] {
              chosen(cls, {text(u"a"), number(0.5)});
            }),
            head + "double scalar 0.5");
  EXPECT_EQ(errorOf<K7Q::OutOfRange>([&] {
              chosen(cls, {text(u"a"), integer(2147483648)});
            }),
            head + "whole number 2147483648");
  EXPECT_EQ(errorOf<K7Q::OutOfRange>([&] {
              chosen(cls, {text(u"a"), number(std::numeric_limits<double>::quiet_NaN())});
            }),
            head + "double scalar nan");
}

TEST_F(MatchingTest, WrongKindIsToldBeforeANumberOutOfRange) {
  Class& cls = overloaded({{"char", "int32 scalar"}});
  EXPECT_THROW(chosen(cls, {number(1), number(0.5)}), K7Q::WrongType);
  EXPECT_THROW(chosen(overloaded({{"int32 scalar", "char"}}), {number(0.5), number(1)}), K7Q::WrongType);
}

TEST_F(MatchingTest, SeveralNumbersFitNoScalar) {
  const hx::ArrayPtr numbers(hx::hxCreateNumericMatrix(1, 2, hx::hxDouble, hx::hxReal));
  Class& cls = overloaded({{"double scalar"}});
  EXPECT_EQ(errorOf<K7Q::WrongType>([&] { chosen(cls, {HostValue::ofArray(numbers.get())}); }),
            std::string(cls.shortName()) +
                ".f: no signature takes (double array of 1 by 2); there is\n    f(double scalar)");
}

TEST_F(MatchingTest, SelfThatIsGivenCountsAsAnArgument) {
  Class& cls = addClass("X", [this](Definition& x) {
    x.base(full("A"));
    x.staticMethod("f", {full("A").c_str()}, giving(1), 0, "int32 scalar");
    x.method("f", {}, giving(2), 0, full("X"), "int32 scalar");
  });
  EXPECT_EQ(chosen(cls, {objectOf("X")}), 2);
  EXPECT_EQ(chosen(cls, {objectOf("A")}), 1);
}

}  // namespace
}  // namespace ruvo::testing
