// If a host cannot return an object that it has created, the object is removed and nothing else has changed.

#include <optional>
#include <stdexcept>

#include "tarvelon/platform/model/api/Copy.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tests/native/Shown.h"
#include "tests/native/Support.h"

namespace {

namespace api = Tarvelon::model;

class Undertakings : public testing::Test {
 protected:
  /// Runs the action in an Undertaking that is left by an exception.
  template <class Action>
  static void fail(Action action) {
    try {
      const api::Undertaking undertaking;
      action();
      throw std::runtime_error("cannot be shown");
    } catch (const std::runtime_error&) {
      return;
    }
  }

  K7Q::Model mModel = K7Q::Model::create();
  common::Package mPackage = common::Package::create(mModel, u"P");
};

TEST_F(Undertakings, KeepWhatWasMadeWhenTheyComeThrough) {
  {
    const api::Undertaking undertaking;
    common::Package::create(mModel, u"Q");
  }
  EXPECT_EQ(api::objects(mModel).size(), 2U);
}

TEST_F(Undertakings, TakeAnObjectBackThatNothingHasNoted) {
  const std::string before = shown::everything(mModel);
  fail([this] { common::Package::create(mModel, u"Q"); });
  EXPECT_EQ(shown::everything(mModel), before);
  shown::checkAgreement(mModel);
}

TEST_F(Undertakings, TakeACopyBackWithAllThatItHolds) {
  mPackage.get<"PackagedElement">().add(variant::SystemConst::create(mModel, u"C"));
  const std::string before = shown::everything(mModel);
  fail([this] { Tarvelon::metamodel::clone(mPackage); });
  EXPECT_EQ(shown::everything(mModel), before);
  shown::checkAgreement(mModel);
}

TEST_F(Undertakings, LeaveNoStepAndLoseNone) {
  api::setHistoryLimit(mModel, 10);
  mPackage.set<"category">(u"1");
  mPackage.set<"category">(u"2");
  api::undo(mModel);
  const std::string before = shown::everything(mModel);
  fail([this] {
    common::Package::create(mModel, u"Q");
    mPackage.set<"category">(u"3");
  });
  EXPECT_EQ(shown::everything(mModel), before);
  EXPECT_EQ(api::undoable(mModel), 1U);
  EXPECT_EQ(api::redoable(mModel), 1U);
}

TEST_F(Undertakings, TakeBackTheirOwnPartOfATransaction) {
  api::Transaction transaction(mModel);
  mPackage.set<"category">(u"1");
  fail([this] { common::Package::create(mModel, u"Q"); });
  transaction.commit();
  EXPECT_EQ(mPackage.get<"category">(), K7Q::String(u"1"));
  EXPECT_EQ(api::objects(mModel).size(), 1U);
}

TEST_F(Undertakings, TellNobodyOfWhatTheyTakeBack) {
  int told = 0;
  api::listen(mModel, [&told](std::span<const api::Change>) { ++told; });
  fail([this] { common::Package::create(mModel, u"Q"); });
  EXPECT_EQ(told, 0);
  const api::Undertaking undertaking;
  mPackage.set<"category">(u"1");
  EXPECT_EQ(told, 0) << "listeners are told at the end";
}

TEST_F(Undertakings, TakeBackTheirOwnPartOfAnother) {
  api::setHistoryLimit(mModel, 10);
  {
    const api::Undertaking outer;
    mPackage.set<"category">(u"1");
    fail([this] { common::Package::create(mModel, u"Q"); });
    fail([] { common::Package::create(K7Q::Model::create(), u"Q"); });
    mPackage.set<"category">(u"2");
    EXPECT_EQ(api::undoable(mModel), 0U);
  }
  EXPECT_EQ(mPackage.get<"category">(), K7Q::String(u"2"));
  EXPECT_EQ(api::objects(mModel).size(), 1U);
  EXPECT_EQ(api::undoable(mModel), 1U);
}

TEST_F(Undertakings, TakeBackWhatAnotherInThemHasDone) {
  api::setHistoryLimit(mModel, 10);
  fail([this] {
    {
      const api::Undertaking inner;
      mPackage.set<"category">(u"1");
    }
    mPackage.set<"category">(u"2");
  });
  EXPECT_EQ(mPackage.get<"category">(), K7Q::String());
  EXPECT_EQ(api::undoable(mModel), 0U);
}

TEST_F(Undertakings, OutliveATransactionThatIsRolledBackInThem) {
  api::Transaction transaction(mModel);
  mPackage.set<"Name">(u"a text of some length");
  mPackage.set<"Name">(u"another of some length");
  fail([&] {
    mPackage.set<"Name">(u"Q");
    transaction.rollBack();
  });
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"P"));
  shown::checkAgreement(mModel);
}

TEST_F(Undertakings, LeaveATransactionOpenThatWasBegunInThem) {
  api::setHistoryLimit(mModel, 10);
  std::optional<api::Transaction> transaction;
  fail([&] {
    mPackage.set<"Name">(u"1");
    mPackage.set<"Name">(u"2");
    transaction.emplace(mModel);
    mPackage.set<"Name">(u"3");
  });
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"P"));
  mPackage.set<"Name">(u"4");
  transaction->rollBack();
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"P"));
  EXPECT_EQ(api::undoable(mModel), 0U);
  shown::checkAgreement(mModel);
}

TEST_F(Undertakings, LeaveAnObjectThatIsGoneAlready) {
  fail([this] { common::Package::create(mModel, u"Q").destroy(); });
  shown::checkAgreement(mModel);
}

}  // namespace
