#pragma once

#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
//
// A reference to a class of `arplatform`, which this package does not know, has a base of that class as type.
// Values of which a model must keep each digit, and values that may be formulas, are texts.
// clang-format off
namespace Tarvelon::metamodel::types {

constexpr auto row(Is<CompuMethod>) {
  return classRow(
      bases<foundation::PackageableElement>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>( 1, "Category"),
          optional<K7Q::String>( 2, "Unit"),
          optional<K7Q::String>( 3, "DisplayFormat"),
          optional<Unit>       ( 4, "UnitRef",             kRefers),
          optional<Compu>      ( 5, "CompuInternalToPhys", kHolds),
          optional<Compu>      ( 6, "CompuPhysToInternal", kHolds)));
}

constexpr auto row(Is<SwBaseType>) {
  return classRow(
      bases<foundation::ValueType>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::Integer> ( 1, "BaseTypeSize"),
          optional<K7Q::String>  ( 2, "BaseTypeEncoding"),
          optional<K7Q::String>  ( 3, "NativeDeclaration"),
          optional<K7Q::String>  ( 4, "Category"),
          optional<K7Q::Integer> ( 5, "MaxBaseTypeSize"),
          optional<K7Q::Integer> ( 6, "MemAlignment"),
          optional<ByteOrderEnum>( 7, "ByteOrder")));
}

constexpr auto row(Is<ImplementationDataType>) {
  return classRow(
      bases<foundation::ValueType>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>              ( 1, "Category"),
          optional<SwBaseType>               ( 2, "BaseType",       kRefers),
          optional<CompuMethod>              ( 3, "CompuMethod",    kRefers),
          optional<SwDataDefProps>           ( 4, "SwDataDefProps", kHolds),
          optional<K7Q::String>              ( 5, "DynamicArraySizeProfile"),
          optional<K7Q::Boolean>             ( 6, "IsStructWithOptionalElement"),
          many<ImplementationDataTypeElement>( 7, "SubElements",    kHolds),
          optional<SymbolProps>              ( 8, "SymbolProps",    kHolds),
          optional<K7Q::String>              ( 9, "TypeEmitter")));
}

constexpr auto row(Is<ApplicationPrimitiveDataType>) {
  return classRow(
      bases<foundation::ValueType>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>   ( 1, "Category"),
          optional<CompuMethod>   ( 2, "CompuMethod",    kRefers),
          optional<SwDataDefProps>( 3, "SwDataDefProps", kHolds)));
}

constexpr auto row(Is<ImplementationDataTypeElement>) {
  return classRow(
      bases<foundation::NamedElement>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>              ( 1, "Category"),
          optional<ArrayImplPolicyEnum>      ( 2, "ArrayImplPolicy"),
          optional<K7Q::Integer>             ( 3, "ArraySize"),
          optional<ArraySizeHandlingEnum>    ( 4, "ArraySizeHandling"),
          optional<ArraySizeSemanticsEnum>   ( 5, "ArraySizeSemantics"),
          optional<K7Q::Boolean>             ( 6, "IsOptional"),
          many<ImplementationDataTypeElement>( 7, "SubElements",    kHolds),
          optional<SwDataDefProps>           ( 8, "SwDataDefProps", kHolds)));
}

constexpr auto row(Is<SymbolProps>) {
  return classRow(
      bases<foundation::NamedElement>(),
      constructors(create<>(),
                   create<K7Q::String, K7Q::String>(" aSymbol, aName")),
      properties(
          one<K7Q::String>( 1, "Symbol")));
}

constexpr auto row(Is<AutosarDataType>) {
  return classRow(
      bases<foundation::ValueType>(),
      noConstructors(),
      properties(
          optional<K7Q::String>   ( 1, "Category"),
          optional<SwDataDefProps>( 2, "SwDataDefProps", kHolds)));
}

constexpr auto row(Is<ApplicationDataType>) {
  return classRow(
      bases<AutosarDataType>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<ApplicationCompositeDataType>) {
  return classRow(
      bases<ApplicationDataType>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<ApplicationArrayDataType>) {
  return classRow(
      bases<ApplicationCompositeDataType>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>            ( 1, "DynamicArraySizeProfile"),
          optional<ApplicationArrayElement>( 2, "Element", kHolds)));
}

constexpr auto row(Is<ApplicationRecordDataType>) {
  return classRow(
      bases<ApplicationCompositeDataType>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<ApplicationRecordElement>( 1, "Elements", kHolds)));
}

constexpr auto row(Is<ApplicationCompositeElementDataPrototype>) {
  return classRow(
      bases<foundation::NamedElement>(),
      noConstructors(),
      properties(
          optional<K7Q::String>          ( 1, "Category"),
          optional<SwDataDefProps>       ( 2, "SwDataDefProps", kHolds),
          optional<foundation::ValueType>( 3, "Type",           kRefers)));
}

constexpr auto row(Is<ApplicationArrayElement>) {
  return classRow(
      bases<ApplicationCompositeElementDataPrototype>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<ArraySizeHandlingEnum>       ( 1, "ArraySizeHandling"),
          optional<ArraySizeSemanticsEnum>      ( 2, "ArraySizeSemantics"),
          optional<ApplicationPrimitiveDataType>( 3, "IndexDataType",       kRefers),
          optional<K7Q::Integer>                ( 4, "MaxNumberOfElements")));
}

constexpr auto row(Is<ApplicationRecordElement>) {
  return classRow(
      bases<ApplicationCompositeElementDataPrototype>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::Boolean>( 1, "IsOptional")));
}

constexpr auto row(Is<SwDataDefProps>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<foundation::SwCalibrationAccessKind>( 1, "SwCalibrationAccess"),
          optional<SwImplPolicyEnum>                   ( 2, "SwImplPolicy"),
          optional<foundation::PackageableElement>     ( 3, "SwAddrMethod",           kRefers),
          optional<K7Q::String>                        ( 4, "SwAlignment"),
          optional<SwBaseType>                         ( 5, "BaseType",               kRefers),
          optional<CompuMethod>                        ( 6, "CompuMethod",            kRefers),
          optional<DataConstr>                         ( 7, "DataConstr",             kRefers),
          optional<Unit>                               ( 8, "Unit",                   kRefers),
          optional<ImplementationDataType>             ( 9, "ImplementationDataType", kRefers),
          optional<ApplicationPrimitiveDataType>       (10, "ValueAxisDataType",      kRefers),
          optional<SwRecordLayout>                     (11, "SwRecordLayout",         kRefers),
          optional<SwPointerTargetProps>               (12, "SwPointerTargetProps",   kHolds),
          optional<SwTextProps>                        (13, "SwTextProps",            kHolds),
          optional<foundation::ValueSpecification>     (14, "InvalidValue",           kHolds),
          optional<K7Q::String>                        (15, "DisplayFormat"),
          optional<DisplayPresentationEnum>            (16, "DisplayPresentation"),
          optional<K7Q::Double>                        (17, "StepSize"),
          optional<K7Q::Double>                        (18, "SwIntendedResolution"),
          optional<K7Q::String>                        (19, "SwInterpolationMethod"),
          optional<K7Q::Boolean>                       (20, "SwIsVirtual"),
          optional<K7Q::Integer>                       (21, "SwValueBlockSize"),
          optional<K7Q::String>                        (22, "AdditionalNativeTypeQualifier")));
}

constexpr auto row(Is<SwPointerTargetProps>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<K7Q::String>   ( 1, "TargetCategory"),
          optional<SwDataDefProps>( 2, "SwDataDefProps", kHolds)));
}

constexpr auto row(Is<SwTextProps>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<ArraySizeSemanticsEnum>( 1, "ArraySizeSemantics"),
          optional<K7Q::Integer>          ( 2, "SwMaxTextSize"),
          optional<SwBaseType>            ( 3, "BaseType",        kRefers),
          optional<K7Q::Integer>          ( 4, "SwFillCharacter")));
}

constexpr auto row(Is<SwRecordLayout>) {
  return classRow(
      bases<foundation::PackageableElement>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>( 1, "Category")));
}

constexpr auto row(Is<Compu>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          many<CompuScale>    ( 1, "CompuScale",        kHolds),
          optional<CompuConst>( 2, "CompuDefaultValue", kHolds)));
}

constexpr auto row(Is<CompuScale>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<K7Q::String>        ( 1, "ShortLabel"),
          optional<K7Q::String>        ( 2, "Symbol"),
          optional<K7Q::Double>        ( 3, "Mask"),
          optional<Limit>              ( 4, "LowerLimit",          kHolds),
          optional<Limit>              ( 5, "UpperLimit",          kHolds),
          optional<CompuConst>         ( 6, "CompuInverseValue",   kHolds),
          optional<CompuConst>         ( 7, "CompuConst",          kHolds),
          optional<CompuRationalCoeffs>( 8, "CompuRationalCoeffs", kHolds),
          optional<K7Q::String>        ( 9, "A2lDisplayText")));
}

constexpr auto row(Is<CompuConst>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<K7Q::Double>( 1, "V"),
          optional<K7Q::String>( 2, "Vt"),
          optional<K7Q::Double>( 3, "Vf")));
}

constexpr auto row(Is<CompuRationalCoeffs>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          many<K7Q::String>( 1, "CompuNumerator"),
          many<K7Q::String>( 2, "CompuDenominator")));
}

constexpr auto row(Is<Limit>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<K7Q::String>(" aValue")),
      properties(
          optional<K7Q::String>     ( 1, "Value"),
          optional<IntervalTypeEnum>( 2, "IntervalType")));
}

constexpr auto row(Is<DataConstr>) {
  return classRow(
      bases<foundation::PackageableElement>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>( 1, "Category"),
          many<DataConstrRule> ( 2, "DataConstrRule", kHolds)));
}

constexpr auto row(Is<DataConstrRule>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<K7Q::Integer>   ( 1, "ConstrLevel"),
          optional<PhysConstrs>    ( 2, "PhysConstrs",     kHolds),
          optional<InternalConstrs>( 3, "InternalConstrs", kHolds)));
}

constexpr auto row(Is<InternalConstrs>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<Limit>       ( 1, "LowerLimit",  kHolds),
          optional<Limit>       ( 2, "UpperLimit",  kHolds),
          many<ScaleConstr>     ( 3, "ScaleConstr", kHolds),
          optional<K7Q::Double> ( 4, "MaxGradient"),
          optional<K7Q::Double> ( 5, "MaxDiff"),
          optional<MonotonyEnum>( 6, "Monotony")));
}

constexpr auto row(Is<PhysConstrs>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<Limit>       ( 1, "LowerLimit",  kHolds),
          optional<Limit>       ( 2, "UpperLimit",  kHolds),
          many<ScaleConstr>     ( 3, "ScaleConstr", kHolds),
          optional<K7Q::Double> ( 4, "MaxGradient"),
          optional<K7Q::Double> ( 5, "MaxDiff"),
          optional<MonotonyEnum>( 6, "Monotony"),
          optional<Unit>        ( 7, "Unit",        kRefers)));
}

constexpr auto row(Is<ScaleConstr>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<K7Q::String>            ( 1, "ShortLabel"),
          optional<Limit>                  ( 2, "LowerLimit", kHolds),
          optional<Limit>                  ( 3, "UpperLimit", kHolds),
          optional<ScaleConstrValidityEnum>( 4, "Validity")));
}

constexpr auto row(Is<Unit>) {
  return classRow(
      bases<foundation::PackageableElement>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>      ( 1, "Category"),
          optional<K7Q::String>      ( 2, "DisplayName"),
          optional<K7Q::Double>      ( 3, "FactorSiToUnit"),
          optional<K7Q::Double>      ( 4, "OffsetSiToUnit"),
          optional<PhysicalDimension>( 5, "PhysicalDimension", kRefers)));
}

constexpr auto row(Is<UnitGroup>) {
  return classRow(
      bases<foundation::PackageableElement>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>( 1, "Category"),
          many<Unit>           ( 2, "Unit", kRefers)));
}

constexpr auto row(Is<PhysicalDimension>) {
  return classRow(
      bases<foundation::PackageableElement>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>( 1, "Category"),
          optional<K7Q::Double>( 2, "LengthExp"),
          optional<K7Q::Double>( 3, "MassExp"),
          optional<K7Q::Double>( 4, "TimeExp"),
          optional<K7Q::Double>( 5, "CurrentExp"),
          optional<K7Q::Double>( 6, "TemperatureExp"),
          optional<K7Q::Double>( 7, "MolarAmountExp"),
          optional<K7Q::Double>( 8, "LuminousIntensityExp")));
}

constexpr auto row(Is<ConstantSpecification>) {
  return classRow(
      bases<foundation::PackageableElement>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>                   ( 1, "Category"),
          optional<foundation::ValueSpecification>( 2, "ValueSpec", kHolds)));
}

constexpr auto row(Is<ConstantReference>) {
  return classRow(
      bases<foundation::ValueSpecification>(),
      constructors(create<>(),
                   create<ConstantSpecification>(" aConstant")),
      properties(
          optional<ConstantSpecification>( 1, "Constant", kRefers)));
}

constexpr auto row(Is<ApplicationValueSpecification>) {
  return classRow(
      bases<foundation::ValueSpecification>(),
      constructors(create<>()),
      properties(
          optional<K7Q::String>( 1, "Category"),
          many<SwAxisCont>     ( 2, "SwAxisCont",  kHolds),
          optional<SwValueCont>( 3, "SwValueCont", kHolds)));
}

constexpr auto row(Is<SwAxisCont>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<K7Q::String>( 1, "Category"),
          optional<Unit>       ( 2, "Unit",            kRefers),
          optional<K7Q::String>( 3, "UnitDisplayName"),
          optional<K7Q::String>( 4, "SwAxisIndex"),
          many<K7Q::String>    ( 5, "SwArraysize"),
          optional<SwValues>   ( 6, "SwValuesPhys",    kHolds)));
}

constexpr auto row(Is<SwValueCont>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          optional<Unit>       ( 1, "Unit",            kRefers),
          optional<K7Q::String>( 2, "UnitDisplayName"),
          many<K7Q::String>    ( 3, "SwArraysize"),
          optional<SwValues>   ( 4, "SwValuesPhys",    kHolds)));
}

constexpr auto row(Is<SwValues>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          many<K7Q::String>( 1, "V"),
          many<K7Q::String>( 2, "Vt"),
          many<K7Q::String>( 3, "Vf")));
}

constexpr auto row(Is<NotAvailableValueSpecification>) {
  return classRow(
      bases<foundation::ValueSpecification>(),
      constructors(create<>()),
      properties(
          optional<K7Q::Double>( 1, "DefaultPattern")));
}

constexpr auto row(Is<ReferenceValueSpecification>) {
  return classRow(
      bases<foundation::ValueSpecification>(),
      constructors(create<>(),
                   create<foundation::NamedElement>(" aReferenceValue")),
      properties(
          optional<foundation::NamedElement>( 1, "ReferenceValue", kRefers)));
}

}  // namespace Tarvelon::metamodel::types
// clang-format on
