#include "tests/factory/Support.h"

using namespace factory;

namespace {

constexpr const char* kFactory = "Tarvelon.metamodel.arplatform.Factory";
constexpr const char* kImmutableFactory = "Tarvelon.metamodel.arplatform.ImmutableFactory";

class Conversions : public Factories {
 protected:
  static RVOInterfacePtr immutableOf(const RVOInterfacePtr& object) {
    return RVOInterfacePtr(host::callStatic("ImmutableFactory", "cast", {host::object(object)}).object());
  }
  static bool compare(const char* how, const RVOInterfacePtr& left, const RVOInterfacePtr& right) {
    return host::call(left, how, {host::object(right)}).slot().logical();
  }
  /// The results of eq, ne, gt, ge, lt, le as a text of digits.
  static std::string compareAll(const RVOInterfacePtr& left, const RVOInterfacePtr& right) {
    std::string all;
    for (const char* how : {"eq", "ne", "gt", "ge", "lt", "le"}) all += compare(how, left, right) ? '1' : '0';
    return all;
  }
};

constexpr const char* kEqual = "100101";
constexpr const char* kLess = "010011";
constexpr const char* kGreater = "011100";

TEST_F(Conversions, FactoryIsAFactoryObject) {
  const auto names = host::cls("Factory").superClassNames();
  ASSERT_EQ(names.size(), 1U);
  EXPECT_EQ(names[0].view(), "K7Q.FactoryObject");
  EXPECT_STREQ(host::cls("Factory").info().getDescription(),
               "An implementation of the factory design pattern");
  ASSERT_EQ(host::cls("ImmutableFactory").superClassNames().size(), 1U);
  EXPECT_EQ(host::cls("ImmutableFactory").superClassNames()[0].view(), "K7Q.ImmutableFactoryObject");
  EXPECT_STREQ(host::cls("ImmutableFactory").info().getDescription(),
               "An implementation of the factory design pattern");
}

TEST_F(Conversions, FactoryGoesOutUnderItsLiteralClass) { EXPECT_EQ(host::className(mFactory), kFactory); }

TEST_F(Conversions, CastGivesTheSameFactory) {
  EXPECT_EQ(RVOInterfacePtr(host::callStatic("Factory", "cast", {host::object(mFactory)}).object()),
            mFactory);
  const auto frozen = readOnlyFactory();
  const RVOInterfacePtr cast(host::callStatic("Factory", "cast", {host::object(frozen)}).object());
  EXPECT_EQ(cast, frozen) << "the deviant stays";
}

TEST_F(Conversions, CastOfWhatIsNoFactoryIsEmpty) {
  const auto package = create("commonPackage");
  for (const char* cls : {"Factory", "ImmutableFactory"}) {
    for (const auto& value : {host::object(package), host::object(mModel), host::nothing()}) {
      const auto cast = host::callStatic(cls, "cast", {value});
      ASSERT_TRUE(cast.isArray());
      EXPECT_EQ(cast.object(), nullptr);
      EXPECT_EQ(std::string(hx::hxGetClassName(cast.slot().array())),
                std::string("Tarvelon.metamodel.arplatform.") + cls);
    }
  }
}

TEST_F(Conversions, ToWiderHandlesGiveTheSameObject) {
  for (const char* how : {"toK7QObject", "toK7QFactoryObject"}) {
    const auto wide = host::callObject(mFactory, how);
    EXPECT_EQ(wide, mFactory) << how;
    EXPECT_EQ(nativeOf(wide).object, nativeOf(mFactory).object);
  }
  const auto immutable = immutableOf(mFactory);
  for (const char* how : {"toK7QImmutableObject", "toK7QImmutableFactoryObject"}) {
    EXPECT_EQ(host::callObject(immutable, how), immutable) << how;
  }
}

TEST_F(Conversions, ImmutableFactoryIsAnotherViewOfTheSameObject) {
  const auto immutable = immutableOf(mFactory);
  EXPECT_EQ(host::className(immutable), kImmutableFactory);
  EXPECT_NE(immutable, mFactory);
  EXPECT_EQ(nativeOf(immutable).object, nativeOf(mFactory).object);
}

TEST_F(Conversions, ImmutableFactoryMakesNothing) {
  for (const auto* each : host::cls("ImmutableFactory").methods()) {
    EXPECT_FALSE(each->getName().view().starts_with("create")) << each->getName().view();
  }
  EXPECT_EQ(host::cls("ImmutableFactory").methods().size(), 10U);
}

TEST_F(Conversions, ComparisonsTakeTheirObjectAsAnArgument) {
  const auto records = host::cls("ImmutableFactory").methods();
  const char* const names[] = {"eq", "ne", "gt", "ge", "lt", "le"};
  for (std::size_t i = 0; i < 6; ++i) {
    const auto& each = *records[i];
    EXPECT_EQ(each.getName().view(), names[i]);
    EXPECT_EQ(each.getFlags(), 4096U);
    EXPECT_TRUE(each.getSignature()->self().empty());
    ASSERT_EQ(each.getSignature()->arguments().size(), 2U);
    EXPECT_EQ(each.getSignature()->arguments()[0].view(), kImmutableFactory);
    EXPECT_EQ(each.getSignature()->arguments()[1].view(), kImmutableFactory);
    EXPECT_EQ(each.getSignature()->result().view(), "logical scalar");
  }
}

TEST_F(Conversions, ComparisonsCanBeCalledBothWays) {
  const auto factory = immutableOf(mFactory);
  EXPECT_TRUE(host::call(factory, "eq", {host::object(factory)}).slot().logical());
  EXPECT_TRUE(host::callStatic("ImmutableFactory", "eq", {host::object(factory), host::object(factory)})
                  .slot()
                  .logical());
}

TEST_F(Conversions, FactoryEqualsItself) {
  const auto factory = immutableOf(mFactory);
  EXPECT_EQ(compareAll(factory, factory), kEqual);
  EXPECT_EQ(compareAll(factory, immutableOf(mFactory)), kEqual);
}

TEST_F(Conversions, FactoriesAreOrderedByObject) {
  auto first = immutableOf(mFactory);
  auto second = immutableOf(factoryOf(mModel));
  if (nativeOf(first).object > nativeOf(second).object) std::swap(first, second);
  EXPECT_EQ(compareAll(first, second), kLess);
  EXPECT_EQ(compareAll(second, first), kGreater);
}

TEST_F(Conversions, FactoriesOfOneObjectAreOrderedByDeviant) {
  const auto writable = immutableOf(mFactory);
  const auto frozen = immutableOf(readOnlyFactory());
  ASSERT_EQ(nativeOf(writable).object, nativeOf(frozen).object);
  EXPECT_EQ(compareAll(writable, frozen), kLess);
  EXPECT_EQ(compareAll(frozen, writable), kGreater);
}

TEST_F(Conversions, ObjectComesBeforeDeviant) {
  auto first = factoryOf(mModel);
  auto second = factoryOf(mModel);
  if (nativeOf(first).object > nativeOf(second).object) std::swap(first, second);
  const auto frozen = host::callObject(mModel, "frozen");
  const auto frozenFirst = host::callObject(first, "asDeviant", {host::object(frozen)});
  EXPECT_EQ(compareAll(immutableOf(frozenFirst), immutableOf(second)), kLess);
}

TEST_F(Conversions, EmptyFactoryAsSelfIsRefused) {
  const auto factory = box(immutableOf(mFactory));
  const auto none = empty();
  for (const char* how : {"eq", "ne", "gt", "ge", "lt", "le"}) {
    EXPECT_EQ(raised([&] {
                invoke(record("ImmutableFactory", how), {&none, &factory});
              }),
              "method '" + std::string(how) + "': expected an object to call it on, got an empty value");
  }
  EXPECT_FALSE(invoke(record("ImmutableFactory", "eq"), {&factory, &none}).logical());
  EXPECT_TRUE(invoke(record("ImmutableFactory", "gt"), {&factory, &none}).logical());
  for (const char* how : {"toK7QImmutableObject", "toK7QImmutableFactoryObject"}) {
    EXPECT_NE(raised([&] { invoke(record("ImmutableFactory", how), {&none}); }).find("got an empty value"),
              std::string::npos);
  }
}

TEST_F(Conversions, CastIsStaticWithItsParameterNamedOther) {
  for (const char* cls : {"Factory", "ImmutableFactory"}) {
    for (const std::size_t index : {0U, 1U}) {
      const auto& cast = record(cls, "cast", index);
      EXPECT_EQ(cast.getFlags(), 8U);
      EXPECT_STREQ(cast.getSignature()->parameterNames(), "other");
      EXPECT_TRUE(cast.getSignature()->self().empty());
    }
  }
  EXPECT_EQ(record("Factory", "cast", 0).getSignature()->arguments()[0].view(), "K7Q.Object");
  EXPECT_EQ(record("Factory", "cast", 1).getSignature()->arguments()[0].view(), "K7Q.FactoryObject");
  EXPECT_EQ(record("ImmutableFactory", "cast", 0).getSignature()->arguments()[0].view(),
            "K7Q.ImmutableObject");
  EXPECT_EQ(record("ImmutableFactory", "cast", 1).getSignature()->arguments()[0].view(),
            "K7Q.ImmutableFactoryObject");
}

TEST_F(Conversions, FactoryAnswersWhatFactoryObjectsDo) {
  EXPECT_TRUE(host::call(mFactory, "isvalid").slot().logical());
  EXPECT_EQ(host::callObject(mFactory, "getModel"), mModel);
  const auto frozen = readOnlyFactory();
  EXPECT_EQ(host::className(frozen), kFactory);
  EXPECT_NE(frozen, mFactory);
  EXPECT_EQ(nativeOf(frozen).object, nativeOf(mFactory).object);
  EXPECT_EQ(nativeOf(frozen).deviant.word, K7Q::Deviant::kFrozen);
}

}  // namespace
