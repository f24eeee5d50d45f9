#pragma once

#include "python/host/objects/NativeViews.h"

namespace pyhost {

/// The kind of elements of a sequence type, found from the result type of its `at` method.
Elements elementsOf(HostType& type);

/// Reads the elements of a sequence one after another. It looks up the method `at` and boxes the sequence
/// only once. The caller must hold a reference on the sequence as long as the reader exists.
class ElementReader {
 public:
  explicit ElementReader(PyObject* sequence);
  ElementReader(const ElementReader&) = delete;
  ElementReader& operator=(const ElementReader&) = delete;
  ~ElementReader() { hx::hxDestroyArray(mSelf); }

  /// Raises if the sequence no longer exists.
  int size() const;
  /// The element at an index, counted from 0.
  PyObject* at(int index) const;
  bool holdsObjects() const noexcept { return mElements == Elements::Objects; }

 private:
  PyObject* mSequence;
  ruvo::RVOInterface* mInterface;
  const ruvo::RVOMethodInfo* mRecord;
  NativeSequence mNative;
  Elements mElements;
  hx::hxArray* mSelf = nullptr;
};

/// Readies the type of the iterators that `iter(sequence)` returns.
void readySequenceWalkType();
PyObject* walkSequence(PyObject* sequence);

}  // namespace pyhost
