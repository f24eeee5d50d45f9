// Lifetime: who keeps a model and its objects, and what closing leaves.

#include <vector>

#include "tests/native/Support.h"

TEST(Model, IsEmptyAndOpenWhenItIsMade) {
  const auto model = K7Q::Model::create();
  EXPECT_TRUE(model.isValid());
  EXPECT_EQ(model.getModelInterface()->getUri({}), u"");
  EXPECT_EQ(model.getInterface()->getRuvoName(false).view(), "K7Q.Model");
  EXPECT_EQ(model.getInterface()->getRuvoName(true).view(), "K7Q.ImmutableModel");
}

TEST(Model, CarriesItsNameAsUri) {
  const auto model = K7Q::NSInterface::FactoryIntf::createNewModel(u"brakes");
  EXPECT_EQ(model.getModelInterface()->getUri({}), u"brakes");
  model.getModelInterface()->setUri({}, u"doors");
  EXPECT_EQ(model.getModelInterface()->getUri({}), u"doors");
}

TEST(Model, LivesAsLongAsOneOfItsObjectsIsHeld) {
  common::Package package;
  {
    const auto model = K7Q::Model::create();
    package = common::Package::create(model, u"Brakes");
    EXPECT_EQ(model.getInterface()->numRef(), 2);
  }
  ASSERT_TRUE(package.isValid());
  EXPECT_EQ(package.getClassObject()->getModel({}).getInterface()->numRef(), 2);
  EXPECT_EQ(package.get<"Name">(), K7Q::String(u"Brakes"));
}

TEST(Model, CountsAHeldObjectOnceHoweverManyHandlesThereAre) {
  const auto model = K7Q::Model::create();
  const auto package = common::Package::create(model);
  const auto second = package;
  EXPECT_EQ(package.getInterface()->numRef(), 2);
  EXPECT_EQ(model.getInterface()->numRef(), 2);
}

TEST(Model, KeepsAnObjectThatNobodyHoldsUntilItIsClosed) {
  const auto model = K7Q::Model::create();
  auto root = common::AUTOSAR::create(model);
  root.get<"PackagedElement">().add(common::Package::create(model, u"Brakes"));
  EXPECT_EQ(root.get<"PackagedElement">()[0].get<"Name">(), K7Q::String(u"Brakes"));
}

TEST(ModelClose, EndsEveryObjectAtOnce) {
  const auto model = K7Q::Model::create();
  const auto package = common::Package::create(model, u"Brakes");
  model.getModelInterface()->close();

  EXPECT_FALSE(model.isValid());
  EXPECT_FALSE(package.isValid());
  expectNullReference([&] { package.get<"Name">(); });
  expectNullReference([&] { package.set<"Name">(u"x"); });
  expectNullReference([&] { package.get<"PackagedElement">(); });
  expectNullReference([&] { package.destroy(); });
  expectNullReference([&] { package.getClassObject()->getModel({}); });
  expectNullReference([&] { package.getClassObject()->getMetaType({}); });
}

TEST(ModelClose, IsNoErrorTheSecondTime) {
  const auto model = K7Q::Model::create();
  model.getModelInterface()->close();
  EXPECT_NO_THROW(model.getModelInterface()->close());
}

TEST(ModelClose, IsRefusedByANullHandleAndAViewThatRefusesWriting) {
  expectNullReference([] { K7Q::Model().close(); });
  const auto model = K7Q::Model::create();
  const auto view = model.frozen();
  const K7Q::Model frozen(view.getModelInterface(), view.getDeviant());
  EXPECT_THROW(frozen.close(), K7Q::Exception);
  EXPECT_TRUE(model.isValid());
  model.close();
  EXPECT_FALSE(model.isValid());
}

TEST(ModelClose, LetsTheModelRefuseEverythingElse) {
  const auto model = K7Q::Model::create();
  model.getModelInterface()->close();
  expectNullReference([&] { common::Package::create(model); });
  expectNullReference([&] { model.getModelInterface()->getUri({}); });
  expectNullReference([&] { model.getModelInterface()->setUri({}, u"x"); });
  expectNullReference([&] { model.getInterface()->getMetaType({}); });
}

TEST(ModelClose, TakesTheModelOutOfTheCacheEvenIfOnlyThatHeldIt) {
  K7Q::NSInterface::ModelIntf* interface = nullptr;
  {
    const auto model = K7Q::Model::create();
    interface = model.getModelInterface();
    K7Q::ModelCache::instance().bindModel(u"closing", model);
  }
  interface->close();
  EXPECT_TRUE(K7Q::ModelCache::instance().find(u"closing").isNull());
}

TEST(ModelClose, LeavesSequencesAndIteratorsThatRaise) {
  const auto model = K7Q::Model::create();
  const auto package = common::Package::create(model);
  const auto sequence = package.get<"ReferenceBase">();
  const K7Q::IteratorHandle iterator(sequence.get().generic_begin({}), {});
  model.getModelInterface()->close();
  expectNullReference([&] { sequence.size(); });
  expectNullReference([&] { iterator.getInterface()->current({}); });
  expectNullReference([&] { sequence.get().generic_clear({}); });
}

TEST(ModelCreate, RefusesAnEmptyModel) {
  expectNullReference([] { common::Package::create(K7Q::Model()); });
}

TEST(ModelCreate, RefusesAFrozenModel) {
  const auto model = K7Q::Model::create();
  const K7Q::Model frozen(model.getModelInterface(), model.frozen().getDeviant());
  EXPECT_THROW(common::Package::create(frozen), K7Q::Exception);
}

TEST(Model, FreesAndReusesTheRoomOfDestroyedObjects) {
  const auto model = K7Q::Model::create();
  for (int round = 0; round < 3; ++round) {
    std::vector<common::Package> packages;
    for (int i = 0; i < 3000; ++i) packages.push_back(common::Package::create(model, u"P"));
    for (const auto& package : packages) package.destroy();
    for (const auto& package : packages) ASSERT_FALSE(package.isValid());
  }
  EXPECT_EQ(model.getInterface()->numRef(), 1);
}
