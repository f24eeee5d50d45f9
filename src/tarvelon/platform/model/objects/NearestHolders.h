#pragma once

#include <unordered_map>
#include <vector>

#include "tarvelon/platform/model/objects/Instance.h"

namespace Tarvelon::metamodel::native {

/// Finds the nearest owner of a certain kind, for one object after the other. In deep trees it caches the
/// result for every 64th owner that it passes, so that long paths are not walked again for each object.
/// REQUIRES: while it is used, no object gets another owner or becomes or stops being an owner of that kind.
template <bool (*IsWanted)(const Instance&)>
class NearestHolders {
 public:
  /// Null if there is no such owner.
  const Instance* of(const Instance& object) {
    constexpr unsigned kEach = 64;
    const Instance* holder = object.owner();
    unsigned steps = 0;
    for (; holder && !IsWanted(*holder); holder = holder->owner()) {
      if (++steps % kEach != 0) continue;
      const auto known = mFar.find(holder);
      if (known == mFar.end()) {
        mPassed.push_back(holder);
        continue;
      }
      holder = known->second;
      break;
    }
    for (const Instance* each : mPassed) mFar.emplace(each, holder);
    mPassed.clear();
    return holder;
  }

 private:
  std::unordered_map<const Instance*, const Instance*> mFar;
  std::vector<const Instance*> mPassed;
};

}  // namespace Tarvelon::metamodel::native
