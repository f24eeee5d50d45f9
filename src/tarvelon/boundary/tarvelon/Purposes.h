#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <span>
#include <string_view>

#include "tarvelon/boundary/tarvelon/Names.h"

/// Descriptions of the classes and enumerations of a package.
///
/// The Purposes.h of a package has one row for each class and enumeration, in the order of Names.h:
///
///   inline constexpr auto kPurposes = purposes(
///       of<Runnable>("A piece of a component's behavior that ..."),
///       ...);
///
/// A text is for readers who see the name for the first time. Lists show only its first sentence. The texts
/// are not compiled into the module; only platform/model/metamodel/Documentation.cpp uses them, for help()
/// and for the pages of the metamodel.
namespace Tarvelon::metamodel {

/// The short name of a class or an enumeration.
template <class X>
constexpr std::string_view shortNameOf() {
  if constexpr (IsEnumeration<X>) {
    return X::kName.shortName();
  } else {
    return X::Interface::kName.shortName();
  }
}

/// The short name of a class or an enumeration, and its description.
struct PurposeRow {
  std::string_view name;
  std::string_view text;
};

/// Creates the row of class or enumeration X. A text that does not end with a period does not compile.
template <class X>
consteval PurposeRow of(std::string_view text) {
  if (!text.ends_with('.')) throw "a purpose is made of sentences";
  return {shortNameOf<X>(), text};
}

/// Creates the list of a package from its rows.
template <std::same_as<PurposeRow>... Rows>
consteval std::array<PurposeRow, sizeof...(Rows)> purposes(Rows... rows) {
  return {rows...};
}

/// The description of X in the list of its package. Does not compile if the list has no row for X.
template <class X>
consteval std::string_view purposeAmong(std::span<const PurposeRow> rows) {
  for (const PurposeRow& row : rows) {
    if (row.name == shortNameOf<X>()) return row.text;
  }
  throw "the class or enumeration has no purpose: give it a row in its package's Purposes.h";
}

/// Whether there is exactly one row for each name, in the same order.
consteval bool isInOrder(std::span<const PurposeRow> rows, std::span<const std::string_view> names) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i >= rows.size() || rows[i].name != names[i]) return false;
  }
  return rows.size() == names.size();
}

}  // namespace Tarvelon::metamodel
