#pragma once

#include <string_view>

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/shared/Source.h"

namespace Tarvelon::files {

/// Loads a model in the format XMI. Error texts call the input `name`.
Loaded loadXmi(Source& source, const LoadOptions& options, std::string_view name);

}  // namespace Tarvelon::files
