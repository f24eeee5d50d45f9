#pragma once

#include <string_view>

#include "tarvelon/platform/model/metamodel/ClassData.h"

/// Names that older file formats used. The reader translates each name of an older file while reading, so an
/// older file is loaded as if it had the current format.
namespace Tarvelon::files {

/// Returns the current name of the feature that files of `format` call `name`, for objects of the class.
std::string_view featureSince(int format, const metamodel::native::ClassData& cls,
                              std::string_view name) noexcept;

}  // namespace Tarvelon::files
