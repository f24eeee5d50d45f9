#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_COMPOSITION_NAMES(CLASS, ENUMERATION) \
  CLASS(CompositionComponent)                            \
  CLASS(ComponentPrototype)                              \
  CLASS(Connector)                                       \
  CLASS(AssemblyConnector)                               \
  CLASS(DelegationConnector)                             \
  CLASS(PassThroughConnector)                            \
  CLASS(InstantiationTimingEventProps)
// clang-format on

namespace Tarvelon::metamodel::arplatform::composition {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.composition.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.composition.", E, __VA_ARGS__)
ARPLATFORM_COMPOSITION_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::composition
