#pragma once

#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/component/Names.h"
#include "tarvelon/arplatform/instance/Names.h"
#include "tarvelon/arplatform/interface/Names.h"
#include "tarvelon/arplatform/manifest/Names.h"
#include "tarvelon/arplatform/port/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::manifest {

constexpr auto row(Is<Machine>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<interface::ModeDeclarationGroupElement>( 1, "FunctionGroup",                  kHolds),
          many<AdaptiveModuleInstantiation>           ( 2, "ModuleInstantiation",            kHolds),
          many<PerStateTimeout>                       ( 3, "PerStateTimeout",                kHolds),
          many<OsModuleInstantiation>                 ( 4, "OsModuleInstantiation",          kHolds),
          optional<K7Q::Double>                       ( 5, "DefaultApplicationEnterTimeout"),
          optional<K7Q::Double>                       ( 6, "DefaultApplicationExitTimeout")));
}

constexpr auto row(Is<PerStateTimeout>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<common::ModeDeclaration>(" aState")),
      properties(
          one<common::ModeDeclaration>( 1, "State",        kRefers),
          optional<K7Q::Double>       ( 2, "EnterTimeout"),
          optional<K7Q::Double>       ( 3, "ExitTimeout")));
}

constexpr auto row(Is<AdaptiveModuleInstantiation>) {
  return classRow(
      bases<common::Identifiable>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<OsModuleInstantiation>) {
  return classRow(
      bases<AdaptiveModuleInstantiation>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<ResourceGroup>( 1, "ResourceGroup", kHolds)));
}

constexpr auto row(Is<ResourceGroup>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::Double> ( 1, "MemUsage"),
          optional<K7Q::Integer>( 2, "CpuUsage")));
}

constexpr auto row(Is<ProcessToMachineMapping>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<Process, K7Q::String>(" aProcess, aName")),
      properties(
          one<Process>     ( 1, "Process", kRefers),
          optional<Machine>( 2, "Machine", kRefers)));
}

constexpr auto row(Is<Process>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<Executable, K7Q::String>(" aExecutable, aName")),
      properties(
          optional<LogTraceDefaultLogLevelEnum>( 1, "LogTraceDefaultLogLevel"),
          optional<K7Q::String>                ( 2, "LogTraceFilePath"),
          many<LogTraceLogModeEnum>            ( 3, "LogTraceLogMode"),
          optional<K7Q::String>                ( 4, "LogTraceProcessDesc"),
          optional<K7Q::String>                ( 5, "LogTraceProcessId"),
          one<Executable>                      ( 6, "Executable",                  kRefers),
          many<StateDependentStartupConfig>    ( 7, "StateDependentStartupConfig", kHolds),
          optional<ProcessDesign>              ( 8, "ProcessDesign",               kRefers)));
}

constexpr auto row(Is<ProcessToMachineMappingSet>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<ProcessToMachineMapping>( 1, "ProcessToMachineMapping", kHolds)));
}

constexpr auto row(Is<RootSwComponentPrototype>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<component::Component, K7Q::String>(" aApplicationType, aName")),
      properties(
          one<component::Component>( 1, "ApplicationType", kRefers)));
}

constexpr auto row(Is<Executable>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<RootSwComponentPrototype, K7Q::String>(" aRootSwComponentPrototype, aName")),
      properties(
          one<RootSwComponentPrototype>( 1, "RootSwComponentPrototype", kHolds),
          optional<BuildTypeEnum>      ( 2, "BuildType")));
}

constexpr auto row(Is<StateDependentStartupConfig>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<ResourceGroup, StartupConfig>(" aResourceGroup, aStartupConfig")),
      properties(
          one<ResourceGroup>                        ( 1, "ResourceGroup",      kRefers),
          one<StartupConfig>                        ( 2, "StartupConfig",      kRefers),
          many<instance::ModeDeclarationInstanceRef>( 3, "FunctionGroupState", kHolds)));
}

constexpr auto row(Is<StartupConfig>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<StartupOption>               ( 1, "StartupOption",      kHolds),
          optional<SchedulingPolicyKindEnum>( 2, "SchedulingPolicy"),
          optional<K7Q::Integer>            ( 3, "SchedulingPriority")));
}

constexpr auto row(Is<StartupOption>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<CommandLineOptionKindEnum>(" aOptionKind")),
      properties(
          optional<K7Q::String>         ( 1, "OptionArgument"),
          one<CommandLineOptionKindEnum>( 2, "OptionKind"),
          optional<K7Q::String>         ( 3, "OptionName")));
}

constexpr auto row(Is<StartupConfigSet>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<StartupConfig>( 1, "StartupConfig", kHolds)));
}

constexpr auto row(Is<ServiceInterfaceDeployment>) {
  return classRow(
      bases<common::Packageable>(),
      noConstructors(),
      properties(
          optional<interface::ServiceInterface>( 1, "ServiceInterface", kRefers)));
}

constexpr auto row(Is<UserDefinedServiceInterfaceDeployment>) {
  return classRow(
      bases<ServiceInterfaceDeployment>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      noProperties());
}

constexpr auto row(Is<AdaptivePlatformServiceInstance>) {
  return classRow(
      bases<common::Packageable>(),
      noConstructors(),
      properties(
          optional<ServiceInterfaceDeployment>( 1, "Deployment", kRefers)));
}

constexpr auto row(Is<ProvidedApServiceInstance>) {
  return classRow(
      bases<AdaptivePlatformServiceInstance>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<RequiredApServiceInstance>) {
  return classRow(
      bases<AdaptivePlatformServiceInstance>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<ProvidedUserDefinedServiceInstance>) {
  return classRow(
      bases<ProvidedApServiceInstance>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<ServiceInterfaceDeployment>( 1, "Deployment", kRefers).unexposed()));
}

constexpr auto row(Is<RequiredUserDefinedServiceInstance>) {
  return classRow(
      bases<RequiredApServiceInstance>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<ServiceInterfaceDeployment>( 1, "Deployment", kRefers).unexposed()));
}

constexpr auto row(Is<ServiceInstanceToPortMapping>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::Boolean>                   ( 1, "EnableLogTrace"),
          optional<AdaptivePlatformServiceInstance>( 2, "ServiceInstance", kRefers),
          optional<port::AdaptivePort>             ( 3, "Port",            kRefers),
          optional<ProcessDesign>                  ( 4, "ProcessDesign",   kRefers)));
}

constexpr auto row(Is<DdsProvidedServiceInstance>) {
  return classRow(
      bases<ProvidedApServiceInstance>(),
      constructors(create<>(),
                   create<K7Q::String, K7Q::String, K7Q::String>(" aInstanceIdentifier, aDomainId, aName")),
      properties(
          one<K7Q::String>                    ( 1, "InstanceIdentifier"),
          one<K7Q::String>                    ( 2, "DomainId"),
          optional<ServiceInterfaceDeployment>( 3, "Deployment",         kRefers).unexposed(),
          many<DdsEventQosProps>              ( 4, "EventQosProps",      kHolds)));
}

constexpr auto row(Is<DdsRequiredServiceInstance>) {
  return classRow(
      bases<RequiredApServiceInstance>(),
      constructors(create<>(),
                   create<K7Q::String, K7Q::String, K7Q::String>(" aInstanceIdentifier, aDomainId, aName")),
      properties(
          one<K7Q::String>                    ( 1, "InstanceIdentifier"),
          one<K7Q::String>                    ( 2, "DomainId"),
          optional<ServiceInterfaceDeployment>( 3, "Deployment",         kRefers).unexposed(),
          many<DdsEventQosProps>              ( 4, "EventQosProps",      kHolds)));
}

constexpr auto row(Is<DdsEventQosProps>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<DdsEventDeployment>(" aEventDeployment")),
      properties(
          optional<K7Q::String>  ( 1, "QosProfile"),
          one<DdsEventDeployment>( 2, "EventDeployment", kRefers)));
}

constexpr auto row(Is<DdsServiceInterfaceDeployment>) {
  return classRow(
      bases<ServiceInterfaceDeployment>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<DdsEventDeployment>( 1, "EventDeployment", kHolds)));
}

constexpr auto row(Is<DdsEventDeployment>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<interface::FlowData, K7Q::String>(" aEvent, aName")),
      properties(
          optional<K7Q::String>           ( 1, "TopicName"),
          many<TransportLayerProtocolEnum>( 2, "TransportProtocol"),
          one<interface::FlowData>        ( 3, "Event",             kRefers)));
}

constexpr auto row(Is<PersistencyKeyValueDatabase>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::Integer>                       ( 1, "MaximumAllowedSize"),
          optional<K7Q::Integer>                       ( 2, "MinimumSustainedSize"),
          one<interface::PersistencyUpdateStrategyEnum>( 3, "UpdateStrategy"),
          optional<K7Q::String>                        ( 4, "PersistencyUri"),
          many<PersistencyKeyValuePair>                ( 5, "KeyValuePair",         kHolds)));
}

constexpr auto row(Is<PersistencyPortToKeyValueDatabaseMapping>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<Process, port::AdaptivePort, PersistencyKeyValueDatabase, K7Q::String>(
                       " aProcess, aPort, aKeyValueStorage, aName")),
      properties(
          one<Process>                    ( 1, "Process",         kRefers),
          one<port::AdaptivePort>         ( 2, "Port",            kRefers),
          one<PersistencyKeyValueDatabase>( 3, "KeyValueStorage", kRefers)));
}

constexpr auto row(Is<PersistencyKeyValuePair>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<foundation::ValueSpecification, foundation::ValueType, K7Q::String>(
                       " aInitValue, aType, aName")),
      properties(
          one<interface::PersistencyUpdateStrategyEnum>( 1, "UpdateStrategy", kHidden),
          one<foundation::ValueSpecification>          ( 2, "InitValue",      kHolds),
          one<foundation::ValueType>                   ( 3, "Type",           kRefers)));
}

constexpr auto row(Is<ProcessDesign>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<Executable>( 1, "Executable", kRefers)));
}

}  // namespace Tarvelon::metamodel::arplatform::manifest
// clang-format on
