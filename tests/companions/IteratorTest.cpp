#include "tests/companions/Support.h"

using namespace companions;

namespace {

class Iterators : public Companions {};

INSTANTIATE_TEST_SUITE_P(BothKinds, Iterators, testing::Values("make", "makeUnique"),
                         [](const auto& kind) { return std::string(kind.param); });

bool differ(const RVOInterfacePtr& left, const RVOInterfacePtr& right) {
  return host::call(left, "ne", {host::object(right)}).slot().logical();
}

TEST_P(Iterators, AreEqualAtBothEndsOfNothing) {
  const auto sequence = newSequence();
  const auto begin = host::callObject(sequence, "begin");
  const auto end = host::callObject(sequence, "end");
  EXPECT_TRUE(areEqual(begin, end));
  EXPECT_FALSE(differ(begin, end));
  EXPECT_EQ(host::className(begin), kIterator);
}

TEST_P(Iterators, VisitEveryElementInSizeSteps) {
  const auto sequence = newSequence({3, 0, 2});
  EXPECT_EQ(walk(sequence), (Values{3, 0, 2}));
  const auto at = host::callObject(sequence, "begin");
  for (int i = 0; i < sizeOf(sequence); ++i) EXPECT_TRUE(host::call(at, "getNext").isVoid());
  EXPECT_TRUE(areEqual(at, host::callObject(sequence, "end")));
}

TEST_P(Iterators, AreObjectsOfTheirOwn) {
  const auto sequence = newSequence({3, 0});
  const auto first = host::callObject(sequence, "begin");
  const auto second = host::callObject(sequence, "begin");
  EXPECT_NE(first, second);
  EXPECT_TRUE(areEqual(first, second));
  EXPECT_EQ(nativeOf(first).object->numRef(), 1);
  host::call(first, "getNext");
  EXPECT_FALSE(areEqual(first, second));
  EXPECT_EQ(itemOf(second), 3);
}

TEST_P(Iterators, StayBehindAsAClone) {
  const auto sequence = newSequence({3, 0});
  const auto at = host::callObject(sequence, "begin");
  const auto clone = host::callObject(at, "clone");
  EXPECT_NE(clone, at);
  EXPECT_TRUE(areEqual(at, clone));
  host::call(at, "getNext");
  EXPECT_FALSE(areEqual(at, clone));
  EXPECT_TRUE(differ(at, clone));
  EXPECT_EQ(itemOf(clone), 3);
  host::call(at, "getPrev");
  EXPECT_TRUE(areEqual(at, clone));
  EXPECT_FALSE(differ(at, clone));
}

TEST_P(Iterators, AreSteppedByEitherCall) {
  const auto sequence = newSequence({3, 0});
  const auto at = host::callObject(sequence, "begin");
  host::callStatic(kIterator, "getNext", {host::object(at)});
  EXPECT_EQ(itemOf(at), 0);
  host::callStatic(kIterator, "getPrev", {host::object(at)});
  EXPECT_EQ(itemOf(at), 3);
}

TEST_P(Iterators, AreNotMovedByACallThatTakesThem) {
  const auto sequence = newSequence({0, 1, 2, 3});
  const auto first = iteratorAt(sequence, 1);
  const auto before = host::callObject(first, "clone");
  const auto last = iteratorAt(sequence, 2);

  const auto next = host::callObject(sequence, "insert", {host::object(first), host::object(element(9))});
  EXPECT_TRUE(areEqual(first, before));
  EXPECT_EQ(itemOf(first), 1);
  EXPECT_EQ(itemOf(next), 9);

  const auto behind = host::callObject(sequence, "erase", {host::object(first), host::object(last)});
  EXPECT_TRUE(areEqual(first, before)) << "where the element stood";
  EXPECT_FALSE(areEqual(first, behind));
  EXPECT_EQ(itemOf(last), 2);
  EXPECT_TRUE(areEqual(last, behind));
  EXPECT_NE(last, behind);

  const auto third = host::callObject(last, "clone");
  const auto fourth = host::callObject(sequence, "erase", {host::object(last)});
  EXPECT_TRUE(areEqual(last, third)) << "where the element stood";
  EXPECT_FALSE(areEqual(last, fourth));
  EXPECT_EQ(itemOf(fourth), 3);
  EXPECT_EQ(valuesOf(sequence), (Values{0, 9, 3}));
}

TEST_P(Iterators, InsertGivesTheElementThatHasTheValue) {
  const auto sequence = newSequence({2, 1});
  const auto at = host::callObject(
      sequence, "insert", {host::object(host::callObject(sequence, "begin")), host::object(element(1))});
  EXPECT_EQ(itemOf(at), 1);
  EXPECT_EQ(valuesOf(sequence), isUnique() ? (Values{2, 1}) : (Values{1, 2, 1}));
  host::call(at, "getNext");
  EXPECT_EQ(areEqual(at, host::callObject(sequence, "end")), isUnique());
}

TEST_P(Iterators, InsertAtTheEndAppends) {
  const auto sequence = newSequence({2});
  const auto at = host::callObject(
      sequence, "insert", {host::object(host::callObject(sequence, "end")), host::object(element(1))});
  EXPECT_EQ(itemOf(at), 1);
  EXPECT_EQ(valuesOf(sequence), (Values{2, 1}));
}

TEST_P(Iterators, EraseOfTheWholeGivesTheEnd) {
  const auto sequence = newSequence({2, 1});
  const auto at = host::callObject(
      sequence, "erase",
      {host::object(host::callObject(sequence, "begin")), host::object(host::callObject(sequence, "end"))});
  EXPECT_EQ(sizeOf(sequence), 0);
  EXPECT_TRUE(areEqual(at, host::callObject(sequence, "end")));
}

TEST_P(Iterators, EraseOfNothingChangesNothing) {
  const auto sequence = newSequence({2, 1});
  for (const char* where : {"begin", "end"}) {
    const auto at = host::callObject(sequence, where);
    EXPECT_TRUE(areEqual(host::callObject(sequence, "erase", {host::object(at), host::object(at)}), at));
  }
  EXPECT_EQ(valuesOf(sequence), (Values{2, 1}));
}

TEST_P(Iterators, StayOnTheirElement) {
  const auto sequence = newSequence({2, 1});
  const auto at = iteratorAt(sequence, 1);
  host::call(sequence, "push_front", {host::object(element(0))});
  EXPECT_EQ(itemOf(at), 1);
  host::call(sequence, "replace", {host::integer(3), host::object(element(3))});
  EXPECT_EQ(itemOf(at), 3);
  host::call(sequence, "pop_front");
  host::call(sequence, "pop_front");
  EXPECT_EQ(itemOf(at), 3);
  EXPECT_TRUE(areEqual(at, host::callObject(sequence, "begin")));
}

TEST_P(Iterators, OfBothKindsAreNeverEqual) {
  const auto other = newSequence(isUnique() ? "make" : "makeUnique");
  const auto sequence = newSequence();
  EXPECT_FALSE(areEqual(host::callObject(sequence, "begin"), host::callObject(other, "begin")));
  EXPECT_TRUE(differ(host::callObject(sequence, "end"), host::callObject(other, "end")));
}

TEST_P(Iterators, OfTwoSequencesCompareByPlace) {
  const auto sequence = newSequence({1});
  const auto other = newSequence({1});
  EXPECT_FALSE(areEqual(host::callObject(sequence, "begin"), host::callObject(other, "begin")));
}

TEST_P(Iterators, EqualNothingNever) {
  const auto at = host::callObject(newSequence({1}), "begin");
  EXPECT_FALSE(invoke(record(kIterator, "eq"), {at, Slot::empty()}).slot().logical());
  EXPECT_TRUE(invoke(record(kIterator, "ne"), {at, Slot::empty()}).slot().logical());
}

TEST_P(Iterators, OfNothingRaiseTheNullText) {
  for (const char* cls : {kIterator, kImmutableIterator}) {
    for (const char* method : {"getNext", "getPrev", "item"}) {
      EXPECT_NE(raised([&] { invoke(record(cls, method), {Slot::empty()}); }).find(kNullText),
                std::string::npos);
    }
    const int line = cls == kIterator ? 85 : 41;
    EXPECT_EQ(raised([&] { invoke(record(cls, "clone"), {Slot::empty()}); }),
              std::string("Assertion failed: ") + kNullText +
                  " at kernel/containers/iterator/Iterator:" + std::to_string(line) + ": ");
  }
}

TEST_P(Iterators, OfTheImmutableClassAreImmutable) {
  const auto sequence = newSequence({1, 2});
  const RVOInterfacePtr at(invoke(record(kImmutableSequence, "begin"), {sequence}).object());
  const RVOInterfacePtr end(invoke(record(kImmutableSequence, "end"), {sequence}).object());
  EXPECT_EQ(host::className(at), kImmutableIterator);
  EXPECT_TRUE(K7Q::DeviantRegistry::isImmutable(at->getBoundPointer({})));
  EXPECT_FALSE(K7Q::DeviantRegistry::isImmutable(host::callObject(sequence, "begin")->getBoundPointer({})));
  EXPECT_EQ(host::className(host::callObject(at, "clone")), kImmutableIterator);
  host::call(at, "getNext");
  EXPECT_EQ(itemOf(at), 2);
  host::call(at, "getNext");
  EXPECT_TRUE(areEqual(at, end));
}

TEST_P(Iterators, TakeTheSequencesDeviant) {
  const auto frozen = host::callObject(mModel, "frozen");
  const RVOInterfacePtr sequence(host::callStatic(kSequence, GetParam(), {host::object(frozen)}).object());
  host::call(sequence, "push_back", {host::object(element(1))});
  const auto at = host::callObject(sequence, "begin");
  EXPECT_EQ(nativeOf(at).deviant.word, K7Q::Deviant::kFrozen);
  EXPECT_EQ(nativeOf(host::callObject(at, "clone")).deviant.word, K7Q::Deviant::kFrozen);
  EXPECT_EQ(itemOf(at), 1);
}

TEST_P(Iterators, BelongToTheHostObject) {
  const auto sequence = newSequence({1});
  auto at = host::callObject(sequence, "begin");
  const auto* bound = at->getBoundPointer({});
  const int references = nativeOf(sequence).object->numRef();
  EXPECT_EQ(references, 1) << "an iterator holds no reference on its sequence";
  at = RVOInterfacePtr();
  EXPECT_EQ(K7Q::DeviantRegistry::getVariantInfo(bound).object, nullptr);
}

}  // namespace
