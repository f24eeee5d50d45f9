#pragma once

#include "python/host/NativeViews.h"

namespace pyhost {

/// What a sequence type holds, told by what its `at` gives.
Elements elementsOf(HostType& type);

/// Reads elements of a sequence one after another: finds the host's method `at` and boxes the sequence once.
/// The sequence must be held meanwhile.
class ElementReader {
 public:
  explicit ElementReader(PyObject* sequence);
  ElementReader(const ElementReader&) = delete;
  ElementReader& operator=(const ElementReader&) = delete;
  ~ElementReader() { hx::hxDestroyArray(mSelf); }

  /// Raises if the sequence is gone.
  int size() const;
  /// The element at an index from 0.
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

/// The type of what `iter(sequence)` gives.
void readySequenceWalkType();
PyObject* walkSequence(PyObject* sequence);

}  // namespace pyhost
