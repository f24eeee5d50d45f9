// Lifetime: what keeps a model and its objects alive, and the effects of closing a model.

#include <cstdint>
#include <string>
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

namespace {

/// The models in the cache. Each is bound to the next free URI of a name.
class BoundModels : public testing::Test {
 protected:
  ~BoundModels() override {
    for (const K7Q::Model& model : mModels) model.close();
  }
  std::u16string next(const std::u16string& name) const { return mCache.getNextAvailableModelUri(name); }
  std::u16string bind(const std::u16string& name) {
    mModels.push_back(K7Q::Model::create());
    std::u16string uri = next(name);
    mCache.bindModel(uri, mModels.back());
    return uri;
  }
  /// A simple version of next(): the first URI that is not found.
  std::u16string firstFree(const std::u16string& name) const {
    std::u16string uri = name;
    for (unsigned number = 1; !mCache.find(uri).isNull(); ++number) {
      const std::string digits = std::to_string(number);
      uri = name + std::u16string(digits.begin(), digits.end());
    }
    return uri;
  }

  K7Q::ModelCache& mCache = K7Q::ModelCache::instance();
  std::vector<K7Q::Model> mModels;
};

}  // namespace

TEST_F(BoundModels, AreCountedHoweverManyThereAre) {
  constexpr std::size_t kMany = 20000;
  for (std::size_t i = 0; i < kMany; ++i) bind(u"many");
  EXPECT_EQ(next(u"many"), u"many20000");
  EXPECT_EQ(mCache.models().size(), kMany);
  EXPECT_EQ(mCache.find(u"many19999"), mModels.back());
}

TEST_F(BoundModels, LeaveTheirNumbersWhenTheyAreClosedOrBoundAnew) {
  for (int i = 0; i < 25; ++i) bind(u"a");
  EXPECT_EQ(bind(u"a1"), u"a110");
  EXPECT_EQ(bind(u"a1"), u"a111");
  mModels[12].close();
  EXPECT_EQ(next(u"a1"), u"a12");
  EXPECT_EQ(bind(u"a"), u"a12");
  mCache.bindModel(u"elsewhere", mModels[7]);
  mCache.bindModel(u"b", mModels[3]);
  EXPECT_EQ(bind(u"a"), u"a3");
  EXPECT_EQ(bind(u"a"), u"a7");
  mModels[0].getModelInterface()->close();
  EXPECT_EQ(next(u"a"), u"a");
  mCache.unbind(mModels[20].getModelInterface());
  EXPECT_EQ(bind(u"a"), u"a");
  EXPECT_EQ(bind(u"a"), u"a20");
  EXPECT_EQ(bind(u"a"), u"a25");
}

TEST_F(BoundModels, GetTheFirstNumberThatIsFree) {
  std::uint32_t chance = 1;
  const auto draw = [&chance](std::uint32_t below) {
    chance = chance * 1664525U + 1013904223U;
    return (chance >> 8) % below;
  };
  const std::u16string names[] = {u"a", u"a1", u"a10", u"b", u"", u"a01"};
  for (int turn = 0; turn < 4000; ++turn) {
    const std::u16string& name = names[draw(6)];
    const unsigned act = mModels.size() < 100 ? draw(7) : 5 + draw(2);
    if (act < 5 || mModels.empty()) bind(name);
    const K7Q::Model model = mModels[draw(static_cast<std::uint32_t>(mModels.size()))];
    if (act == 5) mCache.bindModel(next(name), model);
    if (act == 6) {
      model.close();
      std::erase(mModels, model);
    }
    for (const std::u16string& each : names) ASSERT_EQ(next(each), firstFree(each)) << turn;
  }
}

// Only the global cache is told when a model is closed, not a cache that a program creates.
TEST_F(BoundModels, LeaveTheirNumbersInACacheThatIsNotTold) {
  K7Q::ModelCache cache;
  for (const char16_t* uri : {u"a", u"a1", u"a2"}) {
    mModels.push_back(K7Q::Model::create());
    cache.bindModel(uri, mModels.back());
  }
  EXPECT_EQ(cache.getNextAvailableModelUri(u"a"), u"a3");
  mModels[1].close();
  EXPECT_EQ(cache.getNextAvailableModelUri(u"a"), u"a1");
  cache.bindModel(u"a1", K7Q::Model::create());
  cache.unbind(mModels[1].getModelInterface());
  EXPECT_EQ(cache.getNextAvailableModelUri(u"a"), u"a3");
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
    packages.reserve(3000);
    for (int i = 0; i < 3000; ++i) packages.push_back(common::Package::create(model, u"P"));
    for (const auto& package : packages) package.destroy();
    for (const auto& package : packages) ASSERT_FALSE(package.isValid());
  }
  EXPECT_EQ(model.getInterface()->numRef(), 1);
}
