#include "tarvelon/platform/model/changes/Subscribers.h"

#include <algorithm>
#include <new>

#include "tarvelon/platform/model/objects/Instance.h"

namespace Tarvelon::metamodel::native {

namespace {

std::uint32_t numberOf(const Step& step) noexcept { return step.object->number(); }

/// The steps ordered by object, the steps of one object in their order. Empty if there is no memory: then
/// each listener of an object gets all steps and takes more time to filter them.
std::vector<Step> sortedByObject(std::span<const Step> steps) noexcept {
  try {
    std::vector<Step> sorted(steps.begin(), steps.end());
    std::ranges::stable_sort(sorted, {}, numberOf);
    return sorted;
  } catch (const std::bad_alloc&) {
    return {};
  }
}

}  // namespace

void Subscribers::add(std::uint64_t id, Listener listener, const Instance* object) {
  if (mTold.capacity() == mAll.size()) mTold.reserve(2 * mAll.size() + 1);
  const auto made = std::make_shared<Subscriber>(Subscriber{id, object, std::move(listener)});
  const auto place = mAll.emplace(id, made).first;
  try {
    if (object) {
      mOfObjects.emplace(ObjectAndId(object->number(), id), made.get());
    } else {
      mOfModel.emplace(id, made.get());
    }
  } catch (...) {
    mAll.erase(place);
    throw;
  }
}

void Subscribers::leave(Subscriber& subscriber) noexcept {
  if (subscriber.hasLeft) return;
  subscriber.hasLeft = true;
  if (subscriber.object) {
    mOfObjects.erase({subscriber.object->number(), subscriber.id});
  } else {
    mOfModel.erase(subscriber.id);
  }
  (mFirstLeft ? mLastLeft->nextLeft : mFirstLeft) = &subscriber;
  mLastLeft = &subscriber;
}

void Subscribers::leave(std::uint64_t id) noexcept {
  const auto found = mAll.find(id);
  if (found != mAll.end()) leave(*found->second);
}

void Subscribers::leaveAll(const Instance& object) noexcept {
  if (mOfObjects.empty()) return;
  const std::uint32_t number = object.number();
  auto each = mOfObjects.lower_bound({number, 0});
  while (each != mOfObjects.end() && each->first.first == number) leave(*(each++)->second);
}

std::shared_ptr<void> Subscribers::takeLeft() noexcept {
  if (!mFirstLeft) return nullptr;
  const auto place = mAll.find(mFirstLeft->id);
  mFirstLeft = mFirstLeft->nextLeft;
  std::shared_ptr<void> left = std::move(place->second);
  mAll.erase(place);
  return left;
}

std::size_t Subscribers::select(std::span<const Step> steps) noexcept {
  ++mBatch;
  mTold.clear();
  for (const auto& [id, subscriber] : mOfModel) mTold.push_back(subscriber);
  const std::size_t ofModel = mTold.size();
  if (mOfObjects.empty()) return 0;
  for (const Step& step : steps) {
    auto each = mOfObjects.lower_bound({numberOf(step), 0});
    for (; each != mOfObjects.end() && each->first.first == numberOf(step); ++each) {
      // Then all listeners of this object were added already.
      if (each->second->batch == mBatch) break;
      each->second->batch = mBatch;
      mTold.push_back(each->second);
    }
  }
  std::ranges::sort(mTold, {}, &Subscriber::id);
  return mTold.size() - ofModel;
}

void Subscribers::tell(std::span<const Step> steps) noexcept {
  const std::vector<Step> sorted = select(steps) > 1 ? sortedByObject(steps) : std::vector<Step>();
  // By index, since a listener that is added during a call may reallocate the list.
  for (std::size_t index = 0; index < mTold.size(); ++index) {
    const Subscriber& subscriber = *mTold[index];
    if (subscriber.hasLeft) continue;
    std::span<const Step> own = steps;
    if (subscriber.object && !sorted.empty()) {
      const std::uint32_t number = subscriber.object->number();
      own = {std::ranges::lower_bound(sorted, number, {}, numberOf),
             std::ranges::upper_bound(sorted, number, {}, numberOf)};
    }
    try {
      subscriber.listener(own, subscriber.object);
    } catch (...) {  // NOLINT(bugprone-empty-catch): the model has changed, whatever a listener makes of it
    }
  }
  mTold.clear();
}

}  // namespace Tarvelon::metamodel::native
