#pragma once

#include <string_view>
#include <typeinfo>

#include "tarvelon/boundary/k7q/Primitives.h"

namespace K7Q {

/// Raises K7Q::WrongType, naming what the object is.
[[noreturn]] void throwNoText(const NSInterface::ObjectIntf& object);

/// The cell behind the object form of a text, null for an empty object. Raises K7Q::WrongType for any other
/// object.
inline const NSInterface::StringIntf* textCellOf(const Object& object) {
  const auto* interface = object.getInterface();
  if (!interface) return nullptr;
  if (typeid(*interface) != typeid(NSInterface::StringIntf)) throwNoText(*interface);
  return static_cast<const NSInterface::StringIntf*>(interface);
}

/// Its characters, which live as long as the object is held.
inline std::u16string_view charactersOf(const Object& object) {
  const auto* cell = textCellOf(object);
  return cell ? cell->view() : std::u16string_view();
}

}  // namespace K7Q
