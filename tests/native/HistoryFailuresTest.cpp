// Each allocation of a change fails in turn, in a model with a journal. Afterwards the model must be either
// unchanged or completely changed, and it must remain usable.

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

#include "tarvelon/platform/k7q/sequences/Rewritable.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tests/native/Shown.h"
#include "tests/native/Support.h"
#include "tests/support/FailingNew.h"

namespace {

namespace api = Tarvelon::model;

enum class Journal { Transaction, History, Listener };

/// Objects with many kinds of links, in a model that has a journal for one of the three reasons.
class Scene {
 public:
  explicit Scene(Journal why) {
    mRoot.get<"PackagedElement">().add(mPackage);
    mPackage.get<"PackagedElement">().add(mConstant);
    for (const auto& each : {mOther, mThird}) mPackage.get<"PackagedElement">().add(each);
    mRoot.get<"PackagedElement">().add(mSecond);
    mFormula.get<"SysConst">().add(mConstant);
    mFormula.get<"SysConst">().add(mOther);
    Access<behavior::Event>(mEvent, "StartOnEvent").set(mRunnable);
    mData.set<"sdgCaptionRef">(mCaption);
    for (int count = 0; count < 3; ++count)
      mEvents.get().generic_push_back({}, refOf(behavior::InitEvent::create(mModel)));
    switch (why) {
      case Journal::Transaction:
        mTransaction = std::make_unique<api::Transaction>(mModel);
        break;
      case Journal::History:
        api::setHistoryLimit(mModel, 2);
        break;
      case Journal::Listener:
        api::listen(mModel, [this](std::span<const api::Change> changes) { mTold += changes.size(); });
        api::listen(mPackage, [this](std::span<const api::Change> changes) { mTold += changes.size(); });
        break;
    }
  }
  std::string shown() const { return shown::everything(mModel); }
  K7Q::Generic::SequenceIntf& constants() const { return mConstants.get(); }
  K7Q::Generic::SequenceIntf& events() const { return mEvents.get(); }

  K7Q::Model mModel = K7Q::Model::create();
  common::Package mRoot = common::Package::create(mModel, u"R");
  common::Package mPackage = common::Package::create(mModel, u"P");
  common::Package mSecond = common::Package::create(mModel, u"Q");
  variant::SystemConst mConstant = variant::SystemConst::create(mModel, u"C");
  variant::SystemConst mOther = variant::SystemConst::create(mModel, u"D");
  variant::SystemConst mThird = variant::SystemConst::create(mModel, u"E");
  variant::SystemConstDependentFormula mFormula = variant::SystemConstDependentFormula::create(mModel, u"f");
  common::Sdx mSdx = common::Sdx::create(mModel, mConstant);
  common::Sdx mFree = common::Sdx::create(mModel);
  behavior::Runnable mRunnable = behavior::Runnable::create(mModel);
  behavior::Runnable mIdle = behavior::Runnable::create(mModel);
  common::AdminData mAdmin = common::AdminData::create(mModel);
  common::Sdg mData = common::Sdg::create(mModel);
  common::SdgCaption mCaption = common::SdgCaption::create(mModel, u"caption");
  behavior::InitEvent mEvent = behavior::InitEvent::create(mModel);
  K7Q::SequenceHandle mConstants =
      Access<variant::SystemConstDependentFormula>(mFormula, "SysConst").sequence();
  K7Q::SequenceHandle mEvents = Access<behavior::Runnable>(mIdle, "Events").sequence();
  std::unique_ptr<api::Transaction> mTransaction;
  std::size_t mTold = 0;
};

using Change = std::function<void(Scene&)>;

struct Named {
  const char* name;
  Change change;
};

const std::vector<Named> kChanges = {
    {"set a text", [](Scene& s) { s.mPackage.set<"category">(u"a category of some length"); }},
    {"unset a text", [](Scene& s) { s.mPackage.set<"Name">(u""); }},
    {"set a reference", [](Scene& s) { s.mFree.set<"sdx">(s.mConstant); }},
    {"set another reference", [](Scene& s) { s.mSdx.set<"sdx">(s.mOther); }},
    {"unset a reference", [](Scene& s) { s.mData.unset<"sdgCaptionRef">(); }},
    {"hold", [](Scene& s) { s.mPackage.set<"adminData">(s.mAdmin); }},
    {"set an opposite", [](Scene& s) { Access<behavior::Event>(s.mEvent, "StartOnEvent").set(s.mIdle); }},
    {"unset an opposite", [](Scene& s) { Access<behavior::Event>(s.mEvent, "StartOnEvent").unset(); }},
    {"insert an opposite", [](Scene& s) { s.events().generic_push_back({}, refOf(s.mEvent)); }},
    {"insert", [](Scene& s) { s.constants().generic_insert({}, 1, refOf(s.mThird)); }},
    {"insert by iterator",
     [](Scene& s) {
       const auto place = s.constants().generic_begin({});
       s.constants().generic_insert({}, place.get(), refOf(s.mThird));
     }},
    {"take from another owner", [](Scene& s) { s.mSecond.get<"PackagedElement">().add(s.mConstant); }},
    {"replace", [](Scene& s) { s.constants().generic_replace({}, 0, refOf(s.mThird)); }},
    {"replace by one that is there", [](Scene& s) { s.constants().generic_replace({}, 0, refOf(s.mOther)); }},
    {"replace by the opposite of another",
     [](Scene& s) { s.events().generic_replace({}, 0, refOf(s.mEvent)); }},
    {"clear opposites", [](Scene& s) { s.events().generic_clear({}); }},
    {"change everything",
     [](Scene& s) {
       const std::vector refs{refOf(s.mThird), refOf(s.mOther), refOf(s.mConstant)};
       dynamic_cast<K7Q::RewritableIntf&>(s.constants()).rewrite({}, refs);
     }},
    {"erase", [](Scene& s) { s.constants().generic_erase({}, 0); }},
    {"clear", [](Scene& s) { s.constants().generic_clear({}); }},
    {"construct", [](Scene& s) { variant::SystemConst::create(s.mModel, u"a name of some length"); }},
    {"construct with a reference", [](Scene& s) { common::Sdx::create(s.mModel, s.mThird); }},
    {"destroy", [](Scene& s) { s.mConstant.destroy(); }},
    {"destroy a tree", [](Scene& s) { s.mRoot.destroy(); }},
    {"destroy an opposite", [](Scene& s) { s.mRunnable.destroy(); }},
    {"do several things at once",
     [](Scene& s) {
       api::Transaction transaction(s.mModel);
       s.mSdx.set<"sdx">(s.mOther);
       s.mConstant.destroy();
       variant::SystemConst::create(s.mModel, u"new");
       transaction.commit();
     }},
};

const auto kArms = {+[](std::size_t n) { failing::gCountdown = n; },
                    +[](std::size_t n) { utFailAllocation(n); }};
/// More than the number of allocations of any of these changes.
constexpr std::size_t kMost = 40;

/// Runs a change with its n-th allocation failing. Returns whether it has failed.
bool hasFailed(void (*arm)(std::size_t), std::size_t n, const std::function<void()>& change) {
  arm(n);
  try {
    change();
  } catch (const std::bad_alloc&) {
    arm(0);
    return true;
  }
  arm(0);
  return false;
}

/// Calls check(scene, hasFailed) after each attempt. `prepare` runs without failures.
void eachFailure(Journal why, const Change& prepare, const Change& change,
                 const std::function<void(Scene&, bool)>& check) {
  int failures = 0;
  for (const auto arm : kArms) {
    for (std::size_t n = 1; n <= kMost; ++n) {
      Scene scene(why);
      prepare(scene);
      const bool failed = hasFailed(arm, n, [&] { change(scene); });
      failures += failed ? 1 : 0;
      check(scene, failed);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
  EXPECT_GT(failures, 0) << "the change allocates nothing";
}

const Change kNothing = [](Scene&) {};

class ChangeFailures : public testing::TestWithParam<Journal> {};
class HistoryFailures : public testing::Test {};

}  // namespace

TEST_P(ChangeFailures, LeaveTheModelAsItWas) {
  for (const auto& [name, change] : kChanges) {
    SCOPED_TRACE(name);
    Scene whole(GetParam());
    const std::string before = whole.shown();
    change(whole);
    const std::string after = whole.shown();
    ASSERT_NE(before, after);
    eachFailure(GetParam(), kNothing, change, [&, &change = change](Scene& scene, bool failed) {
      ASSERT_EQ(scene.shown(), failed ? before : after);
      ASSERT_NO_FATAL_FAILURE(shown::checkAgreement(scene.mModel));
      if (failed) change(scene);
      ASSERT_EQ(scene.shown(), after);
      if (scene.mTransaction) scene.mTransaction->rollBack();
      while (api::undo(scene.mModel)) {
      }
      if (GetParam() != Journal::Listener) {
        ASSERT_EQ(scene.shown(), before);
      }
    });
  }
}

INSTANTIATE_TEST_SUITE_P(Journals, ChangeFailures,
                         testing::Values(Journal::Transaction, Journal::History, Journal::Listener),
                         [](const auto& mode) {
                           return mode.param == Journal::Transaction ? "InATransaction"
                                  : mode.param == Journal::History   ? "WithHistory"
                                                                     : "WithAListener";
                         });

TEST_F(HistoryFailures, DoNotTouchWhatIsTakenBack) {
  for (const auto& [name, change] : kChanges) {
    SCOPED_TRACE(name);
    for (const auto arm : kArms) {
      for (std::size_t n = 1; n <= 6; ++n) {
        Scene scene(Journal::History);
        std::size_t told = 0;
        api::listen(scene.mModel, [&told](std::span<const api::Change> changes) { told += changes.size(); });
        const std::string before = scene.shown();
        change(scene);
        const std::string after = scene.shown();
        ASSERT_FALSE(hasFailed(arm, n, [&] { api::undo(scene.mModel); }));
        while (api::undo(scene.mModel)) {
        }
        ASSERT_EQ(scene.shown(), before);
        ASSERT_FALSE(hasFailed(arm, n, [&] { api::redo(scene.mModel); }));
        while (api::redo(scene.mModel)) {
        }
        ASSERT_EQ(scene.shown(), after);
      }
    }
  }
}

TEST_F(HistoryFailures, DoNotTouchTheEndOfATransaction) {
  for (const auto& [name, change] : kChanges) {
    SCOPED_TRACE(name);
    for (const auto arm : kArms) {
      for (std::size_t n = 1; n <= 4; ++n) {
        Scene scene(Journal::Transaction);
        const std::string before = scene.shown();
        change(scene);
        ASSERT_FALSE(hasFailed(arm, n, [&] { scene.mTransaction->rollBack(); }));
        ASSERT_EQ(scene.shown(), before);
        Scene other(Journal::Transaction);
        change(other);
        const std::string after = other.shown();
        ASSERT_FALSE(hasFailed(arm, n, [&] { other.mTransaction->commit(); }));
        ASSERT_EQ(other.shown(), after);
      }
    }
  }
}

TEST_F(HistoryFailures, InABeginLeaveNoTransactionOpen) {
  eachFailure(
      Journal::History, kNothing,
      [](Scene& s) { s.mTransaction = std::make_unique<api::Transaction>(s.mModel); },
      [](Scene& scene, bool failed) {
        ASSERT_EQ(scene.mTransaction == nullptr, failed);
        if (failed) {
          ASSERT_NO_THROW(api::undo(scene.mModel));
        }
      });
}

TEST_F(HistoryFailures, InABoundLeaveTheHistoryAsItWas) {
  const Change prepare = [](Scene& s) {
    s.mPackage.set<"Name">(u"1");
    s.mPackage.set<"Name">(u"2");
    api::undo(s.mModel);
  };
  eachFailure(
      Journal::History, prepare, [](Scene& s) { api::setHistoryLimit(s.mModel, 100); },
      [](Scene& scene, bool failed) {
        ASSERT_EQ(api::historyLimit(scene.mModel), failed ? 2U : 100U);
        ASSERT_TRUE(api::redo(scene.mModel));
        ASSERT_TRUE(api::undo(scene.mModel));
        ASSERT_TRUE(api::undo(scene.mModel));
      });
}

// The history is full, so each further change removes the oldest one. The kept changes need no new memory.
TEST_F(HistoryFailures, DoNotTouchWhatAFullHistoryKeeps) {
  constexpr std::size_t kLimit = 9;
  for (const auto arm : kArms) {
    for (std::size_t n = 1; n <= 4; ++n) {
      Scene scene(Journal::Transaction);
      scene.mTransaction.reset();
      api::setHistoryLimit(scene.mModel, kLimit);
      for (std::size_t turn = 0; turn < 3 * kLimit; ++turn) {
        const K7Q::String name(std::u16string(1 + turn, u'n'));
        const auto change = [&] { scene.mPackage.set<"Name">(name); };
        if (hasFailed(arm, n, change)) change();
        ASSERT_EQ(scene.mPackage.get<"Name">(), name);
      }
      ASSERT_EQ(api::undoable(scene.mModel), kLimit);
      for (std::size_t turn = 0; turn < kLimit; ++turn)
        ASSERT_FALSE(hasFailed(arm, n, [&] { api::undo(scene.mModel); }));
      ASSERT_EQ(api::redoable(scene.mModel), kLimit);
      for (std::size_t turn = 0; turn < kLimit; ++turn)
        ASSERT_FALSE(hasFailed(arm, n, [&] { api::redo(scene.mModel); }));
      ASSERT_EQ(api::undoable(scene.mModel), kLimit);
    }
  }
}

TEST_F(HistoryFailures, InListeningLeaveNoListener) {
  const auto told = std::make_shared<int>();
  eachFailure(
      Journal::Transaction, [](Scene& s) { s.mTransaction.reset(); },
      [told](Scene& s) { api::listen(s.mPackage, [told](std::span<const api::Change>) { ++*told; }); },
      [told](Scene& scene, bool failed) {
        const int before = *told;
        scene.mPackage.set<"Name">(u"1");
        ASSERT_EQ(*told - before, failed ? 0 : 1);
      });
}

TEST_F(HistoryFailures, InTellingAreToldAsNoChangesAtAll) {
  for (const auto arm : kArms) {
    int lost = 0;
    for (std::size_t n = 1; n <= kMost; ++n) {
      Scene scene(Journal::Transaction);
      scene.mTransaction.reset();
      std::vector<std::size_t> told;
      told.reserve(2);
      api::listen(scene.mModel,
                  [&told](std::span<const api::Change> changes) { told.push_back(changes.size()); });
      api::listen(scene.mConstant,
                  [&told](std::span<const api::Change> changes) { told.push_back(changes.size()); });
      const bool failed = hasFailed(arm, n, [&] { scene.mConstant.set<"category">(u"1"); });
      ASSERT_EQ(told.size(), failed ? 0U : 2U) << n;
      lost += static_cast<int>(std::ranges::count(told, 0U));
    }
    EXPECT_EQ(lost > 0, arm == *kArms.begin()) << "what is told comes from operator new";
  }
}

TEST_F(HistoryFailures, InASearchLeaveItToTheNext) {
  const std::vector<Named> searches = {
      {"find", [](Scene& s) { ASSERT_TRUE(api::find(s.mModel, u"/R/P/C") == s.mConstant); }},
      {"find all", [](Scene& s) { ASSERT_EQ(api::findAll(s.mModel, u"/R/P").size(), 1U); }},
      {"instances",
       [](Scene& s) { ASSERT_EQ(api::instances(s.mModel, table<variant::SystemConst>()).size(), 3U); }},
      {"objects", [](Scene& s) { ASSERT_EQ(api::objects(s.mModel).size(), 18U); }},
      {"referrers", [](Scene& s) { ASSERT_EQ(api::referrers(s.mConstant).size(), 2U); }},
      {"qualified name", [](Scene& s) { ASSERT_EQ(api::qualifiedName(s.mConstant), u"/R/P/C"); }},
  };
  for (const auto& [name, search] : searches) {
    SCOPED_TRACE(name);
    eachFailure(Journal::History, kNothing, search, [&search = search](Scene& scene, bool) {
      search(scene);
      scene.mPackage.set<"Name">(u"X");
      ASSERT_TRUE(api::find(scene.mModel, u"/R/X/C") == scene.mConstant);
    });
  }
}
