// Lists that a host makes, with objects that the model destroys and restores.

#include "tarvelon/platform/k7q/sequences/HostList.h"
#include "tarvelon/platform/model/api/History.h"
#include "tests/native/Support.h"
#include "tests/support/FailingNew.h"

namespace {

namespace api = Tarvelon::model;

/// A list of objects of one model.
class HostLists : public testing::TestWithParam<bool> {
 protected:
  HostLists() {
    mList->addRef();
    for (const auto& each : {mFirst, mSecond}) mList->generic_push_back({}, refOf(each));
  }
  ~HostLists() override { mList->release(); }
  int size() const { return mList->generic_size({}); }

  K7Q::Model mModel = K7Q::Model::create();
  common::Package mFirst = common::Package::create(mModel, u"1");
  common::Package mSecond = common::Package::create(mModel, u"2");
  K7Q::HostList* mList =
      new K7Q::HostList(K7Q::kObjectElements, mFirst.getInterface()->getRuvoName(false), GetParam(), mModel);
};

}  // namespace

TEST_P(HostLists, LoseAnObjectThatIsDestroyedWithAHistory) {
  api::setHistoryLimit(mModel, 10);
  EXPECT_EQ(size(), 2);
  mFirst.destroy();
  EXPECT_EQ(size(), 1);
  EXPECT_TRUE(mList->generic_front({}).equals(refOf(mSecond)));
}

TEST_P(HostLists, LoseAnObjectWhoseMakingIsUndone) {
  api::setHistoryLimit(mModel, 10);
  const auto third = common::Package::create(mModel);
  mList->generic_push_back({}, refOf(third));
  api::undo(mModel);
  EXPECT_EQ(size(), 2);
  api::redo(mModel);
  mList->generic_push_back({}, refOf(third));
  EXPECT_EQ(size(), 3);
}

TEST_P(HostLists, LoseAnObjectWhoseEndIsMadeAgain) {
  api::setHistoryLimit(mModel, 10);
  mFirst.destroy();
  api::undo(mModel);
  EXPECT_EQ(size(), 2);
  api::redo(mModel);
  EXPECT_EQ(size(), 1);
}

TEST_P(HostLists, MakeIteratorsStaleWhenTheyLoseAnObject) {
  const auto second = mList->generic_end({});
  second->previous({});
  EXPECT_TRUE(second->current({}).equals(refOf(mSecond)));
  mFirst.destroy();
  EXPECT_THROW(second->current({}), K7Q::Exception);
  EXPECT_THROW(second->previous({}), K7Q::Exception);
}

TEST_P(HostLists, AreAsTheyWereWhenThereIsNoMemoryForAnElement) {
  std::vector<common::Package> packages;
  for (int count = 0; count < 40; ++count) packages.push_back(common::Package::create(mModel));
  int failures = 0;
  for (const auto& each : packages) {
    const int before = size();
    for (std::size_t n = 1; n <= 3; ++n) {
      failing::gCountdown = n;
      try {
        mList->generic_push_front({}, refOf(each));
      } catch (const std::bad_alloc&) {
        ++failures;
        failing::gCountdown = 0;
        ASSERT_EQ(size(), before);
        ASSERT_FALSE(mList->generic_contains({}, refOf(each)));
        continue;
      }
      failing::gCountdown = 0;
      ASSERT_EQ(size(), before + 1);
      mList->generic_pop_front({});
    }
    mList->generic_push_front({}, refOf(each));
    ASSERT_EQ(size(), before + 1);
  }
  EXPECT_GT(failures, 0);
}

INSTANTIATE_TEST_SUITE_P(BothKinds, HostLists, testing::Bool(),
                         [](const auto& isUnique) { return isUnique.param ? "Unique" : "Plain"; });
