#include <map>
#include <set>
#include <utility>

#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/Property.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/values/Refusal.h"

namespace Tarvelon::model {

namespace native = metamodel::native;
using native::Step;
using Steps = std::span<const Step>;

namespace {

/// Builds the label of a batch from its steps. A place is one property of one object, or an object that the
/// batch creates or destroys; the label names each place once.
class Label {
 public:
  explicit Label(Steps steps, bool isInverse = false) : mSteps(steps), mIsInverse(isInverse) {
    for (std::size_t index = 0; index < steps.size(); ++index) meet(at(index));
    for (std::size_t index = 0; index < steps.size(); ++index) add(at(index));
  }

  std::string text() && {
    if (mPlaces > kMost) mText += " and " + std::to_string(mPlaces - kMost) + " more";
    return std::move(mText);
  }

 private:
  static constexpr std::size_t kMost = 5;
  using Object = const native::Instance*;

  Step at(std::size_t index) const noexcept {
    return mIsInverse ? mSteps[mSteps.size() - 1 - index].inverse() : mSteps[index];
  }

  void meet(const Step& step) {
    if (step.kind == Step::Kind::Life) mLives.insert(step.object);
    if (step.kind != Step::Kind::Value || step.slot != step.object->cls().nameSlot) return;
    if (step.hasBefore && step.before.text) mNames.try_emplace(step.object, step.before.text->view());
    if (step.hasAfter && step.after.text) mNames.insert_or_assign(step.object, step.after.text->view());
  }

  void add(const Step& step) {
    const bool isLife = step.kind == Step::Kind::Life;
    if (!isLife && (mLives.contains(step.object) || !mSeen.insert({step.object, step.slot}).second)) return;
    if (++mPlaces > kMost) return;
    if (!mText.empty()) mText += ", ";
    mText += isLife ? step.hasAfter ? "made " : "destroyed " : propertyOf(step) + " of ";
    mText += named(*step.object);
  }

  /// The object and its name. An object that does not exist at the moment has no name; then the name comes
  /// from the steps.
  std::string named(const native::Instance& object) const {
    const auto found = native::isNamed(object) ? mNames.end() : mNames.find(&object);
    return found == mNames.end() ? native::describe(object) : native::describe(object, found->second);
  }
  static std::string propertyOf(const Step& step) {
    return step.object->cls().slotProperties[step.slot]->row().name;
  }

  Steps mSteps;
  bool mIsInverse;
  /// Objects that the batch creates or destroys.
  std::set<Object> mLives;
  /// The last name that the steps give to each object.
  std::map<Object, std::u16string_view> mNames;
  std::set<std::pair<Object, unsigned>> mSeen;
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
  return journal ? Label(journal->nextRedo(), journal->isNextRedoInverse()).text() : std::string();
}

}  // namespace Tarvelon::model
