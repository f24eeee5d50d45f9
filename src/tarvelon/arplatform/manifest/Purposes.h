#pragma once

#include "tarvelon/arplatform/manifest/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::manifest {

inline constexpr std::string_view kPurpose =
    "Deployment on the adaptive platform: machines, the processes that run there and how they start, service "
    "instances, and persistent data.";

inline constexpr auto kPurposes = purposes(
    of<Machine>(
        "A machine of the adaptive platform, real or virtual: its function groups, its operating system and its "
        "timeouts."),
    of<PerStateTimeout>(
        "How long applications may take to enter or leave one state of the machine."),
    of<AdaptiveModuleInstantiation>(
        "The base of the platform's own modules as they are configured on one machine."),
    of<OsModuleInstantiation>(
        "The operating system of one machine, with the resource groups that processes are assigned to."),
    of<ResourceGroup>(
        "A share of a machine's memory and processor time that the processes assigned to it cannot exceed."),
    of<ProcessToMachineMapping>(
        "Places a process on a machine."),
    of<Process>(
        "An executable as it is started on a machine: when it runs and how, and how it logs. The same executable "
        "can be started as several processes."),
    of<ProcessToMachineMappingSet>(
        "A set of mappings that place processes on machines."),
    of<BuildTypeEnum>(
        "Whether an executable is built for debugging or for release."),
    of<SchedulingPolicyKindEnum>(
        "How the operating system schedules a process: first in first out, round robin, or otherwise."),
    of<CommandLineOptionKindEnum>(
        "How an option is written on the command line: short, long, or as a plain argument."),
    of<LogTraceLogModeEnum>(
        "Where log messages go to: the console, a file or the network."),
    of<LogTraceDefaultLogLevelEnum>(
        "How severe a message must be to be logged by default, from fatal errors to everything."),
    of<RootSwComponentPrototype>(
        "The outermost component of an executable: the application that it consists of."),
    of<Executable>(
        "A program that can be run on a machine, made of an application and all that is inside."),
    of<StateDependentStartupConfig>(
        "How a process starts in certain states: the startup configuration and the resource group that apply when a "
        "function group is in one of them."),
    of<StartupConfig>(
        "How a process is started: its command line options, scheduling policy and priority."),
    of<StartupOption>(
        "One option on the command line of a process."),
    of<StartupConfigSet>(
        "A set of startup configurations, which processes share."),
    of<ServiceInterfaceDeployment>(
        "The base of how a service interface is represented by a middleware."),
    of<UserDefinedServiceInterfaceDeployment>(
        "How a service interface is represented by a middleware that AUTOSAR does not know."),
    of<AdaptivePlatformServiceInstance>(
        "The base of the instances of services, provided or required, with the deployment that they follow."),
    of<ProvidedApServiceInstance>(
        "The base of the service instances that an application offers."),
    of<RequiredApServiceInstance>(
        "The base of the service instances that an application uses."),
    of<ProvidedUserDefinedServiceInstance>(
        "A service instance that is offered over a middleware that AUTOSAR does not know."),
    of<RequiredUserDefinedServiceInstance>(
        "A service instance that is used over a middleware that AUTOSAR does not know."),
    of<ServiceInstanceToPortMapping>(
        "Ties a service instance to the port of an application through which it is offered or used."),
    of<DdsProvidedServiceInstance>(
        "A service instance that is offered over DDS: its identifier, its domain, and the quality of service of its "
        "events."),
    of<DdsRequiredServiceInstance>(
        "A service instance that is used over DDS: its identifier, its domain, and the quality of service of its "
        "events."),
    of<DdsEventQosProps>(
        "The quality of service of one event of a DDS service instance, by the name of a profile."),
    of<DdsServiceInterfaceDeployment>(
        "How a service interface is represented in DDS: the deployments of its events."),
    of<DdsEventDeployment>(
        "How one event of a service is represented in DDS: its topic and the transport protocols that it may use."),
    of<TransportLayerProtocolEnum>(
        "The protocol of the transport layer: UDP or TCP."),
    of<PersistencyKeyValueDatabase>(
        "A storage of keys and values on a machine: its size, its place, and what becomes of it at an update."),
    of<PersistencyPortToKeyValueDatabaseMapping>(
        "Ties the port of a process, through which it reads or writes persistent data, to a key-value storage."),
    of<PersistencyKeyValuePair>(
        "One key of a key-value storage, with its type and initial value."),
    of<ProcessDesign>(
        "A process as it is known at design time, before it is deployed to a machine."));

}  // namespace Tarvelon::metamodel::arplatform::manifest
// clang-format on
