#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string_view>

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/shared/Source.h"

namespace Tarvelon::files {

/// Whether a file that begins with these bytes has the root element of ARXML. Nothing if the root element
/// does not begin in them.
std::optional<bool> isArxml(std::string_view beginning);

/// A file of a model.
struct ArxmlInput {
  std::filesystem::path path;  ///< empty for a text
  Source* source = nullptr;
};

/// Loads a model from one or more ARXML files. Error texts call the input `name`.
Loaded loadArxml(std::span<const ArxmlInput> inputs, const LoadOptions& options, std::string_view name);

}  // namespace Tarvelon::files
