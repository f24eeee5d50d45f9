#include "tarvelon/module/ModuleRegistration.h"

#include <new>

#include "tarvelon/boundary/tarvelon/Packages.h"
#include "tarvelon/module/Packages.h"

namespace Tarvelon::metamodel::arplatform::mi {

namespace {

void enter() { registrationMap()["arplatform"] = &initarplatformPackageWrapper; }

bool gHasRunOutOfMemory = false;

}  // namespace

RegistrationMap& registrationMap() {
  static RegistrationMap map;
  return map;
}

arplatformModuleRegistration::arplatformModuleRegistration() {
  Tarvelon::metamodel::types::initialize();
  Tarvelon::metamodel::foundation::initialize();
  try {
    enter();
  } catch (const std::bad_alloc&) {
    // Nobody catches what a library throws while it is loaded; completeRegistration() can report it.
    gHasRunOutOfMemory = true;
  }
}

void completeRegistration() {
  if (!gHasRunOutOfMemory) return;
  enter();
  gHasRunOutOfMemory = false;
}

arplatformModuleRegistration arplatformModuleRegistration::registerThis;

}  // namespace Tarvelon::metamodel::arplatform::mi
