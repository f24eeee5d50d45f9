#pragma once

#include "tarvelon/arplatform/manifest/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::manifest {

constexpr auto shape(Is<Machine>) {
  return shapeOf(
      elements(element("MACHINE")),
      places(
          role   ("FunctionGroup",                  "FUNCTION-GROUPS/MODE-DECLARATION-GROUP-PROTOTYPE"),
          nowhere("ModuleInstantiation",            "the only kind of them stands in OsModuleInstantiation"),
          inside ("PerStateTimeout",                "PER-STATE-TIMEOUTS"),
          inside ("OsModuleInstantiation",          "MODULE-INSTANTIATIONS"),
          text   ("DefaultApplicationEnterTimeout", "DEFAULT-APPLICATION-TIMEOUT/ENTER-TIMEOUT-VALUE"),
          text   ("DefaultApplicationExitTimeout",  "DEFAULT-APPLICATION-TIMEOUT/EXIT-TIMEOUT-VALUE")));
}

constexpr auto shape(Is<PerStateTimeout>) {
  return shapeOf(
      elements(element("PER-STATE-TIMEOUT")),
      places(
          reference("State",        "STATE-REF"),
          text     ("EnterTimeout", "TIMEOUT/ENTER-TIMEOUT-VALUE"),
          text     ("ExitTimeout",  "TIMEOUT/EXIT-TIMEOUT-VALUE")));
}

constexpr auto shape(Is<AdaptiveModuleInstantiation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<OsModuleInstantiation>) {
  return shapeOf(
      elements(element("OS-MODULE-INSTANTIATION")),
      places(
          inside("ResourceGroup", "RESOURCE-GROUPS")));
}

constexpr auto shape(Is<ResourceGroup>) {
  return shapeOf(
      elements(element("RESOURCE-GROUP")),
      places(
          text("MemUsage", "MEM-USAGE"),
          text("CpuUsage", "CPU-USAGE")));
}

constexpr auto shape(Is<ProcessToMachineMapping>) {
  return shapeOf(
      elements(element("PROCESS-TO-MACHINE-MAPPING")),
      places(
          reference("Process", "PROCESS-REF"),
          reference("Machine", "MACHINE-REF")));
}

constexpr auto shape(Is<Process>) {
  return shapeOf(
      elements(element("PROCESS")),
      places(
          text     ("LogTraceDefaultLogLevel",     "LOG-TRACE-DEFAULT-LOG-LEVEL"),
          text     ("LogTraceFilePath",            "LOG-TRACE-FILE-PATH"),
          text     ("LogTraceLogMode",             "LOG-TRACE-LOG-MODES/LOG-TRACE-LOG-MODE"),
          text     ("LogTraceLogMode",             "LOG-TRACE-LOG-MODE"),
          text     ("LogTraceProcessDesc",         "LOG-TRACE-PROCESS-DESC"),
          text     ("LogTraceProcessId",           "LOG-TRACE-PROCESS-ID"),
          reference("Executable",                  "EXECUTABLE-REFS/EXECUTABLE-REF"),
          reference("Executable",                  "EXECUTABLE-REF"),
          inside   ("StateDependentStartupConfig", "STATE-DEPENDENT-STARTUP-CONFIGS"),
          inside   ("StateDependentStartupConfig", "MODE-DEPENDENT-STARTUP-CONFIGS"),
          reference("ProcessDesign",               "DESIGN-REF")));
}

constexpr auto shape(Is<ProcessToMachineMappingSet>) {
  return shapeOf(
      elements(element("PROCESS-TO-MACHINE-MAPPING-SET")),
      places(
          inside("ProcessToMachineMapping", "PROCESS-TO-MACHINE-MAPPINGS")));
}

constexpr auto items(Is<BuildTypeEnum>) {
  return itemTexts("BUILD-TYPE-DEBUG", "BUILD-TYPE-RELEASE");
}

constexpr auto items(Is<SchedulingPolicyKindEnum>) {
  return itemTexts("SCHEDULING-POLICY-FIFO", "SCHEDULING-POLICY-ROUND-ROBIN", "SCHEDULING-POLICY-OTHER");
}

constexpr auto items(Is<CommandLineOptionKindEnum>) {
  return itemTexts("COMMAND-LINE-SHORT-FORM", "COMMAND-LINE-LONG-FORM", "COMMAND-LINE-SIMPLE-FORM");
}

constexpr auto items(Is<LogTraceLogModeEnum>) {
  return itemTexts("CONSOLE", "FILE", "NETWORK");
}

constexpr auto items(Is<LogTraceDefaultLogLevelEnum>) {
  return itemTexts("FATAL", "ERROR", "WARN", "INFO", "DEBUG", "VERBOSE");
}

constexpr auto shape(Is<RootSwComponentPrototype>) {
  return shapeOf(
      noElement(),
      places(
          reference("ApplicationType", "APPLICATION-TYPE-TREF")));
}

constexpr auto shape(Is<Executable>) {
  return shapeOf(
      elements(element("EXECUTABLE")),
      places(
          role("RootSwComponentPrototype", "ROOT-SW-COMPONENT-PROTOTYPE"),
          text("BuildType",                "BUILD-TYPE")));
}

constexpr auto shape(Is<StateDependentStartupConfig>) {
  return shapeOf(
      elements(element("STATE-DEPENDENT-STARTUP-CONFIG"),
               element("MODE-DEPENDENT-STARTUP-CONFIG")),
      places(
          reference("ResourceGroup",      "RESOURCE-GROUP-REF"),
          reference("StartupConfig",      "STARTUP-CONFIG-REF"),
          role     ("FunctionGroupState", "FUNCTION-GROUP-STATE-IREFS/FUNCTION-GROUP-STATE-IREF"),
          role     ("FunctionGroupState", "FUNCTION-GROUP-MODE-IREFS/FUNCTION-GROUP-MODE-IREF"),
          role     ("FunctionGroupState", "FUNCTION-GROUP-IREFS/FUNCTION-GROUP-IREF")));
}

constexpr auto shape(Is<StartupConfig>) {
  return shapeOf(
      elements(element("STARTUP-CONFIG")),
      places(
          inside("StartupOption",      "STARTUP-OPTIONS"),
          text  ("SchedulingPolicy",   "SCHEDULING-POLICY"),
          text  ("SchedulingPriority", "SCHEDULING-PRIORITY")));
}

constexpr auto shape(Is<StartupOption>) {
  return shapeOf(
      elements(element("STARTUP-OPTION")),
      places(
          text("OptionArgument", "OPTION-ARGUMENT"),
          text("OptionKind",     "OPTION-KIND"),
          text("OptionName",     "OPTION-NAME")));
}

constexpr auto shape(Is<StartupConfigSet>) {
  return shapeOf(
      elements(element("STARTUP-CONFIG-SET")),
      places(
          inside("StartupConfig", "STARTUP-CONFIGS")));
}

constexpr auto shape(Is<ServiceInterfaceDeployment>) {
  return shapeOf(
      noElement(),
      places(
          reference("ServiceInterface", "SERVICE-INTERFACE-REF")));
}

constexpr auto shape(Is<UserDefinedServiceInterfaceDeployment>) {
  return shapeOf(
      elements(element("USER-DEFINED-SERVICE-INTERFACE-DEPLOYMENT")),
      places());
}

constexpr auto shape(Is<AdaptivePlatformServiceInstance>) {
  return shapeOf(
      noElement(),
      places(
          reference("Deployment", "SERVICE-INTERFACE-DEPLOYMENT-REF"),
          reference("Deployment", "SERVICE-INTERFACE-REF")));
}

constexpr auto shape(Is<ProvidedApServiceInstance>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<RequiredApServiceInstance>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ProvidedUserDefinedServiceInstance>) {
  return shapeOf(
      elements(element("PROVIDED-USER-DEFINED-SERVICE-INSTANCE")),
      places());
}

constexpr auto shape(Is<RequiredUserDefinedServiceInstance>) {
  return shapeOf(
      elements(element("REQUIRED-USER-DEFINED-SERVICE-INSTANCE")),
      places());
}

constexpr auto shape(Is<ServiceInstanceToPortMapping>) {
  return shapeOf(
      elements(element("SERVICE-INSTANCE-TO-PORT-PROTOTYPE-MAPPING")),
      places(
          text     ("EnableLogTrace",  "ENABLES-LOG-TRACE"),
          reference("ServiceInstance", "SERVICE-INSTANCE-REF"),
          reference("Port",            "PORT-PROTOTYPE-IREF/TARGET-PORT-PROTOTYPE-REF"),
          reference("ProcessDesign",   "PROCESS-DESIGN-REF")));
}

constexpr auto shape(Is<DdsProvidedServiceInstance>) {
  return shapeOf(
      elements(element("DDS-PROVIDED-SERVICE-INSTANCE"),
               element("PROVIDED-DDS-SERVICE-INSTANCE")),
      places(
          text  ("InstanceIdentifier", "SERVICE-INSTANCE-ID"),
          text  ("DomainId",           "DOMAIN-ID"),
          inside("EventQosProps",      "EVENT-QOS-PROPSS")));
}

constexpr auto shape(Is<DdsRequiredServiceInstance>) {
  return shapeOf(
      elements(element("DDS-REQUIRED-SERVICE-INSTANCE"),
               element("REQUIRED-DDS-SERVICE-INSTANCE")),
      places(
          text  ("InstanceIdentifier", "REQUIRED-SERVICE-INSTANCE-ID"),
          text  ("DomainId",           "DOMAIN-ID"),
          inside("EventQosProps",      "EVENT-QOS-PROPSS")));
}

constexpr auto shape(Is<DdsEventQosProps>) {
  return shapeOf(
      elements(element("DDS-EVENT-QOS-PROPS"),
               element("PROVIDED-DDS-EVENT-QOS-PROPS"),
               element("REQUIRED-DDS-EVENT-QOS-PROPS")),
      places(
          text     ("QosProfile",      "QOS-PROFILE"),
          reference("EventDeployment", "EVENT-REF")));
}

constexpr auto shape(Is<DdsServiceInterfaceDeployment>) {
  return shapeOf(
      elements(element("DDS-SERVICE-INTERFACE-DEPLOYMENT")),
      places(
          inside("EventDeployment", "EVENT-DEPLOYMENTS")));
}

constexpr auto shape(Is<DdsEventDeployment>) {
  return shapeOf(
      elements(element("DDS-EVENT-DEPLOYMENT")),
      places(
          text     ("TopicName",         "TOPIC-NAME"),
          text     ("TransportProtocol", "TRANSPORT-PROTOCOLS/TRANSPORT-PROTOCOL"),
          reference("Event",             "EVENT-REF")));
}

constexpr auto items(Is<TransportLayerProtocolEnum>) {
  return itemTexts("UDP", "TCP");
}

constexpr auto shape(Is<PersistencyKeyValueDatabase>) {
  return shapeOf(
      elements(element("PERSISTENCY-KEY-VALUE-STORAGE"),
               element("PERSISTENCY-KEY-VALUE-DATABASE")),
      places(
          text  ("MaximumAllowedSize",   "MAXIMUM-ALLOWED-SIZE"),
          text  ("MinimumSustainedSize", "MINIMUM-SUSTAINED-SIZE"),
          text  ("UpdateStrategy",       "UPDATE-STRATEGY"),
          text  ("PersistencyUri",       "DEPLOYMENT-URIS/PERSISTENCY-DEPLOYMENT-URI/URI"),
          text  ("PersistencyUri",       "URI"),
          inside("KeyValuePair",         "KEY-VALUE-PAIRS")));
}

constexpr auto shape(Is<PersistencyPortToKeyValueDatabaseMapping>) {
  return shapeOf(
      elements(element("PERSISTENCY-PORT-PROTOTYPE-TO-KEY-VALUE-STORAGE-MAPPING"),
               element("PERSISTENCY-PORT-PROTOTYPE-TO-KEY-VALUE-DATABASE-MAPPING")),
      places(
          reference("Process",         "PROCESS-REF"),
          reference("Port",            "PORT-PROTOTYPE-IREF/TARGET-PORT-PROTOTYPE-REF"),
          reference("Port",            "PERSISTENCY-PORT-PROTOTYPE-IREF/TARGET-PORT-PROTOTYPE-REF"),
          reference("KeyValueStorage", "KEY-VALUE-STORAGE-REF")));
}

constexpr auto shape(Is<PersistencyKeyValuePair>) {
  return shapeOf(
      elements(element("PERSISTENCY-KEY-VALUE-PAIR")),
      places(
          text     ("UpdateStrategy", "UPDATE-STRATEGY"),
          inside   ("InitValue",      "INIT-VALUE"),
          reference("Type",           "VALUE-DATA-TYPE-REF")));
}

constexpr auto shape(Is<ProcessDesign>) {
  return shapeOf(
      elements(element("PROCESS-DESIGN")),
      places(
          reference("Executable", "EXECUTABLE-REFS/EXECUTABLE-REF"),
          reference("Executable", "EXECUTABLE-REF")));
}

}  // namespace Tarvelon::metamodel::arplatform::manifest
// clang-format on
