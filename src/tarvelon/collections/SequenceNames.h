#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "tarvelon/boundary/tarvelon/Names.h"

/// The dotted names of the sequence classes of enumerations, composed at compile time.
namespace K7Q::SequenceNames {

/// The dotted name of the enumeration with `word` inserted before its short name, NUL-terminated.
template <Tarvelon::metamodel::IsEnumeration T, std::size_t N>
constexpr auto join(const char (&word)[N]) {
  constexpr std::string_view kName = T::kName.name;
  std::array<char, kName.size() + N> joined{};
  auto* end = joined.data();
  for (char c : kName.substr(0, T::kName.prefix)) *end++ = c;
  for (char c : std::string_view(word)) *end++ = c;
  for (char c : kName.substr(T::kName.prefix)) *end++ = c;
  return joined;
}

template <class T>
inline constexpr auto kSequence = join<T>("SequenceOf");
template <class T>
inline constexpr auto kImmutableSequence = join<T>("ImmutableSequenceOf");

}  // namespace K7Q::SequenceNames
