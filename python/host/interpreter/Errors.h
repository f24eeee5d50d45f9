#pragma once

#include <exception>
#include <string>

#include "python/host/interpreter/Reference.h"

namespace pyhost {

/// The exception classes of the module `K7Q`. All are subclasses of `K7Q.Exception`; the others are also
/// subclasses of the built-in exception for the same kind of error.
struct ErrorClasses {
  PyObject* exception = nullptr;      ///< K7Q.Exception: an error of the model, with its text
  PyObject* wrongType = nullptr;      ///< also TypeError
  PyObject* outOfRange = nullptr;     ///< also OverflowError
  PyObject* wrongValue = nullptr;     ///< also ValueError
  PyObject* unknownName = nullptr;    ///< also AttributeError
  PyObject* outOfBounds = nullptr;    ///< also IndexError
  PyObject* staleIterator = nullptr;  ///< both WrongType and OutOfBounds
  PyObject* changed = nullptr;        ///< also RuntimeError: a sequence changed while it was iterated
  PyObject* unknownModule = nullptr;  ///< also ModuleNotFoundError: the package of an import does not exist
  PyObject* loadError = nullptr;      ///< also ImportError: the library of the metamodel cannot be loaded
};

const ErrorClasses& errors() noexcept;
/// Creates the classes on the first call and adds them to `module`. Returns false with a Python error set on
/// failure.
bool addErrorClasses(PyObject* module);

/// Raises an exception of one of these classes with a UTF-8 text.
[[noreturn]] void raise(PyObject* errorClass, const std::string& text);
/// Raises K7Q.UnknownName. The exception's attribute `name` is `name`, as for an AttributeError.
[[noreturn]] void raiseUnknownName(PyObject* name, const std::string& text);

/// Sets the Python error that corresponds to the current C++ exception. REQUIRES: called inside a catch
/// block.
void translateException();
/// Like translateException(), and adds a note, which tracebacks show below the text. For details that cannot
/// go into the text itself, because the text is fixed.
[[noreturn]] void raiseWithNote(const std::string& note);

/// Calls `body`. If it throws, sets the Python error and returns `failure`.
template <class Result, class Body>
Result guarded(Result failure, Body&& body) {
  try {
    return body();
  } catch (...) {
    // No exception: the interpreter ends this thread, and no Entry has stopped it (Reference.h).
    if (!std::current_exception()) Entry::waitForTheEnd();
    translateException();
    return failure;
  }
}
template <class Body>
PyObject* guarded(Body&& body) {
  return guarded(static_cast<PyObject*>(nullptr), std::forward<Body>(body));
}

}  // namespace pyhost
