#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo::testing {
namespace {

using factory::basic::BindingRegistry;
using factory::basic::BindingSlot;

class BindingRegistryTest : public RuvoTest {
 protected:
  Class& mBase = addClass("Base");
  Class& mClass = addClass("X", [this](Definition& x) { x.base(full("Base")); });
  Class& mOther = addClass("Other");
  Native mNative;
  int mPlain = 0;
};

TEST_F(BindingRegistryTest, NullPointerGivesNull) {
  bool wasNew = true;
  EXPECT_EQ(BindingRegistry::announce(static_cast<void*>(nullptr), mClass.getFullName(), wasNew), nullptr);
  EXPECT_FALSE(wasNew);
  EXPECT_EQ(BindingRegistry::find(nullptr), nullptr);
  BindingRegistry::remove(nullptr);
}

TEST_F(BindingRegistryTest, AnnouncesOneObjectForAnId) {
  for (void* id : {mNative.mutableId(), static_cast<void*>(&mPlain)}) {
    const std::size_t before = BindingRegistry::size();
    bool wasNew = false;
    const RVOInterfacePtr object(BindingRegistry::announce(id, mClass.getFullName(), wasNew));
    EXPECT_TRUE(wasNew);
    EXPECT_EQ(object->getBoundPointer(InternedName()), id);
    EXPECT_EQ(object->getClass(), &mClass);
    EXPECT_EQ(BindingRegistry::announce(id, mClass.getFullName(), wasNew), object);
    EXPECT_FALSE(wasNew);
    EXPECT_EQ(BindingRegistry::announce(id, mClass.getFullName()), object);
    EXPECT_EQ(BindingRegistry::announce(static_cast<const void*>(id), mClass.getFullName()), object);
    EXPECT_EQ(BindingRegistry::find(id), object);
    EXPECT_EQ(BindingRegistry::size(), before + 1);
  }
}

TEST_F(BindingRegistryTest, KeepsTheViewsOfAnObjectApart) {
  const RVOInterfacePtr writable = object(mClass, mNative);
  const RVOInterfacePtr readable = object(mBase, mNative, true);
  EXPECT_NE(static_cast<RVOInterface*>(writable), static_cast<RVOInterface*>(readable));
  EXPECT_FALSE(BindingSlot::isImmutable(writable->getBoundPointer(InternedName())));
  EXPECT_TRUE(BindingSlot::isImmutable(readable->getBoundPointer(InternedName())));
}

TEST_F(BindingRegistryTest, HoldsNoReference) {
  {
    const RVOInterfacePtr held = object(mClass, mNative);
    EXPECT_EQ(held->references(), 1);
  }
  EXPECT_EQ(BindingRegistry::find(mNative.mutableId()), nullptr);
}

TEST_F(BindingRegistryTest, NarrowsAKnownObjectToASubclass) {
  const RVOInterfacePtr known = object(mBase, mNative);
  EXPECT_EQ(object(mClass, mNative), known);
  EXPECT_EQ(known->getClass(), &mClass);
}

TEST_F(BindingRegistryTest, NeverWidensOrChangesToAnotherClass) {
  const RVOInterfacePtr known = object(mClass, mNative);
  EXPECT_EQ(object(mBase, mNative), known);
  EXPECT_EQ(known->getClass(), &mClass);
  EXPECT_EQ(object(mOther, mNative), known);
  EXPECT_EQ(known->getClass(), &mClass);
}

TEST_F(BindingRegistryTest, UnknownClassIsRefused) {
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] {
              BindingRegistry::announce(mNative.mutableId(), InternedName(std::string_view(full("Y"))));
            }),
            "package '" + mName + "' has no class 'Y'");
  EXPECT_EQ(BindingRegistry::find(mNative.mutableId()), nullptr);
}

TEST_F(BindingRegistryTest, RemoveForgetsTheIdAndEmptiesItsObject) {
  const RVOInterfacePtr slotted = object(mClass, mNative);
  const RVOInterfacePtr plain(BindingRegistry::announce(static_cast<void*>(&mPlain), mClass.getFullName()));
  int ends = 0;
  infoOf(mClass).onDestroy = [&](void*) { ++ends; };
  BindingRegistry::remove(mNative.mutableId());
  BindingRegistry::remove(&mPlain);
  BindingRegistry::remove(&mPlain);
  EXPECT_EQ(BindingRegistry::find(mNative.mutableId()), nullptr);
  EXPECT_EQ(BindingRegistry::find(&mPlain), nullptr);
  EXPECT_EQ(slotted->getBoundPointer(InternedName()), nullptr);
  EXPECT_EQ(plain->getBoundPointer(InternedName()), nullptr);
  EXPECT_EQ(ends, 0);
}

TEST_F(BindingRegistryTest, FindsEveryOneOfManyIds) {
  std::vector<int> ids(5000);
  std::vector<RVOInterfacePtr> objects;
  objects.reserve(ids.size());
  for (int& id : ids)
    objects.emplace_back(BindingRegistry::announce(static_cast<void*>(&id), mClass.getFullName()));
  for (std::size_t i = 0; i < ids.size(); i += 2) objects[i] = RVOInterfacePtr();
  for (std::size_t i = 0; i < ids.size(); ++i) {
    EXPECT_EQ(BindingRegistry::find(&ids[i]), i % 2 ? static_cast<RVOInterface*>(objects[i]) : nullptr);
  }
}

TEST_F(BindingRegistryTest, AllocationThatFailsBindsNothing) {
  utFailAllocation(1);
  EXPECT_THROW(object(mClass, mNative), bedrock::core::except::bad_alloc);
  EXPECT_EQ(BindingRegistry::find(mNative.mutableId()), nullptr);
}

class ForConstructor : public BindingRegistryTest {
 protected:
  /// Constructs an object whose constructor announces the pointer.
  RVOInterfacePtr constructFor(const std::string& name, Body body) {
    return construct(addClass(name, [body](Definition& x) { x.constructor({}, body); }), {});
  }
  static void announce(void* pointer, RVOValue result) {
    BindingRegistry::announceForConstructor(pointer, InternedName("X"), result.array(), true);
  }
};

TEST_F(ForConstructor, BindsTheObjectInTheArray) {
  const auto made = constructFor("Made", [&](std::uint32_t&, RVOValue* results, int, const RVOValue*) {
    announce(mNative.mutableId(), results[0]);
  });
  EXPECT_EQ(BindingRegistry::find(mNative.mutableId()), made);
  EXPECT_EQ(made->references(), 1);
}

TEST_F(ForConstructor, RefusesAnObjectThatIsBound) {
  const auto twice = [&](std::uint32_t&, RVOValue* results, int, const RVOValue*) {
    announce(mNative.mutableId(), results[0]);
    announce(&mPlain, results[0]);
  };
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { constructFor("Twice", twice); }),
            "X: the object under construction is already constructed");
  EXPECT_EQ(BindingRegistry::find(mNative.mutableId()), nullptr);
}

TEST_F(ForConstructor, RefusesAnIdThatIsBound) {
  const RVOInterfacePtr known = object(mClass, mNative);
  const auto again = [&](std::uint32_t&, RVOValue* results, int, const RVOValue*) {
    announce(mNative.mutableId(), results[0]);
  };
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { constructFor("Again", again); }),
            "X: the native object already has a host object; construct a new one");
  EXPECT_EQ(BindingRegistry::find(mNative.mutableId()), known);
}

TEST_F(ForConstructor, RefusesAnArrayWithoutAnObject) {
  const hx::ArrayPtr empty(hx::hxCreateObjectMatrix(0, 0, "X"));
  const hx::ArrayPtr number(hx::hxCreateDoubleScalar(1));
  for (hx::hxArray* array : {static_cast<hx::hxArray*>(nullptr), empty.get(), number.get()}) {
    EXPECT_EQ(errorOf<K7Q::Exception>([&] { announce(&mPlain, RVOValue(array)); }),
              "X: no object is under construction; call the constructor through its class");
  }
}

TEST_F(ForConstructor, BindsNothingForANullPointer) {
  const hx::ArrayPtr empty(hx::hxCreateObjectMatrix(0, 0, "X"));
  announce(nullptr, RVOValue(empty.get()));
}

}  // namespace
}  // namespace ruvo::testing
