#pragma once

#include "python/host/objects/Objects.h"

namespace pyhost {

/// Changes of a whole sequence with the semantics of a Python list. Each is one change of the model. All
/// raise K7Q.WrongType for a sequence that cannot be changed. If they raise, nothing has changed.

/// Raises if the class has no methods that change a sequence.
void requireChangeable(PyObject* sequence);
/// Calls one of these methods.
template <class... Arguments>
Reference changeSequence(PyObject* sequence, const char* method, Arguments... arguments) {
  requireChangeable(sequence);
  const Reference name = toKey(method);
  return owned(PyObject_CallMethodObjArgs, sequence, name.get(), arguments..., nullptr);
}

/// `sequence[slice] = elements`, or `del sequence[slice]` if `elements` is null. For a unique sequence:
/// - After the assignment to a slice without a step, the slice consists of the given elements in their order.
///   Elements that were in the slice before are removed, and a given element from outside the slice moves
///   into it.
/// - A slice with a step is assigned place by place, like assignItem().
void assignSlice(PyObject* sequence, PyObject* slice, PyObject* elements);
/// `sequence[at] = element`. If the sequence is unique and holds the element at another index, the two
/// elements are swapped.
void assignItem(PyObject* sequence, int at, PyObject* element);

/// Like the methods of these names of a Python list.
void sortSequence(PyObject* sequence, PyObject* arguments, PyObject* keywords);
void reverseSequence(PyObject* sequence);

}  // namespace pyhost
