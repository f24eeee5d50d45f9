#include "tarvelon/platform/model/api/Search.h"

#include "python/host/interpreter/Text.h"
#include "python/host/objects/Functions.h"
#include "python/host/objects/NativeObjects.h"
#include "python/host/objects/Values.h"
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
  return makeList(range.size(), [&](std::size_t index) { return convert(range[index]); }).release();
}

/// Converts found objects. They are immutable views if `asked` is an immutable view.
PyObject* objectsOf(const std::vector<K7Q::ClassObject>& objects, PyObject* asked) {
  const bool isImmutable = isImmutableView(asked);
  return listOf(objects,
                [isImmutable](const K7Q::ClassObject& each) { return fromModelObject(each, isImmutable); });
}

PyObject* boundModel(Given arguments) {
  TextBuffer texts;
  const std::u16string name(textOf(arguments[0], texts, "K7Q.Model.find"));
  return fromModelObject(K7Q::ModelCache::instance().find(name)).release();
}

PyObject* find(Given arguments) {
  TextBuffer texts;
  const K7Q::Model asked = toModel(arguments[0], "find");
  const K7Q::ClassObject found = model::find(asked, textOf(arguments[1], texts, "find"));
  return fromModelObject(found, isImmutableView(arguments[0])).release();
}

PyObject* findAll(Given arguments) {
  TextBuffer texts;
  const K7Q::Model asked = toModel(arguments[0], "find_all");
  return objectsOf(model::findAll(asked, textOf(arguments[1], texts, "find_all")), arguments[0]);
}

PyObject* qualifiedName(Given arguments) {
  const K7Q::ClassObject asked = toModelObject(arguments[0], "qualifiedName");
  return owned(toUnicode(model::qualifiedName(asked))).release();
}

/// The table of a class, given as a Python type.
const K7Q::IntrospectiveMethods& classOf(PyObject* value) {
  if (isHostClass(value)) {
    const ruvo::Class* cls = asHostType(reinterpret_cast<PyTypeObject*>(value))->cls;
    if (const auto* found = model::findClass(cls->getFullName().view())) return *found;
  }
  raise(errors().wrongType, "instances: expected a class of the metamodel, got " + describePython(value));
}

PyObject* instances(Given arguments) {
  const K7Q::Model asked = toModel(arguments[0], "instances");
  return objectsOf(model::instances(asked, classOf(arguments[1])), arguments[0]);
}

PyObject* objects(Given arguments) {
  return objectsOf(model::objects(toModel(arguments[0], "objects")), arguments[0]);
}

PyObject* referrers(Given arguments) {
  const K7Q::ClassObject referred = toModelObject(arguments[0], "referrers");
  const bool isImmutable = isImmutableView(arguments[0]);
  return listOf(model::referrers(referred), [isImmutable](const model::Mention& each) {
    const Reference object = fromModelObject(each.object, isImmutable);
    return owned(Py_BuildValue, "(Os)", object.get(), model::hostName(*each.property));
  });
}

constexpr FunctionRow kFunctions[] = {
    {"boundModel", 1, boundModel, "The open model that is bound to a URI; None if there is none."},
    {"find", 2, find, "The first object with a qualified name; None if there is none."},
    {"findAll", 2, findAll, "All objects with a qualified name."},
    {"qualifiedName", 1, qualifiedName,
     "The qualified name of an object: the names of its owners and its own."},
    {"instances", 2, instances, "The objects of a class and of its subclasses."},
    {"objects", 1, objects, "All objects of a model."},
    {"referrers", 1, referrers,
     "The references to an object, as pairs of referring object and property name."},
};

}  // namespace

PyMethodDef* searchFunctions() noexcept { return Published<kFunctions>::methods(); }

}  // namespace pyhost
