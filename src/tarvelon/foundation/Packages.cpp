#include "tarvelon/boundary/tarvelon/Packages.h"

#include "tarvelon/binding/Registration.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/foundation/Table.h"
#include "tarvelon/types/Table.h"

namespace Tarvelon::metamodel {

namespace {

#define FOUNDATION_REGISTER_CLASS(X) binding::registerClassInfos(package, binding::kBinding<X>);
#define FOUNDATION_REGISTER_ENUMERATION(E, ...) \
  binding::addClassInfo(package, new binding::EnumerationWrapper(binding::kEnumerationBinding<E>));

K7Q::ImmutablePackage foundationMetaPackage() { return native::metaPackage("Tarvelon.metamodel.foundation"); }
K7Q::ImmutablePackage typesMetaPackage() { return native::metaPackage("Tarvelon.metamodel.types"); }

void populateFoundation(ruvo::RVOPackage* package) {
  using namespace foundation;  // NOLINT(google-build-using-namespace)
  TARVELON_FOUNDATION_NAMES(FOUNDATION_REGISTER_CLASS, FOUNDATION_REGISTER_ENUMERATION)
  binding::addPackageFunction(*package, "MetaPackage", "K7Q.ImmutablePackage", &foundationMetaPackage);
}

void populateTypes(ruvo::RVOPackage* package) {
  using namespace types;  // NOLINT(google-build-using-namespace)
  TARVELON_TYPES_NAMES(FOUNDATION_REGISTER_CLASS, FOUNDATION_REGISTER_ENUMERATION)
  binding::addPackageFunction(*package, "MetaPackage", "K7Q.ImmutablePackage", &typesMetaPackage);
}

/// The package `Tarvelon.metamodel` has only child packages, which register themselves.
class MetamodelPackage final : public ruvo::RVOPackageInfo {
 public:
  const char* getName() const override { return "metamodel"; }
  void initializePackage(ruvo::RVOPackage* /*package*/) override {}
};

}  // namespace

namespace foundation {

#define FOUNDATION_SKIP(...)
#define FOUNDATION_DEFINE_VALIDITY(E, ...) \
  bool E::isValid() const { return true; }
TARVELON_FOUNDATION_NAMES(FOUNDATION_SKIP, FOUNDATION_DEFINE_VALIDITY)

void initialize() {
  static constinit ruvo::factory::LoadedPackage package("Tarvelon.metamodel.foundation", &populateFoundation);
  ruvo::factory::enterAtLoad(package);
}

}  // namespace foundation

namespace types {

TARVELON_TYPES_NAMES(FOUNDATION_SKIP, FOUNDATION_DEFINE_VALIDITY)

void initialize() {
  static constinit ruvo::factory::LoadedPackage package("Tarvelon.metamodel.types", &populateTypes);
  ruvo::factory::enterAtLoad(package);
}

}  // namespace types

namespace mi {

void initmetamodelPackageWrapper(ruvo::RVOPackage* parent) {
  static bool isAttached = false;
  if (isAttached) return;
  parent->addPackageInfo(new MetamodelPackage());
  isAttached = true;
}

ruvo::RVOPackage* getmetamodelRVOPackage() {
  return ruvo::RVOPackage::getPackage(binding::named("Tarvelon.metamodel"));
}

}  // namespace mi
}  // namespace Tarvelon::metamodel

namespace Tarvelon::mi {

ruvo::RVOPackage* getTarvelonRVOPackage() {
  static auto* const package = ruvo::factory::registerRuvoPackage("Tarvelon", [](ruvo::RVOPackage*) {});
  return package;
}

}  // namespace Tarvelon::mi
