#include <array>

#include "python/host/Values.h"

namespace pyhost {

PyTypeObject iteratorType{};

namespace {

/// Iterators are places: equal when they stand at the same one.
PyObject* compare(PyObject* left, PyObject* right, int operation) {
  return guarded([&]() -> PyObject* {
    const bool isComparable = (operation == Py_EQ || operation == Py_NE) && isHostObject(right) &&
                              typeOf(right)->kind == TypeKind::Iterator;
    if (!isComparable) Py_RETURN_NOTIMPLEMENTED;
    ruvo::Class& cls = *typeOf(left)->cls;
    if (!typeOf(right)->cls->isKindOf(cls) && !cls.isKindOf(*typeOf(right)->cls)) Py_RETURN_NOTIMPLEMENTED;
    PyObject* narrow = typeOf(right)->cls->isKindOf(cls) ? left : right;
    const std::array other{ruvo::HostValue::ofObject(interfaceOf(narrow == left ? right : left))};
    const bool isEqual = ruvo::call(interfaceOf(narrow), "eq", other).slot().logical();
    return PyBool_FromLong(isEqual == (operation == Py_EQ) ? 1 : 0);
  });
}

}  // namespace

void readyIteratorType() {
  PyTypeObject& type = iteratorType;
  prepareType(type, "_tarvelon_host.Iterator", sizeof(HostIterator),
              "What every iterator of the host is: a place in a sequence.");
  Py_SET_TYPE(reinterpret_cast<PyObject*>(&type), &hostMetaType);
  type.tp_base = &hostObjectType;
  type.tp_flags |= Py_TPFLAGS_BASETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION;
  type.tp_dealloc = deallocatorOf(TypeKind::Iterator);
  type.tp_hash = PyObject_HashNotImplemented;  // it moves
  type.tp_richcompare = compare;
  require(PyType_Ready(&type));
}

}  // namespace pyhost
