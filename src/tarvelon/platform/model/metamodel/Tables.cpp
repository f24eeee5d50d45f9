// The tables of all classes and enumerations of the metamodel, generated from the lists of names and the
// rows.

#include "tarvelon/arplatform/Tables.h"

#include <array>

#include "tarvelon/foundation/Table.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/types/Table.h"

namespace Tarvelon::metamodel::native {

namespace {

template <class X>
struct TableOf {
  static const ClassMethods sMethods;
};

template <class... Bases>
constexpr std::array<const K7Q::IntrospectiveMethods*, sizeof...(Bases)> tablesOf(
    const BaseRows<Bases...>& /*bases*/) {
  return {&TableOf<Bases>::sMethods...};
}

template <HasRow X>
constexpr auto kBaseTables = tablesOf(kRow<X>.bases);

template <class X>
constexpr ClassMethods makeTable() {
  using Interface = typename X::Interface;
  if constexpr (HasRow<X>) {
    return {Interface::kName, typeid(Interface), &kTable<X>, kBaseTables<X>};
  } else {
    return {Interface::kName, typeid(Interface), nullptr, {}};
  }
}

template <class X>
constinit const ClassMethods TableOf<X>::sMethods = makeTable<X>();

}  // namespace

// The table of each class, and the lists of a package. Each list ends with a null, since an array must not be
// empty.
#define TARVELON_NOTHING(...)
#define TARVELON_TABLE(X)                                                                    \
  constinit const ::K7Q::IntrospectiveMethods& NSInterface::X##Intf::sIntrospectiveMethods = \
      ::Tarvelon::metamodel::native::TableOf<X>::sMethods;
#define TARVELON_CLASS_ENTRY(X) &::Tarvelon::metamodel::native::TableOf<X>::sMethods,
#define TARVELON_ENUMERATION_ENTRY(E, ...) &E::kName,
#define TARVELON_PACKAGE(P, NAMES)                                            \
  namespace P {                                                               \
  NAMES(TARVELON_TABLE, TARVELON_NOTHING)                                     \
  namespace {                                                                 \
  constexpr const ::Tarvelon::metamodel::native::ClassMethods* kClasses[] = { \
      NAMES(TARVELON_CLASS_ENTRY, TARVELON_NOTHING) nullptr};                 \
  constexpr const ::Tarvelon::metamodel::EnumerationName* kEnumerations[] = { \
      NAMES(TARVELON_NOTHING, TARVELON_ENUMERATION_ENTRY) nullptr};           \
  }                                                                           \
  }
#define TARVELON_ENTRY(NAME, P)                                              \
  PackageRow {                                                               \
    NAME, std::span(P::kClasses).first<std::size(P::kClasses) - 1>(),        \
        std::span(P::kEnumerations).first<std::size(P::kEnumerations) - 1>() \
  }
#define TARVELON_PLATFORM_ENTRY(P, NAMES) TARVELON_ENTRY("Tarvelon.metamodel.arplatform." #P, P),

}  // namespace Tarvelon::metamodel::native

namespace Tarvelon::metamodel {
TARVELON_PACKAGE(kernel, TARVELON_KERNEL_NAMES)
TARVELON_PACKAGE(foundation, TARVELON_FOUNDATION_NAMES)
TARVELON_PACKAGE(types, TARVELON_TYPES_NAMES)
}  // namespace Tarvelon::metamodel

namespace Tarvelon::metamodel::arplatform {
ARPLATFORM_PACKAGES(TARVELON_PACKAGE)
}  // namespace Tarvelon::metamodel::arplatform

namespace Tarvelon::metamodel::native {

namespace {
using namespace arplatform;  // NOLINT(google-build-using-namespace): the entries name the packages below it
constexpr PackageRow kPackages[] = {
    TARVELON_ENTRY("K7Q", kernel), TARVELON_ENTRY("Tarvelon.metamodel.foundation", foundation),
    TARVELON_ENTRY("Tarvelon.metamodel.types", types), ARPLATFORM_PACKAGES(TARVELON_PLATFORM_ENTRY)};
}  // namespace

std::span<const PackageRow> packageRows() noexcept { return kPackages; }

}  // namespace Tarvelon::metamodel::native
