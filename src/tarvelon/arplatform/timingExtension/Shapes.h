#pragma once

#include "tarvelon/arplatform/timingExtension/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::timingExtension {

constexpr auto shape(Is<TimingExtension>) {
  return shapeOf(
      noElement(),
      places(
          inside("TimingRequirement", "TIMING-REQUIREMENTS")));
}

constexpr auto shape(Is<SwcTiming>) {
  return shapeOf(
      elements(element("SWC-TIMING")),
      places(
          reference("Behavior", "BEHAVIOR-REF")));
}

constexpr auto shape(Is<VfbTiming>) {
  return shapeOf(
      elements(element("VFB-TIMING")),
      places(
          reference("Component", "COMPONENT-REF")));
}

constexpr auto shape(Is<TimingConstraint>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ExecutionOrderConstraint>) {
  return shapeOf(
      elements(element("EXECUTION-ORDER-CONSTRAINT")),
      places(
          inside   ("OrderedElement",  "ORDERED-ELEMENTS"),
          reference("BaseComposition", "BASE-COMPOSITION-REF")));
}

constexpr auto shape(Is<EOCExecutionEntityRefAbstract>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<EOCExecutableEntityRef>) {
  return shapeOf(
      elements(element("EOC-EXECUTABLE-ENTITY-REF")),
      places(
          reference("Successor",  "SUCCESSOR-REFS/SUCCESSOR-REF"),
          reference("Executable", "EXECUTABLE-REF"),
          reference("Component",  "COMPONENT-IREF/TARGET-COMPONENT-REF")));
}

}  // namespace Tarvelon::metamodel::arplatform::timingExtension
// clang-format on
