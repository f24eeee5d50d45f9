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

void requireSuffix(const std::filesystem::path& path, std::initializer_list<std::string_view> known) {
  const std::string suffix = path.extension().string();
  const auto isSuffix = [&suffix](std::string_view each) {
    return std::ranges::equal(suffix, each, isEqual);
  };
  if (suffix.size() < 2 || std::ranges::any_of(known, isSuffix)) return;
  const std::string stem = std::filesystem::path(path).replace_extension().string();
  std::string expected;
  std::string names;
  for (const std::string_view each : known) {
    expected += (expected.empty() ? "'" : " or '") + std::string(each) + "'";
    names += (names.empty() ? "'" : " or '") + stem + std::string(each) + "'";
  }
  throw K7Q::WrongValue("cannot save '" + path.string() + "': expected the suffix " + expected + ", got " +
                        ruvo::quotedName(suffix) + "; name the file " + names + ", or give it no suffix");
}

}  // namespace Tarvelon::files
