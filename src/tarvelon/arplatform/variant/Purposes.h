#pragma once

#include "tarvelon/arplatform/variant/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::variant {

inline constexpr std::string_view kPurpose =
    "Variants: what exists only under a condition, the constants and criteria that conditions speak of, and the "
    "sets of values that make up a variant.";

inline constexpr auto kPurposes = purposes(
    of<BindingTimeKind>(
        "The latest time at which a variation is resolved, from the design of the system to the linking of the "
        "code."),
    of<VariationPoint>(
        "Makes the element that holds it optional. Whether it exists is decided by a formula, at link time at the "
        "latest, and by conditions that are evaluated after the build."),
    of<SystemConstDependentFormula>(
        "A formula over system constants, written as a text. It names the constants that the text uses."),
    of<ConditionByFormula>(
        "A formula whose result says whether something exists, with the latest time at which it is evaluated."),
    of<SystemConst>(
        "A constant of the whole system that formulas of variants refer to. Its values are given by value sets."),
    of<SystemConstValueSet>(
        "A set of values for system constants, chosen as a whole by a variant."),
    of<SystemConstValue>(
        "The value of one system constant within a value set."),
    of<VariationPointProxy>(
        "Lets the code of a component ask for a variation: whether a condition holds, or which value has been "
        "chosen."),
    of<AttributeValueVariationPoint>(
        "A formula that computes the value of an attribute, with the latest time at which it is evaluated."),
    of<IntegerValueVariationPoint>(
        "A formula that computes an integer attribute."),
    of<PositiveIntegerValueVariationPoint>(
        "A formula that computes an integer attribute that cannot be negative."),
    of<UnlimitedIntegerValueVariationPoint>(
        "A formula that computes an integer attribute of unlimited range."),
    of<FloatValueVariationPoint>(
        "A formula that computes a floating-point attribute."),
    of<BooleanValueVariationPoint>(
        "A formula that computes a Boolean attribute."),
    of<AbstractNumericalValueVariationPoint>(
        "The base of the formulas that compute a numerical value or a limit."),
    of<NumericalValueVariationPoint>(
        "A formula that computes a numerical value."),
    of<LimitValueVariationPoint>(
        "A formula that computes the limit of a range."),
    of<PredefinedVariant>(
        "A variant with a name. It chooses sets of values for system constants and for post-build criteria, and may "
        "include other variants."),
    of<PostBuildVariantCondition>(
        "Holds if a post-build criterion has a certain value when the system runs."),
    of<PostBuildVariantCriterion>(
        "A criterion by which variants are told apart after the build. Its computation method says what its numbers "
        "stand for."),
    of<PostBuildVariantCriterionValueSet>(
        "A set of values for post-build criteria, chosen as a whole by a variant."),
    of<PostBuildVariantCriterionValue>(
        "The value of one post-build criterion within a value set."));

}  // namespace Tarvelon::metamodel::arplatform::variant
// clang-format on
