#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "tarvelon/platform/model/metamodel/Property.h"
#include "tarvelon/platform/model/words/Word.h"

/// The text form, in files, of values that are not texts.
namespace Tarvelon::files {

/// The text of a value. It is stored here, or belongs to the enumeration.
class ScalarText {
 public:
  /// REQUIRES: the property can have this value.
  ScalarText(const metamodel::native::Property& property, metamodel::native::Word word);
  std::string_view view() const noexcept { return mView; }

 private:
  void set(double number) noexcept;
  std::array<char, 32> mBuffer;
  std::string_view mView;
};

/// Why a text is not a value of a property.
enum class ScalarFault { None, NoValue, OutOfRange };

/// Parses the text of a value. `word` receives the value.
ScalarFault readScalar(const metamodel::native::Property& property, std::string_view text,
                       metamodel::native::Word& word) noexcept;

}  // namespace Tarvelon::files
