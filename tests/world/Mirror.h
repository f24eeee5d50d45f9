#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tarvelon/platform/model/api/History.h"
#include "tests/world/Observe.h"

/// A model of the engine and what it must look like.
namespace world {

namespace api = Tarvelon::model;

/// A change that a listener was told of, without handles, which would keep objects.
struct Told {
  api::Change::Kind kind;
  const K7Q::NSInterface::ObjectIntf* object;
  /// Of what was made.
  const Class* cls;
  const PropertyRow* row;
  /// Their texts and numbers; of objects the pointers.
  std::optional<Item> before;
  std::optional<Item> after;
  const K7Q::NSInterface::ObjectIntf* beforeObject;
  const K7Q::NSInterface::ObjectIntf* afterObject;
  std::uint32_t index;
  std::uint32_t from;
};

/// A listener that keeps a copy of the model up to date from nothing but what it is told.
struct Follower {
  std::uint64_t id = 0;
  State shadow;
  /// What was destroyed, with its values: it may come back.
  std::map<int, Object> gone;
  /// Objects with a smaller id may have been destroyed before it listened, with values that it does not know.
  int firstId = 0;
  /// Such a one has come back, or there was no memory to tell it of what has changed: it begins anew.
  bool isLost = false;
  std::vector<std::vector<Told>> batches;
};

class Mirror {
 public:
  /// An empty model. `called` is what programs call it.
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
  /// By id: where the engine has the object. Ids are never given twice.
  std::vector<ObjectPointer> pointers;
  std::size_t limit = 0;
  std::vector<State> undoable;
  std::vector<State> redoable;
  std::vector<Open> open;
  /// Changes since the outermost transaction began.
  std::size_t steps = 0;
  /// Counts whatever may have touched a list.
  std::uint64_t touches = 0;
  std::vector<std::shared_ptr<Follower>> followers;
  /// By id: the id in files, once it was saved.
  std::map<int, std::string> fileIds;

  /// Ids of objects that are there.
  Ids ids() const;
  /// Those of every object that ever was: what listeners are told of may be gone.
  Ids allIds() const;
  /// All objects in the order in which a file has them.
  std::vector<int> inFileOrder() const;
  int add(ObjectPointer object);
  K7Q::ClassObject handle(int id, K7Q::Deviant deviant = {}) const {
    return {pointers.at(static_cast<std::size_t>(id)), deviant};
  }

  /// The engine has made a change that leads to `next`.
  void commit(State next, bool hasSteps);
  void endInnermost();
  /// Takes back to where the open transaction of that index began, and ends it and those within.
  void rollBackTo(std::size_t index);
  void setLimit(std::size_t newLimit);
  void undo();
  void redo();

  /// Takes in what listeners were told of: after each step, while addresses still stand for one object.
  void hear();
  /// Raises Fault if the engine's model is another. `isThorough`: what is computed and names as well.
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
