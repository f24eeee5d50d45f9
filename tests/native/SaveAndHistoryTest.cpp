// The first save gives ids to objects, which cannot be undone. The ids must not use the memory that undo
// needs.

#include <vector>

#include "tarvelon/platform/files/Files.h"
#include "tests/native/HistoryFixture.h"

namespace {

namespace api = Tarvelon::model;

/// A change that removes values from objects.
struct Change {
  const char* name;
  void (*make)(std::vector<common::ModeDeclaration>& modes, std::vector<common::Sdg>& referring);
};

const Change kChanges[] = {
    {"unset",
     [](auto& modes, auto&) {
       for (auto& each : modes) each.template unset<"Value">();
     }},
    {"unset references",
     [](auto&, auto& referring) {
       for (auto& each : referring) each.template unset<"sdgCaptionRef">();
     }},
    {"destroy what others refer to",
     [](auto&, auto& referring) {
       for (auto& each : referring) common::SdgCaption::cast(each.template get<"sdgCaptionRef">()).destroy();
     }},
};

/// Objects whose values use up the objects' room.
class SaveAndHistory : public testing::TestWithParam<Change> {
 protected:
  SaveAndHistory() {
    for (int count = 0; count < 20; ++count) {
      mModes.push_back(common::ModeDeclaration::create(mModel, u"M"));
      mModes.back().set<"Value">(count);
      mReferring.push_back(common::Sdg::create(mModel, u"g"));
      mReferring.back().set<"sdgCaptionRef">(common::SdgCaption::create(mModel, u"c"));
    }
    mBefore = shown::everything(mModel);
  }
  void change() { GetParam().make(mModes, mReferring); }
  void save() const { Tarvelon::files::saveText(mModel); }

  K7Q::Model mModel = K7Q::Model::create();
  std::vector<common::ModeDeclaration> mModes;
  std::vector<common::Sdg> mReferring;
  std::string mBefore;
};

}  // namespace

TEST_P(SaveAndHistory, UndoFindsItsRoomBehindAFirstSave) {
  api::setHistoryLimit(mModel, 1000);
  change();
  const std::string after = shown::everything(mModel);
  save();
  while (api::undo(mModel)) {
  }
  EXPECT_EQ(shown::everything(mModel), mBefore);
  while (api::redo(mModel)) {
  }
  EXPECT_EQ(shown::everything(mModel), after);
}

TEST_P(SaveAndHistory, RollBackFindsItsRoomBehindAFirstSave) {
  {
    const api::Transaction transaction(mModel);
    change();
    save();
  }
  EXPECT_EQ(shown::everything(mModel), mBefore);
}

TEST_P(SaveAndHistory, RedoFindsItsRoomBehindAFirstSave) {
  api::setHistoryLimit(mModel, 1000);
  const auto extra = common::ModeDeclaration::create(mModel, u"M");
  extra.set<"Value">(1);
  const std::string after = shown::everything(mModel);
  for (int count = 0; count < 2; ++count) api::undo(mModel);
  save();
  while (api::redo(mModel)) {
  }
  EXPECT_EQ(shown::everything(mModel), after);
}

INSTANTIATE_TEST_SUITE_P(Changes, SaveAndHistory, testing::ValuesIn(kChanges), [](const auto& change) {
  std::string name = change.param.name;
  std::erase(name, ' ');
  return name;
});
