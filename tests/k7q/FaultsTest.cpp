#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/ClassMetaData.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/k7q/Fake.h"

using host::integer;
using host::object;
using host::text;
using ruvo::RVOInterfacePtr;

namespace {

/// The counts that must be unchanged after a failed action.
struct Live {
  std::size_t arrays = hx::hxLiveArrays();
  std::size_t bindings = ruvo::factory::basic::BindingRegistry::size();
  int objects = fake::Object::sLive;
  friend bool operator==(const Live&, const Live&) = default;
};

/// Makes the first, then the second, ... allocation of the action fail, until it succeeds. Returns the number
/// of failures.
int failEach(
    const std::function<void()>& action, const std::function<void()>& check = [] {}) {
  constexpr int kTooMany = 1000;
  for (int failures = 0; failures < kTooMany; ++failures) {
    const Live before;
    utFailAllocation(static_cast<unsigned long>(failures) + 1);
    try {
      action();
      utFailAllocation(0);
      return failures;
    } catch (const bedrock::core::except::bad_alloc&) {
      utFailAllocation(0);
    }
    EXPECT_EQ(Live(), before) << "after failure " << failures + 1;
    check();
  }
  ADD_FAILURE() << "the action fails for good";
  return kTooMany;
}

int sizeOf(const RVOInterfacePtr& list) { return host::call(list, "size").slot().int32(); }

RVOInterfacePtr newTextList() {
  return RVOInterfacePtr(
      fake::callStatic("K7Q.SequenceOfString", "make", {object(fake::hostOf(fake::model()))}).object());
}

}  // namespace

TEST(Faults, ReadingAPropertyLeaksNothing) {
  const auto thing = fake::thing();
  host::set(thing, "text", text(u"some characters"));
  host::set(thing, "other", object(fake::thing()));
  host::set(thing, "numberMaybe", integer(7));
  for (const auto& seen : {thing, fake::immutableOf(thing)}) {
    for (const char* name : {"kind", "other", "otherMany"}) host::get(seen, name);
  }
  EXPECT_GT(failEach([&] { host::get(thing, "text"); }), 0);
  EXPECT_GT(failEach([&] { host::get(thing, "numberMaybe"); }), 0);
  EXPECT_GT(failEach([&] { host::get(thing, "kind"); }), 0);
  EXPECT_GT(failEach([&] { host::get(thing, "other"); }), 0);
  EXPECT_GT(failEach([&] { host::get(fake::immutableOf(thing), "other"); }), 0);
  EXPECT_GT(failEach([&] { host::get(thing, "otherMany"); }), 0);
  EXPECT_GT(failEach([&] { host::get(thing, "realMaybe"); }), 0);
}

TEST(Faults, ARequiredScalarNeedsNoMemory) {
  const auto thing = fake::thing();
  // Defines the class before, so that only the allocations of the action itself are tested.
  auto& record = fake::record("number");
  EXPECT_EQ(failEach([&] {
              record.setValue(thing, ruvo::RVOValue::ofInt32(5));
              record.releaseValue(thing, record.getValue(thing));
            }),
            0);
}

TEST(Faults, WritingATextChangesNothingWhenItFails) {
  const auto thing = fake::thing();
  host::set(thing, "text", text(u"before"));
  const auto unchanged = [&] { EXPECT_EQ(host::getText(thing, "text"), "before"); };
  EXPECT_GT(failEach([&] { host::set(thing, "text", text(u"after")); }, unchanged), 0);
  EXPECT_EQ(host::getText(thing, "text"), "after");
}

TEST(Faults, MakingAListLeaksNothing) {
  const auto model = fake::hostOf(fake::model());
  for (const char* how : {"make", "makeUnique"}) {
    // Defines the class before, so that only the allocations of the action itself are tested.
    fake::callStatic("Fake.SequenceOfThing", how, {object(model)});
    EXPECT_GT(failEach([&] { fake::callStatic("Fake.SequenceOfThing", how, {object(model)}); }), 0);
  }
}

TEST(Faults, ChangingAListLeavesItWhole) {
  const auto list = newTextList();
  host::call(list, "push_back", {text(u"a")});
  host::call(list, "at", {integer(1)});
  const auto isWhole = [&] { EXPECT_EQ(sizeOf(list), 1); };
  EXPECT_GT(failEach([&] { host::call(list, "push_back", {text(u"b")}); }, isWhole), 0);
  EXPECT_EQ(sizeOf(list), 2);
  const auto hasTwo = [&] { EXPECT_EQ(sizeOf(list), 2); };
  EXPECT_GT(failEach([&] { host::call(list, "replace", {integer(2), text(u"c")}); }, hasTwo), 0);
  EXPECT_EQ(host::textOf(host::call(list, "at", {integer(2)})), "c");
  EXPECT_GT(failEach([&] { host::call(list, "at", {integer(1)}); }, hasTwo), 0);
}

TEST(Faults, AnIteratorThatCannotBeGivenLeaksNothing) {
  const auto list = newTextList();
  host::call(list, "push_back", {text(u"a")});
  const auto begin = host::callObject(list, "begin");
  host::call(begin, "clone");
  EXPECT_GT(failEach([&] { host::call(list, "begin"); }), 0);
  EXPECT_GT(failEach([&] { host::call(begin, "clone"); }), 0);
}

TEST(Faults, AnObjectIsSeenAgainAfterItsIdCouldNotBeMade) {
  fake::publish();
  fake::hostOf(fake::model());
  const auto thing = fake::newThing();
  // Defines the class before, so that only the allocations of the action itself are tested.
  fake::hostOf(thing);
  // Enough views that the table must grow.
  for (std::uintptr_t view = 0; view < 3000; ++view) {
    const K7Q::ImmutableObject seen(thing.getInterface(), K7Q::Deviant{view * 4});
    failEach([&] { fake::hostOf(seen); });
  }
  EXPECT_EQ(thing.getInterface()->numRef(), 1);
}

TEST(Faults, AClassThatCannotBeDefinedLeaksNothing) {
  // Each attempt uses a new class, so that each definition starts from the beginning.
  ruvo::RVOPackage* package = ruvo::factory::registerRuvoPackage("FakeFaults", [](ruvo::RVOPackage*) {});
  int failures = 0;
  for (bool isDefined = false; !isDefined; ++failures) {
    const std::string name = "SequenceOfThing" + std::to_string(failures);
    package->addClass(K7Q::mi::createSequenceOfRefClassInfo(name, "", "FakeFaults." + name, "Fake.Thing",
                                                            "Fake.ThingIterator", {"Fake.Base"}),
                      2);
    auto& cls = ruvo::Class::get("FakeFaults." + name);
    utFailAllocation(static_cast<unsigned long>(failures) + 1);
    try {
      cls.define();
      isDefined = true;
    } catch (const bedrock::core::except::bad_alloc&) {
    }
    utFailAllocation(0);
    EXPECT_EQ(cls.isDefined(), isDefined);
  }
  EXPECT_GT(failures, 24);
}
