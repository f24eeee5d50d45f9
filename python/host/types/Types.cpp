#include "python/host/types/Types.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "python/host/members/CallChecks.h"
#include "python/host/members/MetaProperties.h"
#include "python/host/objects/Descriptors.h"
#include "python/host/objects/Docs.h"
#include "python/host/objects/ErrorNotes.h"
#include "python/host/objects/Values.h"
#include "python/host/types/Enumeration.h"
#include "python/host/types/Extensions.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/ruvo/PointerMap.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace pyhost {

PyTypeObject hostMetaType{};

namespace {

std::size_t gTypesMade = 0;

/// Whether the class itself declares methods of both names.
bool declares(ruvo::Class& cls, const ruvo::InternedName& first, const ruvo::InternedName& second) {
  const auto hasOwn = [&cls](const ruvo::InternedName& name) {
    const auto records = cls.methods();
    return std::any_of(records.begin(), records.end(),
                       [&name](const auto* record) { return record->getName() == name; });
  };
  return hasOwn(first) && hasOwn(second);
}

/// The kind of the superclasses; otherwise it is found from the class's own methods.
TypeKind kindOf(ruvo::Class& cls, const std::vector<HostType*>& supers) {
  static const ruvo::LiteralName size("size"), at("at"), getNext("getNext"), item("item");
  if (isEnumeration(cls)) return TypeKind::Enumeration;
  for (const HostType* super : supers) {
    if (super->kind != TypeKind::Object) return super->kind;
  }
  if (declares(cls, size.get(), at.get())) return TypeKind::Sequence;
  if (declares(cls, getNext.get(), item.get())) return TypeKind::Iterator;
  return isMetaProperties(cls) ? TypeKind::MetaProperties : TypeKind::Object;
}

PyTypeObject* rootOf(TypeKind kind) noexcept {
  switch (kind) {
    case TypeKind::Enumeration:
      return &enumerationType;
    case TypeKind::Sequence:
      return &sequenceType;
    case TypeKind::Iterator:
      return &iteratorType;
    case TypeKind::MetaProperties:
      return &metaPropertiesType;
    default:
      return &hostObjectType;
  }
}

bool isFactory(const ruvo::Class& cls, const std::vector<HostType*>& supers) {
  static const ruvo::LiteralName root("K7Q.FactoryObject");
  return cls.getFullName() == root.get() ||
         std::any_of(supers.begin(), supers.end(), [](const HostType* super) { return super->isFactory; });
}

/// The types of the superclasses, in their order.
// NOLINTNEXTLINE(misc-no-recursion): as deep as classes have bases
std::vector<HostType*> supersOf(ruvo::Class& cls) {
  std::vector<HostType*> types;
  for (ruvo::Class* super : cls.superClasses()) types.push_back(typeOf(*super));
  return types;
}

/// The types of the superclasses, and the root type of the kind unless one of them derives from it.
Reference basesOf(const std::vector<HostType*>& supers, TypeKind kind) {
  const bool hasRoot = std::any_of(supers.begin(), supers.end(), [kind](HostType* super) {
    return PyType_IsSubtype(asPyType(super), rootOf(kind)) != 0;
  });
  Reference bases = owned(PyTuple_New, static_cast<Py_ssize_t>(supers.size() + (hasRoot ? 0 : 1)));
  Py_ssize_t place = 0;
  const auto put = [&](PyTypeObject* type) {
    PyTuple_SET_ITEM(bases.get(), place++, Py_NewRef(reinterpret_cast<PyObject*>(type)));
  };
  for (HostType* super : supers) put(asPyType(super));
  if (!hasRoot) put(rootOf(kind));
  return bases;
}

/// A method or property name as an interned str. `usable` is the name with an underscore, if the name is a
/// Python keyword; null otherwise.
struct Key {
  PyObject* name;
  PyObject* usable;
};

/// Creates each key once, because most names occur in many classes.
const Key& keyOf(const ruvo::InternedName& name) {
  static auto& keys = *new ruvo::PointerMap<const Key>;
  if (const Key* known = keys.find(name.entry())) return *known;
  const std::string usable = pythonName(name.view());
  Reference key = toKey(name.view());
  Reference other = usable == name.view() ? Reference(nullptr) : toKey(usable);
  auto made = std::make_unique<Key>(Key{key.get(), other.get()});
  keys.insert(name.entry(), made.get());
  key.release();
  other.release();
  return *made.release();
}

/// The dict of a type under construction.
class Namespace {
 public:
  explicit Namespace(ruvo::Class& cls) : mClass(cls), mDict(owned(PyDict_New)) {}

  void fill(bool hasLiterals) {
    put("__slots__", owned(PyTuple_New, 0));
    put("__doc__", Reference(newClassDoc(mClass)));
    const std::string_view fullName = mClass.getFullName().view();
    put("__module__", toStr(fullName.substr(0, fullName.rfind('.'))));
    for (const auto& slot : mClass.properties()) {
      const Key& key = keyOf(slot.name);
      put(key, Reference(newProperty(slot, key.name)));
    }
    if (hasLiterals) {
      for (const auto& name : literalsOf(mClass)) put(keyOf(name), Reference(newLiteral(mClass, name)));
    }
    for (const auto* record : mClass.methods()) {
      if (record->isConstructor()) continue;
      const Key& key = keyOf(record->getName());
      if (!has(key)) put(key, Reference(newMethod(mClass, record->getName(), key.name)));
    }
  }

  PyObject* get() const noexcept { return mDict.get(); }

 private:
  bool has(const Key& key) const {
    const int found = PyDict_Contains(mDict.get(), key.name);
    require(found);
    return found == 1;
  }
  void put(const Key& key, Reference value) {
    require(PyDict_SetItem, mDict.get(), key.name, value.get());
    if (key.usable) require(PyDict_SetItem, mDict.get(), key.usable, value.get());
  }
  void put(const char* name, Reference value) {
    require(PyDict_SetItemString, mDict.get(), name, value.get());
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
            name + " has no constructor: read a property that returns one" +
                (type.cls->findMethods("make") ? ", or call " + name + ".make(model)" : ""));
    case TypeKind::MetaProperties:
      raise(errors().wrongType, name + " has no constructor: take it from MetaProperty() of the class");
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
    // The Python object is allocated first: a listener may ask for it, and if this fails, the model is
    // unchanged.
    const Tarvelon::model::Undertaking undertaking;
    ObjectAllocation allocation(reinterpret_cast<HostType*>(self));
    const auto inHand = [&] { return noteOf(type.cls->shortName(), nullptr, {arguments, count}); };
    return allocation.fill(withNote(inHand, [&] { return ruvo::construct(*type.cls, converted.span()); }));
  });
}

/// The first of the bases with the largest objects. The memory layout of the other bases is a part of it.
PyTypeObject* largestOf(PyObject* bases) {
  auto* largest = reinterpret_cast<PyTypeObject*>(PyTuple_GET_ITEM(bases, 0));
  for (Py_ssize_t i = 1; i < PyTuple_GET_SIZE(bases); ++i) {
    auto* base = reinterpret_cast<PyTypeObject*>(PyTuple_GET_ITEM(bases, i));
    if (base->tp_basicsize > largest->tp_basicsize) largest = base;
  }
  return largest;
}

/// Creates a type as the Python call type(name, bases, namespace) does, but faster: that call searches the
/// namespace and all bases for each operator. Here the type inherits the operators from the slots of the root
/// types.
Reference newType(ruvo::Class& cls, TypeKind kind, PyObject* bases, PyObject* members) {
  Reference made = owned(PyType_GenericAlloc, &hostMetaType, 0);
  auto* type = reinterpret_cast<HostType*>(made.get());
  type->cls = &cls;
  type->kind = kind;
  PyHeapTypeObject& heap = type->heap;
  heap.ht_name = toStr(cls.shortName()).release();
  heap.ht_qualname = Py_NewRef(heap.ht_name);
  PyTypeObject& shown = heap.ht_type;
  // Not tracked by the garbage collector: the objects can be part of no reference cycle, and types are never
  // freed.
  shown.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HEAPTYPE | Py_TPFLAGS_BASETYPE;
  shown.tp_name = PyUnicode_AsUTF8(heap.ht_name);
  if (!shown.tp_name) throw PythonError();
  shown.tp_as_async = &heap.as_async;
  shown.tp_as_number = &heap.as_number;
  shown.tp_as_sequence = &heap.as_sequence;
  shown.tp_as_mapping = &heap.as_mapping;
  shown.tp_as_buffer = &heap.as_buffer;
  shown.tp_base = reinterpret_cast<PyTypeObject*>(Py_NewRef(reinterpret_cast<PyObject*>(largestOf(bases))));
  shown.tp_bases = Py_NewRef(bases);
  shown.tp_dict = Py_NewRef(members);
  shown.tp_basicsize = shown.tp_base->tp_basicsize;
  shown.tp_dealloc = deallocatorOf(kind);
  shown.tp_free = PyObject_Free;
  require(PyType_Ready, &shown);
  shown.tp_vectorcall = construct;
  return made;
}

/// Adds the members that Python code has registered for the class (Extensions.h).
void extend(PyObject* type, ruvo::Class& cls) {
  PyObject* extension = extensionOf(cls);
  if (!extension) return;
  PyObject* name = nullptr;
  PyObject* value = nullptr;
  for (Py_ssize_t place = 0; PyDict_Next(extension, &place, &name, &value) != 0;) {
    require(PyType_Type.tp_setattro(type, name, value));
  }
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as classes have bases
HostType* makeType(ruvo::Class& cls) {
  const auto supers = supersOf(cls);
  // Creating the types of the superclasses may have created this one.
  if (auto* made = static_cast<HostType*>(cls.getHostData())) return made;
  const TypeKind kind = kindOf(cls, supers);
  const Reference bases = basesOf(supers, kind);
  Namespace members(cls);
  members.fill(kind == TypeKind::Enumeration);
  Reference made = newType(cls, kind, bases.get(), members.get());
  extend(made.get(), cls);
  // The garbage collector may have run code that created the type.
  if (auto* other = static_cast<HostType*>(cls.getHostData())) return other;
  auto* type = reinterpret_cast<HostType*>(made.get());
  type->isFactory = isFactory(cls, supers);
  static_cast<void>(made.release());
  asPyType(type)->tp_flags |= Py_TPFLAGS_IMMUTABLETYPE;
  cls.setHostData(type);
  ++gTypesMade;
  return type;
}

PyObject* refuseSubclass(PyTypeObject* /*meta*/, PyObject* /*arguments*/, PyObject* /*keywords*/) {
  return guarded([]() -> PyObject* {
    raise(errors().wrongType,
          "a class of the host cannot be subclassed in Python: its objects belong to a model, which does "
          "not know the subclass; write functions, or a class with such an object as a member");
  });
}

std::string nameOfType(PyObject* type) {
  return isHostClass(type) ? reinterpret_cast<HostType*>(type)->cls->getClassName()
                           : reinterpret_cast<PyTypeObject*>(type)->tp_name;
}

[[noreturn]] void raiseUnknownMember(PyObject* type, PyObject* name) {
  const std::string text = toUtf8(name);
  const bool isHost = isHostClass(type) && !text.starts_with("_");
  const std::string nearest =
      isHost ? nearestMember(*reinterpret_cast<HostType*>(type), text) : std::string();
  raiseUnknownName(name, "class '" + nameOfType(type) + "' has no property, method or literal " +
                             ruvo::quotedName(text) +
                             (nearest.empty() ? "" : "; did you mean '" + nearest + "'?"));
}

PyObject* getMember(PyObject* type, PyObject* name) {
  PyObject* found = enter(PyType_Type.tp_getattro, type, name);
  if (found || !PyErr_ExceptionMatches(PyExc_AttributeError)) return found;
  return guarded([&]() -> PyObject* {
    PyErr_Clear();
    raiseUnknownMember(type, name);
  });
}

int setMember(PyObject* type, PyObject* name, PyObject* /*value*/) {
  return guarded(-1, [&]() -> int {
    const std::string text = toUtf8(name);
    const std::string quoted = ruvo::quotedName(text);
    const bool isWhole = quoted.size() == text.size() + 2;
    raiseUnknownName(name, nameOfType(type) + "." + (isWhole ? text : quoted) +
                               ": a class of the host cannot be changed from Python; write a function, or "
                               "set the property of an object");
  });
}

PyObject* iterate(PyObject* type) {
  return guarded([&] {
    if (!isHostClass(type) || reinterpret_cast<HostType*>(type)->kind != TypeKind::Enumeration) {
      raise(errors().wrongType, nameOfType(type) + " is not an enumeration and cannot be iterated");
    }
    const Reference list(listLiterals(*reinterpret_cast<HostType*>(type)->cls));
    return owned(PyObject_GetIter, list.get()).release();
  });
}

PyObject* represent(PyObject* type) {
  return guarded([&] { return toStr("<class '" + nameOfType(type) + "'>").release(); });
}

// A property of the metatype, in addition to the descriptor in each type's dict: help() reads a type's
// `__doc__` without calling the descriptor.
PyObject* docOf(PyObject* type, void* /*closure*/) {
  return guarded([&] {
    const char* const doc = reinterpret_cast<PyTypeObject*>(type)->tp_doc;
    return toStr(isHostClass(type) ? describeClass(*reinterpret_cast<HostType*>(type)->cls) : doc).release();
  });
}

PyGetSetDef gMembers[] = {{"__doc__", docOf, nullptr, nullptr, nullptr},
                          {nullptr, nullptr, nullptr, nullptr, nullptr}};

}  // namespace

std::size_t typesMade() noexcept { return gTypesMade; }

// NOLINTNEXTLINE(misc-no-recursion): as deep as classes have bases
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
  require(PyType_Ready, &type);
}

}  // namespace pyhost
