#include "python/host/objects/Objects.h"

#include <utility>

#include "python/host/objects/Descriptors.h"
#include "python/host/objects/IteratorGuard.h"
#include "python/host/objects/Values.h"
#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace pyhost {

PyTypeObject hostObjectType{};

std::string_view shownName(std::string_view fullName) noexcept {
  const std::size_t last = fullName.rfind('.');
  if (last == std::string_view::npos || last == 0) return fullName;
  const std::size_t before = fullName.rfind('.', last - 1);
  return before == std::string_view::npos ? fullName : fullName.substr(before + 1);
}

const void* nativeIdentity(const ruvo::RVOInterface* interface) noexcept {
  const void* bound = interface->getBoundPointer(ruvo::InternedName());
  if (const void* object = K7Q::DeviantRegistry::getVariantInfo(bound).object) return object;
  return bound ? bound : interface;
}

namespace {

/// Changes the Python type of an object after the object system has narrowed the object's class. This works
/// because both types have the same memory layout: only the types of sequences and iterators have another
/// one. If the layouts differ, the function raises.
void retype(PyObject* object, HostType* type) {
  PyTypeObject* before = Py_TYPE(object);
  if (asPyType(type)->tp_basicsize != before->tp_basicsize) {
    raise(errors().exception, "an object of class '" + std::string(asHostType(before)->cls->getClassName()) +
                                  "' cannot become an object of class '" + type->cls->getClassName() +
                                  "', which is of another kind; drop the object and read it again");
  }
  Py_INCREF(asPyType(type));
  Py_SET_TYPE(object, asPyType(type));
  drop(reinterpret_cast<PyObject*>(before));
}

PyObject* newObject(HostType* type, ruvo::RVOInterface* interface) {
  ObjectAllocation allocation(type);
  return allocation.fill(interface);
}

// The host-data word is cleared first: from here on, a callback of a weak reference may create a new Python
// object for the same host object.
void dropInterface(PyObject* self) {
  HostObject* object = asHostObject(self);
  object->interface->setHostData(nullptr);
  if (object->weakReferences) enter(PyObject_ClearWeakRefs, self);
  object->interface->release();
}

void freeObject(PyObject* self) noexcept {
  PyTypeObject* type = Py_TYPE(self);
  PyObject_Free(self);
  drop(reinterpret_cast<PyObject*>(type));
}

void deallocateObject(PyObject* self) {
  dropInterface(self);
  freeObject(self);
}

void deallocateIterator(PyObject* self) {
  PyObject* sequence = reinterpret_cast<HostIterator*>(self)->sequence;
  forgetIterator(*reinterpret_cast<HostIterator*>(self));
  dropInterface(self);
  drop(sequence);
  freeObject(self);
}

void deallocateSequence(PyObject* self) {
  auto* sequence = reinterpret_cast<HostSequence*>(self);
  PyObject* owner = sequence->owner;
  if (owner) {
    HostSequence** place = &asHostObject(owner)->sequences;
    while (*place != sequence) place = &(*place)->next;
    *place = sequence->next;
  }
  dropInterface(self);
  drop(owner);
  freeObject(self);
}

}  // namespace

ObjectAllocation::ObjectAllocation(HostType* type)
    : mObject(owned(_PyObject_New, asPyType(type)).release()) {}

ObjectAllocation::~ObjectAllocation() {
  if (mObject) freeObject(mObject);
}

PyObject* ObjectAllocation::fill(ruvo::RVOInterface* interface) noexcept {
  PyObject* object = std::exchange(mObject, nullptr);
  auto* made = reinterpret_cast<HostObject*>(object);
  made->interface = interface;
  made->weakReferences = nullptr;
  made->sequences = nullptr;
  const TypeKind kind = asHostType(Py_TYPE(object))->kind;
  if (kind == TypeKind::Iterator) {
    reinterpret_cast<HostIterator*>(made)->sequence = nullptr;
    reinterpret_cast<HostIterator*>(made)->isRetired = false;
  } else if (kind == TypeKind::Sequence) {
    reinterpret_cast<HostSequence*>(made)->owner = nullptr;
    reinterpret_cast<HostSequence*>(made)->iterators = nullptr;
  }
  interface->addRef();
  interface->setHostData(made);
  return object;
}

destructor deallocatorOf(TypeKind kind) noexcept {
  switch (kind) {
    case TypeKind::Sequence:
      return deallocateSequence;
    case TypeKind::Iterator:
      return deallocateIterator;
    default:
      return deallocateObject;
  }
}

PyObject* heldSequence(PyObject* owner, const ruvo::PropertySlot& slot) noexcept {
  for (HostSequence* each = asHostObject(owner)->sequences; each; each = each->next) {
    if (each->slot == &slot) return asPyObject(&each->base);
  }
  return nullptr;
}

void holdSequence(PyObject* sequence, PyObject* owner, const ruvo::PropertySlot& slot) noexcept {
  auto* held = reinterpret_cast<HostSequence*>(sequence);
  held->owner = Py_NewRef(owner);
  held->slot = &slot;
  held->next = asHostObject(owner)->sequences;
  asHostObject(owner)->sequences = held;
}

bool isValid(const ruvo::RVOInterface* interface) {
  const auto info = K7Q::DeviantRegistry::getVariantInfo(interface->getBoundPointer(ruvo::InternedName()));
  using K7Q::NSInterface::ObjectIntf;
  const auto* object =
      info.object ? static_cast<ObjectIntf*>(info.object->cast(K7Q::tagsOf<ObjectIntf>())) : nullptr;
  return !object || object->isValid(info.deviant);
}

HostType* typeOf(PyObject* object) {
  HostType* type = asHostType(Py_TYPE(object));
  ruvo::RVOClass* cls = interfaceOf(object)->getClass();
  if (type->cls == cls) return type;
  retype(object, typeOf(static_cast<ruvo::Class&>(*cls)));
  return asHostType(Py_TYPE(object));
}

namespace {

/// If an object comes from a cast, its class is announced as K7Q.Object or K7Q.ImmutableObject. This function
/// announces the object's own class. So the class that Python sees does not depend on the call that returned
/// the object first.
void narrow(ruvo::RVOInterface* interface) {
  static ruvo::Class* const general = &ruvo::Class::get(ruvo::InternedName("K7Q.ImmutableObject"));
  static ruvo::Class* const changeable = &ruvo::Class::get(ruvo::InternedName("K7Q.Object"));
  const ruvo::Class* announced = &ruvo::classOf(*interface);
  if (announced != general && announced != changeable) return;
  void* id = interface->getBoundPointer(ruvo::InternedName());
  auto* native = K7Q::DeviantRegistry::getVariantInfo(id).object;
  using K7Q::NSInterface::ObjectIntf;
  const auto* object = native ? static_cast<ObjectIntf*>(native->cast(K7Q::tagsOf<ObjectIntf>())) : nullptr;
  if (!object) return;
  ruvo::factory::basic::BindingRegistry::announce(id,
                                                  object->getRuvoName(K7Q::DeviantRegistry::isImmutable(id)));
}

}  // namespace

PyObject* wrap(ruvo::RVOInterface* interface) {
  if (auto* known = static_cast<PyObject*>(interface->getHostData())) {
    typeOf(known);
    return Py_NewRef(known);
  }
  narrow(interface);
  HostType* const type = typeOf(ruvo::classOf(*interface));
  // A finaliser may have run while the type was created, and may have created the Python object.
  if (auto* known = static_cast<PyObject*>(interface->getHostData())) return Py_NewRef(known);
  return newObject(type, interface);
}

namespace {

/// The mutable class of an immutable one: X for ImmutableX; null if there is none.
ruvo::Class* changeableOf(const ruvo::Class& cls) {
  constexpr std::string_view kPrefix = "Immutable";
  std::string name(cls.getFullName().view());
  const std::size_t start = name.rfind('.') + 1;
  if (name.compare(start, kPrefix.size(), kPrefix) != 0) return nullptr;
  name.erase(start, kPrefix.size());
  constexpr std::string_view kSequence = "SequenceOfImmutable";
  if (name.compare(start, kSequence.size(), kSequence) == 0) {
    name.erase(start + kSequence.size() - kPrefix.size(), kPrefix.size());
  }
  return ruvo::Class::find(name);
}

/// The hint in the error for an unknown name: the mutable class has it, or a similar name exists.
std::string hintFor(HostType& type, const std::string& text) {
  ruvo::Class& cls = *type.cls;
  if (text.starts_with("_")) return {};
  if (ruvo::Class* changeable = changeableOf(cls); changeable && changeable->findMethods(text)) {
    return "; " + std::string(shownName(*changeable)) + " has it, but this is an immutable view";
  }
  const std::string nearest = nearestMember(type, text);
  return nearest.empty() ? "" : "; did you mean '" + nearest + "'?";
}

[[noreturn]] void raiseUnknownAttribute(HostType* type, PyObject* name) {
  const std::string text = toUtf8(name);
  raiseUnknownName(name, "class '" + std::string(type->cls->getFullName().view()) +
                             "' has no property or method " + ruvo::quotedName(text) + hintFor(*type, text));
}

PyObject* getAttribute(PyObject* self, PyObject* name) {
  return guarded([&]() -> PyObject* {
    HostType* type = typeOf(self);
    PyObject* found = _PyType_Lookup(asPyType(type), name);
    if (!found) raiseUnknownAttribute(type, name);
    if (Py_TYPE(found) == &propertyType) return readProperty(reinterpret_cast<Property*>(found), self);
    if (Py_TYPE(found) == &methodType) return bindMethod(reinterpret_cast<Method*>(found), self);
    return owned(PyObject_GenericGetAttr, self, name).release();
  });
}

int setAttribute(PyObject* self, PyObject* name, PyObject* value) {
  return guarded(-1, [&] {
    HostType* type = typeOf(self);
    PyObject* found = _PyType_Lookup(asPyType(type), name);
    if (!found) raiseUnknownAttribute(type, name);
    // A property that Python code has added to the class.
    if (Py_TYPE(found) == &PyProperty_Type) {
      const Reference setter = owned(PyObject_GetAttrString, found, "fset");
      if (value && setter.get() != Py_None) return enter(PyProperty_Type.tp_descr_set, found, self, value);
      raiseUnknownName(name, std::string(type->cls->shortName()) + "." + toUtf8(name) +
                                 std::string(setter.get() == Py_None ? " is read-only"
                                                                     : " cannot be deleted; set it instead"));
    }
    if (Py_TYPE(found) != &propertyType) {
      raiseUnknownName(name, std::string(type->cls->shortName()) + "." + toUtf8(name) +
                                 " is not a property: it cannot be assigned or deleted");
    }
    writeProperty(reinterpret_cast<Property*>(found), self, value ? value : Py_None);
    return 0;
  });
}

/// The state that a repr shows: " destroyed", " closed", " immutable", or nothing.
std::string_view stateOf(const ruvo::RVOInterface* interface) {
  const void* id = interface->getBoundPointer(ruvo::InternedName());
  const auto info = K7Q::DeviantRegistry::getVariantInfo(id);
  if (!info.object) return "";
  using K7Q::NSInterface::ObjectIntf;
  const auto* object = static_cast<ObjectIntf*>(info.object->cast(K7Q::tagsOf<ObjectIntf>()));
  if (object && !object->isValid(info.deviant)) {
    return info.object->cast(K7Q::tagsOf<K7Q::NSInterface::ModelIntf>()) ? " closed" : " destroyed";
  }
  return !info.deviant.isWritable() || (object && K7Q::DeviantRegistry::isImmutable(id)) ? " immutable" : "";
}

/// The text that identifies an object for the user: its name, or the URI of a model. Void for a class without
/// either.
ruvo::HostResult readName(ruvo::RVOInterface* interface, ruvo::Class& cls) {
  if (const ruvo::PropertySlot* slot = cls.findProperty("Name")) return ruvo::getProperty(interface, *slot);
  for (const char* method : {"name", "getUri"}) {
    if (cls.findMethods(method)) return ruvo::call(interface, method, {});
  }
  return {};
}

/// A blank and the quoted name; empty if there is no name.
std::string nameOf(PyObject* self, ruvo::Class& cls) {
  const Reference name(toPython(readName(interfaceOf(self), cls)));
  const bool isShown = PyUnicode_Check(name.get()) && PyUnicode_GET_LENGTH(name.get()) > 0;
  return isShown ? " " + toUtf8(owned(PyObject_Repr, name.get()).get()) : std::string();
}

PyObject* represent(PyObject* self) {
  return guarded([&] {
    ruvo::Class& cls = *typeOf(self)->cls;
    const std::string_view state = stateOf(interfaceOf(self));
    const bool isGone = state == " destroyed" || state == " closed";
    std::string text = "<" + std::string(shownName(cls)) + (isGone ? "" : nameOf(self, cls));
    return toStr(text.append(state).append(">")).release();
  });
}

Py_hash_t hash(PyObject* self) { return _Py_HashPointer(nativeIdentity(interfaceOf(self))); }

PyObject* compare(PyObject* left, PyObject* right, int operation) {
  if ((operation != Py_EQ && operation != Py_NE) || !isHostObject(right)) Py_RETURN_NOTIMPLEMENTED;
  const bool isSame = nativeIdentity(interfaceOf(left)) == nativeIdentity(interfaceOf(right));
  return PyBool_FromLong(isSame == (operation == Py_EQ) ? 1 : 0);
}

const char* insteadOfCopy(TypeKind kind) noexcept {
  switch (kind) {
    case TypeKind::Enumeration:
      return "store its literal, str(value), and convert it back with fromString";
    case TypeKind::Sequence:
      return "it is a view of a model; list(sequence) copies the elements";
    case TypeKind::Iterator:
      return "clone() returns another iterator at the same position";
    case TypeKind::MetaProperties:
      return "MetaProperty() of the class returns it";
    default:
      return "it represents an object in a model; construct a new object and set its properties";
  }
}

PyObject* refuseCopy(PyObject* self, PyObject* /*arguments*/) {
  return guarded([&]() -> PyObject* {
    const HostType* type = typeOf(self);
    raise(errors().wrongType,
          std::string(shownName(*type->cls)) + " cannot be copied or pickled: " + insteadOfCopy(type->kind));
  });
}

PyMethodDef gMethods[] = {
    {"__copy__", refuseCopy, METH_NOARGS, nullptr},     {"__deepcopy__", refuseCopy, METH_VARARGS, nullptr},
    {"__reduce__", refuseCopy, METH_NOARGS, nullptr},   {"__reduce_ex__", refuseCopy, METH_VARARGS, nullptr},
    {"__getstate__", refuseCopy, METH_NOARGS, nullptr}, {nullptr, nullptr, 0, nullptr}};

}  // namespace

void readyHostObjectType() {
  PyTypeObject& type = hostObjectType;
  prepareType(type, "_tarvelon_host.HostObject", sizeof(HostObject),
              "The base of all objects of the host's classes.");
  Py_SET_TYPE(reinterpret_cast<PyObject*>(&type), &hostMetaType);
  type.tp_flags |= Py_TPFLAGS_BASETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION;
  type.tp_weaklistoffset = offsetof(HostObject, weakReferences);
  type.tp_dealloc = deallocatorOf(TypeKind::Object);
  type.tp_getattro = getAttribute;
  type.tp_setattro = setAttribute;
  type.tp_repr = represent;
  type.tp_hash = hash;
  type.tp_richcompare = compare;
  type.tp_methods = gMethods;
  require(PyType_Ready, &type);
}

std::string nearestMember(HostType& type, const std::string& name) {
  std::string nearest = type.cls->nearestMember(name);
  if (!nearest.empty()) return nearest;
  const Reference list = owned(PyObject_Dir, reinterpret_cast<PyObject*>(&type));
  std::vector<std::string> names;
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(list.get()); ++i) {
    std::string each = toUtf8(PyList_GET_ITEM(list.get(), i));
    if (!each.starts_with("_")) names.push_back(std::move(each));
  }
  const std::vector<std::string_view> candidates(names.begin(), names.end());
  return ruvo::nearestName(name, candidates);
}

}  // namespace pyhost
