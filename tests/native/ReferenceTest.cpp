// References and containment: owners, referrers, and the effects of destroying an object.

#include <vector>

#include "tests/native/Support.h"

namespace {

class Reference : public testing::Test {
 protected:
  K7Q::Model mModel = K7Q::Model::create();
};
using Ownership = Reference;
using Destroy = Reference;

template <class X>
K7Q::Object ownerOf(const X& object) {
  return Access<foundation::Element>(object, "Owner").get();
}

}  // namespace

TEST_F(Reference, IsReadThroughTheDeviantOfTheReader) {
  const auto brakes = common::Package::create(mModel, u"Brakes");
  const auto base = common::ReferenceBase::create(mModel, true, u"b", brakes);
  K7Q::Object value;
  const auto deviant = mModel.frozen().getDeviant();
  table<common::ReferenceBase>().get(value, base.getClassObject(), deviant,
                                     idOf(table<common::ReferenceBase>(), "Package"));
  EXPECT_TRUE(value == brakes);
  EXPECT_EQ(value.getDeviant(), deviant);
}

TEST_F(Reference, RefusesAnObjectOfAnotherClass) {
  const auto base = common::ReferenceBase::create(mModel);
  const Access<common::ReferenceBase> package(base, "Package");
  EXPECT_EQ(refusalOf<K7Q::WrongType>([&] { package.set(common::Sdg::create(mModel, u"g")); }),
            "ReferenceBase.Package: expected Tarvelon.metamodel.arplatform.common.Package, got "
            "Tarvelon.metamodel.arplatform.common.Sdg; give an object of that class or of a subclass");
  refusalOf<K7Q::WrongType>([&] { package.set(K7Q::Integer(1)); });
  refusalOf<K7Q::WrongType>([&] { package.set(mModel); });
  EXPECT_FALSE(package.has());
}

TEST_F(Reference, RefusesAnObjectOfAnotherModel) {
  const auto base = common::ReferenceBase::create(mModel);
  const auto foreign = common::Package::create(K7Q::Model::create(), u"P");
  EXPECT_EQ(
      refusalOf<K7Q::WrongValue>([&] { base.set<"Package">(foreign); }),
      "ReferenceBase.Package: expected Tarvelon.metamodel.arplatform.common.Package of the same model, got "
      "Tarvelon.metamodel.arplatform.common.Package of another model; create the object in the same model");
  EXPECT_TRUE(base.get<"Package">().isNull());
}

TEST_F(Reference, RefusesAnObjectThatIsGone) {
  const auto base = common::ReferenceBase::create(mModel);
  const auto package = common::Package::create(mModel, u"P");
  package.destroy();
  EXPECT_EQ(refusalOf<K7Q::WrongValue>([&] { base.set<"Package">(package); }),
            "ReferenceBase.Package: expected Tarvelon.metamodel.arplatform.common.Package that exists in the "
            "model, got Tarvelon.metamodel.arplatform.common.Package that was destroyed or whose model is "
            "closed; give a valid object");
}

TEST_F(Reference, ThatIsRequiredRefusesNothing) {
  const auto base = common::ReferenceBase::create(mModel, true, u"b", common::Package::create(mModel, u"P"));
  refusalOf<K7Q::WrongValue>([&] { Access<common::ReferenceBase>(base, "Package").set(K7Q::Object()); });
  EXPECT_EQ(base.get<"Package">().get<"Name">(), K7Q::String(u"P"));
}

TEST_F(Reference, TakesAnObjectOfASubclass) {
  const auto sdx = common::Sdx::create(mModel);
  const auto constant = variant::SystemConst::create(mModel, u"C");
  sdx.set<"sdx">(constant);
  EXPECT_TRUE(sdx.get<"sdx">() == constant);
}

TEST_F(Reference, DoesNotKeepItsObjectHeld) {
  const auto brakes = common::Package::create(mModel, u"Brakes");
  const auto base = common::ReferenceBase::create(mModel, true, u"b", brakes);
  EXPECT_EQ(brakes.getInterface()->numRef(), 1);
}

TEST_F(Reference, MayPointAtItsOwnObject) {
  const auto variants = variant::PredefinedVariant::create(mModel, u"V");
  variants.get<"IncludedVariant">().add(variants);
  const auto sdx = common::Sdx::create(mModel);
  EXPECT_TRUE(variants.get<"IncludedVariant">()[0] == variants);
  variants.destroy();
  EXPECT_FALSE(variants.isValid());
}

TEST_F(Ownership, GivesAnObjectItsOwner) {
  const auto root = common::AUTOSAR::create(mModel);
  const auto brakes = common::Package::create(mModel, u"Brakes");
  const auto data = common::AdminData::create(mModel);
  EXPECT_TRUE(ownerOf(brakes).isNull());
  root.get<"PackagedElement">().add(brakes);
  brakes.set<"adminData">(data);
  EXPECT_TRUE(ownerOf(brakes) == root);
  EXPECT_TRUE(ownerOf(data) == brakes);
}

TEST_F(Ownership, MovesAnObjectThatIsAddedElsewhere) {
  const auto first = common::Package::create(mModel, u"A");
  const auto second = common::Package::create(mModel, u"B");
  const auto element = variant::SystemConst::create(mModel, u"C");
  first.get<"PackagedElement">().add(element);
  second.get<"PackagedElement">().add(element);
  EXPECT_EQ(first.get<"PackagedElement">().size(), 0);
  EXPECT_TRUE(ownerOf(element) == second);
}

TEST_F(Ownership, MovesAValueOutOfAnotherProperty) {
  const auto text = documentation::MultiLanguageOverviewParagraph::create(mModel);
  const auto modification = documentation::Modification::create(mModel, text);
  modification.set<"reason">(text);
  EXPECT_TRUE(modification.get<"change">().isNull());
  EXPECT_TRUE(modification.get<"reason">() == text);
  const auto package = common::Package::create(mModel, u"P");
  package.set<"desc">(text);
  EXPECT_TRUE(modification.get<"reason">().isNull());
  EXPECT_TRUE(ownerOf(text) == package);
}

TEST_F(Ownership, LeavesAReplacedValueInTheModelWithoutOwner) {
  const auto package = common::Package::create(mModel, u"P");
  const auto old = common::AdminData::create(mModel);
  package.set<"adminData">(old);
  package.set<"adminData">(common::AdminData::create(mModel));
  EXPECT_TRUE(old.isValid());
  EXPECT_TRUE(ownerOf(old).isNull());
  package.set<"adminData">(old);
  package.unset<"adminData">();
  EXPECT_TRUE(old.isValid());
  EXPECT_TRUE(ownerOf(old).isNull());
}

TEST_F(Ownership, RefusesACircle) {
  const auto outer = common::Package::create(mModel, u"Outer");
  const auto inner = common::Package::create(mModel, u"Inner");
  outer.get<"PackagedElement">().add(inner);
  EXPECT_EQ(refusalOf<K7Q::WrongValue>([&] { inner.get<"PackagedElement">().add(outer); }),
            "Package.PackagedElement: expected Tarvelon.metamodel.foundation.PackageableElement that does "
            "not contain this object, got Tarvelon.metamodel.arplatform.common.Package, which contains it; "
            "remove this object from it first");
  refusalOf<K7Q::WrongValue>([&] { inner.get<"PackagedElement">().add(inner); });
  EXPECT_TRUE(ownerOf(inner) == outer);
  EXPECT_TRUE(ownerOf(outer).isNull());
  EXPECT_EQ(inner.get<"PackagedElement">().size(), 0);
}

TEST_F(Ownership, AnswersWhatIsComputedFromIt) {
  const auto root = common::AUTOSAR::create(mModel);
  const auto outer = common::Package::create(mModel, u"Outer");
  const auto inner = common::Package::create(mModel, u"Inner");
  const auto type = types::SwBaseType::create(mModel, u"uint8");
  const auto sd = common::Sd::create(mModel, u"g", u"v");
  const auto group = common::Sdg::create(mModel, u"g");
  const auto data = common::AdminData::create(mModel);
  root.get<"PackagedElement">().add(outer);
  outer.get<"PackagedElement">().add(inner);
  outer.get<"PackagedElement">().add(type);
  outer.set<"adminData">(data);
  data.get<"sdg">().add(group);
  group.get<"sdgContents">().add(sd);

  const auto owned = outer.get<"OwnedElement">();
  ASSERT_EQ(owned.size(), 3);
  EXPECT_TRUE(owned[0] == data && owned[1] == inner && owned[2] == type);
  EXPECT_EQ(outer.get<"OwnedMember">().size(), 2);
  ASSERT_EQ(outer.get<"OwnedType">().size(), 1);
  EXPECT_TRUE(outer.get<"OwnedType">()[0] == type);
  ASSERT_EQ(outer.get<"NestedPackage">().size(), 1);
  EXPECT_TRUE(outer.get<"NestedPackage">()[0] == inner);
  EXPECT_TRUE(inner.get<"NestingPackage">() == outer);
  EXPECT_TRUE(root.get<"NestingPackage">().isNull());
  EXPECT_TRUE(inner.get<"Namespace">() == outer);
  ASSERT_EQ(group.get<"OwnedComment">().size(), 1);
  EXPECT_TRUE(group.get<"OwnedComment">()[0] == sd);
  const auto caption = common::SdgCaption::create(mModel, u"caption");
  group.set<"sdgCaption">(caption);
  EXPECT_TRUE(caption.get<"Namespace">() == outer);
  EXPECT_TRUE((Access<foundation::NamedElement>(caption, "Namespace").has()));

  EXPECT_TRUE((Access<kernel::ClassObject>(caption, "ContainerK7Q").get() == group));
  EXPECT_TRUE((Access<kernel::ClassObject>(caption, "RootModel").get() == root));
  EXPECT_TRUE((Access<kernel::ClassObject>(root, "RootModel").get() == root));
  EXPECT_TRUE((Access<kernel::ClassObject>(caption, "ModelK7Q").get() == mModel));
  EXPECT_EQ((Access<kernel::ClassObject>(group, "ContaineeK7Q").sequence().get().generic_size({})), 2);
  EXPECT_TRUE(
      (Access<kernel::ClassObject>(group, "AppliedStereotypeInstance").sequence().get().generic_empty({})));
}

TEST_F(Ownership, ShowsChangesInAComputedSequenceThatIsHeld) {
  const auto package = common::Package::create(mModel, u"P");
  const auto owned = package.get<"OwnedElement">();
  EXPECT_EQ(owned.size(), 0);
  const auto element = variant::SystemConst::create(mModel, u"C");
  package.get<"PackagedElement">().add(element);
  EXPECT_EQ(owned.size(), 1);
  element.destroy();
  EXPECT_EQ(owned.size(), 0);
}

TEST_F(Destroy, EndsTheObjectAndWhatItHolds) {
  const auto outer = common::Package::create(mModel, u"Outer");
  const auto inner = common::Package::create(mModel, u"Inner");
  const auto data = common::AdminData::create(mModel);
  outer.get<"PackagedElement">().add(inner);
  inner.set<"adminData">(data);
  outer.destroy();
  for (const K7Q::ClassObject& object :
       {K7Q::ClassObject(outer), K7Q::ClassObject(inner), K7Q::ClassObject(data)}) {
    EXPECT_FALSE(object.isValid());
    expectNullReference([&] { object.getClassObject()->destroy({}); });
  }
  EXPECT_EQ(inner.getInterface()->getRuvoName(false).view(), "Tarvelon.metamodel.arplatform.common.Package");
  expectNullReference([&] { inner.get<"Name">(); });
  expectNullReference([&] { outer.get<"PackagedElement">(); });
}

TEST_F(Destroy, TakesTheObjectOutOfItsOwner) {
  const auto package = common::Package::create(mModel, u"P");
  const auto element = variant::SystemConst::create(mModel, u"C");
  const auto data = common::AdminData::create(mModel);
  package.get<"PackagedElement">().add(element);
  package.set<"adminData">(data);
  element.destroy();
  data.destroy();
  EXPECT_EQ(package.get<"PackagedElement">().size(), 0);
  EXPECT_TRUE(package.get<"adminData">().isNull());
}

TEST_F(Destroy, ClearsEveryReferenceToTheObject) {
  const auto constant = variant::SystemConst::create(mModel, u"C");
  const auto other = variant::SystemConst::create(mModel, u"D");
  const auto value = variant::SystemConstValue::create(mModel, 1.0, constant);
  const auto sdx = common::Sdx::create(mModel, constant);
  const auto formula = variant::SystemConstDependentFormula::create(mModel, u"f");
  formula.get<"SysConst">().add(other);
  formula.get<"SysConst">().add(constant);
  formula.get<"SysCString">().add(constant);
  constant.destroy();
  EXPECT_TRUE(value.get<"SysConst">().isNull());
  EXPECT_TRUE(sdx.get<"sdx">().isNull());
  ASSERT_EQ(formula.get<"SysConst">().size(), 1);
  EXPECT_TRUE(formula.get<"SysConst">()[0] == other);
  EXPECT_EQ(formula.get<"SysCString">().size(), 0);
}

TEST_F(Destroy, OfManyReferrersLeavesNoneBehind) {
  const auto constant = variant::SystemConst::create(mModel, u"C");
  std::vector<variant::SystemConstValue> values;
  const auto add = [&](int count) {
    for (int i = 0; i < count; ++i)
      values.push_back(variant::SystemConstValue::create(mModel, 1.0, constant));
  };
  add(1000);
  // In an order that differs from the order of creation.
  for (std::size_t i = 0; i < 700; ++i) values[i * 379 % 1000].destroy();
  add(500);
  for (std::size_t i = 1000; i < 1500; i += 2) values[i].destroy();
  constant.destroy();
  int left = 0;
  for (const auto& value : values) {
    if (!value.isValid()) continue;
    ++left;
    ASSERT_TRUE(value.get<"SysConst">().isNull());
  }
  EXPECT_EQ(left, 550);
}

TEST_F(Destroy, OfAReferrerLetsTheObjectStand) {
  const auto constant = variant::SystemConst::create(mModel, u"C");
  auto value = variant::SystemConstValue::create(mModel, 1.0, constant);
  value.destroy();
  value = variant::SystemConstValue::create(mModel, 2.0, constant);
  constant.destroy();
  EXPECT_TRUE(value.get<"SysConst">().isNull());
}

TEST_F(Destroy, OfATreeClearsListsThatReferIntoIt) {
  const auto package = common::Package::create(mModel, u"P");
  const auto formula = variant::SystemConstDependentFormula::create(mModel, u"f");
  const auto stays = variant::SystemConst::create(mModel, u"S");
  for (int i = 0; i < 20; ++i) {
    const auto constant = variant::SystemConst::create(mModel, u"C");
    package.get<"PackagedElement">().add(constant);
    formula.get<"SysConst">().add(constant);
    if (i == 10) formula.get<"SysConst">().add(stays);
  }
  package.destroy();
  ASSERT_EQ(formula.get<"SysConst">().size(), 1);
  EXPECT_TRUE(formula.get<"SysConst">()[0] == stays);
  EXPECT_TRUE(stays.isValid());
}

TEST_F(Destroy, OfTwoThatReferToEachOther) {
  const auto package = common::Package::create(mModel, u"P");
  const auto first = variant::PredefinedVariant::create(mModel, u"A");
  const auto second = variant::PredefinedVariant::create(mModel, u"B");
  first.get<"IncludedVariant">().add(second);
  second.get<"IncludedVariant">().add(first);
  package.get<"PackagedElement">().add(first);
  package.get<"PackagedElement">().add(second);
  package.destroy();
  EXPECT_FALSE(first.isValid() || second.isValid());
}

TEST_F(Destroy, AndCloseTakeAChainOfAMillion) {
  for (const bool isDestroyed : {true, false}) {
    const auto model = K7Q::Model::create();
    auto last = common::Package::create(model, u"P");
    const auto first = last;
    for (int i = 0; i < 1000000; ++i) {
      const auto next = common::Package::create(model);
      last.get<"PackagedElement">().add(next);
      last = next;
    }
    if (isDestroyed) {
      first.destroy();
    } else {
      model.getModelInterface()->close();
    }
    EXPECT_FALSE(last.isValid());
  }
}
