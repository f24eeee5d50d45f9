#pragma once

#include <filesystem>
#include <string_view>

namespace Tarvelon::files {

/// Raises K7Q::WrongValue if the file name has a suffix other than `known`, since another format was probably
/// meant. A name without a suffix is accepted. Upper and lower case are equal: "BRAKES.XMI". `what` names
/// what is saved, for the text.
void requireSuffix(const std::filesystem::path& path, std::string_view known, std::string_view what);

/// Whether the name has that suffix, in capital or small letters.
bool hasSuffix(const std::filesystem::path& path, std::string_view known);

}  // namespace Tarvelon::files
