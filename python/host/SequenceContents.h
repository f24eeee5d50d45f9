#pragma once

#include <span>
#include <string>
#include <vector>

#include "python/host/NativeViews.h"

namespace pyhost {

/// What a sequence holds, to be read as a whole, put together anew and written back.
using Contents = std::vector<K7Q::Generic::Ref>;

/// The contents of one sequence. The sequence must be held meanwhile.
class ContentsDoor {
 public:
  /// Raises for a sequence that is gone.
  explicit ContentsDoor(PyObject* sequence);

  Contents read() const;
  /// A Python value as an element. `where` stands before the text of an error.
  K7Q::Generic::Ref element(PyObject* value, const std::string& where) const;
  /// Whether an element stands in the sequence once.
  bool isUnique() const;
  /// Whether its iterators stay on their elements, as those of enumeration values that a script makes do.
  /// Such a sequence ignores a value that it holds once and is given again.
  bool keepsIterators() const noexcept;
  /// Lets the sequence hold this, as one change. What raises has changed nothing.
  void write(const Contents& contents) const;

  std::size_t hash(const K7Q::Generic::Ref& element) const noexcept;
  bool isSame(const K7Q::Generic::Ref& left, const K7Q::Generic::Ref& right) const noexcept;

 private:
  void writeNumbers(const Contents& contents) const;

  PyObject* mSequence;
  NativeSequence mNative;
  /// What Python code does in between, closing the model say, does not free it.
  K7Q::SequenceHandle mHeld;
  Elements mElements;
  const ruvo::Class* mElementClass;
};

}  // namespace pyhost
