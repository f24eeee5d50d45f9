#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/platform/model/api/Delay.h"

/// Transactions, undo and redo, and listeners.
///
/// The unit of undo, redo and notification is the batch. A single change outside a transaction is a batch.
/// All changes of an outermost transaction are one batch as well.
///
/// Example:
///   setHistoryLimit(model, 100);
///   Transaction transaction(model);
///   package.set<"Name">(u"Brakes");
///   transaction.commit();
///   undo(model);
///
/// Errors:  K7Q::Exception for a closed model, for a model that may not be written and for a call at the
///          wrong time, such as from within a listener; std::bad_alloc. Undo, redo and roll back never fail
///          for lack of memory.
/// Cost:    In a model without transactions, history and listeners, recording costs one branch for each
///          change.
/// Threads: One thread at a time for each model. A listener is called on the thread that makes the change.
namespace Tarvelon::model {

/// A group of changes of one model that are kept or undone together.
///
/// The transaction begins in the constructor. It ends with commit() or rollBack(). The destructor rolls back
/// a transaction that is still open. Transactions may be nested. Rolling back a transaction also rolls back
/// and ends all transactions that were begun after it and are still open.
class TARVELON_API Transaction {
 public:
  /// Begins a transaction. Raises K7Q::Exception if the model may not be written or if a listener is being
  /// called.
  explicit Transaction(const K7Q::Model& model);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();

  /// Ends the transaction and keeps its changes. The changes of a nested transaction can still be rolled back
  /// with the transaction around it. Raises K7Q::Exception if the transaction has ended already, or if a
  /// transaction that was begun later is still open.
  void commit();
  /// Ends the transaction and undoes its changes. Raises K7Q::Exception if the transaction has ended already.
  void rollBack();
  /// Returns false once the transaction has ended or its model was closed.
  bool isOpen() const noexcept;

 private:
  void requireOpen() const;

  K7Q::Model mModel;
  std::uint64_t mId = 0;
};

/// The greatest limit that setHistoryLimit() accepts, in batches.
inline constexpr std::size_t kMostBatches = 1000000;
/// Sets how many batches the history of the model keeps for undo and redo together. The limit is 0 at first:
/// nothing is kept. If the history has more batches than the new limit, it drops all batches that redo()
/// could apply, then the oldest batches that undo() could undo.
///
/// Raises K7Q::OutOfRange for more than kMostBatches, and K7Q::Exception while a transaction is open.
TARVELON_API void setHistoryLimit(const K7Q::Model& model, std::size_t limit);
/// The limit that was set.
TARVELON_API std::size_t historyLimit(const K7Q::Model& model);
/// How many batches undo() can undo, and how many redo() can apply again.
TARVELON_API std::size_t undoable(const K7Q::Model& model);
TARVELON_API std::size_t redoable(const K7Q::Model& model);
/// Undoes the last batch, or applies the batch that was undone last again. Returns false if there is none.
/// Raises K7Q::Exception while a transaction is open. A new change drops everything that redo() could apply.
TARVELON_API bool undo(const K7Q::Model& model);
TARVELON_API bool redo(const K7Q::Model& model);
/// Describes what undo() and redo() would do, for a menu, in UTF-8: "category of common.Package 'Brakes'".
///
/// The text names each changed property of each object once, in the order of the changes: the first five,
/// then how many more there are. For an object that was created or destroyed, the text says only that. The
/// text is empty if there is nothing to undo or redo.
/// Cost: Proportional to the length of the batch.
TARVELON_API std::string undoLabel(const K7Q::Model& model);
TARVELON_API std::string redoLabel(const K7Q::Model& model);

/// One change of one property of an object, or the creation or destruction of an object.
struct Change {
  enum class Kind : std::uint8_t {
    Set,        ///< a single-valued property: its value changed from `before` to `after`; either may be empty
    Added,      ///< a list: `after` was inserted at `index`
    Removed,    ///< a list: `before` was removed from `index`
    Replaced,   ///< a list: `before` was replaced by `after` at `index`
    Moved,      ///< a list: an element moved from `from` to `index`; a swap is reported as moves
    Made,       ///< the object was created
    Destroyed,  ///< the object was destroyed; its handle is invalid
  };
  Kind kind;
  K7Q::ClassObject object;
  /// The property that was changed. Null for Made and Destroyed.
  const K7Q::NSInterface::PropertyIntf* property = nullptr;
  K7Q::Object before;
  K7Q::Object after;
  /// Indices in the list, from 0.
  std::uint32_t index = 0;
  std::uint32_t from = 0;
};

/// A function that is called once for each batch, after the batch has ended, with the changes of the batch in
/// their order.
///
/// - A listener must not change the model; an attempt raises K7Q::Exception.
/// - An exception that a listener raises is ignored.
/// - The handles that it receives are writable or read-only, like the handle that was given to listen().
/// - An empty span of changes means that there was no memory to list the changes. A listener must then read
///   again whatever it keeps of the model.
using Listener = std::function<void(std::span<const Change>)>;

/// Delays the notification of listeners on the current thread until the scope ends.
///
/// A host uses this while it creates an object, so that no listener runs before the host has finished. The
/// delay applies to the first model that is changed within the scope. Scopes may be nested. For use on the
/// stack only.
class TARVELON_API DelayedTelling {
 public:
  DelayedTelling() noexcept;
  DelayedTelling(const DelayedTelling&) = delete;
  DelayedTelling& operator=(const DelayedTelling&) = delete;
  ~DelayedTelling();

 private:
  metamodel::native::Delay mDelay;
};

/// As DelayedTelling, for a host that creates an object or a copy and then has to hand it out.
///
/// If an exception leaves the scope, the created object is destroyed again. If the model has a journal (a
/// transaction, a history or a listener), all other changes made within the scope are rolled back as well,
/// and the batches that redo() could apply are kept.
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

/// Registers a listener for all changes of a model. Returns an id for unlisten(). The listener stays
/// registered until unlisten() is called or the model ends.
TARVELON_API std::uint64_t listen(const K7Q::Model& model, Listener listener);
/// Registers a listener for the changes of one object. It is called only for batches that change this object
/// and receives only those changes. The listener is removed when the object is freed.
TARVELON_API std::uint64_t listen(const K7Q::ClassObject& object, Listener listener);
/// Removes a listener. Does nothing if there is no such listener or the model is closed.
TARVELON_API void unlisten(const K7Q::Model& model, std::uint64_t listener);

}  // namespace Tarvelon::model
