#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/platform/files/shared/Schema.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"

/// The ids that objects have in files.
///
/// An id is stored in the object itself, in a slot that no property uses. So it ends with the object and is
/// not passed on to another object with the same number. Ids that this library creates are 63-bit numbers,
/// written as `_` and eleven digits. Any other id is stored as a text.
namespace Tarvelon::files {

inline constexpr std::size_t kIdLength = 12;
/// The text of a numeric id.
std::array<char, kIdLength> idText(std::uint64_t number) noexcept;
/// The number of a text that idText() returns. Empty for any other text.
std::optional<std::uint64_t> idNumber(std::string_view text) noexcept;

/// Stores the id of an object that has none. REQUIRES: for setForeignId(), idNumber(text) is empty.
void setId(native::Instance& object, std::uint64_t number);
void setForeignId(native::Instance& object, std::string_view text);

/// The stored id of the given kind, null if there is none.
inline const native::Word* numberedId(const native::Instance& object) noexcept {
  return object.find(native::ClassData::kIdSlot);
}
inline const native::Word* foreignId(const native::Instance& object) noexcept {
  return object.find(native::ClassData::kForeignIdSlot);
}

/// Gives an id to every object of the model that has none. The id is computed from the id of the owner, the
/// property, the class, and the name or, without a name, the index in the list. So a program that builds the
/// same model again gets the same ids. Raises K7Q::Exception if objects are nested deeper than kMaxDepth.
void assignIds(const native::NativeModel& model, Schema& schema);

}  // namespace Tarvelon::files
