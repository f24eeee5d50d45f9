#pragma once

#include "tarvelon/arplatform/behavior/Names.h"
#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/interface/Names.h"
#include "tarvelon/arplatform/port/Names.h"
#include "tarvelon/arplatform/variant/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::port {

constexpr auto row(Is<ClientPort>) {
  return classRow(
      bases<RequiredPort>(),
      constructors(create<>(),
                   create<interface::ClientServerInterface, K7Q::String>(" aInterface, aName")),
      properties(
          many<ClientPortInfo>                 ( 1, "info",      kHolds,  kHidden),
          one<interface::ClientServerInterface>( 2, "Interface", kRefers).redefines("Type")));
}

constexpr auto row(Is<ClientPortAnnotation>) {
  return classRow(
      bases<ClientServerPortAnnotation>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<ClientPortComSpec>) {
  return classRow(
      bases<PortComSpec>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<ClientPortInfo>) {
  return classRow(
      bases<ClientServerPortInfo, ServiceReceiverPortInfo>(),
      constructors(create<>(),
                   create<interface::Operation>(" aOperations")),
      properties(
          optional<ClientPortComSpec>   ( 1, "comSpec",    kHolds, kHidden),
          optional<ClientPortAnnotation>( 2, "annotation", kHolds, kHidden)));
}

constexpr auto row(Is<ClientServerPortAnnotation>) {
  return classRow(
      bases<PortAnnotation>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<ClientServerPortInfo>) {
  return classRow(
      bases<PortInfo>(),
      noConstructors(),
      properties(
          one<interface::Operation>( 1, "Operations", kRefers)));
}

constexpr auto row(Is<DataFilter>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<DataFilterKind>( 1, "DataFilterKind"),
          optional<K7Q::Integer>  ( 2, "mask",           kHidden),
          optional<K7Q::Integer>  ( 3, "max",            kHidden),
          optional<K7Q::Integer>  ( 4, "min",            kHidden),
          optional<K7Q::Integer>  ( 5, "offset",         kHidden),
          optional<K7Q::Integer>  ( 6, "Period"),
          optional<K7Q::Integer>  ( 7, "x",              kHidden)));
}

constexpr auto row(Is<DataPortInfo>) {
  return classRow(
      bases<PortInfo>(),
      noConstructors(),
      properties(
          one<common::Data>( 1, "DataElements", kRefers)));
}

constexpr auto row(Is<DataReceiverPort>) {
  return classRow(
      bases<RequiredPort>(),
      constructors(create<>(),
                   create<interface::SenderReceiverInterface, K7Q::String>(" aInterface, aName")),
      properties(
          many<DataReceiverPortInfo>             ( 1, "info",      kHolds,  kHidden),
          one<interface::SenderReceiverInterface>( 2, "Interface", kRefers).redefines("Type")));
}

constexpr auto row(Is<DataReceiverPortAnnotation>) {
  return classRow(
      bases<SenderReceiverPortAnnotation>(),
      constructors(create<>()),
      properties(
          optional<K7Q::Double>( 1, "signalAge", kHidden)));
}

constexpr auto row(Is<DataReceiverPortComSpec>) {
  return classRow(
      bases<PortComSpec>(),
      noConstructors(),
      properties(
          optional<HandleOutOfRangeKind>( 1, "HandleOutOfRangeKind", kHidden)));
}

constexpr auto row(Is<DataReceiverPortInfo>) {
  return classRow(
      bases<DataSenderReceiverPortInfo, ServiceReceiverPortInfo>(),
      constructors(create<>(),
                   create<common::Data>(" aDataElements")),
      properties(
          optional<DataReceiverPortComSpec>   ( 1, "comSpec",    kHolds, kHidden),
          optional<DataReceiverPortAnnotation>( 2, "annotation", kHolds, kHidden)));
}

constexpr auto row(Is<DataReceiverQueuedPortComSpec>) {
  return classRow(
      bases<DataReceiverPortComSpec>(),
      constructors(create<>()),
      properties(
          optional<K7Q::Integer>( 1, "QueueLength"),
          one<K7Q::Boolean>     ( 2, "UsesEndToEndProtection")));
}

constexpr auto row(Is<DataReceiverNonqueuedPortComSpec>) {
  return classRow(
      bases<DataReceiverPortComSpec>(),
      constructors(create<>()),
      properties(
          optional<K7Q::Double>                   ( 1, "AliveTimeout"),
          optional<K7Q::Boolean>                  ( 2, "EnableUpdate",           kHidden),
          optional<K7Q::Boolean>                  ( 3, "HandleNeverReceived"),
          optional<HandleTimeoutKind>             ( 4, "HandleTimeoutKind",      kHidden),
          optional<DataFilter>                    ( 5, "filter",                 kHolds, kHidden),
          optional<foundation::ValueSpecification>( 6, "InitialValue",           kHolds),
          optional<foundation::ValueSpecification>( 7, "InitValue",              kHolds, kHidden),
          one<K7Q::Boolean>                       ( 8, "UsesEndToEndProtection", kHidden)));
}

constexpr auto row(Is<DataSenderPort>) {
  return classRow(
      bases<ProvidedPort>(),
      constructors(create<>(),
                   create<interface::SenderReceiverInterface, K7Q::String>(" aInterface, aName")),
      properties(
          many<DataSenderPortInfo>               ( 1, "info",      kHolds,  kHidden),
          one<interface::SenderReceiverInterface>( 2, "Interface", kRefers).redefines("Type")));
}

constexpr auto row(Is<DataSenderPortAnnotation>) {
  return classRow(
      bases<SenderReceiverPortAnnotation>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<DataSenderPortComSpec>) {
  return classRow(
      bases<PortComSpec>(),
      noConstructors(),
      properties(
          optional<HandleOutOfRangeKind>( 1, "HandleOutOfRangeKind",   kHidden),
          optional<K7Q::Double>         ( 2, "transAcqRequestTimeout", kHidden)));
}

constexpr auto row(Is<DataSenderPortInfo>) {
  return classRow(
      bases<DataSenderReceiverPortInfo, ServiceProviderPortInfo>(),
      constructors(create<>(),
                   create<common::Data>(" aDataElements")),
      properties(
          optional<DataSenderPortComSpec>   ( 1, "comSpec",    kHolds, kHidden),
          optional<DataSenderPortAnnotation>( 2, "annotation", kHolds, kHidden)));
}

constexpr auto row(Is<DataSenderQueuedPortComSpec>) {
  return classRow(
      bases<DataSenderPortComSpec>(),
      constructors(create<>()),
      properties(
          one<K7Q::Boolean>( 1, "UsesEndToEndProtection")));
}

constexpr auto row(Is<DataSenderNonqueuedPortComSpec>) {
  return classRow(
      bases<DataSenderPortComSpec>(),
      constructors(create<>()),
      properties(
          optional<foundation::ValueSpecification>( 1, "InitialValue",           kHolds),
          optional<foundation::ValueSpecification>( 2, "InitValue",              kHolds, kHidden),
          one<K7Q::Boolean>                       ( 3, "UsesEndToEndProtection", kHidden)));
}

constexpr auto row(Is<ModeReceiverPort>) {
  return classRow(
      bases<RequiredPort>(),
      constructors(create<>(),
                   create<interface::ModeSwitchInterface, K7Q::String>(" aInterface, aName")),
      properties(
          one<interface::ModeSwitchInterface>( 1, "Interface", kRefers).redefines("Type"),
          many<ModeReceiverPortInfo>         ( 2, "info",      kHolds,  kHidden)));
}

constexpr auto row(Is<ParameterPortAnnotation>) {
  return classRow(
      bases<PortAnnotation>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<ParameterReceiverPort>) {
  return classRow(
      bases<RequiredPort>(),
      constructors(create<>(),
                   create<interface::ParameterInterface, K7Q::String>(" aInterface, aName")),
      properties(
          many<ParameterReceiverPortInfo>   ( 1, "info",      kHolds,  kHidden),
          one<interface::ParameterInterface>( 2, "Interface", kRefers).redefines("Type")));
}

constexpr auto row(Is<ParameterReceiverPortAnnotation>) {
  return classRow(
      bases<ParameterPortAnnotation>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<ParameterReceiverPortComSpec>) {
  return classRow(
      bases<PortComSpec>(),
      constructors(create<>()),
      properties(
          optional<foundation::ValueSpecification>( 1, "InitialValue", kHolds),
          optional<foundation::ValueSpecification>( 2, "InitValue",    kHolds, kHidden)));
}

constexpr auto row(Is<ParameterReceiverPortInfo>) {
  return classRow(
      bases<DataPortInfo>(),
      constructors(create<>(),
                   create<common::Data>(" aDataElements")),
      properties(
          optional<ParameterReceiverPortComSpec>   ( 1, "comSpec",    kHolds, kHidden),
          optional<ParameterReceiverPortAnnotation>( 2, "annotation", kHolds, kHidden)));
}

constexpr auto row(Is<Port>) {
  return classRow(
      bases<common::Identifiable>(),
      noConstructors(),
      properties(
          optional<variant::VariationPoint>( 1, "variationPoint", kHolds,  kHidden),
          optional<behavior::PortAPIOption>( 2, "PortAPIOption",  kRefers, kHidden).withOpposite("Port"),
          one<interface::PortInterface>    ( 3, "Type",           kRefers, kHidden)));
}

constexpr auto row(Is<PortAnnotation>) {
  return classRow(
      bases<foundation::Element>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<PortComSpec>) {
  return classRow(
      bases<foundation::Element>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<PortInfo>) {
  return classRow(
      bases<foundation::Element>(),
      noConstructors(),
      properties(
          optional<PortComSpec>   ( 1, "portCommSpec",   kHolds, kHidden).derived(Derivation::Owned),
          optional<PortAnnotation>( 2, "portAnnotation", kHolds, kHidden).derived(Derivation::Owned)));
}

constexpr auto row(Is<ProvidedPort>) {
  return classRow(
      bases<Port>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<RequiredPort>) {
  return classRow(
      bases<Port>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<SenderReceiverPortAnnotation>) {
  return classRow(
      bases<PortAnnotation>(),
      noConstructors(),
      properties(
          optional<K7Q::Boolean>  ( 1, "computed",       kHidden),
          optional<DataLimitKind> ( 2, "limitKind",      kHidden),
          optional<ProcessingKind>( 3, "processingKind", kHidden)));
}

constexpr auto row(Is<ServerPort>) {
  return classRow(
      bases<ProvidedPort>(),
      constructors(create<>(),
                   create<interface::ClientServerInterface, K7Q::String>(" aInterface, aName")),
      properties(
          many<ServerPortInfo>                 ( 1, "info",      kHolds,  kHidden),
          one<interface::ClientServerInterface>( 2, "Interface", kRefers).redefines("Type")));
}

constexpr auto row(Is<ServerPortAnnotation>) {
  return classRow(
      bases<ClientServerPortAnnotation>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<ServerPortComSpec>) {
  return classRow(
      bases<PortComSpec>(),
      constructors(create<>()),
      properties(
          optional<K7Q::Integer>( 1, "QueueLength")));
}

constexpr auto row(Is<ServerPortInfo>) {
  return classRow(
      bases<ClientServerPortInfo, ServiceProviderPortInfo>(),
      constructors(create<>(),
                   create<interface::Operation>(" aOperations")),
      properties(
          optional<ServerPortComSpec>   ( 1, "comSpec",    kHolds, kHidden),
          optional<ServerPortAnnotation>( 2, "annotation", kHolds, kHidden)));
}

constexpr auto row(Is<PortGroup>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<Port>                       ( 1, "outerPort",      kRefers, kHidden),
          many<PortGroup>                  ( 2, "innerGroup",     kRefers, kHidden),
          optional<variant::VariationPoint>( 3, "variationPoint", kHolds,  kHidden)));
}

constexpr auto row(Is<ModePortInfo>) {
  return classRow(
      bases<PortInfo>(),
      noConstructors(),
      properties(
          one<common::ModeDeclarationGroup>( 1, "ModeGroup", kRefers)));
}

constexpr auto row(Is<ModeReceiverPortInfo>) {
  return classRow(
      bases<ModePortInfo>(),
      constructors(create<>(),
                   create<common::ModeDeclarationGroup>(" aModeGroup")),
      properties(
          optional<ModeReceiverPortAnnotation>( 1, "annotation", kHolds, kHidden)));
}

constexpr auto row(Is<ModeReceiverPortAnnotation>) {
  return classRow(
      bases<PortAnnotation>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<ParameterSenderPort>) {
  return classRow(
      bases<ProvidedPort>(),
      constructors(create<>(),
                   create<interface::ParameterInterface, K7Q::String>(" aInterface, aName")),
      properties(
          one<interface::ParameterInterface>( 1, "Interface", kRefers).redefines("Type"),
          many<ParameterSenderPortInfo>     ( 2, "info",      kHolds,  kHidden)));
}

constexpr auto row(Is<ParameterSenderPortInfo>) {
  return classRow(
      bases<DataPortInfo>(),
      constructors(create<>(),
                   create<common::Data>(" aDataElements")),
      properties(
          optional<ParameterSenderPortComSpec>   ( 1, "comSpec",    kHolds, kHidden),
          optional<ParameterSenderPortAnnotation>( 2, "annotation", kHolds, kHidden)));
}

constexpr auto row(Is<ParameterSenderPortAnnotation>) {
  return classRow(
      bases<ParameterPortAnnotation>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<ParameterSenderPortComSpec>) {
  return classRow(
      bases<PortComSpec>(),
      constructors(create<>()),
      properties(
          optional<foundation::ValueSpecification>( 1, "InitialValue", kHolds),
          optional<foundation::ValueSpecification>( 2, "InitValue",    kHolds, kHidden)));
}

constexpr auto row(Is<ProvidedRequiredPort>) {
  return classRow(
      bases<ProvidedPort, RequiredPort>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<DataSenderReceiverPort>) {
  return classRow(
      bases<ProvidedRequiredPort>(),
      constructors(create<>(),
                   create<interface::SenderReceiverInterface, K7Q::String>(" aInterface, aName")),
      properties(
          many<DataSenderReceiverPortInfo>       ( 1, "info",      kHolds,  kHidden),
          one<interface::SenderReceiverInterface>( 2, "Interface", kRefers).redefines("Type")));
}

constexpr auto row(Is<DataSenderReceiverPortInfo>) {
  return classRow(
      bases<DataPortInfo>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<NvDataSenderPort>) {
  return classRow(
      bases<ProvidedPort>(),
      constructors(create<>(),
                   create<interface::NvDataInterface, K7Q::String>(" aInterface, aName")),
      properties(
          one<interface::NvDataInterface>( 1, "Interface", kRefers).redefines("Type"),
          many<NvDataSenderPortInfo>     ( 2, "Info",      kHolds,  kHidden)));
}

constexpr auto row(Is<NvDataReceiverPort>) {
  return classRow(
      bases<RequiredPort>(),
      constructors(create<>(),
                   create<interface::NvDataInterface, K7Q::String>(" aInterface, aName")),
      properties(
          one<interface::NvDataInterface>( 1, "Interface", kRefers).redefines("Type"),
          many<NvDataReceiverPortInfo>   ( 2, "Info",      kHolds,  kHidden)));
}

constexpr auto row(Is<NvDataPortAnnotation>) {
  return classRow(
      bases<PortAnnotation>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<NvDataReceiverPortAnnotation>) {
  return classRow(
      bases<NvDataPortAnnotation>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<NvDataSenderPortAnnotation>) {
  return classRow(
      bases<NvDataPortAnnotation>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<NvDataReceiverPortComSpec>) {
  return classRow(
      bases<PortComSpec>(),
      constructors(create<>()),
      properties(
          optional<foundation::ValueSpecification>( 1, "InitValue",    kHolds, kHidden),
          optional<foundation::ValueSpecification>( 2, "InitialValue", kHolds)));
}

constexpr auto row(Is<NvDataSenderPortComSpec>) {
  return classRow(
      bases<PortComSpec>(),
      constructors(create<>()),
      properties(
          optional<foundation::ValueSpecification>( 1, "InitValue",       kHolds, kHidden),
          optional<foundation::ValueSpecification>( 2, "InitValueROM",    kHolds, kHidden),
          optional<foundation::ValueSpecification>( 3, "InitialValue",    kHolds),
          optional<foundation::ValueSpecification>( 4, "InitialValueROM", kHolds)));
}

constexpr auto row(Is<NvDataReceiverPortInfo>) {
  return classRow(
      bases<NvDataSenderReceiverPortInfo>(),
      constructors(create<>(),
                   create<common::Data>(" aDataElements")),
      properties(
          optional<NvDataReceiverPortComSpec>   ( 1, "ComSpec",    kHolds, kHidden),
          optional<NvDataReceiverPortAnnotation>( 2, "Annotation", kHolds, kHidden)));
}

constexpr auto row(Is<NvDataSenderPortInfo>) {
  return classRow(
      bases<NvDataSenderReceiverPortInfo>(),
      constructors(create<>(),
                   create<common::Data>(" aDataElements")),
      properties(
          optional<NvDataSenderPortComSpec>   ( 1, "ComSpec",    kHolds, kHidden),
          optional<NvDataSenderPortAnnotation>( 2, "Annotation", kHolds, kHidden)));
}

constexpr auto row(Is<NvDataSenderReceiverPortInfo>) {
  return classRow(
      bases<DataPortInfo>(),
      constructors(create<>(),
                   create<common::Data>(" aDataElements")),
      noProperties());
}

constexpr auto row(Is<NvDataSenderReceiverPort>) {
  return classRow(
      bases<ProvidedRequiredPort>(),
      constructors(create<>(),
                   create<interface::NvDataInterface, K7Q::String>(" aInterface, aName")),
      properties(
          many<NvDataSenderReceiverPortInfo>( 1, "Info",      kHolds,  kHidden),
          one<interface::NvDataInterface>   ( 2, "Interface", kRefers).redefines("Type")));
}

constexpr auto row(Is<ModeSenderPort>) {
  return classRow(
      bases<ProvidedPort>(),
      constructors(create<>(),
                   create<interface::ModeSwitchInterface, K7Q::String>(" aInterface, aName")),
      properties(
          many<ModeSenderPortInfo>           ( 1, "Info",      kHolds,  kHidden),
          one<interface::ModeSwitchInterface>( 2, "Interface", kRefers).redefines("Type")));
}

constexpr auto row(Is<ModeSenderPortInfo>) {
  return classRow(
      bases<ModePortInfo>(),
      constructors(create<>(),
                   create<common::ModeDeclarationGroup>(" aModeGroup")),
      noProperties());
}

constexpr auto row(Is<TriggerReceiverPort>) {
  return classRow(
      bases<RequiredPort>(),
      constructors(create<>(),
                   create<interface::TriggerInterface, K7Q::String>(" aInterface, aName")),
      properties(
          one<interface::TriggerInterface>( 1, "Interface", kRefers).redefines("Type"),
          many<TriggerReceiverPortInfo>   ( 2, "Info",      kHolds,  kHidden)));
}

constexpr auto row(Is<TriggerReceiverPortInfo>) {
  return classRow(
      bases<DataPortInfo>(),
      constructors(create<>(),
                   create<common::Data>(" aDataElements")),
      properties(
          optional<TriggerReceiverPortAnnotation>( 1, "annotation", kHolds, kHidden)));
}

constexpr auto row(Is<TriggerReceiverPortAnnotation>) {
  return classRow(
      bases<PortAnnotation>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<ServiceProvidedPort>) {
  return classRow(
      bases<AdaptiveProvidedPort, ProvidedPort>(),
      constructors(create<>(),
                   create<interface::ServiceInterface, K7Q::String>(" aInterface, aName")),
      properties(
          one<interface::ServiceInterface>( 1, "Interface", kRefers).redefines("Type"),
          many<ServiceProviderPortInfo>   ( 2, "info",      kHolds,  kHidden)));
}

constexpr auto row(Is<ServiceRequiredPort>) {
  return classRow(
      bases<AdaptiveRequiredPort, RequiredPort>(),
      constructors(create<>(),
                   create<interface::ServiceInterface, K7Q::String>(" aInterface, aName")),
      properties(
          one<interface::ServiceInterface>( 1, "Interface", kRefers).redefines("Type"),
          many<ServiceReceiverPortInfo>   ( 2, "info",      kHolds,  kHidden)));
}

constexpr auto row(Is<ServiceReceiverPortInfo>) {
  return classRow(
      bases<PortInfo>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<ServiceProviderPortInfo>) {
  return classRow(
      bases<PortInfo>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<AdaptivePort>) {
  return classRow(
      bases<Port>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<PersistencyRequiredPort>) {
  return classRow(
      bases<AdaptiveRequiredPort>(),
      constructors(create<>(),
                   create<interface::PersistencyKeyValueInterface, K7Q::String>(" aInterface, aName")),
      properties(
          one<interface::PersistencyKeyValueInterface>( 1, "Interface", kRefers).redefines("Type"),
          many<PersistencyReceiverPortInfo>           ( 2, "info",      kHolds,  kHidden)));
}

constexpr auto row(Is<PersistencyProvidedPort>) {
  return classRow(
      bases<AdaptiveProvidedPort>(),
      constructors(create<>(),
                   create<interface::PersistencyKeyValueInterface, K7Q::String>(" aInterface, aName")),
      properties(
          one<interface::PersistencyKeyValueInterface>( 1, "Interface", kRefers).redefines("Type"),
          many<PersistencyProvidedPortInfo>           ( 2, "info",      kHolds,  kHidden)));
}

constexpr auto row(Is<PersistencyReceiverPortInfo>) {
  return classRow(
      bases<PersistencyProvidedRequiredPortInfo>(),
      constructors(create<>(),
                   create<common::Data>(" aDataElements")),
      properties(
          optional<PersistencyReceiverPortComSpec>( 1, "comSpec", kHolds, kHidden)));
}

constexpr auto row(Is<PersistencyProvidedPortInfo>) {
  return classRow(
      bases<PersistencyProvidedRequiredPortInfo>(),
      constructors(create<>(),
                   create<common::Data>(" aDataElements")),
      properties(
          optional<PersistencyProvidedPortComSpec>( 1, "comSpec", kHolds, kHidden)));
}

constexpr auto row(Is<PersistencyProvidedRequiredPortInfo>) {
  return classRow(
      bases<DataPortInfo>(),
      constructors(create<>(),
                   create<common::Data>(" aDataElements")),
      noProperties());
}

constexpr auto row(Is<PersistencyProvidedPortComSpec>) {
  return classRow(
      bases<PortComSpec>(),
      constructors(create<>()),
      properties(
          optional<foundation::ValueSpecification>( 1, "InitValue",    kHolds, kHidden),
          optional<foundation::ValueSpecification>( 2, "InitialValue", kHolds)));
}

constexpr auto row(Is<PersistencyReceiverPortComSpec>) {
  return classRow(
      bases<PortComSpec>(),
      constructors(create<>()),
      properties(
          optional<foundation::ValueSpecification>( 1, "InitValue",    kHolds, kHidden),
          optional<foundation::ValueSpecification>( 2, "InitialValue", kHolds)));
}

constexpr auto row(Is<PersistencyProvidedRequiredPort>) {
  return classRow(
      bases<AdaptiveProvidedPort, AdaptiveRequiredPort>(),
      constructors(create<>(),
                   create<interface::PersistencyKeyValueInterface, K7Q::String>(" aInterface, aName")),
      properties(
          one<interface::PersistencyKeyValueInterface>( 1, "Interface", kRefers).redefines("Type"),
          many<PersistencyProvidedRequiredPortInfo>   ( 2, "info",      kHolds,  kHidden)));
}

constexpr auto row(Is<AdaptiveRequiredPort>) {
  return classRow(
      bases<AdaptivePort>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<AdaptiveProvidedPort>) {
  return classRow(
      bases<AdaptivePort>(),
      noConstructors(),
      noProperties());
}

}  // namespace Tarvelon::metamodel::arplatform::port
// clang-format on
