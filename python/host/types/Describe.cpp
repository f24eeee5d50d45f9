#include "python/host/types/Describe.h"

#include "tarvelon/boundary/k7q/PropertyRecords.h"
#include "tarvelon/boundary/ruvo/Method.h"

namespace pyhost {

namespace {

using K7Q::mi::K7qmiProperty;
using K7Q::mi::MetaPropertyEntry;

/// Builds a dict; the keys keep the order in which they are added.
class Record {
 public:
  Record() : mDict(owned(PyDict_New)) {}
  Record& put(const char* key, Reference value) {
    require(PyDict_SetItemString, mDict.get(), key, value.get());
    return *this;
  }
  Record& put(const char* key, std::string_view text) { return put(key, toStr(text)); }
  Record& put(const char* key, std::int64_t number) { return put(key, owned(PyLong_FromLongLong, number)); }
  PyObject* release() { return mDict.release(); }

 private:
  Reference mDict;
};

template <class Range, class Describe>
// NOLINTNEXTLINE(misc-no-recursion): as deep as packages are registered
Reference listOf(Range&& range, Describe describe) {
  Reference list = owned(PyList_New, 0);
  for (auto&& each : range) {
    const Reference item(describe(each));
    if (item.get() != Py_None) require(PyList_Append, list.get(), item.get());
  }
  return list;
}

PyObject* nothing() { return Py_NewRef(Py_None); }

const char* kindOf(const ruvo::RVOMethodInfo& record) {
  if (record.isConstructor()) return "constructor";
  if ((record.getFlags() & ruvo::factory::kSelfAsArgument) != 0) return "selfArgument";
  return (record.getFlags() & ruvo::factory::kStatic) != 0 ? "static" : "instance";
}

PyObject* describeRecord(const ruvo::RVOMethodInfo* record) {
  if (dynamic_cast<const MetaPropertyEntry*>(record)) return nothing();
  const auto& signature = *record->getSignature();
  const auto& self = signature.self();
  return Record()
      .put("name", record->getName().view())
      .put("kind", kindOf(*record))
      .put("flags", std::int64_t{record->getFlags()})
      .put("parameterNames", std::string_view(signature.parameterNames()))
      .put("result", signature.result().view())
      .put("self", self.empty() ? Reference(nothing()) : toStr(self.view()))
      .put("arguments",
           listOf(signature.arguments(), [](const auto& name) { return toStr(name.view()).release(); }))
      .release();
}

PyObject* describeMetaProperty(const ruvo::RVOMethodInfo* record) {
  const auto* entry = dynamic_cast<const MetaPropertyEntry*>(record);
  if (!entry) return nothing();
  return Record()
      .put("name", entry->getName().view())
      .put("owner", entry->owner().name(false).view())
      .put("id", std::int64_t{entry->id()})
      .release();
}

PyObject* describeSlot(const ruvo::PropertySlot& slot) {
  const auto* record = dynamic_cast<const K7qmiProperty*>(slot.property);
  Record result;
  result.put("id", record ? std::int64_t{record->id()} : 0);
  result.put("name", slot.name.view());
  result.put("kind", std::string_view(record ? record->kind() : ""));
  result.put("multiplicity", record ? static_cast<std::int64_t>(record->multiplicity()) : 0);
  result.put("mutability", record ? static_cast<std::int64_t>(record->mutability()) : 0);
  result.put("attributes", std::int64_t{slot.property->attributeWord()});
  return result.put("type", slot.property->getDataType().view()).release();
}

}  // namespace

PyObject* describeClassRecords(ruvo::Class& cls) {
  return Record()
      .put("name", cls.shortName())
      .put("fullName", cls.getFullName().view())
      .put("description", std::string_view(cls.info().getDescription()))
      .put("access", std::int64_t{cls.access()})
      .put("superclasses",
           listOf(cls.superClassNames(), [](const auto& name) { return toStr(name.view()).release(); }))
      .put("methods", listOf(cls.methods(), describeRecord))
      .put("properties", listOf(cls.properties(), describeSlot))
      .put("metaProperties", listOf(cls.methods(), describeMetaProperty))
      .release();
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as packages are registered
PyObject* describePackage(ruvo::Package& package) {
  return Record()
      .put("name", package.getFullName().view())
      .put("functions", listOf(package.functions(), describeRecord))
      .put("classes", listOf(package.classes(), [](ruvo::Class* cls) { return describeClassRecords(*cls); }))
      .put("packages",
           listOf(package.packageNames(),
                  // NOLINTNEXTLINE(misc-no-recursion): as deep as packages are registered
                  [&package](std::string_view name) { return describePackage(*package.findPackage(name)); }))
      .release();
}

}  // namespace pyhost
