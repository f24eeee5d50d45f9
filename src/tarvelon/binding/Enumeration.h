#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tarvelon/binding/MethodRows.h"
#include "tarvelon/boundary/tarvelon/Names.h"

/// The members of the host classes of enumerations.
namespace binding {

using Tarvelon::metamodel::EnumerationName;

/// The description of all these classes.
inline constexpr const char* kEnumerationDescription = "An enumeration";

/// The literals of an enumeration in ascending order of value.
std::vector<std::string_view> literalsOf(const EnumerationName& enumeration);

constexpr std::size_t countLiterals(std::string_view literals) {
  return literals.empty() ? 0
                          : 1 + static_cast<std::size_t>(std::count(literals.begin(), literals.end(), ','));
}

/// The data of one enumeration: its name, the rows of the functions that depend on its C++ type, and one
/// function for each literal, in ascending order of value.
struct EnumerationBinding {
  using Literal = BoxedEnumeration (*)();

  const EnumerationName* name;
  std::span<const MethodRow> queries;
  std::span<const Literal> literals;
};

/// Adds the members to the class in this order: queries and conversions, literals by value, comparisons.
void defineEnumeration(ruvo::RVOClass& cls, const EnumerationBinding& binding);

/// The method getMetaType() of enumeration values.
K7Q::ImmutableType getMetaTypeOfValue(const K7Q::Object& self);

void displayEnumeration(const EnumerationName& name, std::int32_t value);

/// The native functions behind the records of enumeration E.
template <class E>
struct EnumerationFunctions {
  static bool isvalid(AnyEnumeration self) { return E(self.value).isValid(); }
  static K7Q::ImmutableDataType getMetaDataType(AnyEnumeration /*self*/) { return E::MetaDataType(); }
  static BoxedEnumeration fromString(const std::string& literal) { return {E::fromString(literal)}; }
  static K7Q::String toString(AnyEnumeration self) { return E(self.value).toString(); }
  static void disp(AnyEnumeration self) { displayEnumeration(E::kName, self.value); }

  /// There is one static instance for each literal.
  template <int Value>
  static BoxedEnumeration literal() {
    static constexpr E instance(static_cast<typename E::Value>(Value));
    return {instance};
  }
  template <std::size_t... Value>
  static constexpr std::array<EnumerationBinding::Literal, sizeof...(Value)> literals(
      std::index_sequence<Value...> /*values*/) {
    return {&literal<static_cast<int>(Value)>...};
  }
};

// clang-format off
template <class E>
inline constexpr std::array kEnumerationQueries = [] {
  using F = EnumerationFunctions<E>;
  return std::to_array<MethodRow>({
      member    <&F::isvalid>          ("isvalid",         "logical scalar"),
      classLevel<&E::MetaDataType>     ("MetaDataType",    "K7Q.ImmutableDataType"),
      member    <&F::getMetaDataType>  ("getMetaDataType", "K7Q.ImmutableDataType"),
      member    <&getMetaTypeOfValue>  ("getMetaType",     "K7Q.ImmutableType")
          .of("K7Q.Object").with(ruvo::factory::kHiddenMethod),
      classLevel<&F::fromString>       ("fromString",      kSelf,         {"char"}),
      member    <&F::toString>         ("toString",        "char vector"),
      asArgument<&F::disp>             ("disp",            "void",        {kSelf}),
  });
}();
// clang-format on

template <class E>
inline constexpr auto kLiterals =
    EnumerationFunctions<E>::literals(std::make_index_sequence<countLiterals(E::kName.literals)>());

template <class E>
inline constexpr EnumerationBinding kEnumerationBinding{&E::kName, kEnumerationQueries<E>, kLiterals<E>};

}  // namespace binding
