#pragma once

#include "tarvelon/arplatform/composition/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::composition {

inline constexpr std::string_view kPurpose =
    "Compositions: components that are made of other components, and the connectors that connect their ports.";

inline constexpr auto kPurposes = purposes(
    of<CompositionComponent>(
        "A component made of others: it holds prototypes of components and the connectors between them. It has "
        "ports of its own, and can be used in further compositions."),
    of<ComponentPrototype>(
        "One use of a component type inside a composition. The same type can be used several times under different "
        "names."),
    of<Connector>(
        "The base of the connectors of a composition, which connect ports."),
    of<AssemblyConnector>(
        "Connects two ports inside a composition: the provided port of one component prototype to the required port "
        "of another."),
    of<DelegationConnector>(
        "Connects a port of the composition itself, the outer port, to a port of a component prototype inside it."),
    of<PassThroughConnector>(
        "Connects two ports of the composition itself, a required to a provided one, past all that is inside."),
    of<InstantiationTimingEventProps>(
        "Gives a timing event another period in one use of its component."));

}  // namespace Tarvelon::metamodel::arplatform::composition
// clang-format on
