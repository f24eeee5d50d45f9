#include "tarvelon/platform/model/metamodel/Documentation.h"

#include <algorithm>
#include <cctype>

#include "tarvelon/arplatform/Purposes.h"
#include "tarvelon/foundation/Purposes.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/types/Purposes.h"

// Finds the purposes of a package by short name. The code is a chain of comparisons and not a table, since a
// table would need relocations: loading the library costs nothing for texts that few programs use.
#define TARVELON_SHORT_NAME(X, ...) ::Tarvelon::metamodel::shortNameOf<X>(),
#define TARVELON_CASE(X, ...)                                                 \
  if (name == ::Tarvelon::metamodel::shortNameOf<X>()) {                      \
    constexpr auto kText = ::Tarvelon::metamodel::purposeAmong<X>(kPurposes); \
    return kText;                                                             \
  }
#define TARVELON_PACKAGE_PURPOSES(P, NAMES)                                                             \
  namespace P {                                                                                         \
  namespace {                                                                                           \
  constexpr std::string_view kNamesInOrder[] = {NAMES(TARVELON_SHORT_NAME, TARVELON_SHORT_NAME)};       \
  static_assert(isInOrder(kPurposes, kNamesInOrder),                                                    \
                "the purposes of package " #P " stand in the order of its Names.h, one for each name"); \
  std::string_view findPurpose(std::string_view name) {                                                 \
    if (name.empty()) return kPurpose;                                                                  \
    NAMES(TARVELON_CASE, TARVELON_CASE)                                                                 \
    return {};                                                                                          \
  }                                                                                                     \
  }                                                                                                     \
  }

namespace Tarvelon::metamodel {
TARVELON_PACKAGE_PURPOSES(foundation, TARVELON_FOUNDATION_NAMES)
TARVELON_PACKAGE_PURPOSES(types, TARVELON_TYPES_NAMES)
}  // namespace Tarvelon::metamodel

namespace Tarvelon::metamodel::arplatform {
ARPLATFORM_PACKAGES(TARVELON_PACKAGE_PURPOSES)
}  // namespace Tarvelon::metamodel::arplatform

namespace Tarvelon::metamodel::native {

namespace {

constexpr std::string_view kImmutable = "Immutable";

/// The purpose of a class or enumeration in a package, or of the package itself if the name is empty.
std::string_view findPurpose(std::string_view package, std::string_view name) {
  if (package == "Tarvelon.metamodel.foundation") return foundation::findPurpose(name);
  if (package == "Tarvelon.metamodel.types") return types::findPurpose(name);
#define TARVELON_FIND(P, NAMES) \
  if (package == "Tarvelon.metamodel.arplatform." #P) return arplatform::P::findPurpose(name);
  ARPLATFORM_PACKAGES(TARVELON_FIND)
#undef TARVELON_FIND
  return {};
}

/// Null if no class has this name.
const ClassTable* findRows(std::string_view className) {
  for (const PackageRow& package : packageRows()) {
    for (const ClassMethods* table : package.classes) {
      if (className == table->className().name) return table->rows();
    }
  }
  return nullptr;
}

}  // namespace

std::string_view purposeOf(std::string_view dottedName) {
  if (dottedName == "Tarvelon.metamodel.arplatform") return arplatform::kPurpose;
  if (const std::string_view text = findPurpose(dottedName, {}); !text.empty()) return text;
  const std::size_t dot = dottedName.rfind('.');
  if (dot == std::string_view::npos || dot + 1 == dottedName.size()) return {};
  const std::string_view package = dottedName.substr(0, dot);
  std::string_view name = dottedName.substr(dot + 1);
  if (const std::string_view text = findPurpose(package, name); !text.empty()) return text;
  if (!name.starts_with(kImmutable) || name == kImmutable) return {};
  name.remove_prefix(kImmutable.size());
  return findPurpose(package, name);
}

std::vector<std::string> splitArgumentNames(std::string_view declared) {
  std::vector<std::string> names;
  while (!declared.empty()) {
    const std::string_view parameter = declared.substr(0, declared.find(','));
    declared.remove_prefix(std::min(parameter.size() + 1, declared.size()));
    // A name that sets no property is shown as declared.
    const std::string_view property = filledBy(parameter);
    std::string name(property.empty() ? parameter.substr(parameter.starts_with(' ') ? 1 : 0) : property);
    if (!name.empty()) name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
    names.push_back(std::move(name));
  }
  return names;
}

std::vector<std::vector<std::string>> argumentNames(std::string_view className) {
  std::vector<std::vector<std::string>> constructors;
  const ClassTable* rows = findRows(className);
  if (!rows) return constructors;
  for (const ConstructorRow& constructor : rows->constructors)
    constructors.push_back(splitArgumentNames(constructor.parameterNames));
  return constructors;
}

}  // namespace Tarvelon::metamodel::native
