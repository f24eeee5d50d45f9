#pragma once

#include <filesystem>

#include "tarvelon/platform/files/Files.h"

namespace Tarvelon::files {

/// Saves a model in the format XMI, as save().
void saveXmi(const K7Q::Model& model, const std::filesystem::path& path, const SaveOptions& options);

}  // namespace Tarvelon::files
