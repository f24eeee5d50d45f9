// The behaviour that all containers have in common.
#include "tarvelon/boundary/k7q/Reference.h"
#include "tests/collections/Support.h"

using namespace collections;

namespace {

template <class Sequence>
class Sequences : public testing::Test {
 protected:
  Sequence mSequence;
};
using AllKinds = testing::Types<List, Multi, Unique>;
TYPED_TEST_SUITE(Sequences, AllKinds);

}  // namespace

TYPED_TEST(Sequences, IsASequence) {
  EXPECT_EQ(this->mSequence.cast(K7Q::tagsOf<SequenceIntf>()), &this->mSequence);
  EXPECT_EQ(this->mSequence.cast(K7Q::tagsOf<IteratorIntf>()), nullptr);
}

TYPED_TEST(Sequences, CountsNoReferences) {
  this->mSequence.addRef();
  this->mSequence.release();
  this->mSequence.release();
  EXPECT_EQ(this->mSequence.numRef(), 0);
  EXPECT_EQ(this->mSequence.getListOfReferences(), nullptr);
}

TYPED_TEST(Sequences, IsEmptyWhenNew) {
  EXPECT_EQ(this->mSequence.generic_size(kDeviant), 0);
  EXPECT_TRUE(this->mSequence.generic_empty(kDeviant));
  EXPECT_FALSE(this->mSequence.generic_contains(kDeviant, ref(0)));
  EXPECT_EQ(this->mSequence.generic_removeAll(kDeviant, ref(0)), 0);
}

TYPED_TEST(Sequences, GivesACopyOfAnElement) {
  push(this->mSequence, {1, 2});
  const Ref first = this->mSequence.generic_at(kDeviant, 0);
  const Ref again = this->mSequence.generic_at(kDeviant, 0);
  EXPECT_NE(first.value(), again.value());
  this->mSequence.generic_replace(kDeviant, 0, ref(7));
  EXPECT_EQ(value(first), 1);
  EXPECT_EQ(value(this->mSequence.generic_at(kDeviant, 0)), 7);
}

TYPED_TEST(Sequences, TakesACopyOfAnElement) {
  {
    const Ref given = ref(3);
    this->mSequence.generic_push_back(kDeviant, given);
    *static_cast<std::int32_t*>(given.value()) = 4;
  }
  EXPECT_EQ(valuesOf(this->mSequence), Values{3});
}

TYPED_TEST(Sequences, KeepsAValueThatNoLiteralHas) {
  push(this->mSequence, {77, -1});
  EXPECT_EQ(valuesOf(this->mSequence), (Values{77, -1}));
}

TYPED_TEST(Sequences, HasAFrontAndABack) {
  push(this->mSequence, {1, 2, 3});
  EXPECT_EQ(value(this->mSequence.generic_front(kDeviant)), 1);
  EXPECT_EQ(value(this->mSequence.generic_back(kDeviant)), 3);
  this->mSequence.generic_pop_front(kDeviant);
  EXPECT_EQ(value(this->mSequence.generic_front(kDeviant)), 2);
  this->mSequence.generic_pop_back(kDeviant);
  EXPECT_EQ(value(this->mSequence.generic_back(kDeviant)), 2);
}

TYPED_TEST(Sequences, InsertsAtAnIndex) {
  push(this->mSequence, {1, 2});
  this->mSequence.generic_insert(kDeviant, 0, ref(8));
  this->mSequence.generic_insert(kDeviant, 2, ref(9));
  EXPECT_EQ(valuesOf(this->mSequence), (Values{8, 1, 9, 2}));
}

TYPED_TEST(Sequences, AppendsWhenInsertingAtTheSize) {
  this->mSequence.generic_insert(kDeviant, 0, ref(1));
  this->mSequence.generic_insert(kDeviant, 1, ref(2));
  EXPECT_EQ(valuesOf(this->mSequence), (Values{1, 2}));
}

TYPED_TEST(Sequences, InsertsAtAnIteratorAndStandsOnTheNewElement) {
  push(this->mSequence, {1, 2});
  auto at = this->mSequence.generic_insert(kDeviant, iteratorAt(this->mSequence, 1).get(), ref(9));
  EXPECT_EQ(value(*at), 9);
  at->next(kDeviant);
  EXPECT_EQ(value(*at), 2);
  at = this->mSequence.generic_insert(kDeviant, this->mSequence.generic_end(kDeviant).get(), ref(5));
  EXPECT_EQ(value(*at), 5);
  EXPECT_EQ(valuesOf(this->mSequence), (Values{1, 9, 2, 5}));
}

TYPED_TEST(Sequences, InsertsAtAnIteratorIntoNothing) {
  const auto at =
      this->mSequence.generic_insert(kDeviant, this->mSequence.generic_end(kDeviant).get(), ref(5));
  EXPECT_EQ(value(*at), 5);
  EXPECT_EQ(valuesOf(this->mSequence), Values{5});
}

TYPED_TEST(Sequences, ErasesAtAnIteratorAndStandsOnTheNextElement) {
  push(this->mSequence, {1, 2, 3});
  auto at = this->mSequence.generic_erase(kDeviant, iteratorAt(this->mSequence, 1).get());
  EXPECT_EQ(value(*at), 3);
  at = this->mSequence.generic_erase(kDeviant, at.get());
  EXPECT_TRUE(at->equal(this->mSequence.generic_end(kDeviant).get()));
  EXPECT_EQ(valuesOf(this->mSequence), Values{1});
}

TYPED_TEST(Sequences, ErasesAtAnIndex) {
  push(this->mSequence, {1, 2, 3});
  this->mSequence.generic_erase(kDeviant, 2);
  this->mSequence.generic_erase(kDeviant, 0);
  EXPECT_EQ(valuesOf(this->mSequence), Values{2});
}

TYPED_TEST(Sequences, ErasesNothingBetweenEqualIterators) {
  push(this->mSequence, {1, 2});
  const auto at = iteratorAt(this->mSequence, 1);
  const auto result = this->mSequence.generic_erase(kDeviant, at.get(), at.get());
  EXPECT_TRUE(result->equal(at.get()));
  EXPECT_NE(result, at);
  EXPECT_EQ(valuesOf(this->mSequence), (Values{1, 2}));
}

TYPED_TEST(Sequences, IsUsableAfterClear) {
  push(this->mSequence, {1, 2});
  this->mSequence.generic_clear(kDeviant);
  EXPECT_TRUE(this->mSequence.generic_empty(kDeviant));
  EXPECT_FALSE(this->mSequence.generic_contains(kDeviant, ref(1)));
  push(this->mSequence, {2, 1});
  EXPECT_EQ(valuesOf(this->mSequence), (Values{2, 1}));
}

TYPED_TEST(Sequences, FindsWhatItHolds) {
  push(this->mSequence, {1, 2});
  EXPECT_TRUE(this->mSequence.generic_contains(kDeviant, ref(2)));
  EXPECT_FALSE(this->mSequence.generic_contains(kDeviant, ref(3)));
}

TYPED_TEST(Sequences, LooksAtNoDeviant) {
  const K7Q::Deviant readOnly{K7Q::Deviant::kReadOnly};
  this->mSequence.generic_push_back(readOnly, ref(1));
  EXPECT_EQ(value(this->mSequence.generic_at(readOnly, 0)), 1);
}

TYPED_TEST(Sequences, HasEqualIteratorsAtBothEndsOfNothing) {
  const auto begin = this->mSequence.generic_begin(kDeviant);
  EXPECT_TRUE(begin->equal(this->mSequence.generic_end(kDeviant).get()));
}

TYPED_TEST(Sequences, IsWalkedInOrderBySizeSteps) {
  push(this->mSequence, {4, 2, 9});
  EXPECT_EQ(walk(this->mSequence), (Values{4, 2, 9}));
}

TYPED_TEST(Sequences, IsAnIterator) {
  const auto begin = this->mSequence.generic_begin(kDeviant);
  EXPECT_EQ(begin->cast(K7Q::tagsOf<IteratorIntf>()), begin.get());
  EXPECT_EQ(begin->cast(K7Q::tagsOf<SequenceIntf>()), nullptr);
}

TYPED_TEST(Sequences, GivesNewIteratorsWithoutReferences) {
  push(this->mSequence, {1});
  const auto first = this->mSequence.generic_begin(kDeviant);
  const auto second = this->mSequence.generic_begin(kDeviant);
  EXPECT_NE(first, second);
  EXPECT_TRUE(first->equal(second.get()));
  EXPECT_EQ(first->numRef(), 0);
  EXPECT_EQ(this->mSequence.generic_insert(kDeviant, first.get(), ref(2))->numRef(), 0);
  EXPECT_EQ(this->mSequence.generic_erase(kDeviant, this->mSequence.generic_begin(kDeviant).get())->numRef(),
            0);
}

TYPED_TEST(Sequences, ClonesAnIteratorThatStaysWhereItWas) {
  push(this->mSequence, {1, 2});
  const auto iterator = this->mSequence.generic_begin(kDeviant);
  iterator->addRef();
  iterator->addRef();
  const auto clone = iterator->clone();
  EXPECT_EQ(clone->numRef(), 0);
  EXPECT_TRUE(iterator->equal(clone.get()));
  iterator->next(kDeviant);
  EXPECT_FALSE(iterator->equal(clone.get()));
  EXPECT_EQ(value(*clone), 1);
  iterator->previous(kDeviant);
  EXPECT_TRUE(iterator->equal(clone.get()));
}

TYPED_TEST(Sequences, StepsBackFromTheEnd) {
  push(this->mSequence, {1, 2});
  const auto iterator = this->mSequence.generic_end(kDeviant);
  iterator->previous(kDeviant);
  EXPECT_EQ(value(*iterator), 2);
}

TYPED_TEST(Sequences, HasNoIteratorThatEqualsNull) {
  EXPECT_FALSE(this->mSequence.generic_begin(kDeviant)->equal(nullptr));
}

TYPED_TEST(Sequences, HasOtherIteratorsThanAnotherSequence) {
  TypeParam other;
  push(this->mSequence, {1});
  push(other, {1});
  EXPECT_FALSE(this->mSequence.generic_begin(kDeviant)->equal(other.generic_begin(kDeviant).get()));
}

TYPED_TEST(Sequences, GivesACopyThroughAnIterator) {
  push(this->mSequence, {1});
  const auto iterator = this->mSequence.generic_begin(kDeviant);
  const Ref seen = iterator->current(kDeviant);
  this->mSequence.generic_replace(kDeviant, 0, ref(2));
  EXPECT_EQ(value(seen), 1);
  EXPECT_EQ(value(*iterator), 2);
}
