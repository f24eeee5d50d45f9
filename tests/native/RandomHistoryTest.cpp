// Random editing with transactions, undo, redo and saving. Each state after undo or redo must be equal to the
// state before, and each saved state must load. TARVELON_RANDOM_STEPS sets the number of steps.

#include <cstdlib>
#include <memory>
#include <random>
#include <vector>

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tests/native/Shown.h"
#include "tests/native/Support.h"

namespace {

namespace api = Tarvelon::model;

class RandomHistory : public testing::TestWithParam<unsigned> {
 protected:
  static constexpr std::size_t kMostObjects = 24;
  static constexpr std::size_t kLimit = 7;

  static int steps() {
    const char* given = std::getenv("TARVELON_RANDOM_STEPS");
    return given ? std::atoi(given) : 600;
  }
  std::size_t pick(std::size_t count) { return mRandom() % count; }
  bool isOneIn(unsigned count) { return mRandom() % count == 0; }

  template <class X>
  X any() {
    const auto all = api::instances(mModel, table<X>());
    return all.empty() ? X() : X::cast(all[pick(all.size())]);
  }
  K7Q::String name() { return {std::u16string(1 + pick(3), static_cast<char16_t>(u'a' + pick(3)))}; }

  void create() {
    if (api::objects(mModel).size() >= kMostObjects) return;
    switch (pick(7)) {
      case 6:
        common::SdgCaption::create(mModel, name());
        break;
      case 0:
        common::Package::create(mModel, name());
        break;
      case 1:
        variant::PredefinedVariant::create(mModel, name());
        break;
      case 2:
        behavior::Runnable::create(mModel, name(), name());
        break;
      case 3:
        behavior::InitEvent::create(mModel, name());
        break;
      case 4: {
        const auto target = any<variant::PredefinedVariant>();
        if (target.isNull()) {
          common::Sdx::create(mModel);
        } else {
          common::Sdx::create(mModel, target);
        }
        break;
      }
      default:
        common::Sdg::create(mModel, name());
    }
  }

  /// Adds, replaces or removes an element of a sequence.
  void editSequence(const K7Q::SequenceHandle& handle, const K7Q::ClassObject& element) {
    auto& sequence = handle.get();
    const int size = sequence.generic_size({});
    const std::size_t how = pick(5);
    if (how == 0 && size > 0) {
      sequence.generic_erase({}, static_cast<int>(pick(static_cast<std::size_t>(size))));
    } else if (how == 1 && size > 0) {
      sequence.generic_replace({}, static_cast<int>(pick(static_cast<std::size_t>(size))), refOf(element));
    } else if (how == 2 && isOneIn(4)) {
      sequence.generic_clear({});
    } else {
      sequence.generic_insert({}, static_cast<int>(pick(static_cast<std::size_t>(size) + 1)), refOf(element));
    }
  }

  void move() {
    const auto package = any<common::Package>();
    const auto element = any<foundation::PackageableElement>();
    if (package.isNull() || element.isNull()) return;
    editSequence(Access<foundation::Package>(package, "PackagedElement").sequence(), element);
  }
  void include() {
    const auto from = any<variant::PredefinedVariant>();
    if (from.isNull()) return;
    editSequence(Access<variant::PredefinedVariant>(from, "IncludedVariant").sequence(),
                 any<variant::PredefinedVariant>());
  }
  void nest() {
    const auto outer = any<common::Sdg>();
    const auto inner = any<common::SdgContents>();
    if (!outer.isNull() && !inner.isNull())
      editSequence(Access<common::Sdg>(outer, "SdgContents").sequence(), inner);
  }
  void start() {
    const auto event = any<behavior::InitEvent>();
    const auto runnable = any<behavior::Runnable>();
    if (event.isNull() || runnable.isNull()) return;
    const Access<behavior::Event> starts(event, "StartOnEvent");
    switch (pick(3)) {
      case 0:
        starts.set(runnable);
        break;
      case 1:
        starts.unset();
        break;
      default:
        editSequence(Access<behavior::Runnable>(runnable, "Events").sequence(), event);
    }
  }
  void refer() {
    const auto sdx = any<common::Sdx>();
    const auto target = any<common::Referrable>();
    if (!sdx.isNull() && !target.isNull()) sdx.set<"sdx">(target);
    const auto data = any<common::Sdg>();
    const auto caption = any<common::SdgCaption>();
    if (data.isNull()) return;
    if (caption.isNull() || isOneIn(3)) {
      data.unset<"sdgCaptionRef">();
    } else {
      data.set<"sdgCaptionRef">(caption);
      if (isOneIn(4)) data.set<"sdgCaption">(caption);
    }
  }
  void rename() {
    const auto named = any<foundation::NamedElement>();
    // Objects inside an object without a name are found as if they were in its owner.
    if (!named.isNull())
      Access<foundation::NamedElement>(named, "Name").set(isOneIn(4) ? K7Q::String() : name());
    const auto package = any<common::Package>();
    if (!package.isNull() && isOneIn(2)) package.set<"category">(isOneIn(2) ? K7Q::String() : name());
  }
  void destroy() {
    const auto objects = api::objects(mModel);
    if (!objects.empty()) objects[pick(objects.size())].getClassObject()->destroy({});
  }

  void edit() {
    try {
      switch (pick(10)) {
        case 0:
        case 1:
          create();
          break;
        case 2:
        case 3:
          move();
          break;
        case 4:
          include();
          break;
        case 5:
          nest();
          break;
        case 6:
          start();
          break;
        case 7:
          refer();
          break;
        case 8:
          rename();
          break;
        default:
          destroy();
      }
    } catch (const K7Q::WrongValue&) {
      // The object would have contained itself.
    }
  }

  /// Saving gives ids to the objects that have none.
  void save() {
    const std::string text = Tarvelon::files::saveText(mModel);
    ASSERT_EQ(Tarvelon::files::saveText(Tarvelon::files::loadText(text).model), text);
  }

  void editInTransaction() {
    api::Transaction transaction(mModel);
    for (std::size_t i = pick(6); i-- > 0;) {
      if (isOneIn(5)) {
        const std::string before = shown::everything(mModel);
        {
          const api::Transaction inner(mModel);
          for (std::size_t j = pick(5); j-- > 0;) edit();
        }
        ASSERT_EQ(shown::everything(mModel), before);
      } else {
        edit();
      }
      if (isOneIn(6)) {
        ASSERT_NO_FATAL_FAILURE(save());
      }
    }
    if (isOneIn(2)) transaction.commit();
  }

  void undo() {
    const std::size_t undoable = api::undoable(mModel);
    ASSERT_EQ(undoable, mAt);
    ASSERT_EQ(api::undo(mModel), mAt > 0);
    if (mAt > 0) --mAt;
  }
  void redo() {
    ASSERT_EQ(api::redoable(mModel), mStates.size() - 1 - mAt);
    ASSERT_EQ(api::redo(mModel), mAt + 1 < mStates.size());
    if (mAt + 1 < mStates.size()) ++mAt;
  }
  /// Called by the listener at the end of a batch.
  void note() {
    mStates.resize(mAt + 1);
    mStates.push_back(shown::everything(mModel));
    ++mAt;
    if (mAt <= kLimit) return;
    mStates.erase(mStates.begin());
    --mAt;
  }

  void step() {
    if (isOneIn(8)) api::find(mModel, u"/a");
    if (isOneIn(12)) {
      ASSERT_NO_FATAL_FAILURE(save());
    }
    switch (pick(8)) {
      case 0:
        undo();
        return;
      case 1:
        redo();
        return;
      default:
        break;
    }
    mIsEditing = true;
    if (isOneIn(4)) {
      ASSERT_NO_FATAL_FAILURE(editInTransaction());
    } else {
      edit();
    }
    mIsEditing = false;
  }

  K7Q::Model mModel = K7Q::Model::create();
  std::mt19937 mRandom{GetParam()};
  std::vector<std::string> mStates{""};
  std::size_t mAt = 0;
  bool mIsEditing = false;
};

}  // namespace

TEST_P(RandomHistory, LooksAsItDidWhereverItGoes) {
  api::setHistoryLimit(mModel, kLimit);
  api::listen(mModel, [this](std::span<const api::Change>) {
    if (mIsEditing) note();
  });
  const int count = steps();
  for (int i = 0; i < count; ++i) {
    ASSERT_NO_FATAL_FAILURE(step()) << "step " << i;
    ASSERT_EQ(shown::everything(mModel), mStates[mAt]) << "step " << i;
    if (i % 2 == 0) {
      ASSERT_NO_FATAL_FAILURE(shown::checkAgreement(mModel)) << "step " << i;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomHistory, testing::Range(1U, 9U));
