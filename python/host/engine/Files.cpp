#include "tarvelon/platform/files/Files.h"

#include <cstring>

#include "python/host/interpreter/Errors.h"
#include "python/host/objects/Functions.h"
#include "python/host/objects/NativeObjects.h"

namespace pyhost {

namespace {

namespace files = Tarvelon::files;

/// A progress function that also lets the user interrupt the work with the keyboard. It calls `callable` with
/// the fraction done, unless `callable` is None.
files::Progress progressOf(PyObject* callable) {
  return [callable](double done) {
    require(PyErr_CheckSignals);
    if (callable == Py_None) return;
    const Reference fraction = owned(PyFloat_FromDouble, done);
    owned(PyObject_CallOneArg, callable, fraction.get());
  };
}

/// Converts a path as the operating system functions of Python do.
std::filesystem::path pathOf(PyObject* path) {
  PyObject* bytes = nullptr;
  if (enter(PyUnicode_FSConverter, path, &bytes) == 0) throw PythonError();
  const Reference kept(bytes);
  return {std::string(PyBytes_AS_STRING(bytes), static_cast<std::size_t>(PyBytes_GET_SIZE(bytes)))};
}

Reference pathStr(const std::filesystem::path& path) {
  const std::string& text = path.native();
  return owned(PyUnicode_DecodeFSDefaultAndSize, text.data(), static_cast<Py_ssize_t>(text.size()));
}

Reference pathList(const std::vector<std::filesystem::path>& paths) {
  Reference list = owned(PyList_New, 0);
  for (const std::filesystem::path& path : paths) require(PyList_Append, list.get(), pathStr(path).get());
  return list;
}

Reference toList(const files::Problems& problems) {
  Reference list = owned(PyList_New, 0);
  for (const files::Problem& each : problems.kept) {
    const Reference entry = owned(Py_BuildValue, "(IIN)", each.line, each.column, toStr(each.text).release());
    require(PyList_Append, list.get(), entry.get());
  }
  return list;
}

/// Raises the exception class `name` of the module K7Q. `complete` may add attributes to the exception.
template <class Complete>
[[noreturn]] void raiseError(const char* name, const char* text, Complete complete) {
  const Reference module = owned(PyImport_ImportModule, "K7Q");
  const Reference cls = owned(PyObject_GetAttrString, module.get(), name);
  const Reference error = owned(PyObject_CallOneArg, cls.get(), toStr(text).get());
  complete(error.get());
  enter(PyErr_SetObject, cls.get(), error.get());
  throw PythonError();
}

void setAttribute(PyObject* object, const char* name, const Reference& value) {
  require(PyObject_SetAttrString, object, name, value.get());
}

/// Calls `body` and returns its result. Converts errors of files into Python exceptions.
template <class Body>
PyObject* withFileErrors(PyObject* path, Body body) {
  try {
    return body();
  } catch (const files::WrongFile& error) {
    raiseError("WrongFile", error.what(), [&error](PyObject* raised) {
      const Reference convert = owned(PyObject_GetAttrString, raised, "_fill");
      const Reference problems = toList(error.problems());
      owned(PyObject_CallFunction, convert.get(), "On", problems.get(),
            static_cast<Py_ssize_t>(error.problems().count));
    });
  } catch (const files::FileError& error) {
    raiseError("FileError", error.what(), [&](PyObject* raised) {
      setAttribute(raised, "errno", owned(PyLong_FromLong, error.number()));
      setAttribute(raised, "strerror", toStr(std::strerror(error.number())));
      setAttribute(raised, "filename", Reference::share(path));
    });
  }
}

PyObject* saveModel(Given arguments) {
  PyObject* path = arguments[1];
  return withFileErrors(path, [&]() -> PyObject* {
    files::SaveOptions options;
    options.progress = progressOf(arguments[2]);
    if (arguments[3] != Py_None) options.release = toUtf8(arguments[3]);
    options.isLenient = isTrue(arguments[4]);
    files::save(toModel(arguments[0], "save"), pathOf(path), options);
    Py_RETURN_NONE;
  });
}

PyObject* saveBack(Given arguments) {
  return withFileErrors(Py_None, [&]() -> PyObject* {
    files::SaveOptions options;
    options.progress = progressOf(arguments[1]);
    options.isLenient = isTrue(arguments[2]);
    return pathList(files::saveBack(toModel(arguments[0], "save"), options)).release();
  });
}

PyObject* loadModel(Given arguments) {
  PyObject* path = arguments[0];
  return withFileErrors(path, [&]() -> PyObject* {
    const files::LoadOptions options{progressOf(arguments[2]), isTrue(arguments[1])};
    if (!PyList_Check(path)) return fromModelObject(files::load(pathOf(path), options).model).release();
    std::vector<std::filesystem::path> paths;
    for (Py_ssize_t index = 0; index < PyList_GET_SIZE(path); ++index)
      paths.push_back(pathOf(PyList_GET_ITEM(path, index)));
    return fromModelObject(files::load(paths, options).model).release();
  });
}

/// Calls `ofModel` for a model and `ofObject` for an object, and converts what they return to a list of
/// tuples.
template <class OfModel, class OfObject>
PyObject* keptContent(PyObject* asked, const char* function, OfModel ofModel, OfObject ofObject) {
  const std::vector<files::KeptContent> found =
      isModel(asked) ? ofModel(toModel(asked, function)) : ofObject(toModelObject(asked, function));
  Reference list = owned(PyList_New, 0);
  for (const files::KeptContent& each : found) {
    const Reference entry =
        owned(Py_BuildValue, "(NNNNNIN)", toStr(each.tag).release(), toStr(each.name).release(),
              toStr(each.path).release(), toStr(each.dest).release(), pathStr(each.file).release(), each.line,
              toStr(each.xml).release());
    require(PyList_Append, list.get(), entry.get());
  }
  return list.release();
}

PyObject* foreignOf(Given arguments) {
  return keptContent(
      arguments[0], "foreign", [](const K7Q::Model& model) { return files::foreign(model); },
      [](const K7Q::ClassObject& object) { return files::foreign(object); });
}

PyObject* unresolvedOf(Given arguments) {
  return keptContent(
      arguments[0], "unresolved", [](const K7Q::Model& model) { return files::unresolved(model); },
      [](const K7Q::ClassObject& object) { return files::unresolved(object); });
}

PyObject* filesOf(Given arguments) {
  return pathList(files::filesOf(toModel(arguments[0], "files"))).release();
}

PyObject* fileOf(Given arguments) {
  return pathStr(files::fileOf(toModelObject(arguments[0], "file"))).release();
}

PyObject* problemsOf(Given arguments) {
  const files::Problems& problems = files::problems(toModel(arguments[0], "problems"));
  return owned(Py_BuildValue, "(On)", toList(problems).get(), static_cast<Py_ssize_t>(problems.count))
      .release();
}

PyObject* saveEcore(Given arguments) {
  return withFileErrors(arguments[0], [&]() -> PyObject* {
    files::saveEcore(pathOf(arguments[0]));
    Py_RETURN_NONE;
  });
}

PyObject* rootsOf(Given arguments) {
  const K7Q::Model handle = toModel(arguments[0], "roots");
  const bool isImmutable = isImmutableView(arguments[0]);
  Reference list = owned(PyList_New, 0);
  for (const K7Q::ClassObject& root : files::roots(handle)) {
    require(PyList_Append, list.get(), fromModelObject(root, isImmutable).get());
  }
  return list.release();
}

constexpr FunctionRow kFunctions[] = {
    {"saveModel", 5, saveModel,
     "saveModel(model, path, progress, release, lenient): writes a model to a file."},
    {"saveBack", 3, saveBack,
     "saveBack(model, progress, lenient): writes a model back to its files; the paths of those that "
     "changed."},
    {"loadModel", 3, loadModel,
     "loadModel(path, lenient, progress): a new model with the contents of a file, or of a list of files."},
    {"foreignOf", 1, foreignOf,
     "foreignOf(model or object): what its files have that has no class, as a list of tuples."},
    {"unresolvedOf", 1, unresolvedOf,
     "unresolvedOf(model or object): the references without a target, as a list of tuples."},
    {"filesOf", 1, filesOf, "filesOf(model): the paths of the files from which it was loaded."},
    {"fileOf", 1, fileOf, "fileOf(object): the path of its file; an empty text if there is none."},
    {"problemsOf", 1, problemsOf,
     "problemsOf(model): the problems of its file, as a list of tuples, and their number."},
    {"rootsOf", 1, rootsOf, "rootsOf(model): a list of the objects without an owner."},
    {"saveEcore", 1, saveEcore, "saveEcore(path): writes the metamodel as an Ecore file."},
};

}  // namespace

PyMethodDef* fileFunctions() noexcept { return Published<kFunctions>::methods(); }

}  // namespace pyhost
