#include "tarvelon/module/PackageFrame.h"

namespace arplatform_module {

void PackageWrapper::initializePackage(ruvo::RVOPackage* package) {
  mState.package = package;
  mInitializer(package);
}

void attachPackage(const char* parentName, const char* name, PackageState& state,
                   StaticInitializer initializer) {
  if (state.isAttached) return;
  // Set before the work: an initialiser that failed is not tried again.
  state.isAttached = true;
  auto* parent = ruvo::RVOPackage::getPackage(binding::named(parentName));
  if (!parent) parent = ruvo::factory::registerRuvoPackage(parentName, [](ruvo::RVOPackage*) {});
  parent->addPackageInfo(new PackageWrapper(name, state, initializer));
}

void finishPackage(ruvo::RVOPackage* package, K7Q::ImmutablePackage (*metaPackage)()) {
  ruvo::factory::detail::initStringDataTypes();
  if (package) binding::addPackageFunction(*package, "MetaPackage", "K7Q.ImmutablePackage", metaPackage);
}

}  // namespace arplatform_module
