#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tests/k7q/Fake.h"
#include "tests/k7q/FakeSequence.h"

using K7Q::ReferenceCountingIntf;
using K7Q::tagsOf;

namespace {

class Bare final : public ReferenceCountingIntf {};

class Walk final : public K7Q::IteratorProxy {
 public:
  K7Q::Generic::Ref current(const K7Q::Deviant&) const override { return {}; }
  void next(const K7Q::Deviant&) override {}
  void previous(const K7Q::Deviant&) override {}
  std::unique_ptr<K7Q::Generic::IteratorIntf> clone() const override { return std::make_unique<Walk>(); }
  bool equal(const K7Q::Generic::IteratorIntf* other) const override { return this == other; }
};

}  // namespace

TEST(ReferenceCounting, CountsNothingByItself) {
  Bare bare;
  bare.addRef();
  bare.release();
  bare.release();
  EXPECT_EQ(bare.numRef(), 0);
  EXPECT_EQ(bare.getListOfReferences(), nullptr);
}

TEST(ReferenceCounting, IsItselfAndNoOtherInterface) {
  Bare bare;
  EXPECT_EQ(bare.cast(tagsOf<ReferenceCountingIntf>()), &bare);
  EXPECT_EQ(bare.cast(tagsOf<K7Q::NSInterface::ObjectIntf>()), nullptr);
  EXPECT_EQ(bare.cast(tagsOf<Bare>()), nullptr);
}

TEST(ObjectIntf, IsEachInterfaceThatItsClassHas) {
  const auto thing = fake::newThing();
  auto* object = thing.getInterface();
  EXPECT_EQ(object->cast(tagsOf<ReferenceCountingIntf>()), object);
  EXPECT_EQ(object->cast(tagsOf<K7Q::NSInterface::ObjectIntf>()), object);
  EXPECT_EQ(object->cast(tagsOf<K7Q::NSInterface::ClassObjectIntf>()), object);
  EXPECT_EQ(object->cast(tagsOf<K7Q::NSInterface::ModelIntf>()), nullptr);
  EXPECT_EQ(object->cast(tagsOf<K7Q::Generic::SequenceIntf>()), nullptr);

  const auto cls = fake::methodsOf(fake::thingMethods()).metaClass();
  EXPECT_EQ(cls.getInterface()->cast(tagsOf<K7Q::NSInterface::ClassIntf>()), cls.getInterface());
  EXPECT_EQ(cls.getInterface()->cast(tagsOf<K7Q::NSInterface::TypeIntf>()), cls.getInterface());
  EXPECT_EQ(cls.getInterface()->cast(tagsOf<K7Q::NSInterface::DataTypeIntf>()), nullptr);
}

TEST(SequenceIntf, IsASequenceAndEqualToItselfAlone) {
  std::vector<K7Q::Generic::Ref> list;
  fake::Sequence sequence(K7Q::ClassObject(), list, false);
  fake::Sequence other(K7Q::ClassObject(), list, false);
  EXPECT_EQ(sequence.cast(tagsOf<K7Q::Generic::SequenceIntf>()), &sequence);
  EXPECT_EQ(sequence.cast(tagsOf<ReferenceCountingIntf>()), &sequence);
  EXPECT_EQ(sequence.cast(tagsOf<K7Q::Generic::IteratorIntf>()), nullptr);
  EXPECT_TRUE(sequence.specialized_equal(&sequence));
  EXPECT_FALSE(sequence.specialized_equal(&other));
  EXPECT_FALSE(sequence.specialized_assign(&other));
}

TEST(IteratorIntf, IsAnIterator) {
  Walk walk;
  EXPECT_EQ(walk.cast(tagsOf<K7Q::Generic::IteratorIntf>()), &walk);
  EXPECT_EQ(walk.cast(tagsOf<ReferenceCountingIntf>()), &walk);
  EXPECT_EQ(walk.cast(tagsOf<K7Q::Generic::SequenceIntf>()), nullptr);
}

TEST(SequenceProxy, GoesWithTheLastReference) {
  const int before = fake::Object::sLive;
  std::vector<K7Q::Generic::Ref> list;
  auto* sequence = new fake::Sequence(fake::newThing(), list, false);
  EXPECT_EQ(sequence->numRef(), 0);
  sequence->addRef();
  sequence->addRef();
  EXPECT_EQ(sequence->numRef(), 2);
  sequence->release();
  EXPECT_EQ(fake::Object::sLive, before + 1);
  sequence->release();
  EXPECT_EQ(fake::Object::sLive, before);
}

TEST(SequenceProxy, ReportsACountBelowZero) {
  std::vector<K7Q::Generic::Ref> list;
  fake::Sequence sequence(K7Q::ClassObject(), list, false);
  constexpr const char* kText = "Internal assertion without a message detected! Please fix me asap";
  EXPECT_EQ(host::raised([&] { sequence.release(); }), kText);
  EXPECT_EQ(host::raised([&] { sequence.addRef(); }), kText);
}

TEST(IteratorProxy, ReportsACountBelowZero) {
  Walk walk;
  constexpr const char* kText = "Internal assertion without a message detected! Please fix me asap";
  walk.addRef();
  EXPECT_EQ(walk.numRef(), 1);
  Walk fresh;
  EXPECT_EQ(host::raised([&] { fresh.release(); }), kText);
  EXPECT_EQ(host::raised([&] { fresh.addRef(); }), kText);
}

TEST(SequenceHandle, RaisesTheNullSequenceText) {
  const K7Q::SequenceHandle null;
  EXPECT_EQ(host::raised([&] { null.get(); }),
            "Assertion failed: Cannot access NULL sequence. Use MakeSequence to create sequences.See "
            "testSequenceCreation in k7q/kernel/unittest/sequence_tests. at "
            "kernel/containers/sequence/SequenceRef:108: ");
}

TEST(ObjectRef, HoldsTheObjectAndComparesByIt) {
  const auto thing = fake::newThing();
  const auto other = fake::newThing();
  {
    const auto ref = K7Q::makeObjectRef(thing.getInterface(), K7Q::Deviant{4});
    EXPECT_EQ(thing.getInterface()->numRef(), 2);
    EXPECT_EQ(ref.value(), thing.getInterface());
    EXPECT_EQ(ref.second(), 4U);
    EXPECT_TRUE(ref.equals(K7Q::makeObjectRef(thing.getInterface(), K7Q::Deviant())));
    EXPECT_FALSE(ref.equals(K7Q::makeObjectRef(other.getInterface(), K7Q::Deviant{4})));
  }
  EXPECT_EQ(thing.getInterface()->numRef(), 1);
  EXPECT_EQ(K7Q::makeObjectRef(nullptr, K7Q::Deviant()).value(), nullptr);
}

TEST(StringRef, ComparesByCharacters) {
  const auto ref = K7Q::makeStringRef(u"one");
  EXPECT_TRUE(ref.equals(K7Q::makeStringRef(u"one")));
  EXPECT_FALSE(ref.equals(K7Q::makeStringRef(u"two")));
  EXPECT_FALSE(ref.equals(K7Q::makeObjectRef(nullptr, K7Q::Deviant())));
  EXPECT_NE(K7Q::makeStringRef(u"").value(), nullptr);
}
