#pragma once

#include <unordered_map>
#include <vector>

#include "tarvelon/platform/model/objects/Instance.h"

namespace Tarvelon::metamodel::native {

/// The nearest holders of some kind, asked for one object after the other. Where very many of another kind
/// stand above one another, some of them are remembered, so that the way up is not gone from each again.
/// REQUIRES: meanwhile no object gets another owner or becomes one of that kind, or is none any more.
template <bool (*IsWanted)(const Instance&)>
class NearestHolders {
 public:
  /// Null if there is none.
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
