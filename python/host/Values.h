#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "python/host/Objects.h"
#include "python/host/Text.h"

namespace pyhost {

/// Where a value stands: what an error says before its text, in the object system's own form.
struct Place {
  const ruvo::Class& cls;
  std::string_view member;
  /// The argument's position from 1, 0 for the value of a property.
  std::size_t argument = 0;
  /// What is expected there, as far as it is known: the property, or what the call chooses from.
  const ruvo::PropertySlot* property = nullptr;
  const ruvo::OverloadSet* overloads = nullptr;
  std::string text() const;
};

/// A Python value as the object system takes it. Raises K7Q.WrongType, OutOfRange or WrongValue for what has
/// no such form. The result is valid while `value` and `texts` are.
ruvo::HostValue toHostValue(PyObject* value, TextBuffer& texts, const Place& place);

/// The Python value of a result: bool, int, float, str, an object, None for nothing.
PyObject* toPython(const ruvo::HostResult& result);
/// The same for an array, which stays the caller's.
PyObject* toPython(const hx::hxArray* array);

/// What was wrong with a value, as an error shows it: "str 'yes'", "list", "common.Package", "the class int".
std::string describePython(PyObject* value);

/// The converted arguments of one call.
class Arguments {
 public:
  /// `overloads` are what the call chooses from, null if there is nothing.
  Arguments(PyObject* const* values, std::size_t count, const ruvo::Class& cls, std::string_view member,
            const ruvo::OverloadSet* overloads);
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;
  std::span<const ruvo::HostValue> span() const noexcept {
    return {reinterpret_cast<const ruvo::HostValue*>(mStorage), mCount};
  }
  bool hasEmpty() const noexcept { return mHasEmpty; }

  static constexpr std::size_t kMost = 16;

 private:
  std::size_t mCount;
  bool mHasEmpty = false;
  TextBuffer mTexts;
  // Raw, since clearing sixteen values for a call with one costs as much as the call's own work.
  alignas(ruvo::HostValue) std::byte mStorage[kMost * sizeof(ruvo::HostValue)];
};

}  // namespace pyhost
