#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <Python.h>

/// The host shows the object system to CPython: packages as modules, classes as types, values as Python
/// values.
///
/// Every function here is called with the interpreter's lock held. Functions that return a PyObject* return a
/// new reference unless they say "borrowed". Inside, failures are C++ exceptions; each function that the
/// interpreter calls is wrapped in guarded() (Errors.h), so that none of them gets out.
namespace pyhost {

/// Thrown where the interpreter holds an error already; unwinds to guarded().
struct PythonError {};

/// Where a thread ends that the interpreter has given up: it waits until the process is gone.
///
/// At its end the interpreter takes a daemon thread down wherever that waits for the lock, in Python code
/// that we have called too, by an unwinding. Our destructors would then run without the lock, and an
/// unwinding that meets a noexcept ends the process. So none reaches a function of ours: the first destructor
/// it meets is this one. Not a catch, since none may catch what is no exception while another one is being
/// handled.
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

/// Calls a function of the interpreter that may run Python code or let another thread run. These functions
/// throw nothing. REQUIRES: a caller that is not noexcept.
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

/// Lets go of the last reference, which may run Python code as well. Out of line and without a noexcept,
/// which would let the compiler leave out the entry.
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

/// What a call of the interpreter gave, or an unwinding if it failed.
inline Reference owned(PyObject* made) {
  if (!made) throw PythonError();
  return Reference(made);
}
inline void require(int status) {
  if (status < 0) throw PythonError();
}
/// The same for a function of the interpreter that is called here with its arguments.
template <class Function, class... Arguments, class = std::invoke_result_t<Function, Arguments...>>
Reference owned(Function function, Arguments... arguments) {
  return owned(enter(function, arguments...));
}
template <class Function, class... Arguments, class = std::invoke_result_t<Function, Arguments...>>
void require(Function function, Arguments... arguments) {
  require(enter(function, arguments...));
}

/// A list of as many elements as `make` gives, index by index. The collector, and through it Python code,
/// sees it when it is full: a list with places that are empty crashes those who read it.
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
/// The same, interned: for keys that attribute access looks up.
inline Reference toKey(std::string_view utf8) {
  PyObject* key = toStr(utf8).release();
  PyUnicode_InternInPlace(&key);
  return Reference(key);
}
/// The characters of a str as UTF-8; a lone surrogate shows as its escape.
std::string toUtf8(PyObject* text);

/// Fills what every static type of ours has in common. REQUIRES: `type` is zero-initialised.
inline void prepareType(PyTypeObject& type, const char* name, std::size_t size, const char* doc) noexcept {
  Py_SET_REFCNT(reinterpret_cast<PyObject*>(&type), 1);
  type.tp_name = name;
  type.tp_doc = doc;
  type.tp_basicsize = static_cast<Py_ssize_t>(size);
  type.tp_flags = Py_TPFLAGS_DEFAULT;
}

/// A method in the form that a method table wants: one for (self, args, nargs).
using FastFunction = PyObject* (*)(PyObject*, PyObject* const*, Py_ssize_t);
inline PyMethodDef fastMethod(const char* name, FastFunction function, const char* doc) noexcept {
  return {name, reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(function)), METH_FASTCALL, doc};
}

}  // namespace pyhost
