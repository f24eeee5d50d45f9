#include "tarvelon/platform/tarvelon/api/Copy.h"

#include "python/host/NativeObjects.h"
#include "python/host/Values.h"
#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/platform/tarvelon/api/Difference.h"
#include "tarvelon/platform/tarvelon/api/Json.h"

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

/// A model or an object of one.
K7Q::ObjectHandle toModelOrObject(PyObject* value, const char* function) {
  if (isModel(value)) return toModel(value, function);
  return toModelObject(value, function);
}

/// What is changed by a copy must be shown by a class that can change it.
void requireChangeable(PyObject* value, const char* cure) {
  if (!isImmutableView(value)) return;
  raise(errors().exception,
        "clone: " + describePython(value) + " only reads its model and cannot change it; " + cure);
}

/// The name of a property, empty for None.
std::string nameOf(PyObject* value) {
  if (value == Py_None) return {};
  if (PyUnicode_Check(value)) return toUtf8(value);
  raise(errors().wrongType, "clone: expected the name of a property, got " + describePython(value));
}

// The Python layer gives the arguments by position and as many as there are.
PyObject* cloneObject(PyObject* /*module*/, PyObject* const* arguments, Py_ssize_t /*count*/) {
  return guarded([&] {
    const K7Q::ClassObject object = toModelObject(arguments[0], "clone");
    if (arguments[1] == Py_None) {
      requireChangeable(arguments[0], "name the model, clone(model), or an owner, or take asMutable()");
    } else if (isHostObject(arguments[1])) {
      requireChangeable(arguments[1], "take its asMutable()");
    }
    const K7Q::ObjectHandle owner =
        arguments[1] == Py_None ? K7Q::ObjectHandle() : toModelOrObject(arguments[1], "clone");
    const std::string property = nameOf(arguments[2]);
    const Outside outside = arguments[3] == Py_True ? Outside::LeftOut : Outside::Refused;
    return fromModelObject(Tarvelon::metamodel::clone(object, owner, property, outside)).release();
  });
}

PyObject* cloneModel(PyObject* /*module*/, PyObject* model) {
  return guarded([&] {
    const K7Q::Model original = toModel(model, "clone");
    return fromModelObject(Tarvelon::metamodel::cloneModel(original)).release();
  });
}

PyObject* toJson(PyObject* /*module*/, PyObject* const* arguments, Py_ssize_t /*count*/) {
  return guarded([&] {
    const K7Q::ObjectHandle shown = toModelOrObject(arguments[0], "to_json");
    const long indent = PyLong_AsLong(arguments[1]);
    if (indent == -1 && PyErr_Occurred()) throw PythonError();
    return toStr(Tarvelon::metamodel::toJson(shown, static_cast<int>(indent))).release();
  });
}

PyObject* toTuple(const Difference& difference) {
  const auto text = [](std::string_view utf8) { return toStr(utf8).release(); };
  return Py_BuildValue("(iNNNNNNNNNI)", static_cast<int>(difference.kind), text(difference.path),
                       text(difference.cls), text(difference.newPath), text(difference.place),
                       text(difference.newPlace), text(difference.property), text(difference.before),
                       text(difference.after), PyBool_FromLong(difference.isReference ? 1 : 0),
                       difference.objects);
}

PyObject* differences(PyObject* /*module*/, PyObject* const* arguments, Py_ssize_t /*count*/) {
  return guarded([&] {
    const auto found = Tarvelon::metamodel::differences(toModelOrObject(arguments[0], "diff"),
                                                        toModelOrObject(arguments[1], "diff"));
    Reference list = owned(PyList_New(0));
    for (const Difference& difference : found) {
      require(PyList_Append(list.get(), owned(toTuple(difference)).get()));
    }
    return list.release();
  });
}

PyMethodDef gFunctions[] = {
    fastMethod("cloneObject", cloneObject, "cloneObject(object, owner, property, leavesOut)"),
    {"cloneModel", cloneModel, METH_O, "cloneModel(model)"},
    fastMethod("toJson", toJson, "toJson(modelOrObject, indent): negative for one line"),
    fastMethod("differences", differences, "differences(older, newer): a list of tuples"),
    {nullptr, nullptr, 0, nullptr}};

}  // namespace

PyMethodDef* copyFunctions() noexcept { return gFunctions; }

}  // namespace pyhost
