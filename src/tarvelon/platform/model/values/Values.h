#pragma once

#include <cstdint>
#include <string_view>

#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/words/Word.h"

namespace Tarvelon::metamodel::native {

class NativeModel;

/// A property about to be written, on an object of a class in a model. The row is the narrowest of its slot.
struct Target {
  const ClassData& cls;
  const Property& property;
  const NativeModel& model;
};

/// A value that was checked: nothing about storing it can be refused any more.
struct Prepared {
  Word word{};
  /// The property is to be unset: no value, or the empty text for an optional property.
  bool isEmpty = false;
};

/// Checks a value for a property of one value. Raises K7Q::WrongType, K7Q::OutOfRange or K7Q::WrongValue. The
/// word borrows: it takes no reference.
Prepared prepare(const Target& target, const K7Q::Object& value);

/// Checks an element for a property of many values; an empty one is refused.
Instance& prepareElement(const Target& target, const K7Q::Object& value);
/// The same for a text: one that XML can hold, so that every model can be saved. It has no control characters
/// but tab, line feed and carriage return, no lone surrogate, no U+FFFE and no U+FFFF.
void checkText(const Target& target, std::u16string_view text);

/// The value of a stored word as an object; null for no word. An unset required property gives the type's
/// default.
K7Q::Object toObject(const Property& property, const Word* word, K7Q::Deviant deviant);

}  // namespace Tarvelon::metamodel::native
