#pragma once

#include "tarvelon/arplatform/component/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::component {

inline constexpr std::string_view kPurpose =
    "Component types: what a component offers and needs at its ports, and the behavior behind them.";

inline constexpr auto kPurposes = purposes(
    of<AtomicComponentPorts>(
        "The base of the components of the classic platform: their ports, one sequence for each kind, and the kind "
        "of the component."),
    of<Component>(
        "The base of all component types. Through Port it shows the ports that the typed sequences of its "
        "subclasses hold."),
    of<ParameterComponentPorts>(
        "The base of the components that provide parameters, with the ports through which they do."),
    of<AtomicComponentKind>(
        "What an atomic component is for: an application, a sensor or actuator, a driver, an abstraction of the "
        "ECU, non-volatile data, or a service."),
    of<AtomicComponent>(
        "A component that cannot be split any further. Its behavior tells what it does; it runs as a whole on one "
        "ECU."),
    of<ParameterComponent>(
        "A component that only provides parameters, and has no behavior."),
    of<AdaptiveApplication>(
        "A component of the adaptive platform. It provides and requires services and persistent data through its "
        "ports."));

}  // namespace Tarvelon::metamodel::arplatform::component
// clang-format on
