#pragma once

#include <string_view>

#include "tarvelon/platform/model/metamodel/ClassData.h"

/// What older formats called otherwise. A reader asks for each name of a file of an older format; so a file
/// is brought to the present while it is read.
namespace Tarvelon::files {

/// The present name of a feature that files of that format call `name`, on objects of the class.
std::string_view featureSince(int format, const metamodel::native::ClassData& cls,
                              std::string_view name) noexcept;

}  // namespace Tarvelon::files
