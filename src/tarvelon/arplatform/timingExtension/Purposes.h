#pragma once

#include "tarvelon/arplatform/timingExtension/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::timingExtension {

inline constexpr std::string_view kPurpose =
    "Timing: constraints on a component or a composition, here on the order in which runnables execute.";

inline constexpr auto kPurposes = purposes(
    of<TimingExtension>(
        "The base of the collections of timing constraints."),
    of<SwcTiming>(
        "Timing constraints on the behavior of one component."),
    of<VfbTiming>(
        "Timing constraints on a component as it is seen from outside, at its ports and among its prototypes, "
        "wherever these will run."),
    of<TimingConstraint>(
        "The base of all timing constraints."),
    of<ExecutionOrderConstraint>(
        "A constraint on the order in which runnables execute. Each element names its successors."),
    of<EOCExecutionEntityRefAbstract>(
        "The base of the elements of an execution order constraint."),
    of<EOCExecutableEntityRef>(
        "A runnable of one component prototype in an execution order, and the elements that follow it."));

}  // namespace Tarvelon::metamodel::arplatform::timingExtension
// clang-format on
