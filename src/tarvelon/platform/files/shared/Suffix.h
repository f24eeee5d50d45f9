#pragma once

#include <filesystem>
#include <string_view>

namespace Tarvelon::files {

/// Raises K7Q::WrongValue for a name with another suffix than `known`, which says that another format was
/// meant. A name without suffix, and one in other letters, "BRAKES.XMI", will do. `what` is what is saved.
void requireSuffix(const std::filesystem::path& path, std::string_view known, std::string_view what);

}  // namespace Tarvelon::files
