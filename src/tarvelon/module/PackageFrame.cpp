#include "tarvelon/module/PackageFrame.h"

#include <new>
#include <utility>

namespace arplatform_module {

void PackageWrapper::initializePackage(ruvo::RVOPackage* package) {
  mState.package = package;
  mState.initializer(package);
}

namespace {

/// Those for which there was no memory, the last one first.
PackageState* gRemaining = nullptr;

void attach(PackageState& state) {
  auto* parent = ruvo::RVOPackage::getPackage(binding::named(state.parentName));
  if (!parent) parent = ruvo::factory::registerRuvoPackage(state.parentName, [](ruvo::RVOPackage*) {});
  parent->addPackageInfo(new PackageWrapper(state));
}

}  // namespace

void attachPackage(PackageState& state) {
  if (state.isAttached) return;
  // Set before the work: an initialiser that failed is not tried again.
  state.isAttached = true;
  try {
    attach(state);
  } catch (const std::bad_alloc&) {
    state.nextRemaining = std::exchange(gRemaining, &state);
    throw;
  }
}

void attachRemaining() {
  while (gRemaining) {
    attach(*gRemaining);
    gRemaining = gRemaining->nextRemaining;
  }
}

void finishPackage(ruvo::RVOPackage* package, K7Q::ImmutablePackage (*metaPackage)()) {
  ruvo::factory::detail::initStringDataTypes();
  if (package) binding::addPackageFunction(*package, "MetaPackage", "K7Q.ImmutablePackage", metaPackage);
}

}  // namespace arplatform_module
