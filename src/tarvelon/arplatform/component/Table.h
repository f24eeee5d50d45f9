#pragma once

#include "tarvelon/arplatform/behavior/Names.h"
#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/component/Names.h"
#include "tarvelon/arplatform/instance/Names.h"
#include "tarvelon/arplatform/port/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::component {

constexpr auto row(Is<AtomicComponentPorts>) {
  return classRow(
      bases<Component>(),
      noConstructors(),
      properties(
          many<port::DataReceiverPort>        ( 1, "ReceiverPorts",          kHolds),
          many<port::DataSenderPort>          ( 2, "SenderPorts",            kHolds),
          many<port::DataSenderReceiverPort>  ( 3, "SenderReceiverPorts",    kHolds),
          many<port::ModeReceiverPort>        ( 4, "ModeReceiverPorts",      kHolds),
          many<port::ModeSenderPort>          ( 5, "ModeSenderPorts",        kHolds),
          many<port::ClientPort>              ( 6, "ClientPorts",            kHolds),
          many<port::ServerPort>              ( 7, "ServerPorts",            kHolds),
          one<AtomicComponentKind>            ( 8, "Kind"),
          many<port::NvDataReceiverPort>      ( 9, "NvReceiverPorts",        kHolds),
          many<port::NvDataSenderPort>        (10, "NvSenderPorts",          kHolds),
          many<port::NvDataSenderReceiverPort>(11, "NvSenderReceiverPorts",  kHolds),
          many<port::ParameterReceiverPort>   (12, "ParameterReceiverPorts", kHolds),
          many<port::TriggerReceiverPort>     (13, "TriggerReceiverPorts",   kHolds)));
}

constexpr auto row(Is<Component>) {
  return classRow(
      bases<common::Packageable>(),
      noConstructors(),
      properties(
          many<port::Port>     ( 1, "Port",      kHolds, kHidden).derived(Derivation::Owned),
          many<port::PortGroup>( 2, "portGroup", kHolds, kHidden)));
}

constexpr auto row(Is<ParameterComponentPorts>) {
  return classRow(
      bases<Component>(),
      noConstructors(),
      properties(
          many<port::ParameterSenderPort> ( 1, "ParameterSenderPorts", kHolds),
          many<common::DataTypeMappingSet>( 2, "DataTypeMapping",      kRefers, kHidden)));
}

constexpr auto row(Is<AtomicComponent>) {
  return classRow(
      bases<AtomicComponentPorts>(),
      constructors(create<>(),
                   create<instance::ComponentInstanceRef, K7Q::String>(" aInstanceMapping, aName")),
      properties(
          optional<behavior::ApplicationComponentBehavior>( 1, "Behavior",        kHolds),
          one<instance::ComponentInstanceRef>             ( 2, "instanceMapping", kHolds, kHidden)));
}

constexpr auto row(Is<ParameterComponent>) {
  return classRow(
      bases<ParameterComponentPorts>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<instance::InstanceRef>( 1, "instanceMapping", kHolds, kHidden)));
}

constexpr auto row(Is<AdaptiveApplication>) {
  return classRow(
      bases<Component>(),
      constructors(create<>(),
                   create<instance::ComponentInstanceRef, K7Q::String>(" aInstanceMapping, aName")),
      properties(
          optional<behavior::ApplicationComponentBehavior>( 1, "Behavior",                         kHolds),
          many<port::ServiceRequiredPort>                 ( 2, "RequiredPorts",                    kHolds),
          many<port::ServiceProvidedPort>                 ( 3, "ProvidedPorts",                    kHolds),
          one<instance::ComponentInstanceRef>( 4, "instanceMapping", kHolds, kHidden),
          many<port::PersistencyRequiredPort>( 5, "PersistencyRequiredPorts", kHolds, kHidden),
          many<port::PersistencyProvidedPort>( 6, "PersistencyProvidedPorts", kHolds, kHidden),
          many<port::PersistencyProvidedRequiredPort>     ( 7, "PersistencyProvidedRequiredPorts", kHolds)));
}

}  // namespace Tarvelon::metamodel::arplatform::component
// clang-format on
