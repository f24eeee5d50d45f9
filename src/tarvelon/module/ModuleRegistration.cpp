#include "tarvelon/module/ModuleRegistration.h"

#include "tarvelon/boundary/tarvelon/Packages.h"
#include "tarvelon/module/Packages.h"

namespace Tarvelon::metamodel::arplatform::mi {

RegistrationMap& registrationMap() {
  static RegistrationMap map;
  return map;
}

arplatformModuleRegistration::arplatformModuleRegistration() {
  Tarvelon::metamodel::types::initialize();
  Tarvelon::metamodel::foundation::initialize();
  registrationMap()["arplatform"] = &initarplatformPackageWrapper;
}

arplatformModuleRegistration arplatformModuleRegistration::registerThis;

}  // namespace Tarvelon::metamodel::arplatform::mi
