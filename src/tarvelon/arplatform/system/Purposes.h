#pragma once

#include "tarvelon/arplatform/system/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::system {

inline constexpr std::string_view kPurpose =
    "The system: the composition that makes up all of its software, its ECUs, and which component runs on which of "
    "them.";

inline constexpr auto kPurposes = purposes(
    of<SystemMapping>(
        "The mappings of a system: which component prototypes are placed on which ECU."),
    of<SwcToEcuMapping>(
        "Places component prototypes on an ECU."),
    of<EcuInstance>(
        "One ECU of the system."),
    of<System>(
        "A system as a whole: its root composition, and the mapping of its components to ECUs."),
    of<FibexElement>(
        "The base of the elements that describe the topology and the communication of a system, such as ECUs."),
    of<RootSwCompositionPrototype>(
        "The use of a composition as the outermost one of a system: all of its software."));

}  // namespace Tarvelon::metamodel::arplatform::system
// clang-format on
