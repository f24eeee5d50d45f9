#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_TIMING_EXTENSION_NAMES(CLASS, ENUMERATION) \
  CLASS(TimingExtension)                                      \
  CLASS(SwcTiming)                                            \
  CLASS(VfbTiming)                                            \
  CLASS(TimingConstraint)                                     \
  CLASS(ExecutionOrderConstraint)                             \
  CLASS(EOCExecutionEntityRefAbstract)                        \
  CLASS(EOCExecutableEntityRef)
// clang-format on

namespace Tarvelon::metamodel::arplatform::timingExtension {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.timingExtension.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.timingExtension.", E, __VA_ARGS__)
ARPLATFORM_TIMING_EXTENSION_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::timingExtension
