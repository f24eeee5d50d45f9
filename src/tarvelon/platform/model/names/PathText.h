#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvelon::metamodel::native {

class Instance;

/// The text of an object's path. It is built from the end: the caller walks from the object up to the root
/// and prepends each part.
///
/// Objects may be nested without limit and may have names of any length, so full paths of all objects could
/// need quadratic space. A path is therefore shortened to its end, ".../Controller/Step", if the object is
/// deeper than a file allows or if the path is too long. Several objects may have the same shortened path.
class PathText {
 public:
  static constexpr std::size_t kMostLevels = 1000;
  static constexpr std::size_t kMostBytes = 4096;

  explicit PathText(const Instance& object) noexcept;
  /// Prepends a part. Returns false if no further parts are needed.
  bool prepend(std::string part);
  /// Prepends "/" and the name. Returns as prepend().
  bool prependName(std::u16string_view name);
  /// Counts a level that the text does not show. Returns as prepend().
  bool pass() noexcept { return ++mPassed <= kMostLevels; }
  bool isCut() const noexcept { return mIsDeep || mBytes > kMostBytes; }
  std::string text() const;

 private:
  std::vector<std::string> mParts;
  std::size_t mBytes = 0;
  std::size_t mPassed = 0;
  bool mIsDeep = false;
};

}  // namespace Tarvelon::metamodel::native
