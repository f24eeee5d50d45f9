#include "tests/world/Mirror.h"

#include <algorithm>

#include "tarvelon/platform/model/audit/Audit.h"
#include "tests/world/Fault.h"

namespace world {

Ids Mirror::ids() const {
  Ids ids;
  for (const auto& entry : now.objects)
    ids.emplace(pointers[static_cast<std::size_t>(entry.first)], entry.first);
  return ids;
}

Ids Mirror::allIds() const {
  Ids ids;
  // If an address was reused, only the latest object at it can be met.
  for (std::size_t id = 0; id < pointers.size(); ++id) ids[pointers[id]] = static_cast<int>(id);
  for (const auto& entry : now.objects) ids[pointers[static_cast<std::size_t>(entry.first)]] = entry.first;
  return ids;
}

int Mirror::add(ObjectPointer object) {
  pointers.push_back(object);
  return static_cast<int>(pointers.size()) - 1;
}

void Mirror::trim() {
  if (undoable.size() > limit)
    undoable.erase(undoable.begin(), undoable.end() - static_cast<std::ptrdiff_t>(limit));
}

void Mirror::finish(State before) {
  redoable.clear();
  undoable.push_back(std::move(before));
  trim();
}

void Mirror::commit(State next, bool hasSteps) {
  ++touches;
  State before = std::exchange(now, std::move(next));
  if (!hasSteps) return;
  if (open.empty()) {
    finish(std::move(before));
  } else {
    ++steps;
  }
}

void Mirror::endInnermost() {
  State before = std::move(open.back().before);
  open.pop_back();
  if (open.empty() && steps > 0) finish(std::move(before));
}

void Mirror::rollBackTo(std::size_t index) {
  ++touches;
  now = open[index].before;
  steps = open[index].steps;
  State before = open[0].before;
  open.resize(index);
  if (open.empty() && steps > 0) finish(std::move(before));
}

void Mirror::setLimit(std::size_t newLimit) {
  if (undoable.size() + redoable.size() > newLimit) redoable.clear();
  limit = newLimit;
  trim();
}

void Mirror::undo() {
  ++touches;
  redoable.push_back(std::exchange(now, std::move(undoable.back())));
  undoable.pop_back();
}

void Mirror::redo() {
  ++touches;
  undoable.push_back(std::exchange(now, std::move(redoable.back())));
  redoable.pop_back();
}

void Mirror::check(bool isThorough) {
  const std::string broken = api::audit(native);
  if (!broken.empty()) throw Fault("model " + std::to_string(number) + ": " + broken);
  const Ids known = ids();
  if (known.size() != now.objects.size()) throw Fault("two objects stand at one address");
  const std::string difference = differenceOf(now, observe(native, known));
  if (!difference.empty()) throw Fault("model " + std::to_string(number) + ": " + difference);
  if (api::undoable(native) != undoable.size() || api::redoable(native) != redoable.size() ||
      api::historyLimit(native) != limit) {
    throw Fault("the history is another: " + std::to_string(api::undoable(native)) + " and " +
                std::to_string(api::redoable(native)) + " of " + std::to_string(api::historyLimit(native)) +
                ", expected " + std::to_string(undoable.size()) + " and " + std::to_string(redoable.size()));
  }
  if (!isThorough) return;
  checkComputed(native, now, known);
  checkNames(native, now, known);
}

void Mirror::hear() {
  if (followers.empty()) return;
  const Ids known = allIds();
  for (const auto& follower : followers) {
    for (const auto& batch : std::exchange(follower->batches, {})) {
      for (const Told& told : batch) replay(*follower, told, known);
    }
    if (follower->isLost) begin(*follower);
    // Listeners are told of an open transaction only when it ends.
    const std::string difference = differenceOf(open.empty() ? now : open[0].before, follower->shadow);
    if (!difference.empty()) throw Fault("by what a listener was told " + difference);
  }
}

/// Memory may run out here too. An empty batch means that memory ran out in the engine.
void Mirror::hearOf(Follower& follower, std::span<const api::Change> changes) {
  try {
    std::vector<Told> batch;
    for (const auto& change : changes) batch.push_back(toldOf(change));
    follower.batches.push_back(std::move(batch));
    follower.isLost = follower.isLost || changes.empty();
  } catch (const std::bad_alloc&) {
    follower.isLost = true;
  }
}

void Mirror::follow() {
  followers.push_back(std::make_shared<Follower>());
  Follower& follower = *followers.back();
  try {
    begin(follower);
    follower.id =
        api::listen(native, [&follower](std::span<const api::Change> changes) { hearOf(follower, changes); });
  } catch (...) {
    followers.pop_back();
    throw;
  }
}

void Mirror::begin(Follower& follower) const {
  follower.batches.clear();
  follower.gone.clear();
  follower.shadow = open.empty() ? now : open[0].before;
  follower.firstId = static_cast<int>(pointers.size());
  follower.isLost = false;
}

}  // namespace world
