#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_MANIFEST_NAMES(CLASS, ENUMERATION)                                                      \
  CLASS(Machine)                                                                                           \
  CLASS(PerStateTimeout)                                                                                   \
  CLASS(AdaptiveModuleInstantiation)                                                                       \
  CLASS(OsModuleInstantiation)                                                                             \
  CLASS(ResourceGroup)                                                                                     \
  CLASS(ProcessToMachineMapping)                                                                           \
  CLASS(Process)                                                                                           \
  CLASS(ProcessToMachineMappingSet)                                                                        \
  ENUMERATION(BuildTypeEnum, BuildTypeDebug, BuildTypeRelease)                                             \
  ENUMERATION(SchedulingPolicyKindEnum, SchedulingPolicyFifo, SchedulingPolicyRoundRobin,                  \
              SchedulingPolicyOther)                                                                       \
  ENUMERATION(CommandLineOptionKindEnum, CommandLineShortForm, CommandLineLongForm, CommandLineSimpleForm) \
  ENUMERATION(LogTraceLogModeEnum, Console, File, Network)                                                 \
  ENUMERATION(LogTraceDefaultLogLevelEnum, Fatal, Error, Warn, Info, Debug, Verbose)                       \
  CLASS(RootSwComponentPrototype)                                                                          \
  CLASS(Executable)                                                                                        \
  CLASS(StateDependentStartupConfig)                                                                       \
  CLASS(StartupConfig)                                                                                     \
  CLASS(StartupOption)                                                                                     \
  CLASS(StartupConfigSet)                                                                                  \
  CLASS(ServiceInterfaceDeployment)                                                                        \
  CLASS(UserDefinedServiceInterfaceDeployment)                                                             \
  CLASS(AdaptivePlatformServiceInstance)                                                                   \
  CLASS(ProvidedApServiceInstance)                                                                         \
  CLASS(RequiredApServiceInstance)                                                                         \
  CLASS(ProvidedUserDefinedServiceInstance)                                                                \
  CLASS(RequiredUserDefinedServiceInstance)                                                                \
  CLASS(ServiceInstanceToPortMapping)                                                                      \
  CLASS(DdsProvidedServiceInstance)                                                                        \
  CLASS(DdsRequiredServiceInstance)                                                                        \
  CLASS(DdsEventQosProps)                                                                                  \
  CLASS(DdsServiceInterfaceDeployment)                                                                     \
  CLASS(DdsEventDeployment)                                                                                \
  ENUMERATION(TransportLayerProtocolEnum, Udp, Tcp)                                                        \
  CLASS(PersistencyKeyValueDatabase)                                                                       \
  CLASS(PersistencyPortToKeyValueDatabaseMapping)                                                          \
  CLASS(PersistencyKeyValuePair)                                                                           \
  CLASS(ProcessDesign)
// clang-format on

namespace Tarvelon::metamodel::arplatform::manifest {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.manifest.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.manifest.", E, __VA_ARGS__)
ARPLATFORM_MANIFEST_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::manifest
