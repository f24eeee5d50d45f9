#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tests/k7q/Fake.h"

using host::integer;
using host::object;
using host::raised;
using host::text;
using ruvo::RVOInterface;
using ruvo::RVOInterfacePtr;

namespace {

constexpr int kLeast = std::numeric_limits<std::int32_t>::min();
constexpr int kLargest = std::numeric_limits<std::int32_t>::max();

RVOInterfacePtr newList(const char* cls = "Fake.SequenceOfThing", const char* how = "make") {
  fake::publish();
  return RVOInterfacePtr(fake::callStatic(cls, how, {object(fake::hostOf(fake::model()))}).object());
}

int sizeOf(const RVOInterfacePtr& list) { return host::call(list, "size").slot().int32(); }

RVOInterfacePtr at(const RVOInterfacePtr& list, int index) {
  return host::callObject(list, "at", {integer(index)});
}

/// Returns the host object itself: objects are compared by identity, not by contents.
RVOInterface* raw(const RVOInterfacePtr& object) { return object; }

std::vector<std::string> textsOf(const RVOInterfacePtr& list) {
  std::vector<std::string> texts;
  for (int i = 1; i <= sizeOf(list); ++i) texts.push_back(host::textOf(host::call(list, "at", {integer(i)})));
  return texts;
}

bool says(const std::string& message, const char* part) { return message.find(part) != std::string::npos; }

using Texts = std::vector<std::string>;

RVOInterfacePtr textList(const Texts& texts, const char* how = "make") {
  auto list = newList("K7Q.SequenceOfString", how);
  for (const auto& entry : texts)
    host::call(list, "push_back", {text(std::u16string(entry.begin(), entry.end()))});
  return list;
}

}  // namespace

TEST(HostList, IsEmptyWhenItIsMade) {
  const auto list = newList();
  EXPECT_EQ(host::className(list), "Fake.SequenceOfThing");
  EXPECT_EQ(sizeOf(list), 0);
  EXPECT_TRUE(host::call(list, "isEmpty").slot().logical());
  const auto begin = host::callObject(list, "begin");
  EXPECT_TRUE(host::call(begin, "eq", {object(host::callObject(list, "end"))}).slot().logical());
}

TEST(HostList, GivesBackTheVeryObjects) {
  const auto list = newList();
  const auto first = fake::thing();
  const auto second = fake::thing();
  host::call(list, "push_back", {object(second)});
  host::call(list, "push_front", {object(first)});
  EXPECT_EQ(raw(at(list, 1)), raw(first));
  EXPECT_EQ(raw(at(list, 2)), raw(second));
  EXPECT_EQ(raw(host::callObject(list, "front")), raw(first));
  EXPECT_EQ(raw(host::callObject(list, "back")), raw(second));
}

TEST(HostList, OfImmutableElementsGivesImmutableObjects) {
  const auto list = newList("Fake.SequenceOfImmutableThing");
  const auto thing = fake::thing();
  host::call(list, "push_back", {object(thing)});
  const auto element = at(list, 1);
  EXPECT_EQ(host::className(element), "Fake.ImmutableThing");
  EXPECT_EQ(&fake::nativeOf(element), &fake::nativeOf(thing));
}

TEST(HostList, KeepsDuplicatesUnlessItIsUnique) {
  const auto thing = fake::thing();
  const auto plain = newList();
  const auto unique = newList("Fake.SequenceOfThing", "makeUnique");
  for (const auto& list : {plain, unique}) {
    host::call(list, "push_back", {object(thing)});
    host::call(list, "append", {object(thing)});
  }
  EXPECT_EQ(sizeOf(plain), 2);
  EXPECT_EQ(sizeOf(unique), 1);
  EXPECT_EQ(host::call(plain, "removeAll", {object(thing)}).slot().int32(), 2);
  EXPECT_EQ(host::call(unique, "removeAll", {object(thing)}).slot().int32(), 1);
  EXPECT_EQ(host::call(unique, "removeAll", {object(thing)}).slot().int32(), 0);
  EXPECT_EQ(sizeOf(plain) + sizeOf(unique), 0);
}

TEST(HostList, CountsFromOneAndRefusesOtherIndices) {
  const auto list = textList({"a", "b"});
  for (const int index : {0, -1, kLeast}) {
    EXPECT_TRUE(
        says(raised([&] { host::call(list, "at", {integer(index)}); }), "sequence index must be positive"));
    EXPECT_TRUE(says(raised([&] { host::call(list, "erase", {integer(index)}); }),
                     "sequence index must be positive"));
    EXPECT_TRUE(says(raised([&] {
                       host::call(list, "insert", {integer(index), text(u"x")});
                     }),
                     "sequence index must be positive"));
    EXPECT_TRUE(says(raised([&] {
                       host::call(list, "replace", {integer(index), text(u"x")});
                     }),
                     "sequence index must be positive"));
  }
  for (const int index : {3, 4, kLargest}) {
    EXPECT_TRUE(
        says(raised([&] { host::call(list, "at", {integer(index)}); }), "sequence index out of bounds"));
    EXPECT_TRUE(
        says(raised([&] { host::call(list, "erase", {integer(index)}); }), "sequence index out of bounds"));
    EXPECT_TRUE(says(raised([&] {
                       host::call(list, "replace", {integer(index), text(u"x")});
                     }),
                     "sequence index out of bounds"));
  }
  EXPECT_TRUE(says(raised([&] {
                     host::call(list, "insert", {integer(4), text(u"x")});
                   }),
                   "sequence index out of bounds"));
  EXPECT_EQ(textsOf(list), (Texts{"a", "b"}));
}

TEST(HostList, InsertsErasesAndReplacesAtAnIndex) {
  const auto list = textList({"a", "b"});
  host::call(list, "insert", {integer(3), text(u"c")});
  host::call(list, "insert", {integer(1), text(u"0")});
  EXPECT_EQ(textsOf(list), (Texts{"0", "a", "b", "c"}));
  host::call(list, "erase", {integer(2)});
  host::call(list, "replace", {integer(1), text(u"x")});
  EXPECT_EQ(textsOf(list), (Texts{"x", "b", "c"}));
  host::call(list, "pop_front");
  host::call(list, "pop_back");
  EXPECT_EQ(textsOf(list), Texts{"b"});
  host::call(list, "clear");
  EXPECT_EQ(sizeOf(list), 0);
}

TEST(HostList, RefusesTheEndsOfAnEmptyOne) {
  const auto list = newList();
  for (const char* method : {"front", "back", "pop_front", "pop_back"}) {
    EXPECT_TRUE(says(raised([&] { host::call(list, method); }), "sequence is empty")) << method;
  }
}

TEST(HostList, RefusesAnElementOfAnotherClass) {
  const auto list = newList();
  const auto base = fake::newBase();
  const auto info = K7Q::makeObjectRef(base.getInterface(), K7Q::Deviant());
  auto* native = static_cast<K7Q::Generic::SequenceIntf*>(
      K7Q::DeviantRegistry::getVariantInfo(list->getBoundPointer(ruvo::InternedName()))
          .object->cast(K7Q::tagsOf<K7Q::Generic::SequenceIntf>()));
  EXPECT_THROW(native->generic_push_back(K7Q::Deviant(), info), K7Q::WrongType);
  EXPECT_EQ(raised([&] { native->generic_insert(K7Q::Deviant(), 0, info); }),
            "sequence element: expected Fake.Thing, got an object of class Fake.Base");
  EXPECT_THROW(native->generic_push_front(K7Q::Deviant(), K7Q::makeStringRef(u"x")), std::exception);
  EXPECT_EQ(sizeOf(list), 0);
}

TEST(HostList, RefusesAnEmptyElement) {
  for (const char* how : {"make", "makeUnique"}) {
    const auto list = newList("Fake.SequenceOfThing", how);
    EXPECT_THROW(host::call(list, "push_back", {host::nothing()}), K7Q::WrongValue);
    EXPECT_THROW(host::call(list, "insert", {integer(1), host::nothing()}), K7Q::WrongValue);
    EXPECT_EQ(raised([&] { host::call(list, "push_front", {host::nothing()}); }),
              "sequence element: expected Fake.Thing, got an empty value");
    EXPECT_EQ(host::call(list, "removeAll", {host::nothing()}).slot().int32(), 0);
    EXPECT_EQ(sizeOf(list), 0);
  }
}

TEST(HostList, TakesAnObjectOfASubclass) {
  const auto list = newList("Fake.SequenceOfBase");
  host::call(list, "push_back", {object(fake::thing())});
  host::call(list, "push_back", {object(fake::hostOf(fake::newBase()))});
  EXPECT_EQ(host::className(at(list, 1)), "Fake.Thing");
  EXPECT_EQ(host::className(at(list, 2)), "Fake.Base");
}

TEST(HostList, LosesAnObjectThatIsDestroyed) {
  for (const char* how : {"make", "makeUnique"}) {
    const auto list = newList("Fake.SequenceOfThing", how);
    const auto first = fake::thing();
    const auto second = fake::thing();
    host::call(list, "push_back", {object(first)});
    host::call(list, "push_back", {object(second)});
    fake::nativeOf(first).destroy(K7Q::Deviant());
    EXPECT_EQ(sizeOf(list), 1);
    EXPECT_EQ(raw(at(list, 1)), raw(second));
    host::call(list, "push_back", {object(fake::thing())});
    EXPECT_EQ(sizeOf(list), 2);
  }
}

TEST(HostList, HoldsItsObjectsAndDropsThem) {
  const int live = fake::Object::sLive;
  {
    const auto list = newList();
    host::call(list, "push_back", {object(fake::thing())});
    EXPECT_EQ(fake::Object::sLive, live + 1);
    EXPECT_EQ(host::className(at(list, 1)), "Fake.Thing");
  }
  EXPECT_EQ(fake::Object::sLive, live);
}

TEST(UniqueHostList, KeepsEachTextOnce) {
  const auto list = textList({"5", "3", "5"}, "makeUnique");
  EXPECT_EQ(textsOf(list), (Texts{"5", "3"}));
  host::call(list, "push_front", {text(u"3")});
  EXPECT_EQ(textsOf(list), (Texts{"5", "3"}));
}

TEST(UniqueHostList, ExchangesTextsWhenOneReplacesAnother) {
  const auto list = textList({"5", "3", "9"}, "makeUnique");
  host::call(list, "replace", {integer(1), text(u"9")});
  EXPECT_EQ(textsOf(list), (Texts{"9", "3", "5"}));
  host::call(list, "replace", {integer(1), text(u"9")});
  EXPECT_EQ(textsOf(list), (Texts{"9", "3", "5"}));
  host::call(list, "replace", {integer(1), text(u"7")});
  EXPECT_EQ(textsOf(list), (Texts{"7", "3", "5"}));
  host::call(list, "push_back", {text(u"9")});
  EXPECT_EQ(textsOf(list), (Texts{"7", "3", "5", "9"}));
  EXPECT_EQ(host::call(list, "removeAll", {text(u"7")}).slot().int32(), 1);
}

TEST(UniqueHostList, MovesWhatIsInsertedAgainBeforeWhatStandsThere) {
  const auto list = textList({"a", "b", "c", "d"}, "makeUnique");
  host::call(list, "insert", {integer(4), text(u"a")});
  EXPECT_EQ(textsOf(list), (Texts{"b", "c", "a", "d"}));
  host::call(list, "insert", {integer(1), text(u"a")});
  EXPECT_EQ(textsOf(list), (Texts{"a", "b", "c", "d"}));
  host::call(list, "insert", {integer(5), text(u"b")});
  EXPECT_EQ(textsOf(list), (Texts{"a", "c", "d", "b"}));
  host::call(list, "insert", {integer(2), text(u"c")});
  host::call(list, "insert", {integer(3), text(u"c")});
  EXPECT_EQ(textsOf(list), (Texts{"a", "c", "d", "b"}));
}

TEST(UniqueHostList, InsertAtAnIteratorGivesWhereTheElementStands) {
  const auto list = textList({"a", "b", "c"}, "makeUnique");
  const auto moved = host::callObject(list, "insert", {object(host::callObject(list, "begin")), text(u"c")});
  EXPECT_EQ(host::textOf(host::call(moved, "item")), "c");
  EXPECT_EQ(textsOf(list), (Texts{"c", "a", "b"}));
  const auto last = host::callObject(list, "insert", {object(host::callObject(list, "end")), text(u"c")});
  EXPECT_EQ(host::textOf(host::call(last, "item")), "c");
  EXPECT_EQ(textsOf(list), (Texts{"a", "b", "c"}));
  const auto begin = host::callObject(list, "begin");
  const auto added = host::callObject(list, "insert", {object(begin), text(u"x")});
  EXPECT_EQ(host::textOf(host::call(added, "item")), "x");
  EXPECT_EQ(textsOf(list), (Texts{"x", "a", "b", "c"}));
}

TEST(HostList, EmptySelfRaisesTheNullSequenceText) {
  fake::publish();
  const auto message = raised([] {
    fake::callStatic("Fake.SequenceOfThing", "at", {host::nothing(), integer(1)});
  });
  EXPECT_TRUE(says(message, "Cannot access NULL sequence. Use MakeSequence to create sequences."));
}
