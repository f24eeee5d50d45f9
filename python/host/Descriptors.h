#pragma once

#include "python/host/Objects.h"

namespace pyhost {

/// What stands in a type's dict for a property: reads and writes it as an attribute.
struct Property {
  PyObject_HEAD const ruvo::PropertySlot* slot;
  PyObject* name;
  bool isMany;
};

/// What stands in a type's dict for all methods of one name.
struct Method {
  PyObject_HEAD ruvo::InternedName name;
  PyObject* text;
  /// The class whose type holds it.
  ruvo::Class* owner;
  /// What a call on an object of `knownFor` chooses from; one class is remembered, since loops stay with one.
  ruvo::Class* knownFor;
  const ruvo::OverloadSet* known;
};

extern PyTypeObject propertyType;
extern PyTypeObject methodType;

void readyPropertyType();
void readyMethodType();
void readyLiteralType();
void readyDocType();

PyObject* newProperty(const ruvo::PropertySlot& slot, PyObject* name);
PyObject* newMethod(ruvo::Class& owner, const ruvo::InternedName& name, PyObject* text);
/// A literal of an enumeration: reading it calls the static method of that name.
PyObject* newLiteral(ruvo::Class& owner, const ruvo::InternedName& name);
/// The docstring of a class, written when it is read.
PyObject* newClassDoc(ruvo::Class& cls);

/// Reads and writes through a descriptor. REQUIRES: the descriptor was found in the type of `self`.
PyObject* readProperty(Property* property, PyObject* self);
void writeProperty(Property* property, PyObject* self, PyObject* value);

/// A method bound to an object or, with a type for `self`, to a class.
PyObject* bindMethod(Method* method, PyObject* self);

/// Calls a method on an object. `arguments` do not include it.
PyObject* callOnObject(Method* method, PyObject* self, PyObject* const* arguments, std::size_t count);
/// Calls a static method or, with the object as first argument, another one.
PyObject* callOnClass(Method* method, HostType* type, PyObject* const* arguments, std::size_t count);

/// The records that a call of `method` on an object or class of `cls` chooses from.
const ruvo::OverloadSet& overloadsOf(Method* method, ruvo::Class& cls);

}  // namespace pyhost
