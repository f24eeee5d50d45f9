#include "tarvelon/platform/tarvelon/api/Search.h"

#include "python/host/NativeObjects.h"
#include "python/host/Text.h"
#include "python/host/Values.h"
#include "tarvelon/boundary/k7q/ModelCache.h"

namespace pyhost {

namespace {

namespace model = Tarvelon::model;

std::u16string_view textOf(PyObject* value, TextBuffer& texts, const char* function) {
  if (!PyUnicode_Check(value)) {
    raise(errors().wrongType, std::string(function) + ": expected a str, got " + describePython(value));
  }
  try {
    return texts.convert(value);
  } catch (const RefusedText& refused) {
    raiseRefused(refused, value, std::string(function) + ": ");
  }
}

template <class Range, class Convert>
PyObject* listOf(const Range& range, Convert convert) {
  Reference list = owned(PyList_New(static_cast<Py_ssize_t>(range.size())));
  Py_ssize_t index = 0;
  for (const auto& each : range) PyList_SET_ITEM(list.get(), index++, convert(each).release());
  return list.release();
}

/// What is found in an immutable view is immutable as well.
PyObject* objectsOf(const std::vector<K7Q::ClassObject>& objects, PyObject* asked) {
  const bool isImmutable = isImmutableView(asked);
  return listOf(objects,
                [isImmutable](const K7Q::ClassObject& each) { return fromModelObject(each, isImmutable); });
}

PyObject* boundModel(PyObject* /*module*/, PyObject* uri) {
  return guarded([&] {
    TextBuffer texts;
    const std::u16string name(textOf(uri, texts, "K7Q.Model.find"));
    return fromModelObject(K7Q::ModelCache::instance().find(name)).release();
  });
}

PyObject* find(PyObject* /*module*/, PyObject* const* arguments, Py_ssize_t count) {
  return guarded([&] {
    requireArguments(count, 2, "find");
    TextBuffer texts;
    const K7Q::Model asked = toModel(arguments[0], "find");
    const K7Q::ClassObject found = model::find(asked, textOf(arguments[1], texts, "find"));
    return fromModelObject(found, isImmutableView(arguments[0])).release();
  });
}

PyObject* findAll(PyObject* /*module*/, PyObject* const* arguments, Py_ssize_t count) {
  return guarded([&] {
    requireArguments(count, 2, "find_all");
    TextBuffer texts;
    const K7Q::Model asked = toModel(arguments[0], "find_all");
    return objectsOf(model::findAll(asked, textOf(arguments[1], texts, "find_all")), arguments[0]);
  });
}

PyObject* qualifiedName(PyObject* /*module*/, PyObject* object) {
  return guarded([&] {
    const K7Q::ClassObject asked = toModelObject(object, "qualifiedName");
    return owned(toUnicode(model::qualifiedName(asked))).release();
  });
}

/// The table of a class that is given as a Python type.
const K7Q::IntrospectiveMethods& classOf(PyObject* value) {
  if (Py_TYPE(value) == &hostMetaType && asHostType(reinterpret_cast<PyTypeObject*>(value))->cls) {
    const auto* cls = asHostType(reinterpret_cast<PyTypeObject*>(value))->cls;
    if (const auto* found = model::findClass(cls->getFullName().view())) return *found;
  }
  raise(errors().wrongType, "instances: expected a class of the metamodel, got " + describePython(value));
}

PyObject* instances(PyObject* /*module*/, PyObject* const* arguments, Py_ssize_t count) {
  return guarded([&] {
    requireArguments(count, 2, "instances");
    const K7Q::Model asked = toModel(arguments[0], "instances");
    return objectsOf(model::instances(asked, classOf(arguments[1])), arguments[0]);
  });
}

PyObject* objects(PyObject* /*module*/, PyObject* asked) {
  return guarded([&] { return objectsOf(model::objects(toModel(asked, "objects")), asked); });
}

PyObject* referrers(PyObject* /*module*/, PyObject* asked) {
  return guarded([&] {
    const K7Q::ClassObject referred = toModelObject(asked, "referrers");
    const bool isImmutable = isImmutableView(asked);
    return listOf(model::referrers(referred), [isImmutable](const model::Mention& each) {
      const Reference object = fromModelObject(each.object, isImmutable);
      return owned(Py_BuildValue("(Os)", object.get(), model::hostName(*each.property)));
    });
  });
}

PyMethodDef gFunctions[] = {
    {"boundModel", boundModel, METH_O, "The open model of a URI, None if there is none."},
    fastMethod("find", find, "The first object of a qualified name, None if there is none."),
    fastMethod("findAll", findAll, "All objects of a qualified name."),
    {"qualifiedName", qualifiedName, METH_O, "The names of an object and of its holders."},
    fastMethod("instances", instances, "The objects of a class and of those below it."),
    {"objects", objects, METH_O, "All objects of a model."},
    {"referrers", referrers, METH_O, "Who refers to an object: pairs of object and property name."},
    {nullptr, nullptr, 0, nullptr}};

}  // namespace

PyMethodDef* searchFunctions() noexcept { return gFunctions; }

}  // namespace pyhost
