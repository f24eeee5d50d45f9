#include <array>

#include "python/host/objects/NativeViews.h"
#include "python/host/objects/Values.h"

namespace pyhost {

PyTypeObject iteratorType{};

namespace {

/// Iterators are equal if they are at the same position of the same sequence.
PyObject* compare(PyObject* left, PyObject* right, int operation) {
  return guarded([&]() -> PyObject* {
    const bool isComparable = (operation == Py_EQ || operation == Py_NE) && isHostObject(right) &&
                              typeOf(right)->kind == TypeKind::Iterator;
    if (!isComparable) Py_RETURN_NOTIMPLEMENTED;
    if (reinterpret_cast<HostIterator*>(left)->isRetired ||
        reinterpret_cast<HostIterator*>(right)->isRetired) {
      return PyBool_FromLong((left == right) == (operation == Py_EQ) ? 1 : 0);
    }
    ruvo::Class& cls = *typeOf(left)->cls;
    if (!typeOf(right)->cls->isKindOf(cls) && !cls.isKindOf(*typeOf(right)->cls)) Py_RETURN_NOTIMPLEMENTED;
    PyObject* narrow = typeOf(right)->cls->isKindOf(cls) ? left : right;
    const std::array other{ruvo::HostValue::ofObject(interfaceOf(narrow == left ? right : left))};
    const bool isEqual = ruvo::call(interfaceOf(narrow), "eq", other).slot().logical();
    return PyBool_FromLong(isEqual == (operation == Py_EQ) ? 1 : 0);
  });
}

/// Whether the iterator's sequence no longer exists, because its object was destroyed or its model closed.
bool isDestroyed(const HostIterator& iterator) {
  const NativeSequence sequence = iterator.sequence ? nativeSequence(iterator.sequence) : NativeSequence();
  if (!sequence) return false;
  try {
    sequence.size();
    return false;
  } catch (const std::exception&) {
    return true;
  }
}

PyObject* represent(PyObject* iterator) {
  return guarded([&] {
    const bool isGone = isDestroyed(*reinterpret_cast<HostIterator*>(iterator));
    return toStr("<" + std::string(shownName(*typeOf(iterator)->cls)) + (isGone ? " destroyed>" : ">"))
        .release();
  });
}

}  // namespace

void readyIteratorType() {
  PyTypeObject& type = iteratorType;
  prepareType(type, "_tarvelon_host.Iterator", sizeof(HostIterator),
              "The base of all iterators of the host. An iterator is a position in a sequence.");
  Py_SET_TYPE(reinterpret_cast<PyObject*>(&type), &hostMetaType);
  type.tp_base = &hostObjectType;
  type.tp_flags |= Py_TPFLAGS_BASETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION;
  type.tp_dealloc = deallocatorOf(TypeKind::Iterator);
  type.tp_hash = PyObject_HashNotImplemented;  // not hashable, because it is mutable
  type.tp_repr = represent;
  type.tp_richcompare = compare;
  require(PyType_Ready, &type);
}

}  // namespace pyhost
