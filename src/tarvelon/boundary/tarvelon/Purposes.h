#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <span>
#include <string_view>

#include "tarvelon/boundary/tarvelon/Names.h"

/// What the classes and enumerations of a package are for, in words.
///
/// A package's Purposes.h gives each of its names one row, in the order of Names.h:
///
///   inline constexpr auto kPurposes = purposes(
///       of<Runnable>("A piece of a component's behavior that ..."),
///       ...);
///
/// Texts are for people who read the name for the first time: the first sentence stands alone in lists. They
/// are not part of the module; platform/model/metamodel/Documentation.cpp alone projects them.
namespace Tarvelon::metamodel {

/// The name of a class or an enumeration within its package.
template <class X>
constexpr std::string_view shortNameOf() {
  if constexpr (IsEnumeration<X>) {
    return X::kName.shortName();
  } else {
    return X::Interface::kName.shortName();
  }
}

struct PurposeRow {
  std::string_view name;
  std::string_view text;
};

template <class X>
consteval PurposeRow of(std::string_view text) {
  if (!text.ends_with('.')) throw "a purpose is made of sentences";
  return {shortNameOf<X>(), text};
}

template <std::same_as<PurposeRow>... Rows>
consteval std::array<PurposeRow, sizeof...(Rows)> purposes(Rows... rows) {
  return {rows...};
}

/// The purpose of a class or an enumeration among those of its package; without one it does not compile.
template <class X>
consteval std::string_view purposeAmong(std::span<const PurposeRow> rows) {
  for (const PurposeRow& row : rows) {
    if (row.name == shortNameOf<X>()) return row.text;
  }
  throw "the class or enumeration has no purpose: give it a row in its package's Purposes.h";
}

/// Whether the rows are those of the names, in their order, each once.
consteval bool isInOrder(std::span<const PurposeRow> rows, std::span<const std::string_view> names) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i >= rows.size() || rows[i].name != names[i]) return false;
  }
  return rows.size() == names.size();
}

}  // namespace Tarvelon::metamodel
