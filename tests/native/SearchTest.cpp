// Searching objects by name, by class, and by the references to them.

#include <new>
#include <vector>

#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tests/native/Shown.h"
#include "tests/native/Support.h"
#include "tests/support/FailingNew.h"

namespace {

namespace api = Tarvelon::model;

class Search : public testing::Test {
 protected:
  common::Package package(const char16_t* name) { return common::Package::create(mModel, name); }
  variant::SystemConst constant(const char16_t* name) { return variant::SystemConst::create(mModel, name); }
  template <class Element>
  Element put(const common::Package& into, const Element& element) {
    into.get<"PackagedElement">().add(element);
    return element;
  }
  bool finds(std::u16string_view name, const K7Q::ObjectHandle& object) const {
    return api::find(mModel, name) == object;
  }
  bool findsNothing(std::u16string_view name) const { return api::find(mModel, name).isNull(); }

  K7Q::Model mModel = K7Q::Model::create();
};
using Find = Search;
using Instances = Search;

std::vector<K7Q::ClassObject> handles(std::initializer_list<K7Q::ClassObject> objects) { return objects; }

}  // namespace

TEST_F(Find, GoesDownTheNames) {
  const auto above = package(u"A");
  const auto below = put(above, package(u"B"));
  const auto leaf = put(below, constant(u"C"));
  EXPECT_TRUE(finds(u"/A", above));
  EXPECT_TRUE(finds(u"/A/B/C", leaf));
  EXPECT_TRUE(finds(u"A/B/C", leaf));
  EXPECT_EQ(api::qualifiedName(leaf), u"/A/B/C");
  for (const char16_t* name :
       {u"", u"/", u"//", u"/B", u"/A/C", u"/A/B/C/D", u"/A//B", u"//A", u"/A/", u"a", u" A"}) {
    EXPECT_TRUE(findsNothing(name)) << K7Q::String::to_string(std::u16string_view(name));
    EXPECT_TRUE(api::findAll(mModel, name).empty());
  }
}

TEST_F(Find, PassesOverAHolderWithoutAName) {
  const auto root = common::AUTOSAR::create(mModel);
  const auto above = package(u"A");
  const auto leaf = put(above, constant(u"C"));
  root.get<"PackagedElement">().add(above);
  EXPECT_EQ(api::qualifiedName(leaf), u"/A/C");
  EXPECT_EQ(api::qualifiedName(root), u"");
  EXPECT_TRUE(finds(u"/A/C", leaf));
  EXPECT_TRUE(findsNothing(u"//A/C"));
  EXPECT_TRUE(findsNothing(u"/"));
}

TEST_F(Find, PassesOverAnyNumberOfThem) {
  constexpr int kLevels = 100000;
  const auto named = package(u"A");
  auto above = named;
  std::vector<variant::SystemConst> leaves;
  for (int i = 0; i < kLevels; ++i) {
    above = put(above, common::Package::create(mModel));
    if (i % 999 == 0)
      leaves.push_back(put(above, constant((u"c" + std::u16string(leaves.size(), u'x')).c_str())));
    put(above, constant(u"c"));
  }
  for (std::size_t i = 1; i < leaves.size(); ++i) {
    EXPECT_TRUE(finds(u"/A/c" + std::u16string(i, u'x'), leaves[i]));
  }
  named.set<"Name">(u"B");
  EXPECT_TRUE(finds(u"/B/cx", leaves[1]));
}

TEST_F(Find, PutsManyOfOneNameInOrder) {
  constexpr std::size_t kMany = 50000;
  const auto left = package(u"L");
  const auto right = package(u"L");
  std::vector<K7Q::ClassObject> all;
  for (std::size_t i = 0; i < kMany; ++i) all.push_back(put(left, constant(u"C")));
  put(right, constant(u"B"));
  all.push_back(put(right, constant(u"C")));
  // Created last, but first in its list.
  const auto first = constant(u"C");
  Access<foundation::Package>(left, "PackagedElement").sequence().get().generic_push_front({}, refOf(first));
  all.insert(all.begin(), first);
  EXPECT_TRUE(api::findAll(mModel, u"/L/C") == all);
  EXPECT_TRUE(finds(u"/L/C", first));
}

TEST_F(Find, FailsWithoutMemoryAndDoesItsWorkWithIt) {
  auto above = package(u"A");
  for (int i = 0; i < 1000; ++i) above = put(above, common::Package::create(mModel));
  const auto leaf = put(above, constant(u"C"));
  unsigned long failures = 0;
  for (bool hasFailed = true; hasFailed; failures += hasFailed ? 1 : 0) {
    hasFailed = false;
    failing::gCountdown = failures + 1;
    try {
      EXPECT_TRUE(finds(u"/A/C", leaf));
    } catch (const std::bad_alloc&) {
      hasFailed = true;
    }
    failing::gCountdown = 0;
  }
  // These are the allocations of the index and of the path up from the leaf.
  EXPECT_GT(failures, 4U);
}

TEST_F(Find, FollowsAHolderThatGetsANameOrLosesIt) {
  const auto root = package(u"R");
  const auto above = put(root, package(u"A"));
  const auto leaf = put(above, constant(u"C"));
  ASSERT_TRUE(finds(u"/R/A/C", leaf));
  above.set<"Name">(u"");
  EXPECT_TRUE(finds(u"/R/C", leaf));
  EXPECT_TRUE(findsNothing(u"/R/A/C"));
  root.set<"Name">(u"");
  EXPECT_TRUE(finds(u"/C", leaf));
  above.set<"Name">(u"B");
  EXPECT_TRUE(finds(u"/B/C", leaf));
  EXPECT_TRUE(findsNothing(u"/C"));
  api::setHistoryLimit(mModel, 5);
  above.set<"Name">(u"");
  EXPECT_TRUE(finds(u"/C", leaf));
  api::undo(mModel);
  EXPECT_TRUE(finds(u"/B/C", leaf));
}

TEST_F(Find, FollowsARenameAMoveAndASwap) {
  const auto left = package(u"L");
  const auto right = package(u"R");
  const auto leaf = put(left, constant(u"C"));
  ASSERT_TRUE(finds(u"/L/C", leaf));
  put(right, leaf);
  EXPECT_TRUE(findsNothing(u"/L/C"));
  EXPECT_TRUE(finds(u"/R/C", leaf));
  leaf.set<"Name">(u"D");
  EXPECT_TRUE(findsNothing(u"/R/C"));
  EXPECT_TRUE(finds(u"/R/D", leaf));
  left.set<"Name">(u"X");
  right.set<"Name">(u"L");
  left.set<"Name">(u"R");
  EXPECT_TRUE(finds(u"/L/D", leaf));
  EXPECT_TRUE(finds(u"/R", left));
  Access<foundation::Package>(right, "PackagedElement").sequence().get().generic_erase({}, 0);
  EXPECT_TRUE(finds(u"/D", leaf));
  put(left, right);
  EXPECT_TRUE(finds(u"/R/L", right));
  leaf.destroy();
  EXPECT_TRUE(findsNothing(u"/D"));
}

TEST_F(Find, GivesTheFirstOfEqualNamesInOwnerOrder) {
  const auto above = package(u"A");
  const auto third = put(above, constant(u"C"));
  const auto first = constant(u"C");
  const auto sequence = Access<foundation::Package>(above, "PackagedElement").sequence();
  sequence.get().generic_push_front({}, refOf(first));
  const auto second = package(u"C");
  sequence.get().generic_insert({}, 1, refOf(second));
  EXPECT_EQ(api::findAll(mModel, u"/A/C"), handles({first, second, third}));
  EXPECT_TRUE(finds(u"/A/C", first));
  first.destroy();
  EXPECT_TRUE(finds(u"/A/C", second));
  sequence.get().generic_insert({}, 2, refOf(second));
  EXPECT_EQ(api::findAll(mModel, u"/A/C"), handles({third, second}));
}

TEST_F(Find, GoesOnBelowEveryOneOfEqualNames) {
  const auto first = package(u"A");
  const auto second = package(u"A");
  const auto inSecond = put(second, constant(u"C"));
  EXPECT_TRUE(finds(u"/A/C", inSecond));
  const auto inFirst = put(first, constant(u"C"));
  EXPECT_EQ(api::findAll(mModel, u"/A/C"), handles({inFirst, inSecond}));
}

TEST_F(Find, PassesOverHoldersWithoutAName) {
  const auto above = package(u"A");
  const auto data = common::AdminData::create(mModel);
  above.set<"adminData">(data);
  const auto outer = common::Sdg::create(mModel, u"g");
  data.get<"sdg">().add(outer);
  const auto inner = common::Sdg::create(mModel, u"h");
  outer.get<"sdgContents">().add(inner);
  const auto caption = common::SdgCaption::create(mModel, u"Caption");
  inner.set<"sdgCaption">(caption);
  EXPECT_TRUE(finds(u"/A/Caption", caption));
  EXPECT_EQ(api::qualifiedName(caption), u"/A/Caption");
  EXPECT_EQ(api::qualifiedName(inner), u"");
  // Moves an object far above in the tree.
  const auto elsewhere = package(u"B");
  elsewhere.set<"adminData">(data);
  EXPECT_TRUE(findsNothing(u"/A/Caption"));
  EXPECT_TRUE(finds(u"/B/Caption", caption));
}

TEST_F(Find, PassesOverMoreOfThemThanOneWouldThinkOf) {
  const auto above = package(u"A");
  ASSERT_TRUE(finds(u"/A", above));
  auto outer = common::Sdg::create(mModel, u"g");
  const auto first = outer;
  for (int i = 0; i < 200; ++i) {
    const auto inner = common::Sdg::create(mModel, u"g");
    outer.get<"sdgContents">().add(inner);
    outer = inner;
  }
  const auto caption = common::SdgCaption::create(mModel, u"Caption");
  outer.set<"sdgCaption">(caption);
  ASSERT_TRUE(finds(u"/Caption", caption));
  const auto data = common::AdminData::create(mModel);
  data.get<"sdg">().add(first);
  above.set<"adminData">(data);
  EXPECT_TRUE(finds(u"/A/Caption", caption));
  EXPECT_TRUE(findsNothing(u"/Caption"));
}

TEST_F(Find, LeavesOutNamesThatNoPathCanSay) {
  const auto slash = package(u"a/b");
  EXPECT_TRUE(findsNothing(u"/a/b"));
  EXPECT_EQ(api::qualifiedName(slash), u"/a/b");
}

TEST_F(Find, TellsNamesOfAnyLengthApart) {
  std::u16string name;
  std::vector<common::Package> packages;
  for (int i = 0; i < 40; ++i) {
    name += static_cast<char16_t>(u'a' + i % 26);
    packages.push_back(common::Package::create(mModel, K7Q::String(name)));
  }
  for (std::size_t i = 0; i < packages.size(); ++i) EXPECT_TRUE(finds(name.substr(0, i + 1), packages[i]));
}

// The names differ in two bits of each part. The bits are at places where a simple hash function maps all
// names to the same value.
TEST_F(Find, FindsNamesThatWereChosenToCollide) {
  constexpr unsigned kParts = 16;
  std::vector<K7Q::ClassObject> packages;
  const auto nameOf = [](unsigned number) {
    std::u16string name;
    for (unsigned part = 0; part < kParts; ++part) {
      std::u16string units = u"abc\x4e41wayz";
      if ((number >> part & 1) != 0) {
        units[3] ^= 0x8000;
        units[5] ^= 0x40;
      }
      name += units;
    }
    return name;
  };
  for (unsigned i = 0; i < 1U << kParts; ++i) packages.emplace_back(package(nameOf(i).c_str()));
  for (unsigned i = 0; i < 1U << kParts; ++i) ASSERT_TRUE(finds(nameOf(i), packages[i])) << i;
}

TEST_F(Find, PutsManyOfOneNameBelowOneAnotherInOrder) {
  constexpr std::size_t kLevels = 100000;
  const auto top = package(u"A");
  auto above = top;
  std::vector<K7Q::ClassObject> before;
  std::vector<K7Q::ClassObject> behind;
  for (std::size_t level = 0; level < kLevels; ++level) {
    const auto next = common::Package::create(mModel);
    const auto leaf = constant(u"C");
    if (level % 2 == 0) {
      before.emplace_back(put(above, leaf));
      put(above, next);
    } else {
      put(above, next);
      behind.emplace_back(put(above, leaf));
    }
    above = next;
  }
  const auto first = before.front();
  before.insert(before.end(), behind.rbegin(), behind.rend());
  EXPECT_TRUE(finds(u"/A/C", first));
  EXPECT_TRUE(api::findAll(mModel, u"/A/C") == before);
  top.set<"Name">(u"");
  EXPECT_TRUE(finds(u"/C", first));
  EXPECT_TRUE(api::findAll(mModel, u"/C") == before);
}

TEST_F(Find, LeavesOutThoseThatStoodBelowTheHolderBefore) {
  const auto above = package(u"A");
  const auto between = put(above, common::Package::create(mModel));
  const auto first = put(between, constant(u"C"));
  const auto second = put(put(above, common::Package::create(mModel)), constant(u"C"));
  const auto third = put(between, constant(u"C"));
  ASSERT_EQ(api::findAll(mModel, u"/A/C"), handles({first, third, second}));
  between.set<"Name">(u"B");
  EXPECT_EQ(api::findAll(mModel, u"/A/C"), handles({second}));
  EXPECT_TRUE(finds(u"/A/C", second));
  EXPECT_EQ(api::findAll(mModel, u"/A/B/C"), handles({first, third}));
  put(package(u"E"), between);
  EXPECT_EQ(api::findAll(mModel, u"/E/B/C"), handles({first, third}));
  second.set<"Name">(u"D");
  EXPECT_TRUE(findsNothing(u"/A/C"));
  EXPECT_TRUE(api::findAll(mModel, u"/A/C").empty());
}

TEST_F(Find, StaysRightWhileTheIndexFillsAndIsBuiltAnew) {
  const auto above = package(u"A");
  std::vector<variant::SystemConst> constants;
  for (int i = 0; i < 500; ++i) {
    constants.push_back(
        put(above, variant::SystemConst::create(mModel, K7Q::String::fromUtf8("c" + std::to_string(i)))));
    ASSERT_TRUE(finds(u"/A/c0", constants[0]));
  }
  for (int round = 0; round < 1000; ++round) {
    const auto& each = constants[static_cast<std::size_t>(round) % constants.size()];
    const auto name = K7Q::String::fromUtf8("n" + std::to_string(round % 7));
    each.set<"Name">(name);
    if (round % 50 == 0) {
      ASSERT_NO_FATAL_FAILURE(shown::checkAgreement(mModel));
    }
  }
  shown::checkAgreement(mModel);
}

TEST_F(Find, MeetsNoOneWhoseNumberAnotherHasNow) {
  for (int i = 0; i < 20; ++i) {
    const auto above = package(u"A");
    const auto leaf = put(above, constant(i % 2 == 0 ? u"C" : u"D"));
    EXPECT_TRUE(finds(u"/A/C", i % 2 == 0 ? K7Q::ClassObject(leaf) : K7Q::ClassObject()));
    EXPECT_EQ(api::findAll(mModel, u"/A").size(), 1U);
    above.destroy();
    EXPECT_TRUE(findsNothing(u"/A"));
    EXPECT_TRUE(findsNothing(u"/A/C"));
  }
}

TEST_F(Find, SeesWhatUndoBringsBack) {
  api::setHistoryLimit(mModel, 5);
  const auto above = package(u"A");
  const auto leaf = put(above, constant(u"C"));
  ASSERT_TRUE(finds(u"/A/C", leaf));
  above.destroy();
  EXPECT_TRUE(findsNothing(u"/A/C"));
  // This builds the index again, without the destroyed objects.
  for (int i = 0; i < 200; ++i) constant(u"x").destroy();
  api::setHistoryLimit(mModel, 500);
  package(u"A");
  EXPECT_TRUE(findsNothing(u"/A/C"));
}

TEST_F(Find, BringsBackATreeThatWasDestroyed) {
  api::setHistoryLimit(mModel, 5);
  const auto above = package(u"A");
  const auto leaf = put(above, constant(u"C"));
  above.destroy();
  // This builds the index while the objects are destroyed.
  ASSERT_TRUE(findsNothing(u"/A/C"));
  api::undo(mModel);
  EXPECT_TRUE(finds(u"/A/C", leaf));
  api::redo(mModel);
  EXPECT_TRUE(findsNothing(u"/A/C"));
}

TEST_F(Find, KeepsItsIndexWhenAChangeIsTakenBack) {
  api::setHistoryLimit(mModel, 5);
  const auto above = package(u"A");
  const auto leaf = put(above, constant(u"C"));
  ASSERT_TRUE(finds(u"/A/C", leaf));
  leaf.set<"Name">(u"D");
  api::undo(mModel);
  above.destroy();
  api::undo(mModel);
  // The search must not build an index, which would need memory.
  utFailAllocation(1);
  EXPECT_TRUE(finds(u"/A/C", leaf));
  utFailAllocation(0);
}

TEST_F(Find, GoesDownATreeOfAnyDepth) {
  constexpr int kLevels = 100000;
  std::u16string name;
  auto above = package(u"p");
  name += u"/p";
  const auto root = above;
  for (int i = 0; i < kLevels; ++i) {
    above = put(above, package(u"p"));
    name += u"/p";
  }
  EXPECT_TRUE(finds(name, above));
  EXPECT_EQ(api::qualifiedName(above), name);
  const auto moved = package(u"q");
  put(moved, root);
  EXPECT_TRUE(finds(u"/q" + name, above));
  moved.destroy();
  EXPECT_TRUE(api::objects(mModel).empty());
}

TEST_F(Find, BuildsItsIndexAnewRatherThanGoUpAgainAndAgain) {
  std::vector<common::Package> packages{package(u"p")};
  for (int level = 1; level < 3000; ++level) packages.push_back(put(packages.back(), package(u"p")));
  ASSERT_TRUE(finds(u"/p", packages[0]));
  for (int level = 0; level < 100; ++level) packages[static_cast<std::size_t>(level)].set<"Name">(u"");
  // The search must not build an index, which would need memory.
  utFailAllocation(1);
  EXPECT_TRUE(finds(u"/p", packages[100]));
  utFailAllocation(0);
  for (int level = 0; level < 2000; ++level) packages[static_cast<std::size_t>(level)].set<"Name">(u"");
  utFailAllocation(1);
  EXPECT_THROW(finds(u"/p", packages[2000]), std::bad_alloc);
  utFailAllocation(0);
  EXPECT_TRUE(finds(u"/p", packages[2000]));
}

TEST_F(Find, RefusesAClosedModelAndAnObjectThatIsGone) {
  const auto above = package(u"A");
  const auto gone = package(u"B");
  gone.destroy();
  expectNullReference([&] { api::qualifiedName(gone); });
  expectNullReference([&] { api::referrers(gone); });
  mModel.getModelInterface()->close();
  expectNullReference([&] { api::find(mModel, u"/A"); });
  expectNullReference([&] { api::findAll(mModel, u"/A"); });
  expectNullReference([&] { api::objects(mModel); });
  expectNullReference([&] { api::instances(mModel, table<common::Package>()); });
  expectNullReference([&] { api::qualifiedName(above); });
  expectNullReference([&] { api::find(K7Q::Model(), u"/A"); });
}

TEST_F(Find, AnswersInTheViewThatWasAsked) {
  const auto above = package(u"A");
  const auto sdx = common::Sdx::create(mModel, above);
  const auto word = mModel.frozen().getDeviant();
  const K7Q::Model frozen(mModel.getModelInterface(), word);
  EXPECT_EQ(api::find(frozen, u"/A").getDeviant(), word);
  EXPECT_EQ(api::findAll(frozen, u"/A")[0].getDeviant(), word);
  EXPECT_EQ(api::objects(frozen)[0].getDeviant(), word);
  EXPECT_EQ(api::instances(frozen, table<common::Package>())[0].getDeviant(), word);
  EXPECT_EQ(api::referrers(K7Q::ClassObject(above.getClassObject(), word))[0].object.getDeviant(), word);
}

TEST_F(Instances, AreThoseOfTheClassAndOfThoseBelowIt) {
  const auto above = package(u"A");
  const auto leaf = constant(u"C");
  const auto data = common::AdminData::create(mModel);
  EXPECT_EQ(api::instances(mModel, table<common::Package>()), handles({above}));
  EXPECT_EQ(api::instances(mModel, table<foundation::NamedElement>()), handles({above, leaf}));
  EXPECT_EQ(api::instances(mModel, table<foundation::Element>()).size(), 3U);
  EXPECT_TRUE(api::instances(mModel, table<behavior::Runnable>()).empty());
}

TEST_F(Instances, StandClassByClassInTheOrderOfTheirMaking) {
  const auto first = constant(u"1");
  const auto in = package(u"A");
  const auto second = constant(u"2");
  const auto third = constant(u"3");
  EXPECT_EQ(api::instances(mModel, table<foundation::NamedElement>()), handles({in, first, second, third}));
  first.destroy();
  const auto fourth = constant(u"4");
  EXPECT_EQ(api::instances(mModel, table<variant::SystemConst>()), handles({second, third, fourth}));
}

TEST_F(Instances, KeepTheirOrderWhenGapsAreClosed) {
  std::vector<variant::SystemConst> all;
  all.reserve(300);
  for (int i = 0; i < 300; ++i) all.push_back(constant(u"c"));
  std::vector<K7Q::ClassObject> left;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (i % 5 == 0) {
      left.push_back(all[i]);
    } else {
      all[i].destroy();
    }
  }
  EXPECT_EQ(api::instances(mModel, table<variant::SystemConst>()), left);
  left.push_back(constant(u"new"));
  left[3].getClassObject()->destroy({});
  left.erase(left.begin() + 3);
  EXPECT_EQ(api::instances(mModel, table<variant::SystemConst>()), left);
}

TEST_F(Instances, ComeBackToTheirPlace) {
  api::setHistoryLimit(mModel, 5);
  const auto first = constant(u"1");
  const auto second = constant(u"2");
  first.destroy();
  EXPECT_EQ(api::instances(mModel, table<variant::SystemConst>()), handles({second}));
  api::undo(mModel);
  EXPECT_EQ(api::instances(mModel, table<variant::SystemConst>()), handles({first, second}));
}

TEST_F(Search, TellsWhoRefersToAnObject) {
  const auto target = constant(u"C");
  const auto first = common::Sdx::create(mModel, target);
  const auto formula = variant::SystemConstDependentFormula::create(mModel, u"f");
  formula.get<"SysConst">().add(target);
  formula.get<"SysCString">().add(target);
  put(package(u"A"), target);
  const auto mentions = api::referrers(target);
  ASSERT_EQ(mentions.size(), 3U);
  EXPECT_TRUE(mentions[0].object == first);
  EXPECT_STREQ(api::hostName(*mentions[0].property), "sdx");
  EXPECT_TRUE(mentions[1].object == formula);
  EXPECT_TRUE(mentions[2].object == formula);
  EXPECT_STRNE(api::hostName(*mentions[1].property), api::hostName(*mentions[2].property));
}

TEST_F(Search, DoesNotTellOfReferrersThatAreGoneForNow) {
  api::setHistoryLimit(mModel, 5);
  const auto target = constant(u"C");
  const auto sdx = common::Sdx::create(mModel, target);
  sdx.destroy();
  EXPECT_TRUE(api::referrers(target).empty());
  api::undo(mModel);
  EXPECT_EQ(api::referrers(target).size(), 1U);
}

TEST_F(Search, KnowsClassesByTheirDottedNames) {
  EXPECT_EQ(api::findClass("Tarvelon.metamodel.arplatform.common.Package"), &table<common::Package>());
  EXPECT_EQ(api::findClass("Tarvelon.metamodel.arplatform.common.ImmutablePackage"),
            &table<common::Package>());
  EXPECT_EQ(api::findClass("Tarvelon.metamodel.arplatform.common.Nothing"), nullptr);
  EXPECT_EQ(api::findClass(""), nullptr);
}
