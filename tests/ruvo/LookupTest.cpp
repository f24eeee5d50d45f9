#include "tests/ruvo/Fixture.h"

namespace ruvo::testing {
namespace {

class LookupTest : public RuvoTest {
 protected:
  /// Calls the overloads of a name in the order of the candidates, and returns their results.
  static std::vector<int> candidates(Class& cls, std::string_view name) {
    std::vector<int> numbers;
    const OverloadSet* set = cls.findMethods(name);
    if (!set) return numbers;
    for (const RVOMethodInfo* record : set->candidates) {
      std::uint32_t count = 0;
      RVOValue result;
      record->invoke(nullptr, count, &result, 0, nullptr);
      numbers.push_back(result.int32());
    }
    return numbers;
  }
};

TEST_F(LookupTest, FindsNothingUnderAnUnknownName) {
  Class& cls = addClass("X");
  EXPECT_EQ(cls.findProperty("p"), nullptr);
  EXPECT_EQ(cls.findProperty(""), nullptr);
  EXPECT_EQ(cls.findProperty(InternedName()), nullptr);
  EXPECT_EQ(cls.findMethods("f"), nullptr);
  EXPECT_EQ(cls.findMethods(InternedName()), nullptr);
  EXPECT_EQ(cls.findMethods(InternedName("f")), nullptr);
}

TEST_F(LookupTest, FindsANameThatTheDefinitionIsTheFirstToIntern) {
  const std::string name = uniqueName("a member of its own ");
  addClass("Base", [&](Definition& x) { x.property(InternedName(std::string_view(name)).c_str(), "char"); });
  Class& cls = addClass("X", [&](Definition& x) { x.base(full("Base")).staticMethod(name + "()", {}, {}); });
  EXPECT_NE(cls.findMethods(name + "()"), nullptr);
  EXPECT_NE(cls.findProperty(name), nullptr);
}

TEST_F(LookupTest, LookingForAnUnknownNameInternsNothing) {
  Class& cls = addClass("X");
  cls.findProperty("p");
  const std::string unknown = uniqueName("nobody's member ");
  const std::size_t before = internal::internedCount();
  cls.findProperty(unknown);
  cls.findMethods(unknown);
  EXPECT_EQ(internal::internedCount(), before);
}

TEST_F(LookupTest, FindsInheritedPropertiesNearestFirst) {
  Class& base = addClass("Base", [](Definition& x) {
    x.property("p", "char");
    x.property("q", "char");
  });
  Class& cls = addClass("X", [&](Definition& x) {
    x.base(full("Base"));
    x.property("p", "int32 scalar");
  });
  EXPECT_EQ(cls.findProperty("p")->owner, &cls);
  EXPECT_EQ(cls.findProperty("q")->owner, &base);
  EXPECT_EQ(base.findProperty("p")->owner, &base);
  EXPECT_EQ(cls.findProperty("q"), &base.properties()[1]) << "a slot is its owner's";
  EXPECT_EQ(cls.findProperty(InternedName("q")), cls.findProperty("q"));
}

TEST_F(LookupTest, GathersInheritedMethodsNearestFirstInOrderOfRegistration) {
  addClass("A", [](Definition& x) { x.staticMethod("f", {}, giving(5)).staticMethod("g", {}, giving(6)); });
  addClass("B", [this](Definition& x) { x.base(full("A")).staticMethod("f", {"char"}, giving(3)); });
  addClass("C", [this](Definition& x) { x.base(full("A")).staticMethod("f", {"char"}, giving(4)); });
  Class& cls = addClass("X", [this](Definition& x) {
    x.base(full("B")).base(full("C"));
    x.staticMethod("f", {}, giving(1)).staticMethod("f", {"int32 scalar"}, giving(2));
  });
  EXPECT_EQ(candidates(cls, "f"), (std::vector<int>{1, 2, 3, 4, 5}));
  EXPECT_EQ(candidates(cls, "g"), std::vector<int>{6});
  EXPECT_EQ(cls.findMethods("f"), cls.findMethods(InternedName("f")));
}

TEST_F(LookupTest, OverridingRecordHidesThoseOfTheSuperclassesOnly) {
  addClass("A", [](Definition& x) { x.staticMethod("f", {}, giving(4)).staticMethod("g", {}, giving(9)); });
  addClass("B", [this](Definition& x) {
    x.base(full("A"));
    x.staticMethod("f", {}, giving(2), factory::kOverridesAllSignatures)
        .staticMethod("f", {"char"}, giving(3));
  });
  Class& cls = addClass("X", [this](Definition& x) { x.base(full("B")).staticMethod("f", {}, giving(1)); });
  EXPECT_EQ(candidates(cls, "f"), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(candidates(cls, "g"), std::vector<int>{9});
}

TEST_F(LookupTest, ConstructorsAreTheClassesOwn) {
  Class& base = addClass("Base", [](Definition& x) { x.constructor({}, {}).constructor({"char"}, {}); });
  Class& cls = addClass("X", [&](Definition& x) { x.base(full("Base")); });
  EXPECT_EQ(cls.constructors(), nullptr);
  ASSERT_NE(base.constructors(), nullptr);
  EXPECT_EQ(base.constructors()->candidates.size(), 2U);
  EXPECT_EQ(base.constructors()->name, base.getFullName());
  EXPECT_EQ(base.findMethods(base.getFullName()), nullptr) << "a constructor is no method";
}

TEST_F(LookupTest, NearestMemberIsAnInheritedOneToo) {
  addClass("Base", [](Definition& x) {
    x.property("symbol", "char");
    x.staticMethod("MetaClass", {}, {});
  });
  Class& cls = addClass("X", [this](Definition& x) { x.base(full("Base")).constructor({}, {}); });
  EXPECT_EQ(cls.nearestMember("symbl"), "symbol");
  EXPECT_EQ(cls.nearestMember("metaclass"), "MetaClass");
  EXPECT_EQ(cls.nearestMember("quite another"), "");
  EXPECT_EQ(cls.nearestMember(full("X")), "") << "a constructor is no member to be named";
}

}  // namespace
}  // namespace ruvo::testing
