// Transactions: all changes are made, or none.

#include <memory>

#include "tests/native/HistoryFixture.h"

namespace {

namespace api = Tarvelon::model;
using api::Transaction;

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
  EXPECT_EQ(refusalOf([&] { outer.commit(); }), "a nested transaction is still open; end it first");
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
  // A new transaction at the same depth. The end of the former inner transaction must not end the new one.
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
  EXPECT_EQ(refusalOf([&] { api::setHistoryLimit(mModel, 0); }),
            "cannot change the limit of the history while a transaction of the model is open; commit it or "
            "roll it back first");
}

TEST_F(Transactions, FreeWhatWasMadeInThem) {
  {
    const Transaction transaction(mModel);
    common::Package::create(mModel, u"Q");
  }
  // The number of the rolled back object is free again, so the next object is the model's second one.
  const auto next = common::Package::create(mModel, u"R");
  EXPECT_TRUE(api::objects(mModel)[1] == next);
}
