#include <cstddef>

#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/collections/GenericReferenceCountingSequenceProxy.h"
#include "tarvelon/collections/MakeSequence.h"
#include "tests/collections/Support.h"

using namespace collections;
using K7Q::makeSequence;
using K7Q::SequenceOptions;

namespace {

using Proxy = K7Q::GenericReferenceCountingSequenceProxy;

constexpr const char* kSite = "kernel/containers/sequence/SequenceCreator";

static_assert(K7Q::STD_VECTOR == 0 && K7Q::MULTI_INDEX == 1);
static_assert(offsetof(SequenceOptions, aDeviant) == 0);
static_assert(offsetof(SequenceOptions, aImplementation) == sizeof(void*));
static_assert(offsetof(SequenceOptions, aIsUnique) == sizeof(void*) + 4);
static_assert(offsetof(SequenceOptions, aUseReferenceCountingProxy) == sizeof(void*) + 5);
static_assert(sizeof(SequenceOptions::aImplementation) == 4);

const K7Q::Deviant kSomeDeviant{64};

SequenceOptions behindProxy(K7Q::SequenceImplementation implementation, bool isUnique) {
  return {kSomeDeviant, implementation, isUnique, true};
}

/// The sequence that makeSequence() creates without a proxy. The caller owns it.
std::unique_ptr<SequenceIntf> makeBare(K7Q::SequenceImplementation implementation, bool isUnique) {
  return std::unique_ptr<SequenceIntf>(
      makeSequence<Kind>({kSomeDeviant, implementation, isUnique, false}).getInterface());
}

}  // namespace

TEST(MakeSequence, MakesAListOfAVector) {
  const auto sequence = makeBare(K7Q::STD_VECTOR, false);
  EXPECT_NE(dynamic_cast<List*>(sequence.get()), nullptr);
}

TEST(MakeSequence, MakesAMultiIndexOfEitherFlavour) {
  EXPECT_NE(dynamic_cast<Multi*>(makeBare(K7Q::MULTI_INDEX, false).get()), nullptr);
  EXPECT_NE(dynamic_cast<Unique*>(makeBare(K7Q::MULTI_INDEX, true).get()), nullptr);
}

TEST(MakeSequence, GivesTheHandleTheDeviant) {
  EXPECT_EQ(makeSequence<Kind>(behindProxy(K7Q::MULTI_INDEX, false)).getDeviant(), kSomeDeviant);
  EXPECT_EQ(makeSequence<Kind>(behindProxy(K7Q::STD_VECTOR, false)).getDeviant(), kSomeDeviant);
}

TEST(MakeSequence, HoldsOneReferenceOnTheProxy) {
  const auto sequence = makeSequence<Kind>(behindProxy(K7Q::MULTI_INDEX, false));
  ASSERT_NE(dynamic_cast<Proxy*>(sequence.getInterface()), nullptr);
  EXPECT_EQ(sequence.getInterface()->numRef(), 1);
  const auto other = sequence;
  EXPECT_EQ(sequence.getInterface()->numRef(), 2);
}

TEST(MakeSequence, CountsNothingWithoutAProxy) {
  const auto sequence = makeBare(K7Q::MULTI_INDEX, false);
  EXPECT_EQ(dynamic_cast<Proxy*>(sequence.get()), nullptr);
  EXPECT_EQ(sequence->numRef(), 0);
}

TEST(MakeSequence, FreesEverythingWithTheLastHandle) {
  const auto before = allocations::live();
  {
    const auto sequence = makeSequence<Kind>(behindProxy(K7Q::MULTI_INDEX, true));
    push(sequence.get(), {1, 2});
  }
  EXPECT_EQ(allocations::live(), before);
}

TEST(MakeSequence, StartsEmpty) {
  for (bool isUnique : {false, true}) {
    const auto sequence = makeSequence<Kind>(behindProxy(K7Q::MULTI_INDEX, isUnique));
    EXPECT_TRUE(sequence.get().generic_empty(kDeviant));
    EXPECT_EQ(sequence.get().generic_size(kDeviant), 0);
  }
}

TEST(MakeSequence, HoldsAValueTwiceOrOnce) {
  const auto sizeOf = [](bool isUnique) {
    const auto sequence = makeSequence<Kind>(behindProxy(K7Q::MULTI_INDEX, isUnique));
    push(sequence.get(), {1, 1});
    return sequence.get().generic_size(kDeviant);
  };
  EXPECT_EQ(sizeOf(false), 2);
  EXPECT_EQ(sizeOf(true), 1);
}

TEST(MakeSequence, RefusesAUniqueVector) {
  const auto text = failure("cannot use STD_VECTOR and aIsUnique together", kSite, 85);
  const auto live = allocations::live();
  EXPECT_EQ(raised([] { makeSequence<Kind>({kDeviant, K7Q::STD_VECTOR, true, true}); }), text);
  EXPECT_EQ(raised([] { makeSequence<Kind>({kDeviant, K7Q::STD_VECTOR, true, false}); }), text);
  EXPECT_EQ(allocations::live(), live);
}

TEST(MakeSequence, RefusesAnUnknownImplementation) {
  const auto text = failure("unknown sequence implementation requested", kSite, 102);
  for (int kind : {-1, 2, 3, 1000}) {
    const auto implementation = static_cast<K7Q::SequenceImplementation>(kind);
    for (bool isUnique : {false, true}) {
      EXPECT_EQ(raised([&] { makeSequence<Kind>(behindProxy(implementation, isUnique)); }), text) << kind;
    }
  }
}

TEST(MakeSequence, RefusesToGiveOutNothing) {
  const auto text = failure("sequence not created", kSite, 107);
  for (bool useProxy : {false, true}) {
    const SequenceOptions options{kDeviant, K7Q::MULTI_INDEX, false, useProxy};
    EXPECT_EQ(raised([&] { K7Q::SequenceCreatorInternal::finish(nullptr, options); }), text);
  }
}

TEST(MakeSequence, ServesEachEnumeration) {
  using Modular = Tarvelon::metamodel::arplatform::common::ArxmlFilePackagingKind;
  const auto sequence = makeSequence<Modular>(behindProxy(K7Q::MULTI_INDEX, false));
  EXPECT_STREQ(sequence.get().generic_getRuvoName(false, false, ""),
               "Tarvelon.metamodel.arplatform.common.SequenceOfArxmlFilePackagingKind");
}
