#pragma once

#include <filesystem>
#include <initializer_list>
#include <string_view>

namespace Tarvelon::files {

/// Raises K7Q::WrongValue if the file name has a suffix other than the known ones, since another format was
/// probably meant. A name without a suffix is accepted. Upper and lower case are equal: "BRAKES.XMI".
void requireSuffix(const std::filesystem::path& path, std::initializer_list<std::string_view> known);

/// Whether the name has that suffix, in capital or small letters.
bool hasSuffix(const std::filesystem::path& path, std::string_view known);

}  // namespace Tarvelon::files
