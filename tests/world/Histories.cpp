// Steps on transactions, the history and listeners.

#include <exception>

#include "tarvelon/platform/model/api/Json.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tests/world/Fault.h"
#include "tests/world/World.h"

namespace world {

namespace {

/// The exception that leaves a transaction or a listener.
struct Left {};

void leaveByException(std::unique_ptr<api::Transaction> transaction) {
  try {
    const auto goes = std::move(transaction);
    throw Left{};
  } catch (const Left&) {  // NOLINT(bugprone-empty-catch): what counts has happened on the way
  }
}

}  // namespace

void World::begin() {
  constexpr std::size_t kDeepest = 4;
  Mirror& model = mirror();
  if (model.open.size() >= kDeepest) return;
  say("begin");
  std::unique_ptr<api::Transaction> made;
  const State before = model.now;
  if (!attempt(Expect::Ok, [&] { made = std::make_unique<api::Transaction>(model.native); })) return;
  if (model.open.empty()) model.steps = 0;
  model.open.push_back({std::move(made), before, model.steps});
}

void World::commit() {
  Mirror& model = mirror();
  if (model.open.empty()) return;
  const std::size_t index = mIn->oneIn(4) ? below(model.open.size()) : model.open.size() - 1;
  const bool isInnermost = index + 1 == model.open.size();
  say("commit transaction " + std::to_string(index));
  const bool isMade =
      attempt(isInnermost ? Expect::Ok : Expect::Refused, [&] { model.open[index].transaction->commit(); });
  if (isMade) model.endInnermost();
}

void World::rollBack() {
  Mirror& model = mirror();
  if (model.open.empty()) return;
  const std::size_t index = mIn->oneIn(4) ? below(model.open.size()) : model.open.size() - 1;
  auto transaction = std::move(model.open[index].transaction);
  const std::size_t how = below(3);
  say("roll back transaction " + std::to_string(index) +
      (how == 0   ? ""
       : how == 1 ? " by its end"
                  : " by an exception"));
  if (how == 0) {
    transaction->rollBack();
    if (transaction->isOpen()) throw Fault("a transaction that was rolled back is open");
  }
  if (how == 2) leaveByException(std::move(transaction));
  transaction.reset();
  model.rollBackTo(index);
}

void World::limit() {
  Mirror& model = mirror();
  constexpr std::size_t kLimits[] = {0, 1, 3, 1000};
  const std::size_t length = mIn->pick(kLimits);
  say("history = " + std::to_string(length));
  const bool isMade = attempt(model.open.empty() ? Expect::Ok : Expect::Refused,
                              [&] { api::setHistoryLimit(model.native, length); });
  if (isMade) model.setLimit(length);
}

void World::undo(bool isRedo) {
  Mirror& model = mirror();
  // Most interesting things need a history.
  if (model.limit == 0 && model.open.empty() && mIn->oneIn(2)) return limit();
  auto& states = isRedo ? model.redoable : model.undoable;
  say(isRedo ? "redo" : "undo");
  bool isDone = false;
  const bool isMade = attempt(model.open.empty() ? Expect::Ok : Expect::Refused,
                              [&] { isDone = isRedo ? api::redo(model.native) : api::undo(model.native); });
  if (!isMade) return;
  if (isDone == states.empty()) throw Fault("undo or redo did something, or not, against the history");
  if (!isDone) return;
  if (isRedo) {
    model.redo();
  } else {
    model.undo();
  }
}

/// A listener that throws, removes itself, reads the model, or drops the held handles and iterators.
api::Listener World::anyListener(const std::shared_ptr<std::uint64_t>& id) {
  Mirror* model = &mirror();
  switch (below(4)) {
    case 0:
      return [](std::span<const api::Change>) { throw Left{}; };
    case 1:
      return [model, id](std::span<const api::Change>) { api::unlisten(model->native, *id); };
    case 2:
      return [model](std::span<const api::Change> changes) {
        for (const auto& change : changes) {
          if (change.object.isValid()) api::qualifiedName(change.object);
        }
        Tarvelon::metamodel::toJson(model->native);
      };
    default:
      return [this](std::span<const api::Change>) {
        mPlaces.clear();
        mHeld.clear();
      };
  }
}

void World::listen() {
  Mirror& model = mirror();
  constexpr std::size_t kMostFollowers = 3;
  if (mIn->oneIn(2) && model.followers.size() < kMostFollowers) {
    say("listen and follow");
    attempt(Expect::Ok, [&] { model.follow(); });
    return;
  }
  const int object = anyObject();
  const bool isAtObject = object >= 0 && mIn->oneIn(3);
  const auto id = std::make_shared<std::uint64_t>(0);
  const api::Listener listener = anyListener(id);
  say("listen" + (isAtObject ? " to " + told(object) : std::string()));
  attempt(Expect::Ok, [&] {
    *id = isAtObject ? api::listen(model.handle(object), listener) : api::listen(model.native, listener);
  });
}

void World::unlisten() {
  Mirror& model = mirror();
  if (model.followers.empty()) return;
  say("unlisten");
  const std::size_t index = below(model.followers.size());
  api::unlisten(model.native, model.followers[index]->id);
  model.followers.erase(model.followers.begin() + static_cast<std::ptrdiff_t>(index));
}

}  // namespace world
