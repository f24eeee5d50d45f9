#pragma once

#include <exception>
#include <string>

#include "python/host/Reference.h"

namespace pyhost {

/// The exception classes of the module `K7Q`. Each is a `K7Q.Exception` and, but for the first, also the
/// built-in that Python programs catch for such a fault.
struct ErrorClasses {
  PyObject* exception = nullptr;      ///< K7Q.Exception: what the model says, its text unchanged
  PyObject* wrongType = nullptr;      ///< also TypeError
  PyObject* outOfRange = nullptr;     ///< also OverflowError
  PyObject* wrongValue = nullptr;     ///< also ValueError
  PyObject* unknownName = nullptr;    ///< also AttributeError
  PyObject* outOfBounds = nullptr;    ///< also IndexError
  PyObject* staleIterator = nullptr;  ///< both WrongType and OutOfBounds
  PyObject* changed = nullptr;        ///< also RuntimeError: a sequence changed while it was iterated
  PyObject* unknownModule = nullptr;  ///< also ModuleNotFoundError: an import of a package that there is not
  PyObject* loadError = nullptr;      ///< also ImportError: the library of the metamodel cannot be loaded
};

const ErrorClasses& errors() noexcept;
/// Makes the classes once and shows them in `module`. False with an error set on failure.
bool addErrorClasses(PyObject* module);

/// Raises an error of ours with a UTF-8 text.
[[noreturn]] void raise(PyObject* errorClass, const std::string& text);
/// Raises an unknown name, which an AttributeError keeps besides its text.
[[noreturn]] void raiseUnknownName(PyObject* name, const std::string& text);

/// Inside a handler: makes a Python error of the exception that is being handled.
void translateException();
/// The same, and adds a note, which tracebacks show below the text: what a text that may not change leaves
/// out.
[[noreturn]] void raiseWithNote(const std::string& note);

/// Runs `body`; a failure leaves an error with the interpreter and gives `failure`.
template <class Result, class Body>
Result guarded(Result failure, Body&& body) {
  try {
    return body();
  } catch (...) {
    if (!std::current_exception()) Entry::waitForTheEnd();  // an unwinding that met no Entry
    translateException();
    return failure;
  }
}
template <class Body>
PyObject* guarded(Body&& body) {
  return guarded(static_cast<PyObject*>(nullptr), std::forward<Body>(body));
}

}  // namespace pyhost
