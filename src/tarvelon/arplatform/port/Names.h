#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_PORT_NAMES(CLASS, ENUMERATION)                                                        \
  CLASS(ClientPort)                                                                                      \
  CLASS(ClientPortAnnotation)                                                                            \
  CLASS(ClientPortComSpec)                                                                               \
  CLASS(ClientPortInfo)                                                                                  \
  CLASS(ClientServerPortAnnotation)                                                                      \
  CLASS(ClientServerPortInfo)                                                                            \
  CLASS(DataFilter)                                                                                      \
  CLASS(DataPortInfo)                                                                                    \
  CLASS(DataReceiverPort)                                                                                \
  CLASS(DataReceiverPortAnnotation)                                                                      \
  CLASS(DataReceiverPortComSpec)                                                                         \
  CLASS(DataReceiverPortInfo)                                                                            \
  CLASS(DataReceiverQueuedPortComSpec)                                                                   \
  CLASS(DataReceiverNonqueuedPortComSpec)                                                                \
  CLASS(DataSenderPort)                                                                                  \
  CLASS(DataSenderPortAnnotation)                                                                        \
  CLASS(DataSenderPortComSpec)                                                                           \
  CLASS(DataSenderPortInfo)                                                                              \
  CLASS(DataSenderQueuedPortComSpec)                                                                     \
  CLASS(DataSenderNonqueuedPortComSpec)                                                                  \
  CLASS(ModeReceiverPort)                                                                                \
  CLASS(ParameterPortAnnotation)                                                                         \
  CLASS(ParameterReceiverPort)                                                                           \
  CLASS(ParameterReceiverPortAnnotation)                                                                 \
  CLASS(ParameterReceiverPortComSpec)                                                                    \
  CLASS(ParameterReceiverPortInfo)                                                                       \
  CLASS(Port)                                                                                            \
  CLASS(PortAnnotation)                                                                                  \
  CLASS(PortComSpec)                                                                                     \
  CLASS(PortInfo)                                                                                        \
  CLASS(ProvidedPort)                                                                                    \
  CLASS(RequiredPort)                                                                                    \
  CLASS(SenderReceiverPortAnnotation)                                                                    \
  CLASS(ServerPort)                                                                                      \
  CLASS(ServerPortAnnotation)                                                                            \
  CLASS(ServerPortComSpec)                                                                               \
  CLASS(ServerPortInfo)                                                                                  \
  ENUMERATION(DataFilterKind, Always, MaskedNewEqualsMaskedOld, MaskedNewEqualsX,                        \
              MaskedNewDiffersMaskedOld, MaskedNewDiffersX, Never, NewIsDifferent, NewIsEqual,           \
              NewIsWithin, NewIsOutside, NewIsGreater, NewIsLessOrEqual, NewIsLess, NewIsGreaterOrEqual, \
              OneEveryN)                                                                                 \
  ENUMERATION(DataLimitKind, None, Min, Max)                                                             \
  ENUMERATION(HandleOutOfRangeKind, None, Ignore, Saturate, Default, Invalid)                            \
  ENUMERATION(HandleTimeoutKind, Replace, None)                                                          \
  ENUMERATION(ProcessingKind, None, Raw, Filtered)                                                       \
  CLASS(PortGroup)                                                                                       \
  CLASS(ModePortInfo)                                                                                    \
  CLASS(ModeReceiverPortInfo)                                                                            \
  CLASS(ModeReceiverPortAnnotation)                                                                      \
  CLASS(ParameterSenderPort)                                                                             \
  CLASS(ParameterSenderPortInfo)                                                                         \
  CLASS(ParameterSenderPortAnnotation)                                                                   \
  CLASS(ParameterSenderPortComSpec)                                                                      \
  CLASS(ProvidedRequiredPort)                                                                            \
  CLASS(DataSenderReceiverPort)                                                                          \
  CLASS(DataSenderReceiverPortInfo)                                                                      \
  CLASS(NvDataSenderPort)                                                                                \
  CLASS(NvDataReceiverPort)                                                                              \
  CLASS(NvDataPortAnnotation)                                                                            \
  CLASS(NvDataReceiverPortAnnotation)                                                                    \
  CLASS(NvDataSenderPortAnnotation)                                                                      \
  CLASS(NvDataReceiverPortComSpec)                                                                       \
  CLASS(NvDataSenderPortComSpec)                                                                         \
  CLASS(NvDataReceiverPortInfo)                                                                          \
  CLASS(NvDataSenderPortInfo)                                                                            \
  CLASS(NvDataSenderReceiverPortInfo)                                                                    \
  CLASS(NvDataSenderReceiverPort)                                                                        \
  CLASS(ModeSenderPort)                                                                                  \
  CLASS(ModeSenderPortInfo)                                                                              \
  CLASS(TriggerReceiverPort)                                                                             \
  CLASS(TriggerReceiverPortInfo)                                                                         \
  CLASS(TriggerReceiverPortAnnotation)                                                                   \
  CLASS(ServiceProvidedPort)                                                                             \
  CLASS(ServiceRequiredPort)                                                                             \
  CLASS(ServiceReceiverPortInfo)                                                                         \
  CLASS(ServiceProviderPortInfo)                                                                         \
  CLASS(AdaptivePort)                                                                                    \
  CLASS(PersistencyRequiredPort)                                                                         \
  CLASS(PersistencyProvidedPort)                                                                         \
  CLASS(PersistencyReceiverPortInfo)                                                                     \
  CLASS(PersistencyProvidedPortInfo)                                                                     \
  CLASS(PersistencyProvidedRequiredPortInfo)                                                             \
  CLASS(PersistencyProvidedPortComSpec)                                                                  \
  CLASS(PersistencyReceiverPortComSpec)                                                                  \
  CLASS(PersistencyProvidedRequiredPort)                                                                 \
  CLASS(AdaptiveRequiredPort)                                                                            \
  CLASS(AdaptiveProvidedPort)
// clang-format on

namespace Tarvelon::metamodel::arplatform::port {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.port.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.port.", E, __VA_ARGS__)
ARPLATFORM_PORT_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::port
