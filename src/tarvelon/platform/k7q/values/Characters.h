#pragma once

#include <string_view>
#include <typeinfo>

#include "tarvelon/boundary/k7q/Primitives.h"

namespace K7Q {

/// Raises K7Q::WrongType; the text names the class of the object.
[[noreturn]] void throwNoText(const NSInterface::ObjectIntf& object);

/// The text cell of an object that holds a text; null for an empty object. Raises K7Q::WrongType for an
/// object of another kind.
inline const NSInterface::StringIntf* textCellOf(const Object& object) {
  const auto* interface = object.getInterface();
  if (!interface) return nullptr;
  if (typeid(*interface) != typeid(NSInterface::StringIntf)) throwNoText(*interface);
  return static_cast<const NSInterface::StringIntf*>(interface);
}

/// The characters of the text. Valid as long as the object is referenced.
inline std::u16string_view charactersOf(const Object& object) {
  const auto* cell = textCellOf(object);
  return cell ? cell->view() : std::u16string_view();
}

}  // namespace K7Q
