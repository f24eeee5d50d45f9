#pragma once

#include "tarvelon/arplatform/interface/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::interface {

constexpr auto shape(Is<PortInterface>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ArgumentData>) {
  return shapeOf(
      elements(element("ARGUMENT-DATA-PROTOTYPE")),
      places(
          text   ("Direction", "DIRECTION"),
          text   ("Policy",    "SERVER-ARGUMENT-IMPL-POLICY"),
          nowhere("InitValue", "ARGUMENT-DATA-PROTOTYPE has no initial value")));
}

constexpr auto shape(Is<ClientServerInterface>) {
  return shapeOf(
      elements(element("CLIENT-SERVER-INTERFACE")),
      places(
          inside("Operations",    "OPERATIONS"),
          inside("PossibleError", "POSSIBLE-ERRORS"),
          text  ("IsService",     "IS-SERVICE")));
}

constexpr auto shape(Is<DataInterface>) {
  return shapeOf(
      noElement(),
      places(
          text("IsService", "IS-SERVICE")));
}

constexpr auto shape(Is<FlowData>) {
  return shapeOf(
      elements(element("VARIABLE-DATA-PROTOTYPE")),
      places(
          nowhere("InvalidationPolicy", "the interface has it in INVALIDATION-POLICYS, next to the data element"),
          role   ("VariationPoint", "VARIATION-POINT")));
}

constexpr auto shape(Is<ModeSwitchInterface>) {
  return shapeOf(
      elements(element("MODE-SWITCH-INTERFACE")),
      places(
          role("ModeGroup", "MODE-GROUP"),
          text("IsService", "IS-SERVICE")));
}

constexpr auto shape(Is<NvDataInterface>) {
  return shapeOf(
      elements(element("NV-DATA-INTERFACE")),
      places(
          inside("DataElements", "NV-DATAS")));
}

constexpr auto shape(Is<Operation>) {
  return shapeOf(
      elements(element("CLIENT-SERVER-OPERATION")),
      places(
          inside   ("Arguments",     "ARGUMENTS"),
          reference("PossibleError", "POSSIBLE-ERROR-REFS/POSSIBLE-ERROR-REF"),
          text     ("FireAndForget", "FIRE-AND-FORGET")));
}

// The parameters of a behavior stand in a place for each kind, those of an interface in one place for all.
constexpr auto shape(Is<ParameterData>) {
  return shapeOf(
      elements(element("PARAMETER-DATA-PROTOTYPE")),
      places(
          role  ("VariationPoint", "VARIATION-POINT"),
          chosen("Kind")));
}

constexpr auto shape(Is<ParameterInterface>) {
  return shapeOf(
      elements(element("PARAMETER-INTERFACE")),
      places(
          inside("DataElements", "PARAMETERS")));
}

constexpr auto shape(Is<SenderReceiverInterface>) {
  return shapeOf(
      elements(element("SENDER-RECEIVER-INTERFACE")),
      places(
          inside ("DataElements", "DATA-ELEMENTS"),
          nowhere("ModeGroup", "in AUTOSAR 4 mode groups stand only in mode switch interfaces")));
}

constexpr auto shape(Is<TriggerInterface>) {
  return shapeOf(
      elements(element("TRIGGER-INTERFACE")),
      places(
          inside("Triggers",  "TRIGGERS"),
          text  ("IsService", "IS-SERVICE")));
}

constexpr auto items(Is<ArgumentDataDirectionKind>) {
  return itemTexts("IN", "OUT", "INOUT", "");
}

// The texts of HANDLE-INVALID.
constexpr auto items(Is<InvalidationPolicyKind>) {
  return itemTexts("", "DONT-INVALIDATE", "KEEP", "REPLACE");
}

constexpr auto items(Is<ServerArgumentImplPolicyKind>) {
  return itemTexts("USE-ARGUMENT-TYPE", "USE-ARRAY-BASE-TYPE", "USE-VOID");
}

constexpr auto shape(Is<ModeDeclarationGroupElement>) {
  return shapeOf(
      elements(element("MODE-DECLARATION-GROUP-PROTOTYPE")),
      places(
          reference("ModeGroup",           "TYPE-TREF"),
          text     ("SwCalibrationAccess", "SW-CALIBRATION-ACCESS")));
}

constexpr auto shape(Is<VariableData>) {
  return shapeOf(
      elements(element("VARIABLE-DATA-PROTOTYPE")),
      places(
          role("VariationPoint", "VARIATION-POINT")));
}

constexpr auto shape(Is<Trigger>) {
  return shapeOf(
      elements(element("TRIGGER")),
      places(
          text("CseCode",       "TRIGGER-PERIOD/CSE-CODE"),
          text("CseCodeFactor", "TRIGGER-PERIOD/CSE-CODE-FACTOR")));
}

// The file has the number of the code.
constexpr auto items(Is<CseCodeType>) {
  return itemTexts("", "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "20", "21", "22", "23", "24", "25",
                   "26", "27", "28", "100", "101", "102", "997", "998", "999", "1000");
}

constexpr auto shape(Is<ServiceInterface>) {
  return shapeOf(
      elements(element("SERVICE-INTERFACE")),
      places(
          inside("Events",        "EVENTS"),
          inside("Fields",        "FIELDS"),
          inside("Methods",       "METHODS"),
          inside("PossibleError", "POSSIBLE-ERRORS"),
          inside("Namespaces",    "NAMESPACES")));
}

constexpr auto shape(Is<FieldData>) {
  return shapeOf(
      elements(element("FIELD")),
      places(
          text("HasGetter",   "HAS-GETTER"),
          text("HasNotifier", "HAS-NOTIFIER"),
          text("HasSetter",   "HAS-SETTER")));
}

// The element has the second name up to R19-11.
constexpr auto shape(Is<PersistencyKeyValueInterface>) {
  return shapeOf(
      elements(
          element("PERSISTENCY-KEY-VALUE-STORAGE-INTERFACE"),
          element("PERSISTENCY-KEY-VALUE-DATABASE-INTERFACE")),
      places(
          inside("DataElements", "DATA-ELEMENTS")));
}

constexpr auto items(Is<PersistencyRedundancyEnum>) {
  return itemTexts("REDUNDANT", "NONE");
}

constexpr auto items(Is<PersistencyUpdateStrategyEnum>) {
  return itemTexts("OVERWRITE", "KEEP-EXISTING", "DELETE");
}

constexpr auto shape(Is<PersistencyData>) {
  return shapeOf(
      elements(element("PERSISTENCY-DATA-ELEMENT")),
      places(
          text   ("UpdateStrategy", "UPDATE-STRATEGY"),
          nowhere("InitValue", "PERSISTENCY-DATA-ELEMENT has no initial value; the com specs of the ports have it")));
}

constexpr auto shape(Is<PersistencyInterface>) {
  return shapeOf(
      noElement(),
      places(
          text("MinimumSustainedSize", "MINIMUM-SUSTAINED-SIZE"),
          text("Redundancy",           "REDUNDANCY"),
          text("UpdateStrategy",       "UPDATE-STRATEGY")));
}

}  // namespace Tarvelon::metamodel::arplatform::interface
// clang-format on
