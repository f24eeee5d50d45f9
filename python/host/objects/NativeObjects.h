#pragma once

#include "python/host/objects/Objects.h"
#include "tarvelon/boundary/k7q/Object.h"

/// Conversion between Python objects and handles of the model, for functions that the host adds to models and
/// objects.
namespace pyhost {

/// The model of a Python object. Raises K7Q.WrongType, with the name of the function, if `value` is not a
/// model. A closed model is accepted; the called function must handle it.
K7Q::Model toModel(PyObject* value, const char* function);
/// Whether a value is a model.
bool isModel(PyObject* value);
/// The same for an object of a metamodel class.
K7Q::ClassObject toModelObject(PyObject* value, const char* function);
/// Whether the host object is an immutable view. REQUIRES: `value` is a host object.
bool isImmutableView(PyObject* value) noexcept;
/// The Python object of a handle, with the object's dynamic class or the immutable one; None for an empty
/// handle.
Reference fromModelObject(const K7Q::ObjectHandle& object, bool isImmutable = false);

/// Converts a property's value to bool, int, float, str or an object; None if there is no value.
Reference fromValue(const K7Q::Object& value);

/// The truth value of a Python object.
bool isTrue(PyObject* value);

}  // namespace pyhost
