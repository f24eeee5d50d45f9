#pragma once

#include "python/host/Objects.h"
#include "tarvelon/boundary/k7q/Object.h"

/// Python objects as handles of the model, and back: for what the host adds to models and objects beyond
/// their records.
namespace pyhost {

/// The model behind a Python object. Raises K7Q.WrongType, naming the function, for anything else; a closed
/// model is left to the callee.
K7Q::Model toModel(PyObject* value, const char* function);
/// The same for an object of a class of a metamodel.
K7Q::ClassObject toModelObject(PyObject* value, const char* function);
/// Whether such an object is shown by its immutable class. REQUIRES: a host object.
bool isImmutableView(PyObject* value) noexcept;
/// A Python object of the handle's dynamic class, or of the immutable one; None for an empty handle.
Reference fromModelObject(const K7Q::ObjectHandle& object, bool isImmutable = false);

/// The Python value of a property's value: bool, int, float, str, an object; None for none.
Reference fromValue(const K7Q::Object& value);

/// Whether a value counts as true, for Python.
bool isTrue(PyObject* value);

}  // namespace pyhost
