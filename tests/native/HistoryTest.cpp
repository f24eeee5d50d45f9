// Undo and redo.

#include <vector>

#include "tests/native/HistoryFixture.h"

namespace {

namespace api = Tarvelon::model;
using api::Transaction;

class History : public Transactions {
 protected:
  History() { api::setHistoryLimit(mModel, 10); }
  bool undo() { return api::undo(mModel); }
  bool redo() { return api::redo(mModel); }

  /// An object that refers to a referrable object.
  common::Sdx referTo(const common::Referrable& object) { return common::Sdx::create(mModel, object); }
  variant::SystemConst constant(const char16_t* name) { return variant::SystemConst::create(mModel, name); }
  K7Q::Generic::SequenceIntf& elements() const { return mElements.get(); }

  K7Q::SequenceHandle mElements = Access<foundation::Package>(mPackage, "PackagedElement").sequence();
};

}  // namespace

TEST_F(History, TakesBackEachKindOfChange) {
  const auto first = constant(u"a");
  const auto second = constant(u"b");
  const auto third = constant(u"c");
  takeBack([&] { mPackage.set<"Name">(u"Q"); });
  takeBack([&] { mPackage.set<"category">(u"c"); });
  takeBack([&] { mPackage.unset<"category">(); });
  takeBack([&] { elements().generic_push_back({}, refOf(first)); });
  takeBack([&] { elements().generic_push_front({}, refOf(second)); });
  takeBack([&] { elements().generic_insert({}, 0, refOf(first)); });
  takeBack([&] { elements().generic_replace({}, 0, refOf(second)); });
  takeBack([&] { elements().generic_erase({}, 0); });
  takeBack([&] { elements().generic_replace({}, 0, refOf(third)); });
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
            "limit of the history: expected 0 to 1000000, got 1000001");
}

TEST_F(History, FreesWhatCannotComeBackAnyMore) {
  api::setHistoryLimit(mModel, 1);
  const auto gone = constant(u"C");
  gone.destroy();
  mPackage.set<"Name">(u"Q");
  // The number of the destroyed object is free again.
  const auto next = constant(u"D");
  EXPECT_TRUE(api::objects(mModel)[1] == next);
}

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

TEST_F(History, FindsItsRoomBehindATransactionThatWasTakenBack) {
  for (const bool isUndone : {true, false}) {
    // Two values fit into the room that an object has at first; a third value needs more.
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

TEST_F(History, BringsBackEveryPlaceOfManyInOneList) {
  constexpr std::size_t kMany = 2000;
  const auto formula = variant::SystemConstDependentFormula::create(mModel, u"f");
  const auto sequence = Access<variant::SystemConstDependentFormula>(formula, "SysConst").sequence();
  for (std::size_t i = 0; i < kMany; ++i) {
    const auto each = constant(u"c");
    if (i % 3 != 0) elements().generic_push_front({}, refOf(each));
    sequence.get().generic_insert({}, static_cast<int>(i / 2), refOf(each));
  }
  const auto placesIn = [&] {
    std::vector<const void*> all;
    for (int i = 0; i < sequence.get().generic_size({}); ++i)
      all.push_back(sequence.get().generic_at({}, i).value());
    return all;
  };
  const auto before = placesIn();
  mPackage.destroy();
  EXPECT_EQ(placesIn().size(), (kMany + 2) / 3);
  undo();
  EXPECT_EQ(placesIn(), before);
}
