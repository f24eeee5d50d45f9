#include "python/host/Types.h"

#include <algorithm>

#include "platform/tarvelon/api/History.h"
#include "python/host/CheckedDoor.h"
#include "python/host/Descriptors.h"
#include "python/host/Docs.h"
#include "python/host/Enumeration.h"
#include "python/host/Extensions.h"
#include "python/host/Values.h"

namespace pyhost {

PyTypeObject hostMetaType{};

namespace {

std::size_t gTypesMade = 0;

TypeKind kindOf(ruvo::Class& cls) {
  if (isEnumeration(cls)) return TypeKind::Enumeration;
  if (cls.findMethods("size") && cls.findMethods("at")) return TypeKind::Sequence;
  if (cls.findMethods("getNext") && cls.findMethods("item")) return TypeKind::Iterator;
  return TypeKind::Object;
}

PyTypeObject* rootOf(TypeKind kind) noexcept {
  switch (kind) {
    case TypeKind::Enumeration:
      return &enumerationType;
    case TypeKind::Sequence:
      return &sequenceType;
    case TypeKind::Iterator:
      return &iteratorType;
    default:
      return &hostObjectType;
  }
}

/// The types of the superclasses in their order, and the root of the kind if none of them derives from it.
Reference basesOf(ruvo::Class& cls, TypeKind kind) {
  Reference list = owned(PyList_New(0));
  bool hasRoot = false;
  for (ruvo::Class* super : cls.superClasses()) {
    PyTypeObject* type = asPyType(typeOf(*super));
    hasRoot = hasRoot || PyType_IsSubtype(type, rootOf(kind));
    require(PyList_Append(list.get(), reinterpret_cast<PyObject*>(type)));
  }
  if (!hasRoot) require(PyList_Append(list.get(), reinterpret_cast<PyObject*>(rootOf(kind))));
  return owned(PyList_AsTuple(list.get()));
}

/// The namespace of a type under construction.
class Namespace {
 public:
  explicit Namespace(ruvo::Class& cls) : mClass(cls), mDict(owned(PyDict_New())) {}

  void fill(bool hasLiterals) {
    put("__slots__", owned(PyTuple_New(0)));
    put("__doc__", Reference(newClassDoc(mClass)));
    const std::string_view fullName = mClass.getFullName().view();
    put("__module__", toStr(fullName.substr(0, fullName.rfind('.'))));
    for (const auto& slot : mClass.properties()) {
      const Reference key = toKey(slot.name.view());
      put(slot.name.view(), Reference(newProperty(slot, key.get())));
    }
    if (hasLiterals) {
      for (const auto& name : literalsOf(mClass)) put(name.view(), Reference(newLiteral(mClass, name)));
    }
    for (const auto* record : mClass.methods()) {
      const auto& name = record->getName();
      if (record->isConstructor() || has(name.view())) continue;
      put(name.view(), Reference(newMethod(mClass, name, toKey(name.view()).get())));
    }
    if (PyObject* extension = extensionOf(mClass)) require(PyDict_Update(mDict.get(), extension));
  }

  PyObject* get() const noexcept { return mDict.get(); }

 private:
  bool has(std::string_view name) const {
    const int found = PyDict_Contains(mDict.get(), toKey(name).get());
    require(found);
    return found == 1;
  }
  void put(std::string_view name, Reference value) {
    require(PyDict_SetItem(mDict.get(), toKey(name).get(), value.get()));
    const std::string usable = pythonName(name);
    if (usable != name) require(PyDict_SetItem(mDict.get(), toKey(usable).get(), value.get()));
  }

  ruvo::Class& mClass;
  Reference mDict;
};

[[noreturn]] void raiseNotConstructible(const HostType& type) {
  const std::string name(shownName(*type.cls));
  switch (type.kind) {
    case TypeKind::Enumeration:
      raise(errors().wrongType,
            name + " is an enumeration: write " + name + ".<literal>, or " + name + ".fromString(text)");
    case TypeKind::Sequence:
      raise(errors().wrongType,
            name + " has no constructor: read a property that gives one" +
                (type.cls->findMethods("make") ? ", or call " + name + ".make(model)" : ""));
    default:
      raise(errors().wrongType, name + " has no constructor: take it from begin() or end() of a sequence");
  }
}

PyObject* construct(PyObject* self, PyObject* const* arguments, std::size_t flagged, PyObject* keywords) {
  return guarded([&] {
    const auto& type = *reinterpret_cast<HostType*>(self);
    const auto count = static_cast<std::size_t>(PyVectorcall_NARGS(flagged));
    if (keywords && PyTuple_GET_SIZE(keywords) != 0) {
      raise(errors().wrongType, Place{*type.cls, {}}.text() + "arguments are given by position, not by name");
    }
    if (type.kind != TypeKind::Object) raiseNotConstructible(type);
    const ruvo::OverloadSet* constructors = type.cls->constructors();
    if (!constructors && type.cls->findMethods("create")) {
      const std::string name(shownName(*type.cls));
      raise(errors().wrongType, name + " has no constructor: write " + name + ".create()");
    }
    const Arguments converted(arguments, count, *type.cls, {}, constructors);
    if (constructors && converted.hasEmpty()) {
      requireMeaningful(type, *constructors, nullptr, converted, {arguments, count});
    }
    // The Python object must be there before a listener asks for it.
    const Tarvelon::model::DelayedTelling delay;
    return wrap(ruvo::construct(*type.cls, converted.span()));
  });
}

HostType* makeType(ruvo::Class& cls) {
  const TypeKind kind = kindOf(cls);
  const Reference bases = basesOf(cls, kind);
  // A class made its own type while it made those of its superclasses.
  if (auto* made = static_cast<HostType*>(cls.getHostData())) return made;
  Namespace members(cls);
  members.fill(kind == TypeKind::Enumeration);
  const Reference name = toStr(cls.shortName());
  const Reference arguments = owned(PyTuple_Pack(3, name.get(), bases.get(), members.get()));
  auto* type = reinterpret_cast<HostType*>(
      owned(PyType_Type.tp_new(&hostMetaType, arguments.get(), nullptr)).release());
  type->cls = &cls;
  type->kind = kind;
  type->at = nullptr;
  type->elements = Elements::Objects;
  PyTypeObject* shown = asPyType(type);
  shown->tp_dealloc = deallocatorOf(kind);
  shown->tp_vectorcall = construct;
  shown->tp_flags |= Py_TPFLAGS_IMMUTABLETYPE;
  // Python classes are collected by default. These objects hold nothing that could hold them, and types stay.
  shown->tp_flags &= ~static_cast<unsigned long>(Py_TPFLAGS_HAVE_GC);
  shown->tp_traverse = nullptr;
  shown->tp_clear = nullptr;
  shown->tp_free = PyObject_Free;
  PyType_Modified(shown);
  cls.setHostData(type);
  ++gTypesMade;
  return type;
}

PyObject* refuseSubclass(PyTypeObject* /*meta*/, PyObject* /*arguments*/, PyObject* /*keywords*/) {
  return guarded([]() -> PyObject* {
    raise(errors().wrongType,
          "a class of the host cannot be subclassed in Python: its objects live in a model, which does not "
          "know the "
          "subclass; write functions, or a class that holds such an object");
  });
}

bool isMade(PyObject* type) noexcept {
  return PyType_HasFeature(reinterpret_cast<PyTypeObject*>(type), Py_TPFLAGS_HEAPTYPE);
}

std::string nameOfType(PyObject* type) {
  return isMade(type) ? reinterpret_cast<HostType*>(type)->cls->getClassName()
                      : reinterpret_cast<PyTypeObject*>(type)->tp_name;
}

[[noreturn]] void raiseUnknownMember(PyObject* type, PyObject* name) {
  const std::string text = toUtf8(name);
  const bool isHost = isMade(type) && !text.starts_with("_");
  const std::string nearest =
      isHost ? reinterpret_cast<HostType*>(type)->cls->nearestMember(text) : std::string();
  raiseUnknownName(name, "class '" + nameOfType(type) + "' has no property, method or literal '" + text +
                             "'" + (nearest.empty() ? "" : "; did you mean '" + nearest + "'?"));
}

PyObject* getMember(PyObject* type, PyObject* name) {
  PyObject* found = PyType_Type.tp_getattro(type, name);
  if (found || !PyErr_ExceptionMatches(PyExc_AttributeError)) return found;
  return guarded([&]() -> PyObject* {
    PyErr_Clear();
    raiseUnknownMember(type, name);
  });
}

int setMember(PyObject* type, PyObject* name, PyObject* /*value*/) {
  return guarded(-1, [&]() -> int {
    raiseUnknownName(name,
                     nameOfType(type) + "." + toUtf8(name) +
                         ": a class of the host cannot be changed from Python; write a function, or set the "
                         "property of an object");
  });
}

PyObject* iterate(PyObject* type) {
  return guarded([&] {
    if (!isMade(type) || reinterpret_cast<HostType*>(type)->kind != TypeKind::Enumeration) {
      raise(errors().wrongType, nameOfType(type) + " is no enumeration: there is nothing to iterate");
    }
    const Reference list(listLiterals(*reinterpret_cast<HostType*>(type)->cls));
    return owned(PyObject_GetIter(list.get())).release();
  });
}

PyObject* represent(PyObject* type) {
  return guarded([&] { return toStr("<class '" + nameOfType(type) + "'>").release(); });
}

// Not in each type's dict alone: help() reads what stands there as it is, without calling a descriptor.
PyObject* docOf(PyObject* type, void* /*closure*/) {
  return guarded([&] {
    const char* const doc = reinterpret_cast<PyTypeObject*>(type)->tp_doc;
    return toStr(isMade(type) ? describeClass(*reinterpret_cast<HostType*>(type)->cls) : doc).release();
  });
}

PyGetSetDef gMembers[] = {{"__doc__", docOf, nullptr, nullptr, nullptr},
                          {nullptr, nullptr, nullptr, nullptr, nullptr}};

}  // namespace

std::size_t typesMade() noexcept { return gTypesMade; }

HostType* typeOf(ruvo::Class& cls) {
  if (auto* made = static_cast<HostType*>(cls.getHostData())) return made;
  return makeType(cls);
}

void readyHostMetaType() {
  PyTypeObject& type = hostMetaType;
  prepareType(type, "_tarvelon_host.HostClass", sizeof(HostType), "The type of the host's classes.");
  type.tp_base = &PyType_Type;
  type.tp_flags |= Py_TPFLAGS_HAVE_VECTORCALL;
  type.tp_vectorcall_offset = offsetof(PyTypeObject, tp_vectorcall);
  type.tp_new = refuseSubclass;
  type.tp_getattro = getMember;
  type.tp_setattro = setMember;
  type.tp_iter = iterate;
  type.tp_repr = represent;
  type.tp_getset = gMembers;
  require(PyType_Ready(&type));
}

}  // namespace pyhost
