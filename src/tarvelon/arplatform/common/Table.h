#pragma once

#include "tarvelon/arplatform/behavior/Names.h"
#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/documentation/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::common {

constexpr auto row(Is<Referrable>) {
  return classRow(
      bases<foundation::NamedElement>(),
      noConstructors(),
      properties(
          optional<documentation::MultiLanguageLongName>( 1, "longName", kHolds, kHidden)));
}

constexpr auto row(Is<Identifiable>) {
  return classRow(
      bases<Referrable>(),
      noConstructors(),
      properties(
          optional<K7Q::String>                                  ( 1, "category",     kHidden),
          optional<documentation::DocumentationBlock>            ( 2, "introduction", kHolds, kHidden),
          optional<AdminData>                                    ( 3, "adminData",    kHolds, kHidden),
          optional<documentation::MultiLanguageOverviewParagraph>( 4, "desc",         kHolds, kHidden)));
}

constexpr auto row(Is<Data>) {
  return classRow(
      bases<Identifiable>(),
      noConstructors(),
      properties(
          optional<foundation::ValueSpecification>( 1, "DefaultValue",        kHolds, kHidden),
          optional<foundation::ValueType>         ( 2, "Type",                kRefers),
          optional<SwAddrMethod>                  ( 3, "SwAddrMethod",        kRefers),
          one<foundation::SwCalibrationAccessKind>( 4, "SwCalibrationAccess"),
          optional<K7Q::String>                   ( 5, "SwAlignment"),
          optional<foundation::ValueSpecification>( 6, "InitValue",           kHolds, kHidden),
          one<K7Q::String>                        ( 7, "DisplayFormat")));
}

constexpr auto row(Is<ApplicationError>) {
  return classRow(
      bases<Identifiable>(),
      constructors(create<>(),
                   create<K7Q::Integer, K7Q::String>(" aErrorCode, aName")),
      properties(
          one<K7Q::Integer>( 1, "errorCode")));
}

constexpr auto row(Is<Packageable>) {
  return classRow(
      bases<Identifiable, foundation::PackageableElement>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<ModeDeclarationGroup>) {
  return classRow(
      bases<Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<ModeDeclaration>    ( 1, "Mode",              kHolds),
          optional<ModeDeclaration>( 2, "InitialMode",       kRefers),
          optional<K7Q::Integer>   ( 3, "OnTransitionValue")));
}

constexpr auto row(Is<ModeDeclaration>) {
  return classRow(
      bases<Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::Integer>( 1, "Value")));
}

constexpr auto row(Is<Sd>) {
  return classRow(
      bases<SdgContents, foundation::Comment>(),
      constructors(create<>(),
                   create<K7Q::String, K7Q::String>(" aGid, aValue")),
      properties(
          one<K7Q::String>( 1, "gid",   kHidden),
          one<K7Q::String>( 2, "Value", kHidden).redefines("Body")));
}

constexpr auto row(Is<SdgContents>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<SdgCaption>) {
  return classRow(
      bases<Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      noProperties());
}

constexpr auto row(Is<Sdg>) {
  return classRow(
      bases<SdgContents>(),
      constructors(create<>(),
                   create<K7Q::String>(" aGid")),
      properties(
          many<SdgContents>   ( 1, "sdgContents",   kHolds, kHidden),
          one<K7Q::String>    ( 2, "gid",           kHidden),
          optional<SdgCaption>( 3, "sdgCaption",    kHolds, kHidden),
          optional<SdgCaption>( 4, "sdgCaptionRef", kRefers, kHidden)));
}

constexpr auto row(Is<AdminData>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<K7Q::String>                          ( 1, "language",     kHidden),
          many<documentation::DocRevision>               ( 2, "docRevision",  kHolds, kHidden),
          many<Sdg>                                      ( 3, "sdg",          kHolds, kHidden),
          optional<documentation::MultiLanguagePlainText>( 4, "usedLanguage", kHolds, kHidden)));
}

constexpr auto row(Is<AUTOSAR>) {
  return classRow(
      bases<foundation::DomainRoot>(),
      constructors(create<>(),
                   create<K7Q::String, K7Q::String, K7Q::String, K7Q::String, K7Q::String,
                           foundation::Domain, K7Q::String>(
                       " aComponentQualifiedName, aDataTypePackage, aImplementationQualifiedName,"
                       " aInterfacePackage, aInternalBehaviorQualifiedName, aDomain, aName")),
      properties(
          many<foundation::PackageableElement>( 1, "PackagedElement", kHolds).unexposed(),
          optional<AdminData>                        ( 2, "adminData",                     kHolds, kHidden),
          optional<documentation::DocumentationBlock>( 3, "introduction",                  kHolds, kHidden),
          one<ArxmlFilePackagingKind>                ( 4, "ArxmlFilePackaging"),
          one<K7Q::String>                           ( 5, "ComponentQualifiedName",        kHidden),
          one<K7Q::String>                           ( 6, "DataTypePackage"),
          one<K7Q::String>                           ( 7, "ImplementationQualifiedName",   kHidden),
          one<K7Q::String>                           ( 8, "InterfacePackage"),
          one<K7Q::String>                           ( 9, "InternalBehaviorQualifiedName", kHidden)));
}

constexpr auto row(Is<Package>) {
  return classRow(
      bases<Identifiable, foundation::Package>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<ReferenceBase>( 1, "ReferenceBase", kHolds, kHidden)));
}

constexpr auto row(Is<ReferenceBase>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<K7Q::Boolean, K7Q::String, Package>(" aIsDefault, aShortLabel, aPackage")),
      properties(
          one<K7Q::Boolean>     ( 1, "IsDefault",         kHidden),
          one<K7Q::String>      ( 2, "ShortLabel",        kHidden),
          one<Package>          ( 3, "Package",           kRefers, kHidden),
          optional<K7Q::Boolean>( 4, "BaseIsThisPackage", kHidden)));
}

constexpr auto row(Is<Sdx>) {
  return classRow(
      bases<SdgContents>(),
      constructors(create<>(),
                   create<Referrable>(" aSdx")),
      properties(
          one<Referrable>( 1, "sdx", kRefers, kHidden)));
}

constexpr auto row(Is<DataTypeMappingSet>) {
  return classRow(
      bases<Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<DataTypeMap>       ( 1, "dataTypeMap",        kHolds, kHidden).hides("OwnedElement"),
          many<ModeRequestTypeMap>( 2, "ModeRequestTypeMap", kHolds, kHidden)));
}

constexpr auto row(Is<DataTypeMap>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<foundation::ValueType>( 1, "ApplicationType",    kRefers),
          optional<foundation::ValueType>( 2, "ImplementationType", kRefers)));
}

constexpr auto row(Is<ModeRequestTypeMap>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<ModeDeclarationGroup> ( 1, "ModeGroupType",      kRefers),
          optional<foundation::ValueType>( 2, "ImplementationType", kRefers)));
}

constexpr auto row(Is<SwAddrMethod>) {
  return classRow(
      bases<Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<behavior::SectionTypeKind>( 1, "SectionType"),
          optional<K7Q::String>              ( 2, "MemoryAllocationKeywordPolicy", kHidden)));
}

constexpr auto row(Is<SymbolProps>) {
  return classRow(
      bases<Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String, K7Q::String>(" aSymbol, aName")),
      properties(
          one<K7Q::String>( 1, "Symbol")));
}

}  // namespace Tarvelon::metamodel::arplatform::common
// clang-format on
