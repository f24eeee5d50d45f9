#include <type_traits>

#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/boundary/k7q/Reference.h"
#include "tests/collections/Support.h"

using namespace collections;

namespace {

using ForPrimitives = K7Q::ListQImplInternal::ListQImplForPrimitives<Kind>;
using Storage = Performance::COWWrapperContainerSequential<std::vector<Kind>>;

static_assert(std::is_base_of_v<K7Q::ListQImplBase<Kind, K7Q::TRUE_TYPE>, List>);
static_assert(std::is_base_of_v<ForPrimitives, K7Q::ListQImplBase<Kind, K7Q::TRUE_TYPE>>);
static_assert(std::is_base_of_v<SequenceIntf, ForPrimitives>);
static_assert(sizeof(List) == sizeof(SequenceIntf) + sizeof(Storage), "the storage is all that is added");
static_assert(std::is_base_of_v<K7Q::IteratorProxy, ForPrimitives::Iterator>);
static_assert(sizeof(ForPrimitives::Iterator) == sizeof(K7Q::IteratorProxy) + sizeof(void*));

/// The reference count of the shared empty payload, with which all lists begin.
int holdersOfNothing() {
  return Performance::COWWrapperTypedData<std::vector<Kind>>::getSharedNull()->mRefCount.load();
}

}  // namespace

TEST(List, IsEmptyWhenNew) {
  const List list;
  EXPECT_EQ(list.generic_size(kDeviant), 0);
  EXPECT_TRUE(list.generic_empty(kDeviant));
  EXPECT_FALSE(list.generic_contains(kDeviant, ref(0)));
}

TEST(List, AllocatesNothingWhenNewOrRead) {
  const auto before = allocations::count();
  const List list;
  EXPECT_EQ(list.generic_size(kDeviant), 0);
  EXPECT_TRUE(list.generic_empty(kDeviant));
  EXPECT_EQ(allocations::count(), before);
}

TEST(List, StaysOnTheSharedPayloadUntilItIsWritten) {
  List list;
  EXPECT_EQ(holdersOfNothing(), 2);
  list.generic_contains(kDeviant, ref(1));
  EXPECT_EQ(list.generic_removeAll(kDeviant, ref(1)), 0);
  EXPECT_EQ(holdersOfNothing(), 2);
  push(list, {1});
  EXPECT_EQ(holdersOfNothing(), 1);
}

TEST(List, DetachesForItsIterators) {
  const List first;
  const List second;
  EXPECT_EQ(holdersOfNothing(), 3);
  first.generic_begin(kDeviant);
  EXPECT_EQ(holdersOfNothing(), 2);
  second.generic_end(kDeviant);
  EXPECT_EQ(holdersOfNothing(), 1);
}

TEST(List, DetachesForEveryChange) {
  const auto detaches = [](auto change) {
    List list;
    const int before = holdersOfNothing();
    change(list);
    return holdersOfNothing() == before - 1;
  };
  EXPECT_TRUE(detaches([](List& list) { list.generic_clear(kDeviant); }));
  EXPECT_TRUE(detaches([](List& list) { list.generic_insert(kDeviant, 0, ref(1)); }));
  EXPECT_TRUE(detaches([](List& list) { list.generic_push_front(kDeviant, ref(1)); }));
  // Erasing an empty range removes nothing but still detaches.
  EXPECT_TRUE(detaches([](List& list) {
    const ForPrimitives::Iterator::Position start{};
    const ForPrimitives::Iterator nowhere(start);
    EXPECT_NE(list.generic_erase(kDeviant, &nowhere, &nowhere), nullptr);
  }));
}

TEST(List, GivesItsMemoryBack) {
  const auto before = allocations::live();
  {
    List list;
    push(list, {1, 2, 3});
  }
  EXPECT_EQ(allocations::live(), before);
}

TEST(List, KeepsItsCapacityWhenCleared) {
  List list;
  push(list, {1, 2, 3});
  list.generic_clear(kDeviant);
  EXPECT_TRUE(list.generic_empty(kDeviant));
  const Ref value = ref(1);
  const auto before = allocations::count();
  for (int i = 0; i < 3; ++i) list.generic_push_back(kDeviant, value);
  EXPECT_EQ(allocations::count(), before);
}

TEST(List, KeepsDuplicatesAndRemovesThemAll) {
  List list;
  push(list, {5, 1, 5, 2});
  EXPECT_EQ(list.generic_size(kDeviant), 4);
  EXPECT_EQ(list.generic_removeAll(kDeviant, ref(5)), 2);
  EXPECT_EQ(valuesOf(list), (Values{1, 2}));
}

TEST(List, RemovesAdjacentMatches) {
  List list;
  push(list, {1, 5, 5, 2, 5});
  EXPECT_EQ(list.generic_removeAll(kDeviant, ref(5)), 3);
  EXPECT_EQ(valuesOf(list), (Values{1, 2}));
}

TEST(List, RemovesThroughItsVirtualErase) {
  struct Watched : List {
    int erased = 0;
    IteratorPtr generic_erase(const K7Q::Deviant& aDeviant, const IteratorIntf* iterator) override {
      ++erased;
      return List::generic_erase(aDeviant, iterator);
    }
    using List::generic_erase;
  };
  Watched list;
  push(list, {5, 1, 5});
  EXPECT_EQ(list.generic_removeAll(kDeviant, ref(5)), 2);
  EXPECT_EQ(list.erased, 2);
}

TEST(List, ErasesARangeAndGivesThePlaceBehind) {
  List list;
  push(list, {1, 2, 3, 4});
  const auto behind = list.generic_erase(kDeviant, iteratorAt(list, 1).get(), iteratorAt(list, 3).get());
  EXPECT_EQ(value(*behind), 4);
  EXPECT_EQ(valuesOf(list), (Values{1, 4}));
}

TEST(List, GivesTheNameThatItWasAsked) {
  const List list;
  const char* const name = "Some.Name";
  for (bool isImmutable : {false, true}) {
    EXPECT_EQ(list.generic_getRuvoName(isImmutable, false, name), name);
    EXPECT_EQ(list.generic_getRuvoName(isImmutable, true, name), name);
  }
  EXPECT_EQ(list.generic_getRuvoName(false, false, nullptr), nullptr);
}

TEST(ListIterator, StandsOnTheElementAtItsPlace) {
  List list;
  push(list, {1, 2});
  list.generic_replace(kDeviant, 0, ref(7));
  const auto begin = list.generic_begin(kDeviant);
  EXPECT_EQ(value(*begin), 7);
  // Erasing does not reallocate: the iterator keeps its position, where the next element is now.
  list.generic_erase(kDeviant, 0);
  EXPECT_EQ(value(*begin), 2);
}

TEST(ListIterator, IsNoMultiIndexIterator) {
  const List list;
  const Multi multi;
  const Unique unique;
  const auto ofList = list.generic_begin(kDeviant);
  const auto ofMulti = multi.generic_begin(kDeviant);
  const auto ofUnique = unique.generic_begin(kDeviant);
  EXPECT_FALSE(ofList->equal(ofMulti.get()));
  EXPECT_FALSE(ofMulti->equal(ofList.get()));
  EXPECT_FALSE(ofMulti->equal(ofUnique.get()));
  EXPECT_FALSE(ofUnique->equal(ofMulti.get()));
}

TEST(ListIterator, IsNoIteratorOfAListOfAnotherEnumeration) {
  namespace common = Tarvelon::metamodel::arplatform::common;
  const List list;
  const K7Q::ListQImpl<common::ArxmlFilePackagingKind> other;
  EXPECT_FALSE(list.generic_begin(kDeviant)->equal(other.generic_begin(kDeviant).get()));
}
