#pragma once

#include <map>
#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ruvo/Package.h"

namespace Tarvelon::metamodel::arplatform::mi {

/// Registers the module. The one object is static, so its constructor runs when the library is loaded: it
/// initialises the metamodels `types` and `foundation` and adds the module's initialiser to
/// registrationMap().
class arplatformModuleRegistration {
 public:
  arplatformModuleRegistration();
  TARVELON_API static arplatformModuleRegistration registerThis;
};

/// The initialisers of the module's metamodels by package name. The map is created at the first use.
using RegistrationMap = std::map<std::string, void (*)(ruvo::RVOPackage*)>;
RegistrationMap& registrationMap();

/// Adds the module's initialiser to the map if memory was exhausted when the library was loaded.
void completeRegistration();

}  // namespace Tarvelon::metamodel::arplatform::mi
