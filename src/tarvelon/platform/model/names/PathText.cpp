#include "tarvelon/platform/model/names/PathText.h"

#include <utility>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/objects/Instance.h"

namespace Tarvelon::metamodel::native {

namespace {

/// How much of the end of a shortened path is shown.
constexpr std::size_t kShownParts = 24;
constexpr std::size_t kShownBytes = 400;

bool isInside(char unit) noexcept { return (unit & 0xC0) == 0x80; }

}  // namespace

PathText::PathText(const Instance& object) noexcept {
  std::size_t levels = 0;
  for (const Instance* each = &object; each && !mIsDeep; each = each->owner())
    mIsDeep = ++levels > kMostLevels;
}

bool PathText::prepend(std::string part) {
  mBytes += part.size();
  mParts.push_back(std::move(part));
  return mIsDeep ? mParts.size() < kShownParts && mBytes <= kShownBytes : mBytes <= kMostBytes;
}

bool PathText::prependName(std::u16string_view name) {
  // Of a very long name, only the end can ever be shown.
  if (name.size() > kMostBytes) name.remove_prefix(name.size() - kMostBytes);
  // The cut must not split a surrogate pair.
  if ((name.empty() ? 0 : name.front() & 0xFC00) == 0xDC00) name.remove_prefix(1);
  return prepend("/" + K7Q::String::to_string(name));
}

std::string PathText::text() const {
  std::string text;
  std::size_t shown = mParts.size();
  if (isCut()) {
    shown = 0;
    std::size_t bytes = 0;
    while (shown < mParts.size() && shown < kShownParts && bytes <= kShownBytes) {
      bytes += mParts[shown++].size();
    }
  } else {
    text.reserve(mBytes);
  }
  for (std::size_t part = shown; part-- > 0;) text.append(mParts[part]);
  if (!isCut()) return text;
  std::size_t begin = text.size() > kShownBytes ? text.size() - kShownBytes : 0;
  // The cut must not split a UTF-8 character.
  while (begin < text.size() && isInside(text[begin])) ++begin;
  return text.replace(0, begin, "...");
}

}  // namespace Tarvelon::metamodel::native
