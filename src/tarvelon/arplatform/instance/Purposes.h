#pragma once

#include "tarvelon/arplatform/instance/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::instance {

inline constexpr std::string_view kPurpose =
    "References to an element in its context: a port of one prototype, a data element at one port, rather than the "
    "type they share.";

inline constexpr auto kPurposes = purposes(
    of<ParameterDataPortInstanceRef>(
        "A parameter as it is reached through one port."),
    of<ParameterDataCompInstanceRef>(
        "A parameter of the component itself."),
    of<FlowDataCompInstanceRef>(
        "A data element inside the component itself, such as an inter-runnable variable."),
    of<FlowDataPortInstanceRef>(
        "A data element as it is sent or received at one port."),
    of<OperationPortInstanceRef>(
        "An operation as it is called or served at one port."),
    of<InstanceRef>(
        "The base of all references to an element in its context."),
    of<DataCompInstanceRef>(
        "The base of the references to data of the component itself."),
    of<DataInstanceRef>(
        "The base of the references to data."),
    of<DataPortInstanceRef>(
        "The base of the references to data at a port."),
    of<RunnableInstanceRef>(
        "A reference to a runnable."),
    of<ArgumentDataInstanceRef>(
        "A reference to an argument of an operation."),
    of<ModeDeclarationInstanceRef>(
        "A mode at a port: the port, the mode group of its interface, and the mode."),
    of<ComponentInstanceRef>(
        "The references that a component keeps together in its instance mapping."),
    of<EventRef>(
        "A reference to an event of a behavior."),
    of<VariableDataCompInstanceRef>(
        "A variable of the component itself."),
    of<InstanceEventInCompositionInstanceRef>(
        "A timing event in one component prototype, found by the path of prototypes that leads to it."),
    of<CompositionPortInstanceRef>(
        "The base of the references to a port of a component prototype inside a composition. Connectors end at "
        "them."),
    of<CompositionPPortInstanceRef>(
        "A provided port of a component prototype: where an assembly connector begins, or what a provided outer "
        "port is delegated to."),
    of<CompositionRPortInstanceRef>(
        "A required port of a component prototype: where an assembly connector ends, or what a required outer port "
        "is delegated to."),
    of<TriggerInstanceRef>(
        "A trigger as it arrives at one port."));

}  // namespace Tarvelon::metamodel::arplatform::instance
// clang-format on
