// Listeners.

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tarvelon/platform/model/audit/Audit.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tests/native/Shown.h"
#include "tests/native/Support.h"

namespace {

namespace api = Tarvelon::model;
using api::Change;
using Kind = Change::Kind;
using Changes = std::span<const Change>;

class Listeners : public testing::Test {
 protected:
  std::uint64_t listen() {
    return api::listen(mModel,
                       [this](Changes changes) { mBatches.emplace_back(changes.begin(), changes.end()); });
  }
  std::vector<Kind> kindsOf(std::size_t batch) const {
    std::vector<Kind> kinds;
    for (const Change& each : mBatches.at(batch)) kinds.push_back(each.kind);
    return kinds;
  }
  K7Q::Generic::SequenceIntf& elements() const { return mElements.get(); }

  K7Q::Model mModel = K7Q::Model::create();
  common::Package mPackage = common::Package::create(mModel, u"P");
  variant::SystemConst mConstant = variant::SystemConst::create(mModel, u"C");
  variant::SystemConst mOther = variant::SystemConst::create(mModel, u"D");
  K7Q::SequenceHandle mElements = Access<foundation::Package>(mPackage, "PackagedElement").sequence();
  std::vector<std::vector<Change>> mBatches;
};

}  // namespace

TEST_F(Listeners, AreToldOfEachKindOfChange) {
  listen();
  mPackage.set<"category">(u"c");
  elements().generic_push_back({}, refOf(mConstant));
  elements().generic_replace({}, 0, refOf(mOther));
  elements().generic_push_back({}, refOf(mConstant));
  elements().generic_erase({}, 1);
  common::Package::create(mModel, u"Q").destroy();
  ASSERT_EQ(mBatches.size(), 7U);
  const Change& set = mBatches[0][0];
  EXPECT_EQ(set.kind, Kind::Set);
  EXPECT_TRUE(set.object == mPackage);
  EXPECT_STREQ(api::hostName(*set.property), "category");
  EXPECT_TRUE(set.before.isNull());
  EXPECT_EQ(K7Q::String(set.after), K7Q::String(u"c"));
  EXPECT_EQ(kindsOf(1), std::vector{Kind::Added});
  EXPECT_TRUE(mBatches[1][0].after == mConstant);
  EXPECT_EQ(kindsOf(2), std::vector{Kind::Replaced});
  EXPECT_TRUE(mBatches[2][0].before == mConstant && mBatches[2][0].after == mOther);
  EXPECT_EQ(mBatches[3][0].index, 1U);
  EXPECT_EQ(kindsOf(4), std::vector{Kind::Removed});
  EXPECT_TRUE(mBatches[4][0].before == mConstant);
  EXPECT_EQ(kindsOf(5), (std::vector{Kind::Made, Kind::Set}));
  EXPECT_EQ(kindsOf(6), std::vector{Kind::Destroyed});
  EXPECT_FALSE(mBatches[6][0].object.isValid());
}

// The former owner loses the value of a required property.
TEST_F(Listeners, AreToldOfBothHoldersOfAnObjectThatGoesToAnother) {
  const auto paragraph = documentation::MultiLanguageOverviewParagraph::create(mModel);
  const auto first = documentation::Modification::create(mModel, paragraph);
  const auto second = documentation::Modification::create(mModel);
  api::setHistoryLimit(mModel, 5);
  listen();
  std::vector<Change> ofFirst;
  std::vector<Change> ofSecond;
  api::listen(first, [&](Changes changes) { ofFirst.insert(ofFirst.end(), changes.begin(), changes.end()); });
  api::listen(second,
              [&](Changes changes) { ofSecond.insert(ofSecond.end(), changes.begin(), changes.end()); });
  second.set<"change">(paragraph);
  EXPECT_EQ(api::undoLabel(mModel),
            "change of documentation.Modification, change of documentation.Modification");
  api::undo(mModel);

  const auto expect = [&](const Change& change, const K7Q::ClassObject& object, bool hadIt) {
    EXPECT_EQ(change.kind, Kind::Set);
    EXPECT_TRUE(change.object == object);
    EXPECT_STREQ(api::hostName(*change.property), "change");
    EXPECT_TRUE((hadIt ? change.before : change.after) == paragraph);
    EXPECT_TRUE((hadIt ? change.after : change.before).isNull());
  };
  ASSERT_EQ(mBatches.size(), 2U);
  ASSERT_EQ(kindsOf(0), (std::vector{Kind::Set, Kind::Set}));
  expect(mBatches[0][0], first, true);
  expect(mBatches[0][1], second, false);
  ASSERT_EQ(kindsOf(1), (std::vector{Kind::Set, Kind::Set}));
  expect(mBatches[1][0], second, true);
  expect(mBatches[1][1], first, false);
  ASSERT_EQ(ofFirst.size(), 2U);
  expect(ofFirst[0], first, true);
  expect(ofFirst[1], first, false);
  ASSERT_EQ(ofSecond.size(), 2U);
  expect(ofSecond[0], second, false);
  expect(ofSecond[1], second, true);
}

TEST_F(Listeners, AreToldOfAMoveWithinASequence) {
  for (const char16_t* name : {u"1", u"2", u"3"})
    mPackage.get<"PackagedElement">().add(variant::SystemConst::create(mModel, name));
  listen();
  elements().generic_insert({}, 0, elements().generic_at({}, 2));
  ASSERT_EQ(kindsOf(0), std::vector{Kind::Moved});
  EXPECT_EQ(mBatches[0][0].from, 2U);
  EXPECT_EQ(mBatches[0][0].index, 0U);
}

TEST_F(Listeners, AreToldOfAnExchangeAsTwoMoves) {
  for (const char16_t* name : {u"1", u"2", u"3", u"4"})
    mPackage.get<"PackagedElement">().add(variant::SystemConst::create(mModel, name));
  api::setHistoryLimit(mModel, 5);
  listen();
  elements().generic_replace({}, 3, elements().generic_at({}, 1));
  api::undo(mModel);
  elements().generic_replace({}, 0, elements().generic_at({}, 1));
  for (const std::size_t batch : {0U, 1U}) {
    ASSERT_EQ(kindsOf(batch), (std::vector{Kind::Moved, Kind::Moved}));
    EXPECT_EQ(mBatches[batch][0].from, 3U);
    EXPECT_EQ(mBatches[batch][0].index, 1U);
    EXPECT_EQ(mBatches[batch][1].from, 2U);
    EXPECT_EQ(mBatches[batch][1].index, 3U);
  }
  ASSERT_EQ(kindsOf(2), std::vector{Kind::Moved});
  EXPECT_EQ(mBatches[2][0].from, 1U);
  EXPECT_EQ(mBatches[2][0].index, 0U);
}

TEST_F(Listeners, SeeTheModelUnderTheViewThatTheyCameWith) {
  const K7Q::Model frozen(mModel.getModelInterface(), mModel.frozen().getDeviant());
  std::vector<Change> seen;
  const auto number = api::listen(
      frozen, [&seen](std::span<const Change> changes) { seen.assign(changes.begin(), changes.end()); });
  elements().generic_push_back({}, refOf(mConstant));
  api::unlisten(mModel, number);
  ASSERT_EQ(seen.size(), 1U);
  EXPECT_EQ(seen[0].object.getDeviant().word, K7Q::Deviant::kFrozen);
  EXPECT_EQ(seen[0].after.getDeviant().word, K7Q::Deviant::kFrozen);
}

TEST_F(Listeners, AreToldOnceOfATransactionAndNotOfOneThatIsTakenBack) {
  listen();
  {
    api::Transaction transaction(mModel);
    mPackage.set<"Name">(u"1");
    mPackage.set<"Name">(u"2");
    transaction.commit();
  }
  {
    const api::Transaction transaction(mModel);
    mPackage.set<"Name">(u"3");
  }
  EXPECT_EQ(mBatches.size(), 1U);
  EXPECT_EQ(kindsOf(0), (std::vector{Kind::Set, Kind::Set}));
}

TEST_F(Listeners, AreToldOfUndoTheOtherWayRound) {
  api::setHistoryLimit(mModel, 5);
  listen();
  {
    api::Transaction transaction(mModel);
    elements().generic_push_back({}, refOf(mConstant));
    elements().generic_push_back({}, refOf(mOther));
    mPackage.set<"Name">(u"1");
    transaction.commit();
  }
  api::undo(mModel);
  EXPECT_EQ(kindsOf(1), (std::vector{Kind::Set, Kind::Removed, Kind::Removed}));
  EXPECT_EQ(K7Q::String(mBatches[1][0].after), K7Q::String(u"P"));
  EXPECT_TRUE(mBatches[1][1].before == mOther);
  api::redo(mModel);
  EXPECT_EQ(kindsOf(2), kindsOf(0));
}

TEST_F(Listeners, OfAnObjectAreToldOfThatAlone) {
  std::size_t told = 0;
  api::listen(mConstant, [&told](Changes changes) { told += changes.size(); });
  mOther.set<"Name">(u"x");
  EXPECT_EQ(told, 0U);
  mConstant.set<"Name">(u"y");
  EXPECT_EQ(told, 1U);
  mConstant.destroy();
  EXPECT_EQ(told, 2U);
  // A new object may have the same number as the destroyed one.
  variant::SystemConst::create(mModel, u"z").set<"Name">(u"w");
  EXPECT_EQ(told, 2U);
}

TEST_F(Listeners, OfAnObjectComeBackWithIt) {
  api::setHistoryLimit(mModel, 5);
  std::size_t told = 0;
  api::listen(mConstant, [&told](Changes changes) { told += changes.size(); });
  mConstant.destroy();
  api::undo(mModel);
  mConstant.set<"Name">(u"y");
  EXPECT_EQ(told, 3U);
}

TEST_F(Listeners, OfObjectsMayBeManyInOneBatchAndLeaveOneByOne) {
  constexpr std::size_t kMany = 300000;
  std::vector<variant::SystemConst> constants;
  for (std::size_t i = 0; i < kMany; ++i) constants.push_back(variant::SystemConst::create(mModel, u"c"));
  std::size_t told = 0;
  std::size_t steps = 0;
  std::vector<std::uint64_t> ids;
  const auto listenToAll = [&] {
    ids.clear();
    for (const auto& each : constants) {
      ids.push_back(api::listen(each, [&](Changes changes) {
        ++told;
        steps += changes.size();
      }));
    }
  };
  listenToAll();
  for (const std::uint64_t id : ids) api::unlisten(mModel, id);
  listenToAll();
  {
    api::Transaction transaction(mModel);
    for (const auto& each : constants) each.set<"Name">(u"x");
    for (const auto& each : constants) each.set<"Name">(u"y");
    transaction.commit();
  }
  EXPECT_EQ(told, kMany);
  EXPECT_EQ(steps, 2 * kMany);
  for (const auto& each : constants) each.destroy();
  EXPECT_EQ(told, 2 * kMany);
}

TEST_F(Listeners, AreToldInTheOrderTheyCameEachOfItsOwn) {
  std::string told;
  const auto listenTo = [&](const auto& to, char letter) {
    return api::listen(to, [&told, letter](Changes changes) {
      told += letter;
      for (const Change& change : changes) told += K7Q::String::to_string(K7Q::String(change.after));
    });
  };
  listenTo(mOther, 'a');
  listenTo(mModel, 'b');
  listenTo(mConstant, 'c');
  const auto leaving = listenTo(mOther, 'd');
  listenTo(mPackage, 'e');
  listenTo(mOther, 'f');
  const auto change = [&] {
    told.clear();
    api::Transaction transaction(mModel);
    mConstant.set<"Name">(u"1");
    mOther.set<"Name">(u"2");
    mConstant.set<"Name">(u"3");
    mOther.set<"Name">(u"4");
    transaction.commit();
  };
  change();
  EXPECT_EQ(told, "a24b1234c13d24f24");
  api::unlisten(mModel, leaving);
  api::listen(mConstant, [&](Changes) { listenTo(mOther, 'g'); });
  change();
  EXPECT_EQ(told, "a24b1234c13f24");
  change();
  EXPECT_EQ(told, "a24b1234c13f24g24");
}

// A listener of an object removes other listeners that would be called after it: of the object, of another,
// of the model.
TEST_F(Listeners, OfObjectsMayLeaveWhileTheyAreTold) {
  std::string told;
  std::vector<std::uint64_t> leaving;
  api::listen(mConstant, [&](Changes) {
    told += 'a';
    for (const std::uint64_t id : leaving) api::unlisten(mModel, id);
  });
  leaving.push_back(api::listen(mConstant, [&](Changes) { told += 'b'; }));
  leaving.push_back(api::listen(mOther, [&](Changes) { told += 'c'; }));
  leaving.push_back(api::listen(mModel, [&](Changes) { told += 'd'; }));
  api::listen(mOther, [&](Changes) { told += 'e'; });
  api::Transaction transaction(mModel);
  mOther.set<"Name">(u"1");
  mConstant.set<"Name">(u"1");
  transaction.commit();
  EXPECT_EQ(told, "ae");
}

TEST_F(Listeners, MayRaise) {
  api::listen(mModel, [](Changes) { throw std::runtime_error("mine"); });
  api::listen(mModel, [](Changes) { throw 1; });
  listen();
  EXPECT_NO_THROW(mPackage.set<"Name">(u"1"));
  EXPECT_EQ(mBatches.size(), 1U);
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"1"));
}

TEST_F(Listeners, MayNotChangeTheModel) {
  api::setHistoryLimit(mModel, 5);
  mPackage.set<"Name">(u"0");
  int told = 0;
  api::listen(mModel, [&](Changes) {
    ++told;
    const std::string_view text =
        "a listener must not change the model; change it after the notifying call has returned";
    EXPECT_EQ(refusalOf([&] { mPackage.set<"Name">(u"2"); }), text);
    EXPECT_EQ(refusalOf([&] { common::Package::create(mModel); }), text);
    EXPECT_EQ(refusalOf([&] { mConstant.destroy(); }), text);
    EXPECT_EQ(refusalOf([&] { elements().generic_push_back({}, refOf(mOther)); }), text);
    EXPECT_EQ(refusalOf([&] { const api::Transaction transaction(mModel); }), text);
    EXPECT_EQ(refusalOf([&] { api::undo(mModel); }), text);
    EXPECT_EQ(refusalOf([&] { api::redo(mModel); }), text);
    EXPECT_EQ(refusalOf([&] { api::setHistoryLimit(mModel, 1); }), text);
    EXPECT_EQ(refusalOf([&] { mModel.getModelInterface()->close(); }), text);
    // Reading is allowed, and so is changing another model.
    EXPECT_EQ(api::objects(mModel).size(), 3U);
    common::Package::create(K7Q::Model::create(), u"R");
  });
  mPackage.set<"Name">(u"1");
  api::undo(mModel);
  api::redo(mModel);
  EXPECT_EQ(told, 3);
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"1"));
  shown::checkAgreement(mModel);
}

TEST_F(Listeners, MayLeaveAndComeWhileTheyAreTold) {
  std::uint64_t first = 0;
  std::uint64_t second = 0;
  std::vector<int> told;
  first = api::listen(mModel, [&](Changes) {
    told.push_back(1);
    api::unlisten(mModel, first);
    api::unlisten(mModel, second);
    api::listen(mModel, [&](Changes) { told.push_back(3); });
  });
  second = api::listen(mModel, [&](Changes) { told.push_back(2); });
  mPackage.set<"Name">(u"1");
  EXPECT_EQ(told, std::vector{1});
  mPackage.set<"Name">(u"2");
  EXPECT_EQ(told, (std::vector{1, 3}));
}

TEST_F(Listeners, ThatHaveLeftAreFreedWithWhatTheyHold) {
  const auto held = std::make_shared<int>();
  const auto leaving = api::listen(mModel, [held](Changes) {});
  api::listen(mConstant, [held](Changes) {});
  EXPECT_EQ(held.use_count(), 3);
  api::unlisten(mModel, leaving);
  EXPECT_EQ(held.use_count(), 2);
  mConstant.destroy();
  EXPECT_EQ(held.use_count(), 1);
  api::listen(mModel, [held](Changes) {});
  mModel.getModelInterface()->close();
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(Listeners, ThatHaveLeftTwiceTakeNobodyAlong) {
  const auto first = listen();
  api::unlisten(mModel, first);
  listen();
  api::unlisten(mModel, first);
  mPackage.set<"Name">(u"1");
  EXPECT_EQ(mBatches.size(), 1U);
}

TEST_F(Listeners, OfAnotherModelAreNotMeant) {
  const auto other = K7Q::Model::create();
  api::listen(other, [](Changes) {});
  listen();
  for (std::uint64_t id = 0; id < 10; ++id) api::unlisten(other, id);
  mPackage.set<"Name">(u"1");
  EXPECT_EQ(mBatches.size(), 1U);
}

TEST_F(Listeners, ReachAClosedModelAndAGoneObjectWithAWordOrNot) {
  const auto id = listen();
  mConstant.destroy();
  expectNullReference([&] { api::listen(mConstant, [](Changes) {}); });
  mModel.getModelInterface()->close();
  EXPECT_NO_THROW(api::unlisten(mModel, id));
  expectNullReference([&] { listen(); });
  expectNullReference([&] { api::listen(mOther, [](Changes) {}); });
}

TEST_F(Listeners, MayChangeAnotherModelWhoseListenersReadThisOne) {
  const auto other = K7Q::Model::create();
  const auto copy = common::Package::create(other, u"copy");
  std::string seen;
  api::listen(other, [&](Changes) {
    seen = K7Q::String::to_string(mPackage.get<"Name">());
    EXPECT_THROW(mPackage.set<"Name">(u"back"), K7Q::Exception);
  });
  api::listen(mModel, [&](Changes) { copy.set<"Name">(mPackage.get<"Name">()); });
  mPackage.set<"Name">(u"1");
  EXPECT_EQ(seen, "1");
}

// Freeing a listener may run code that changes the model while the model is freeing the listener's object.
TEST_F(Listeners, MayChangeTheModelWhenTheyAreFreed) {
  api::setHistoryLimit(mModel, 1);
  struct Last {
    common::Package package;
    int* count;
    ~Last() {
      ++*count;
      if (package.isValid()) package.set<"Name">(u"last");
    }
  };
  int count = 0;
  const auto listenTo = [&](const K7Q::ClassObject& object) {
    return api::listen(object, [last = std::shared_ptr<Last>(new Last{mPackage, &count})](Changes) {});
  };
  listenTo(mConstant);
  listenTo(mOther);
  {
    api::Transaction transaction(mModel);
    mConstant.destroy();
    mOther.destroy();
    transaction.commit();
  }
  EXPECT_EQ(count, 0);
  mPackage.set<"category">(u"c");
  EXPECT_EQ(count, 2);
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"last"));
  shown::checkAgreement(mModel);
  api::setHistoryLimit(mModel, 0);
  api::unlisten(mModel, listenTo(mPackage));
  EXPECT_EQ(count, 3);
  const auto id = listenTo(mPackage);
  mModel.getModelInterface()->close();
  api::unlisten(mModel, id);
}

TEST_F(Listeners, AreToldLaterWhileThatIsPutOff) {
  listen();
  {
    const api::DelayedTelling delayed;
    mPackage.set<"category">(u"x");
    EXPECT_TRUE(mBatches.empty());
  }
  EXPECT_EQ(kindsOf(0), std::vector{Kind::Set});
}

TEST_F(Listeners, AreToldLaterThoughATransactionIsTakenBackMeanwhile) {
  listen();
  {
    const api::DelayedTelling delayed;
    mPackage.set<"category">(u"x");
    {
      const api::Transaction transaction(mModel);
      mPackage.set<"Name">(u"1");
      const api::Transaction inner(mModel);
      mPackage.set<"Name">(u"2");
    }
    EXPECT_TRUE(mBatches.empty());
    mPackage.set<"category">(u"y");
  }
  EXPECT_EQ(kindsOf(0), (std::vector{Kind::Set, Kind::Set}));
  EXPECT_EQ(mBatches.size(), 1U);
  // All delays have ended.
  api::setHistoryLimit(mModel, 3);
  mPackage.set<"Name">(u"3");
  EXPECT_TRUE(api::undo(mModel));
  EXPECT_EQ(api::audit(mModel), "");
}

TEST_F(Listeners, AreToldLaterThoughATransactionFromBeforeIsTakenBackMeanwhile) {
  listen();
  auto transaction = std::make_unique<api::Transaction>(mModel);
  {
    const api::DelayedTelling delayed;
    mPackage.set<"category">(u"x");
    transaction.reset();
    EXPECT_EQ(mPackage.get<"category">(), K7Q::String());
    mPackage.set<"category">(u"y");
  }
  EXPECT_EQ(kindsOf(0), std::vector{Kind::Set});
  EXPECT_EQ(api::audit(mModel), "");
}

TEST_F(Listeners, OfAModelThatIsClosedWhileThatIsPutOffAreNotTold) {
  listen();
  {
    const api::DelayedTelling delayed;
    mPackage.set<"category">(u"x");
    mModel.close();
  }
  EXPECT_TRUE(mBatches.empty());
  const auto other = K7Q::Model::create();
  common::Package::create(other, u"Q");
  EXPECT_EQ(api::objects(other).size(), 1U);
}

// The call of a listener keeps the model alive until the call ends.
TEST(ListenersOfAModel, MayDropItsLastHandleInUndoAndRedo) {
  for (const auto act : {api::undo, api::redo}) {
    auto model = K7Q::Model::create();
    api::setHistoryLimit(model, 5);
    common::Package::create(model, u"P");
    if (act == api::redo) api::undo(model);
    api::listen(model, [&model](Changes /*changes*/) { model = K7Q::Model(); });
    EXPECT_TRUE(act(model));
    EXPECT_FALSE(model.isValid());
  }
}

TEST(ListenersOfAModel, MayHoldItsLastHandleAndLeave) {
  const std::size_t before = Tarvelon::metamodel::native::liveObjects();
  {
    const api::DelayedTelling delayed;
    const auto model = K7Q::Model::create();
    const auto id = std::make_shared<std::uint64_t>(0);
    *id = api::listen(model, [model, id](Changes /*changes*/) { api::unlisten(model, *id); });
    common::Package::create(model, u"P");
  }
  EXPECT_EQ(Tarvelon::metamodel::native::liveObjects(), before);
}

TEST_F(Listeners, FindTheHistoryAsItIsFromThenOn) {
  api::setHistoryLimit(mModel, 5);
  std::vector<std::string> labels;
  api::listen(mModel, [&](Changes /*changes*/) {
    labels.push_back(api::undoLabel(mModel) + " | " + api::redoLabel(mModel));
  });
  const auto package = common::Package::create(mModel, u"Q");
  package.destroy();
  api::undo(mModel);
  api::undo(mModel);
  EXPECT_EQ(labels, (std::vector<std::string>{"made common.Package 'Q' | ", "destroyed common.Package 'Q' | ",
                                              "made common.Package 'Q' | destroyed common.Package 'Q'",
                                              " | made common.Package 'Q'"}));
}
