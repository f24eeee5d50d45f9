// Removing or adding many elements at once is one change of the list. Listeners and undo see it as the single
// changes.

#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/words/WordList.h"
#include "tests/native/HistoryFixture.h"

namespace {

namespace api = Tarvelon::model;
namespace native = Tarvelon::metamodel::native;

class ListRows : public Transactions {
 protected:
  using Elements = std::vector<variant::SystemConst>;

  void fill(int count) {
    for (int number = 0; number < count; ++number) {
      mAll.push_back(variant::SystemConst::create(mModel, u"c"));
      mList.add(mAll.back());
    }
  }
  void hold(const Elements& elements) {
    for (const auto& each : elements) mPackage.get<"PackagedElement">().add(each);
  }
  Elements everyOther() const {
    Elements elements;
    for (std::size_t index = 0; index < mAll.size(); index += 2) elements.push_back(mAll[index]);
    return elements;
  }
  /// The list of another object, with the same elements.
  K7Q::SequenceHandle listOfOther(const Elements& elements) {
    const auto other = variant::SystemConstDependentFormula::create(mModel, u"o");
    for (const auto& each : elements) other.get<"SysConst">().add(each);
    return Access<variant::SystemConstDependentFormula>(other, "SysConst").sequence();
  }
  static void erase(K7Q::Generic::SequenceIntf& list, int begin, int end) {
    const auto first = list.generic_begin({});
    const auto last = list.generic_begin({});
    for (int index = 0; index < begin; ++index) first->next({});
    for (int index = 0; index < end; ++index) last->next({});
    list.generic_erase({}, first.get(), last.get());
  }
  void keepHistory() { api::setHistoryLimit(mModel, 10); }
  K7Q::Generic::SequenceIntf& sequence() const { return mSequence.get(); }
  /// The number of changes of the list during `change`.
  template <class Change>
  std::uint32_t changesIn(Change change) {
    const native::WordList& list = listOf(mFormula);
    const std::uint32_t before = list.changes();
    change();
    return list.changes() - before;
  }
  /// Makes the change, undoes and redoes it, and finally undoes it.
  template <class Change>
  void takeBack(Change change) {
    Transactions::takeBack(change);
    ASSERT_TRUE(api::undo(mModel));
  }

  variant::SystemConstDependentFormula mFormula = variant::SystemConstDependentFormula::create(mModel, u"f");
  decltype(mFormula.get<"SysConst">()) mList = mFormula.get<"SysConst">();
  K7Q::SequenceHandle mSequence =
      Access<variant::SystemConstDependentFormula>(mFormula, "SysConst").sequence();
  Elements mAll;

 private:
  static native::WordList& listOf(const K7Q::ObjectHandle& object) {
    auto& instance = *static_cast<native::Instance*>(
        static_cast<K7Q::NSInterface::ClassObjectIntf*>(object.getInterface()));
    const auto& properties = instance.cls().slotProperties;
    for (unsigned slot = 0; slot < properties.size(); ++slot) {
      if (properties[slot]->metaName() == "SysConst" && instance.has(slot)) return *instance.find(slot)->list;
    }
    throw std::logic_error("the list was never filled");
  }
};

}  // namespace

TEST_F(ListRows, ThatAreDestroyedChangeTheListOnce) {
  fill(1000);
  hold(everyOther());
  keepHistory();
  EXPECT_EQ(changesIn([&] { mPackage.destroy(); }), 1U);
  EXPECT_EQ(mList.size(), 500);
  EXPECT_EQ(changesIn([&] { api::undo(mModel); }), 1U);
  EXPECT_EQ(mList.size(), 1000);
  EXPECT_EQ(changesIn([&] { api::redo(mModel); }), 1U);
  EXPECT_EQ(mList.size(), 500);
}

TEST_F(ListRows, ThatAnAssignmentTakesOutOrPutsInChangeTheListOnce) {
  fill(1000);
  const K7Q::SequenceHandle all = listOfOther(mAll);
  const K7Q::SequenceHandle half = listOfOther(everyOther());
  EXPECT_EQ(changesIn([&] { sequence().specialized_assign(&half.get()); }), 1U);
  EXPECT_EQ(mList.size(), 500);
  EXPECT_EQ(changesIn([&] { sequence().specialized_assign(&all.get()); }), 1U);
  EXPECT_TRUE(sequence().specialized_equal(&all.get()));
  shown::checkAgreement(mModel);
}

TEST_F(ListRows, ThatAreErasedInTheMiddleMoveTheRestAFewTimes) {
  fill(1000);
  EXPECT_LT(changesIn([&] { erase(sequence(), 250, 750); }), 10U) << "without a journal";
  EXPECT_EQ(mList.size(), 500);
  EXPECT_TRUE(mList.at(249) == mAll[249]);
  EXPECT_TRUE(mList.at(250) == mAll[750]);
  shown::checkAgreement(mModel);
  keepHistory();
  EXPECT_EQ(changesIn([&] { erase(sequence(), 100, 400); }), 1U) << "with a journal";
  EXPECT_EQ(changesIn([&] { api::undo(mModel); }), 1U);
  EXPECT_TRUE(mList.at(100) == mAll[100]);
}

TEST_F(ListRows, ComeBackToTheirPlaces) {
  fill(150);
  std::mt19937 random(7);
  keepHistory();
  for (unsigned round = 0; round < 6; ++round) {
    // Free room at the front and at the back of the list.
    for (unsigned popped = 0; popped < round % 3; ++popped) sequence().generic_pop_front({});
    Elements some;
    for (const auto& each : mAll) {
      if (random() % 4 <= round % 4) some.push_back(each);
    }
    const K7Q::SequenceHandle others = listOfOther(some);
    takeBack([&] { sequence().specialized_assign(&others.get()); });
    mPackage = common::Package::create(mModel, u"P");
    for (const auto& each : some) mPackage.get<"PackagedElement">().add(each);
    takeBack([&] { mPackage.destroy(); });
  }
}

TEST_F(ListRows, OfElementsThatAreHeldComeBackToTheirPlaces) {
  fill(200);
  hold(mAll);
  keepHistory();
  const auto held = Access<foundation::Package>(mPackage, "PackagedElement").sequence();
  takeBack([&] { erase(held.get(), 40, 160); });
  const K7Q::SequenceHandle some = listOfOther(everyOther());
  takeBack([&] { held.get().specialized_assign(&some.get()); });
}

TEST_F(ListRows, OfTextsComeBackToTheirPlaces) {
  const auto value = variant::SystemConstValue::create(mModel);
  const auto texts = Access<variant::SystemConstValue>(value, "ValueVariationPoint").sequence();
  for (int number = 0; number < 200; ++number) {
    // Some texts occur twice.
    const std::string digits = std::to_string(number % 150);
    value.get<"ValueVariationPoint">().add(K7Q::String(std::u16string(digits.begin(), digits.end())));
  }
  keepHistory();
  takeBack([&] { erase(texts.get(), 40, 160); });
  api::setHistoryLimit(mModel, 0);
  erase(texts.get(), 40, 160);
  EXPECT_EQ(texts.get().generic_size({}), 80);
}

TEST_F(ListRows, AreTakenBackWithATransaction) {
  fill(200);
  hold(everyOther());
  const std::string before = shown();
  {
    const api::Transaction transaction(mModel);
    erase(sequence(), 30, 120);
    mPackage.destroy();
  }
  EXPECT_EQ(shown(), before);
  shown::checkAgreement(mModel);
}

TEST_F(ListRows, AreToldAsSingleChanges) {
  fill(100);
  hold(everyOther());
  keepHistory();
  std::vector<std::string> told;
  api::listen(mFormula, [&told](std::span<const api::Change> changes) {
    for (const api::Change& each : changes)
      told.push_back((each.kind == api::Change::Kind::Removed ? "-" : "+") + std::to_string(each.index));
  });
  std::vector<std::string> removed;
  for (int index = 98; index >= 0; index -= 2) removed.push_back("-" + std::to_string(index));
  mPackage.destroy();
  EXPECT_EQ(std::exchange(told, {}), removed);
  api::undo(mModel);
  std::vector<std::string> added;
  for (int index = 0; index < 100; index += 2) added.push_back("+" + std::to_string(index));
  EXPECT_EQ(std::exchange(told, {}), added);
  api::redo(mModel);
  EXPECT_EQ(told, removed);
}
