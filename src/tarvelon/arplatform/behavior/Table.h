#pragma once

#include "tarvelon/arplatform/behavior/Names.h"
#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/instance/Names.h"
#include "tarvelon/arplatform/interface/Names.h"
#include "tarvelon/arplatform/port/Names.h"
#include "tarvelon/arplatform/variant/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::behavior {

constexpr auto row(Is<ApplicationComponentBehavior>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<TerminateAndRestartKind, K7Q::String>(" aTerminateAndRestartKind, aName")),
      properties(
          many<Runnable>                    ( 1, "Runnables",                 kHolds),
          many<Event>                       ( 2, "Events",                    kHolds),
          many<ExclusiveArea>               ( 3, "exclusiveArea",             kHolds,  kHidden),
          many<PerInstanceMemory>           ( 4, "PIM",                       kHolds),
          many<IrvData>                     ( 5, "IRV",                       kHolds),
          many<interface::ParameterData>    ( 6, "Parameters",                kHolds),
          one<K7Q::Boolean>                 ( 7, "isMultiInstantiable",       kHidden),
          one<TerminateAndRestartKind>      ( 8, "terminateAndRestartKind",   kHidden),
          optional<variant::VariationPoint> ( 9, "variationPoint",            kHolds,  kHidden),
          many<PortAPIOption>               (10, "PortAPIOptions",            kHolds,  kHidden),
          many<ServiceDependency>           (11, "ServiceDependency",         kHolds),
          many<common::DataTypeMappingSet>  (12, "DataTypeMapping",           kRefers),
          many<variant::VariationPointProxy>(13, "variationPointProxy",       kHolds,  kHidden),
          many<interface::VariableData>     (14, "StaticMemory",              kHolds,  kHidden),
          many<interface::VariableData>     (15, "ArTypedPIM",                kHolds,  kHidden),
          many<instance::DataInstanceRef>   (16, "InstantiationDataDefProps", kHolds,  kHidden),
          many<IncludedDataTypeSet>         (17, "IncludedDataTypeSets",      kHolds)),
      reads(
          read<IrvData>                 ("implicitIrv", "IRV",        IrvKind::Implicit),
          read<IrvData>                 ("explicitIrv", "IRV",        IrvKind::Explicit),
          read<interface::ParameterData>("constParam",  "Parameters", ParameterKind::Const),
          read<interface::ParameterData>("sharedParam", "Parameters", ParameterKind::Shared),
          read<interface::ParameterData>("pimParam",    "Parameters", ParameterKind::Pim)));
}

constexpr auto row(Is<Runnable>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String, K7Q::String>(" aSymbol, aName")),
      properties(
          many<FlowDataAccess>             ( 1, "dataAccess",               kHolds,  kHidden),
          many<IrvAccess>                  ( 2, "irvRead",                  kHolds,  kHidden),
          many<IrvAccess>                  ( 3, "irvWrite",                 kHolds,  kHidden),
          many<OperationBlockingAccess>    ( 4, "operationBlockingCall",    kHolds,  kHidden),
          many<ComponentParameterAccess>   ( 5, "compParamRead",            kHolds,  kHidden),
          many<PortParameterAccess>        ( 6, "portParamRead",            kHolds,  kHidden),
          one<K7Q::String>                 ( 7, "symbol"),
          many<ExclusiveArea>              ( 8, "canEnterExclusiveArea",    kRefers, kHidden),
          one<K7Q::Boolean>                ( 9, "canBeInvokedConcurrently"),
          many<ExclusiveArea>              (10, "runInsideExclusiveArea",   kRefers, kHidden),
          optional<variant::VariationPoint>(11, "variationPoint",           kHolds,  kHidden),
          many<ModeAccess>                 (12, "ModeAccessPoint",          kHolds,  kHidden),
          optional<common::SwAddrMethod>   (13, "SwAddrMethod",             kRefers, kHidden),
          many<Event>                      (14, "Events",                   kRefers, kHidden).withOpposite("StartOnEvent"),
          many<VariableDataAccess>         (15, "VariableDataRead",         kHolds,  kHidden),
          many<VariableDataAccess>         (16, "VariableDataWrite",        kHolds,  kHidden),
          many<OperationNonBlockingAccess> (17, "OperationNonBlockingCall", kHolds,  kHidden),
          many<ModeSwitch>                 (18, "ModeSwitchPoint",          kHolds,  kHidden),
          many<InternalTrigger>            (19, "InternalTriggeringPoint",  kHolds,  kHidden)),
      reads(
          read<FlowDataAccess>("implicitWrite",       "DataAccess", DataAccessKind::ImplicitWrite),
          read<FlowDataAccess>("implicitRead",        "DataAccess", DataAccessKind::ImplicitRead),
          read<FlowDataAccess>("explicitWrite",       "DataAccess", DataAccessKind::ExplicitWrite),
          read<FlowDataAccess>("explicitReadByArg",   "DataAccess", DataAccessKind::ExplicitReadByArg),
          read<FlowDataAccess>("explicitReadByValue", "DataAccess", DataAccessKind::ExplicitReadByValue)));
}

constexpr auto row(Is<Event>) {
  return classRow(
      bases<common::Identifiable>(),
      noConstructors(),
      properties(
          optional<Runnable>                        ( 1, "StartOnEvent",   kRefers).withOpposite("Events"),
          optional<variant::VariationPoint>         ( 2, "variationPoint", kHolds,  kHidden),
          many<instance::ModeDeclarationInstanceRef>( 3, "DisabledMode",   kHolds)));
}

constexpr auto row(Is<ExclusiveArea>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<variant::VariationPoint>( 1, "variationPoint", kHolds, kHidden)));
}

constexpr auto row(Is<PerInstanceMemory>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String, K7Q::String, foundation::ValueSpecification, K7Q::String>(
                       " aTypeStr, aTypeDefinitionStr, aInitialValue, aName")),
      properties(
          one<K7Q::String>                   ( 1, "typeStr",           kHidden),
          one<K7Q::String>                   ( 2, "typeDefinitionStr", kHidden),
          one<foundation::ValueSpecification>( 3, "InitialValue",      kHolds),
          optional<variant::VariationPoint>  ( 4, "variationPoint",    kHolds, kHidden)));
}

constexpr auto row(Is<IrvData>) {
  return classRow(
      bases<interface::FlowData>(),
      constructors(create<>(),
                   create<IrvKind, K7Q::String, K7Q::String>(" aKind, aDisplayFormat, aName")),
      properties(
          optional<variant::VariationPoint>( 1, "VariationPoint", kHolds).unexposed(),
          one<IrvKind>                     ( 2, "Kind",           kHidden)));
}

constexpr auto row(Is<ComponentParameterAccess>) {
  return classRow(
      bases<ParameterAccess>(),
      constructors(create<>(),
                   create<instance::ParameterDataCompInstanceRef, K7Q::String>(" aInstanceRef, aName")),
      properties(
          one<instance::ParameterDataCompInstanceRef>( 1, "instanceRef",    kHolds, kHidden),
          optional<variant::VariationPoint>          ( 2, "variationPoint", kHolds, kHidden)));
}

constexpr auto row(Is<DataAccess>) {
  return classRow(
      bases<common::Identifiable>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<DataReceiveErrorEvent>) {
  return classRow(
      bases<Event>(),
      constructors(create<>(),
                   create<instance::FlowDataPortInstanceRef, K7Q::String>(" aInstanceRef, aName")),
      properties(
          one<instance::FlowDataPortInstanceRef>( 1, "instanceRef", kHolds)));
}

constexpr auto row(Is<DataReceivedEvent>) {
  return classRow(
      bases<Event>(),
      constructors(create<>(),
                   create<instance::FlowDataPortInstanceRef, K7Q::String>(" aInstanceRef, aName")),
      properties(
          one<instance::FlowDataPortInstanceRef>( 1, "instanceRef", kHolds)));
}

constexpr auto row(Is<DataSendCompletedEvent>) {
  return classRow(
      bases<Event>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<FlowDataAccess>( 1, "dataAccess", kRefers, kHidden)));
}

constexpr auto row(Is<DataWriteCompletedEvent>) {
  return classRow(
      bases<Event>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<FlowDataAccess>( 1, "dataAccess", kRefers, kHidden)));
}

constexpr auto row(Is<FlowDataAccess>) {
  return classRow(
      bases<DataAccess>(),
      constructors(create<>(),
                   create<instance::FlowDataPortInstanceRef, DataAccessKind, K7Q::String>(
                       " aInstanceRef, aKind, aName")),
      properties(
          one<instance::FlowDataPortInstanceRef>( 1, "instanceRef",    kHolds, kHidden),
          optional<variant::VariationPoint>     ( 2, "variationPoint", kHolds, kHidden),
          one<DataAccessKind>                   ( 3, "Kind")));
}

constexpr auto row(Is<IrvAccess>) {
  return classRow(
      bases<DataAccess>(),
      constructors(create<>(),
                   create<instance::FlowDataCompInstanceRef, K7Q::String>(" aInstanceRef, aName")),
      properties(
          one<instance::FlowDataCompInstanceRef>( 1, "instanceRef",    kHolds, kHidden),
          optional<variant::VariationPoint>     ( 2, "variationPoint", kHolds, kHidden)));
}

constexpr auto row(Is<ModeSwitchEvent>) {
  return classRow(
      bases<Event>(),
      constructors(create<>(),
                   create<ModeActivationKind, K7Q::String>(" aActivation, aName")),
      properties(
          many<instance::ModeDeclarationInstanceRef>( 1, "instanceRef", kHolds),
          one<ModeActivationKind>                   ( 2, "activation")));
}

constexpr auto row(Is<OperationBlockingAccess>) {
  return classRow(
      bases<OperationAccess>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<variant::VariationPoint>( 1, "variationPoint", kHolds, kHidden)));
}

constexpr auto row(Is<OperationInvokedEvent>) {
  return classRow(
      bases<Event>(),
      constructors(create<>(),
                   create<instance::OperationPortInstanceRef, K7Q::String>(" aInstanceRef, aName")),
      properties(
          one<instance::OperationPortInstanceRef>( 1, "instanceRef", kHolds)));
}

constexpr auto row(Is<ParameterAccess>) {
  return classRow(
      bases<DataAccess>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<PortParameterAccess>) {
  return classRow(
      bases<ParameterAccess>(),
      constructors(create<>(),
                   create<instance::ParameterDataPortInstanceRef, K7Q::String>(" aInstanceRef, aName")),
      properties(
          one<instance::ParameterDataPortInstanceRef>( 1, "instanceRef",    kHolds, kHidden),
          optional<variant::VariationPoint>          ( 2, "variationPoint", kHolds, kHidden)));
}

constexpr auto row(Is<TimingEvent>) {
  return classRow(
      bases<Event>(),
      constructors(create<>(),
                   create<K7Q::Double, K7Q::String>(" aPeriod, aName")),
      properties(
          one<K7Q::Double>( 1, "Period")));
}

constexpr auto row(Is<PortAPIOption>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<variant::VariationPoint>       ( 1, "variationPoint", kHolds,  kHidden),
          many<PortDefinedArgumentValue>          ( 2, "PortArgValue",   kHolds),
          optional<port::Port>                    ( 3, "Port",           kRefers).withOpposite("PortAPIOption"),
          one<DataTransformationErrorHandlingEnum>( 4, "ErrorHandling")));
}

constexpr auto row(Is<ServiceDependency>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<variant::VariationPoint> ( 1, "variationPoint",       kHolds,  kHidden),
          optional<PerInstanceMemory>       ( 2, "PIM",                  kRefers),
          optional<interface::VariableData> ( 3, "UsedDataElement",      kRefers, kHidden),
          optional<interface::ParameterData>( 4, "UsedParameterElement", kRefers, kHidden),
          optional<ServiceNeeds>            ( 5, "ServiceNeeds",         kHolds)));
}

constexpr auto row(Is<ModeAccess>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<instance::ModeDeclarationInstanceRef>(" aInstanceRef")),
      properties(
          one<instance::ModeDeclarationInstanceRef>( 1, "InstanceRef",    kHolds, kHidden),
          optional<variant::VariationPoint>        ( 2, "variationPoint", kHolds, kHidden)));
}

constexpr auto row(Is<InitEvent>) {
  return classRow(
      bases<Event>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      noProperties());
}

constexpr auto row(Is<PortDefinedArgumentValue>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<foundation::ValueSpecification, foundation::ValueType, K7Q::String>(
                       " aValue, aType, aName")),
      properties(
          one<foundation::ValueSpecification>( 1, "Value", kHolds),
          one<foundation::ValueType>         ( 2, "Type",  kRefers)));
}

constexpr auto row(Is<VariableDataAccess>) {
  return classRow(
      bases<DataAccess>(),
      constructors(create<>(),
                   create<instance::VariableDataCompInstanceRef, K7Q::String>(" aInstanceRef, aName")),
      properties(
          many<variant::VariationPoint>             ( 1, "variationPoint", kHolds, kHidden),
          one<instance::VariableDataCompInstanceRef>( 2, "InstanceRef",    kHolds, kHidden)));
}

constexpr auto row(Is<OperationAccess>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::Double>                   ( 1, "Timeout"),
          many<instance::OperationPortInstanceRef>( 2, "instanceRef", kHolds, kHidden)));
}

constexpr auto row(Is<OperationNonBlockingAccess>) {
  return classRow(
      bases<OperationAccess>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<variant::VariationPoint>( 1, "variationPoint", kHolds, kHidden)));
}

constexpr auto row(Is<IncludedDataTypeSet>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<K7Q::String>(" aLiteralPrefix")),
      properties(
          many<foundation::ValueType>( 1, "DataTypes",     kRefers),
          one<K7Q::String>           ( 2, "LiteralPrefix")));
}

constexpr auto row(Is<ModeSwitch>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<instance::ModeDeclarationInstanceRef, K7Q::String>(" aInstanceRef, aName")),
      properties(
          optional<variant::VariationPoint>        ( 1, "variationPoint", kHolds, kHidden),
          one<instance::ModeDeclarationInstanceRef>( 2, "InstanceRef",    kHolds, kHidden)));
}

constexpr auto row(Is<ExternalTriggerOccurredEvent>) {
  return classRow(
      bases<Event>(),
      constructors(create<>(),
                   create<instance::TriggerInstanceRef, K7Q::String>(" aInstanceRef, aName")),
      properties(
          one<instance::TriggerInstanceRef>( 1, "instanceRef", kHolds)));
}

constexpr auto row(Is<InternalTriggerOccurredEvent>) {
  return classRow(
      bases<Event>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<InternalTrigger>( 1, "InternalTriggeringPoint", kRefers)));
}

constexpr auto row(Is<InternalTrigger>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<variant::VariationPoint>( 1, "variationPoint", kHolds, kHidden),
          one<K7Q::Boolean>                ( 2, "IsQueued")));
}

constexpr auto row(Is<Internal>) {
  return classRow(
      bases<InternalTrigger>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<InternalTrigger>( 1, "Trigger", kRefers)));
}

constexpr auto row(Is<ServiceNeeds>) {
  return classRow(
      bases<common::Identifiable>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<NvBlockNeeds>) {
  return classRow(
      bases<ServiceNeeds>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::Boolean>( 1, "RestoreAtStart"),
          optional<K7Q::Boolean>( 2, "StoreAtShutdown")));
}

}  // namespace Tarvelon::metamodel::arplatform::behavior
// clang-format on
