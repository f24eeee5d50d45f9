#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_SYSTEM_NAMES(CLASS, ENUMERATION) \
  CLASS(SystemMapping)                              \
  CLASS(SwcToEcuMapping)                            \
  CLASS(EcuInstance)                                \
  CLASS(System)                                     \
  CLASS(FibexElement)                               \
  CLASS(RootSwCompositionPrototype)
// clang-format on

namespace Tarvelon::metamodel::arplatform::system {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.system.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.system.", E, __VA_ARGS__)
ARPLATFORM_SYSTEM_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::system
