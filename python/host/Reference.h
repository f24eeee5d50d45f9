#pragma once

#include <string>
#include <string_view>
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
  ~Reference() { Py_XDECREF(mObject); }

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
inline PyMethodDef plainMethod(const char* name, PyCFunction function, const char* doc) noexcept {
  return {name, function, METH_NOARGS, doc};
}

}  // namespace pyhost
