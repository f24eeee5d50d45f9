#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "tarvelon/platform/model/metamodel/Property.h"
#include "tarvelon/platform/model/words/Word.h"

/// Values that are no text, as files write them.
namespace Tarvelon::files {

/// A text of its own, or one that the enumeration keeps.
class ScalarText {
 public:
  /// REQUIRES: a value that the property can hold.
  ScalarText(const metamodel::native::Property& property, metamodel::native::Word word);
  std::string_view view() const noexcept { return mView; }

 private:
  void set(double number) noexcept;
  std::array<char, 32> mBuffer;
  std::string_view mView;
};

/// Why a text is no value of a property.
enum class ScalarFault { None, NoValue, OutOfRange };

/// The value that a text stands for.
ScalarFault readScalar(const metamodel::native::Property& property, std::string_view text,
                       metamodel::native::Word& word) noexcept;

}  // namespace Tarvelon::files
