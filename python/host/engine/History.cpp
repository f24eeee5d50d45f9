#include "tarvelon/platform/model/api/History.h"

#include <memory>
#include <new>

#include "python/host/objects/Functions.h"
#include "python/host/objects/NativeObjects.h"
#include "python/host/objects/Values.h"
#include "tarvelon/platform/model/api/Search.h"

namespace pyhost {

namespace {

namespace model = Tarvelon::model;

constexpr const char* kTransaction = "_tarvelon_host.Transaction";

PyObject* beginTransaction(Given arguments) {
  auto transaction = std::make_unique<model::Transaction>(toModel(arguments[0], "transaction"));
  Reference capsule = owned(PyCapsule_New, transaction.get(), kTransaction, [](PyObject* self) {
    delete static_cast<model::Transaction*>(PyCapsule_GetPointer(self, kTransaction));
  });
  static_cast<void>(transaction.release());
  return capsule.release();
}

model::Transaction& transactionOf(PyObject* capsule) {
  if (!PyCapsule_IsValid(capsule, kTransaction)) {
    raise(errors().wrongType, "expected a transaction, got " + describePython(capsule));
  }
  return *static_cast<model::Transaction*>(PyCapsule_GetPointer(capsule, kTransaction));
}

PyObject* commit(Given arguments) {
  transactionOf(arguments[1]).commit();
  return Py_NewRef(Py_None);
}

PyObject* rollBack(Given arguments) {
  transactionOf(arguments[1]).rollBack();
  return Py_NewRef(Py_None);
}

/// Whether the transaction is still open: not ended, and its model still exists.
PyObject* isOpen(Given arguments) { return PyBool_FromLong(transactionOf(arguments[1]).isOpen() ? 1 : 0); }

PyObject* undo(Given arguments) {
  return PyBool_FromLong(model::undo(toModel(arguments[0], "undo")) ? 1 : 0);
}

PyObject* redo(Given arguments) {
  return PyBool_FromLong(model::redo(toModel(arguments[0], "redo")) ? 1 : 0);
}

PyObject* setHistory(Given arguments) {
  const K7Q::Model asked = toModel(arguments[0], "history");
  if (!PyIndex_Check(arguments[1])) {
    raise(errors().wrongType, "history: expected a whole number, got " + describePython(arguments[1]));
  }
  // A number too large for Py_ssize_t becomes the largest one, which is refused as too long.
  const Py_ssize_t limit = enter(PyNumber_AsSsize_t, arguments[1], nullptr);
  if (limit == -1 && PyErr_Occurred()) throw PythonError();
  if (limit < 0 || static_cast<std::size_t>(limit) > model::kMostBatches) {
    raise(errors().outOfRange, "history: expected a limit from 0 to " + std::to_string(model::kMostBatches) +
                                   ", got " + describePython(arguments[1]));
  }
  model::setHistoryLimit(asked, static_cast<std::size_t>(limit));
  return Py_NewRef(Py_None);
}

PyObject* history(Given arguments) {
  const K7Q::Model of = toModel(arguments[0], "history");
  return owned(Py_BuildValue, "(nnn)", static_cast<Py_ssize_t>(model::historyLimit(of)),
               static_cast<Py_ssize_t>(model::undoable(of)), static_cast<Py_ssize_t>(model::redoable(of)))
      .release();
}

PyObject* undoLabel(Given arguments) {
  return toStr(model::undoLabel(toModel(arguments[0], "undo_label"))).release();
}

PyObject* redoLabel(Given arguments) {
  return toStr(model::redoLabel(toModel(arguments[0], "redo_label"))).release();
}

const char* nameOf(model::Change::Kind kind) noexcept {
  using Kind = model::Change::Kind;
  switch (kind) {
    case Kind::Set:
      return "set";
    case Kind::Added:
      return "added";
    case Kind::Removed:
      return "removed";
    case Kind::Replaced:
      return "replaced";
    case Kind::Moved:
      return "moved";
    case Kind::Made:
      return "made";
    case Kind::Destroyed:
      return "destroyed";
  }
  return "";
}

/// Converts a change into a record: kind, object, property name or None, before, after, index, index before.
Reference fromChange(const model::Change& change, PyObject* record) {
  const Reference object = fromModelObject(change.object);
  const Reference before = fromValue(change.before);
  const Reference after = fromValue(change.after);
  return owned(PyObject_CallFunction, record, "sOzOOII", nameOf(change.kind), object.get(),
               change.property ? model::hostName(*change.property) : nullptr, before.get(), after.get(),
               change.index, change.from);
}

/// A Python callable that gets each batch of changes. It may outlive the interpreter, if its model is bound.
class PythonListener {
 public:
  PythonListener(PyObject* callable, PyObject* record)
      : mCallable(Py_NewRef(callable)), mRecord(Py_NewRef(record)) {}
  PythonListener(const PythonListener&) = delete;
  PythonListener& operator=(const PythonListener&) = delete;
  ~PythonListener() {
    if (Py_IsInitialized() == 0) return;
    drop(mCallable);
    drop(mRecord);
  }

  void tell(std::span<const model::Change> changes) const {
    const Telling telling;
    // The change may have failed already: keeps the Python error that is set.
    PyObject *type = nullptr, *value = nullptr, *traceback = nullptr;
    PyErr_Fetch(&type, &value, &traceback);
    try {
      if (changes.empty()) throw std::bad_alloc();
      Reference list = owned(PyList_New, 0);
      for (const model::Change& change : changes)
        require(PyList_Append, list.get(), fromChange(change, mRecord).get());
      owned(PyObject_CallOneArg, mCallable, list.get());
    } catch (...) {
      translateException();
      if (!putOffInterrupt()) enter(PyErr_WriteUnraisable, mCallable);
    }
    PyErr_Restore(type, value, traceback);
  }

 private:
  /// Counts the running listeners of this thread.
  struct Telling {
    Telling() noexcept { ++tTellings; }
    Telling(const Telling&) = delete;
    Telling& operator=(const Telling&) = delete;
    ~Telling() { --tTellings; }
  };

  /// Handles a KeyboardInterrupt in a listener. The interrupt is meant for the program, not for the listener,
  /// so it is raised again after the change has returned.
  static bool putOffInterrupt() {
    if (PyErr_ExceptionMatches(PyExc_KeyboardInterrupt) == 0) return false;
    if (Py_AddPendingCall(&interrupt, nullptr) < 0) return false;
    enter(PyErr_Clear);
    return true;
  }

  /// Called by the interpreter before its next instruction. If that instruction belongs to a listener, the
  /// interrupt is postponed again.
  static int interrupt(void* /*nothing*/) {
    if (tTellings != 0) return Py_AddPendingCall(&interrupt, nullptr);
    PyErr_SetNone(PyExc_KeyboardInterrupt);
    return -1;
  }

  /// The number of listeners running on this thread.
  static TARVELON_THREAD_LOCAL int tTellings;

  PyObject* mCallable;
  /// The class of the change records.
  PyObject* mRecord;
};

TARVELON_THREAD_LOCAL int PythonListener::tTellings = 0;

PyObject* listen(Given arguments) {
  for (PyObject* each : arguments.subspan(2)) {
    if (PyCallable_Check(each) != 0) continue;
    raise(errors().wrongType, "listen: expected a function, got " + describePython(each));
  }
  const auto callable = std::make_shared<const PythonListener>(arguments[2], arguments[3]);
  const auto listener = [callable](std::span<const model::Change> changes) { callable->tell(changes); };
  const K7Q::Model of = toModel(arguments[0], "listen");
  const std::uint64_t id = arguments[1] == Py_None
                               ? model::listen(of, listener)
                               : model::listen(toModelObject(arguments[1], "listen"), listener);
  PyObject* shown = enter(PyLong_FromUnsignedLongLong, id);
  if (!shown) model::unlisten(of, id);
  return shown;
}

PyObject* unlisten(Given arguments) {
  const std::uint64_t id = enter(PyLong_AsUnsignedLongLong, arguments[1]);
  if (PyErr_Occurred()) throw PythonError();
  model::unlisten(toModel(arguments[0], "unlisten"), id);
  return Py_NewRef(Py_None);
}

constexpr FunctionRow kFunctions[] = {
    {"beginTransaction", 1, beginTransaction, "Begins a transaction of a model. Returns it as a capsule."},
    {"commit", 2, commit, "Ends a transaction of a model and keeps its changes."},
    {"rollBack", 2, rollBack, "Ends a transaction of a model and rolls back its changes."},
    {"isOpen", 2, isOpen, "Whether a transaction of a model is still open."},
    {"undo", 1, undo, "Undoes the last change or transaction of a model."},
    {"redo", 1, redo, "Repeats the change or transaction that was undone last."},
    {"undoLabel", 1, undoLabel, "The changes that undo would undo, as a label for a menu."},
    {"redoLabel", 1, redoLabel, "The changes that redo would repeat, as a label for a menu."},
    {"setHistory", 2, setHistory, "Sets the maximum number of changes that a model can undo."},
    {"history", 1, history,
     "The maximum number of changes to undo, the number to undo now, and the number to redo now."},
    {"listen", 4, listen,
     "Registers a listener, which is called after each change or transaction. Returns its id."},
    {"unlisten", 2, unlisten, "Removes the listener with that id."},
};

}  // namespace

PyMethodDef* historyFunctions() noexcept { return Published<kFunctions>::methods(); }

}  // namespace pyhost
