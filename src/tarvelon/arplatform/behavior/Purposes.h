#pragma once

#include "tarvelon/arplatform/behavior/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::behavior {

inline constexpr std::string_view kPurpose =
    "What goes on inside a component: its runnables, the events that start them, and the data, operations and modes "
    "that they reach.";

inline constexpr auto kPurposes = purposes(
    of<ApplicationComponentBehavior>(
        "The inside of a component: its runnables, the events that start them, and the memory that they share."),
    of<Runnable>(
        "A piece of a component's behavior that the run-time environment starts on events. The code behind it is "
        "the function named by its symbol."),
    of<Event>(
        "The base of all events on which the run-time environment starts a runnable. While a mode in DisabledMode "
        "is active, the event starts nothing."),
    of<ExclusiveArea>(
        "A section that only one runnable at a time can be in. Runnables enter it on their own, or run inside it "
        "altogether."),
    of<PerInstanceMemory>(
        "Memory that each instance of a component has for itself, with a type written in C."),
    of<IrvData>(
        "An inter-runnable variable: data by which the runnables of one component pass values to each other."),
    of<ComponentParameterAccess>(
        "The access of a runnable to a parameter of its own component."),
    of<DataAccess>(
        "The base of the accesses of runnables to data: to data elements, inter-runnable variables, parameters and "
        "variables."),
    of<DataReceiveErrorEvent>(
        "Starts a runnable when the reception of a data element has failed, for instance by a timeout."),
    of<DataReceivedEvent>(
        "Starts a runnable when a data element has been received at a port."),
    of<DataSendCompletedEvent>(
        "Starts a runnable when data that was sent explicitly has been transmitted, or when that has failed."),
    of<DataWriteCompletedEvent>(
        "Starts a runnable when data that was written implicitly has been transmitted, or when that has failed."),
    of<FlowDataAccess>(
        "The access of a runnable to a data element at a port. Its kind tells whether it reads or writes, and "
        "whether implicitly or explicitly."),
    of<IrvAccess>(
        "The access of a runnable to an inter-runnable variable."),
    of<ModeSwitchEvent>(
        "Starts a runnable when a mode is entered or left, or at the transition between two modes."),
    of<OperationBlockingAccess>(
        "A call of an operation that waits for the result: a synchronous server call point."),
    of<OperationInvokedEvent>(
        "Starts the runnable that carries out an operation when a client calls it at a server port."),
    of<ParameterAccess>(
        "The base of the accesses of runnables to parameters."),
    of<PortParameterAccess>(
        "The access of a runnable to a parameter that another component provides, through a port."),
    of<TimingEvent>(
        "Starts a runnable periodically. The period is in seconds."),
    of<TerminateAndRestartKind>(
        "Whether the component can be terminated, and whether it can be restarted thereafter."),
    of<PortAPIOption>(
        "Options for the functions that the run-time environment generates for one port: arguments with fixed "
        "values and the handling of errors."),
    of<ModeActivationKind>(
        "Which part of a mode switch an event stands for: the entry of a mode, its exit, or the transition between "
        "two modes."),
    of<ServiceDependency>(
        "What a component needs of a basic service of its ECU, and the memory or data that takes part in it."),
    of<IrvKind>(
        "Whether an inter-runnable variable is accessed implicitly, as a copy for each run, or explicitly, by "
        "calls."),
    of<ParameterKind>(
        "What a parameter is: a constant, shared by all instances of a component, separate in each instance, or "
        "another."),
    of<DataAccessKind>(
        "How a runnable accesses a data element: writing or reading, implicitly around its run or explicitly by a "
        "call, which gives the value by argument or as result."),
    of<IrvAccessKind>(
        "Whether an inter-runnable variable is read or written."),
    of<ModeAccess>(
        "Tells that a runnable asks which mode is active, at the port of a mode user or a mode manager."),
    of<InitEvent>(
        "Starts a runnable once, when the component is initialized."),
    of<PortDefinedArgumentValue>(
        "An argument with a fixed value that the run-time environment passes to a server for one of its ports, such "
        "as the number of a memory block."),
    of<VariableDataAccess>(
        "The access of a runnable to a variable of its own component."),
    of<OperationAccess>(
        "The base of the calls of operations by runnables, with the longest time to wait for the server. It can be "
        "made as such, too."),
    of<OperationNonBlockingAccess>(
        "A call of an operation that does not wait for the result: an asynchronous server call point."),
    of<IncludedDataTypeSet>(
        "Data types that the code of a component uses beyond those of its ports, with a prefix for the literals of "
        "their enumerations."),
    of<ModeSwitch>(
        "Tells that a runnable switches the mode of a group, at the port of a mode manager: a mode switch point."),
    of<ExternalTriggerOccurredEvent>(
        "Starts a runnable when a trigger arrives at a port."),
    of<SectionTypeKind>(
        "What a memory section is for: code, constants, variables, calibration or configuration data."),
    of<InternalTriggerOccurredEvent>(
        "Starts a runnable when another runnable of the component fires a trigger inside the component."),
    of<InternalTrigger>(
        "A trigger inside a component: a runnable that holds it can start others by firing it. It may be queued."),
    of<Internal>(
        "An internal trigger that refers to another internal trigger."),
    of<DataTransformationErrorHandlingEnum>(
        "Whether a component handles errors of data transformation at a port itself."),
    of<ServiceNeeds>(
        "The base of what a component can need of a basic service."),
    of<NvBlockNeeds>(
        "What a component needs of a block of non-volatile memory: whether it is restored at start-up and stored at "
        "shutdown."));

}  // namespace Tarvelon::metamodel::arplatform::behavior
// clang-format on
