#include <algorithm>
#include <new>
#include <stdexcept>
#include <vector>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/ruvo/Fixture.h"
#include "tests/support/SmallStack.h"

namespace ruvo::testing {
namespace {

using factory::registerRuvoPackage;

RVOPackage* getPackage(const std::string& name) {
  return RVOPackage::getPackage(InternedName(std::string_view(name)));
}

/// A child's package info that counts its initialisations.
struct Counted {
  int calls = 0;
  TestPackageInfo* info(std::string name, TestPackageInfo::Fill fill = {}) {
    return new TestPackageInfo(std::move(name), [this, fill](RVOPackage* package) {
      ++calls;
      if (fill) fill(package);
    });
  }
};

using PackageTest = RuvoTest;

TEST_F(PackageTest, UnknownNameGivesNull) {
  EXPECT_EQ(getPackage(full("nothing")), nullptr);
  EXPECT_EQ(getPackage("nothing.at.all"), nullptr);
  EXPECT_EQ(getPackage("." + mName), nullptr);
  EXPECT_EQ(getPackage(mName + "."), nullptr);
  EXPECT_EQ(getPackage(mName + "..x"), nullptr);
}

TEST_F(PackageTest, UnknownNameIsRefusedWithTheFirstPartThatIsNotThere) {
  registerRuvoPackage(full("there"), {});
  const auto refusal = [](const std::string& name) {
    return errorOf<K7Q::UnknownName>([&name] { Package::get(name); });
  };
  EXPECT_EQ(refusal(full("no")), "no package '" + full("no") + "'");
  EXPECT_EQ(refusal(full("there.no.deeper")), "no package '" + full("there.no") + "'");
  EXPECT_EQ(refusal(full("thre.no")),
            "no package '" + full("thre") + "'; did you mean '" + full("there") + "'?");
  EXPECT_EQ(refusal(mName + "."), "no package '" + mName + ".'");
  EXPECT_EQ(refusal(mName + "..there"), "no package '" + mName + ".'");
  EXPECT_EQ(refusal(".q"), "no package '.q'");
  EXPECT_EQ(refusal("..q"), "no package '.'");
}

TEST_F(PackageTest, NameOfAnyDepthAndLengthIsRefused) {
  registerRuvoPackage(full("there"), {});
  host::onSmallStack([this] {
    std::string name = full("there");
    for (int level = 0; level < 100000; ++level) name += ".a";
    EXPECT_EQ(errorOf<K7Q::UnknownName>([&name] { Package::get(name); }),
              "no package '" + full("there.a") + "'");
    EXPECT_LT(errorOf<K7Q::UnknownName>([] { Package::get(std::string(100000, 'x')); }).size(), 200U);
  });
}

TEST_F(PackageTest, PackagesOfAnyDepthArePopulatedFromTheTopDown) {
  host::onSmallStack([this] {
    constexpr std::size_t kLevels = 2000;
    std::string name = mName;
    std::vector<std::size_t> order;
    for (std::size_t level = 0; level < kLevels; ++level) {
      name += ".a";
      registerRuvoPackage(name, [&order, level](RVOPackage*) { order.push_back(level); });
    }
    EXPECT_EQ(Package::get(name).getFullName().view(), name);
    EXPECT_EQ(order.size(), kLevels);
    EXPECT_TRUE(std::ranges::is_sorted(order));
  });
}

TEST_F(PackageTest, EmptyNameIsTheRoot) {
  EXPECT_EQ(Package::find(""), &Package::root());
  EXPECT_EQ(Package::root().parent(), nullptr);
  EXPECT_TRUE(Package::root().getFullName().empty());
}

TEST_F(PackageTest, RegistrationCreatesAtOnceWithMissingParents) {
  RVOPackage* package = registerRuvoPackage(full("a.b"), {});
  EXPECT_EQ(package->getFullName().view(), full("a.b"));
  EXPECT_EQ(getPackage(full("a.b")), package);
  ASSERT_NE(getPackage(full("a")), nullptr);
  EXPECT_EQ(static_cast<Package*>(package)->parent(), getPackage(full("a")));
  EXPECT_EQ(static_cast<Package*>(package)->shortName(), "b");
}

TEST_F(PackageTest, RegistrationOfANameTwiceKeepsThePackage) {
  EXPECT_EQ(registerRuvoPackage(full("a"), {}), registerRuvoPackage(full("a"), {}));
}

TEST_F(PackageTest, RegistrationRefusesNamesWithoutParts) {
  for (const std::string& name : {std::string(), std::string("."), mName + ".", "." + mName, mName + "..x"}) {
    EXPECT_EQ(errorOf<K7Q::Exception>([&] { registerRuvoPackage(name, {}); }),
              "expected the name of a package, as in 'first.second', got '" + name + "'");
  }
}

TEST_F(PackageTest, InitializerRunsOnceAtTheFirstTouch) {
  int calls = 0;
  auto* package = static_cast<Package*>(registerRuvoPackage(full("a"), [&](RVOPackage*) { ++calls; }));
  EXPECT_EQ(calls, 0);
  EXPECT_FALSE(package->isPopulated());
  EXPECT_TRUE(package->classNames().empty());
  EXPECT_TRUE(package->packageNames().empty());
  EXPECT_EQ(getPackage(full("a")), package);
  EXPECT_EQ(calls, 1);
  EXPECT_TRUE(package->isPopulated());
}

TEST_F(PackageTest, InitializerOfAnExistingPackageRunsBesides) {
  std::string order;
  auto* package = static_cast<Package*>(registerRuvoPackage(full("a"), [&](RVOPackage*) { order += '1'; }));
  registerRuvoPackage(full("a"), [&](RVOPackage*) { order += '2'; });
  package->classes();
  registerRuvoPackage(full("a"), [&](RVOPackage*) { order += '3'; });
  EXPECT_EQ(order, "12");
  package->classes();
  EXPECT_EQ(order, "123");
}

TEST_F(PackageTest, AttachedChildStaysUnpopulatedUntilItIsTouched) {
  Counted child;
  mPackage.addPackageInfo(child.info("child"));
  EXPECT_EQ(mPackage.packageNames(), std::vector<std::string_view>{"child"});
  Package* found = mPackage.findPackage("child");
  ASSERT_NE(found, nullptr);
  EXPECT_FALSE(found->isPopulated());
  EXPECT_EQ(child.calls, 0);
  found->functions();
  EXPECT_EQ(child.calls, 1);
}

TEST_F(PackageTest, FindingBringsInTheParentsFirst) {
  std::string order;
  registerRuvoPackage(full("a"), [&](RVOPackage* a) {
    order += 'a';
    a->addPackageInfo(new TestPackageInfo("b", [&](RVOPackage* b) {
      order += 'b';
      b->addPackageInfo(new TestPackageInfo("c", [&](RVOPackage*) { order += 'c'; }));
    }));
  });
  EXPECT_NE(getPackage(full("a.b.c")), nullptr);
  EXPECT_EQ(order, "abc");
}

TEST_F(PackageTest, TouchingByPointerBringsInTheParentsToo) {
  std::string order;
  auto* child = static_cast<Package*>(registerRuvoPackage(full("a.b"), [&](RVOPackage*) { order += 'b'; }));
  registerRuvoPackage(full("a"), [&](RVOPackage* a) {
    order += 'a';
    a->addPackageInfo(new TestPackageInfo("b", [&](RVOPackage*) { order += 'w'; }));
  });
  child->classNames();
  EXPECT_EQ(order, "abw");
}

TEST_F(PackageTest, WrapperIsRunOntoAPackageThatExists) {
  RVOPackage* existing = registerRuvoPackage(full("a"), {});
  static_cast<Package*>(existing)->classes();
  Counted wrapper;
  RVOPackage* seen = nullptr;
  mPackage.addPackageInfo(wrapper.info("a", [&](RVOPackage* package) { seen = package; }));
  EXPECT_EQ(getPackage(full("a")), existing);
  EXPECT_EQ(getPackage(full("a")), existing);
  EXPECT_EQ(seen, existing);
  EXPECT_EQ(wrapper.calls, 1);
}

TEST_F(PackageTest, AskedForWhileItIsPopulatedGivesItself) {
  RVOPackage* inner = nullptr;
  RVOPackage* outer = registerRuvoPackage(full("a"), [&](RVOPackage*) { inner = getPackage(full("a")); });
  EXPECT_EQ(getPackage(full("a")), outer);
  EXPECT_EQ(inner, outer);
}

TEST_F(PackageTest, ChildrenAreAttachedToTheParentFoundByNameWhileItIsPopulated) {
  registerRuvoPackage(full("a"), [&](RVOPackage*) {
    getPackage(full("a"))->addPackageInfo(new TestPackageInfo("first"));
    getPackage(full("a"))->addPackageInfo(new TestPackageInfo("second"));
  });
  EXPECT_EQ(Package::get(full("a")).packageNames(), (std::vector<std::string_view>{"first", "second"}));
}

TEST_F(PackageTest, FailedInitializationRaisesItsFirstErrorAgainAndKeepsWhatThereIs) {
  int calls = 0;
  auto* package = static_cast<Package*>(registerRuvoPackage(full("a"), [&](RVOPackage* a) {
    a->addClass(new TestClassInfo("Made", {}), 2);
    throw std::runtime_error("failure " + std::to_string(++calls));
  }));
  EXPECT_EQ(errorOf<std::runtime_error>([&] { getPackage(full("a")); }), "failure 1");
  EXPECT_EQ(errorOf<std::runtime_error>([&] { package->classNames(); }), "failure 1");
  EXPECT_EQ(errorOf<std::runtime_error>([&] { getPackage(full("a.b")); }), "failure 1");
  EXPECT_EQ(calls, 1);
  EXPECT_FALSE(package->isPopulated());
  EXPECT_NE(Class::find(full("a.Made")), nullptr);
}

TEST_F(PackageTest, ClassesAndFunctionsComeInOrderOfRegistration) {
  for (const char* name : {"Second", "First", "Third"}) addClass(name);
  for (const char* name : {"two", "one"}) {
    mPackage.addFunction(new factory::FunctionInfo(InternedName(name), factory::MethodAttributes(8)));
  }
  EXPECT_EQ(mPackage.classNames(), (std::vector<std::string_view>{"Second", "First", "Third"}));
  EXPECT_EQ(mPackage.classes()[1]->shortName(), "First");
  ASSERT_EQ(mPackage.functions().size(), 2U);
  EXPECT_EQ(mPackage.functions()[0]->getName().view(), "two");
}

TEST_F(PackageTest, ClassIsFoundByItsShortNameOnly) {
  Class& cls = addClass("X");
  EXPECT_EQ(mPackage.findClass("X"), &cls);
  EXPECT_EQ(mPackage.findClass("Y"), nullptr);
  EXPECT_EQ(mPackage.findClass(""), nullptr);
  registerRuvoPackage(full("child"),
                      [](RVOPackage* child) { child->addClass(new TestClassInfo("Z", {}), 2); });
  EXPECT_EQ(mPackage.findClass("child.Z"), nullptr);
}

TEST_F(PackageTest, ClassOfANameThatExistsIsRefused) {
  Class& first = addClass("X");
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { addClass("X"); }),
            "package '" + mName + "' has a class 'X' already; give the new one another name");
  EXPECT_EQ(mPackage.findClass("X"), &first);
  EXPECT_EQ(mPackage.classes().size(), 1U);
}

TEST_F(PackageTest, NamesWithADotAreRefused) {
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { addClass("a.X"); }),
            "a class added to package '" + mName + "' must report a short name without a dot, got 'a.X'");
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { mPackage.addPackageInfo(new TestPackageInfo("")); }),
            "a package added to package '" + mName + "' must report a short name without a dot, got ''");
}

TEST_F(PackageTest, InfoIsAskedForAMissingName) {
  std::string asked;
  auto* info = new TestPackageInfo("lazy");
  mPackage.addPackageInfo(info);
  Package& lazy = *mPackage.findPackage("lazy");
  info->onMissing = [&](const std::string& kind, const std::string& name) {
    asked += kind + " " + name + ";";
    if (kind == "class" && name == "Late") lazy.addClass(new TestClassInfo("Late", {}), 2);
    if (kind == "package" && name == "late") lazy.addPackageInfo(new TestPackageInfo("late"));
    if (kind == "function" && name == "call") {
      lazy.addFunction(new factory::FunctionInfo(InternedName("call"), factory::MethodAttributes(8)));
    }
    return name == "Late" || name == "late" || name == "call";
  };
  EXPECT_EQ(Class::find(full("lazy.Never")), nullptr);
  EXPECT_EQ(asked, "class Never;type Never;");
  asked.clear();
  EXPECT_NE(Class::find(full("lazy.Late")), nullptr);
  EXPECT_NE(Class::find(full("lazy.Late")), nullptr);
  EXPECT_NE(getPackage(full("lazy.late")), nullptr);
  EXPECT_EQ(lazy.findFunctions("call").size(), 1U);
  EXPECT_TRUE(lazy.findFunctions("never").empty());
  EXPECT_EQ(asked, "class Late;package late;function call;function never;");
}

TEST_F(PackageTest, GetNamesTheNearest) {
  registerRuvoPackage(full("behavior"), {});
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { Package::get(full("behaviour")); }),
            "no package '" + full("behaviour") + "'; did you mean '" + full("behavior") + "'?");
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { Package::get(full("quite.another")); }),
            "no package '" + full("quite") + "'");
}

TEST_F(PackageTest, AllocationThatFailsInTheInitializerIsRaisedAgain) {
  auto* package = static_cast<Package*>(registerRuvoPackage(full("a"), [](RVOPackage* a) {
    a->addClass(new TestClassInfo("First", {}), 2);
    utFailAllocation(1);
    a->addClass(new TestClassInfo("Second", {}), 2);
  }));
  EXPECT_THROW(package->classes(), bedrock::core::except::bad_alloc);
  EXPECT_THROW(package->classes(), bedrock::core::except::bad_alloc);
  EXPECT_NE(Class::find(full("a.First")), nullptr);
}

TEST_F(PackageTest, InitializerThatRanOutOfMemoryIsRunAgainAndAddsNothingTwice) {
  int runs = 0;
  auto* package = static_cast<Package*>(registerRuvoPackage(full("a"), [&](RVOPackage* a) {
    ++runs;
    a->addClass(new TestClassInfo("First", {}), 2);
    a->addPackageInfo(new TestPackageInfo("child"));
    a->addFunction(new factory::FunctionInfo(InternedName("call"), factory::MethodAttributes(8)));
    if (runs < 3) throw std::bad_alloc();
    a->addClass(new TestClassInfo("Second", {}), 2);
  }));
  EXPECT_THROW(package->classes(), std::bad_alloc);
  const Class* first = Class::find(full("a.First"));
  EXPECT_THROW(package->classes(), std::bad_alloc);
  EXPECT_EQ(package->classNames(), (std::vector<std::string_view>{"First", "Second"}));
  EXPECT_EQ(package->classes()[0], first);
  EXPECT_EQ(package->packageNames(), (std::vector<std::string_view>{"child"}));
  EXPECT_EQ(package->functions().size(), 1U);
  EXPECT_EQ(runs, 3);
  EXPECT_TRUE(package->isPopulated());
}

TEST_F(PackageTest, InitializersBehindTheOneThatRanOutOfMemoryAreNotLost) {
  std::string ran;
  int runs = 0;
  auto* package = static_cast<Package*>(registerRuvoPackage(full("a"), [&](RVOPackage*) {
    ran += "1";
    if (++runs == 1) registerRuvoPackage(full("a"), [&](RVOPackage*) { ran += "3"; });
    if (runs == 1) throw std::bad_alloc();
  }));
  registerRuvoPackage(full("a"), [&](RVOPackage*) { ran += "2"; });
  EXPECT_THROW(package->classes(), std::bad_alloc);
  package->classes();
  EXPECT_EQ(ran, "1123");
}

TEST_F(PackageTest, ClassOfTheSameNameIsRefusedBehindAnInitializerThatRanOutOfMemory) {
  bool hasMemory = false;
  auto* package = static_cast<Package*>(registerRuvoPackage(full("a"), [&](RVOPackage* a) {
    a->addClass(new TestClassInfo("Twice", {}), 2);
    if (hasMemory) a->addClass(new TestClassInfo("Twice", {}), 2);
    throw std::bad_alloc();
  }));
  EXPECT_THROW(package->classes(), std::bad_alloc);
  hasMemory = true;
  EXPECT_NE(errorOf<K7Q::Exception>([&] { package->classes(); }).find("has a class 'Twice' already"),
            std::string::npos);
}

TEST_F(PackageTest, LoadedPackageIsRegisteredWhenAPackageIsAskedForAndOnce) {
  static std::string name = full("loaded");
  static int runs = 0;
  static factory::LoadedPackage loaded(name.c_str(), [](RVOPackage* package) {
    ++runs;
    package->addClass(new TestClassInfo("Made", {}), 2);
  });
  factory::enterAtLoad(loaded);
  factory::enterAtLoad(loaded);
  EXPECT_NE(Class::find(name + ".Made"), nullptr);
  factory::enterAtLoad(loaded);
  EXPECT_NE(getPackage(name), nullptr);
  EXPECT_EQ(runs, 1);
}

TEST_F(PackageTest, LoadedPackagesForWhichThereIsNoMemoryWaitInTheirOrder) {
  // Names that are so long that each needs its own memory block.
  static const std::string shortNames[] = {std::string(5000, 'b'), std::string(5000, 'a'), "c"};
  static const std::string names[] = {full(shortNames[0]), full(shortNames[1]), full(shortNames[2])};
  static factory::LoadedPackage packages[] = {{names[0].c_str(), [](RVOPackage*) {}},
                                              {names[1].c_str(), [](RVOPackage*) {}},
                                              {names[2].c_str(), [](RVOPackage*) {}}};
  factory::enterAtLoad(packages[0]);
  factory::enterAtLoad(packages[1]);
  for (const unsigned long n : {1UL, 2UL}) {
    utFailAllocation(n);
    EXPECT_THROW(Package::root(), std::bad_alloc);
    utFailAllocation(0);
    EXPECT_EQ(mPackage.packageNames().size(), n - 1);
  }
  factory::enterAtLoad(packages[2]);
  Package::root();
  EXPECT_EQ(mPackage.packageNames(),
            (std::vector<std::string_view>(std::begin(shortNames), std::end(shortNames))));
}

}  // namespace
}  // namespace ruvo::testing
