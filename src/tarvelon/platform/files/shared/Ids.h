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

/// The ids of objects in files.
///
/// An id is kept with its object, in a place of its own that no property has: so it goes with the object, and
/// the next object of the same number has none. Ids that we make are numbers of 63 bits, written as `_` and
/// eleven digits; any other text is kept as such.
namespace Tarvelon::files {

inline constexpr std::size_t kIdLength = 12;
/// The text of a number as an id.
std::array<char, kIdLength> idText(std::uint64_t number) noexcept;
/// The number of a text that idText() gives; none for another text.
std::optional<std::uint64_t> idNumber(std::string_view text) noexcept;

/// Keeps the id of an object that has none. REQUIRES: setForeignId(): a text that is no number's.
void setId(native::Instance& object, std::uint64_t number);
void setForeignId(native::Instance& object, std::string_view text);

/// Null for an object that was never in a file, and for one with an id of another kind.
inline const native::Word* numberedId(const native::Instance& object) noexcept {
  return object.find(native::ClassData::kIdSlot);
}
inline const native::Word* foreignId(const native::Instance& object) noexcept {
  return object.find(native::ClassData::kForeignIdSlot);
}

/// Gives an id to every object of the model that has none. An id follows from the id of the owner, the
/// property, the class, and the name or else the place in the list: so a model that a program builds anew
/// each time has the same ids each time. Raises K7Q::Exception if objects are nested deeper than a file may
/// be.
void assignIds(const native::NativeModel& model, Schema& schema);

}  // namespace Tarvelon::files
