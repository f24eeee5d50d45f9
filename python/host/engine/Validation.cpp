#include "tarvelon/platform/model/api/Validation.h"

#include "python/host/objects/Functions.h"
#include "python/host/objects/NativeObjects.h"
#include "python/host/objects/Values.h"

namespace pyhost {

namespace {

constexpr const char* kFunction = "validate";

/// The target of a validation: a model with all its objects, or an object with all objects that it contains.
struct Target {
  /// From the first two arguments: the model or object, and whether it is a model.
  explicit Target(Given arguments) : Target(arguments[0], isTrue(arguments[1])) {}
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

const char* nameOf(K7Q::Severity severity) noexcept {
  return severity == K7Q::Severity::Error ? "error" : "warning";
}

Reference toTuple(const K7Q::Problem& problem, bool isImmutable) {
  const Reference object = fromModelObject(problem.object, isImmutable);
  const Reference path = toStr(problem.path);
  const Reference property = toStr(problem.property);
  const Reference rule = toKey(problem.rule);
  const Reference message = toStr(problem.message);
  return owned(Py_BuildValue, "(OOOOsO)", object.get(), path.get(), property.get(), rule.get(),
               nameOf(problem.severity), message.get());
}

PyObject* validate(Given arguments) {
  const Target target(arguments);
  const auto problems = target.problems();
  return makeList(problems.size(),
                  [&](std::size_t index) { return toTuple(problems[index], target.isImmutable); })
      .release();
}

PyObject* validatedObjects(Given arguments) {
  const Target target(arguments);
  if (!PyUnicode_Check(arguments[2])) {
    raise(errors().wrongType,
          "validatedObjects: expected the name of a class, got " + describePython(arguments[2]));
  }
  const auto objects = target.objectsOf(toUtf8(arguments[2]));
  return makeList(objects.size(),
                  [&](std::size_t index) { return fromModelObject(objects[index], target.isImmutable); })
      .release();
}

PyObject* validationRules(Given /*none*/) {
  Reference list = owned(PyList_New, 0);
  for (const K7Q::RuleDescription& rule : K7Q::validationRules()) {
    const bool isError = rule.severity == K7Q::Severity::Error;
    const Reference tuple = owned(Py_BuildValue, "(sss)", rule.id, isError ? "error" : "warning", rule.title);
    require(PyList_Append, list.get(), tuple.get());
  }
  return list.release();
}

PyObject* pathOf(Given arguments) {
  return toStr(K7Q::pathOf(toModelObject(arguments[0], "pathOf"))).release();
}

constexpr FunctionRow kFunctions[] = {
    {"validate", 2, validate, "The problems of a model (True) or an object (False), as tuples."},
    {"validatedObjects", 3, validatedObjects,
     "The objects that validate() checks, of a class with that full name."},
    {"validationRules", 0, validationRules, "The library's rules: id, severity, title."},
    {"pathOf", 1, pathOf, "The path of an object in its model."},
};

}  // namespace

PyMethodDef* validationFunctions() noexcept { return Published<kFunctions>::methods(); }

}  // namespace pyhost
