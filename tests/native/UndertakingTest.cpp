// What a host makes and cannot show then: it goes again, and nothing else has changed.

#include <stdexcept>

#include "tarvelon/platform/tarvelon/api/Copy.h"
#include "tarvelon/platform/tarvelon/api/History.h"
#include "tests/native/Shown.h"
#include "tests/native/Support.h"

namespace {

namespace api = Tarvelon::model;

class Undertakings : public testing::Test {
 protected:
  /// Runs the action in an undertaking that an exception leaves.
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
  EXPECT_NE(shown::everything(mModel).find("Q"), std::string::npos);
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
  EXPECT_EQ(shown::everything(mModel).find("Q"), std::string::npos);
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

TEST_F(Undertakings, LeaveAnObjectThatIsGoneAlready) {
  fail([this] { common::Package::create(mModel, u"Q").destroy(); });
  shown::checkAgreement(mModel);
}

}  // namespace
