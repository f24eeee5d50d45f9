#pragma once

#include "python/host/objects/Objects.h"

namespace pyhost {

/// The descriptor in a type's dict for a property. Makes the property readable and writable as an attribute.
struct Property {
  PyObject_HEAD const ruvo::PropertySlot* slot;
  PyObject* name;
  bool isMany;
};

/// The descriptor in a type's dict for all methods of one name.
struct Method {
  PyObject_HEAD ruvo::InternedName name;
  PyObject* text;
  /// The class whose type contains the descriptor.
  ruvo::Class* owner;
  /// A cache with one entry: `known` are the overloads for an object of class `knownFor`. One entry is
  /// enough, because loops usually call a method on objects of one class.
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
/// The descriptor for a literal of an enumeration. Reading it calls the static method of that name.
PyObject* newLiteral(ruvo::Class& owner, const ruvo::InternedName& name);
/// The descriptor for the docstring of a class. The text is composed each time it is read.
PyObject* newClassDoc(ruvo::Class& cls);

/// Read and write through a descriptor. REQUIRES: the descriptor was found in the type of `self`.
PyObject* readProperty(Property* property, PyObject* self);
void writeProperty(Property* property, PyObject* self, PyObject* value);

/// A bound method. `self` may be a type; then the method is bound to the class.
PyObject* bindMethod(Method* method, PyObject* self);

/// Calls a method on an object. `arguments` do not include the object.
PyObject* callOnObject(Method* method, PyObject* self, PyObject* const* arguments, std::size_t count);
/// Calls a static method. Another method can be called too, with the object as the first argument.
PyObject* callOnClass(Method* method, HostType* type, PyObject* const* arguments, std::size_t count);

/// The overloads of `method` for an object of class `cls`, or for `cls` itself.
const ruvo::OverloadSet& overloadsOf(Method* method, ruvo::Class& cls);

}  // namespace pyhost
