#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/k7q/Fake.h"

using host::object;
using host::raised;
using host::text;
using ruvo::RVOInterfacePtr;

namespace {

RVOInterfacePtr abc() {
  fake::publish();
  RVOInterfacePtr list(
      fake::callStatic("K7Q.SequenceOfString", "make", {object(fake::hostOf(fake::model()))}).object());
  for (const auto* entry : {u"a", u"b", u"c"}) host::call(list, "push_back", {text(entry)});
  return list;
}

std::string item(const RVOInterfacePtr& iterator) { return host::textOf(host::call(iterator, "item")); }

bool equal(const RVOInterfacePtr& left, const RVOInterfacePtr& right) {
  const bool eq = host::call(left, "eq", {object(right)}).slot().logical();
  EXPECT_EQ(host::call(left, "ne", {object(right)}).slot().logical(), !eq);
  return eq;
}

std::string walk(const RVOInterfacePtr& list) {
  std::string items;
  const auto end = host::callObject(list, "end");
  for (const auto i = host::callObject(list, "begin"); !equal(i, end); host::call(i, "getNext"))
    items += item(i);
  return items;
}

}  // namespace

TEST(HostListIterator, VisitsEveryElementInOrder) { EXPECT_EQ(walk(abc()), "abc"); }

TEST(HostListIterator, CloneStaysWhereItWas) {
  const auto list = abc();
  const auto iterator = host::callObject(list, "begin");
  const auto clone = host::callObject(iterator, "clone");
  EXPECT_TRUE(equal(iterator, clone));
  host::call(iterator, "getNext");
  EXPECT_FALSE(equal(iterator, clone));
  EXPECT_EQ(item(clone), "a");
  host::call(iterator, "getPrev");
  EXPECT_TRUE(equal(iterator, clone));
}

TEST(HostListIterator, IsAnObjectOfItsOwnEachTime) {
  const auto list = abc();
  const auto first = host::callObject(list, "begin");
  const auto second = host::callObject(list, "begin");
  EXPECT_EQ(host::className(first), "K7Q.StringIterator");
  host::call(first, "getNext");
  EXPECT_EQ(item(second), "a");
}

TEST(HostListIterator, EraseAndInsertGiveTheNewPlaceAndLeaveTheArgument) {
  const auto list = abc();
  const auto begin = host::callObject(list, "begin");
  const auto behind = host::callObject(list, "erase", {object(begin)});
  EXPECT_EQ(item(behind), "b");
  const auto inserted = host::callObject(list, "insert", {object(behind), text(u"x")});
  EXPECT_EQ(item(inserted), "x");
  EXPECT_EQ(walk(list), "xbc");
  const auto end = host::callObject(list, "erase", {object(inserted), object(host::callObject(list, "end"))});
  EXPECT_TRUE(equal(end, host::callObject(list, "end")));
  EXPECT_EQ(walk(list), "");
}

TEST(HostListIterator, SaysSoAtTheEnds) {
  const auto list = abc();
  const auto end = host::callObject(list, "end");
  constexpr const char* kBehind = "the iterator is after the last element";
  EXPECT_NE(raised([&] { item(end); }).find(kBehind), std::string::npos);
  EXPECT_NE(raised([&] { host::call(end, "getNext"); }).find(kBehind), std::string::npos);
  EXPECT_NE(raised([&] { host::call(list, "erase", {object(end)}); }).find(kBehind), std::string::npos);
  const auto begin = host::callObject(list, "begin");
  EXPECT_NE(raised([&] { host::call(begin, "getPrev"); }).find("the iterator is at the first element"),
            std::string::npos);
  EXPECT_EQ(walk(list), "abc");
}

TEST(HostListIterator, IsStaleOnceTheListHasChanged) {
  const auto list = abc();
  constexpr const char* kStale = "the sequence has changed since the iterator was taken";
  const std::vector<std::function<void()>> changes{
      [&] { host::call(list, "push_back", {text(u"d")}); },
      [&] { host::call(list, "push_front", {text(u"0")}); },
      [&] { host::call(list, "pop_back"); },
      [&] { host::call(list, "pop_front"); },
      [&] {
        host::call(list, "replace", {host::integer(1), text(u"r")});
      },
      [&] { host::call(list, "erase", {host::integer(1)}); },
      [&] { host::call(list, "removeAll", {text(u"c")}); },
      [&] { host::call(list, "clear"); }};
  for (const auto& change : changes) {
    const auto iterator = host::callObject(list, "begin");
    const auto saved = host::callObject(list, "begin");
    change();
    for (const char* use : {"item", "getNext", "getPrev"}) {
      EXPECT_NE(raised([&] { host::call(iterator, use); }).find(kStale), std::string::npos) << use;
    }
    EXPECT_NE(raised([&] {
                host::call(list, "insert", {object(iterator), text(u"x")});
              }).find(kStale),
              std::string::npos);
    EXPECT_FALSE(equal(iterator, host::callObject(list, "begin")));
    EXPECT_TRUE(equal(iterator, saved));
  }
}

TEST(HostListIterator, IsNotStaleWhenNothingHasChanged) {
  const auto list = abc();
  const auto iterator = host::callObject(list, "begin");
  host::call(list, "erase", {object(iterator), object(iterator)});
  host::call(list, "removeAll", {text(u"z")});
  host::call(list, "replace", {host::integer(1), text(u"a")});
  EXPECT_EQ(item(iterator), "a");
}

TEST(HostListIterator, KeepsItsListAlive) {
  auto list = abc();
  const auto iterator = host::callObject(list, "begin");
  list = RVOInterfacePtr();
  EXPECT_EQ(item(iterator), "a");
}

TEST(HostListIterator, BelongsToOneList) {
  const auto list = abc();
  const auto other = host::callObject(abc(), "begin");
  EXPECT_FALSE(equal(host::callObject(list, "begin"), other));
  EXPECT_NE(raised([&] { host::call(list, "erase", {object(other)}); }).find("belongs to another sequence"),
            std::string::npos);
  EXPECT_NE(raised([&] { host::call(list, "erase", {host::nothing()}); }).find("belongs to another sequence"),
            std::string::npos);
  EXPECT_EQ(walk(list), "abc");
}

TEST(HostListIterator, RefusesARangeThatEndsBeforeItBegins) {
  const auto list = abc();
  const auto begin = host::callObject(list, "begin");
  const auto end = host::callObject(list, "end");
  EXPECT_NE(raised([&] {
              host::call(list, "erase", {object(end), object(begin)});
            }).find("out of bounds"),
            std::string::npos);
  EXPECT_EQ(walk(list), "abc");
}
