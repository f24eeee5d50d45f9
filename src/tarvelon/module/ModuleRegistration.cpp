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
    // An exception while a library is being loaded would end the process. completeRegistration() tries again
    // and can report the failure.
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
