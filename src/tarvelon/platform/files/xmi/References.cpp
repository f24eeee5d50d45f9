#include "tarvelon/platform/files/xmi/References.h"

#include "tarvelon/platform/files/shared/Ids.h"

namespace Tarvelon::files {

IdTable::Key IdTable::keyOf(std::string_view text) {
  if (const auto number = idNumber(text)) return *number;
  const auto [found, isNew] = mForeign.try_emplace(std::string(text), kForeign | mForeign.size());
  if (isNew) mForeignTexts.push_back(&found->first);
  return found->second;
}

std::string IdTable::textOf(Key key) const {
  if ((key & kForeign) != 0) return *mForeignTexts[key & ~kForeign];
  const auto text = idText(key);
  return {text.data(), text.size()};
}

void PendingReferences::add(const PendingReference& first, const std::vector<IdTable::Key>& targets) {
  mTargets.insert(mTargets.end(), targets.begin(), targets.end());
  mLists.push_back({first, targets.size()});
}

void PendingReferences::clear() noexcept {
  mLists.clear();
  mTargets.clear();
}

}  // namespace Tarvelon::files
