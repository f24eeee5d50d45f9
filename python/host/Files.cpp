#include "tarvelon/platform/files/Files.h"

#include <cstring>

#include "python/host/Errors.h"
#include "python/host/NativeObjects.h"

namespace pyhost {

namespace {

namespace files = Tarvelon::files;

/// Calls a Python callable, and lets a person end the work by the keyboard. Empty for None without a way to
/// wait for.
files::Progress progressOf(PyObject* callable) {
  return [callable](double done) {
    require(PyErr_CheckSignals());
    if (callable == Py_None) return;
    const Reference fraction = owned(PyFloat_FromDouble(done));
    owned(PyObject_CallOneArg(callable, fraction.get()));
  };
}

/// A path as the system has it.
std::filesystem::path pathOf(PyObject* path) {
  PyObject* bytes = nullptr;
  if (!PyUnicode_FSConverter(path, &bytes)) throw PythonError();
  const Reference kept(bytes);
  return {std::string(PyBytes_AS_STRING(bytes), static_cast<std::size_t>(PyBytes_GET_SIZE(bytes)))};
}

Reference toList(const files::Problems& problems) {
  Reference list = owned(PyList_New(0));
  for (const files::Problem& each : problems.kept) {
    const Reference entry = owned(Py_BuildValue("(IIN)", each.line, each.column, toStr(each.text).release()));
    require(PyList_Append(list.get(), entry.get()));
  }
  return list;
}

/// Raises an error class of the module K7Q with a text, after `complete` has added to it.
template <class Complete>
[[noreturn]] void raiseError(const char* name, const char* text, Complete complete) {
  const Reference module = owned(PyImport_ImportModule("K7Q"));
  const Reference cls = owned(PyObject_GetAttrString(module.get(), name));
  const Reference error = owned(PyObject_CallOneArg(cls.get(), toStr(text).get()));
  complete(error.get());
  PyErr_SetObject(cls.get(), error.get());
  throw PythonError();
}

void setAttribute(PyObject* object, const char* name, const Reference& value) {
  require(PyObject_SetAttrString(object, name, value.get()));
}

/// What `body` gives; the errors of files become those of Python.
template <class Body>
PyObject* guardedFiles(PyObject* path, Body body) {
  return guarded([&]() -> PyObject* {
    try {
      return body();
    } catch (const files::WrongFile& error) {
      raiseError("WrongFile", error.what(), [&error](PyObject* raised) {
        const Reference convert = owned(PyObject_GetAttrString(raised, "_fill"));
        const Reference problems = toList(error.problems());
        owned(PyObject_CallFunction(convert.get(), "On", problems.get(),
                                    static_cast<Py_ssize_t>(error.problems().count)));
      });
    } catch (const files::FileError& error) {
      raiseError("FileError", error.what(), [&](PyObject* raised) {
        setAttribute(raised, "errno", owned(PyLong_FromLong(error.number())));
        setAttribute(raised, "strerror", toStr(std::strerror(error.number())));
        setAttribute(raised, "filename", Reference::share(path));
      });
    }
  });
}

PyObject* saveModel(PyObject* /*module*/, PyObject* arguments) {
  PyObject* model = nullptr;
  PyObject* path = nullptr;
  PyObject* progress = nullptr;
  if (!PyArg_ParseTuple(arguments, "OOO:save", &model, &path, &progress)) return nullptr;
  return guardedFiles(path, [&]() -> PyObject* {
    files::save(toModel(model, "save"), pathOf(path), {progressOf(progress), true});
    Py_RETURN_NONE;
  });
}

PyObject* loadModel(PyObject* /*module*/, PyObject* arguments) {
  PyObject* path = nullptr;
  int isLenient = 0;
  PyObject* progress = nullptr;
  if (!PyArg_ParseTuple(arguments, "OpO:load", &path, &isLenient, &progress)) return nullptr;
  return guardedFiles(path, [&]() -> PyObject* {
    const files::Loaded loaded = files::load(pathOf(path), {progressOf(progress), isLenient != 0});
    Reference model = fromModelObject(loaded.model);
    Reference problems = toList(loaded.problems);
    return Py_BuildValue("(NNn)", model.release(), problems.release(),
                         static_cast<Py_ssize_t>(loaded.problems.count));
  });
}

PyObject* saveEcore(PyObject* /*module*/, PyObject* path) {
  return guardedFiles(path, [&]() -> PyObject* {
    files::saveEcore(pathOf(path));
    Py_RETURN_NONE;
  });
}

PyObject* rootsOf(PyObject* /*module*/, PyObject* model) {
  return guarded([&]() -> PyObject* {
    const K7Q::Model handle = toModel(model, "roots");
    const bool isImmutable = isImmutableView(model);
    Reference list = owned(PyList_New(0));
    for (const K7Q::ClassObject& root : files::roots(handle)) {
      require(PyList_Append(list.get(), fromModelObject(root, isImmutable).get()));
    }
    return list.release();
  });
}

PyMethodDef gFunctions[] = {
    {"saveModel", saveModel, METH_VARARGS, "saveModel(model, path, progress): writes a model."},
    {"loadModel", loadModel, METH_VARARGS,
     "loadModel(path, lenient, progress): the model, a list of problems as tuples, how many there are."},
    {"rootsOf", rootsOf, METH_O, "rootsOf(model): a list of the objects that nothing holds."},
    {"saveEcore", saveEcore, METH_O, "saveEcore(path): writes the metamodel."},
    {nullptr, nullptr, 0, nullptr}};

}  // namespace

PyMethodDef* fileFunctions() noexcept { return gFunctions; }

}  // namespace pyhost
