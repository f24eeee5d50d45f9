#pragma once

#include "tarvelon/arplatform/port/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::port {

inline constexpr std::string_view kPurpose =
    "The ports of components, and what is specified of each element at a port: how it is communicated, and what is "
    "annotated.";

inline constexpr auto kPurposes = purposes(
    of<ClientPort>(
        "A required port through which operations of a server are called."),
    of<ClientPortAnnotation>(
        "Notes on an operation at a client port."),
    of<ClientPortComSpec>(
        "How an operation is communicated at a client port."),
    of<ClientPortInfo>(
        "What is specified of one operation at a client port: its communication and its notes."),
    of<ClientServerPortAnnotation>(
        "The base of the notes on operations at client and server ports."),
    of<ClientServerPortInfo>(
        "The base of what is specified of one operation at a client or server port."),
    of<DataFilter>(
        "Decides which received values of a data element are passed on, by comparing them with earlier values or "
        "with operands."),
    of<DataPortInfo>(
        "The base of what is specified of one data element at a port."),
    of<DataReceiverPort>(
        "A required port through which data elements are received."),
    of<DataReceiverPortAnnotation>(
        "Notes on a data element at a receiver port, such as the greatest age that its signal may have."),
    of<DataReceiverPortComSpec>(
        "The base of how a data element is received: queued or not, and what happens to values out of range."),
    of<DataReceiverPortInfo>(
        "What is specified of one data element at a receiver port: its communication and its notes."),
    of<DataReceiverQueuedPortComSpec>(
        "How a data element is received through a queue, which keeps each value until it is read."),
    of<DataReceiverNonqueuedPortComSpec>(
        "How a data element is received when only its last value counts: initial value, timeout, filter."),
    of<DataSenderPort>(
        "A provided port through which data elements are sent."),
    of<DataSenderPortAnnotation>(
        "Notes on a data element at a sender port."),
    of<DataSenderPortComSpec>(
        "The base of how a data element is sent: queued or not, the range check, and how long to wait for the "
        "acknowledgement."),
    of<DataSenderPortInfo>(
        "What is specified of one data element at a sender port: its communication and its notes."),
    of<DataSenderQueuedPortComSpec>(
        "How a data element is sent to receivers that queue its values."),
    of<DataSenderNonqueuedPortComSpec>(
        "How a data element is sent when only its last value counts, with its initial value."),
    of<ModeReceiverPort>(
        "A required port through which a mode user learns which mode is active."),
    of<ParameterPortAnnotation>(
        "The base of the notes on parameters at ports."),
    of<ParameterReceiverPort>(
        "A required port through which parameters of another component are read."),
    of<ParameterReceiverPortAnnotation>(
        "Notes on a parameter at a port that reads it."),
    of<ParameterReceiverPortComSpec>(
        "The initial value of a parameter at a port that reads it."),
    of<ParameterReceiverPortInfo>(
        "What is specified of one parameter at a port that reads it: its initial value and its notes."),
    of<Port>(
        "The base of all ports: the places where a component exchanges data, operations, modes, triggers or "
        "services with others."),
    of<PortAnnotation>(
        "The base of all notes on what passes through a port."),
    of<PortComSpec>(
        "The base of all that tells how something is communicated at a port."),
    of<PortInfo>(
        "The base of what is specified of one element of an interface at a port: its communication and its notes."),
    of<ProvidedPort>(
        "The base of the ports through which a component offers something to others."),
    of<RequiredPort>(
        "The base of the ports through which a component needs something of others."),
    of<SenderReceiverPortAnnotation>(
        "The base of the notes on data elements at sender and receiver ports: whether a value is computed, a limit, "
        "raw or filtered."),
    of<ServerPort>(
        "A provided port through which a component carries out operations for its clients."),
    of<ServerPortAnnotation>(
        "Notes on an operation at a server port."),
    of<ServerPortComSpec>(
        "How an operation is communicated at a server port: how many calls may wait in its queue."),
    of<ServerPortInfo>(
        "What is specified of one operation at a server port: its communication and its notes."),
    of<DataFilterKind>(
        "The rule by which a data filter lets a value pass: always, never, by its relation to operands or earlier "
        "values, or once in a number of times."),
    of<DataLimitKind>(
        "Whether a value at a port is a lower limit, an upper limit, or none."),
    of<HandleOutOfRangeKind>(
        "What happens to a value outside of its range: nothing, it is ignored, saturated, replaced by the default, "
        "or marked as invalid."),
    of<HandleTimeoutKind>(
        "What a receiver does after a timeout: it replaces the value by the initial one, or leaves it."),
    of<ProcessingKind>(
        "Whether a value at a port is raw, filtered, or neither is said."),
    of<PortGroup>(
        "Ports of a component that belong together, and the groups inside it that they depend on, so that their "
        "communication can be switched as a whole."),
    of<ModePortInfo>(
        "The base of what is specified of one mode group at a port."),
    of<ModeReceiverPortInfo>(
        "What is specified of one mode group at the port of a mode user: its notes."),
    of<ModeReceiverPortAnnotation>(
        "Notes on a mode group at the port of a mode user."),
    of<ParameterSenderPort>(
        "A provided port through which a component offers parameters to others."),
    of<ParameterSenderPortInfo>(
        "What is specified of one parameter at the port that provides it: its initial value and its notes."),
    of<ParameterSenderPortAnnotation>(
        "Notes on a parameter at the port that provides it."),
    of<ParameterSenderPortComSpec>(
        "The initial value of a parameter at the port that provides it."),
    of<ProvidedRequiredPort>(
        "The base of the ports that provide and require at once."),
    of<DataSenderReceiverPort>(
        "A port through which the same data elements are both sent and received."),
    of<DataSenderReceiverPortInfo>(
        "What is specified of one data element at a port that sends and receives it. No object of it can be made."),
    of<NvDataSenderPort>(
        "A provided port through which a component writes data to non-volatile memory, or the memory's component "
        "offers it."),
    of<NvDataReceiverPort>(
        "A required port through which a component reads data of non-volatile memory."),
    of<NvDataPortAnnotation>(
        "The base of the notes on non-volatile data at ports."),
    of<NvDataReceiverPortAnnotation>(
        "Notes on non-volatile data at a port that receives it."),
    of<NvDataSenderPortAnnotation>(
        "Notes on non-volatile data at a port that sends it."),
    of<NvDataReceiverPortComSpec>(
        "The initial value of non-volatile data at a port that receives it."),
    of<NvDataSenderPortComSpec>(
        "The initial values of non-volatile data at a port that sends it: in working memory and in ROM."),
    of<NvDataReceiverPortInfo>(
        "What is specified of one element of non-volatile data at a port that receives it."),
    of<NvDataSenderPortInfo>(
        "What is specified of one element of non-volatile data at a port that sends it."),
    of<NvDataSenderReceiverPortInfo>(
        "What is specified of one element of non-volatile data at a port. It is the base of its sending and "
        "receiving kinds."),
    of<NvDataSenderReceiverPort>(
        "A port through which non-volatile data is both sent and received."),
    of<ModeSenderPort>(
        "A provided port through which a mode manager announces the active mode."),
    of<ModeSenderPortInfo>(
        "What is specified of one mode group at the port of a mode manager."),
    of<TriggerReceiverPort>(
        "A required port through which triggers arrive."),
    of<TriggerReceiverPortInfo>(
        "What is specified of one trigger at the port where it arrives: its notes."),
    of<TriggerReceiverPortAnnotation>(
        "Notes on a trigger at the port where it arrives."),
    of<ServiceProvidedPort>(
        "A provided port through which an adaptive application offers a service."),
    of<ServiceRequiredPort>(
        "A required port through which an adaptive application uses a service."),
    of<ServiceReceiverPortInfo>(
        "The base of what is specified of one element at a port that uses a service."),
    of<ServiceProviderPortInfo>(
        "The base of what is specified of one element at a port that offers a service."),
    of<AdaptivePort>(
        "The base of the ports of the adaptive platform."),
    of<PersistencyRequiredPort>(
        "A port through which an adaptive application reads persistent data."),
    of<PersistencyProvidedPort>(
        "A port through which an adaptive application writes persistent data."),
    of<PersistencyReceiverPortInfo>(
        "What is specified of one persistent data element at a port that reads it: its initial value."),
    of<PersistencyProvidedPortInfo>(
        "What is specified of one persistent data element at a port that writes it: its initial value."),
    of<PersistencyProvidedRequiredPortInfo>(
        "What is specified of one persistent data element at a port. It is the base of its reading and writing "
        "kinds."),
    of<PersistencyProvidedPortComSpec>(
        "The initial value of a persistent data element at a port that writes it."),
    of<PersistencyReceiverPortComSpec>(
        "The initial value of a persistent data element at a port that reads it."),
    of<PersistencyProvidedRequiredPort>(
        "A port through which an adaptive application both reads and writes persistent data."),
    of<AdaptiveRequiredPort>(
        "The base of the required ports of the adaptive platform."),
    of<AdaptiveProvidedPort>(
        "The base of the provided ports of the adaptive platform."));

}  // namespace Tarvelon::metamodel::arplatform::port
// clang-format on
