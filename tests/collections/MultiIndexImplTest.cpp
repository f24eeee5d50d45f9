#include <type_traits>

#include "tarvelon/boundary/k7q/Reference.h"
#include "tests/collections/Support.h"

using namespace collections;

namespace {

using Identity = boost::multi_index::identity<Kind>;
template <bool IsUnique>
using ForPrimitives = K7Q::MultiIndexImplInternal::MultiIndexImplForPrimitives<Kind, IsUnique, Identity>;

static_assert(std::is_base_of_v<K7Q::MultiIndexImplBase<Kind, true, Identity, K7Q::TRUE_TYPE>, Unique>);
static_assert(
    std::is_base_of_v<ForPrimitives<true>, K7Q::MultiIndexImplBase<Kind, true, Identity, K7Q::TRUE_TYPE>>);
static_assert(std::is_base_of_v<SequenceIntf, ForPrimitives<true>>);
static_assert(std::is_base_of_v<K7Q::IteratorProxy, ForPrimitives<false>::Iterator>);
static_assert(sizeof(ForPrimitives<false>::Iterator) == sizeof(K7Q::IteratorProxy) + sizeof(void*));
static_assert(!std::is_same_v<ForPrimitives<false>::Iterator, ForPrimitives<true>::Iterator>);

template <class Sequence>
class BothMultiIndices : public testing::Test {
 protected:
  Sequence mSequence;
};
using Flavours = testing::Types<Multi, Unique>;
TYPED_TEST_SUITE(BothMultiIndices, Flavours);

}  // namespace

TEST(MultiIndex, KeepsDuplicatesInOrder) {
  Multi sequence;
  push(sequence, {5, 3, 5});
  EXPECT_EQ(valuesOf(sequence), (Values{5, 3, 5}));
  EXPECT_TRUE(sequence.generic_contains(kDeviant, ref(3)));
  EXPECT_EQ(sequence.generic_removeAll(kDeviant, ref(5)), 2);
  EXPECT_EQ(valuesOf(sequence), Values{3});
}

TEST(MultiIndex, ReplacesByAValueThatIsThere) {
  Multi sequence;
  push(sequence, {5, 3});
  sequence.generic_replace(kDeviant, 0, ref(3));
  EXPECT_EQ(valuesOf(sequence), (Values{3, 3}));
  EXPECT_FALSE(sequence.generic_contains(kDeviant, ref(5)));
  EXPECT_EQ(sequence.generic_removeAll(kDeviant, ref(3)), 2);
}

TEST(MultiIndex, RemovesByValueAndKeepsTheOrderOfTheRest) {
  Multi sequence;
  push(sequence, {9, 1, 9, 0, 9, 9, 4});
  EXPECT_EQ(sequence.generic_removeAll(kDeviant, ref(9)), 4);
  EXPECT_EQ(valuesOf(sequence), (Values{1, 0, 4}));
}

TEST(UniqueMultiIndex, IgnoresAValueThatIsThere) {
  Unique sequence;
  push(sequence, {5, 3, 5});
  EXPECT_EQ(valuesOf(sequence), (Values{5, 3}));
  sequence.generic_push_front(kDeviant, ref(3));
  sequence.generic_push_front(kDeviant, ref(3));
  EXPECT_EQ(valuesOf(sequence), (Values{5, 3}));
  sequence.generic_insert(kDeviant, 0, ref(3));
  EXPECT_EQ(valuesOf(sequence), (Values{5, 3}));
}

TEST(UniqueMultiIndex, GivesAnIteratorOnTheElementThatIsThere) {
  Unique sequence;
  push(sequence, {5, 3, 8});
  const auto there = sequence.generic_insert(kDeviant, sequence.generic_begin(kDeviant).get(), ref(8));
  EXPECT_EQ(value(*there), 8);
  EXPECT_TRUE(there->equal(iteratorAt(sequence, 2).get()));
  EXPECT_EQ(valuesOf(sequence), (Values{5, 3, 8}));
}

TEST(UniqueMultiIndex, ReplacesByANewValueAlone) {
  const auto replaced = [](int replacement) {
    Unique sequence;
    push(sequence, {5, 3});
    sequence.generic_replace(kDeviant, 0, ref(replacement));
    return valuesOf(sequence);
  };
  EXPECT_EQ(replaced(3), (Values{5, 3}));
  EXPECT_EQ(replaced(7), (Values{7, 3}));
  EXPECT_EQ(replaced(5), (Values{5, 3}));
}

TEST(UniqueMultiIndex, FindsWhatWasReplacedNoLonger) {
  Unique sequence;
  push(sequence, {5, 3});
  sequence.generic_replace(kDeviant, 0, ref(7));
  EXPECT_FALSE(sequence.generic_contains(kDeviant, ref(5)));
  EXPECT_TRUE(sequence.generic_contains(kDeviant, ref(7)));
  push(sequence, {5});
  EXPECT_EQ(valuesOf(sequence), (Values{7, 3, 5}));
}

TEST(UniqueMultiIndex, RemovesOneOrNone) {
  Unique sequence;
  push(sequence, {5, 3, 8});
  EXPECT_EQ(sequence.generic_removeAll(kDeviant, ref(3)), 1);
  EXPECT_EQ(sequence.generic_removeAll(kDeviant, ref(3)), 0);
  EXPECT_EQ(valuesOf(sequence), (Values{5, 8}));
}

TYPED_TEST(BothMultiIndices, IsHarmlesslyClearedWhenEmpty) {
  this->mSequence.generic_clear(kDeviant);
  EXPECT_EQ(this->mSequence.generic_size(kDeviant), 0);
}

TYPED_TEST(BothMultiIndices, OrdersNegativeValuesAsNumbers) {
  push(this->mSequence, {0, -1, 5});
  this->mSequence.generic_replace(kDeviant, 0, ref(-7));
  EXPECT_EQ(valuesOf(this->mSequence), (Values{-7, -1, 5}));
  EXPECT_TRUE(this->mSequence.generic_contains(kDeviant, ref(-7)));
  EXPECT_EQ(this->mSequence.generic_removeAll(kDeviant, ref(-1)), 1);
}

TYPED_TEST(BothMultiIndices, ErasesFromBeginToEnd) {
  push(this->mSequence, {1, 2, 3});
  const auto end = this->mSequence.generic_end(kDeviant);
  const auto behind =
      this->mSequence.generic_erase(kDeviant, this->mSequence.generic_begin(kDeviant).get(), end.get());
  EXPECT_TRUE(this->mSequence.generic_empty(kDeviant));
  EXPECT_TRUE(behind->equal(end.get()));
}

TYPED_TEST(BothMultiIndices, ErasesARangeAndStandsOnItsLimit) {
  push(this->mSequence, {1, 2, 3, 4});
  const auto last = iteratorAt(this->mSequence, 3);
  const auto behind =
      this->mSequence.generic_erase(kDeviant, iteratorAt(this->mSequence, 1).get(), last.get());
  EXPECT_TRUE(behind->equal(last.get()));
  EXPECT_EQ(value(*behind), 4);
  EXPECT_EQ(valuesOf(this->mSequence), (Values{1, 4}));
}

TYPED_TEST(BothMultiIndices, GivesItsFullClassNameByTheFirstFlag) {
  const std::string prefix = "Tarvelon.metamodel.arplatform.variant.";
  for (bool isElementImmutable : {false, true}) {
    const auto name = [&](bool isImmutable) {
      return std::string(this->mSequence.generic_getRuvoName(isImmutable, isElementImmutable, "Other"));
    };
    EXPECT_EQ(name(false), prefix + "SequenceOfBindingTimeKind");
    EXPECT_EQ(name(true), prefix + "ImmutableSequenceOfBindingTimeKind");
  }
}

TYPED_TEST(BothMultiIndices, GivesItsMemoryBack) {
  const auto before = allocations::live();
  {
    TypeParam sequence;
    push(sequence, {1, 2, 3, 1});
  }
  EXPECT_EQ(allocations::live(), before);
}

TYPED_TEST(BothMultiIndices, KeepsAnIteratorOnItsElement) {
  auto& sequence = this->mSequence;
  push(sequence, {10, 20, 30});
  const auto kept = iteratorAt(sequence, 1);
  const auto stands = [&](const char* change, int expected) { EXPECT_EQ(value(*kept), expected) << change; };
  sequence.generic_push_front(kDeviant, ref(5));
  stands("an insertion before it", 20);
  EXPECT_TRUE(kept->equal(iteratorAt(sequence, 2).get()));
  sequence.generic_erase(kDeviant, 0);
  stands("the removal of another", 20);
  for (int i = 100; i < 1100; ++i) sequence.generic_push_back(kDeviant, ref(i));
  stands("growth", 20);
  sequence.generic_replace(kDeviant, 1, ref(-4));
  stands("its own replacement", -4);
  sequence.generic_erase(kDeviant, iteratorAt(sequence, 2).get(), sequence.generic_end(kDeviant).get());
  stands("the removal of all behind it", -4);
  EXPECT_TRUE(kept->equal(iteratorAt(sequence, 1).get()));
}

TYPED_TEST(BothMultiIndices, KeepsTheEndIterator) {
  auto& sequence = this->mSequence;
  const auto end = sequence.generic_end(kDeviant);
  push(sequence, {1, 2, 3});
  EXPECT_TRUE(end->equal(sequence.generic_end(kDeviant).get()));
  sequence.generic_clear(kDeviant);
  EXPECT_TRUE(end->equal(sequence.generic_end(kDeviant).get()));
  EXPECT_TRUE(end->equal(sequence.generic_begin(kDeviant).get()));
}
