#pragma once

#include "tarvelon/arplatform/composition/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::composition {

constexpr auto shape(Is<CompositionComponent>) {
  return shapeOf(
      elements(element("COMPOSITION-SW-COMPONENT-TYPE")),
      places(
          inside   ("Connectors",                    "CONNECTORS"),
          inside   ("Components",                    "COMPONENTS"),
          inside   ("InstantiationTimingEventProps", "INSTANTIATION-RTE-EVENT-PROPSS"),
          reference("DataTypeMappingSet",            "DATA-TYPE-MAPPING-REFS/DATA-TYPE-MAPPING-REF"),
          nowhere  ("DataTypeMapping", "the same references as DataTypeMappingSet, which the file has"),
          nowhere  ("Kind",            "a composition is no atomic component and has no kind")));
}

constexpr auto shape(Is<ComponentPrototype>) {
  return shapeOf(
      elements(element("SW-COMPONENT-PROTOTYPE")),
      places(
          reference("Type", "TYPE-TREF")));
}

constexpr auto shape(Is<Connector>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<AssemblyConnector>) {
  return shapeOf(
      elements(element("ASSEMBLY-SW-CONNECTOR")),
      places(
          role("Provider",  "PROVIDER-IREF"),
          role("Requester", "REQUESTER-IREF")));
}

constexpr auto shape(Is<DelegationConnector>) {
  return shapeOf(
      elements(element("DELEGATION-SW-CONNECTOR")),
      places(
          reference("OuterPort", "OUTER-PORT-REF"),
          inside   ("InnerPort", "INNER-PORT-IREF")));
}

constexpr auto shape(Is<PassThroughConnector>) {
  return shapeOf(
      elements(element("PASS-THROUGH-SW-CONNECTOR")),
      places(
          reference("RequiredOuterPort", "REQUIRED-OUTER-PORT-REF"),
          reference("ProvidedOuterPort", "PROVIDED-OUTER-PORT-REF")));
}

constexpr auto shape(Is<InstantiationTimingEventProps>) {
  return shapeOf(
      elements(element("INSTANTIATION-TIMING-EVENT-PROPS")),
      places(
          text("Name",         "SHORT-LABEL"),
          text("Period",       "PERIOD"),
          role("RefinedEvent", "REFINED-EVENT-IREF")));
}

}  // namespace Tarvelon::metamodel::arplatform::composition
// clang-format on
