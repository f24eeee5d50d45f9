// Transactions, undo and redo.

#include <memory>
#include <vector>

#include "platform/tarvelon/api/History.h"
#include "platform/tarvelon/api/Search.h"
#include "tests/native/Shown.h"
#include "tests/native/Support.h"

namespace {

namespace api = Tarvelon::model;
using api::Transaction;

class Transactions : public testing::Test {
 protected:
  std::string shown() const { return shown::everything(mModel); }
  std::size_t objects() const { return api::objects(mModel).size(); }

  K7Q::Model mModel = K7Q::Model::create();
  common::Package mPackage = common::Package::create(mModel, u"P");
};

class History : public Transactions {
 protected:
  History() { api::setHistoryLimit(mModel, 10); }
  bool undo() { return api::undo(mModel); }
  bool redo() { return api::redo(mModel); }

  /// Makes a change, and takes it back and makes it again twice, comparing all that can be seen.
  template <class Change>
  void takeBack(Change change) {
    const std::string before = shown();
    change();
    const std::string after = shown();
    ASSERT_NE(before, after);
    for (int i = 0; i < 2; ++i) {
      ASSERT_TRUE(undo());
      EXPECT_EQ(shown(), before);
      shown::checkAgreement(mModel);
      ASSERT_TRUE(redo());
      EXPECT_EQ(shown(), after);
      shown::checkAgreement(mModel);
    }
  }

  /// One that refers to a referrable object.
  common::Sdx referTo(const common::Referrable& object) { return common::Sdx::create(mModel, object); }
  variant::SystemConst constant(const char16_t* name) { return variant::SystemConst::create(mModel, name); }
  K7Q::Generic::SequenceIntf& elements() const { return mElements.get(); }

  K7Q::SequenceHandle mElements = Access<foundation::Package>(mPackage, "PackagedElement").sequence();
};

}  // namespace

TEST_F(Transactions, KeepWhatIsCommitted) {
  Transaction transaction(mModel);
  mPackage.set<"Name">(u"Q");
  EXPECT_TRUE(transaction.isOpen());
  transaction.commit();
  EXPECT_FALSE(transaction.isOpen());
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"Q"));
}

TEST_F(Transactions, TakeBackWhatIsNotCommitted) {
  mPackage.get<"PackagedElement">().add(variant::SystemConst::create(mModel, u"C"));
  const auto sdx = common::Sdx::create(mModel, mPackage);
  const std::string before = shown();
  {
    const Transaction transaction(mModel);
    mPackage.get<"PackagedElement">().add(common::Package::create(mModel, u"Inner"));
    mPackage.destroy();
    EXPECT_TRUE(sdx.get<"sdx">().isNull());
    EXPECT_EQ(objects(), 1U);
  }
  EXPECT_EQ(shown(), before);
  EXPECT_TRUE(mPackage.isValid());
  shown::checkAgreement(mModel);
}

TEST_F(Transactions, Nest) {
  Transaction outer(mModel);
  mPackage.set<"Name">(u"1");
  {
    Transaction inner(mModel);
    mPackage.set<"Name">(u"2");
    inner.commit();
  }
  {
    const Transaction inner(mModel);
    mPackage.set<"Name">(u"3");
  }
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"2"));
  outer.rollBack();
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"P"));
}

TEST_F(Transactions, RefuseToKeepAnOuterOneWhileAnInnerOneIsOpen) {
  Transaction outer(mModel);
  Transaction inner(mModel);
  EXPECT_EQ(refusalOf([&] { outer.commit(); }),
            "a transaction that was begun later is still open; end that one first");
  inner.commit();
  outer.commit();
}

TEST_F(Transactions, EndThoseInThemWhenTheyAreTakenBack) {
  Transaction outer(mModel);
  mPackage.set<"Name">(u"1");
  Transaction inner(mModel);
  mPackage.set<"Name">(u"2");
  outer.rollBack();
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"P"));
  EXPECT_FALSE(inner.isOpen());
  EXPECT_EQ(refusalOf([&] { inner.commit(); }), "the transaction has ended already; begin a new one");
  EXPECT_EQ(refusalOf([&] { outer.rollBack(); }), "the transaction has ended already; begin a new one");
}

TEST_F(Transactions, MayBeDestroyedInAnyOrder) {
  auto outer = std::make_unique<Transaction>(mModel);
  auto inner = std::make_unique<Transaction>(mModel);
  mPackage.set<"Name">(u"1");
  outer.reset();
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"P"));
  // Begun at the same depth, and not to be ended by the one that is over.
  Transaction other(mModel);
  Transaction inOther(mModel);
  mPackage.set<"Name">(u"2");
  inner.reset();
  EXPECT_TRUE(inOther.isOpen());
  inOther.commit();
  other.commit();
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"2"));
}

TEST_F(Transactions, AreOverWithTheirModel) {
  Transaction transaction(mModel);
  const auto inside = common::Package::create(mModel, u"Q");
  mPackage.destroy();
  mModel.getModelInterface()->close();
  EXPECT_FALSE(transaction.isOpen());
  EXPECT_FALSE(inside.isValid());
  EXPECT_FALSE(mPackage.isValid());
  expectNullReference([&] { transaction.commit(); });
  expectNullReference([&] { transaction.rollBack(); });
  expectNullReference([&] { const Transaction another(mModel); });
}

TEST_F(Transactions, OutliveEveryOtherHandleOnTheModel) {
  auto transaction = std::make_unique<Transaction>(mModel);
  mPackage.destroy();
  mPackage = {};
  mModel = {};
  transaction->rollBack();
}

TEST_F(Transactions, AreRefusedOnAFrozenModel) {
  const K7Q::Model frozen(mModel.getModelInterface(), mModel.frozen().getDeviant());
  EXPECT_THROW(Transaction{frozen}, K7Q::Exception);
  EXPECT_THROW(api::setHistoryLimit(frozen, 1), K7Q::Exception);
  EXPECT_THROW(api::undo(frozen), K7Q::Exception);
  EXPECT_THROW(api::redo(frozen), K7Q::Exception);
}

TEST_F(Transactions, KeepUndoAndTheHistoryOut) {
  api::setHistoryLimit(mModel, 5);
  const Transaction transaction(mModel);
  EXPECT_EQ(refusalOf([&] { api::undo(mModel); }),
            "cannot undo while a transaction of the model is open; commit it or roll it back first");
  EXPECT_EQ(refusalOf([&] { api::redo(mModel); }),
            "cannot redo while a transaction of the model is open; commit it or roll it back first");
  EXPECT_EQ(
      refusalOf([&] { api::setHistoryLimit(mModel, 0); }),
      "cannot change the length of the history while a transaction of the model is open; commit it or roll "
      "it back first");
}

TEST_F(Transactions, FreeWhatWasMadeInThem) {
  {
    const Transaction transaction(mModel);
    common::Package::create(mModel, u"Q");
  }
  // The number that the object had is free again, so that the next one is the second of the model.
  const auto next = common::Package::create(mModel, u"R");
  EXPECT_TRUE(api::objects(mModel)[1] == next);
}

TEST_F(History, TakesBackEachKindOfChange) {
  const auto first = constant(u"a");
  const auto second = constant(u"b");
  takeBack([&] { mPackage.set<"Name">(u"Q"); });
  takeBack([&] { mPackage.set<"category">(u"c"); });
  takeBack([&] { mPackage.unset<"category">(); });
  takeBack([&] { elements().generic_push_back({}, refOf(first)); });
  takeBack([&] { elements().generic_push_front({}, refOf(second)); });
  takeBack([&] { elements().generic_insert({}, 0, refOf(first)); });
  takeBack([&] { elements().generic_replace({}, 0, refOf(second)); });
  takeBack([&] { elements().generic_push_back({}, refOf(first)); });
  takeBack([&] { elements().generic_erase({}, 0); });
  takeBack([&] { elements().generic_clear({}); });
  takeBack([&] { referTo(first); });
  takeBack([&] { first.destroy(); });
}

TEST_F(History, BringsBackADestroyedTreeWithAllThatReferredToIt) {
  const auto inner = common::Package::create(mModel, u"Inner");
  const auto deep = constant(u"C");
  elements().generic_push_back({}, refOf(constant(u"before")));
  elements().generic_push_back({}, refOf(inner));
  elements().generic_push_back({}, refOf(constant(u"behind")));
  inner.get<"PackagedElement">().add(deep);
  const auto formula = variant::SystemConstDependentFormula::create(mModel, u"f");
  for (const char16_t* name : {u"1", u"2"}) formula.get<"SysConst">().add(constant(name));
  Access<variant::SystemConstDependentFormula>(formula, "SysConst")
      .sequence()
      .get()
      .generic_insert({}, 1, refOf(deep));
  const auto sdx = referTo(deep);
  const auto inside = referTo(inner);
  takeBack([&] { inner.destroy(); });
  EXPECT_FALSE(deep.isValid());
  undo();
  EXPECT_TRUE(deep.isValid());
  EXPECT_TRUE(sdx.get<"sdx">() == deep);
}

TEST_F(History, TakesBackWhatWasMadeAndDestroyedInOneBatch) {
  takeBack([&] {
    Transaction transaction(mModel);
    const auto made = constant(u"C");
    referTo(mPackage);
    elements().generic_push_back({}, refOf(made));
    made.destroy();
    mPackage.set<"Name">(u"Q");
    transaction.commit();
  });
}

TEST_F(History, CountsATransactionAsOne) {
  const std::size_t before = api::undoable(mModel);
  Transaction transaction(mModel);
  for (int i = 0; i < 5; ++i) constant(u"C");
  transaction.commit();
  EXPECT_EQ(api::undoable(mModel), before + 1);
  EXPECT_TRUE(undo());
  EXPECT_EQ(objects(), 1U);
}

TEST_F(History, ForgetsWhatCouldBeMadeAgainWithTheNextChange) {
  mPackage.set<"Name">(u"1");
  undo();
  EXPECT_EQ(api::redoable(mModel), 1U);
  mPackage.set<"Name">(u"1");
  EXPECT_EQ(api::redoable(mModel), 0U);
  EXPECT_FALSE(redo());
}

TEST_F(History, KeepsItThroughATransactionThatIsTakenBack) {
  mPackage.set<"Name">(u"1");
  undo();
  {
    const Transaction transaction(mModel);
    mPackage.set<"Name">(u"2");
  }
  EXPECT_TRUE(redo());
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"1"));
}

TEST_F(History, HasABound) {
  for (int i = 0; i < 25; ++i) mPackage.set<"Name">(K7Q::String::fromUtf8(std::to_string(i)));
  EXPECT_EQ(api::undoable(mModel), 10U);
  while (undo()) {
  }
  EXPECT_EQ(mPackage.get<"Name">(), K7Q::String(u"14"));
  EXPECT_EQ(api::redoable(mModel), 10U);
}

TEST_F(History, HasABoundThatHoldsWhenItWasMadeSmaller) {
  for (int i = 0; i < 10; ++i) mPackage.set<"Name">(K7Q::String::fromUtf8(std::to_string(i)));
  for (int i = 0; i < 5; ++i) undo();
  api::setHistoryLimit(mModel, 5);
  EXPECT_EQ(api::undoable(mModel), 5U);
  while (redo()) {
  }
  for (int i = 0; i < 10; ++i) mPackage.set<"Name">(K7Q::String::fromUtf8(std::to_string(i)));
  EXPECT_EQ(api::undoable(mModel), 5U);
  api::setHistoryLimit(mModel, 0);
  EXPECT_EQ(api::undoable(mModel) + api::redoable(mModel), 0U);
}

TEST_F(History, KeepsWhatFitsWhenTheBoundIsMadeLarger) {
  for (int i = 0; i < 15; ++i) mPackage.set<"Name">(K7Q::String::fromUtf8(std::to_string(i)));
  api::setHistoryLimit(mModel, 12);
  for (int i = 0; i < 5; ++i) mPackage.set<"Name">(u"x");
  EXPECT_EQ(api::undoable(mModel), 12U - 0U);
  undo();
  EXPECT_EQ(api::redoable(mModel), 1U);
}

TEST_F(History, RefusesABoundThatIsTooLarge) {
  EXPECT_EQ(refusalOf<K7Q::OutOfRange>([&] { api::setHistoryLimit(mModel, 1000001); }),
            "the length of a history: expected 0 to 1000000, got 1000001");
}

TEST_F(History, FreesWhatCannotComeBackAnyMore) {
  api::setHistoryLimit(mModel, 1);
  const auto gone = constant(u"C");
  gone.destroy();
  mPackage.set<"Name">(u"Q");
  // The number is free again.
  const auto next = constant(u"D");
  EXPECT_TRUE(api::objects(mModel)[1] == next);
}

// X is freed while steps that can be taken back still need the room that it leaves with what it refers to.
TEST_F(History, FindsItsRoomWhenAReferrerOfLongAgoIsFreed) {
  api::setHistoryLimit(mModel, 3);
  const auto caption = common::SdgCaption::create(mModel, u"C");
  std::vector<common::Sdg> referring;
  for (int i = 0; i < 3; ++i) {
    referring.push_back(common::Sdg::create(mModel));
    referring.back().set<"sdgCaptionRef">(caption);
  }
  referring[0].destroy();
  referring[1].unset<"sdgCaptionRef">();
  referring[2].unset<"sdgCaptionRef">();
  mPackage.set<"Name">(u"Q");
  while (undo()) {
  }
  shown::checkAgreement(mModel);
  EXPECT_EQ(api::referrers(caption).size(), 2U);
}

// Lists and referrers that a transaction brings stay when it is taken back, and must not stand where a value
// comes back.
TEST_F(History, FindsItsRoomBehindATransactionThatWasTakenBack) {
  for (const bool isUndone : {true, false}) {
    // A name and another value fill the room that an object has at first; a third makes more.
    for (int fill = 0; fill < 3; ++fill) {
      const auto object = common::Package::create(mModel, u"N");
      if (fill > 0) object.set<"desc">(documentation::MultiLanguageOverviewParagraph::create(mModel));
      if (fill > 1) object.set<"adminData">(common::AdminData::create(mModel));
      object.set<"category">(u"c");
      if (isUndone) {
        undo();
      } else {
        object.unset<"category">();
      }
      {
        const Transaction transaction(mModel);
        object.get<"PackagedElement">().add(constant(u"C"));
        object.get<"ReferenceBase">().add(common::ReferenceBase::create(mModel));
        referTo(object);
        referTo(object);
        referTo(object);
      }
      EXPECT_TRUE(isUndone ? redo() : undo());
      EXPECT_EQ(object.get<"category">(), K7Q::String(u"c"));
      shown::checkAgreement(mModel);
    }
  }
}

TEST_F(History, IsGoneWithTheModel) {
  mPackage.destroy();
  undo();
  mPackage.destroy();
  mModel.getModelInterface()->close();
  expectNullReference([&] { api::undo(mModel); });
  expectNullReference([&] { api::redo(mModel); });
  expectNullReference([&] { api::undoable(mModel); });
  expectNullReference([&] { api::redoable(mModel); });
  expectNullReference([&] { api::historyLimit(mModel); });
  expectNullReference([&] { api::setHistoryLimit(mModel, 1); });
}

TEST_F(History, TakesBackWithoutOverflowADeepTree) {
  constexpr int kLevels = 100000;
  {
    Transaction transaction(mModel);
    common::Package above = mPackage;
    for (int i = 0; i < kLevels; ++i) {
      const auto below = common::Package::create(mModel, u"p");
      above.get<"PackagedElement">().add(below);
      above = below;
    }
    transaction.commit();
  }
  mPackage.destroy();
  EXPECT_EQ(objects(), 0U);
  undo();
  EXPECT_EQ(objects(), kLevels + 1U);
  undo();
  EXPECT_EQ(objects(), 1U);
  redo();
  EXPECT_EQ(objects(), kLevels + 1U);
}
