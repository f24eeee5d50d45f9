#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_INSTANCE_NAMES(CLASS, ENUMERATION) \
  CLASS(ParameterDataPortInstanceRef)                 \
  CLASS(ParameterDataCompInstanceRef)                 \
  CLASS(FlowDataCompInstanceRef)                      \
  CLASS(FlowDataPortInstanceRef)                      \
  CLASS(OperationPortInstanceRef)                     \
  CLASS(InstanceRef)                                  \
  CLASS(DataCompInstanceRef)                          \
  CLASS(DataInstanceRef)                              \
  CLASS(DataPortInstanceRef)                          \
  CLASS(RunnableInstanceRef)                          \
  CLASS(ArgumentDataInstanceRef)                      \
  CLASS(ModeDeclarationInstanceRef)                   \
  CLASS(ComponentInstanceRef)                         \
  CLASS(EventRef)                                     \
  CLASS(VariableDataCompInstanceRef)                  \
  CLASS(InstanceEventInCompositionInstanceRef)        \
  CLASS(CompositionPortInstanceRef)                   \
  CLASS(CompositionPPortInstanceRef)                  \
  CLASS(CompositionRPortInstanceRef)                  \
  CLASS(TriggerInstanceRef)
// clang-format on

namespace Tarvelon::metamodel::arplatform::instance {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.instance.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.instance.", E, __VA_ARGS__)
ARPLATFORM_INSTANCE_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::instance
