#pragma once

#include "tarvelon/arplatform/instance/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
//
// Most instance references stand in elements that are named by their role. The references to data are
// elements of their own in two cases: as INSTANTIATION-DATA-DEF-PROPS, in PARAMETER-INSTANCE or
// VARIABLE-INSTANCE, and as a comparison variable.
// clang-format off
namespace Tarvelon::metamodel::arplatform::instance {

constexpr auto shape(Is<ParameterDataPortInstanceRef>) {
  return shapeOf(
      elements(element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("PARAMETER-INSTANCE/AUTOSAR-PARAMETER-IREF/PORT-PROTOTYPE-REF", "P-PORT-PROTOTYPE"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("PARAMETER-INSTANCE/AUTOSAR-PARAMETER-IREF/PORT-PROTOTYPE-REF", "R-PORT-PROTOTYPE"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("PARAMETER-INSTANCE/AUTOSAR-PARAMETER-IREF/PORT-PROTOTYPE-REF", "PR-PORT-PROTOTYPE"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("PARAMETER-INSTANCE/AUTOSAR-PARAMETER-IREF/PORT-PROTOTYPE-REF",
                           "ABSTRACT-PROVIDED-PORT-PROTOTYPE"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("PARAMETER-INSTANCE/AUTOSAR-PARAMETER-IREF/PORT-PROTOTYPE-REF",
                           "ABSTRACT-REQUIRED-PORT-PROTOTYPE"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("PARAMETER-INSTANCE/AUTOSAR-PARAMETER-IREF/PORT-PROTOTYPE-REF", "PORT-PROTOTYPE")),
      places(
          reference("Port",         "PORT-PROTOTYPE-REF"),
          reference("Port",         "PARAMETER-INSTANCE/AUTOSAR-PARAMETER-IREF/PORT-PROTOTYPE-REF"),
          reference("DataElements", "TARGET-DATA-PROTOTYPE-REF"),
          reference("DataElements", "PARAMETER-INSTANCE/AUTOSAR-PARAMETER-IREF/TARGET-DATA-PROTOTYPE-REF"),
          nowhere  ("SwDataDefPropsInstanceRef",
                    "the variables in SW-DATA-DEF-PROPS belong to an axis each, which the property does not tell"),
          inside   ("SwDataDefPropsSwComparisonVariableInstanceRef",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL"
                    "/SW-COMPARISON-VARIABLES/AUTOSAR-VARIABLE*")));
}

constexpr auto shape(Is<ParameterDataCompInstanceRef>) {
  return shapeOf(
      elements(element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("PARAMETER-INSTANCE/LOCAL-PARAMETER-REF", "PARAMETER-DATA-PROTOTYPE"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("PARAMETER-INSTANCE/LOCAL-PARAMETER-REF", "AUTOSAR-DATA-PROTOTYPE"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("PARAMETER-INSTANCE/LOCAL-PARAMETER-REF", "DATA-PROTOTYPE")),
      places(
          reference("DataElements", "PARAMETER-INSTANCE/LOCAL-PARAMETER-REF"),
          reference("DataElements"),
          nowhere  ("SwDataDefPropsInstanceRef",
                    "the variables in SW-DATA-DEF-PROPS belong to an axis each, which the property does not tell"),
          inside   ("SwDataDefPropsSwComparisonVariableInstanceRef",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL"
                    "/SW-COMPARISON-VARIABLES/AUTOSAR-VARIABLE*")));
}

constexpr auto shape(Is<FlowDataCompInstanceRef>) {
  return shapeOf(
      noElement(),
      places(
          reference("DataElements")));
}

constexpr auto shape(Is<FlowDataPortInstanceRef>) {
  return shapeOf(
      elements(element("AUTOSAR-VARIABLE-IREF"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("VARIABLE-INSTANCE/AUTOSAR-VARIABLE-IREF/PORT-PROTOTYPE-REF", "P-PORT-PROTOTYPE"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("VARIABLE-INSTANCE/AUTOSAR-VARIABLE-IREF/PORT-PROTOTYPE-REF", "R-PORT-PROTOTYPE"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("VARIABLE-INSTANCE/AUTOSAR-VARIABLE-IREF/PORT-PROTOTYPE-REF", "PR-PORT-PROTOTYPE"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("VARIABLE-INSTANCE/AUTOSAR-VARIABLE-IREF/PORT-PROTOTYPE-REF",
                           "ABSTRACT-PROVIDED-PORT-PROTOTYPE"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("VARIABLE-INSTANCE/AUTOSAR-VARIABLE-IREF/PORT-PROTOTYPE-REF",
                           "ABSTRACT-REQUIRED-PORT-PROTOTYPE"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("VARIABLE-INSTANCE/AUTOSAR-VARIABLE-IREF/PORT-PROTOTYPE-REF", "PORT-PROTOTYPE")),
      places(
          nowhere  ("ErrorStatus",  "instance references in files refer to data, not to one another"),
          reference("Port",         "CONTEXT-R-PORT-REF"),
          reference("Port",         "PORT-PROTOTYPE-REF"),
          reference("Port",         "VARIABLE-INSTANCE/AUTOSAR-VARIABLE-IREF/PORT-PROTOTYPE-REF"),
          reference("DataElements", "TARGET-DATA-ELEMENT-REF"),
          reference("DataElements", "TARGET-DATA-PROTOTYPE-REF"),
          reference("DataElements", "VARIABLE-INSTANCE/AUTOSAR-VARIABLE-IREF/TARGET-DATA-PROTOTYPE-REF")));
}

constexpr auto shape(Is<OperationPortInstanceRef>) {
  return shapeOf(
      noElement(),
      places(
          nowhere  ("Arguments",  "an OPERATION-IREF has a port and an operation only"),
          reference("Port",       "CONTEXT-R-PORT-REF"),
          reference("Port",       "CONTEXT-P-PORT-REF"),
          reference("Operations", "TARGET-REQUIRED-OPERATION-REF"),
          reference("Operations", "TARGET-PROVIDED-OPERATION-REF"),
          nowhere  ("OpAccess",   "the call that the reference belongs to has the reference in it")));
}

constexpr auto shape(Is<InstanceRef>) {
  return shapeOf(
      noElement(),
      places(
          nowhere("TvURL", "instance references in files have no URL")));
}

constexpr auto shape(Is<DataCompInstanceRef>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<DataInstanceRef>) {
  return shapeOf(
      noElement(),
      places(
          reference("DataElements", "TARGET-DATA-PROTOTYPE-REF")));
}

constexpr auto shape(Is<DataPortInstanceRef>) {
  return shapeOf(
      noElement(),
      places(
          reference("Port", "PORT-PROTOTYPE-REF")));
}

constexpr auto shape(Is<RunnableInstanceRef>) {
  return shapeOf(
      noElement("in files a reference to a runnable belongs to the object that refers and is none of its own"),
      places(
          nowhere("Runnables", "no file has the reference itself")));
}

constexpr auto shape(Is<ArgumentDataInstanceRef>) {
  return shapeOf(
      noElement("an OPERATION-IREF has a port and an operation only"),
      places(
          nowhere("Arguments", "no file has the reference itself")));
}

constexpr auto shape(Is<ModeDeclarationInstanceRef>) {
  return shapeOf(
      noElement(),
      places(
          reference("Mode",         "TARGET-MODE-DECLARATION-REF"),
          reference("Port",         "CONTEXT-PORT-REF"),
          reference("Port",         "CONTEXT-R-PORT-REF"),
          reference("Port",         "CONTEXT-P-PORT-REF"),
          reference("GroupElement", "CONTEXT-MODE-DECLARATION-GROUP-PROTOTYPE-REF"),
          reference("GroupElement", "TARGET-MODE-GROUP-REF")));
}

constexpr auto shape(Is<ComponentInstanceRef>) {
  return shapeOf(
      noElement("in files each instance reference stands where it is used"),
      places(
          nowhere("Instance", "in files each instance reference stands where it is used")));
}

constexpr auto shape(Is<EventRef>) {
  return shapeOf(
      noElement("in files a reference to an event alone belongs to the object that refers and is none of its own"),
      places(
          nowhere("Events", "no file has the reference itself")));
}

constexpr auto shape(Is<VariableDataCompInstanceRef>) {
  return shapeOf(
      elements(element("LOCAL-VARIABLE-REF"),
               element("INSTANTIATION-DATA-DEF-PROPS")
                   .ifDest("VARIABLE-INSTANCE/LOCAL-VARIABLE-REF", "VARIABLE-DATA-PROTOTYPE")),
      places(
          reference("DataElements", "VARIABLE-INSTANCE/LOCAL-VARIABLE-REF"),
          reference("DataElements")));
}

constexpr auto shape(Is<InstanceEventInCompositionInstanceRef>) {
  return shapeOf(
      noElement(),
      places(
          reference("ComponentPrototype", "CONTEXT-COMPONENT-PROTOTYPE-REF"),
          reference("TimingEvent",        "TARGET-EVENT-REF")));
}

constexpr auto shape(Is<CompositionPortInstanceRef>) {
  return shapeOf(
      noElement(),
      places(
          reference("Port",               "TARGET-P-PORT-REF"),
          reference("Port",               "TARGET-R-PORT-REF"),
          reference("ComponentPrototype", "CONTEXT-COMPONENT-REF")));
}

constexpr auto shape(Is<CompositionPPortInstanceRef>) {
  return shapeOf(
      elements(element("P-PORT-IN-COMPOSITION-INSTANCE-REF")),
      places(
          reference("Port", "TARGET-P-PORT-REF")));
}

constexpr auto shape(Is<CompositionRPortInstanceRef>) {
  return shapeOf(
      elements(element("R-PORT-IN-COMPOSITION-INSTANCE-REF")),
      places(
          reference("Port", "TARGET-R-PORT-REF")));
}

constexpr auto shape(Is<TriggerInstanceRef>) {
  return shapeOf(
      noElement(),
      places(
          reference("Trigger", "TARGET-TRIGGER-REF"),
          reference("Port",    "CONTEXT-R-PORT-REF")));
}

}  // namespace Tarvelon::metamodel::arplatform::instance
// clang-format on
