#pragma once

#include <span>
#include <string>
#include <vector>

#include "python/host/objects/NativeViews.h"

namespace pyhost {

/// The elements of a sequence as a vector, to change them and write them back.
using Contents = std::vector<K7Q::Generic::Ref>;

/// Reads and writes the contents of a sequence. The caller must hold a reference on the Python object as long
/// as this object exists.
class SequenceContents {
 public:
  /// Raises if the sequence no longer exists.
  explicit SequenceContents(PyObject* sequence);

  Contents read() const;
  /// Converts a Python value into an element. Error texts start with `where`.
  K7Q::Generic::Ref element(PyObject* value, const std::string& where) const;
  /// Whether the sequence holds each element at most once.
  bool isUnique() const;
  /// Whether iterators stay valid and follow their element when the sequence changes. That is so for
  /// sequences of enumeration values that a script creates. If such a sequence is unique, it ignores a value
  /// that it already holds.
  bool keepsIterators() const noexcept;
  /// Replaces the contents of the sequence, as one change. If it raises, nothing has changed.
  void write(const Contents& contents) const;

  std::size_t hash(const K7Q::Generic::Ref& element) const noexcept;
  bool isSame(const K7Q::Generic::Ref& left, const K7Q::Generic::Ref& right) const noexcept;

 private:
  void writeNumbers(const Contents& contents) const;

  PyObject* mSequence;
  NativeSequence mNative;
  /// Keeps the native sequence alive while Python code runs, even if that code closes the model.
  K7Q::SequenceHandle mHeld;
  Elements mElements;
  const ruvo::Class* mElementClass;
};

}  // namespace pyhost
