#pragma once

#include "tarvelon/arplatform/behavior/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::behavior {

// The behavior of an adaptive application has only service dependencies in files.
constexpr auto shape(Is<ApplicationComponentBehavior>) {
  return shapeOf(
      elements(element("SWC-INTERNAL-BEHAVIOR"),
               element("ADAPTIVE-SWC-INTERNAL-BEHAVIOR")),
      places(
          inside   ("Runnables",                 "RUNNABLES"),
          inside   ("Events",                    "EVENTS"),
          inside   ("ExclusiveArea",             "EXCLUSIVE-AREAS"),
          inside   ("PIM",                       "PER-INSTANCE-MEMORYS"),
          role     ("IRV",                       "IMPLICIT-INTER-RUNNABLE-VARIABLES/VARIABLE-DATA-PROTOTYPE")
              .when("Kind", IrvKind::Implicit),
          role     ("IRV",                       "EXPLICIT-INTER-RUNNABLE-VARIABLES/VARIABLE-DATA-PROTOTYPE")
              .when("Kind", IrvKind::Explicit),
          inside   ("Parameters",                "CONSTANT-MEMORYS").when("Kind", ParameterKind::Const),
          inside   ("Parameters",                "SHARED-PARAMETERS").when("Kind", ParameterKind::Shared),
          inside   ("Parameters",                "PER-INSTANCE-PARAMETERS").when("Kind", ParameterKind::Pim),
          text     ("IsMultiInstantiable",       "SUPPORTS-MULTIPLE-INSTANTIATION"),
          text     ("TerminateAndRestartKind",   "HANDLE-TERMINATION-AND-RESTART"),
          role     ("VariationPoint",            "VARIATION-POINT"),
          inside   ("PortAPIOptions",            "PORT-API-OPTIONS"),
          inside   ("ServiceDependency",         "SERVICE-DEPENDENCYS"),
          reference("DataTypeMapping",           "DATA-TYPE-MAPPING-REFS/DATA-TYPE-MAPPING-REF"),
          inside   ("VariationPointProxy",       "VARIATION-POINT-PROXYS"),
          inside   ("StaticMemory",              "STATIC-MEMORYS"),
          inside   ("ArTypedPIM",                "AR-TYPED-PER-INSTANCE-MEMORYS"),
          inside   ("InstantiationDataDefProps", "INSTANTIATION-DATA-DEF-PROPSS"),
          inside   ("IncludedDataTypeSets",      "INCLUDED-DATA-TYPE-SETS")));
}

constexpr auto shape(Is<Runnable>) {
  return shapeOf(
      elements(element("RUNNABLE-ENTITY")),
      places(
          inside   ("DataAccess",               "DATA-WRITE-ACCESSS").when("Kind", DataAccessKind::ImplicitWrite),
          inside   ("DataAccess",               "DATA-READ-ACCESSS").when("Kind", DataAccessKind::ImplicitRead),
          inside   ("DataAccess",               "DATA-SEND-POINTS").when("Kind", DataAccessKind::ExplicitWrite),
          inside   ("DataAccess",               "DATA-RECEIVE-POINT-BY-ARGUMENTS")
              .when("Kind", DataAccessKind::ExplicitReadByArg),
          inside   ("DataAccess",               "DATA-RECEIVE-POINT-BY-VALUES")
              .when("Kind", DataAccessKind::ExplicitReadByValue),
          inside   ("IrvRead",                  "READ-LOCAL-VARIABLES"),
          inside   ("IrvWrite",                 "WRITTEN-LOCAL-VARIABLES"),
          inside   ("OperationBlockingCall",    "SERVER-CALL-POINTS"),
          inside   ("CompParamRead",            "PARAMETER-ACCESSS"),
          inside   ("PortParamRead",            "PARAMETER-ACCESSS"),
          text     ("Symbol",                   "SYMBOL"),
          reference("CanEnterExclusiveArea",    "CAN-ENTER-EXCLUSIVE-AREA-REFS/CAN-ENTER-EXCLUSIVE-AREA-REF"),
          reference("CanEnterExclusiveArea",    "CAN-ENTERS/EXCLUSIVE-AREA-REF-CONDITIONAL*/EXCLUSIVE-AREA-REF"),
          text     ("CanBeInvokedConcurrently", "CAN-BE-INVOKED-CONCURRENTLY"),
          reference("RunInsideExclusiveArea",   "RUNS-INSIDE-EXCLUSIVE-AREA-REFS/RUNS-INSIDE-EXCLUSIVE-AREA-REF"),
          reference("RunInsideExclusiveArea",   "RUNS-INSIDES/EXCLUSIVE-AREA-REF-CONDITIONAL*/EXCLUSIVE-AREA-REF"),
          role     ("VariationPoint",           "VARIATION-POINT"),
          inside   ("ModeAccessPoint",          "MODE-ACCESS-POINTS"),
          reference("SwAddrMethod",             "SW-ADDR-METHOD-REF"),
          nowhere  ("Events",            "the opposite of StartOnEvent, which the file has"),
          nowhere  ("VariableDataRead",  "READ-LOCAL-VARIABLES has the accesses to inter-runnable variables, which are"
                                         " in IrvRead"),
          nowhere  ("VariableDataWrite", "WRITTEN-LOCAL-VARIABLES has the accesses to inter-runnable variables, which"
                                         " are in IrvWrite"),
          inside   ("OperationNonBlockingCall", "SERVER-CALL-POINTS"),
          inside   ("ModeSwitchPoint",          "MODE-SWITCH-POINTS"),
          inside   ("InternalTriggeringPoint",  "INTERNAL-TRIGGERING-POINTS")));
}

constexpr auto shape(Is<Event>) {
  return shapeOf(
      noElement(),
      places(
          reference("StartOnEvent",   "START-ON-EVENT-REF"),
          role     ("VariationPoint", "VARIATION-POINT"),
          role     ("DisabledMode",   "DISABLED-MODE-IREFS/DISABLED-MODE-IREF")));
}

constexpr auto shape(Is<ExclusiveArea>) {
  return shapeOf(
      elements(element("EXCLUSIVE-AREA")),
      places(
          role("VariationPoint", "VARIATION-POINT")));
}

constexpr auto shape(Is<PerInstanceMemory>) {
  return shapeOf(
      elements(element("PER-INSTANCE-MEMORY")),
      places(
          text   ("TypeStr",           "TYPE"),
          text   ("TypeDefinitionStr", "TYPE-DEFINITION"),
          nowhere("InitialValue",      "INIT-VALUE of a PER-INSTANCE-MEMORY is plain text, no value specification"),
          role   ("VariationPoint",    "VARIATION-POINT")));
}

// The list where a variable stands says its kind.
constexpr auto shape(Is<IrvData>) {
  return shapeOf(
      noElement(),
      places(
          role  ("VariationPoint", "VARIATION-POINT"),
          chosen("Kind")));
}

// A parameter access without a port is one to the component itself.
constexpr auto shape(Is<ComponentParameterAccess>) {
  return shapeOf(
      elements(element("PARAMETER-ACCESS").ifDest("ACCESSED-PARAMETER/LOCAL-PARAMETER-REF", "PARAMETER-DATA-PROTOTYPE"),
               element("PARAMETER-ACCESS").ifDest("ACCESSED-PARAMETER/LOCAL-PARAMETER-REF", "AUTOSAR-DATA-PROTOTYPE"),
               element("PARAMETER-ACCESS").ifDest("ACCESSED-PARAMETER/LOCAL-PARAMETER-REF", "DATA-PROTOTYPE")),
      places(
          role("InstanceRef",    "ACCESSED-PARAMETER/LOCAL-PARAMETER-REF"),
          role("VariationPoint", "VARIATION-POINT")));
}

constexpr auto shape(Is<DataAccess>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<DataReceiveErrorEvent>) {
  return shapeOf(
      elements(element("DATA-RECEIVE-ERROR-EVENT")),
      places(
          role("InstanceRef", "DATA-IREF")));
}

constexpr auto shape(Is<DataReceivedEvent>) {
  return shapeOf(
      elements(element("DATA-RECEIVED-EVENT")),
      places(
          role("InstanceRef", "DATA-IREF")));
}

constexpr auto shape(Is<DataSendCompletedEvent>) {
  return shapeOf(
      elements(element("DATA-SEND-COMPLETED-EVENT")),
      places(
          reference("DataAccess", "EVENT-SOURCE-REF")));
}

constexpr auto shape(Is<DataWriteCompletedEvent>) {
  return shapeOf(
      elements(element("DATA-WRITE-COMPLETED-EVENT")),
      places(
          reference("DataAccess", "EVENT-SOURCE-REF")));
}

// The list where an access stands says its kind.
constexpr auto shape(Is<FlowDataAccess>) {
  return shapeOf(
      elements(element("VARIABLE-ACCESS")),
      places(
          role  ("InstanceRef",    "ACCESSED-VARIABLE/AUTOSAR-VARIABLE-IREF"),
          role  ("VariationPoint", "VARIATION-POINT"),
          chosen("Kind")));
}

constexpr auto shape(Is<IrvAccess>) {
  return shapeOf(
      elements(element("VARIABLE-ACCESS")),
      places(
          role("InstanceRef",    "ACCESSED-VARIABLE/LOCAL-VARIABLE-REF"),
          role("VariationPoint", "VARIATION-POINT")));
}

constexpr auto shape(Is<ModeSwitchEvent>) {
  return shapeOf(
      elements(element("SWC-MODE-SWITCH-EVENT")),
      places(
          role("InstanceRef", "MODE-IREFS/MODE-IREF"),
          text("Activation",  "ACTIVATION")));
}

constexpr auto shape(Is<OperationBlockingAccess>) {
  return shapeOf(
      elements(element("SYNCHRONOUS-SERVER-CALL-POINT")),
      places(
          role("VariationPoint", "VARIATION-POINT")));
}

constexpr auto shape(Is<OperationInvokedEvent>) {
  return shapeOf(
      elements(element("OPERATION-INVOKED-EVENT")),
      places(
          role("InstanceRef", "OPERATION-IREF")));
}

constexpr auto shape(Is<ParameterAccess>) {
  return shapeOf(
      noElement(),
      places());
}

// A runnable reads parameters at required ports only.
constexpr auto shape(Is<PortParameterAccess>) {
  return shapeOf(
      elements(element("PARAMETER-ACCESS")
                   .ifDest("ACCESSED-PARAMETER/AUTOSAR-PARAMETER-IREF/PORT-PROTOTYPE-REF", "R-PORT-PROTOTYPE"),
               element("PARAMETER-ACCESS")
                   .ifDest("ACCESSED-PARAMETER/AUTOSAR-PARAMETER-IREF/PORT-PROTOTYPE-REF", "PR-PORT-PROTOTYPE"),
               element("PARAMETER-ACCESS")
                   .ifDest("ACCESSED-PARAMETER/AUTOSAR-PARAMETER-IREF/PORT-PROTOTYPE-REF",
                           "ABSTRACT-REQUIRED-PORT-PROTOTYPE"),
               element("PARAMETER-ACCESS")
                   .ifDest("ACCESSED-PARAMETER/AUTOSAR-PARAMETER-IREF/PORT-PROTOTYPE-REF", "PORT-PROTOTYPE")),
      places(
          role("InstanceRef",    "ACCESSED-PARAMETER/AUTOSAR-PARAMETER-IREF"),
          role("VariationPoint", "VARIATION-POINT")));
}

constexpr auto shape(Is<TimingEvent>) {
  return shapeOf(
      elements(element("TIMING-EVENT")),
      places(
          text("Period", "PERIOD")));
}

constexpr auto shape(Is<PortAPIOption>) {
  return shapeOf(
      elements(element("PORT-API-OPTION")),
      places(
          role     ("VariationPoint", "VARIATION-POINT"),
          inside   ("PortArgValue",   "PORT-ARG-VALUES"),
          reference("Port",           "PORT-REF"),
          text     ("ErrorHandling",  "ERROR-HANDLING")));
}

// Each assignment of data to the service is an element of its own. Its ROLE is no property of ours.
constexpr auto shape(Is<ServiceDependency>) {
  return shapeOf(
      elements(element("SWC-SERVICE-DEPENDENCY")),
      places(
          role     ("VariationPoint",       "VARIATION-POINT"),
          reference("PIM",                  "ASSIGNED-DATAS/ROLE-BASED-DATA-ASSIGNMENT*/USED-PIM-REF"),
          reference("UsedDataElement",
                    "ASSIGNED-DATAS/ROLE-BASED-DATA-ASSIGNMENT*/USED-DATA-ELEMENT/LOCAL-VARIABLE-REF"),
          reference("UsedParameterElement",
                    "ASSIGNED-DATAS/ROLE-BASED-DATA-ASSIGNMENT*/USED-PARAMETER-ELEMENT/LOCAL-PARAMETER-REF"),
          inside   ("ServiceNeeds",         "SERVICE-NEEDS")));
}

// The element says whether the mode is accessed at the port of a mode user or of a mode manager.
constexpr auto shape(Is<ModeAccess>) {
  return shapeOf(
      elements(element("MODE-ACCESS-POINT")),
      places(
          role("InstanceRef",    "MODE-GROUP-IREF/R-MODE-GROUP-IN-ATOMIC-SWC-INSTANCE-REF"),
          role("InstanceRef",    "MODE-GROUP-IREF/P-MODE-GROUP-IN-ATOMIC-SWC-INSTANCE-REF"),
          role("VariationPoint", "VARIATION-POINT")));
}

constexpr auto shape(Is<InitEvent>) {
  return shapeOf(
      elements(element("INIT-EVENT")),
      places());
}

constexpr auto shape(Is<PortDefinedArgumentValue>) {
  return shapeOf(
      elements(element("PORT-DEFINED-ARGUMENT-VALUE")),
      places(
          nowhere  ("Name",         "a PORT-DEFINED-ARGUMENT-VALUE has no SHORT-NAME"),
          nowhere  ("LongName",     "a PORT-DEFINED-ARGUMENT-VALUE has a value and its type only"),
          nowhere  ("Category",     "a PORT-DEFINED-ARGUMENT-VALUE has a value and its type only"),
          nowhere  ("Introduction", "a PORT-DEFINED-ARGUMENT-VALUE has a value and its type only"),
          nowhere  ("AdminData",    "a PORT-DEFINED-ARGUMENT-VALUE has a value and its type only"),
          nowhere  ("Desc",         "a PORT-DEFINED-ARGUMENT-VALUE has a value and its type only"),
          inside   ("Value",        "VALUE"),
          reference("Type",         "VALUE-TYPE-TREF")));
}

constexpr auto shape(Is<VariableDataAccess>) {
  return shapeOf(
      noElement("the variable accesses of a runnable in files are those of FlowDataAccess and IrvAccess"),
      places(
          nowhere("VariationPoint", "no file has the access itself"),
          nowhere("InstanceRef",    "no file has the access itself")));
}

// In files a call refers to one operation only.
constexpr auto shape(Is<OperationAccess>) {
  return shapeOf(
      noElement("a call in a file is either synchronous or asynchronous"),
      places(
          text("Timeout",     "TIMEOUT"),
          role("InstanceRef", "OPERATION-IREF")));
}

constexpr auto shape(Is<OperationNonBlockingAccess>) {
  return shapeOf(
      elements(element("ASYNCHRONOUS-SERVER-CALL-POINT")),
      places(
          role("VariationPoint", "VARIATION-POINT")));
}

constexpr auto shape(Is<IncludedDataTypeSet>) {
  return shapeOf(
      elements(element("INCLUDED-DATA-TYPE-SET")),
      places(
          reference("DataTypes",     "DATA-TYPE-REFS/DATA-TYPE-REF"),
          text     ("LiteralPrefix", "LITERAL-PREFIX")));
}

constexpr auto shape(Is<ModeSwitch>) {
  return shapeOf(
      elements(element("MODE-SWITCH-POINT")),
      places(
          role("VariationPoint", "VARIATION-POINT"),
          role("InstanceRef",    "MODE-GROUP-IREF")));
}

constexpr auto shape(Is<ExternalTriggerOccurredEvent>) {
  return shapeOf(
      elements(element("EXTERNAL-TRIGGER-OCCURRED-EVENT")),
      places(
          role("InstanceRef", "TRIGGER-IREF")));
}

constexpr auto shape(Is<InternalTriggerOccurredEvent>) {
  return shapeOf(
      elements(element("INTERNAL-TRIGGER-OCCURRED-EVENT")),
      places(
          reference("InternalTriggeringPoint", "EVENT-SOURCE-REF")));
}

constexpr auto shape(Is<InternalTrigger>) {
  return shapeOf(
      elements(element("INTERNAL-TRIGGERING-POINT")),
      places(
          role   ("VariationPoint", "VARIATION-POINT"),
          nowhere("IsQueued",       "SW-IMPL-POLICY, which says QUEUED or not, is no Boolean")));
}

constexpr auto shape(Is<Internal>) {
  return shapeOf(
      noElement("an internal triggering point in a file refers to no other one"),
      places(
          nowhere("Trigger", "an internal triggering point in a file refers to no other one")));
}

constexpr auto shape(Is<ServiceNeeds>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<NvBlockNeeds>) {
  return shapeOf(
      elements(element("NV-BLOCK-NEEDS")),
      places(
          text("RestoreAtStart",  "RESTORE-AT-START"),
          text("StoreAtShutdown", "STORE-AT-SHUTDOWN")));
}

constexpr auto items(Is<TerminateAndRestartKind>) {
  return itemTexts("NO-SUPPORT", "CAN-BE-TERMINATED", "CAN-BE-TERMINATED-AND-RESTARTED");
}

constexpr auto items(Is<ModeActivationKind>) {
  return itemTexts("ON-ENTRY", "ON-EXIT", "ON-TRANSITION");
}

constexpr auto items(Is<IrvKind>) {
  return itemTexts();
}

constexpr auto items(Is<ParameterKind>) {
  return itemTexts();
}

constexpr auto items(Is<DataAccessKind>) {
  return itemTexts();
}

constexpr auto items(Is<IrvAccessKind>) {
  return itemTexts();
}

constexpr auto items(Is<SectionTypeKind>) {
  return itemTexts("CALIBRATION-VARIABLES", "CALPRM", "CODE", "CONFIG-DATA", "CONST", "EXCLUDE-FROM-FLASH", "VAR");
}

constexpr auto items(Is<DataTransformationErrorHandlingEnum>) {
  return itemTexts("NO-TRANSFORMER-ERROR-HANDLING", "TRANSFORMER-ERROR-HANDLING");
}

}  // namespace Tarvelon::metamodel::arplatform::behavior
// clang-format on
