#include "tarvelon/platform/k7q/sequences/SequenceNames.h"

#include <string>
#include <string_view>

namespace K7Q::mi {

namespace {

constexpr std::string_view kImmutable = "Immutable";
constexpr std::string_view kSequenceOf = "SequenceOf";

/// Removes `word` from the front of `text`; false if `text` does not start with it.
bool takeOff(std::string_view& text, std::string_view word) {
  if (text.substr(0, word.size()) != word) return false;
  text.remove_prefix(word.size());
  return true;
}

}  // namespace

ruvo::InternedName sequenceName(const Generic::SequenceIntf& sequence, bool isSequenceImmutable,
                                bool isElementImmutable, const ruvo::InternedName& declared) {
  const char* name = sequence.generic_getRuvoName(isSequenceImmutable, isElementImmutable, declared.c_str());
  if (name != declared.c_str()) return ruvo::InternedName(ruvo::internal::makeInterned(name));

  std::string_view rest = declared.view();
  const std::string package(rest.substr(0, rest.rfind('.') + 1));
  rest.remove_prefix(package.size());
  const bool isSequence = takeOff(rest, kImmutable) && takeOff(rest, kSequenceOf);
  if (!isSequence) return declared;
  std::string result = package;
  if (isSequenceImmutable) result += kImmutable;
  result += kSequenceOf;
  // A sequence of texts or enumeration values has no "Immutable" before the element name.
  if (takeOff(rest, kImmutable) && isElementImmutable) result += kImmutable;
  result += rest;
  return ruvo::InternedName(result);
}

ruvo::InternedName mutableName(const ruvo::InternedName& immutableClass) {
  std::string_view rest = immutableClass.view();
  const std::string package(rest.substr(0, rest.rfind('.') + 1));
  rest.remove_prefix(package.size());
  if (!takeOff(rest, kImmutable)) return immutableClass;
  return ruvo::InternedName(package + std::string(rest));
}

}  // namespace K7Q::mi
