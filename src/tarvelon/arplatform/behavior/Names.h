#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_BEHAVIOR_NAMES(CLASS, ENUMERATION)                                                    \
  CLASS(ApplicationComponentBehavior)                                                                    \
  CLASS(Runnable)                                                                                        \
  CLASS(Event)                                                                                           \
  CLASS(ExclusiveArea)                                                                                   \
  CLASS(PerInstanceMemory)                                                                               \
  CLASS(IrvData)                                                                                         \
  CLASS(ComponentParameterAccess)                                                                        \
  CLASS(DataAccess)                                                                                      \
  CLASS(DataReceiveErrorEvent)                                                                           \
  CLASS(DataReceivedEvent)                                                                               \
  CLASS(DataSendCompletedEvent)                                                                          \
  CLASS(DataWriteCompletedEvent)                                                                         \
  CLASS(FlowDataAccess)                                                                                  \
  CLASS(IrvAccess)                                                                                       \
  CLASS(ModeSwitchEvent)                                                                                 \
  CLASS(OperationBlockingAccess)                                                                         \
  CLASS(OperationInvokedEvent)                                                                           \
  CLASS(ParameterAccess)                                                                                 \
  CLASS(PortParameterAccess)                                                                             \
  CLASS(TimingEvent)                                                                                     \
  ENUMERATION(TerminateAndRestartKind, NoSupport, CanBeTerminated, CanBeTerminatedAndRestarted)          \
  CLASS(PortAPIOption)                                                                                   \
  ENUMERATION(ModeActivationKind, OnEntry, OnExit, OnTransition)                                         \
  CLASS(ServiceDependency)                                                                               \
  ENUMERATION(IrvKind, Implicit, Explicit)                                                               \
  ENUMERATION(ParameterKind, Other, Const, Shared, Pim)                                                  \
  ENUMERATION(DataAccessKind, ImplicitWrite, ImplicitRead, ExplicitWrite, ExplicitReadByArg,             \
              ExplicitReadByValue)                                                                       \
  ENUMERATION(IrvAccessKind, Read, Write)                                                                \
  CLASS(ModeAccess)                                                                                      \
  CLASS(InitEvent)                                                                                       \
  CLASS(PortDefinedArgumentValue)                                                                        \
  CLASS(VariableDataAccess)                                                                              \
  CLASS(OperationAccess)                                                                                 \
  CLASS(OperationNonBlockingAccess)                                                                      \
  CLASS(IncludedDataTypeSet)                                                                             \
  CLASS(ModeSwitch)                                                                                      \
  CLASS(ExternalTriggerOccurredEvent)                                                                    \
  ENUMERATION(SectionTypeKind, CalibrationVariables, Calprm, Code, ConfigData, Const, ExcludeFromFlash,  \
              Var)                                                                                       \
  CLASS(InternalTriggerOccurredEvent)                                                                    \
  CLASS(InternalTrigger)                                                                                 \
  CLASS(Internal)                                                                                        \
  ENUMERATION(DataTransformationErrorHandlingEnum, NoTransformerErrorHandling, TransformerErrorHandling) \
  CLASS(ServiceNeeds)                                                                                    \
  CLASS(NvBlockNeeds)
// clang-format on

namespace Tarvelon::metamodel::arplatform::behavior {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.behavior.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.behavior.", E, __VA_ARGS__)
ARPLATFORM_BEHAVIOR_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::behavior
