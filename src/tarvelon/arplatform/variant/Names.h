#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_VARIANT_NAMES(CLASS, ENUMERATION)                                           \
  ENUMERATION(BindingTimeKind, SystemDesignTime, CodeGenerationTime, PreCompileTime, LinkTime) \
  CLASS(VariationPoint)                                                                        \
  CLASS(SystemConstDependentFormula)                                                           \
  CLASS(ConditionByFormula)                                                                    \
  CLASS(SystemConst)                                                                           \
  CLASS(SystemConstValueSet)                                                                   \
  CLASS(SystemConstValue)                                                                      \
  CLASS(VariationPointProxy)                                                                   \
  CLASS(AttributeValueVariationPoint)                                                          \
  CLASS(IntegerValueVariationPoint)                                                            \
  CLASS(PositiveIntegerValueVariationPoint)                                                    \
  CLASS(UnlimitedIntegerValueVariationPoint)                                                   \
  CLASS(FloatValueVariationPoint)                                                              \
  CLASS(BooleanValueVariationPoint)                                                            \
  CLASS(AbstractNumericalValueVariationPoint)                                                  \
  CLASS(NumericalValueVariationPoint)                                                          \
  CLASS(LimitValueVariationPoint)                                                              \
  CLASS(PredefinedVariant)                                                                     \
  CLASS(PostBuildVariantCondition)                                                             \
  CLASS(PostBuildVariantCriterion)                                                             \
  CLASS(PostBuildVariantCriterionValueSet)                                                     \
  CLASS(PostBuildVariantCriterionValue)
// clang-format on

namespace Tarvelon::metamodel::arplatform::variant {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.variant.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.variant.", E, __VA_ARGS__)
ARPLATFORM_VARIANT_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::variant
