#pragma once

#include <cstdint>

namespace K7Q::NSInterface {
class StringIntf;
}

namespace Tarvelon::metamodel::native {

class Instance;
class WordList;

/// One stored value. Which member is valid follows from the property.
union Word {
  std::uint64_t bits;                  ///< a scalar or the number of an enumeration value
  K7Q::NSInterface::StringIntf* text;  ///< reference counted; null is the empty text
  Instance* object;                    ///< a contained or referenced object
  WordList* list;                      ///< owned by the object that has the list
  Word* words;                         ///< the external block of values of an Instance
};
static_assert(sizeof(Word) == 8);

/// Converts a 32-bit number, such as an enumeration value, to a word and back.
inline Word wordOf(std::int32_t number) noexcept { return Word{.bits = static_cast<std::uint32_t>(number)}; }
inline std::int32_t integerOf(Word word) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(word.bits));
}

}  // namespace Tarvelon::metamodel::native
