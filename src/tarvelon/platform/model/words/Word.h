#pragma once

#include <cstdint>

namespace K7Q::NSInterface {
class StringIntf;
}

namespace Tarvelon::metamodel::native {

class Instance;
class WordList;

/// One stored value, told apart by the property that it belongs to.
union Word {
  std::uint64_t bits;                  ///< a scalar or an enumeration's number
  K7Q::NSInterface::StringIntf* text;  ///< counted; null is the empty text
  Instance* object;                    ///< what is held or referred to
  WordList* list;                      ///< owned; of texts or objects
  Word* words;                         ///< where an object's words stand that do not fit into it
};
static_assert(sizeof(Word) == 8);

/// A number of 32 bits, which an enumeration's value is, as a word and back.
inline Word wordOf(std::int32_t number) noexcept { return Word{.bits = static_cast<std::uint32_t>(number)}; }
inline std::int32_t integerOf(Word word) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(word.bits));
}

}  // namespace Tarvelon::metamodel::native
