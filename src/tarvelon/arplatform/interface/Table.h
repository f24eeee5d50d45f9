#pragma once

#include "tarvelon/arplatform/behavior/Names.h"
#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/interface/Names.h"
#include "tarvelon/arplatform/variant/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::interface {

constexpr auto row(Is<PortInterface>) {
  return classRow(
      bases<common::Packageable>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<ArgumentData>) {
  return classRow(
      bases<common::Data>(),
      constructors(create<>(),
                   create<ArgumentDataDirectionKind, ServerArgumentImplPolicyKind, K7Q::String, K7Q::String>(
                       " aDirection, aPolicy, aDisplayFormat, aName")),
      properties(
          one<ArgumentDataDirectionKind>   ( 1, "Direction"),
          one<ServerArgumentImplPolicyKind>( 2, "policy",    kHidden)));
}

constexpr auto row(Is<ClientServerInterface>) {
  return classRow(
      bases<PortInterface>(),
      constructors(create<>(),
                   create<K7Q::Boolean, K7Q::String>(" aIsService, aName")),
      properties(
          many<Operation>               ( 1, "Operations",    kHolds),
          many<common::ApplicationError>( 2, "PossibleError", kHolds),
          one<K7Q::Boolean>             ( 3, "IsService")));
}

constexpr auto row(Is<DataInterface>) {
  return classRow(
      bases<PortInterface>(),
      noConstructors(),
      properties(
          one<K7Q::Boolean>( 1, "IsService")));
}

constexpr auto row(Is<FlowData>) {
  return classRow(
      bases<common::Data>(),
      constructors(create<>(),
                   create<K7Q::String, K7Q::String>(" aDisplayFormat, aName")),
      properties(
          one<InvalidationPolicyKind>      ( 1, "InvalidationPolicy", kHidden),
          optional<variant::VariationPoint>( 2, "variationPoint",     kHolds, kHidden)));
}

constexpr auto row(Is<ModeSwitchInterface>) {
  return classRow(
      bases<PortInterface>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<ModeDeclarationGroupElement>( 1, "ModeGroup", kHolds),
          one<K7Q::Boolean>                    ( 2, "IsService")));
}

constexpr auto row(Is<NvDataInterface>) {
  return classRow(
      bases<DataInterface>(),
      constructors(create<>(),
                   create<K7Q::Boolean, K7Q::String>(" aIsService, aName")),
      properties(
          many<FlowData>( 1, "DataElements", kHolds)));
}

constexpr auto row(Is<Operation>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<ArgumentData>            ( 1, "Arguments",     kHolds),
          many<common::ApplicationError>( 2, "PossibleError", kRefers),
          optional<K7Q::Boolean>        ( 3, "FireAndForget")));
}

constexpr auto row(Is<ParameterData>) {
  return classRow(
      bases<common::Data>(),
      constructors(create<>(),
                   create<K7Q::String, K7Q::String>(" aDisplayFormat, aName")),
      properties(
          optional<variant::VariationPoint>       ( 1, "variationPoint",      kHolds, kHidden),
          one<behavior::ParameterKind>            ( 2, "Kind"),
          one<foundation::SwCalibrationAccessKind>( 3, "SwCalibrationAccess").unexposed()));
}

constexpr auto row(Is<ParameterInterface>) {
  return classRow(
      bases<DataInterface>(),
      constructors(create<>(),
                   create<K7Q::Boolean, K7Q::String>(" aIsService, aName")),
      properties(
          many<ParameterData>( 1, "DataElements", kHolds)));
}

constexpr auto row(Is<SenderReceiverInterface>) {
  return classRow(
      bases<DataInterface>(),
      constructors(create<>(),
                   create<K7Q::Boolean, K7Q::String>(" aIsService, aName")),
      properties(
          many<FlowData>                   ( 1, "DataElements", kHolds),
          many<ModeDeclarationGroupElement>( 2, "ModeGroup",    kHolds)));
}

constexpr auto row(Is<TriggerInterface>) {
  return classRow(
      bases<PortInterface>(),
      constructors(create<>(),
                   create<K7Q::Boolean, K7Q::String>(" aIsService, aName")),
      properties(
          many<Trigger>    ( 1, "Triggers",  kHolds),
          one<K7Q::Boolean>( 2, "IsService")));
}

constexpr auto row(Is<ModeDeclarationGroupElement>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<common::ModeDeclarationGroup>  ( 1, "ModeGroup",           kRefers),
          one<foundation::SwCalibrationAccessKind>( 2, "SwCalibrationAccess")));
}

constexpr auto row(Is<VariableData>) {
  return classRow(
      bases<common::Data>(),
      constructors(create<>(),
                   create<K7Q::String, K7Q::String>(" aDisplayFormat, aName")),
      properties(
          optional<variant::VariationPoint>( 1, "variationPoint", kHolds, kHidden)));
}

constexpr auto row(Is<Trigger>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          one<CseCodeType> ( 1, "CseCode"),
          one<K7Q::Integer>( 2, "CseCodeFactor")));
}

constexpr auto row(Is<ServiceInterface>) {
  return classRow(
      bases<PortInterface>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<FlowData>                ( 1, "Events",        kHolds),
          many<FieldData>               ( 2, "Fields",        kHolds, kHidden),
          many<Operation>               ( 3, "Methods",       kHolds),
          many<common::ApplicationError>( 4, "PossibleError", kHolds),
          many<common::SymbolProps>     ( 5, "Namespaces",    kHolds)));
}

constexpr auto row(Is<FieldData>) {
  return classRow(
      bases<common::Data>(),
      constructors(create<>(),
                   create<K7Q::Boolean, K7Q::Boolean, K7Q::Boolean, K7Q::String, K7Q::String>(
                       " aHasGetter, aHasNotifier, aHasSetter, aDisplayFormat, aName")),
      properties(
          one<K7Q::Boolean>( 1, "HasGetter"),
          one<K7Q::Boolean>( 2, "HasNotifier"),
          one<K7Q::Boolean>( 3, "HasSetter")));
}

constexpr auto row(Is<PersistencyKeyValueInterface>) {
  return classRow(
      bases<PersistencyInterface>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<PersistencyData>( 1, "DataElements", kHolds)));
}

constexpr auto row(Is<PersistencyData>) {
  return classRow(
      bases<common::Data>(),
      constructors(create<>(),
                   create<K7Q::String, K7Q::String>(" aDisplayFormat, aName")),
      properties(
          one<PersistencyUpdateStrategyEnum>( 1, "UpdateStrategy", kHidden)));
}

constexpr auto row(Is<PersistencyInterface>) {
  return classRow(
      bases<PortInterface>(),
      noConstructors(),
      properties(
          optional<K7Q::Integer>            ( 1, "MinimumSustainedSize"),
          one<PersistencyRedundancyEnum>    ( 2, "Redundancy"),
          one<PersistencyUpdateStrategyEnum>( 3, "UpdateStrategy")));
}

}  // namespace Tarvelon::metamodel::arplatform::interface
// clang-format on
