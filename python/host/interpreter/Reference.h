#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <Python.h>

/// The bridge between the object system and CPython: packages become modules, classes become types, values
/// become Python values.
///
/// Every function here must be called with the GIL held. A function that returns a PyObject* returns a new
/// reference, unless its comment says "borrowed". Failures are C++ exceptions. Each function that the
/// interpreter calls is wrapped in guarded() (Errors.h), so that no exception leaves it.
namespace pyhost {

/// Thrown when a Python error is already set. guarded() catches it.
struct PythonError {};

/// A guard for one call of the interpreter. If the interpreter ends the thread during the call, the guard
/// blocks the thread forever.
///
/// When the interpreter shuts down, it ends the daemon threads that wait for the GIL: it unwinds their
/// stacks. Such a thread may be waiting in Python code that this library has called. The destructors of this
/// library would then run without the GIL, and an unwinding that reaches a noexcept function ends the
/// process. So the function that makes the call has an Entry on its stack. The destructor of the Entry runs
/// first and never returns. A catch block cannot do this: the unwinding is not an exception, and it must not
/// be caught while another exception is being handled.
class Entry {
 public:
  Entry() noexcept = default;
  Entry(const Entry&) = delete;
  Entry& operator=(const Entry&) = delete;
  ~Entry() {
    if (!mHasReturned) waitForTheEnd();
  }
  void leave() noexcept { mHasReturned = true; }
  [[noreturn]] static void waitForTheEnd() noexcept;

 private:
  bool mHasReturned = false;
};

/// Calls a function of the interpreter that may run Python code or switch threads. Such functions do not
/// throw. REQUIRES: the caller is not noexcept.
template <class Function, class... Arguments>
auto enter(Function function, Arguments... arguments) {
  Entry entry;
  if constexpr (std::is_void_v<std::invoke_result_t<Function, Arguments...>>) {
    function(arguments...);
    entry.leave();
  } else {
    const auto result = function(arguments...);
    entry.leave();
    return result;
  }
}

/// Releases the last reference on an object, which may run Python code. Not inline and not noexcept:
/// otherwise the compiler may remove the Entry.
void dropLast(PyObject* object);
inline void drop(PyObject* object) noexcept {
  if (!object) return;
  if (Py_REFCNT(object) == 1) {
    dropLast(object);
  } else {
    Py_DECREF(object);
  }
}

/// An owning reference.
class Reference {
 public:
  Reference() noexcept = default;
  explicit Reference(PyObject* owned) noexcept : mObject(owned) {}
  Reference(Reference&& other) noexcept : mObject(std::exchange(other.mObject, nullptr)) {}
  Reference& operator=(Reference&& other) noexcept {
    std::swap(mObject, other.mObject);
    return *this;
  }
  Reference(const Reference&) = delete;
  Reference& operator=(const Reference&) = delete;
  ~Reference() { drop(mObject); }

  static Reference share(PyObject* borrowed) noexcept { return Reference(Py_XNewRef(borrowed)); }
  PyObject* get() const noexcept { return mObject; }
  PyObject* release() noexcept { return std::exchange(mObject, nullptr); }
  explicit operator bool() const noexcept { return mObject != nullptr; }

 private:
  PyObject* mObject = nullptr;
};

/// Takes over a new reference that a Python function has returned; throws PythonError if it is null.
inline Reference owned(PyObject* made) {
  if (!made) throw PythonError();
  return Reference(made);
}
inline void require(int status) {
  if (status < 0) throw PythonError();
}
/// Calls a Python function through enter() and takes over its result.
template <class Function, class... Arguments, class = std::invoke_result_t<Function, Arguments...>>
Reference owned(Function function, Arguments... arguments) {
  return owned(enter(function, arguments...));
}
template <class Function, class... Arguments, class = std::invoke_result_t<Function, Arguments...>>
void require(Function function, Arguments... arguments) {
  require(enter(function, arguments...));
}

/// A list of `count` elements; `make(index)` makes each one. The list is hidden from the garbage collector
/// until it is complete, because Python code that reads a list with empty places crashes.
template <class Make>
Reference makeList(std::size_t count, Make make) {
  Reference list = owned(PyList_New, static_cast<Py_ssize_t>(count));
  PyObject_GC_UnTrack(list.get());
  for (std::size_t index = 0; index < count; ++index) {
    PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(index), Reference(make(index)).release());
  }
  PyObject_GC_Track(list.get());
  return list;
}

/// A str from UTF-8.
inline Reference toStr(std::string_view utf8) {
  return owned(PyUnicode_DecodeUTF8(utf8.data(), static_cast<Py_ssize_t>(utf8.size()), "replace"));
}
/// An interned str from UTF-8, for keys of attribute look-up.
inline Reference toKey(std::string_view utf8) {
  PyObject* key = toStr(utf8).release();
  PyUnicode_InternInPlace(&key);
  return Reference(key);
}
/// The characters of a str as UTF-8. A lone surrogate becomes an escape sequence.
std::string toUtf8(PyObject* text);

/// Fills the members that all our static types have in common. REQUIRES: `type` is zero-initialised.
inline void prepareType(PyTypeObject& type, const char* name, std::size_t size, const char* doc) noexcept {
  Py_SET_REFCNT(reinterpret_cast<PyObject*>(&type), 1);
  type.tp_name = name;
  type.tp_doc = doc;
  type.tp_basicsize = static_cast<Py_ssize_t>(size);
  type.tp_flags = Py_TPFLAGS_DEFAULT;
}

/// A method with the signature (self, args, nargs), and its entry for a method table.
using FastFunction = PyObject* (*)(PyObject*, PyObject* const*, Py_ssize_t);
inline PyMethodDef fastMethod(const char* name, FastFunction function, const char* doc) noexcept {
  return {name, reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(function)), METH_FASTCALL, doc};
}

}  // namespace pyhost
