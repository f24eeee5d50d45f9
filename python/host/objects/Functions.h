#pragma once

#include <utility>

#include "python/host/objects/ErrorNotes.h"

/// The functions of the module `_tarvelon_host`. The Python packages put them on models and objects. All
/// arguments are positional. Anybody can call these functions, so the number of arguments is checked here for
/// all of them; each function checks the types of its arguments.
namespace pyhost {

/// A function: its name, its number of arguments, its implementation and its docstring.
struct FunctionRow {
  const char* name;
  std::size_t count;
  PyObject* (*body)(Given arguments);
  const char* doc;
};

[[noreturn]] void refuseCount(const FunctionRow& row, std::size_t given);

/// Converts a table of functions into the array that a Python module expects.
template <const auto& Rows>
class Published {
 public:
  static PyMethodDef* methods() noexcept { return make(std::make_index_sequence<std::size(Rows)>()); }

 private:
  template <std::size_t Index>
  static PyObject* call(PyObject* /*module*/, PyObject* const* arguments, Py_ssize_t count) {
    return guarded([&] {
      constexpr const FunctionRow& row = Rows[Index];
      const Given given(arguments, static_cast<std::size_t>(count));
      if (given.size() != row.count) refuseCount(row, given.size());
      return withNote([&] { return noteOf("", nullptr, given); }, [&] { return row.body(given); });
    });
  }
  template <std::size_t... Indices>
  static PyMethodDef* make(std::index_sequence<Indices...> /*all*/) noexcept {
    static PyMethodDef methods[] = {fastMethod(Rows[Indices].name, call<Indices>, Rows[Indices].doc)...,
                                    {nullptr, nullptr, 0, nullptr}};
    return methods;
  }
};

/// The tables, one for each feature.
PyMethodDef* packageFunctions() noexcept;
PyMethodDef* searchFunctions() noexcept;
PyMethodDef* historyFunctions() noexcept;
PyMethodDef* fileFunctions() noexcept;
PyMethodDef* validationFunctions() noexcept;
PyMethodDef* copyFunctions() noexcept;

}  // namespace pyhost
