#pragma once

#include <utility>

#include "python/host/InHand.h"

/// The functions of the module `_tarvelon_host`, which the Python packages put on models and objects. They
/// are called by position, and anybody can call them: how many arguments there are is checked here, for all
/// of them, and what each argument is by the function.
namespace pyhost {

/// A function: its name, how many arguments it takes, and what it does with so many.
struct FunctionRow {
  const char* name;
  std::size_t count;
  PyObject* (*body)(Given arguments);
  const char* doc;
};

[[noreturn]] void refuseCount(const FunctionRow& row, std::size_t given);

/// The functions of a table in the form that a module wants.
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
      return noting([&] { return noteOf("", nullptr, given); }, [&] { return row.body(given); });
    });
  }
  template <std::size_t... Indices>
  static PyMethodDef* make(std::index_sequence<Indices...> /*all*/) noexcept {
    static PyMethodDef methods[] = {fastMethod(Rows[Indices].name, call<Indices>, Rows[Indices].doc)...,
                                    {nullptr, nullptr, 0, nullptr}};
    return methods;
  }
};

/// The tables, by feature.
PyMethodDef* packageFunctions() noexcept;
PyMethodDef* searchFunctions() noexcept;
PyMethodDef* historyFunctions() noexcept;
PyMethodDef* fileFunctions() noexcept;
PyMethodDef* validationFunctions() noexcept;
PyMethodDef* copyFunctions() noexcept;

}  // namespace pyhost
