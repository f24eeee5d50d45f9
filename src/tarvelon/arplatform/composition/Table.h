#pragma once

#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/component/Names.h"
#include "tarvelon/arplatform/composition/Names.h"
#include "tarvelon/arplatform/instance/Names.h"
#include "tarvelon/arplatform/port/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::composition {

constexpr auto row(Is<CompositionComponent>) {
  return classRow(
      bases<component::AtomicComponentPorts, component::ParameterComponentPorts>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<Connector>                    ( 1, "Connectors",                    kHolds,  kHidden),
          many<ComponentPrototype>           ( 2, "Components",                    kHolds),
          many<InstantiationTimingEventProps>( 3, "InstantiationTimingEventProps", kHolds,  kHidden),
          many<common::DataTypeMappingSet>   ( 4, "DataTypeMappingSet",            kRefers, kHidden)));
}

constexpr auto row(Is<ComponentPrototype>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<component::Component, K7Q::String>(" aType, aName")),
      properties(
          one<component::Component>( 1, "Type", kRefers)));
}

constexpr auto row(Is<Connector>) {
  return classRow(
      bases<common::Identifiable>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<AssemblyConnector>) {
  return classRow(
      bases<Connector>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<instance::CompositionPPortInstanceRef>( 1, "Provider",  kHolds),
          optional<instance::CompositionRPortInstanceRef>( 2, "Requester", kHolds)));
}

constexpr auto row(Is<DelegationConnector>) {
  return classRow(
      bases<Connector>(),
      constructors(create<>(),
                   create<port::Port, instance::CompositionPortInstanceRef, K7Q::String>(
                       " aOuterPort, aInnerPort, aName")),
      properties(
          one<port::Port>                          ( 1, "OuterPort", kRefers),
          one<instance::CompositionPortInstanceRef>( 2, "InnerPort", kHolds)));
}

constexpr auto row(Is<PassThroughConnector>) {
  return classRow(
      bases<Connector>(),
      constructors(create<>(),
                   create<port::RequiredPort, port::ProvidedPort, K7Q::String>(
                       " aRequiredOuterPort, aProvidedOuterPort, aName")),
      properties(
          one<port::RequiredPort>( 1, "RequiredOuterPort", kRefers),
          one<port::ProvidedPort>( 2, "ProvidedOuterPort", kRefers)));
}

constexpr auto row(Is<InstantiationTimingEventProps>) {
  return classRow(
      bases<common::Identifiable>(),
      noConstructors(),
      properties(
          one<K7Q::Double>                                    ( 1, "Period"),
          one<instance::InstanceEventInCompositionInstanceRef>( 2, "RefinedEvent", kHolds)));
}

}  // namespace Tarvelon::metamodel::arplatform::composition
// clang-format on
