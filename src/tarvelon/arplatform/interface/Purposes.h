#pragma once

#include "tarvelon/arplatform/interface/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::interface {

inline constexpr std::string_view kPurpose =
    "The contracts between ports: which data, operations, modes, triggers, parameters or services pass through a "
    "port.";

inline constexpr auto kPurposes = purposes(
    of<PortInterface>(
        "The base of all interfaces. A port is typed by one, and ports are connected if their interfaces are "
        "compatible."),
    of<ArgumentData>(
        "An argument of an operation, with the direction in which it is passed."),
    of<ClientServerInterface>(
        "Operations that a client calls and a server carries out, with the errors that they may return."),
    of<DataInterface>(
        "The base of the interfaces that are made of data elements."),
    of<FlowData>(
        "A data element: a variable whose value flows from senders to receivers."),
    of<ModeSwitchInterface>(
        "A mode group whose active mode a mode manager announces to the users of the mode."),
    of<NvDataInterface>(
        "Data elements that a component exchanges with non-volatile memory."),
    of<Operation>(
        "An operation of a client-server interface, or a method of a service, with its arguments and the errors "
        "that it may return."),
    of<ParameterData>(
        "A parameter: a constant or a calibration value, which software reads and never writes."),
    of<ParameterInterface>(
        "Parameters that one component provides to others, for instance calibration values."),
    of<SenderReceiverInterface>(
        "Data elements that are sent and received without a reply."),
    of<TriggerInterface>(
        "Triggers by which one component starts runnables of others at once."),
    of<ArgumentDataDirectionKind>(
        "The direction in which an argument is passed: to the server, back to the client, both ways, or as an "
        "error."),
    of<InvalidationPolicyKind>(
        "What a receiver does when the sender marks a data element as invalid: nothing, keep that value, or replace "
        "it."),
    of<ServerArgumentImplPolicyKind>(
        "How an argument is typed in the signature of the function behind an operation: as itself, as its array's "
        "base type, or as void."),
    of<ModeDeclarationGroupElement>(
        "The use of a mode group in an interface or as a function group of a machine: the thing that has an active "
        "mode."),
    of<VariableData>(
        "A variable of a component's own, kept in its static or per-instance memory."),
    of<Trigger>(
        "A trigger of a trigger interface. If it is periodic, its CSE code and factor tell the period."),
    of<CseCodeType>(
        "The unit in which the period of a trigger is counted, by the CSE codes of ASAM: a time, an angle of the "
        "engine, or an event."),
    of<ServiceInterface>(
        "A service of the adaptive platform: the events, fields and methods that it offers, their errors and its "
        "namespaces."),
    of<FieldData>(
        "A field of a service: a value that clients can read, write or be notified of, as far as it has a getter, a "
        "setter and a notifier."),
    of<PersistencyKeyValueInterface>(
        "The data elements that an adaptive application keeps in a key-value storage."),
    of<PersistencyRedundancyEnum>(
        "Whether persistent data is stored redundantly."),
    of<PersistencyUpdateStrategyEnum>(
        "What happens to persistent data when the software is updated: it is overwritten, kept or deleted."),
    of<PersistencyData>(
        "A data element that is stored persistently, with what becomes of it at an update of the software."),
    of<PersistencyInterface>(
        "The base of the interfaces for persistent data. It tells the space needed, the redundancy and what becomes "
        "of the data at an update."));

}  // namespace Tarvelon::metamodel::arplatform::interface
// clang-format on
