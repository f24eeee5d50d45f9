#include "tarvelon/platform/model/validation/Ports.h"

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/validation/Reading.h"

namespace Tarvelon::metamodel::native::validation {

using namespace arplatform;  // NOLINT(google-build-using-namespace): the functions name the packages below it

const Instance* interfaceOf(const Instance* port) { return getOf<port::Port, "Type">(port); }

bool isProvided(const Instance& port) {
  return isA<port::ProvidedPort>(port) || isA<port::AdaptiveProvidedPort>(port);
}

bool isRequired(const Instance& port) {
  return isA<port::RequiredPort>(port) || isA<port::AdaptiveRequiredPort>(port);
}

const Instance* portOf(const Instance& reference) {
  if (isA<instance::DataPortInstanceRef>(reference))
    return get<instance::DataPortInstanceRef, "Port">(reference);
  if (isA<instance::OperationPortInstanceRef>(reference))
    return get<instance::OperationPortInstanceRef, "Port">(reference);
  if (isA<instance::ModeDeclarationInstanceRef>(reference))
    return get<instance::ModeDeclarationInstanceRef, "Port">(reference);
  return getOf<instance::TriggerInstanceRef, "Port">(&reference);
}

bool hasModeGroup(const Instance& interface, const Instance& group) {
  bool isFound = false;
  forEachIn(interface, interface.cls().holdingSlots, [&](const Instance* held, unsigned /*slot*/) {
    isFound |= getOf<interface::ModeDeclarationGroupElement, "ModeGroup">(held) == &group;
  });
  return isFound;
}

}  // namespace Tarvelon::metamodel::native::validation
