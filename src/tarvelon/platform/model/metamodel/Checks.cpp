// Compile-time checks of the rows: a row that breaks one of these rules does not compile. Two rules need no
// check here: each base has a row, and bases form no cycle. A row names its bases as C++ types, so the
// compiler ensures both.

#include <algorithm>
#include <string_view>
#include <type_traits>

#include "tarvelon/arplatform/Tables.h"
#include "tarvelon/foundation/Table.h"
#include "tarvelon/types/Table.h"

namespace Tarvelon::metamodel::native {

namespace {

constexpr char capital(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

constexpr bool isNamed(const PropertyRow& row, std::string_view metaName) {
  const std::string_view name = row.name;
  return !metaName.empty() && capital(name[0]) == metaName[0] && name.substr(1) == metaName.substr(1);
}

/// A copy of a row, if one was found. A pointer is not used, since comparing it with null is not a constant
/// expression under every sanitizer.
struct Found {
  bool isFound = false;
  PropertyRow row{};
};

/// Finds a property by its metamodel name: among the class's own rows, then in its bases in order.
template <class X>
constexpr Found find(std::string_view metaName);

template <class... Bases>
constexpr Found findAbove(const BaseRows<Bases...>& /*bases*/, [[maybe_unused]] std::string_view metaName) {
  Found found;
  static_cast<void>(((found = find<Bases>(metaName), found.isFound) || ...));
  return found;
}

template <class X>
constexpr Found find(std::string_view metaName) {
  for (const PropertyRow& row : kRow<X>.properties.rows) {
    if (isNamed(row, metaName)) return {true, row};
  }
  return findAbove(kRow<X>.bases, metaName);
}

template <class X>
constexpr bool haveAscendingIds() {
  unsigned last = 0;
  for (const PropertyRow& row : kRow<X>.properties.rows) {
    if (row.id <= last) return false;
    last = row.id;
  }
  return true;
}

/// A redefinition shares the slot of the redefined property, so both must be stored in the same way.
constexpr bool isStoredAlike(const PropertyRow& narrower, const PropertyRow& wider) {
  return narrower.type->kind == wider.type->kind && narrower.isMany() == wider.isMany() &&
         narrower.role == wider.role && narrower.derivation == wider.derivation;
}

template <class X>
constexpr bool haveRedefinedProperties() {
  return std::ranges::all_of(kRow<X>.properties.rows, [](const PropertyRow& row) {
    if (!row.redefined) return true;
    const Found wider = findAbove(kRow<X>.bases, row.redefined);
    return wider.isFound && isStoredAlike(row, wider.row);
  });
}

template <class X>
constexpr bool haveHiddenProperties() {
  return std::ranges::all_of(kRow<X>.properties.rows, [](const PropertyRow& row) {
    return !row.hidden || findAbove(kRow<X>.bases, row.hidden).isFound;
  });
}

/// The engine stores lists of objects, of texts and of enumeration values. A list of another type first needs
/// a view of its own (Views.cpp).
template <class X>
constexpr bool haveStorableLists() {
  return std::ranges::all_of(kRow<X>.properties.rows, [](const PropertyRow& row) {
    return !row.isMany() || row.type->kind == Kind::ClassObject || row.type->kind == Kind::String ||
           row.type->kind == Kind::DataType;
  });
}

/// Each argument sets the property that it is named after (" aSymbol, aName") and has the type of that
/// property.
template <class X>
constexpr bool fillsProperties(const ConstructorRow& constructor) {
  std::string_view rest = constructor.parameterNames;
  for (unsigned argument = 0; argument < constructor.count; ++argument) {
    const std::string_view parameter = rest.substr(0, rest.find(','));
    const std::string_view filled = filledBy(parameter);
    if (filled.empty()) return false;
    const Found found = find<X>(filled);
    if (!found.isFound || found.row.isMany() || found.row.type != constructor.arguments[argument])
      return false;
    rest.remove_prefix(std::min(parameter.size() + 1, rest.size()));
  }
  return rest.empty();
}

template <class X>
constexpr bool haveFillingConstructors() {
  return std::ranges::all_of(kRow<X>.constructors.rows, fillsProperties<X>);
}

template <class X>
constexpr bool haveSelectingReads() {
  return std::ranges::all_of(kRow<X>.reads.rows, [](const ReadRow& read) {
    const Found list = find<X>(read.property);
    return list.isFound && list.row.isMany() && list.row.type->cls == read.element;
  });
}

template <class X>
constexpr bool check() {
  if constexpr (HasRow<X>) {
    static_assert(haveAscendingIds<X>(), "the ids of a class ascend and start from 1");
    static_assert(haveRedefinedProperties<X>(),
                  "a redefinition names a property of a base class with the same storage");
    static_assert(haveHiddenProperties<X>(), "a hidden entry exists in a base class");
    static_assert(haveStorableLists<X>(),
                  "a property of many values is of a class, of texts or of an enumeration");
    static_assert(haveFillingConstructors<X>(), "an argument is named after a property of its type");
    static_assert(haveSelectingReads<X>(), "a read method selects from a property of its elements");
  }
  return true;
}

}  // namespace

}  // namespace Tarvelon::metamodel::native

// The compiler runs every check. The static analyser of clang is excluded: it would walk each instantiation
// for minutes and can find nothing that the compiler did not check.
#ifndef __clang_analyzer__

#define TARVELON_NOTHING(...)
#define TARVELON_CHECK(X) static_assert(::Tarvelon::metamodel::native::check<X>());
#define TARVELON_CHECK_PACKAGE(P, NAMES)  \
  namespace P {                           \
  NAMES(TARVELON_CHECK, TARVELON_NOTHING) \
  }

namespace Tarvelon::metamodel {
TARVELON_CHECK_PACKAGE(kernel, TARVELON_KERNEL_NAMES)
TARVELON_CHECK_PACKAGE(foundation, TARVELON_FOUNDATION_NAMES)
TARVELON_CHECK_PACKAGE(types, TARVELON_TYPES_NAMES)
}  // namespace Tarvelon::metamodel

namespace Tarvelon::metamodel::arplatform {
ARPLATFORM_PACKAGES(TARVELON_CHECK_PACKAGE)
}  // namespace Tarvelon::metamodel::arplatform

#endif  // __clang_analyzer__
