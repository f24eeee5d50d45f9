#include "tarvelon/boundary/ruvo/Method.h"

#include <algorithm>

#include "python/host/interpreter/Console.h"
#include "python/host/members/CallChecks.h"
#include "python/host/objects/Descriptors.h"
#include "python/host/objects/Docs.h"
#include "python/host/objects/ErrorNotes.h"
#include "python/host/objects/IteratorGuard.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/model/api/History.h"

namespace pyhost {

PyTypeObject methodType{};

namespace {

/// A method bound to an object or a class: the value of the attribute. A new one is created for each reading.
struct BoundMethod {
  PyObject_HEAD vectorcallfunc vectorcall;
  Method* method;
  PyObject* self;
};

PyTypeObject boundMethodType{};

constexpr std::size_t kKept = 8;
BoundMethod* gKept[kKept];
std::size_t gKeptCount = 0;

Method* asMethod(PyObject* object) noexcept { return reinterpret_cast<Method*>(object); }
BoundMethod* asBound(PyObject* object) noexcept { return reinterpret_cast<BoundMethod*>(object); }

ruvo::Class& classOfBound(const BoundMethod& bound) {
  return PyType_Check(bound.self) ? *reinterpret_cast<HostType*>(bound.self)->cls : *typeOf(bound.self)->cls;
}

bool hasStatic(const ruvo::OverloadSet& overloads) noexcept {
  return std::any_of(overloads.candidates.begin(), overloads.candidates.end(),
                     [](const auto* record) { return (record->getFlags() & ruvo::factory::kStatic) != 0; });
}

PyObject* call(PyObject* callable, PyObject* const* arguments, std::size_t flagged, PyObject* keywords) {
  return guarded([&] {
    const BoundMethod& bound = *asBound(callable);
    const auto count = static_cast<std::size_t>(PyVectorcall_NARGS(flagged));
    if (keywords && PyTuple_GET_SIZE(keywords) != 0) {
      raise(errors().wrongType, Place{classOfBound(bound), bound.method->name.view()}.text() +
                                    "arguments are given by position, not by name");
    }
    if (!PyType_Check(bound.self)) return callOnObject(bound.method, bound.self, arguments, count);
    return callOnClass(bound.method, reinterpret_cast<HostType*>(bound.self), arguments, count);
  });
}

PyObject* finish(const ruvo::HostResult& result, PyObject* self) {
  Reference value(toPython(result));
  requirePrinted();
  if (self) keepSequence(value.get(), self);
  return value.release();
}

void deallocateBound(PyObject* object) {
  BoundMethod* bound = asBound(object);
  drop(reinterpret_cast<PyObject*>(bound->method));
  drop(bound->self);
  if (gKeptCount < kKept) {
    gKept[gKeptCount++] = bound;
  } else {
    PyObject_Free(object);
  }
}

/// For example "Package.destroy"; the class is the object's own class.
std::string placeOf(const Method& method, const HostType& type) {
  return std::string(type.cls->shortName()) + "." + std::string(method.name.view());
}

PyObject* itself(PyObject* bound, PyObject* /*self*/, PyObject* /*type*/) { return Py_NewRef(bound); }

// Each reading creates a new bound method. As in Python, two of them are equal if they bind the same method
// to the same object.
PyObject* compareBound(PyObject* left, PyObject* right, int operation) {
  const bool isComparable = (operation == Py_EQ || operation == Py_NE) && Py_TYPE(right) == &boundMethodType;
  if (!isComparable) Py_RETURN_NOTIMPLEMENTED;
  const bool isSame = asBound(left)->self == asBound(right)->self &&
                      asBound(left)->method->name == asBound(right)->method->name;
  return PyBool_FromLong(isSame == (operation == Py_EQ) ? 1 : 0);
}
Py_hash_t hashBound(PyObject* bound) {
  const Py_hash_t name = PyObject_Hash(asBound(bound)->method->text);
  const Py_hash_t result = name ^ _Py_HashPointer(asBound(bound)->self);
  return name == -1 || result != -1 ? result : -2;
}

PyObject* nameOfBound(PyObject* bound, void* /*closure*/) { return Py_NewRef(asBound(bound)->method->text); }
PyObject* selfOfBound(PyObject* bound, void* /*closure*/) { return Py_NewRef(asBound(bound)->self); }
PyObject* docOfBound(PyObject* bound, void* /*closure*/) {
  return guarded([&] {
    Method* method = asBound(bound)->method;
    return toStr(describeMethod(overloadsOf(method, classOfBound(*asBound(bound))), method->name.view()))
        .release();
  });
}
PyObject* representBound(PyObject* object) {
  return guarded([&] {
    const BoundMethod& bound = *asBound(object);
    return toStr("<method " + std::string(shownName(classOfBound(bound))) + "." +
                 std::string(bound.method->name.view()) + ">")
        .release();
  });
}

PyGetSetDef gBoundMembers[] = {{"__doc__", docOfBound, nullptr, nullptr, nullptr},
                               {"__name__", nameOfBound, nullptr, nullptr, nullptr},
                               {"__qualname__", nameOfBound, nullptr, nullptr, nullptr},
                               {"__self__", selfOfBound, nullptr, nullptr, nullptr},
                               {nullptr, nullptr, nullptr, nullptr, nullptr}};

PyObject* get(PyObject* method, PyObject* self, PyObject* type) {
  return guarded([&]() -> PyObject* {
    PyObject* bound = self && self != Py_None ? self : type;
    const bool isClass = bound && PyType_Check(bound) && Py_TYPE(bound) == &hostMetaType;
    if (!bound || (!isClass && !isHostObject(bound))) {
      raise(errors().wrongType, "the method " + std::string(asMethod(method)->name.view()) +
                                    " can be bound only to an object or a class of the host");
    }
    if (isClass && !PyType_HasFeature(reinterpret_cast<PyTypeObject*>(bound), Py_TPFLAGS_HEAPTYPE)) {
      return Py_NewRef(method);
    }
    return bindMethod(asMethod(method), bound);
  });
}

PyObject* docOfMethod(PyObject* object, void* /*closure*/) {
  return guarded([&] {
    Method* method = asMethod(object);
    return toStr(describeMethod(overloadsOf(method, *method->owner), method->name.view())).release();
  });
}
PyObject* nameOfMethod(PyObject* method, void* /*closure*/) { return Py_NewRef(asMethod(method)->text); }

PyGetSetDef gMembers[] = {{"__doc__", docOfMethod, nullptr, nullptr, nullptr},
                          {"__name__", nameOfMethod, nullptr, nullptr, nullptr},
                          {nullptr, nullptr, nullptr, nullptr, nullptr}};

void deallocateMethod(PyObject* method) {
  drop(asMethod(method)->text);
  PyObject_Free(method);
}

void readyBoundMethodType() {
  PyTypeObject& type = boundMethodType;
  prepareType(type, "_tarvelon_host.BoundMethod", sizeof(BoundMethod), nullptr);
  type.tp_flags |= Py_TPFLAGS_DISALLOW_INSTANTIATION | Py_TPFLAGS_HAVE_VECTORCALL;
  type.tp_dealloc = deallocateBound;
  type.tp_call = PyVectorcall_Call;
  type.tp_vectorcall_offset = offsetof(BoundMethod, vectorcall);
  type.tp_descr_get = itself;
  type.tp_getset = gBoundMembers;
  type.tp_repr = representBound;
  type.tp_hash = hashBound;
  type.tp_richcompare = compareBound;
  require(PyType_Ready, &type);
}

}  // namespace

const ruvo::OverloadSet& overloadsOf(Method* method, ruvo::Class& cls) {
  if (method->knownFor == &cls) return *method->known;
  const ruvo::OverloadSet* found = cls.findMethods(method->name);
  if (!found) {
    raise(errors().wrongType, "class '" + std::string(cls.getFullName().view()) + "' has no method '" +
                                  std::string(method->name.view()) + "'");
  }
  method->knownFor = &cls;
  method->known = found;
  return *found;
}

PyObject* callOnObject(Method* method, PyObject* self, PyObject* const* arguments, std::size_t count) {
  HostType* type = typeOf(self);
  const ruvo::OverloadSet& overloads = overloadsOf(method, *type->cls);
  const Arguments converted(arguments, count, *type->cls, method->name.view(), &overloads);
  if (converted.hasEmpty() || type->kind != TypeKind::Object) {
    requireMeaningful(*type, overloads, self, converted, {arguments, count});
  }
  const auto inHand = [&] { return noteOf(placeOf(*method, *type), self, {arguments, count}); };
  const auto call = [&] {
    return withNote(inHand, [&] {
      return ruvo::callOverloads(*type->cls, overloads, interfaceOf(self), converted.span());
    });
  };
  if (type->kind == TypeKind::Sequence) {
    const IteratorsToInvalidate iterators(self, method->name.view(), {arguments, count}, converted.span());
    const auto result = call();
    iterators.mark();
    return finish(result, self);
  }
  if (type->isFactory) {
    // If the result cannot be converted, the created object is removed again.
    const Tarvelon::model::Undertaking undertaking;
    return finish(call(), self);
  }
  return finish(call(), self);
}

PyObject* callOnClass(Method* method, HostType* type, PyObject* const* arguments, std::size_t count) {
  const ruvo::OverloadSet& overloads = overloadsOf(method, *type->cls);
  if (!hasStatic(overloads)) {
    if (count != 0 && isHostObject(arguments[0]) && typeOf(arguments[0])->cls->isKindOf(*type->cls)) {
      return callOnObject(method, arguments[0], arguments + 1, count - 1);
    }
    raise(errors().wrongType, Place{*type->cls, method->name.view()}.text() + "expected an object of class " +
                                  std::string(type->cls->getFullName().view()) + " as first argument, got " +
                                  (count != 0 ? describePython(arguments[0]) : "none"));
  }
  const Arguments converted(arguments, count, *type->cls, method->name.view(), &overloads);
  if (converted.hasEmpty()) requireMeaningful(*type, overloads, nullptr, converted, {arguments, count});
  const auto inHand = [&] { return noteOf(placeOf(*method, *type), nullptr, {arguments, count}); };
  return withNote(inHand, [&] {
    return finish(ruvo::callOverloads(*type->cls, overloads, nullptr, converted.span()), nullptr);
  });
}

PyObject* bindMethod(Method* method, PyObject* self) {
  BoundMethod* bound = nullptr;
  if (gKeptCount != 0) {
    bound = gKept[--gKeptCount];
    PyObject_Init(reinterpret_cast<PyObject*>(bound), &boundMethodType);
  } else {
    bound = PyObject_New(BoundMethod, &boundMethodType);
    if (!bound) throw PythonError();
  }
  bound->vectorcall = call;
  bound->method = reinterpret_cast<Method*>(Py_NewRef(reinterpret_cast<PyObject*>(method)));
  bound->self = Py_NewRef(self);
  return reinterpret_cast<PyObject*>(bound);
}

PyObject* newMethod(ruvo::Class& owner, const ruvo::InternedName& name, PyObject* text) {
  auto* made = PyObject_New(Method, &methodType);
  Reference result = owned(reinterpret_cast<PyObject*>(made));
  new (&made->name) ruvo::InternedName(name);
  made->text = Py_NewRef(text);
  made->owner = &owner;
  made->knownFor = nullptr;
  made->known = nullptr;
  return result.release();
}

void readyMethodType() {
  PyTypeObject& type = methodType;
  prepareType(type, "_tarvelon_host.Method", sizeof(Method), nullptr);
  type.tp_flags |= Py_TPFLAGS_DISALLOW_INSTANTIATION;
  type.tp_dealloc = deallocateMethod;
  type.tp_descr_get = get;
  type.tp_getset = gMembers;
  require(PyType_Ready, &type);
  readyBoundMethodType();
}

}  // namespace pyhost
