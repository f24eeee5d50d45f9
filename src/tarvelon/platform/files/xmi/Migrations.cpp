#include "tarvelon/platform/files/xmi/Migrations.h"

#include <algorithm>

#include "tarvelon/platform/model/metamodel/ClassMethods.h"

namespace Tarvelon::files {

namespace {

/// A feature that has been renamed in a version of the format.
struct RenamedFeature {
  int since;
  std::string_view cls;  ///< the class that introduces the feature
  std::string_view before;
  std::string_view after;
};

// In ascending order of `since`: all rows are applied to a name, one after another.
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
