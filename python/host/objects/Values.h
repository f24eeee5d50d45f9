#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "python/host/interpreter/Text.h"
#include "python/host/objects/Objects.h"

namespace pyhost {

/// The place of a value in a call. Error texts start with it.
struct Place {
  const ruvo::Class& cls;
  std::string_view member;
  /// The position of the argument, counted from 1; 0 for the value of a property.
  std::size_t argument = 0;
  /// What the place accepts, as far as it is known: a property, or the overloads of the call.
  const ruvo::PropertySlot* property = nullptr;
  const ruvo::OverloadSet* overloads = nullptr;
  std::string text() const;
};

/// Converts a Python value for the object system. Raises K7Q.WrongType, OutOfRange or WrongValue if that is
/// not possible. The result is valid while `value` and `texts` live.
ruvo::HostValue toHostValue(PyObject* value, TextBuffer& texts, const Place& place);

/// Converts a result to bool, int, float, str or an object; None if there is no result.
PyObject* toPython(const ruvo::HostResult& result);
/// The same for an array. The caller keeps the array.
PyObject* toPython(const hx::hxArray* array);

/// A value as error texts show it: "str 'yes'", "list", "common.Package", "the class int".
std::string describePython(PyObject* value);

/// The converted arguments of one call.
class Arguments {
 public:
  /// `overloads` are the candidates of the call, null if there are none.
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
  // Raw memory: initialising sixteen values would cost as much as a whole call with one argument.
  alignas(ruvo::HostValue) std::byte mStorage[kMost * sizeof(ruvo::HostValue)];
};

}  // namespace pyhost
