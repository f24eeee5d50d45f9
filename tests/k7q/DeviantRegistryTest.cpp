#include <barrier>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tests/k7q/Fake.h"

using K7Q::Deviant;
using K7Q::DeviantRegistry;

TEST(DeviantRegistry, GivesTheSameIdForTheSameThree) {
  const auto thing = fake::newThing();
  const auto* object = thing.getInterface();

  void* id = DeviantRegistry::getId(object, Deviant{4}, false);
  EXPECT_EQ(id, DeviantRegistry::getId(object, Deviant{4}, false));
  EXPECT_NE(id, DeviantRegistry::getId(object, Deviant{4}, true));
  EXPECT_NE(id, DeviantRegistry::getId(object, Deviant{8}, false));
  EXPECT_EQ(id, DeviantRegistry::getId(object, Deviant{4}, false));
}

TEST(DeviantRegistry, TellsObjectAndDeviantOfAnId) {
  const auto thing = fake::newThing();
  void* id = DeviantRegistry::getId(thing.getInterface(), Deviant{12}, true);

  const auto info = DeviantRegistry::getVariantInfo(id);
  EXPECT_EQ(info.object, thing.getInterface());
  EXPECT_EQ(info.deviant, Deviant{12});
}

TEST(DeviantRegistry, KnowsNothingOfAPointerThatIsNoId) {
  const int other = 0;
  EXPECT_EQ(DeviantRegistry::getVariantInfo(nullptr).object, nullptr);
  EXPECT_EQ(DeviantRegistry::getVariantInfo(&other).object, nullptr);
  EXPECT_FALSE(DeviantRegistry::isImmutable(&other));
  EXPECT_FALSE(DeviantRegistry::isImmutable(nullptr));
  EXPECT_EQ(DeviantRegistry::getId(nullptr, Deviant(), false), nullptr);
}

TEST(DeviantRegistry, ReadsTheImmutableFlagFromTheIdItself) {
  void* mutableId = nullptr;
  void* immutableId = nullptr;
  {
    const auto thing = fake::newThing();
    mutableId = DeviantRegistry::getId(thing.getInterface(), Deviant(), false);
    immutableId = DeviantRegistry::getId(thing.getInterface(), Deviant(), true);
  }
  EXPECT_FALSE(DeviantRegistry::isImmutable(mutableId));
  EXPECT_TRUE(DeviantRegistry::isImmutable(immutableId));
}

TEST(DeviantRegistry, ForgetsTheIdsOfAnObjectThatIsGone) {
  void* id = nullptr;
  {
    const auto thing = fake::newThing();
    id = DeviantRegistry::getId(thing.getInterface(), Deviant{4}, false);
  }
  const auto info = DeviantRegistry::getVariantInfo(id);
  EXPECT_EQ(info.object, nullptr);
  EXPECT_EQ(info.deviant, Deviant());
}

TEST(DeviantRegistry, MakesNewIdsForAnObjectThatWasRetracted) {
  const auto thing = fake::newThing();
  DeviantRegistry::getId(thing.getInterface(), Deviant(), false);
  DeviantRegistry::retract(thing.getInterface());
  DeviantRegistry::retract(thing.getInterface());
  DeviantRegistry::retract(nullptr);

  void* id = DeviantRegistry::getId(thing.getInterface(), Deviant(), false);
  EXPECT_EQ(DeviantRegistry::getVariantInfo(id).object, thing.getInterface());
}

TEST(DeviantRegistry, KeepsABoundIdForItsHostObjectAlone) {
  fake::publish();
  const auto host = fake::thing();
  void* id = host->getBoundPointer(ruvo::InternedName());
  auto* object = DeviantRegistry::getVariantInfo(id).object;
  DeviantRegistry::retract(object);
  object->release();

  // Enough new views to use up all free records.
  std::vector<K7Q::ClassObject> objects;
  std::set<void*> ids;
  for (int i = 0; i < 5000; ++i) {
    objects.push_back(fake::newThing());
    ids.insert(DeviantRegistry::getId(objects.back().getInterface(), Deviant(), false));
  }
  EXPECT_EQ(ids.size(), 5000U);
  EXPECT_EQ(ids.count(id), 0U);
  EXPECT_EQ(DeviantRegistry::getVariantInfo(id).object, nullptr);
}

TEST(DeviantRegistry, GivesOutAgainWhatItsHostObjectsHaveLeft) {
  fake::publish();
  std::set<void*> addresses;
  constexpr int kObjects = 1000;
  for (int round = 0; round < 20; ++round) {
    std::vector<ruvo::RVOInterfacePtr> hosts;
    for (int i = 0; i < kObjects; ++i) {
      hosts.push_back(fake::thing());
      void* id = hosts.back()->getBoundPointer(ruvo::InternedName());
      addresses.insert(id);
      // The native object is destroyed while its host object still exists.
      auto* object = DeviantRegistry::getVariantInfo(id).object;
      DeviantRegistry::retract(object);
      object->release();
    }
  }
  // Fewer addresses than objects, so addresses were reused. Some were free before.
  EXPECT_LT(addresses.size(), 10U * kObjects);
}

// The other thread does not end, like the threads of a thread pool.
TEST(DeviantRegistry, GivesOutAgainWhatAnotherThreadHasRetracted) {
  fake::publish();
  constexpr int kObjects = 10000;
  constexpr int kRounds = 20;
  std::set<void*> addresses;
  std::vector<ruvo::RVOInterfacePtr> hosts;
  std::barrier<> turn(2);
  std::thread other([&] {
    for (int round = 0; round < kRounds; ++round) {
      turn.arrive_and_wait();
      for (const auto& host : hosts) {
        auto* object = DeviantRegistry::getVariantInfo(host->getBoundPointer(ruvo::InternedName())).object;
        DeviantRegistry::retract(object);
        object->release();
      }
      hosts.clear();
      turn.arrive_and_wait();
    }
  });
  for (int round = 0; round < kRounds; ++round) {
    for (int i = 0; i < kObjects; ++i) {
      hosts.push_back(fake::thing());
      addresses.insert(hosts.back()->getBoundPointer(ruvo::InternedName()));
    }
    turn.arrive_and_wait();
    turn.arrive_and_wait();
  }
  other.join();
  EXPECT_LT(addresses.size(), 5U * kObjects);
}

TEST(DeviantRegistry, MarksAndUnmarksTheDeviantWordOfAHandle) {
  const auto thing = fake::newThing();
  const K7Q::ImmutableObject plain(thing.getInterface(), Deviant{4});
  const auto readOnly = DeviantRegistry::setIsImmutable(plain, true);

  EXPECT_EQ(readOnly.getDeviant(), Deviant{4 | Deviant::kReadOnly});
  EXPECT_EQ(DeviantRegistry::setIsImmutable(readOnly, false).getDeviant(), Deviant{4});
  EXPECT_EQ(DeviantRegistry::setIsImmutable(plain, false).getDeviant(), Deviant{4});
  EXPECT_EQ(DeviantRegistry::setIsImmutable(plain, false).getInterface(), thing.getInterface());
}

TEST(DeviantRegistry, LeavesAFrozenHandleFrozen) {
  const auto thing = fake::newThing();
  const K7Q::ImmutableObject frozen(thing.getInterface(), Deviant{4 | Deviant::kFrozen});
  const auto readOnly = DeviantRegistry::setIsImmutable(frozen, true);
  EXPECT_EQ(DeviantRegistry::setIsImmutable(readOnly, false).getDeviant(), frozen.getDeviant());
}

TEST(DeviantAssertions, RefuseAReadOnlyViewWhileTheyAreOn) {
  using K7Q::DeviantAssertions;
  EXPECT_TRUE(DeviantAssertions::assertWritable(Deviant{4}, nullptr));
  const std::string text =
      host::raised([] { DeviantAssertions::assertWritable(Deviant{Deviant::kReadOnly}, nullptr); });
  EXPECT_THROW(DeviantAssertions::assertWritable(Deviant{Deviant::kFrozen}, nullptr), K7Q::Exception);
  EXPECT_EQ(
      text.find("Assertion failed: the view is read-only because of its deviant; asDeviant(model) with the "
                "model itself returns a writable view at platform/k7q/handles/DeviantRegistry.cpp:"),
      0U);

  EXPECT_TRUE(DeviantAssertions::enableAssertions(false));
  EXPECT_TRUE(DeviantAssertions::assertWritable(Deviant{Deviant::kReadOnly}, nullptr));
  EXPECT_FALSE(DeviantAssertions::enableAssertions(true));
}
