#pragma once

#include "python/host/Objects.h"

namespace pyhost {

/// Changes of a sequence as a whole, as a Python list has them; each is one change of the model. All raise
/// K7Q.WrongType for a sequence that cannot be changed, and nothing has changed when they raise.

/// Raises for a class without the methods that change a sequence.
void requireChangeable(PyObject* sequence);
/// Calls one of these methods.
template <class... Arguments>
Reference changeSequence(PyObject* sequence, const char* method, Arguments... arguments) {
  requireChangeable(sequence);
  const Reference name = toKey(method);
  return owned(PyObject_CallMethodObjArgs, sequence, name.get(), arguments..., nullptr);
}

/// `sequence[slice] = elements`, or `del sequence[slice]` without elements. Of a sequence that holds an
/// element once:
/// - a slice without a step holds the elements afterwards, in their order; the other ones of the slice have
///   left, and an element that stood outside it has moved there;
/// - each place of a slice with a step is assigned in turn, as assignItem() does it.
void assignSlice(PyObject* sequence, PyObject* slice, PyObject* elements);
/// `sequence[at] = element`. An element that stands elsewhere in a sequence that holds it once exchanges
/// places with the one at the index.
void assignItem(PyObject* sequence, int at, PyObject* element);

/// As a list's methods of these names.
void sortSequence(PyObject* sequence, PyObject* arguments, PyObject* keywords);
void reverseSequence(PyObject* sequence);

}  // namespace pyhost
