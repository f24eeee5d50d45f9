#include "tarvelon/module/PackageFrame.h"

#include <new>
#include <utility>

namespace arplatform_module {

void PackageWrapper::initializePackage(ruvo::RVOPackage* package) {
  mState.package = package;
  mState.initializer(package);
}

namespace {

/// The packages that could not be attached because memory was exhausted, as a linked list; the latest is
/// first.
PackageState* gRemaining = nullptr;

void attach(PackageState& state) {
  auto* parent = ruvo::RVOPackage::getPackage(binding::named(state.parentName));
  if (!parent) parent = ruvo::factory::registerRuvoPackage(state.parentName, [](ruvo::RVOPackage*) {});
  parent->addPackageInfo(new PackageWrapper(state));
}

}  // namespace

void attachPackage(PackageState& state) {
  if (state.isAttached) return;
  // Set before the work, so that a failed initialisation is not repeated.
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
