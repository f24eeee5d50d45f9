#include <stdexcept>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo::testing {
namespace {

using ClassTest = RuvoTest;

TEST_F(ClassTest, FindingDefinesNothing) {
  Class& cls = addClass("X", [](Definition&) { FAIL() << "defined"; });
  EXPECT_EQ(Class::find(full("X")), &cls);
  EXPECT_EQ(cls.getFullName().view(), full("X"));
  EXPECT_STREQ(cls.getClassName(), full("X").c_str());
  EXPECT_EQ(cls.shortName(), "X");
  EXPECT_EQ(cls.access(), 2);
  EXPECT_STREQ(cls.info().getName(), "X");
  EXPECT_FALSE(cls.isDefined());
}

TEST_F(ClassTest, FindingBringsInItsPackage) {
  factory::registerRuvoPackage(full("a"), [](RVOPackage* a) { a->addClass(new TestClassInfo("X", {}), 2); });
  EXPECT_NE(Class::find(full("a.X")), nullptr);
  EXPECT_EQ(Class::find(full("b.X")), nullptr);
  EXPECT_EQ(Class::find("X without a package"), nullptr);
  EXPECT_EQ(Class::find(""), nullptr);
  EXPECT_EQ(Class::find(InternedName()), nullptr);
}

TEST_F(ClassTest, LookingForAnUnknownOneInternsNothing) {
  addClass("X");
  const std::string unknown = full("Unknown");
  const std::size_t before = internal::internedCount();
  EXPECT_EQ(Class::find(unknown), nullptr);
  EXPECT_EQ(internal::internedCount(), before);
}

TEST_F(ClassTest, GetNamesTheNearest) {
  addClass("Runnable");
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { Class::get(full("Runable")); }),
            "package '" + mName + "' has no class 'Runable'; did you mean 'Runnable'?");
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { Class::get(full("Port")); }),
            "package '" + mName + "' has no class 'Port'");
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { Class::get(full("none.Port")); }),
            "no package '" + full("none") + "'");
}

TEST_F(ClassTest, WithoutAPackageIsFoundByItsShortName) {
  const std::string name = uniqueName("Global");
  RVOClass::addGlobalClass(new TestClassInfo(name, {}));
  Class& cls = Class::get(name);
  EXPECT_EQ(cls.shortName(), name);
  EXPECT_EQ(Class::globals().back(), &cls);
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { RVOClass::addGlobalClass(new TestClassInfo(name, {})); }),
            "the class '" + name + "' already exists; give the new one another name");
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { Class::get(name + "x"); }),
            "no class '" + name + "x'; did you mean '" + name + "'?");
}

TEST_F(ClassTest, WithoutAPackageNeedsAShortName) {
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { RVOClass::addGlobalClass(new TestClassInfo("a.b", {})); }),
            "a class without a package must report a short name without a dot, got 'a.b'");
}

TEST_F(ClassTest, IsDefinedOnceWhenItsMembersAreNeeded) {
  Class& cls = addClass("X", [](Definition& x) { x.staticMethod("f", {}, {}).property("p", "char"); });
  EXPECT_EQ(cls.methods().size(), 1U);
  EXPECT_EQ(cls.properties().size(), 1U);
  EXPECT_TRUE(cls.superClassNames().empty());
  EXPECT_TRUE(cls.isDefined());
  cls.define();
  EXPECT_EQ(infoOf(cls).definitions, 1);
}

TEST_F(ClassTest, MembersComeInOrderOfRegistration) {
  Class& cls = addClass("X", [](Definition& x) {
    x.base("not.There").base("nor.This");
    x.staticMethod("b", {}, {}).staticMethod("a", {}, {}).staticMethod("b", {"char"}, {});
    x.property("q", "char");
    x.property("p", "char");
  });
  ASSERT_EQ(cls.methods().size(), 3U);
  EXPECT_EQ(cls.methods()[0]->getName().view(), "b");
  EXPECT_EQ(cls.methods()[1]->getName().view(), "a");
  EXPECT_EQ(cls.properties()[0].name.view(), "q");
  EXPECT_EQ(cls.properties()[0].owner, &cls);
  EXPECT_NE(cls.properties()[0].guard, nullptr);
  EXPECT_EQ(cls.superClassNames()[1].view(), "nor.This");
}

TEST_F(ClassTest, FailedDefinitionRaisesItsFirstErrorAgain) {
  int records = 0;
  struct Counting final : TestMethod {
    explicit Counting(int& count) : TestMethod("f", factory::kStatic, {}), mCount(count) { ++mCount; }
    ~Counting() override { --mCount; }
    int& mCount;
  };
  Class& cls = addClass("X", [&](Definition& x) {
    x.get()->addMethod(new Counting(records));
    throw std::runtime_error("failure");
  });
  EXPECT_EQ(errorOf<std::runtime_error>([&] { cls.define(); }), "failure");
  EXPECT_EQ(errorOf<std::runtime_error>([&] { cls.methods(); }), "failure");
  EXPECT_EQ(errorOf<std::runtime_error>([&] { cls.linearization(); }), "failure");
  EXPECT_EQ(errorOf<std::runtime_error>([&] { construct(cls, {}); }), "failure");
  EXPECT_EQ(infoOf(cls).definitions, 1);
  EXPECT_EQ(records, 1) << "the records made so far belong to the class";
  EXPECT_FALSE(cls.isDefined());
}

TEST_F(ClassTest, AllocationThatFailsInTheDefinitionIsRaisedAgain) {
  Class& cls = addClass("X", [](Definition& x) {
    x.staticMethod("f", {}, {});
    utFailAllocation(1);
    x.staticMethod("g", {}, {});
  });
  EXPECT_THROW(cls.define(), bedrock::core::except::bad_alloc);
  EXPECT_THROW(cls.define(), bedrock::core::except::bad_alloc);
}

TEST_F(ClassTest, DefinitionThatRanOutOfMemoryIsMadeAgainFromTheBeginning) {
  bool hasMemory = false;
  Class& cls = addClass("X", [&](Definition& x) {
    x.base(full("Base"));
    x.staticMethod("f", {}, {});
    x.property("Name", "char vector");
    if (!hasMemory) throw std::bad_alloc();
    x.staticMethod("g", {}, {});
  });
  EXPECT_THROW(cls.define(), std::bad_alloc);
  EXPECT_FALSE(cls.isDefined());
  EXPECT_THROW(cls.methods(), std::bad_alloc);
  hasMemory = true;
  EXPECT_EQ(cls.methods().size(), 2U);
  EXPECT_EQ(cls.properties().size(), 1U);
  EXPECT_EQ(cls.superClassNames().size(), 1U);
}

TEST_F(ClassTest, FailedDefinitionOfASuperclassFailsItsSubclasses) {
  addClass("Base", [](Definition&) { throw std::runtime_error("failure"); });
  Class& cls = addClass("X", [&](Definition& x) { x.base(full("Base")); });
  EXPECT_EQ(errorOf<std::runtime_error>([&] { cls.findMethods("f"); }), "failure");
  EXPECT_EQ(errorOf<std::runtime_error>([&] { cls.findMethods("f"); }), "failure");
  EXPECT_TRUE(cls.isDefined());
}

TEST_F(ClassTest, DefinitionThatNeedsItselfIsAnErrorThatNamesTheClass) {
  Class& cls = addClass("X", [&](Definition&) { Class::get(full("X")).methods(); });
  const std::string text =
      "class '" + full("X") + "' is used while it is being defined; its definition may only mention its name";
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { cls.define(); }), text);
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { cls.define(); }), text);
}

TEST_F(ClassTest, DefinitionMayNameItself) {
  Class& cls = addClass("X", [&](Definition& x) { EXPECT_EQ(Class::find(full("X")), x.get()); });
  cls.define();
}

TEST_F(ClassTest, MembersAreAddedByTheDefinitionAlone) {
  Class& cls = addClass("X");
  const auto text = [&](const std::string& what) {
    return "class '" + full("X") + "' is not being defined; a " + what +
           " can be added only by its definition";
  };
  Definition early(&cls);
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { early.staticMethod("f", {}, {}); }), text("method"));
  cls.define();
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { early.property("p", "char"); }), text("property"));
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { early.base("B"); }), text("superclass"));
}

TEST_F(ClassTest, PropertyOfANameThatExistsIsRefused) {
  Class& cls = addClass("X", [](Definition& x) {
    x.property("p", "char");
    x.property("p", "int32 scalar");
  });
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { cls.define(); }),
            "class '" + full("X") + "' has a property 'p' already; give the new one another name");
}

TEST_F(ClassTest, KeepsTheHostsWord) {
  Class& cls = addClass("X");
  EXPECT_EQ(cls.getHostData(), nullptr);
  int word = 0;
  cls.setHostData(&word);
  EXPECT_EQ(cls.getHostData(), &word);
}

}  // namespace
}  // namespace ruvo::testing
