#include "tarvelon/platform/model/api/Copy.h"

#include <algorithm>

#include "python/host/objects/Functions.h"
#include "python/host/objects/NativeObjects.h"
#include "python/host/objects/Values.h"
#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/platform/model/api/Difference.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Json.h"

namespace pyhost {

namespace {

using Tarvelon::metamodel::Difference;
using Tarvelon::metamodel::Outside;

bool isModel(PyObject* value) {
  if (!isHostObject(value)) return false;
  const auto info =
      K7Q::DeviantRegistry::getVariantInfo(interfaceOf(value)->getBoundPointer(ruvo::InternedName()));
  return info.object && info.object->cast(K7Q::tagsOf<K7Q::NSInterface::ModelIntf>());
}

/// An upper limit for the indentation; larger values are cut to it.
constexpr long kWidestIndent = 1000;

/// Converts a model or a model object. Raises K7Q.WrongType for other values.
K7Q::Object toModelOrObject(PyObject* value, const char* function) {
  if (isModel(value)) return toModel(value, function);
  return toModelObject(value, function);
}

/// Raises if a copy would change the model through an immutable view.
void requireChangeable(PyObject* value, const char* cure) {
  if (!isImmutableView(value)) return;
  raise(errors().exception,
        "clone: " + describePython(value) + " is an immutable view and cannot change its model; " + cure);
}

/// The name of a property; empty for None.
std::string nameOf(PyObject* value) {
  if (value == Py_None) return {};
  if (PyUnicode_Check(value)) return toUtf8(value);
  raise(errors().wrongType, "clone: expected the name of a property, got " + describePython(value));
}

PyObject* cloneObject(Given arguments) {
  const K7Q::ClassObject object = toModelObject(arguments[0], "clone");
  if (arguments[1] == Py_None) {
    requireChangeable(arguments[0], "give the model or an owner, as in clone(model), or use asMutable()");
  } else if (isHostObject(arguments[1])) {
    requireChangeable(arguments[1], "use its asMutable()");
  }
  const K7Q::Object owner = arguments[1] == Py_None ? K7Q::Object() : toModelOrObject(arguments[1], "clone");
  const std::string property = nameOf(arguments[2]);
  const Outside outside = arguments[3] == Py_True ? Outside::LeftOut : Outside::Refused;
  const Tarvelon::model::Undertaking undertaking;
  return fromModelObject(Tarvelon::metamodel::clone(object, owner, property, outside)).release();
}

PyObject* cloneModel(Given arguments) {
  const K7Q::Model original = toModel(arguments[0], "clone");
  return fromModelObject(Tarvelon::metamodel::cloneModel(original)).release();
}

PyObject* toJson(Given arguments) {
  const K7Q::ObjectHandle shown = toModelOrObject(arguments[0], "to_json");
  const long indent = enter(PyLong_AsLong, arguments[1]);
  if (indent == -1 && PyErr_Occurred()) throw PythonError();
  return toStr(Tarvelon::metamodel::toJson(shown, static_cast<int>(std::min(indent, kWidestIndent))))
      .release();
}

PyObject* toJsonRows(Given arguments) {
  return toStr(Tarvelon::metamodel::toJsonRows(toModelOrObject(arguments[0], "to_dict"))).release();
}

PyObject* toTuple(const Difference& difference) {
  const auto text = [](std::string_view utf8) { return toStr(utf8).release(); };
  return Py_BuildValue("(iNNNNNNNNNI)", static_cast<int>(difference.kind), text(difference.path),
                       text(difference.cls), text(difference.newPath), text(difference.place),
                       text(difference.newPlace), text(difference.property), text(difference.before),
                       text(difference.after), PyBool_FromLong(difference.isReference ? 1 : 0),
                       difference.objects);
}

PyObject* differences(Given arguments) {
  const auto found = Tarvelon::metamodel::differences(toModelOrObject(arguments[0], "diff"),
                                                      toModelOrObject(arguments[1], "diff"));
  Reference list = owned(PyList_New, 0);
  for (const Difference& difference : found) {
    require(PyList_Append, list.get(), owned(toTuple(difference)).get());
  }
  return list.release();
}

constexpr FunctionRow kFunctions[] = {
    {"cloneObject", 4, cloneObject, "cloneObject(object, owner, property, leavesOut): a copy of an object."},
    {"cloneModel", 1, cloneModel, "cloneModel(model): a copy of a model."},
    {"toJson", 2, toJson, "toJson(modelOrObject, indent): a JSON text; on one line if indent is negative."},
    {"toJsonRows", 1, toJsonRows, "toJsonRows(modelOrObject): a JSON text with one row for each object."},
    {"differences", 2, differences, "differences(older, newer): the differences, as a list of tuples."},
};

}  // namespace

PyMethodDef* copyFunctions() noexcept { return Published<kFunctions>::methods(); }

}  // namespace pyhost
