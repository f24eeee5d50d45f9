#include "tests/companions/Support.h"

using namespace companions;

namespace {

constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();

INSTANTIATE_TEST_SUITE_P(BothKinds, Companions, testing::Values("make", "makeUnique"),
                         [](const auto& kind) { return std::string(kind.param); });

TEST_P(Companions, AreEmptyWhenNew) {
  const auto sequence = newSequence();
  EXPECT_EQ(host::className(sequence), kSequence);
  EXPECT_TRUE(host::call(sequence, "isEmpty").slot().logical());
  EXPECT_EQ(sizeOf(sequence), 0);
}

TEST_P(Companions, AreMadeWithEitherModel) {
  const auto frozen = host::callObject(mModel, "frozen");
  const RVOInterfacePtr sequence(host::callStatic(kSequence, GetParam(), {host::object(frozen)}).object());
  EXPECT_EQ(sizeOf(sequence), 0);
  EXPECT_EQ(nativeOf(sequence).deviant.word, K7Q::Deviant::kFrozen);
  EXPECT_EQ(nativeOf(newSequence()).deviant, K7Q::Deviant());
}

TEST_P(Companions, AreTwoWhenMadeTwice) { EXPECT_NE(newSequence(), newSequence()); }

TEST_P(Companions, KeepDuplicatesUnlessTheyAreUnique) {
  const auto sequence = newSequence();
  host::call(sequence, "push_back", {host::object(element(2))});
  host::call(sequence, "append", {host::object(element(2))});
  EXPECT_EQ(sizeOf(sequence), isUnique() ? 1 : 2);
  EXPECT_EQ(valuesOf(newSequence({3, 1, 3})), isUnique() ? (Values{3, 1}) : (Values{3, 1, 3}));
}

TEST_P(Companions, PushFrontAndPop) {
  const auto sequence = newSequence({1, 2});
  host::call(sequence, "push_front", {host::object(element(0))});
  EXPECT_EQ(valuesOf(sequence), (Values{0, 1, 2}));
  EXPECT_TRUE(host::call(sequence, "pop_front").isVoid());
  EXPECT_TRUE(host::call(sequence, "pop_back").isVoid());
  EXPECT_EQ(valuesOf(sequence), Values{1});
}

TEST_P(Companions, FrontIsTheFirstAndBackTheLast) {
  const auto sequence = newSequence({2, 0, 3});
  EXPECT_EQ(valueOf(host::callObject(sequence, "front")), 2);
  EXPECT_EQ(valueOf(host::callObject(sequence, "at", {host::integer(1)})), 2);
  EXPECT_EQ(valueOf(host::callObject(sequence, "back")), 3);
  EXPECT_EQ(host::className(host::callObject(sequence, "back")), kElement);
}

TEST_P(Companions, InsertBehindTheLastAppends) {
  const auto sequence = newSequence();
  host::call(sequence, "insert", {host::integer(1), host::object(element(1))});
  host::call(sequence, "insert", {host::integer(2), host::object(element(2))});
  host::call(sequence, "insert", {host::integer(1), host::object(element(0))});
  EXPECT_EQ(valuesOf(sequence), (Values{0, 1, 2}));
}

TEST_P(Companions, ReplaceAndEraseCountFromOne) {
  const auto sequence = newSequence({0, 1, 2});
  host::call(sequence, "replace", {host::integer(1), host::object(element(3))});
  host::call(sequence, "erase", {host::integer(3)});
  EXPECT_EQ(valuesOf(sequence), (Values{3, 1}));
}

TEST_P(Companions, ReplaceByAValueThatIsThere) {
  const auto sequence = newSequence({2, 1});
  host::call(sequence, "replace", {host::integer(1), host::object(element(1))});
  EXPECT_EQ(valuesOf(sequence), isUnique() ? (Values{2, 1}) : (Values{1, 1}));
  host::call(sequence, "replace", {host::integer(1), host::object(element(3))});
  host::call(sequence, "replace", {host::integer(1), host::object(element(3))});
  EXPECT_EQ(valuesOf(sequence), (Values{3, 1}));
}

TEST_P(Companions, RemoveAllTellsHowMany) {
  const auto sequence = newSequence({3, 1, 3});
  EXPECT_EQ(host::call(sequence, "removeAll", {host::object(element(2))}).slot().int32(), 0);
  EXPECT_EQ(host::call(sequence, "removeAll", {host::object(element(3))}).slot().int32(), isUnique() ? 1 : 2);
  EXPECT_EQ(host::call(sequence, "removeAll", {host::object(element(3))}).slot().int32(), 0);
  EXPECT_EQ(valuesOf(sequence), Values{1});
}

TEST_P(Companions, ClearTwice) {
  const auto sequence = newSequence({3, 1});
  host::call(sequence, "clear");
  host::call(sequence, "clear");
  EXPECT_EQ(sizeOf(sequence), 0);
}

/// A call with an index, and the line numbers in its errors: for an index below 1, and for one that is too
/// large.
struct IndexCall {
  const char* method;
  bool takesElement;
  int line;
  /// How far the first refused index is above the size.
  int beyond;
};
constexpr IndexCall kIndexCalls[] = {
    {"at", false, 251, 1}, {"erase", false, 351, 1}, {"replace", true, 412, 1}, {"insert", true, 314, 2}};

std::string refusal(const RVOInterfacePtr& sequence, const IndexCall& call, int index) {
  return raised([&] {
    const auto value = element(0);
    if (call.takesElement) {
      host::call(sequence, call.method, {host::integer(index), host::object(value)});
    } else {
      host::call(sequence, call.method, {host::integer(index)});
    }
  });
}

TEST_P(Companions, RefuseAnIndexOutsideAndStayAsTheyAre) {
  for (const Values& values : {Values{}, Values{2, 1, 3}}) {
    const auto sequence = newSequence(values);
    const int size = sizeOf(sequence);
    for (const auto& call : kIndexCalls) {
      for (const int index : {0, -1, -2, kLeast, kLeast + 1}) {
        EXPECT_EQ(refusal(sequence, call, index), failure("sequence index must be positive", call.line))
            << call.method << " " << index;
      }
      for (const int index : {size + call.beyond, size + call.beyond + 1, kMost - 1, kMost}) {
        EXPECT_EQ(refusal(sequence, call, index), failure("sequence index out of bounds", call.line + 1))
            << call.method << " " << index;
      }
      EXPECT_EQ(valuesOf(sequence), values) << call.method;
    }
  }
}

TEST_P(Companions, RefuseAnIndexThatIsNoInt32BeforeTheCall) {
  const auto sequence = newSequence({2, 1});
  for (const auto& value : {host::number(1.5), host::integer(std::int64_t{1} << 31), host::number(1e300)}) {
    EXPECT_THROW(host::call(sequence, "at", {value}), K7Q::Exception);
    EXPECT_THROW(host::call(sequence, "erase", {value}), K7Q::Exception);
  }
  EXPECT_EQ(valuesOf(sequence), (Values{2, 1}));
}

TEST_P(Companions, HaveNoEndsWhenTheyAreEmpty) {
  const auto sequence = newSequence();
  const std::pair<const char*, int> calls[] = {
      {"front", 261}, {"back", 270}, {"pop_back", 362}, {"pop_front", 371}};
  for (const auto& [method, line] : calls) {
    EXPECT_EQ(raised([&, name = method] { host::call(sequence, name); }), failure("sequence is empty", line));
  }
  EXPECT_EQ(sizeOf(sequence), 0);
}

TEST_P(Companions, OfNothingRaiseTheNullSequenceText) {
  const auto iterator = host::callObject(newSequence({1}), "begin");
  int calls = 0;
  for (const char* cls : {kSequence, kImmutableSequence}) {
    for (const auto* each : host::cls(cls).methods()) {
      const auto& signature = *each->getSignature();
      std::vector<Slot> slots;
      if (!signature.self().empty()) slots.push_back(Slot::empty());
      for (const auto& argument : signature.arguments()) {
        if (argument.view() == cls) {
          slots.push_back(Slot::empty());
        } else if (argument.view() == "int32 scalar") {
          slots.emplace_back(1);
        } else if (argument.view() == kElement) {
          slots.emplace_back(element(1));
        } else if (argument.view() == kIterator) {
          slots.emplace_back(iterator);
        }
      }
      // Only `make` has no parameter for the sequence.
      if (each->getName().view().starts_with("make")) continue;
      EXPECT_EQ(raised([&] { invoke(*each, slots); }), kNullSequence) << cls << " " << each->getName().view();
      ++calls;
    }
  }
  EXPECT_EQ(calls, 27);
}

TEST_P(Companions, TakeNothingForLiteralZero) {
  const auto sequence = newSequence({3});
  invoke(record(kSequence, "push_back"), {sequence, Slot::empty()});
  EXPECT_EQ(valuesOf(sequence), (Values{3, 0}));
  EXPECT_EQ(invoke(record(kSequence, "removeAll"), {sequence, Slot::empty()}).slot().int32(), 1);
  invoke(record(kSequence, "append"), {sequence, Slot::empty()});
  host::call(sequence, "clear");
  invoke(record(kSequence, "push_front"), {sequence, Slot::empty()});
  EXPECT_EQ(valuesOf(sequence), Values{0});
  host::call(sequence, "replace", {host::integer(1), host::object(element(3))});
  invoke(record(kSequence, "insert", 1), {sequence, 1, Slot::empty()});
  EXPECT_EQ(valuesOf(sequence), (Values{0, 3}));
  host::call(sequence, "replace", {host::integer(1), host::object(element(2))});
  invoke(record(kSequence, "replace"), {sequence, 2, Slot::empty()});
  EXPECT_EQ(valuesOf(sequence), (Values{2, 0}));
  host::call(sequence, "replace", {host::integer(2), host::object(element(1))});
  invoke(record(kSequence, "insert"), {sequence, iteratorAt(sequence, 1), Slot::empty()});
  EXPECT_EQ(valuesOf(sequence), (Values{2, 0, 1}));
}

TEST_P(Companions, KeepAValueThatNoLiteralHas) {
  const auto sequence = newSequence({77, -1, kLeast, kMost});
  EXPECT_EQ(valuesOf(sequence), (Values{77, -1, kLeast, kMost}));
  EXPECT_EQ(walk(sequence), (Values{77, -1, kLeast, kMost}));
  EXPECT_EQ(host::textOf(host::call(host::callObject(sequence, "front"), "toString")), "77");
  EXPECT_EQ(host::call(sequence, "removeAll", {host::object(element(-1))}).slot().int32(), 1);
}

TEST_P(Companions, TakeTheNumberOfAnotherEnumerationFromARecordAlone) {
  const auto sequence = newSequence();
  const RVOInterfacePtr other(host::callStatic("common.ArxmlFilePackagingKind", "SingleFile").object());
  EXPECT_THROW(host::call(sequence, "push_back", {host::object(other)}), K7Q::WrongType);
  invoke(record(kSequence, "push_back"), {sequence, other});
  EXPECT_EQ(sizeOf(sequence), 1);
}

TEST_P(Companions, AskNothingOfTheModelTheyAreMadeWith) {
  EXPECT_EQ(invoke(record(kSequence, GetParam(), 0), {Slot::empty()}).object()->getClass()->getClassName(),
            std::string(kSequence));
  const auto sequence = newSequence({1});
  host::call(mModel, "close");
  host::call(sequence, "push_back", {host::object(element(2))});
  EXPECT_EQ(valuesOf(sequence), (Values{1, 2}));
}

TEST_P(Companions, BelongToTheHostObject) {
  auto sequence = newSequence({1, 2});
  EXPECT_EQ(nativeOf(sequence).object->numRef(), 1);
  const auto arrays = hx::hxLiveArrays();
  const auto* bound = sequence->getBoundPointer({});
  sequence = RVOInterfacePtr();
  EXPECT_EQ(K7Q::DeviantRegistry::getVariantInfo(bound).object, nullptr);
  EXPECT_EQ(hx::hxLiveArrays(), arrays);
}

TEST_P(Companions, AreCalledBothWays) {
  const auto sequence = newSequence({1, 2});
  EXPECT_EQ(valueOf(RVOInterfacePtr(
                host::callStatic(kSequence, "at", {host::object(sequence), host::integer(2)}).object())),
            2);
  host::callStatic(kSequence, "erase", {host::object(sequence), host::integer(1)});
  host::callStatic(kSequence, "insert", {host::object(sequence), host::integer(1), host::object(element(3))});
  host::callStatic(kSequence, "replace",
                   {host::object(sequence), host::integer(2), host::object(element(0))});
  EXPECT_EQ(valuesOf(sequence), (Values{3, 0}));
}

TEST_P(Companions, RefuseWhatIsNoElement) {
  const auto sequence = newSequence({1});
  const auto package = host::make("common.Package", {host::object(mModel)});
  for (const auto& value :
       {host::integer(1), host::text(u"LinkTime"), host::object(package), host::object(sequence)}) {
    EXPECT_THROW(host::call(sequence, "push_back", {value}), K7Q::WrongType);
  }
  EXPECT_EQ(valuesOf(sequence), Values{1});
}

TEST_P(Companions, AreReadThroughTheImmutableClass) {
  const auto sequence = newSequence({1, 2});
  EXPECT_EQ(invoke(record(kImmutableSequence, "size"), {sequence}).slot().int32(), 2);
  EXPECT_FALSE(invoke(record(kImmutableSequence, "isEmpty"), {sequence}).slot().logical());
  EXPECT_EQ(valueOf(RVOInterfacePtr(invoke(record(kImmutableSequence, "at"), {sequence, 2}).object())), 2);
  EXPECT_EQ(raised([&] {
              invoke(record(kImmutableSequence, "at"), {sequence, 3});
            }),
            failure("sequence index out of bounds", 252));
}

}  // namespace
