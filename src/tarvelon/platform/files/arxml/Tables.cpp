// The shapes of all classes and the texts of all enumerations, generated from the lists of names and the
// rows. A class without a shape, and a stored property without a place, do not compile.

#include "tarvelon/arplatform/Shapes.h"
#include "tarvelon/foundation/Shapes.h"
#include "tarvelon/foundation/Table.h"
#include "tarvelon/platform/files/arxml/Format.h"
#include "tarvelon/types/Shapes.h"
#include "tarvelon/types/Table.h"

namespace Tarvelon::metamodel {

namespace {

template <class X>
constexpr auto kShape = shape(Is<X>{});

template <class E>
constexpr auto kItems = items(Is<E>{});

/// Whether a row's name is the meta name with a capital or small first letter.
consteval bool isMetaName(std::string_view meta, std::string_view name) {
  const char first = name[0] >= 'a' && name[0] <= 'z' ? static_cast<char>(name[0] - 'a' + 'A') : name[0];
  return meta.size() == name.size() && meta[0] == first && meta.substr(1) == name.substr(1);
}

template <class X>
consteval bool declares(std::string_view meta) {
  if constexpr (HasRow<X>) {
    for (const PropertyRow& row : kRow<X>.properties.rows) {
      if (isMetaName(meta, row.name)) return true;
    }
  }
  return false;
}

template <class X>
consteval bool hasProperty(std::string_view meta);

template <class... Bases>
consteval bool basesHave(const BaseRows<Bases...>& /*bases*/, [[maybe_unused]] std::string_view meta) {
  return (hasProperty<Bases>(meta) || ...);
}

template <class X>
consteval bool hasProperty(std::string_view meta) {
  if (declares<X>(meta)) return true;
  if constexpr (HasRow<X>) {
    return basesHave(kRow<X>.bases, meta);
  } else {
    return false;
  }
}

template <class X>
consteval bool speaksOf(std::string_view name) {
  for (const PlaceRow& place : kShape<X>.places) {
    if (isMetaName(place.property, name)) return true;
  }
  return false;
}

/// Whether each stored property that the class introduces has a place, and each place a property.
template <class X>
consteval bool isWhole() {
  if constexpr (HasRow<X>) {
    for (const PropertyRow& row : kRow<X>.properties.rows) {
      if (row.derivation == Derivation::None && !row.redefined && !speaksOf<X>(row.name)) return false;
    }
  }
  for (const PlaceRow& place : kShape<X>.places) {
    if (!hasProperty<X>(place.property)) return false;
  }
  return true;
}

template <class E>
consteval bool hasTextForEach() {
  std::size_t literals = 1;
  for (const char* each = E::kName.literals; *each != '\0'; ++each) literals += *each == ',' ? 1 : 0;
  return kItems<E>.empty() || kItems<E>.size() == literals;
}

template <class X>
constexpr ShapeTable makeShape() {
  return {&X::Interface::kName, kShape<X>.elements.rows, kShape<X>.places, kShape<X>.elements.reason};
}

}  // namespace

// The static analyzer would need minutes for these checks, which the compilers make.
#ifdef __clang_analyzer__
#define TARVELON_CHECK_SHAPE(X)
#define TARVELON_CHECK_ITEMS(E, ...)
#else
#define TARVELON_CHECK_SHAPE(X) \
  static_assert(isWhole<X>(), "the shape of " #X " gives each property of its row a place, and no other");
#define TARVELON_CHECK_ITEMS(E, ...) \
  static_assert(hasTextForEach<E>(), "the items of " #E " have one text for each literal");
#endif
#define TARVELON_SHAPE_ENTRY(X) makeShape<X>(),
#define TARVELON_ITEM_ENTRY(E, ...) ItemTable{&E::kName, kItems<E>},
#define TARVELON_NO_ENTRY(...)
#define TARVELON_SHAPES(P, NAMES)                                                                    \
  namespace P {                                                                                      \
  namespace {                                                                                        \
  NAMES(TARVELON_CHECK_SHAPE, TARVELON_CHECK_ITEMS)                                                  \
  constexpr ShapeTable kShapes[] = {NAMES(TARVELON_SHAPE_ENTRY, TARVELON_NO_ENTRY) ShapeTable{}};    \
  constexpr ItemTable kEnumerations[] = {NAMES(TARVELON_NO_ENTRY, TARVELON_ITEM_ENTRY) ItemTable{}}; \
  }                                                                                                  \
  }

TARVELON_SHAPES(foundation, TARVELON_FOUNDATION_NAMES)
TARVELON_SHAPES(types, TARVELON_TYPES_NAMES)

namespace kernel {
namespace {
TARVELON_CHECK_SHAPE(ClassObject)
constexpr ShapeTable kShapes[] = {makeShape<ClassObject>(), ShapeTable{}};
constexpr ItemTable kEnumerations[] = {ItemTable{}};
}  // namespace
}  // namespace kernel

}  // namespace Tarvelon::metamodel

namespace Tarvelon::metamodel::arplatform {
ARPLATFORM_PACKAGES(TARVELON_SHAPES)
}  // namespace Tarvelon::metamodel::arplatform

namespace Tarvelon::files::arxml {

namespace {

using namespace metamodel::arplatform;  // NOLINT(google-build-using-namespace): the lists name its packages
using namespace metamodel;              // NOLINT(google-build-using-namespace)

/// Joins the lists of all packages; each ends with an empty entry.
template <class Row, std::size_t... N>
constexpr auto joined(const Row (&... lists)[N]) {
  std::array<Row, ((N - 1) + ...)> all{};
  std::size_t next = 0;
  const auto add = [&](const auto& list, std::size_t size) {
    for (std::size_t index = 0; index + 1 < size; ++index) all[next++] = list[index];
  };
  (add(lists, N), ...);
  return all;
}

#define TARVELON_SHAPE_LIST(P, NAMES) , P::kShapes
#define TARVELON_ITEM_LIST(P, NAMES) , P::kEnumerations
constexpr auto kAllShapes =
    joined(kernel::kShapes, foundation::kShapes, types::kShapes ARPLATFORM_PACKAGES(TARVELON_SHAPE_LIST));
constexpr auto kAllItems = joined(kernel::kEnumerations, foundation::kEnumerations,
                                  types::kEnumerations ARPLATFORM_PACKAGES(TARVELON_ITEM_LIST));

}  // namespace

std::span<const ShapeTable> shapeTables() noexcept { return kAllShapes; }
std::span<const ItemTable> itemTables() noexcept { return kAllItems; }
std::span<const ReleaseRow> releases() noexcept { return metamodel::arplatform::kReleases; }
unsigned usualRelease() noexcept { return metamodel::arplatform::kUsualRelease; }

}  // namespace Tarvelon::files::arxml
