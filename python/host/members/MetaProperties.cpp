#include "python/host/members/MetaProperties.h"

#include <algorithm>
#include <vector>

#include "python/host/objects/Values.h"
#include "tarvelon/boundary/k7q/PropertyRecords.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace pyhost {

PyTypeObject metaPropertiesType{};

namespace {

using K7Q::mi::MetaPropertyEntry;

bool isEntry(const ruvo::RVOMethodInfo* record) noexcept {
  return dynamic_cast<const MetaPropertyEntry*>(record) != nullptr;
}

ruvo::Class& classOf(PyObject* list) { return *typeOf(list)->cls; }

Py_ssize_t length(PyObject* list) {
  return guarded(Py_ssize_t{-1}, [&] {
    const auto records = classOf(list).methods();
    return static_cast<Py_ssize_t>(std::count_if(records.begin(), records.end(), isEntry));
  });
}

/// Calls the static method of that name and returns its result.
Reference describe(ruvo::Class& cls, std::string_view name) {
  return Reference(toPython(ruvo::callStatic(cls, name, {})));
}

Reference describeAll(PyObject* list) {
  ruvo::Class& cls = classOf(list);
  Reference all = owned(PyList_New, 0);
  for (const auto* record : cls.methods()) {
    if (isEntry(record)) require(PyList_Append, all.get(), describe(cls, record->getName().view()).get());
  }
  return all;
}

PyObject* iterate(PyObject* list) {
  return guarded([&] { return owned(PyObject_GetIter, describeAll(list).get()).release(); });
}

bool hasEntry(ruvo::Class& cls, std::string_view name) {
  const auto records = cls.methods();
  return std::any_of(records.begin(), records.end(),
                     [&](const auto* record) { return isEntry(record) && record->getName().view() == name; });
}

int contains(PyObject* list, PyObject* value) {
  return guarded(-1, [&] {
    if (PyUnicode_Check(value)) return hasEntry(classOf(list), toUtf8(value)) ? 1 : 0;
    const int found = enter(PySequence_Contains, describeAll(list).get(), value);
    require(found);
    return found;
  });
}

PyObject* subscript(PyObject* list, PyObject* name) {
  return guarded([&] {
    ruvo::Class& cls = classOf(list);
    const std::string shown(shownName(cls));
    if (!PyUnicode_Check(name)) {
      raise(errors().wrongType,
            shown + "[]: expected the name of a property as str, got " + describePython(name));
    }
    const std::string text = toUtf8(name);
    if (hasEntry(cls, text)) return describe(cls, text).release();
    const std::string nearest = cls.nearestMember(text);
    raiseUnknownName(name, shown + " has no property " + ruvo::quotedName(text) +
                               (nearest.empty() ? "" : "; did you mean '" + nearest + "'?"));
  });
}

PySequenceMethods gSequence{};
PyMappingMethods gMapping{};

}  // namespace

bool isMetaProperties(ruvo::Class& cls) {
  const auto records = cls.methods();
  return !records.empty() && isEntry(records.front());
}

void readyMetaPropertiesType() {
  gSequence.sq_contains = contains;
  gMapping.mp_length = length;
  gMapping.mp_subscript = subscript;
  PyTypeObject& type = metaPropertiesType;
  prepareType(type, "_tarvelon_host.MetaProperties", sizeof(HostObject),
              "The result of MetaProperty(): the descriptions of a class's own and inherited properties. "
              "They are in the order of the class's methods, and can also be looked up by name.");
  Py_SET_TYPE(reinterpret_cast<PyObject*>(&type), &hostMetaType);
  type.tp_base = &hostObjectType;
  type.tp_flags |= Py_TPFLAGS_BASETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION;
  type.tp_dealloc = deallocatorOf(TypeKind::MetaProperties);
  type.tp_iter = iterate;
  type.tp_as_sequence = &gSequence;
  type.tp_as_mapping = &gMapping;
  require(PyType_Ready, &type);
}

}  // namespace pyhost
