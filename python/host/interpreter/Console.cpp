#include "python/host/interpreter/Console.h"

#include "tarvelon/boundary/ut/Memory.h"

namespace pyhost {

namespace {

bool gFailed = false;

void print(const char* text, std::size_t length) {
  if (!Py_IsInitialized()) return;
  PyObject* stream = PySys_GetObject("stdout");
  if (!stream || stream == Py_None || gFailed) return;
  const Reference shared = Reference::share(stream);
  const Reference shown(PyUnicode_DecodeUTF8(text, static_cast<Py_ssize_t>(length), "replace"));
  gFailed = !shown || enter(PyFile_WriteObject, shown.get(), stream, Py_PRINT_RAW) < 0;
}

}  // namespace

void redirectConsole() noexcept { utSetPrintSink(print); }

void requirePrinted() {
  if (!gFailed) return;
  gFailed = false;
  if (PyErr_Occurred()) throw PythonError();
}

}  // namespace pyhost
