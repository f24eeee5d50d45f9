// Copies through the native handles, and the effects of failed allocations.

#include <string>

#include "tarvelon/platform/model/api/Copy.h"
#include "tarvelon/platform/model/api/Difference.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Json.h"
#include "tests/native/Support.h"
#include "tests/support/FailingNew.h"

using Tarvelon::metamodel::clone;
using Tarvelon::metamodel::cloneModel;
using Tarvelon::metamodel::Difference;
using Tarvelon::metamodel::differences;
using Tarvelon::metamodel::Outside;
using Tarvelon::metamodel::toJson;

namespace {

using K7Q::Model;

/// A root and a package that has a value of each kind of storage, and the objects it refers to outside.
struct Fixture {
  Fixture() {
    mRoot.set<"Name">(u"Top");
    mRoot.get<"PackagedElement">().add(mPackage);
    mRoot.get<"PackagedElement">().add(mOutside);
    for (const auto& element : {mConstant, mOther}) mPackage.get<"PackagedElement">().add(element);
    mPackage.get<"PackagedElement">().add(mSet);
    mPackage.set<"category">(u"STANDARD");
    mPackage.set<"adminData">(common::AdminData::create(mModel));
    for (const auto& constant : {mConstant, mOutside, mConstant}) {
      const auto value = variant::SystemConstValue::create(mModel, 1.5, constant);
      value.get<"ValueVariationPoint">().add(u"a");
      mSet.get<"SysConstValue">().add(value);
    }
    mPackage.get<"ClientDependency">().add(mOutside);
    mPackage.get<"ClientDependency">().add(mOther);
  }
  std::string shown() const { return toJson(mModel, 1); }

  Model mModel = Model::create();
  common::AUTOSAR mRoot = common::AUTOSAR::create(mModel);
  common::Package mPackage = common::Package::create(mModel, u"P");
  variant::SystemConst mOutside = variant::SystemConst::create(mModel, u"Outside");
  variant::SystemConst mConstant = variant::SystemConst::create(mModel, u"C");
  variant::SystemConst mOther = variant::SystemConst::create(mModel, u"D");
  variant::SystemConstValueSet mSet = variant::SystemConstValueSet::create(mModel, u"S");
};

TEST(Clone, GivesAnEqualObjectOfItsOwn) {
  const Fixture f;

  const auto copy = common::Package::cast(clone(f.mPackage));

  ASSERT_FALSE(copy.isNull());
  EXPECT_FALSE(copy == f.mPackage);
  EXPECT_EQ(toJson(copy).substr(0, 60), toJson(f.mPackage).substr(0, 60));
  EXPECT_TRUE(differences(f.mPackage, copy).empty());
}

TEST(Clone, TakesAnImmutableHandle) {
  const Fixture f;

  EXPECT_TRUE(differences(f.mPackage, clone(common::ImmutablePackage(f.mPackage), f.mRoot)).empty());
}

TEST(Clone, LeadsReferencesToTheCopiesAndKeepsThoseToTheOutside) {
  const Fixture f;

  const auto copy = common::Package::cast(clone(f.mPackage, f.mRoot));

  const auto set = variant::SystemConstValueSet::cast(copy.get<"PackagedElement">()[2]);
  const auto values = set.get<"SysConstValue">();
  EXPECT_EQ(values[0].get<"SysConst">(), copy.get<"PackagedElement">()[0]);
  EXPECT_EQ(values[1].get<"SysConst">(), f.mOutside);
  ASSERT_EQ(copy.get<"ClientDependency">().size(), 2);
  EXPECT_EQ(copy.get<"ClientDependency">()[0], f.mOutside);
  EXPECT_EQ(copy.get<"ClientDependency">()[1], copy.get<"PackagedElement">()[1]);
}

TEST(Clone, PutsTheCopyIntoTheNamedProperty) {
  const Fixture f;

  const auto copy = clone(f.mPackage, f.mRoot, "PackagedElement");

  EXPECT_EQ(f.mRoot.get<"PackagedElement">()[2], copy);
  EXPECT_EQ(refusalOf<K7Q::UnknownName>([&] { clone(f.mSet, f.mSet, "Nothing"); }).substr(0, 45),
            "clone of variant.SystemConstValueSet /Top/P/S");
}

TEST(Clone, DoesNotShareAnOwner) {
  const Fixture f;

  const auto copy = common::Package::cast(clone(f.mPackage));
  copy.getClassObject()->destroy({});

  EXPECT_TRUE(f.mPackage.isValid());
  EXPECT_EQ(f.mPackage.get<"PackagedElement">().size(), 3);
  EXPECT_FALSE(copy.isValid());
}

TEST(Clone, RefusesWhatIsNoObjectOfAModel) {
  const Fixture f;

  EXPECT_EQ(
      refusalOf<K7Q::WrongType>([&] { clone(f.mModel); }),
      "clone: expected an object of a model, got K7Q.Model; to copy a whole model, clone the model itself");
  expectNullReference([] { clone(common::Package()); });
  expectNullReference([] { cloneModel(Model()); });
  expectNullReference([&] { toJson(common::Package()); });
  expectNullReference([&] { differences(f.mModel, Model()); });
}

TEST(Clone, RefusesAReferenceThatCannotGoAlong) {
  const Fixture f;
  const Model other = Model::create();

  const std::string refusal = refusalOf<K7Q::WrongValue>([&] { clone(f.mPackage, other); });

  EXPECT_EQ(refusal,
            "clone of common.Package /Top/P into another model: 2 references lead outside the copy: "
            "/Top/P.ClientDependency -> /Top/Outside, /Top/P/S.SysConstValue[1].SysConst -> /Top/Outside; "
            "copy an object that contains both ends, or leave such references out");
  EXPECT_EQ(toJson(other), "{\"objects\": []}");
  const auto copy = common::Package::cast(clone(f.mPackage, other, Outside::LeftOut));
  EXPECT_EQ(copy.get<"ClientDependency">().size(), 1);
}

/// Makes each allocation of `action` fail in turn. The model must be unchanged and nothing may leak.
/// With a journal the memory is not counted, because the journal keeps data for undo.
template <class Action>
void expectWholeOrNothing(Action action, bool isCounted = true) {
  const Fixture f;
  const std::string before = f.shown();
  std::size_t live = 0;
  const auto takeBack = [&] {
    while (f.mRoot.get<"PackagedElement">().size() > 2) {
      f.mRoot.get<"PackagedElement">()[2].getClassObject()->destroy({});
    }
    live = failing::live();
  };
  // The first round also creates permanent data, so only the second round checks for leaks.
  for (const bool isMeasured : {false, true}) {
    const int failures = failing::eachAllocation(
        takeBack, [&] { action(f); },
        [&](std::size_t n) {
          const std::size_t left = failing::live();
          EXPECT_EQ(isMeasured && isCounted ? left : live, live) << "allocation " << n;
          EXPECT_EQ(f.shown(), before) << "allocation " << n;
        });
    EXPECT_GT(failures, 5);
    takeBack();
    EXPECT_EQ(f.shown(), before);
  }
}

TEST(AllocationFailures, LeaveNoPartOfACopyInAnOwner) {
  expectWholeOrNothing([](const Fixture& f) { clone(f.mPackage, f.mRoot); });
}

TEST(AllocationFailures, LeaveNoPartOfACopyInAModelWithAJournal) {
  expectWholeOrNothing(
      [](const Fixture& f) {
        Tarvelon::model::setHistoryLimit(f.mModel, 3);
        clone(f.mPackage, f.mRoot);
      },
      false);
}

TEST(AllocationFailures, LeaveNoPartOfACopyThatNothingHolds) {
  expectWholeOrNothing([](const Fixture& f) { clone(f.mPackage).getClassObject()->destroy({}); });
}

TEST(AllocationFailures, LeaveNoPartOfACopyInAnotherModel) {
  const Model other = Model::create();
  expectWholeOrNothing([&other](const Fixture& f) {
    EXPECT_EQ(toJson(other), "{\"objects\": []}");
    clone(f.mRoot, other).getClassObject()->destroy({});
  });
}

TEST(AllocationFailures, LeaveNoPartOfAModel) {
  expectWholeOrNothing([](const Fixture& f) { cloneModel(f.mModel); });
}

TEST(AllocationFailures, OfADifferenceChangeNothing) {
  expectWholeOrNothing([](const Fixture& f) { differences(f.mModel, f.mModel); });
}

TEST(Differences, TellWhatWasEdited) {
  const Fixture f;
  const Model before = cloneModel(f.mModel);
  f.mConstant.set<"category">(u"VALUE");
  f.mPackage.get<"PackagedElement">().add(variant::SystemConst::create(f.mModel, u"New"));

  const auto found = differences(before, f.mModel);

  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].kind, Difference::Kind::Added);
  EXPECT_EQ(found[0].path, "/Top/P/New");
  EXPECT_EQ(found[0].objects, 1U);
  EXPECT_EQ(found[1].kind, Difference::Kind::Changed);
  EXPECT_EQ(found[1].path, "/Top/P/C");
  EXPECT_EQ(found[1].cls, "variant.SystemConst");
  EXPECT_EQ(found[1].property, "category");
  EXPECT_EQ(found[1].before, "null");
  EXPECT_EQ(found[1].after, "\"VALUE\"");
}

}  // namespace
