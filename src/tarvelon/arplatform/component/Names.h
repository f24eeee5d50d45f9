#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_COMPONENT_NAMES(CLASS, ENUMERATION)                                        \
  CLASS(AtomicComponentPorts)                                                                 \
  CLASS(Component)                                                                            \
  CLASS(ParameterComponentPorts)                                                              \
  ENUMERATION(AtomicComponentKind, Application, ComplexDeviceDriver, EcuAbstraction, NvBlock, \
              SensorActuator, ServiceProxy, Service)                                          \
  CLASS(AtomicComponent)                                                                      \
  CLASS(ParameterComponent)                                                                   \
  CLASS(AdaptiveApplication)
// clang-format on

namespace Tarvelon::metamodel::arplatform::component {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.component.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.component.", E, __VA_ARGS__)
ARPLATFORM_COMPONENT_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::component
