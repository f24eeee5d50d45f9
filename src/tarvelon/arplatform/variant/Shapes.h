#pragma once

#include "tarvelon/arplatform/variant/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::variant {

constexpr auto items(Is<BindingTimeKind>) {
  return itemTexts("SYSTEM-DESIGN-TIME", "CODE-GENERATION-TIME", "PRE-COMPILE-TIME", "LINK-TIME");
}

constexpr auto shape(Is<VariationPoint>) {
  return shapeOf(
      noElement(),
      places(
          text   ("Name",      "SHORT-LABEL"),
          role   ("Condition", "SW-SYSCOND"),
          nowhere("VariationPoint", "VARIATION-POINT has no reference to data"),
          inside ("PostBuildVariantCondition", "POST-BUILD-VARIANT-CONDITIONS")));
}

// The references to the constants stand within the text of the formula, in the place of their names.
constexpr auto shape(Is<SystemConstDependentFormula>) {
  return shapeOf(
      noElement("only its derived classes, conditions and formulas for values, stand in files"),
      places(
          body     ("Body"),
          reference("SysConst",   "SYSC-REF"),
          reference("SysCString", "SYSC-STRING-REF")));
}

constexpr auto shape(Is<ConditionByFormula>) {
  return shapeOf(
      noElement(),
      places(
          attribute("BindingTime", "BINDING-TIME")));
}

constexpr auto shape(Is<SystemConst>) {
  return shapeOf(
      elements(element("SW-SYSTEMCONST")),
      places());
}

constexpr auto shape(Is<SystemConstValueSet>) {
  return shapeOf(
      elements(element("SW-SYSTEMCONSTANT-VALUE-SET")),
      places(
          inside("SysConstValue", "SW-SYSTEMCONSTANT-VALUES")));
}

constexpr auto shape(Is<SystemConstValue>) {
  return shapeOf(
      elements(element("SW-SYSTEMCONST-VALUE")),
      places(
          text     ("Value",    "VALUE"),
          reference("SysConst", "SW-SYSTEMCONST-REF"),
          nowhere  ("ValueVariationPoint", "VALUE stands only once, and Value is in it")));
}

constexpr auto shape(Is<VariationPointProxy>) {
  return shapeOf(
      elements(element("VARIATION-POINT-PROXY")),
      places(
          role     ("ConditionAccess",           "CONDITION-ACCESS"),
          inside   ("ValueAccess",               "VALUE-ACCESS"),
          reference("PostBuildValueAccess",      "POST-BUILD-VALUE-ACCESS-REF"),
          inside   ("PostBuildVariantCondition", "POST-BUILD-VARIANT-CONDITIONS"),
          reference("ImplementationDataType",    "IMPLEMENTATION-DATA-TYPE-REF")));
}

constexpr auto shape(Is<AttributeValueVariationPoint>) {
  return shapeOf(
      noElement("only its derived classes, formulas for a certain kind of value, stand in files"),
      places(
          attribute("BindingTime", "BINDING-TIME")));
}

constexpr auto shape(Is<IntegerValueVariationPoint>) {
  return shapeOf(
      elements(element("INTEGER-VALUE-VARIATION-POINT")),
      places());
}

constexpr auto shape(Is<PositiveIntegerValueVariationPoint>) {
  return shapeOf(
      elements(element("POSITIVE-INTEGER-VALUE-VARIATION-POINT")),
      places());
}

constexpr auto shape(Is<UnlimitedIntegerValueVariationPoint>) {
  return shapeOf(
      elements(element("UNLIMITED-INTEGER-VALUE-VARIATION-POINT")),
      places());
}

constexpr auto shape(Is<FloatValueVariationPoint>) {
  return shapeOf(
      elements(element("FLOAT-VALUE-VARIATION-POINT")),
      places());
}

constexpr auto shape(Is<BooleanValueVariationPoint>) {
  return shapeOf(
      elements(element("BOOLEAN-VALUE-VARIATION-POINT")),
      places());
}

constexpr auto shape(Is<AbstractNumericalValueVariationPoint>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<NumericalValueVariationPoint>) {
  return shapeOf(
      elements(element("NUMERICAL-VALUE-VARIATION-POINT")),
      places());
}

constexpr auto shape(Is<LimitValueVariationPoint>) {
  return shapeOf(
      elements(element("LIMIT")),
      places());
}

constexpr auto shape(Is<PredefinedVariant>) {
  return shapeOf(
      elements(element("PREDEFINED-VARIANT")),
      places(
          reference("SysConstValueSet", "SW-SYSTEMCONSTANT-VALUE-SET-REFS/SW-SYSTEMCONSTANT-VALUE-SET-REF"),
          reference("IncludedVariant",  "INCLUDED-VARIANT-REFS/INCLUDED-VARIANT-REF"),
          reference("PostBuildVariantCriterionValueSet",
                    "POST-BUILD-VARIANT-CRITERION-VALUE-SET-REFS/POST-BUILD-VARIANT-CRITERION-VALUE-SET-REF")));
}

constexpr auto shape(Is<PostBuildVariantCondition>) {
  return shapeOf(
      elements(element("POST-BUILD-VARIANT-CONDITION")),
      places(
          text     ("Value", "VALUE"),
          nowhere  ("ValueVariationPoint", "VALUE stands only once, and Value is in it"),
          reference("MatchingCriterion", "MATCHING-CRITERION-REF")));
}

constexpr auto shape(Is<PostBuildVariantCriterion>) {
  return shapeOf(
      elements(element("POST-BUILD-VARIANT-CRITERION")),
      places(
          reference("CompuMethod", "COMPU-METHOD-REF")));
}

constexpr auto shape(Is<PostBuildVariantCriterionValueSet>) {
  return shapeOf(
      elements(element("POST-BUILD-VARIANT-CRITERION-VALUE-SET")),
      places(
          inside("PostBuildVariantCriterionValue", "POST-BUILD-VARIANT-CRITERION-VALUES")));
}

constexpr auto shape(Is<PostBuildVariantCriterionValue>) {
  return shapeOf(
      elements(element("POST-BUILD-VARIANT-CRITERION-VALUE")),
      places(
          text     ("Value", "VALUE"),
          nowhere  ("ValueVariationPoint", "VALUE stands only once, and Value is in it"),
          reference("VariantCriterion", "VARIANT-CRITERION-REF")));
}

}  // namespace Tarvelon::metamodel::arplatform::variant
// clang-format on
