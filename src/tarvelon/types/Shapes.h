#pragma once

#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
//
// SW-DATA-DEF-PROPS, its VARIANTS and CONDITIONAL are one object. What a data type says itself stands in the
// same element: BaseType and CompuMethod belong to the type then, and not to its SwDataDefProps.
// clang-format off
namespace Tarvelon::metamodel::types {

constexpr auto shape(Is<CompuMethod>) {
  return shapeOf(
      elements(element("COMPU-METHOD")),
      places(
          text     ("Category",            "CATEGORY"),
          nowhere  ("Unit", "a text of the model; files refer to a unit, which is in UnitRef"),
          text     ("DisplayFormat",       "DISPLAY-FORMAT"),
          reference("UnitRef",             "UNIT-REF"),
          role     ("CompuInternalToPhys", "COMPU-INTERNAL-TO-PHYS"),
          role     ("CompuPhysToInternal", "COMPU-PHYS-TO-INTERNAL")));
}

constexpr auto shape(Is<SwBaseType>) {
  return shapeOf(
      elements(element("SW-BASE-TYPE")),
      places(
          text("BaseTypeSize",      "BASE-TYPE-SIZE"),
          text("BaseTypeEncoding",  "BASE-TYPE-ENCODING"),
          text("NativeDeclaration", "NATIVE-DECLARATION"),
          text("Category",          "CATEGORY"),
          text("MaxBaseTypeSize",   "MAX-BASE-TYPE-SIZE"),
          text("MemAlignment",      "MEM-ALIGNMENT"),
          text("ByteOrder",         "BYTE-ORDER")));
}

constexpr auto shape(Is<ImplementationDataType>) {
  return shapeOf(
      elements(element("IMPLEMENTATION-DATA-TYPE")),
      places(
          text     ("Category",                    "CATEGORY"),
          reference("BaseType",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL/BASE-TYPE-REF"),
          reference("CompuMethod",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL/COMPU-METHOD-REF"),
          role     ("SwDataDefProps",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL"),
          text     ("DynamicArraySizeProfile",     "DYNAMIC-ARRAY-SIZE-PROFILE"),
          text     ("IsStructWithOptionalElement", "IS-STRUCT-WITH-OPTIONAL-ELEMENT"),
          inside   ("SubElements",                 "SUB-ELEMENTS"),
          role     ("SymbolProps",                 "SYMBOL-PROPS"),
          text     ("TypeEmitter",                 "TYPE-EMITTER")));
}

constexpr auto shape(Is<ApplicationPrimitiveDataType>) {
  return shapeOf(
      elements(element("APPLICATION-PRIMITIVE-DATA-TYPE")),
      places(
          text     ("Category",       "CATEGORY"),
          reference("CompuMethod",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL/COMPU-METHOD-REF"),
          role     ("SwDataDefProps",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL")));
}

constexpr auto shape(Is<ImplementationDataTypeElement>) {
  return shapeOf(
      elements(element("IMPLEMENTATION-DATA-TYPE-ELEMENT")),
      places(
          text  ("Category",           "CATEGORY"),
          text  ("ArrayImplPolicy",    "ARRAY-IMPL-POLICY"),
          text  ("ArraySize",          "ARRAY-SIZE"),
          text  ("ArraySizeHandling",  "ARRAY-SIZE-HANDLING"),
          text  ("ArraySizeSemantics", "ARRAY-SIZE-SEMANTICS"),
          text  ("IsOptional",         "IS-OPTIONAL"),
          inside("SubElements",        "SUB-ELEMENTS"),
          role  ("SwDataDefProps",
                 "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL")));
}

constexpr auto shape(Is<SymbolProps>) {
  return shapeOf(
      noElement(),
      places(
          text("Symbol", "SYMBOL")));
}

constexpr auto shape(Is<AutosarDataType>) {
  return shapeOf(
      noElement(),
      places(
          text("Category",       "CATEGORY"),
          role("SwDataDefProps",
               "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL")));
}

constexpr auto shape(Is<ApplicationDataType>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ApplicationCompositeDataType>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ApplicationArrayDataType>) {
  return shapeOf(
      elements(element("APPLICATION-ARRAY-DATA-TYPE")),
      places(
          text("DynamicArraySizeProfile", "DYNAMIC-ARRAY-SIZE-PROFILE"),
          role("Element",                 "ELEMENT")));
}

constexpr auto shape(Is<ApplicationRecordDataType>) {
  return shapeOf(
      elements(element("APPLICATION-RECORD-DATA-TYPE")),
      places(
          inside("Elements", "ELEMENTS")));
}

constexpr auto shape(Is<ApplicationCompositeElementDataPrototype>) {
  return shapeOf(
      noElement(),
      places(
          text     ("Category",       "CATEGORY"),
          role     ("SwDataDefProps",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL"),
          reference("Type",           "TYPE-TREF")));
}

// The element is ELEMENT, after its role; this is the name by which references call it in DEST.
constexpr auto shape(Is<ApplicationArrayElement>) {
  return shapeOf(
      elements(element("APPLICATION-ARRAY-ELEMENT")),
      places(
          text     ("ArraySizeHandling",   "ARRAY-SIZE-HANDLING"),
          text     ("ArraySizeSemantics",  "ARRAY-SIZE-SEMANTICS"),
          reference("IndexDataType",       "INDEX-DATA-TYPE-REF"),
          text     ("MaxNumberOfElements", "MAX-NUMBER-OF-ELEMENTS")));
}

constexpr auto shape(Is<ApplicationRecordElement>) {
  return shapeOf(
      elements(element("APPLICATION-RECORD-ELEMENT")),
      places(
          text("IsOptional", "IS-OPTIONAL")));
}

constexpr auto shape(Is<SwDataDefProps>) {
  return shapeOf(
      noElement(),
      places(
          text     ("SwCalibrationAccess",           "SW-CALIBRATION-ACCESS"),
          text     ("SwImplPolicy",                  "SW-IMPL-POLICY"),
          reference("SwAddrMethod",                  "SW-ADDR-METHOD-REF"),
          text     ("SwAlignment",                   "SW-ALIGNMENT"),
          reference("BaseType",                      "BASE-TYPE-REF"),
          reference("CompuMethod",                   "COMPU-METHOD-REF"),
          reference("DataConstr",                    "DATA-CONSTR-REF"),
          reference("Unit",                          "UNIT-REF"),
          reference("ImplementationDataType",        "IMPLEMENTATION-DATA-TYPE-REF"),
          reference("ValueAxisDataType",             "VALUE-AXIS-DATA-TYPE-REF"),
          reference("SwRecordLayout",                "SW-RECORD-LAYOUT-REF"),
          role     ("SwPointerTargetProps",          "SW-POINTER-TARGET-PROPS"),
          role     ("SwTextProps",                   "SW-TEXT-PROPS"),
          inside   ("InvalidValue",                  "INVALID-VALUE"),
          text     ("DisplayFormat",                 "DISPLAY-FORMAT"),
          text     ("DisplayPresentation",           "DISPLAY-PRESENTATION"),
          text     ("StepSize",                      "STEP-SIZE"),
          text     ("SwIntendedResolution",          "SW-INTENDED-RESOLUTION"),
          text     ("SwInterpolationMethod",         "SW-INTERPOLATION-METHOD"),
          text     ("SwIsVirtual",                   "SW-IS-VIRTUAL"),
          text     ("SwValueBlockSize",              "SW-VALUE-BLOCK-SIZE"),
          text     ("AdditionalNativeTypeQualifier", "ADDITIONAL-NATIVE-TYPE-QUALIFIER")));
}

constexpr auto shape(Is<SwPointerTargetProps>) {
  return shapeOf(
      noElement(),
      places(
          text("TargetCategory", "TARGET-CATEGORY"),
          role("SwDataDefProps",
               "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL")));
}

constexpr auto shape(Is<SwTextProps>) {
  return shapeOf(
      noElement(),
      places(
          text     ("ArraySizeSemantics", "ARRAY-SIZE-SEMANTICS"),
          text     ("SwMaxTextSize",      "SW-MAX-TEXT-SIZE"),
          reference("BaseType",           "BASE-TYPE-REF"),
          text     ("SwFillCharacter",    "SW-FILL-CHARACTER")));
}

constexpr auto shape(Is<SwRecordLayout>) {
  return shapeOf(
      elements(element("SW-RECORD-LAYOUT")),
      places(
          text("Category", "CATEGORY")));
}

constexpr auto shape(Is<Compu>) {
  return shapeOf(
      noElement(),
      places(
          inside("CompuScale",        "COMPU-SCALES"),
          role  ("CompuDefaultValue", "COMPU-DEFAULT-VALUE")));
}

constexpr auto shape(Is<CompuScale>) {
  return shapeOf(
      elements(element("COMPU-SCALE")),
      places(
          text("ShortLabel",          "SHORT-LABEL"),
          text("Symbol",              "SYMBOL"),
          text("Mask",                "MASK"),
          role("LowerLimit",          "LOWER-LIMIT"),
          role("UpperLimit",          "UPPER-LIMIT"),
          role("CompuInverseValue",   "COMPU-INVERSE-VALUE"),
          role("CompuConst",          "COMPU-CONST"),
          role("CompuRationalCoeffs", "COMPU-RATIONAL-COEFFS"),
          text("A2lDisplayText",      "A-2-L-DISPLAY-TEXT")));
}

constexpr auto shape(Is<CompuConst>) {
  return shapeOf(
      noElement(),
      places(
          text("V",  "V"),
          text("Vt", "VT"),
          text("Vf", "VF")));
}

constexpr auto shape(Is<CompuRationalCoeffs>) {
  return shapeOf(
      noElement(),
      places(
          text("CompuNumerator",   "COMPU-NUMERATOR/V"),
          text("CompuDenominator", "COMPU-DENOMINATOR/V")));
}

constexpr auto shape(Is<Limit>) {
  return shapeOf(
      noElement(),
      places(
          body     ("Value"),
          attribute("IntervalType", "INTERVAL-TYPE")));
}

constexpr auto shape(Is<DataConstr>) {
  return shapeOf(
      elements(element("DATA-CONSTR")),
      places(
          text  ("Category",       "CATEGORY"),
          inside("DataConstrRule", "DATA-CONSTR-RULES")));
}

constexpr auto shape(Is<DataConstrRule>) {
  return shapeOf(
      elements(element("DATA-CONSTR-RULE")),
      places(
          text("ConstrLevel",     "CONSTR-LEVEL"),
          role("PhysConstrs",     "PHYS-CONSTRS"),
          role("InternalConstrs", "INTERNAL-CONSTRS")));
}

constexpr auto shape(Is<InternalConstrs>) {
  return shapeOf(
      noElement(),
      places(
          role  ("LowerLimit",  "LOWER-LIMIT"),
          role  ("UpperLimit",  "UPPER-LIMIT"),
          inside("ScaleConstr", "SCALE-CONSTRS"),
          text  ("MaxGradient", "MAX-GRADIENT"),
          text  ("MaxDiff",     "MAX-DIFF"),
          text  ("Monotony",    "MONOTONY")));
}

constexpr auto shape(Is<PhysConstrs>) {
  return shapeOf(
      noElement(),
      places(
          role     ("LowerLimit",  "LOWER-LIMIT"),
          role     ("UpperLimit",  "UPPER-LIMIT"),
          inside   ("ScaleConstr", "SCALE-CONSTRS"),
          text     ("MaxGradient", "MAX-GRADIENT"),
          text     ("MaxDiff",     "MAX-DIFF"),
          text     ("Monotony",    "MONOTONY"),
          reference("Unit",        "UNIT-REF")));
}

constexpr auto shape(Is<ScaleConstr>) {
  return shapeOf(
      elements(element("SCALE-CONSTR")),
      places(
          text     ("ShortLabel", "SHORT-LABEL"),
          role     ("LowerLimit", "LOWER-LIMIT"),
          role     ("UpperLimit", "UPPER-LIMIT"),
          attribute("Validity",   "VALIDITY")));
}

constexpr auto shape(Is<Unit>) {
  return shapeOf(
      elements(element("UNIT")),
      places(
          text     ("Category",          "CATEGORY"),
          text     ("DisplayName",       "DISPLAY-NAME"),
          text     ("FactorSiToUnit",    "FACTOR-SI-TO-UNIT"),
          text     ("OffsetSiToUnit",    "OFFSET-SI-TO-UNIT"),
          reference("PhysicalDimension", "PHYSICAL-DIMENSION-REF")));
}

constexpr auto shape(Is<UnitGroup>) {
  return shapeOf(
      elements(element("UNIT-GROUP")),
      places(
          text     ("Category", "CATEGORY"),
          reference("Unit",     "UNIT-REFS/UNIT-REF")));
}

constexpr auto shape(Is<PhysicalDimension>) {
  return shapeOf(
      elements(element("PHYSICAL-DIMENSION")),
      places(
          text("Category",             "CATEGORY"),
          text("LengthExp",            "LENGTH-EXP"),
          text("MassExp",              "MASS-EXP"),
          text("TimeExp",              "TIME-EXP"),
          text("CurrentExp",           "CURRENT-EXP"),
          text("TemperatureExp",       "TEMPERATURE-EXP"),
          text("MolarAmountExp",       "MOLAR-AMOUNT-EXP"),
          text("LuminousIntensityExp", "LUMINOUS-INTENSITY-EXP")));
}

constexpr auto shape(Is<ConstantSpecification>) {
  return shapeOf(
      elements(element("CONSTANT-SPECIFICATION")),
      places(
          text  ("Category",  "CATEGORY"),
          inside("ValueSpec", "VALUE-SPEC")));
}

constexpr auto shape(Is<ConstantReference>) {
  return shapeOf(
      elements(element("CONSTANT-REFERENCE")),
      places(
          reference("Constant", "CONSTANT-REF")));
}

constexpr auto shape(Is<ApplicationValueSpecification>) {
  return shapeOf(
      elements(element("APPLICATION-VALUE-SPECIFICATION")),
      places(
          text  ("Category",    "CATEGORY"),
          inside("SwAxisCont",  "SW-AXIS-CONTS"),
          role  ("SwValueCont", "SW-VALUE-CONT")));
}

constexpr auto shape(Is<SwAxisCont>) {
  return shapeOf(
      elements(element("SW-AXIS-CONT")),
      places(
          text     ("Category",        "CATEGORY"),
          reference("Unit",            "UNIT-REF"),
          text     ("UnitDisplayName", "UNIT-DISPLAY-NAME"),
          text     ("SwAxisIndex",     "SW-AXIS-INDEX"),
          text     ("SwArraysize",     "SW-ARRAYSIZE/V"),
          role     ("SwValuesPhys",    "SW-VALUES-PHYS")));
}

constexpr auto shape(Is<SwValueCont>) {
  return shapeOf(
      noElement(),
      places(
          reference("Unit",            "UNIT-REF"),
          text     ("UnitDisplayName", "UNIT-DISPLAY-NAME"),
          text     ("SwArraysize",     "SW-ARRAYSIZE/V"),
          role     ("SwValuesPhys",    "SW-VALUES-PHYS")));
}

// Values in groups (VG) have no class; they stay in the file.
constexpr auto shape(Is<SwValues>) {
  return shapeOf(
      noElement(),
      places(
          text("V",  "V"),
          text("Vt", "VT"),
          text("Vf", "VF")));
}

constexpr auto shape(Is<NotAvailableValueSpecification>) {
  return shapeOf(
      elements(element("NOT-AVAILABLE-VALUE-SPECIFICATION")),
      places(
          text("DefaultPattern", "DEFAULT-PATTERN")));
}

constexpr auto shape(Is<ReferenceValueSpecification>) {
  return shapeOf(
      elements(element("REFERENCE-VALUE-SPECIFICATION")),
      places(
          reference("ReferenceValue", "REFERENCE-VALUE-REF")));
}

constexpr auto items(Is<ArrayImplPolicyEnum>) {
  return itemTexts("PAYLOAD-AS-ARRAY", "PAYLOAD-AS-POINTER-TO-ARRAY");
}

constexpr auto items(Is<ArraySizeHandlingEnum>) {
  return itemTexts("ALL-INDICES-DIFFERENT-ARRAY-SIZE", "ALL-INDICES-SAME-ARRAY-SIZE",
                   "INHERITED-FROM-ARRAY-ELEMENT-TYPE-SIZE");
}

constexpr auto items(Is<ArraySizeSemanticsEnum>) {
  return itemTexts("FIXED-SIZE", "VARIABLE-SIZE");
}

constexpr auto items(Is<ByteOrderEnum>) {
  return itemTexts("MOST-SIGNIFICANT-BYTE-FIRST", "MOST-SIGNIFICANT-BYTE-LAST", "OPAQUE");
}

constexpr auto items(Is<DisplayPresentationEnum>) {
  return itemTexts("PRESENTATION-CONTINUOUS", "PRESENTATION-DISCRETE");
}

constexpr auto items(Is<IntervalTypeEnum>) {
  return itemTexts("CLOSED", "OPEN", "INFINITE");
}

constexpr auto items(Is<MonotonyEnum>) {
  return itemTexts("NO-MONOTONY", "INCREASING", "DECREASING", "STRICTLY-INCREASING", "STRICTLY-DECREASING",
                   "MONOTONOUS", "STRICT-MONOTONOUS");
}

constexpr auto items(Is<ScaleConstrValidityEnum>) {
  return itemTexts("VALID", "NOT-VALID", "NOT-AVAILABLE", "NOT-DEFINED");
}

constexpr auto items(Is<SwImplPolicyEnum>) {
  return itemTexts("STANDARD", "CONST", "FIXED", "MEASUREMENT-POINT", "QUEUED");
}

}  // namespace Tarvelon::metamodel::types
// clang-format on
