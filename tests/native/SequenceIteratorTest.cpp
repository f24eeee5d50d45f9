// Iterators of many-valued properties.

#include <functional>

#include "tests/native/SequenceFixture.h"

namespace {

using SequenceIterator = Sequence;

}  // namespace

TEST_F(SequenceIterator, VisitsEveryElement) {
  fill();
  const auto at = begin();
  std::string visited;
  for (; !at.getInterface()->equal(end().getInterface()); at.getInterface()->next({})) {
    const auto element = at.getInterface()->current({});
    visited += K7Q::String::to_string(
        variant::SystemConst::cast(
            K7Q::Object(static_cast<K7Q::NSInterface::ObjectIntf*>(element.value()), {}))
            .get<"Name">());
  }
  EXPECT_EQ(visited, "abc");
}

TEST_F(SequenceIterator, StepsBackToWhereItCameFrom) {
  fill();
  const auto at = begin();
  const K7Q::IteratorHandle copy = at;
  at.getInterface()->next({});
  EXPECT_FALSE(at.getInterface()->equal(copy.getInterface()));
  at.getInterface()->previous({});
  EXPECT_TRUE(at.getInterface()->equal(copy.getInterface()));
  EXPECT_FALSE(at.getInterface()->equal(nullptr));
}

TEST_F(SequenceIterator, NeverReadsPastTheEnds) {
  fill();
  const auto at = end();
  expectAssertion(kBeyond, [&] { at.getInterface()->current({}); });
  at.getInterface()->next({});
  expectAssertion(kBeyond, [&] { at.getInterface()->current({}); });
  const auto first = begin();
  first.getInterface()->previous({});
  expectAssertion(kNegative, [&] { first.getInterface()->current({}); });
}

TEST_F(SequenceIterator, IsStaleOnceTheListHasChanged) {
  fill();
  mConstants.push_back(variant::SystemConst::create(mModel, u"d"));
  const std::vector<std::function<void()>> changes{
      [&] { sequence().generic_push_back({}, ref(3)); }, [&] { sequence().generic_insert({}, 0, ref(3)); },
      [&] { sequence().generic_erase({}, 1); },          [&] { mConstants[1].destroy(); },
      [&] { sequence().generic_pop_back({}); },          [&] { sequence().generic_clear({}); }};
  for (const auto& change : changes) {
    const auto at = begin();
    change();
    const auto expectStale = [](const auto& use) {
      EXPECT_NE(refusalOf(use).find("SysConst: the sequence has changed since"), std::string::npos);
    };
    expectStale([&] { at.getInterface()->current({}); });
    expectStale([&] { at.getInterface()->next({}); });
    expectStale([&] { at.getInterface()->previous({}); });
    expectStale([&] { sequence().generic_erase({}, at.getInterface()); });
    expectStale([&] { sequence().generic_insert({}, at.getInterface(), ref(3)); });
    EXPECT_FALSE(at.getInterface()->equal(begin().getInterface()));
  }
}

TEST_F(SequenceIterator, IsNotStaleWhenNothingHasChanged) {
  fill();
  mConstants.push_back(variant::SystemConst::create(mModel, u"d"));
  const auto at = begin();
  sequence().generic_push_back({}, ref(0));
  sequence().generic_removeAll({}, ref(3));
  sequence().generic_erase({}, at.getInterface(), at.getInterface());
  EXPECT_TRUE(at.getInterface()->current({}).equals(ref(0)));
}

TEST_F(SequenceIterator, TellsWhereToInsertAndErase) {
  fill();
  mConstants.push_back(variant::SystemConst::create(mModel, u"d"));
  const auto at = begin();
  at.getInterface()->next({});
  const K7Q::IteratorHandle inserted(sequence().generic_insert({}, at.getInterface(), ref(3)), {});
  EXPECT_EQ(names(), "adbc");
  EXPECT_TRUE(inserted.getInterface()->current({}).equals(ref(3)));
  const K7Q::IteratorHandle behind(sequence().generic_erase({}, inserted.getInterface()), {});
  EXPECT_EQ(names(), "abc");
  EXPECT_TRUE(behind.getInterface()->current({}).equals(ref(1)));
  const K7Q::IteratorHandle rest(sequence().generic_erase({}, behind.getInterface(), end().getInterface()),
                                 {});
  EXPECT_EQ(names(), "a");
  EXPECT_TRUE(rest.getInterface()->equal(end().getInterface()));
  const K7Q::IteratorHandle none(sequence().generic_erase({}, begin().getInterface(), begin().getInterface()),
                                 {});
  EXPECT_EQ(names(), "a");
}

TEST_F(SequenceIterator, TellsWhereAnElementHasMoved) {
  fill();
  const K7Q::IteratorHandle moved(sequence().generic_insert({}, end().getInterface(), ref(0)), {});
  EXPECT_EQ(names(), "bca");
  EXPECT_TRUE(moved.getInterface()->current({}).equals(ref(0)));
}

TEST_F(SequenceIterator, IsRefusedByAnotherSequenceAndInTheWrongOrder) {
  fill();
  const auto other = Access<variant::SystemConstDependentFormula>(mFormula, "SysCString").sequence();
  const K7Q::IteratorHandle foreign(other.get().generic_begin({}), {});
  EXPECT_EQ(refusalOf<K7Q::WrongValue>([&] { sequence().generic_erase({}, foreign.getInterface()); }),
            "SystemConstDependentFormula.SysConst: expected an iterator of this sequence, got one of another "
            "sequence; take it from begin() or end()");
  EXPECT_FALSE(foreign.getInterface()->equal(begin().getInterface()));
  expectAssertion(kBeyond,
                  [&] { sequence().generic_erase({}, end().getInterface(), begin().getInterface()); });
  expectNullReference(
      [&] { sequence().generic_erase({}, static_cast<K7Q::Generic::IteratorIntf*>(nullptr)); });
  EXPECT_EQ(names(), "abc");
}
