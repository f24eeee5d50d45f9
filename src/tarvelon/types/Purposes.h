#pragma once

#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::types {

inline constexpr std::string_view kPurpose =
    "Data types: what numbers mean to an application, and how they are represented in code.";

inline constexpr auto kPurposes = purposes(
    of<CompuMethod>(
        "A computation method: what the numbers of a data type stand for, and in which unit."),
    of<SwBaseType>(
        "How a value is represented on an ECU: its size in bits, its encoding and its native type."),
    of<ImplementationDataType>(
        "A data type as code sees it: a base type with a computation method."),
    of<ApplicationPrimitiveDataType>(
        "A data type as the application sees it: a single physical value, whatever represents it in code."));

}  // namespace Tarvelon::metamodel::types
// clang-format on
