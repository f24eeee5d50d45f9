#include <gtest/gtest.h>

#include "tarvelon/platform/model/metamodel/Documentation.h"

namespace Tarvelon::metamodel::native {
namespace {

using Names = std::vector<std::string>;

TEST(Documentation, APurposeIsFoundByTheWholeNameOfAPackageAClassOrAnEnumeration) {
  EXPECT_TRUE(purposeOf("Tarvelon.metamodel.arplatform").starts_with("The AUTOSAR metamodel: "));
  EXPECT_TRUE(
      purposeOf("Tarvelon.metamodel.arplatform.behavior").starts_with("What goes on inside a component: "));
  EXPECT_TRUE(purposeOf("Tarvelon.metamodel.arplatform.behavior.TimingEvent")
                  .starts_with("Starts a runnable period"));
  EXPECT_TRUE(
      purposeOf("Tarvelon.metamodel.arplatform.behavior.IrvKind").starts_with("Whether an inter-runnable"));
  EXPECT_TRUE(purposeOf("Tarvelon.metamodel.foundation.Element").starts_with("The base of all elements"));
}

TEST(Documentation, AnImmutableViewIsForWhatItsClassIsFor) {
  EXPECT_EQ(purposeOf("Tarvelon.metamodel.arplatform.behavior.ImmutableEvent"),
            purposeOf("Tarvelon.metamodel.arplatform.behavior.Event"));
}

TEST(Documentation, AnyOtherNameHasNoPurpose) {
  for (const auto* name :
       {"", ".", "behavior.Event", "Tarvelon.metamodel", "Tarvelon.metamodel.arplatform.",
        "Tarvelon.metamodel.arplatform.behavior.", "Tarvelon.metamodel.arplatform.behavior.Events",
        "Tarvelon.metamodel.arplatform.behavior.Immutable", "K7Q.Model"}) {
    EXPECT_EQ(purposeOf(name), "") << name;
  }
}

TEST(Documentation, TheArgumentsOfEachConstructorAreNamedInOrderOfRegistration) {
  EXPECT_EQ(argumentNames("Tarvelon.metamodel.arplatform.behavior.Runnable"),
            (std::vector<Names>{{}, {"symbol", "name"}}));
  EXPECT_EQ(argumentNames("Tarvelon.metamodel.arplatform.documentation.LPlainText"),
            (std::vector<Names>{{}}));
  EXPECT_EQ(argumentNames("Tarvelon.metamodel.arplatform.behavior.Event"), std::vector<Names>{});
  EXPECT_EQ(argumentNames("Tarvelon.metamodel.arplatform.behavior.Nothing"), std::vector<Names>{});
}

TEST(Documentation, ANameIsThatOfThePropertyThatItFills) {
  EXPECT_EQ(splitArgumentNames(""), Names{});
  EXPECT_EQ(splitArgumentNames(" aSymbol, aName"), (Names{"symbol", "name"}));
  EXPECT_EQ(splitArgumentNames(" aTarvelon_metamodel_Class_DataElements, aPort"),
            (Names{"dataElements", "port"}));
}

TEST(Documentation, ANameThatFillsNoPropertyIsShownAsItIsDeclared) {
  EXPECT_EQ(splitArgumentNames("other"), Names{"other"});
  EXPECT_EQ(splitArgumentNames(" other, aName"), (Names{"other", "name"}));
}

}  // namespace
}  // namespace Tarvelon::metamodel::native
