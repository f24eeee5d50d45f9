// Each allocation of an operation fails in turn. The contents must not change, nothing may leak, and the
// operation must succeed when repeated.
#include <functional>
#include <new>

#include "tarvelon/collections/MakeSequence.h"
#include "tests/collections/Support.h"

using namespace collections;

namespace {

/// Checks at the end of its scope that all memory allocated in the scope was freed.
class ExpectNoLeak {
 public:
  ~ExpectNoLeak() { EXPECT_EQ(allocations::live(), mLive); }

 private:
  std::size_t mLive = allocations::live();
};

/// Makes the first, then the second, ... allocation of `action` fail, until it succeeds. Returns the number
/// of failures.
int failEach(const std::function<void()>& action, const std::function<void()>& check) {
  constexpr int kTooMany = 100;
  for (int failures = 0; failures < kTooMany; ++failures) {
    allocations::fail(static_cast<std::size_t>(failures) + 1);
    try {
      action();
      allocations::fail(0);
      return failures;
    } catch (const std::bad_alloc&) {
      allocations::fail(0);
    }
    check();
  }
  ADD_FAILURE() << "the action fails for good";
  return kTooMany;
}

using Change = std::function<void(SequenceIntf&)>;

const Ref kValue = ref(9);

const Change kPushBack = [](SequenceIntf& s) { s.generic_push_back(kDeviant, kValue); };
const Change kPushFront = [](SequenceIntf& s) { s.generic_push_front(kDeviant, kValue); };
const Change kInsert = [](SequenceIntf& s) { s.generic_insert(kDeviant, 0, kValue); };
const Change kInsertAt = [](SequenceIntf& s) {
  s.generic_insert(kDeviant, s.generic_begin(kDeviant).get(), kValue);
};
const Change kMakeAndPush = [](SequenceIntf& s) { s.generic_push_back(kDeviant, ref(9)); };
const Change kErase = [](SequenceIntf& s) { s.generic_erase(kDeviant, 0); };
const Change kEraseAt = [](SequenceIntf& s) { s.generic_erase(kDeviant, s.generic_begin(kDeviant).get()); };
const Change kEraseRange = [](SequenceIntf& s) {
  s.generic_erase(kDeviant, s.generic_begin(kDeviant).get(), s.generic_end(kDeviant).get());
};
const Change kReplace = [](SequenceIntf& s) { s.generic_replace(kDeviant, 0, kValue); };
const Change kPopBack = [](SequenceIntf& s) { s.generic_pop_back(kDeviant); };
const Change kPopFront = [](SequenceIntf& s) { s.generic_pop_front(kDeviant); };

/// Checks that an operation either succeeds or leaves the sequence unchanged.
template <class Sequence>
void expectAllOrNothing(const Change& change, const Values& before, const Values& after, bool allocates) {
  const ExpectNoLeak expectNoLeak;
  Sequence sequence;
  push(sequence, before);
  const int failures = failEach([&] { change(sequence); }, [&] { EXPECT_EQ(valuesOf(sequence), before); });
  EXPECT_EQ(failures > 0, allocates);
  EXPECT_EQ(valuesOf(sequence), after);
}

template <class Sequence>
class AllocationFailures : public testing::Test {};
using AllKinds = testing::Types<List, Multi, Unique>;
TYPED_TEST_SUITE(AllocationFailures, AllKinds);

}  // namespace

TYPED_TEST(AllocationFailures, OfAdding) {
  // After four elements a vector's capacity is used up.
  expectAllOrNothing<TypeParam>(kPushBack, {1, 2, 3, 4}, {1, 2, 3, 4, 9}, true);
  expectAllOrNothing<TypeParam>(kPushFront, {1, 2, 3, 4}, {9, 1, 2, 3, 4}, true);
  expectAllOrNothing<TypeParam>(kInsert, {1, 2, 3, 4}, {9, 1, 2, 3, 4}, true);
  expectAllOrNothing<TypeParam>(kInsertAt, {1, 2, 3, 4}, {9, 1, 2, 3, 4}, true);
  expectAllOrNothing<TypeParam>(kMakeAndPush, {1, 2, 3, 4}, {1, 2, 3, 4, 9}, true);
}

TYPED_TEST(AllocationFailures, OfAddingTheFirst) {
  expectAllOrNothing<TypeParam>(kPushBack, {}, {9}, true);
  expectAllOrNothing<TypeParam>(kPushFront, {}, {9}, true);
  expectAllOrNothing<TypeParam>(kInsert, {}, {9}, true);
  expectAllOrNothing<TypeParam>(kInsertAt, {}, {9}, true);
}

TYPED_TEST(AllocationFailures, OfAddingWithRoomToSpare) {
  expectAllOrNothing<TypeParam>(kInsertAt, {1, 2, 3}, {9, 1, 2, 3}, true);
}

TYPED_TEST(AllocationFailures, OfErasing) {
  expectAllOrNothing<TypeParam>(kEraseAt, {1, 2}, {2}, true);
  expectAllOrNothing<TypeParam>(kEraseRange, {1, 2}, {}, true);
}

TYPED_TEST(AllocationFailures, OfWhatNeedsNoMemory) {
  expectAllOrNothing<TypeParam>(kErase, {1, 2}, {2}, false);
  expectAllOrNothing<TypeParam>(kReplace, {1, 2}, {9, 2}, false);
  expectAllOrNothing<TypeParam>(kPopBack, {1, 2}, {1}, false);
  expectAllOrNothing<TypeParam>(kPopFront, {1, 2}, {2}, false);
}

TYPED_TEST(AllocationFailures, OfReading) {
  const ExpectNoLeak expectNoLeak;
  TypeParam sequence;
  push(sequence, {1, 2});
  const auto iterator = sequence.generic_begin(kDeviant);
  const auto isWhole = [&] { EXPECT_EQ(valuesOf(sequence), (Values{1, 2})); };
  EXPECT_EQ(failEach([&] { sequence.generic_at(kDeviant, 1); }, isWhole), 1);
  EXPECT_EQ(failEach([&] { sequence.generic_front(kDeviant); }, isWhole), 1);
  EXPECT_EQ(failEach([&] { sequence.generic_back(kDeviant); }, isWhole), 1);
  EXPECT_EQ(failEach([&] { iterator->current(kDeviant); }, isWhole), 1);
}

TYPED_TEST(AllocationFailures, OfBeginAndEnd) {
  const ExpectNoLeak expectNoLeak;
  TypeParam sequence;
  const auto isEmpty = [&] { EXPECT_TRUE(sequence.generic_empty(kDeviant)); };
  EXPECT_GT(failEach([&] { sequence.generic_begin(kDeviant); }, isEmpty), 0);
  EXPECT_GT(failEach([&] { sequence.generic_end(kDeviant); }, isEmpty), 0);
}

TYPED_TEST(AllocationFailures, OfCloningAnIterator) {
  const ExpectNoLeak expectNoLeak;
  TypeParam sequence;
  push(sequence, {1, 2});
  const auto iterator = sequence.generic_begin(kDeviant);
  const auto isUnmoved = [&] { EXPECT_EQ(value(*iterator), 1); };
  EXPECT_EQ(failEach([&] { iterator->clone(); }, isUnmoved), 1);
}

TEST(ListAllocationFailures, OfRemovingAllLeaveTheListWhole) {
  const ExpectNoLeak expectNoLeak;
  List list;
  push(list, {5, 1, 5, 2, 5});
  const Ref five = ref(5);
  // The matches are removed one at a time: only those before the failure are removed.
  allocations::fail(2);
  EXPECT_THROW(list.generic_removeAll(kDeviant, five), std::bad_alloc);
  EXPECT_EQ(valuesOf(list), (Values{1, 5, 2, 5}));
  EXPECT_EQ(list.generic_removeAll(kDeviant, five), 2);
  EXPECT_EQ(valuesOf(list), (Values{1, 2}));
}

TEST(MakeSequenceAllocationFailures, LeakNothing) {
  for (bool isUnique : {false, true}) {
    for (bool useProxy : {false, true}) {
      const K7Q::SequenceOptions options{kDeviant, K7Q::MULTI_INDEX, isUnique, useProxy};
      const ExpectNoLeak expectNoLeak;
      std::unique_ptr<SequenceIntf> owned;
      const int failures = failEach(
          [&] {
            const auto sequence = K7Q::makeSequence<Kind>(options);
            if (!useProxy) owned.reset(sequence.getInterface());
          },
          [] {});
      EXPECT_GT(failures, useProxy ? 1 : 0);
    }
  }
}
