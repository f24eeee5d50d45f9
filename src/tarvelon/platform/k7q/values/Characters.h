#pragma once

#include <string_view>
#include <typeinfo>

#include "tarvelon/boundary/k7q/Primitives.h"

namespace K7Q {

/// Raises K7Q::WrongType; the text names the class of the object.
[[noreturn]] void throwNoText(const NSInterface::ObjectIntf& object);

/// The text object to which a handle refers; null for a null handle. Raises K7Q::WrongType for an object of
/// another kind.
inline const NSInterface::StringIntf* textCellOf(const Object& object) {
  const auto* interface = object.getInterface();
  if (!interface) return nullptr;
  if (typeid(*interface) != typeid(NSInterface::StringIntf)) throwNoText(*interface);
  return static_cast<const NSInterface::StringIntf*>(interface);
}

/// The characters of the text; none for a null handle. Valid as long as a reference on the text exists.
inline std::u16string_view charactersOf(const Object& object) {
  const auto* cell = textCellOf(object);
  return cell ? cell->view() : std::u16string_view();
}

}  // namespace K7Q
