#pragma once

#include "tarvelon/arplatform/behavior/Names.h"
#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/composition/Names.h"
#include "tarvelon/arplatform/instance/Names.h"
#include "tarvelon/arplatform/interface/Names.h"
#include "tarvelon/arplatform/port/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::instance {

constexpr auto row(Is<ParameterDataPortInstanceRef>) {
  return classRow(
      bases<DataPortInstanceRef>(),
      constructors(create<>(),
                   create<interface::ParameterData, port::Port>(
                       ""
                       " aTarvelon_metamodel_arplatform_instance_ParameterDataPortInstanceRef_DataElements,"
                       " aPort")),
      properties(
          one<interface::ParameterData>( 1, "DataElements", kRefers).unexposed(),
          many<DataInstanceRef>( 2, "SwDataDefPropsInstanceRef",                     kHolds, kHidden),
          many<DataInstanceRef>( 3, "SwDataDefPropsSwComparisonVariableInstanceRef", kHolds, kHidden)));
}

constexpr auto row(Is<ParameterDataCompInstanceRef>) {
  return classRow(
      bases<DataCompInstanceRef>(),
      constructors(create<>(),
                   create<interface::ParameterData>(
                       ""
                       " aTarvelon_metamodel_arplatform_instance_ParameterDataCompInstanceRef_DataElements")),
      properties(
          one<interface::ParameterData>( 1, "DataElements", kRefers).unexposed(),
          many<DataInstanceRef>( 2, "SwDataDefPropsInstanceRef",                     kHolds, kHidden),
          many<DataInstanceRef>( 3, "SwDataDefPropsSwComparisonVariableInstanceRef", kHolds, kHidden)));
}

constexpr auto row(Is<FlowDataCompInstanceRef>) {
  return classRow(
      bases<DataCompInstanceRef>(),
      constructors(create<>(),
                   create<interface::FlowData>(
                       " aTarvelon_metamodel_arplatform_instance_FlowDataCompInstanceRef_DataElements")),
      properties(
          one<interface::FlowData>( 1, "DataElements", kRefers).unexposed()));
}

constexpr auto row(Is<FlowDataPortInstanceRef>) {
  return classRow(
      bases<DataPortInstanceRef>(),
      constructors(create<>(),
                   create<interface::FlowData, port::Port>(
                       " aTarvelon_metamodel_arplatform_instance_FlowDataPortInstanceRef_DataElements,"
                       " aPort")),
      properties(
          optional<FlowDataPortInstanceRef>( 1, "ErrorStatus",  kRefers),
          one<interface::FlowData>         ( 2, "DataElements", kRefers).unexposed()));
}

constexpr auto row(Is<OperationPortInstanceRef>) {
  return classRow(
      bases<InstanceRef>(),
      constructors(create<>(),
                   create<port::Port, interface::Operation>(" aPort, aOperations")),
      properties(
          many<ArgumentDataInstanceRef>  ( 1, "Arguments",  kHolds),
          one<port::Port>                ( 2, "Port",       kRefers),
          one<interface::Operation>      ( 3, "Operations", kRefers),
          many<behavior::OperationAccess>( 4, "opAccess",   kRefers, kHidden)));
}

constexpr auto row(Is<InstanceRef>) {
  return classRow(
      bases<foundation::Element>(),
      noConstructors(),
      properties(
          optional<K7Q::String>( 1, "tvURL", kHidden)));
}

constexpr auto row(Is<DataCompInstanceRef>) {
  return classRow(
      bases<DataInstanceRef>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<DataInstanceRef>) {
  return classRow(
      bases<InstanceRef>(),
      noConstructors(),
      properties(
          one<common::Data>( 1, "DataElements", kRefers)));
}

constexpr auto row(Is<DataPortInstanceRef>) {
  return classRow(
      bases<DataInstanceRef>(),
      noConstructors(),
      properties(
          one<port::Port>( 1, "Port", kRefers)));
}

constexpr auto row(Is<RunnableInstanceRef>) {
  return classRow(
      bases<InstanceRef>(),
      constructors(create<>(),
                   create<behavior::Runnable>(" aRunnables")),
      properties(
          one<behavior::Runnable>( 1, "Runnables", kRefers)));
}

constexpr auto row(Is<ArgumentDataInstanceRef>) {
  return classRow(
      bases<InstanceRef>(),
      constructors(create<>(),
                   create<interface::ArgumentData>(" aArguments")),
      properties(
          one<interface::ArgumentData>( 1, "Arguments", kRefers)));
}

constexpr auto row(Is<ModeDeclarationInstanceRef>) {
  return classRow(
      bases<InstanceRef>(),
      constructors(create<>()),
      properties(
          optional<common::ModeDeclaration>               ( 1, "Mode",         kRefers),
          optional<port::Port>                            ( 2, "Port",         kRefers),
          optional<interface::ModeDeclarationGroupElement>( 3, "groupElement", kRefers, kHidden)));
}

constexpr auto row(Is<ComponentInstanceRef>) {
  return classRow(
      bases<InstanceRef>(),
      constructors(create<>()),
      properties(
          many<InstanceRef>( 1, "instance", kHolds, kHidden)));
}

constexpr auto row(Is<EventRef>) {
  return classRow(
      bases<InstanceRef>(),
      constructors(create<>(),
                   create<behavior::Event>(" aEvents")),
      properties(
          one<behavior::Event>( 1, "Events", kRefers)));
}

constexpr auto row(Is<VariableDataCompInstanceRef>) {
  return classRow(
      bases<DataCompInstanceRef>(),
      constructors(create<>(),
                   create<interface::VariableData>(
                       ""
                       " aTarvelon_metamodel_arplatform_instance_VariableDataCompInstanceRef_DataElements")),
      properties(
          one<interface::VariableData>( 1, "DataElements", kRefers).unexposed()));
}

constexpr auto row(Is<InstanceEventInCompositionInstanceRef>) {
  return classRow(
      bases<InstanceRef>(),
      constructors(create<>(),
                   create<behavior::TimingEvent>(" aTimingEvent")),
      properties(
          many<composition::ComponentPrototype>( 1, "ComponentPrototype", kRefers),
          one<behavior::TimingEvent>           ( 2, "TimingEvent",        kRefers)));
}

constexpr auto row(Is<CompositionPortInstanceRef>) {
  return classRow(
      bases<InstanceRef>(),
      noConstructors(),
      properties(
          one<port::Port>                     ( 1, "Port",               kRefers),
          one<composition::ComponentPrototype>( 2, "ComponentPrototype", kRefers)));
}

constexpr auto row(Is<CompositionPPortInstanceRef>) {
  return classRow(
      bases<CompositionPortInstanceRef>(),
      constructors(create<>(),
                   create<port::ProvidedPort, composition::ComponentPrototype>(
                       " aProvidedPort, aComponentPrototype")),
      properties(
          one<port::ProvidedPort>( 1, "ProvidedPort", kRefers).redefines("Port")));
}

constexpr auto row(Is<CompositionRPortInstanceRef>) {
  return classRow(
      bases<CompositionPortInstanceRef>(),
      constructors(create<>(),
                   create<port::RequiredPort, composition::ComponentPrototype>(
                       " aRequiredPort, aComponentPrototype")),
      properties(
          one<port::RequiredPort>( 1, "RequiredPort", kRefers).redefines("Port")));
}

constexpr auto row(Is<TriggerInstanceRef>) {
  return classRow(
      bases<InstanceRef>(),
      constructors(create<>()),
      properties(
          optional<interface::Trigger>( 1, "Trigger", kRefers),
          optional<port::Port>        ( 2, "Port",    kRefers)));
}

}  // namespace Tarvelon::metamodel::arplatform::instance
// clang-format on
