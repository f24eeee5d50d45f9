#pragma once

#include "tarvelon/arplatform/system/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::system {

constexpr auto shape(Is<SystemMapping>) {
  return shapeOf(
      elements(element("SYSTEM-MAPPING")),
      places(
          inside("SwMapping", "SW-MAPPINGS")));
}

constexpr auto shape(Is<SwcToEcuMapping>) {
  return shapeOf(
      elements(element("SWC-TO-ECU-MAPPING")),
      places(
          reference("EcuInstance", "ECU-INSTANCE-REF"),
          reference("Component",   "COMPONENT-IREFS/COMPONENT-IREF*/TARGET-COMPONENT-REF")));
}

constexpr auto shape(Is<EcuInstance>) {
  return shapeOf(
      elements(element("ECU-INSTANCE")),
      places());
}

constexpr auto shape(Is<System>) {
  return shapeOf(
      elements(element("SYSTEM")),
      places(
          inside("Mapping",                 "MAPPINGS"),
          inside("RootSoftwareComposition", "ROOT-SOFTWARE-COMPOSITIONS")));
}

constexpr auto shape(Is<FibexElement>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<RootSwCompositionPrototype>) {
  return shapeOf(
      elements(element("ROOT-SW-COMPOSITION-PROTOTYPE")),
      places(
          reference("SwComposition", "SOFTWARE-COMPOSITION-TREF")));
}

}  // namespace Tarvelon::metamodel::arplatform::system
// clang-format on
