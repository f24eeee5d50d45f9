#include "tarvelon/platform/files/arxml/Source.h"

#include <algorithm>

namespace Tarvelon::files::arxml {

bool SourceFile::isUnresolved(std::uint32_t element) const noexcept {
  return std::ranges::binary_search(unresolved, element);
}

void setSource(native::Instance& object, SourcePlace place) {
  const std::uint64_t bits = std::uint64_t{place.file} << 32 | place.element;
  object.put(native::ClassData::kSourceSlot, native::Word{.bits = bits}, object.reserveLasting());
}

bool findSource(const native::Instance& object, SourcePlace& place) noexcept {
  const native::Word* word = object.find(native::ClassData::kSourceSlot);
  if (!word) return false;
  place = {static_cast<std::uint32_t>(word->bits >> 32), static_cast<std::uint32_t>(word->bits)};
  return true;
}

}  // namespace Tarvelon::files::arxml
