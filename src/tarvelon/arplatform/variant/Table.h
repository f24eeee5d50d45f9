#pragma once

#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/interface/Names.h"
#include "tarvelon/arplatform/variant/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::variant {

constexpr auto row(Is<VariationPoint>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<ConditionByFormula>   ( 1, "Condition",                 kHolds),
          optional<interface::FlowData>  ( 2, "VariationPoint",            kRefers),
          many<PostBuildVariantCondition>( 3, "PostBuildVariantCondition", kHolds)));
}

constexpr auto row(Is<SystemConstDependentFormula>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<K7Q::String>(" aBody")),
      properties(
          one<K7Q::String> ( 1, "Body"),
          many<SystemConst>( 2, "SysConst",   kRefers),
          many<SystemConst>( 3, "SysCString", kRefers, kHidden)));
}

constexpr auto row(Is<ConditionByFormula>) {
  return classRow(
      bases<SystemConstDependentFormula>(),
      constructors(create<>(),
                   create<BindingTimeKind, K7Q::String>(" aBindingTime, aBody")),
      properties(
          one<BindingTimeKind>( 1, "BindingTime")));
}

constexpr auto row(Is<SystemConst>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      noProperties());
}

constexpr auto row(Is<SystemConstValueSet>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<SystemConstValue>( 1, "SysConstValue", kHolds)));
}

constexpr auto row(Is<SystemConstValue>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<K7Q::Double, SystemConst>(" aValue, aSysConst")),
      properties(
          one<K7Q::Double> ( 1, "Value"),
          one<SystemConst> ( 2, "SysConst",            kRefers),
          many<K7Q::String>( 3, "ValueVariationPoint", kHidden)));
}

constexpr auto row(Is<VariationPointProxy>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<ConditionByFormula>          ( 1, "ConditionAccess",           kHolds),
          optional<AttributeValueVariationPoint>( 2, "ValueAccess",               kHolds),
          optional<PostBuildVariantCriterion>   ( 3, "PostBuildValueAccess",      kRefers),
          many<PostBuildVariantCondition>       ( 4, "PostBuildVariantCondition", kHolds),
          optional<foundation::ValueType>       ( 5, "ImplementationDataType",    kRefers)));
}

constexpr auto row(Is<AttributeValueVariationPoint>) {
  return classRow(
      bases<SystemConstDependentFormula>(),
      constructors(create<>(),
                   create<K7Q::String>(" aBody")),
      properties(
          one<BindingTimeKind>( 1, "BindingTime")));
}

constexpr auto row(Is<IntegerValueVariationPoint>) {
  return classRow(
      bases<AttributeValueVariationPoint>(),
      constructors(create<>(),
                   create<K7Q::String>(" aBody")),
      noProperties());
}

constexpr auto row(Is<PositiveIntegerValueVariationPoint>) {
  return classRow(
      bases<AttributeValueVariationPoint>(),
      constructors(create<>(),
                   create<K7Q::String>(" aBody")),
      noProperties());
}

constexpr auto row(Is<UnlimitedIntegerValueVariationPoint>) {
  return classRow(
      bases<AttributeValueVariationPoint>(),
      constructors(create<>(),
                   create<K7Q::String>(" aBody")),
      noProperties());
}

constexpr auto row(Is<FloatValueVariationPoint>) {
  return classRow(
      bases<AttributeValueVariationPoint>(),
      constructors(create<>(),
                   create<K7Q::String>(" aBody")),
      noProperties());
}

constexpr auto row(Is<BooleanValueVariationPoint>) {
  return classRow(
      bases<AttributeValueVariationPoint>(),
      constructors(create<>(),
                   create<K7Q::String>(" aBody")),
      noProperties());
}

constexpr auto row(Is<AbstractNumericalValueVariationPoint>) {
  return classRow(
      bases<AttributeValueVariationPoint>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<NumericalValueVariationPoint>) {
  return classRow(
      bases<AbstractNumericalValueVariationPoint>(),
      constructors(create<>(),
                   create<K7Q::String>(" aBody")),
      noProperties());
}

constexpr auto row(Is<LimitValueVariationPoint>) {
  return classRow(
      bases<AbstractNumericalValueVariationPoint>(),
      constructors(create<>(),
                   create<K7Q::String>(" aBody")),
      noProperties());
}

constexpr auto row(Is<PredefinedVariant>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<SystemConstValueSet>              ( 1, "SysConstValueSet",                  kRefers),
          many<PredefinedVariant>                ( 2, "IncludedVariant",                   kRefers),
          many<PostBuildVariantCriterionValueSet>( 3, "PostBuildVariantCriterionValueSet", kRefers)));
}

constexpr auto row(Is<PostBuildVariantCondition>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<K7Q::Integer, PostBuildVariantCriterion>(" aValue, aMatchingCriterion")),
      properties(
          one<K7Q::Integer>             ( 1, "Value"),
          many<K7Q::String>             ( 2, "ValueVariationPoint", kHidden),
          one<PostBuildVariantCriterion>( 3, "MatchingCriterion",   kRefers)));
}

constexpr auto row(Is<PostBuildVariantCriterion>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<types::CompuMethod, K7Q::String>(" aCompuMethod, aName")),
      properties(
          one<types::CompuMethod>( 1, "CompuMethod", kRefers)));
}

constexpr auto row(Is<PostBuildVariantCriterionValueSet>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<PostBuildVariantCriterionValue>( 1, "PostBuildVariantCriterionValue", kHolds)));
}

constexpr auto row(Is<PostBuildVariantCriterionValue>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<K7Q::Integer, PostBuildVariantCriterion>(" aValue, aVariantCriterion")),
      properties(
          one<K7Q::Integer>             ( 1, "Value"),
          many<K7Q::String>             ( 2, "ValueVariationPoint", kHidden),
          one<PostBuildVariantCriterion>( 3, "VariantCriterion",    kRefers)));
}

}  // namespace Tarvelon::metamodel::arplatform::variant
// clang-format on
