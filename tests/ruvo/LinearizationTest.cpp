#include "tarvelon/boundary/k7q/Exception.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo::testing {
namespace {

class LinearizationTest : public RuvoTest {
 protected:
  /// Adds a class with superclasses of the test's package, given by their short names.
  Class& derive(const std::string& name, std::vector<std::string> bases) {
    return addClass(name, [this, bases](Definition& definition) {
      for (const std::string& base : bases) definition.base(full(base));
    });
  }

  /// The linearization of a class as short names.
  static std::string order(Class& cls) {
    std::string names;
    for (const Class* each : cls.linearization()) {
      names.append(names.empty() ? "" : " ").append(each->shortName());
    }
    return names;
  }
};

TEST_F(LinearizationTest, OfAClassAloneIsTheClass) {
  Class& cls = derive("A", {});
  EXPECT_EQ(order(cls), "A");
  EXPECT_TRUE(cls.superClasses().empty());
}

TEST_F(LinearizationTest, FollowsAChain) {
  derive("A", {});
  derive("B", {"A"});
  EXPECT_EQ(order(derive("C", {"B"})), "C B A");
}

TEST_F(LinearizationTest, OfMutableAndImmutableClassesAlternates) {
  derive("ImmutableElement", {});
  derive("Element", {"ImmutableElement"});
  derive("ImmutablePort", {"ImmutableElement"});
  derive("Port", {"ImmutablePort", "Element"});
  derive("ImmutableServerPort", {"ImmutablePort"});
  EXPECT_EQ(order(derive("ServerPort", {"ImmutableServerPort", "Port"})),
            "ServerPort ImmutableServerPort Port ImmutablePort Element ImmutableElement");
}

TEST_F(LinearizationTest, FollowsC3) {
  // The standard example for C3.
  derive("O", {});
  derive("F", {"O"});
  derive("E", {"O"});
  derive("D", {"O"});
  derive("C", {"D", "F"});
  derive("B", {"D", "E"});
  EXPECT_EQ(order(derive("A", {"B", "C"})), "A B C D E F O");
}

TEST_F(LinearizationTest, DoesNotDependOnTheOrderOfRegistration) {
  Class& late = derive("C", {"B", "A"});
  derive("B", {});
  derive("A", {});
  EXPECT_EQ(order(late), "C B A");
}

TEST_F(LinearizationTest, RefusesSuperclassesWithoutACommonOrder) {
  derive("A", {});
  derive("B", {"A"});
  Class& cls = derive("C", {"A", "B"});
  const std::string text = "class '" + full("C") + "': its superclasses have no consistent order: each of '" +
                           full("A") + "', '" + full("B") +
                           "' must come after another; list each class before its superclasses";
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { cls.linearization(); }), text);
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { cls.findProperty("p"); }), text);
}

TEST_F(LinearizationTest, RefusesASuperclassNamedTwice) {
  derive("A", {});
  Class& cls = derive("B", {"A", "A"});
  EXPECT_THROW(cls.linearization(), K7Q::Exception);
}

TEST_F(LinearizationTest, RefusesAClassAmongItsOwnSuperclasses) {
  derive("A", {"B"});
  Class& cls = derive("B", {"A"});
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { cls.linearization(); }),
            "class '" + full("B") + "' is one of its own superclasses; remove it from them");
}

TEST_F(LinearizationTest, NamesASuperclassThatDoesNotExist) {
  Class& cls = derive("A", {"Missing"});
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { cls.linearization(); }),
            "class '" + full("A") + "': there is no class '" + full("Missing") +
                "', which is listed as a superclass");
  derive("Missing", {});
  EXPECT_EQ(order(cls), "A Missing");
}

TEST_F(LinearizationTest, TellsKinds) {
  Class& base = derive("A", {});
  Class& other = derive("B", {});
  Class& cls = derive("C", {"A"});
  EXPECT_TRUE(cls.isKindOf(cls));
  EXPECT_TRUE(cls.isKindOf(base));
  EXPECT_FALSE(base.isKindOf(cls));
  EXPECT_FALSE(cls.isKindOf(other));
}

TEST_F(LinearizationTest, BringsInThePackagesOfSuperclasses) {
  factory::registerRuvoPackage(full("lazy"),
                               [](RVOPackage* lazy) { lazy->addClass(new TestClassInfo("A", {}), 2); });
  EXPECT_EQ(order(derive("B", {"lazy.A"})), "B A");
}

}  // namespace
}  // namespace ruvo::testing
