#include "python/host/interpreter/Errors.h"

#include <new>
#include <unistd.h>

#include "tarvelon/boundary/k7q/Exception.h"

namespace pyhost {

namespace {

ErrorClasses sErrors;

struct ErrorRow {
  PyObject* ErrorClasses::*place;
  const char* name;
  PyObject* const* builtin;
  const char* doc;
};

PyObject* makeErrorClass(const ErrorRow& row) {
  if (row.place == &ErrorClasses::staleIterator) {
    const Reference bases = owned(PyTuple_Pack, 2, sErrors.wrongType, sErrors.outOfBounds);
    return PyErr_NewExceptionWithDoc(row.name, row.doc, bases.get(), nullptr);
  }
  if (!row.builtin) return PyErr_NewExceptionWithDoc(row.name, row.doc, PyExc_Exception, nullptr);
  const Reference bases = owned(PyTuple_Pack, 2, sErrors.exception, *row.builtin);
  return PyErr_NewExceptionWithDoc(row.name, row.doc, bases.get(), nullptr);
}

}  // namespace

const ErrorClasses& errors() noexcept { return sErrors; }

bool addErrorClasses(PyObject* module) {
  const ErrorRow rows[] = {
      {&ErrorClasses::exception, "K7Q.Exception", nullptr,
       "The base of all errors of models and their classes."},
      {&ErrorClasses::wrongType, "K7Q.WrongType", &PyExc_TypeError,
       "A value of the wrong type, or arguments that no signature accepts."},
      {&ErrorClasses::outOfRange, "K7Q.OutOfRange", &PyExc_OverflowError,
       "A number that is out of the range of its type."},
      {&ErrorClasses::wrongValue, "K7Q.WrongValue", &PyExc_ValueError,
       "A value of the right type that is not allowed at this place."},
      {&ErrorClasses::unknownName, "K7Q.UnknownName", &PyExc_AttributeError,
       "A package, class, attribute or method that does not exist."},
      {&ErrorClasses::outOfBounds, "K7Q.OutOfBounds", &PyExc_IndexError,
       "An index, counted from 0, that is out of the bounds of its sequence."},
      {&ErrorClasses::staleIterator, "K7Q.StaleIterator", nullptr,
       "An iterator that is outside its sequence, or whose element is gone."},
      {&ErrorClasses::changed, "K7Q.ChangedDuringIteration", &PyExc_RuntimeError,
       "A sequence that changed while it was iterated."},
      {&ErrorClasses::unknownModule, "K7Q.UnknownModule", &PyExc_ModuleNotFoundError,
       "An import of a package that does not exist."},
      {&ErrorClasses::loadError, "K7Q.LoadError", &PyExc_ImportError,
       "The library of the metamodel is missing or was built for another machine."},
  };
  return guarded(false, [&] {
    for (const auto& row : rows) {
      if (!(sErrors.*row.place)) sErrors.*row.place = owned(makeErrorClass(row)).release();
      const char* shortName = row.name + sizeof("K7Q.") - 1;
      require(PyModule_AddObjectRef, module, shortName, sErrors.*row.place);
    }
    return true;
  });
}

void Entry::waitForTheEnd() noexcept {
  while (true) pause();
}

void dropLast(PyObject* object) {
  Entry entry;
  Py_DECREF(object);
  entry.leave();
}

void raise(PyObject* errorClass, const std::string& text) {
  enter(PyErr_SetObject, errorClass, toStr(text).get());
  throw PythonError();
}

namespace {

void setUnknownName(PyObject* name, std::string_view text) {
  const Reference error = owned(PyObject_CallOneArg, sErrors.unknownName, toStr(text).get());
  // Python suggests a similar name of its own if both `name` and `obj` are set. So only `name` is set.
  require(PyObject_SetAttrString, error.get(), "name", name);
  enter(PyErr_SetObject, sErrors.unknownName, error.get());
}

void setUnknownName(const char* text) {
  try {
    setUnknownName(toStr("").get(), text);
  } catch (const PythonError&) {  // without memory, the MemoryError replaces this error
  }
}

void setError(PyObject* errorClass, const char* text) {
  const Reference message(
      PyUnicode_DecodeUTF8(text, static_cast<Py_ssize_t>(std::char_traits<char>::length(text)), "replace"));
  if (message) enter(PyErr_SetObject, errorClass, message.get());
}

}  // namespace

void raiseUnknownName(PyObject* name, const std::string& text) {
  setUnknownName(name, text);
  throw PythonError();
}

void translateException() {
  try {
    throw;
  } catch (const PythonError&) {
  } catch (const K7Q::WrongType& error) {
    setError(sErrors.wrongType, error.what());
  } catch (const K7Q::OutOfRange& error) {
    setError(sErrors.outOfRange, error.what());
  } catch (const K7Q::WrongValue& error) {
    setError(sErrors.wrongValue, error.what());
  } catch (const K7Q::UnknownName& error) {
    setUnknownName(error.what());
  } catch (const std::bad_alloc&) {
    PyErr_NoMemory();
  } catch (const std::exception& error) {
    setError(sErrors.exception, error.what());
  } catch (...) {
    setError(sErrors.exception, "an exception of unknown kind was thrown by native code");
  }
}

void raiseWithNote(const std::string& note) {
  translateException();
  if (note.empty()) throw PythonError();
  PyObject* type = nullptr;
  PyObject* value = nullptr;
  PyObject* traceback = nullptr;
  PyErr_Fetch(&type, &value, &traceback);
  enter(PyErr_NormalizeException, &type, &value, &traceback);
  const Reference added(enter(PyObject_CallMethod, value, "add_note", "O", toStr(note).get()));
  if (!added) enter(PyErr_Clear);  // without memory, the error has no note
  PyErr_Restore(type, value, traceback);
  throw PythonError();
}

std::string toUtf8(PyObject* text) {
  const Reference bytes = owned(PyUnicode_AsEncodedString, text, "utf-8", "backslashreplace");
  return {PyBytes_AS_STRING(bytes.get()), static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.get()))};
}

}  // namespace pyhost
