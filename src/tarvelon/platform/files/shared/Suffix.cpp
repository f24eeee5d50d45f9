#include "tarvelon/platform/files/shared/Suffix.h"

#include <algorithm>
#include <string>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace Tarvelon::files {

namespace {

bool isEqual(char left, char right) noexcept {
  const auto folded = [](char each) { return each >= 'A' && each <= 'Z' ? each - 'A' + 'a' : each; };
  return folded(left) == folded(right);
}

}  // namespace

bool hasSuffix(const std::filesystem::path& path, std::string_view known) {
  return std::ranges::equal(path.extension().string(), known, isEqual);
}

void requireSuffix(const std::filesystem::path& path, std::string_view known, std::string_view what) {
  const std::string suffix = path.extension().string();
  if (suffix.size() < 2 || std::ranges::equal(suffix, known, isEqual)) return;
  const std::string stem = std::filesystem::path(path).replace_extension().string();
  throw K7Q::WrongValue("cannot save '" + path.string() + "': expected the suffix '" + std::string(known) +
                        "', got " + ruvo::quotedName(suffix) + "; " + std::string(what) +
                        ": name the file '" + stem + std::string(known) + "', or give it no suffix");
}

}  // namespace Tarvelon::files
