#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvelon::metamodel::native {

class Instance;

/// The text of an object's path, put together from its end: who builds it goes up from the object to what
/// holds it.
///
/// Objects may be nested as deep as memory goes and have names of any length, and a text for each of them
/// would grow with the square of that. So the path of an object on a deeper level than a file may have, or
/// one longer than people write it, is told by its end: ".../Controller/Step". It may be that of others as
/// well.
class PathText {
 public:
  static constexpr std::size_t kMostLevels = 1000;
  static constexpr std::size_t kMostBytes = 4096;

  explicit PathText(const Instance& object) noexcept;
  /// Adds in front. False when that is enough: then the way up need not be gone on with.
  bool prepend(std::string part);
  /// "/" and the name in front.
  bool prependName(std::u16string_view name);
  /// Passes a level that the text does not show.
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
