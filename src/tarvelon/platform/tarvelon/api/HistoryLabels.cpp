#include <set>
#include <utility>

#include "tarvelon/platform/tarvelon/ClassData.h"
#include "tarvelon/platform/tarvelon/Instance.h"
#include "tarvelon/platform/tarvelon/Journal.h"
#include "tarvelon/platform/tarvelon/NativeModel.h"
#include "tarvelon/platform/tarvelon/Property.h"
#include "tarvelon/platform/tarvelon/Refusal.h"
#include "tarvelon/platform/tarvelon/api/History.h"

namespace Tarvelon::model {

namespace native = metamodel::native;
using native::Step;
using Steps = std::span<const Step>;

namespace {

/// The label of a batch, put together place by place.
class Label {
 public:
  explicit Label(Steps steps) {
    for (const Step& step : steps) {
      if (step.kind == Step::Kind::Life) mLives.insert(step.object);
    }
    for (const Step& step : steps) add(step);
  }

  std::string text() && {
    if (mPlaces > kMost) mText += " and " + std::to_string(mPlaces - kMost) + " more";
    return std::move(mText);
  }

 private:
  static constexpr std::size_t kMost = 5;
  using Place = std::pair<const native::Instance*, unsigned>;

  void add(const Step& step) {
    const bool isLife = step.kind == Step::Kind::Life;
    if (!isLife && (mLives.contains(step.object) || !mSeen.insert({step.object, step.slot}).second)) return;
    if (++mPlaces > kMost) return;
    if (!mText.empty()) mText += ", ";
    mText += isLife ? step.hasAfter ? "made " : "destroyed " : propertyOf(step) + " of ";
    mText += native::describe(*step.object);
  }
  static std::string propertyOf(const Step& step) {
    return step.object->cls().slotProperties[step.slot]->row().name;
  }

  /// Objects that were made or destroyed.
  std::set<const native::Instance*> mLives;
  std::set<Place> mSeen;
  std::size_t mPlaces = 0;
  std::string mText;
};

}  // namespace

std::string undoLabel(const K7Q::Model& model) {
  const native::Journal* journal = native::NativeModel::require(model).journal();
  return journal ? Label(journal->nextUndo()).text() : std::string();
}

std::string redoLabel(const K7Q::Model& model) {
  const native::Journal* journal = native::NativeModel::require(model).journal();
  return journal ? Label(journal->nextRedo()).text() : std::string();
}

}  // namespace Tarvelon::model
