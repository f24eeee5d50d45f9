#pragma once

#include <map>
#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ruvo/Package.h"

namespace Tarvelon::metamodel::arplatform::mi {

/// Runs when the library is loaded: brings up the metamodels that this one builds on and enters its own
/// initialiser.
class arplatformModuleRegistration {
 public:
  arplatformModuleRegistration();
  TARVELON_API static arplatformModuleRegistration registerThis;
};

/// The initialisers of the module's metamodels by package name. Made on first use; it lives until the process
/// ends.
using RegistrationMap = std::map<std::string, void (*)(ruvo::RVOPackage*)>;
RegistrationMap& registrationMap();

/// Makes the module's own entry in the map if there was no memory for it when the library was loaded.
void completeRegistration();

}  // namespace Tarvelon::metamodel::arplatform::mi
