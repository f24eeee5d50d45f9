#include <array>

#include "python/host/objects/Descriptors.h"
#include "python/host/objects/Docs.h"
#include "python/host/objects/ErrorNotes.h"
#include "python/host/objects/Values.h"

namespace pyhost {

PyTypeObject propertyType{};

namespace {

Property* asProperty(PyObject* object) noexcept { return reinterpret_cast<Property*>(object); }

/// Python ends `a.many += elements` with an assignment of the property's own sequence. That assignment is
/// ignored.
bool isOwnSequence(const Property& property, PyObject* self, PyObject* value) noexcept {
  return property.isMany && heldSequence(self, *property.slot) == value;
}

/// Raises if `self` has no such property. The descriptor can be called directly with any object.
void requireOwner(const Property& property, PyObject* self) {
  if (isHostObject(self) && typeOf(self)->cls->isKindOf(*property.slot->owner)) return;
  raise(errors().wrongType, std::string(property.slot->owner->shortName()) + "." +
                                std::string(property.slot->name.view()) + ": expected an object of class " +
                                std::string(property.slot->owner->getFullName().view()) + ", got " +
                                describePython(self));
}

/// For example "Package.Name"; the class is the object's own class.
std::string placeOf(const ruvo::PropertySlot& slot, PyObject* self) {
  return std::string(typeOf(self)->cls->shortName()) + "." + std::string(slot.name.view());
}

/// The note for a refused write: the name of the property and what to do instead.
std::string noteOfWrite(const ruvo::PropertySlot& slot, PyObject* self, PyObject* value) {
  const std::string property(slot.name.view());
  const std::string name = placeOf(slot, self);
  const std::array given{value};
  if (!lossAmong(self, given).empty()) return noteOf(name, self, given);
  if (slot.guard && slot.guard->isReadOnly())
    return name + " is computed: change the values that it is computed from";
  if (slot.guard && slot.guard->isMany()) {
    return name + " has many values: change its sequence, as in object." + property + ".append(value)";
  }
  return noteOf(name + " was not set", self);
}

void write(const Property& property, PyObject* self, PyObject* value) {
  const ruvo::PropertySlot& slot = *property.slot;
  TextBuffer texts;
  ruvo::HostValue converted;
  try {
    converted = toHostValue(value, texts, Place{*typeOf(self)->cls, slot.name.view(), 0, &slot});
  } catch (const PythonError&) {
    // If the property cannot be set at all, that error is more useful than the one about the value.
    if (slot.guard) slot.guard->requireSettable(interfaceOf(self));
    throw;
  }
  ruvo::setProperty(interfaceOf(self), slot, converted);
}

PyObject* get(PyObject* descriptor, PyObject* self, PyObject* /*type*/) {
  if (!self || self == Py_None) return Py_NewRef(descriptor);
  return guarded([&] {
    requireOwner(*asProperty(descriptor), self);
    return readProperty(asProperty(descriptor), self);
  });
}

int set(PyObject* descriptor, PyObject* self, PyObject* value) {
  return guarded(-1, [&] {
    requireOwner(*asProperty(descriptor), self);
    writeProperty(asProperty(descriptor), self, value ? value : Py_None);
    return 0;
  });
}

PyObject* doc(PyObject* descriptor, void* /*closure*/) {
  return guarded([&] { return toStr(describeProperty(*asProperty(descriptor)->slot)).release(); });
}

PyObject* name(PyObject* descriptor, void* /*closure*/) { return Py_NewRef(asProperty(descriptor)->name); }

PyObject* represent(PyObject* descriptor) {
  return guarded([&] {
    const ruvo::PropertySlot& slot = *asProperty(descriptor)->slot;
    return toStr("<property " + std::string(slot.name.view()) + " of " + std::string(shownName(*slot.owner)) +
                 ">")
        .release();
  });
}

void deallocate(PyObject* descriptor) {
  drop(asProperty(descriptor)->name);
  PyObject_Free(descriptor);
}

PyGetSetDef gMembers[] = {{"__doc__", doc, nullptr, nullptr, nullptr},
                          {"__name__", name, nullptr, nullptr, nullptr},
                          {nullptr, nullptr, nullptr, nullptr, nullptr}};

}  // namespace

PyObject* readProperty(Property* property, PyObject* self) {
  const auto read = [&] {
    return withNote([&] { return noteOf(placeOf(*property->slot, self), self); },
                    [&] { return toPython(ruvo::getProperty(interfaceOf(self), *property->slot)); });
  };
  if (!property->isMany) return read();
  PyObject* held = heldSequence(self, *property->slot);
  if (held && isValid(interfaceOf(self))) return Py_NewRef(held);
  Reference sequence(read());
  // A finaliser may have run during the read, and may have read the property too.
  held = heldSequence(self, *property->slot);
  if (held && isValid(interfaceOf(self))) return Py_NewRef(held);
  const bool isNew = isHostObject(sequence.get()) && typeOf(sequence.get())->kind == TypeKind::Sequence &&
                     !reinterpret_cast<HostSequence*>(sequence.get())->owner;
  if (isNew) holdSequence(sequence.get(), self, *property->slot);
  return sequence.release();
}

void writeProperty(Property* property, PyObject* self, PyObject* value) {
  if (isOwnSequence(*property, self, value)) return;
  withNote([&] { return noteOfWrite(*property->slot, self, value); }, [&] { write(*property, self, value); });
}

PyObject* newProperty(const ruvo::PropertySlot& slot, PyObject* name) {
  auto* made = PyObject_New(Property, &propertyType);
  Reference result = owned(reinterpret_cast<PyObject*>(made));
  made->slot = &slot;
  made->isMany = slot.guard && slot.guard->isMany();
  made->name = Py_NewRef(name);
  return result.release();
}

void readyPropertyType() {
  PyTypeObject& type = propertyType;
  prepareType(type, "_tarvelon_host.Property", sizeof(Property), nullptr);
  type.tp_flags |= Py_TPFLAGS_DISALLOW_INSTANTIATION;
  type.tp_dealloc = deallocate;
  type.tp_descr_get = get;
  type.tp_descr_set = set;
  type.tp_getset = gMembers;
  type.tp_repr = represent;
  require(PyType_Ready, &type);
}

}  // namespace pyhost
