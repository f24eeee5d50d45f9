#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/ClassMetaData.h"
#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tests/k7q/Fake.h"

using K7Q::mi::RuvoExtensionsRegistry;
using K7Q::mi::RuvoExtensionsRegistryImpl;
using ruvo::factory::basic::BindingRegistry;

TEST(ClassMetaData, DropsBindingAndReferenceWithTheHostObject) {
  const int live = fake::Object::sLive;
  auto host = fake::thing();
  void* id = host->getBoundPointer(ruvo::InternedName());
  EXPECT_EQ(fake::nativeOf(host).numRef(), 1);
  EXPECT_EQ(BindingRegistry::find(id), host);

  host = ruvo::RVOInterfacePtr();
  EXPECT_EQ(fake::Object::sLive, live);
  EXPECT_EQ(BindingRegistry::find(id), nullptr);
}

TEST(ClassMetaData, TakesAnInstanceWhoseNativeObjectIsGone) {
  const auto bound = BindingRegistry::size();
  auto host = fake::thing();
  auto* object = K7Q::DeviantRegistry::getVariantInfo(host->getBoundPointer(ruvo::InternedName())).object;
  K7Q::DeviantRegistry::retract(object);
  object->release();
  host = ruvo::RVOInterfacePtr();
  EXPECT_EQ(BindingRegistry::size(), bound);
}

TEST(ClassMetaData, CountsOneReferenceForAnObjectBoxedTwice) {
  const auto thing = fake::newThing();
  const auto first = fake::hostOf(thing);
  const auto second = fake::hostOf(thing);
  EXPECT_EQ(static_cast<ruvo::RVOInterface*>(first), static_cast<ruvo::RVOInterface*>(second));
  EXPECT_EQ(thing.getInterface()->numRef(), 2);
}

TEST(RuvoExtensions, RunInTheOrderInWhichTheyWereAdded) {
  RuvoExtensionsRegistryImpl registry;
  std::vector<int> order;
  EXPECT_FALSE(registry.hasCallbacks());
  registry.addNonConstCallback("A", [&](ruvo::RVOClass*, const ruvo::RVOClient*) { order.push_back(1); });
  registry.addNonConstCallback("B", [&](ruvo::RVOClass*, const ruvo::RVOClient*) { order.push_back(2); });
  registry.addNonConstCallback("A", [&](ruvo::RVOClass*, const ruvo::RVOClient*) { order.push_back(3); });

  registry.executeNonConstCallbacks("A", nullptr, nullptr);
  registry.executeNonConstCallbacks("C", nullptr, nullptr);
  EXPECT_EQ(order, (std::vector<int>{1, 3}));
  EXPECT_TRUE(registry.hasCallbacks());
}

TEST(RuvoExtensions, LetAnExceptionThroughAndMayClearThemselves) {
  RuvoExtensionsRegistryImpl registry;
  registry.addNonConstCallback("A", [&](ruvo::RVOClass*, const ruvo::RVOClient*) { registry.clear(); });
  registry.addNonConstCallback("A",
                               [](ruvo::RVOClass*, const ruvo::RVOClient*) { throw K7Q::Exception("no"); });
  EXPECT_EQ(host::raised([&] { registry.executeNonConstCallbacks("A", nullptr, nullptr); }), "no");
  EXPECT_FALSE(registry.hasCallbacks());
}

TEST(RuvoExtensions, HaveOneRegistry) {
  EXPECT_EQ(&RuvoExtensionsRegistry::instance(), &RuvoExtensionsRegistry::instance());
}
