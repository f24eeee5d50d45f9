#include "tarvelon/platform/files/xmi/Migrations.h"

#include <algorithm>

#include "tarvelon/platform/model/metamodel/ClassMethods.h"

namespace Tarvelon::files {

namespace {

/// A feature that has another name since a format.
struct RenamedFeature {
  int since;
  std::string_view cls;  ///< that introduces it
  std::string_view before;
  std::string_view after;
};

// In ascending order of format: a name goes through all of them.
constexpr RenamedFeature kRenamedFeatures[] = {
    {1, "K7Q.ClassObject", "ExternalTool", "ExternalToolInfo"},
};

}  // namespace

std::string_view featureSince(int format, const metamodel::native::ClassData& cls,
                              std::string_view name) noexcept {
  for (const RenamedFeature& row : kRenamedFeatures) {
    const bool isOfClass = std::ranges::any_of(cls.ancestors, [&row](const auto* ancestor) {
      return ancestor->methods->className().name == row.cls;
    });
    if (format < row.since && row.before == name && isOfClass) name = row.after;
  }
  return name;
}

}  // namespace Tarvelon::files
