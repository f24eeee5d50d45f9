#pragma once

#include <cstdint>
#include <string_view>

#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/words/Word.h"

namespace Tarvelon::metamodel::native {

class NativeModel;

/// A property that is about to be written, in an object of class `cls`. `property` is the most derived
/// declaration.
struct Target {
  const ClassData& cls;
  const Property& property;
  const NativeModel& model;
};

/// A value that was checked. Storing it cannot be refused any more.
struct Prepared {
  Word word{};
  /// The property is to be unset: there is no value, or an empty text for an optional property.
  bool isEmpty = false;
};

/// Checks a value for a single-valued property. Raises K7Q::WrongType, K7Q::OutOfRange or K7Q::WrongValue.
/// The returned word borrows the value and adds no reference.
Prepared prepare(const Target& target, const K7Q::Object& value);

/// Checks an element for a list of references. A null handle is refused.
Instance& prepareElement(const Target& target, const K7Q::Object& value);
/// Checks a text: raises K7Q::WrongValue for characters that XML, and so a file, cannot contain. These are
/// control characters other than tab, line feed and carriage return, lone surrogates, U+FFFE and U+FFFF.
void checkText(const Target& target, std::u16string_view text);

/// Converts a stored word to an object. Null stands for no word: then the result is empty or, for a required
/// property, the default value of its type.
K7Q::Object toObject(const Property& property, const Word* word, K7Q::Deviant deviant);

}  // namespace Tarvelon::metamodel::native
