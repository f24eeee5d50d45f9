#pragma once

#include "tarvelon/arplatform/component/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::component {

constexpr auto shape(Is<AtomicComponentPorts>) {
  return shapeOf(
      noElement(),
      places(
          inside("ReceiverPorts",          "PORTS"),
          inside("SenderPorts",            "PORTS"),
          inside("SenderReceiverPorts",    "PORTS"),
          inside("ModeReceiverPorts",      "PORTS"),
          inside("ModeSenderPorts",        "PORTS"),
          inside("ClientPorts",            "PORTS"),
          inside("ServerPorts",            "PORTS"),
          chosen("Kind"),
          inside("NvReceiverPorts",        "PORTS"),
          inside("NvSenderPorts",          "PORTS"),
          inside("NvSenderReceiverPorts",  "PORTS"),
          inside("ParameterReceiverPorts", "PORTS"),
          inside("TriggerReceiverPorts",   "PORTS")));
}

constexpr auto shape(Is<Component>) {
  return shapeOf(
      noElement(),
      places(
          inside("PortGroup", "PORT-GROUPS")));
}

constexpr auto shape(Is<ParameterComponentPorts>) {
  return shapeOf(
      noElement(),
      places(
          inside   ("ParameterSenderPorts", "PORTS"),
          reference("DataTypeMapping",      "DATA-TYPE-MAPPING-REFS/DATA-TYPE-MAPPING-REF")));
}

constexpr auto items(Is<AtomicComponentKind>) {
  return itemTexts();
}

constexpr auto shape(Is<AtomicComponent>) {
  return shapeOf(
      elements(
          element("APPLICATION-SW-COMPONENT-TYPE")          .when("Kind", AtomicComponentKind::Application),
          element("COMPLEX-DEVICE-DRIVER-SW-COMPONENT-TYPE").when("Kind", AtomicComponentKind::ComplexDeviceDriver),
          element("ECU-ABSTRACTION-SW-COMPONENT-TYPE")      .when("Kind", AtomicComponentKind::EcuAbstraction),
          element("NV-BLOCK-SW-COMPONENT-TYPE")             .when("Kind", AtomicComponentKind::NvBlock),
          element("SENSOR-ACTUATOR-SW-COMPONENT-TYPE")      .when("Kind", AtomicComponentKind::SensorActuator),
          element("SERVICE-PROXY-SW-COMPONENT-TYPE")        .when("Kind", AtomicComponentKind::ServiceProxy),
          element("SERVICE-SW-COMPONENT-TYPE")              .when("Kind", AtomicComponentKind::Service)),
      places(
          inside ("Behavior", "INTERNAL-BEHAVIORS"),
          nowhere("InstanceMapping", "files have an instance reference where it is used, and do not collect them")));
}

constexpr auto shape(Is<ParameterComponent>) {
  return shapeOf(
      elements(element("PARAMETER-SW-COMPONENT-TYPE")),
      places(
          nowhere("InstanceMapping", "files have an instance reference where it is used, and do not collect them")));
}

// In R17-03 the only behavior of the component stands in it directly.
constexpr auto shape(Is<AdaptiveApplication>) {
  return shapeOf(
      elements(element("ADAPTIVE-APPLICATION-SW-COMPONENT-TYPE")),
      places(
          inside ("Behavior",                         "INTERNAL-BEHAVIORS"),
          role   ("Behavior",                         "INTERNAL-BEHAVIOR"),
          inside ("RequiredPorts",                    "PORTS"),
          inside ("ProvidedPorts",                    "PORTS"),
          nowhere("InstanceMapping", "files have an instance reference where it is used, and do not collect them"),
          inside ("PersistencyRequiredPorts",         "PORTS"),
          inside ("PersistencyProvidedPorts",         "PORTS"),
          inside ("PersistencyProvidedRequiredPorts", "PORTS")));
}

}  // namespace Tarvelon::metamodel::arplatform::component
// clang-format on
