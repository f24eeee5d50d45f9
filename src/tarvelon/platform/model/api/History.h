#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/platform/model/changes/Delay.h"

/// Changes of a model as a whole: made together or not at all, taken back, listened to.
///
/// A change that stands alone is a batch, and so is all that happens in a transaction; what is taken back and
/// what listeners are told are batches.
/// Failure: K7Q::Exception for a closed model, a frozen one and a call at the wrong time, std::bad_alloc.
///          Taking back does not fail for want of memory.
/// Cost:    a model without transaction, history and listeners pays one branch for a change.
/// Threads: one at a time for each model. Listeners are called on the thread that makes the change.
namespace Tarvelon::model {

/// All changes of a model between its making and its end. One that is destroyed without commit() takes them
/// back. Transactions nest: taking one back takes back, and ends, those that were made later and are still
/// open.
class TARVELON_API Transaction {
 public:
  explicit Transaction(const K7Q::Model& model);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();

  /// Keeps the changes, for the one around it or for good. Raises K7Q::Exception if it has ended, or if one
  /// that was made later has not.
  void commit();
  /// Raises K7Q::Exception if it has ended.
  void rollBack();
  /// False when it has ended, and when its model has.
  bool isOpen() const noexcept;

 private:
  void requireOpen() const;

  K7Q::Model mModel;
  std::uint64_t mId = 0;
};

/// The longest history.
inline constexpr std::size_t kMostBatches = 1000000;
/// How many batches can be taken back; 0, as it is at first, keeps none and forgets those there are. Raises
/// K7Q::OutOfRange for more than kMostBatches.
TARVELON_API void setHistoryLimit(const K7Q::Model& model, std::size_t limit);
TARVELON_API std::size_t historyLimit(const K7Q::Model& model);
/// How many batches there are to be taken back, and to be made again.
TARVELON_API std::size_t undoable(const K7Q::Model& model);
TARVELON_API std::size_t redoable(const K7Q::Model& model);
/// Takes the last batch back, or makes the last one taken back again. False if there is none.
TARVELON_API bool undo(const K7Q::Model& model);
TARVELON_API bool redo(const K7Q::Model& model);
/// What undo() and redo() would do, as a menu shows it, in UTF-8: "category of common.Package 'Brakes'".
/// Names each property of each object once, in the order of the changes, five at most and how many more there
/// are; of an object that was made or destroyed that alone. Empty if there is nothing to do. Cost:
/// proportional to the length of the batch.
TARVELON_API std::string undoLabel(const K7Q::Model& model);
TARVELON_API std::string redoLabel(const K7Q::Model& model);

/// One change of one place.
struct Change {
  enum class Kind : std::uint8_t {
    Set,        ///< a property of one value, from `before` to `after`; either may be empty
    Added,      ///< `after` to a property of many values, at `index`
    Removed,    ///< `before` from one, at `index`
    Replaced,   ///< `before` by `after` in one, at `index`
    Moved,      ///< within one, from `from` to `index`; two elements that change places are two moves
    Made,       ///< the object
    Destroyed,  ///< the object, whose handle is invalid
  };
  Kind kind;
  K7Q::ClassObject object;
  /// Null for Made and Destroyed.
  const K7Q::NSInterface::PropertyIntf* property = nullptr;
  K7Q::Object before;
  K7Q::Object after;
  /// From 0.
  std::uint32_t index = 0;
  std::uint32_t from = 0;
};

/// Told of the changes of each batch, in their order, when it has ended. It may not change the model, and
/// what it raises is lost. The objects are seen as the model or object was that listen() was given. Told of
/// no changes at all, it knows that there was no memory to tell it which: it reads anew what it has kept of
/// the model.
using Listener = std::function<void(std::span<const Change>)>;

/// Puts off what listeners are told on this thread until its end: for a host that makes an object, of which a
/// listener must not make another one meanwhile. One model may change during it. These scopes nest.
class TARVELON_API DelayedTelling {
 public:
  DelayedTelling() noexcept;
  DelayedTelling(const DelayedTelling&) = delete;
  DelayedTelling& operator=(const DelayedTelling&) = delete;
  ~DelayedTelling();

 private:
  metamodel::native::Delay mDelay;
};

/// The same for a host that makes an object, or a copy, and then has to show it: an exception that leaves the
/// scope takes back what was made. In a model that notes its changes all other changes are taken back as
/// well, and what could be made again still can.
class TARVELON_API Undertaking {
 public:
  Undertaking() noexcept;
  Undertaking(const Undertaking&) = delete;
  Undertaking& operator=(const Undertaking&) = delete;
  ~Undertaking();

 private:
  metamodel::native::Delay mDelay;
  K7Q::ClassObject mMade;
  int mExceptions;
};

/// Calls the listener until unlisten() or the end of the model. The result tells it apart in its model.
TARVELON_API std::uint64_t listen(const K7Q::Model& model, Listener listener);
/// The same for what changes at one object alone.
TARVELON_API std::uint64_t listen(const K7Q::ClassObject& object, Listener listener);
/// One that is not there is no error, nor is a closed model.
TARVELON_API void unlisten(const K7Q::Model& model, std::uint64_t listener);

}  // namespace Tarvelon::model
