#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tarvelon/platform/model/api/History.h"
#include "tests/world/Observe.h"

/// A model of the engine, together with its expected state.
namespace world {

namespace api = Tarvelon::model;

/// A change as a listener was told. It has no handles, because handles would keep the objects alive.
struct Told {
  api::Change::Kind kind;
  const K7Q::NSInterface::ObjectIntf* object;
  /// The class of a created object.
  const Class* cls;
  const PropertyRow* row;
  /// The texts or numbers; for objects see the pointers below.
  std::optional<Item> before;
  std::optional<Item> after;
  const K7Q::NSInterface::ObjectIntf* beforeObject;
  const K7Q::NSInterface::ObjectIntf* afterObject;
  std::uint32_t index;
  std::uint32_t from;
};

/// A listener that updates a copy of the model using only the changes it is told.
struct Follower {
  std::uint64_t id = 0;
  State shadow;
  /// Destroyed objects with their values, because undo may bring them back.
  std::map<int, Object> gone;
  /// Objects with a smaller id may have been destroyed before the listener was added. It does not know their
  /// values.
  int firstId = 0;
  /// Set when such an object has come back, or when there was no memory for the changes. The copy is then
  /// made anew.
  bool isLost = false;
  std::vector<std::vector<Told>> batches;
};

class Mirror {
 public:
  /// For an empty model. `called` is the number of the model in programs.
  Mirror(K7Q::Model model, int called) : native(std::move(model)), number(called) {}
  Mirror(const Mirror&) = delete;
  Mirror& operator=(const Mirror&) = delete;

  struct Open {
    std::unique_ptr<api::Transaction> transaction;
    State before;
    std::size_t steps;
  };

  K7Q::Model native;
  int number;
  bool isClosed = false;
  State now;
  /// The engine's objects by id. Ids are never reused.
  std::vector<ObjectPointer> pointers;
  std::size_t limit = 0;
  std::vector<State> undoable;
  std::vector<State> redoable;
  std::vector<Open> open;
  /// The number of changes since the outermost transaction began.
  std::size_t steps = 0;
  /// A counter that is raised by everything that may have changed a list.
  std::uint64_t touches = 0;
  std::vector<std::shared_ptr<Follower>> followers;
  /// The ids in files of the objects that were saved, by id.
  std::map<int, std::string> fileIds;

  /// The ids of the existing objects.
  Ids ids() const;
  /// The ids of all objects, including destroyed ones: listeners are also told of these.
  Ids allIds() const;
  /// All objects in the order of a file.
  std::vector<int> inFileOrder() const;
  int add(ObjectPointer object);
  K7Q::ClassObject handle(int id, K7Q::Deviant deviant = {}) const {
    return {pointers.at(static_cast<std::size_t>(id)), deviant};
  }

  /// Records that the engine has made a change that leads to `next`.
  void commit(State next, bool hasSteps);
  void endInnermost();
  /// Rolls back the open transaction with that index and the transactions inside it, and ends them.
  void rollBackTo(std::size_t index);
  void setLimit(std::size_t newLimit);
  void undo();
  void redo();

  /// Processes the changes that listeners were told. Called after each step, when no address has been reused
  /// yet.
  void hear();
  /// Raises Fault if the engine's model differs. `isThorough` also checks derived properties and names.
  void check(bool isThorough);
  void follow();

 private:
  void finish(State before);
  void trim();
  void begin(Follower& follower) const;
  static void hearOf(Follower& follower, std::span<const api::Change> changes);
};

Told toldOf(const api::Change& change);
void replay(Follower& follower, const Told& told, const Ids& ids);

}  // namespace world
