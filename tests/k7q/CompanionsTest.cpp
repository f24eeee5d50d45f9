#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/k7q/Fake.h"

namespace {

using Names = std::vector<std::string>;

Names superClassesOf(const char* name) {
  fake::publish();
  Names names;
  for (const auto& superClass : ruvo::Class::get(name).superClassNames())
    names.emplace_back(superClass.view());
  return names;
}

/// A record as text: "result name(self; arguments) flags".
std::string shown(const ruvo::RVOMethodInfo& record) {
  const auto& signature = *record.getSignature();
  std::string text(signature.result().view());
  text += " " + std::string(record.getName().view()) + "(" + std::string(signature.self().view());
  for (const auto& argument : signature.arguments()) text += "; " + std::string(argument.view());
  return text + ") " + std::to_string(record.getFlags());
}

Names recordsOf(const char* name) {
  fake::publish();
  Names records;
  for (const auto* record : ruvo::Class::get(name).methods()) records.push_back(shown(*record));
  return records;
}

}  // namespace

TEST(Companions, DeriveFromTheirFixedPeersAndThoseOfTheBases) {
  EXPECT_EQ(superClassesOf("Fake.SequenceOfThing"), Names{"Fake.ImmutableSequenceOfThing"});
  EXPECT_EQ(superClassesOf("Fake.SequenceOfImmutableThing"), Names{"Fake.ImmutableSequenceOfImmutableThing"});
  EXPECT_EQ(superClassesOf("Fake.ImmutableSequenceOfThing"),
            (Names{"Fake.ImmutableSequenceOfImmutableThing", "Fake.ImmutableSequenceOfBase"}));
  EXPECT_EQ(superClassesOf("Fake.ImmutableSequenceOfImmutableThing"),
            Names{"Fake.ImmutableSequenceOfImmutableBase"});
  EXPECT_EQ(superClassesOf("Fake.ThingIterator"), Names{"Fake.ThingImmutableIterator"});
  EXPECT_EQ(superClassesOf("Fake.ImmutableThingIterator"), Names{"Fake.ImmutableThingImmutableIterator"});
  EXPECT_EQ(superClassesOf("Fake.ThingImmutableIterator"), Names{"Fake.ImmutableThingImmutableIterator"});
  EXPECT_EQ(superClassesOf("Fake.ImmutableThingImmutableIterator"), Names{});
}

TEST(Companions, EndWhereTheBaseIsOfTheKernel) {
  EXPECT_EQ(superClassesOf("Fake.ImmutableSequenceOfBase"), Names{"Fake.ImmutableSequenceOfImmutableBase"});
  EXPECT_EQ(superClassesOf("Fake.ImmutableSequenceOfImmutableBase"), Names{});
}

TEST(Companions, HaveALinearOrder) {
  fake::publish();
  EXPECT_EQ(ruvo::Class::get("Fake.SequenceOfThing").linearization().size(), 5U);
}

TEST(Companions, ChangeableSequenceHasItsRecordsInOrder) {
  const std::string s = "Fake.SequenceOfThing";
  const std::string i = "Fake.ThingIterator";
  const std::string e = "Fake.Thing";
  const Names expected{
      "void append(" + s + "; " + e + ") 0",
      "void clear(" + s + ") 0",
      "void pop_back(" + s + ") 0",
      "void pop_front(" + s + ") 0",
      "void push_back(" + s + "; " + e + ") 0",
      "void push_front(" + s + "; " + e + ") 0",
      "int32 scalar removeAll(" + s + "; " + e + ") 0",
      i + " begin(" + s + ") 0",
      i + " end(" + s + ") 0",
      i + " erase(" + s + "; " + i + ") 0",
      i + " erase(" + s + "; " + i + "; " + i + ") 0",
      "void erase(; " + s + "; int32 scalar) 4096",
      i + " insert(" + s + "; " + i + "; " + e + ") 0",
      "void insert(; " + s + "; int32 scalar; " + e + ") 4096",
      "void replace(; " + s + "; int32 scalar; " + e + ") 4096",
      e + " back(" + s + ") 0",
      "logical scalar isEmpty(" + s + ") 0",
      e + " front(" + s + ") 0",
      "int32 scalar size(" + s + ") 0",
      e + " at(; " + s + "; int32 scalar) 4096",
      s + " make(; K7Q.ImmutableModel) 8",
      s + " make(; K7Q.Model) 8",
      s + " makeUnique(; K7Q.ImmutableModel) 8",
      s + " makeUnique(; K7Q.Model) 8",
  };
  EXPECT_EQ(recordsOf("Fake.SequenceOfThing"), expected);
}

TEST(Companions, FixedSequenceHasItsRecordsInOrder) {
  const std::string t = "Fake.ImmutableSequenceOfImmutableThing";
  const std::string j = "Fake.ImmutableThingImmutableIterator";
  const std::string e = "Fake.ImmutableThing";
  const Names expected{
      j + " begin(" + t + ") 0",
      j + " end(" + t + ") 0",
      e + " back(" + t + ") 0",
      "logical scalar isEmpty(" + t + ") 0",
      e + " front(" + t + ") 0",
      "int32 scalar size(" + t + ") 0",
      e + " at(; " + t + "; int32 scalar) 4096",
  };
  EXPECT_EQ(recordsOf("Fake.ImmutableSequenceOfImmutableThing"), expected);
}

TEST(Companions, IteratorHasItsRecordsInOrder) {
  const std::string i = "Fake.ThingIterator";
  const Names expected{
      i + " clone(; " + i + ") 4096",
      "logical scalar eq(" + i + "; " + i + ") 0",
      "logical scalar ne(" + i + "; " + i + ") 0",
      "void getNext(; " + i + ") 4096",
      "void getPrev(; " + i + ") 4096",
      "Fake.Thing item(" + i + ") 0",
  };
  EXPECT_EQ(recordsOf("Fake.ThingIterator"), expected);
  EXPECT_STREQ(ruvo::Class::get("Fake.ThingIterator").methods()[1]->getSignature()->parameterNames(),
               "other");
  EXPECT_STREQ(ruvo::Class::get("Fake.ThingIterator").methods()[2]->getSignature()->parameterNames(),
               "other");
}

TEST(Companions, OfTextsTakeAndGiveCharacters) {
  EXPECT_EQ(superClassesOf("K7Q.SequenceOfString"), Names{"K7Q.ImmutableSequenceOfString"});
  EXPECT_EQ(superClassesOf("K7Q.StringIterator"), Names{"K7Q.StringImmutableIterator"});
  const auto records = recordsOf("K7Q.SequenceOfString");
  ASSERT_EQ(records.size(), 24U);
  EXPECT_EQ(records[0], "void append(K7Q.SequenceOfString; char vector) 0");
  EXPECT_EQ(records[7], "K7Q.StringIterator begin(K7Q.SequenceOfString) 0");
  EXPECT_EQ(records[19], "char vector at(; K7Q.SequenceOfString; int32 scalar) 4096");
  EXPECT_EQ(recordsOf("K7Q.ImmutableSequenceOfString").size(), 7U);
}
