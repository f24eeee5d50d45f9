#include "tarvelon/factory/FactoryWrapper.h"
#include "tarvelon/module/PackageFrame.h"

namespace Tarvelon::metamodel::arplatform {

static K7Q::ImmutablePackage MetaPackage() { return native::metaPackage("Tarvelon.metamodel.arplatform"); }

namespace mi {

static constinit ::arplatform_module::PackageState gState{"Tarvelon.metamodel", "arplatform",
                                                          &arplatformStaticInitializePackage};

ruvo::RVOPackage* getarplatformRVOPackage() { return gState.package; }

void initarplatformPackageWrapper(ruvo::RVOPackage* /*parent*/) {
  ::arplatform_module::attachPackage(gState);
}

void arplatformStaticInitializePackage(ruvo::RVOPackage* package) {
  registerFactories(package);
  // Attaches the packages that an earlier run could not attach for lack of memory. They come before the other
  // packages, so that the order of registration is always the same.
  ::arplatform_module::attachRemaining();
#define ARPLATFORM_ATTACH(P, NAMES) P::mi::init##P##PackageWrapper(package);
  ARPLATFORM_PACKAGES(ARPLATFORM_ATTACH)
#undef ARPLATFORM_ATTACH
  ::arplatform_module::finishPackage(package, &MetaPackage);
}

}  // namespace mi
}  // namespace Tarvelon::metamodel::arplatform
