#include "tarvelon/platform/tarvelon/api/Validation.h"

#include "python/host/NativeObjects.h"

namespace pyhost {

namespace {

constexpr const char* kFunction = "validate";

/// What to look at: a model with all its objects, or an object with what it holds.
struct Target {
  Target(PyObject* value, bool isModel)
      : model(isModel ? toModel(value, kFunction) : K7Q::Model()),
        object(isModel ? K7Q::ClassObject() : toModelObject(value, kFunction)),
        isImmutable(isImmutableView(value)) {}

  std::vector<K7Q::Problem> problems() const {
    return model.isNull() ? K7Q::validate(object) : K7Q::validate(model);
  }
  std::vector<K7Q::ClassObject> objectsOf(std::string_view className) const {
    return model.isNull() ? K7Q::validatedObjects(object, className)
                          : K7Q::validatedObjects(model, className);
  }

  K7Q::Model model;
  K7Q::ClassObject object;
  bool isImmutable;
};

Reference toText(bool isError) { return toStr(isError ? "error" : "warning"); }

PyObject* validate(PyObject* /*module*/, PyObject* arguments) {
  return guarded([&] {
    PyObject* value = nullptr;
    int isModel = 0;
    if (!PyArg_ParseTuple(arguments, "Op:validate", &value, &isModel)) throw PythonError();
    const Target target(value, isModel != 0);
    const auto problems = target.problems();
    Reference list = owned(PyList_New(static_cast<Py_ssize_t>(problems.size())));
    for (std::size_t index = 0; index < problems.size(); ++index) {
      const K7Q::Problem& each = problems[index];
      Reference tuple = owned(PyTuple_New(6));
      PyTuple_SET_ITEM(tuple.get(), 0, fromModelObject(each.object, target.isImmutable).release());
      PyTuple_SET_ITEM(tuple.get(), 1, toStr(each.path).release());
      PyTuple_SET_ITEM(tuple.get(), 2, toStr(each.property).release());
      PyTuple_SET_ITEM(tuple.get(), 3, toKey(each.rule).release());
      PyTuple_SET_ITEM(tuple.get(), 4, toText(each.severity == K7Q::Severity::Error).release());
      PyTuple_SET_ITEM(tuple.get(), 5, toStr(each.message).release());
      PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(index), tuple.release());
    }
    return list.release();
  });
}

PyObject* validatedObjects(PyObject* /*module*/, PyObject* arguments) {
  return guarded([&] {
    PyObject* value = nullptr;
    int isModel = 0;
    const char* className = nullptr;
    if (!PyArg_ParseTuple(arguments, "Ops:validatedObjects", &value, &isModel, &className))
      throw PythonError();
    const Target target(value, isModel != 0);
    const auto objects = target.objectsOf(className);
    Reference list = owned(PyList_New(static_cast<Py_ssize_t>(objects.size())));
    for (std::size_t index = 0; index < objects.size(); ++index) {
      PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(index),
                      fromModelObject(objects[index], target.isImmutable).release());
    }
    return list.release();
  });
}

PyObject* validationRules(PyObject* /*module*/, PyObject* /*none*/) {
  return guarded([] {
    Reference list = owned(PyList_New(0));
    for (const K7Q::RuleDescription& rule : K7Q::validationRules()) {
      const bool isError = rule.severity == K7Q::Severity::Error;
      const Reference tuple =
          owned(Py_BuildValue("(sss)", rule.id, isError ? "error" : "warning", rule.title));
      require(PyList_Append(list.get(), tuple.get()));
    }
    return list.release();
  });
}

PyObject* pathOf(PyObject* /*module*/, PyObject* value) {
  return guarded([&] { return toStr(K7Q::pathOf(toModelObject(value, "pathOf"))).release(); });
}

PyMethodDef gFunctions[] = {
    {"validate", validate, METH_VARARGS, "The problems of a model (True) or an object (False), as tuples."},
    {"validatedObjects", validatedObjects, METH_VARARGS,
     "What validate() looks at, of a class given by its full name."},
    {"validationRules", validationRules, METH_NOARGS, "The library's rules: id, severity, title."},
    {"pathOf", pathOf, METH_O, "Where an object stands."},
    {nullptr, nullptr, 0, nullptr}};

}  // namespace

PyMethodDef* validationFunctions() noexcept { return gFunctions; }

}  // namespace pyhost
