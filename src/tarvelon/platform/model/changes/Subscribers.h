#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "tarvelon/platform/model/changes/Steps.h"

namespace Tarvelon::metamodel::native {

class Instance;

/// The listeners of a model: those to all of it and those to one object each.
/// Cost: to come, to leave and to be told takes time with the logarithm of their number. Those that a batch
///       has nothing for take none.
class Subscribers {
 public:
  /// With the object that it was put on, null for the whole model: steps at others are not for it.
  using Listener = std::function<void(std::span<const Step>, const Instance*)>;

  /// REQUIRES: an id that is greater than those before it.
  void add(std::uint64_t id, Listener listener, const Instance* object);
  /// Of those that leave nobody is told any more. They stay until they are taken.
  void leave(std::uint64_t id) noexcept;
  void leaveAll(const Instance& object) noexcept;
  /// Null when there is none who has left.
  std::shared_ptr<void> takeLeft() noexcept;
  bool empty() const noexcept { return mAll.empty(); }

  /// Calls them in the order of their ids: not those that come meanwhile. What they raise is lost.
  /// REQUIRES: none is taken meanwhile.
  void tell(std::span<const Step> steps) noexcept;

 private:
  struct Subscriber {
    std::uint64_t id;
    const Instance* object;
    Listener listener;
    bool hasLeft = false;
    /// The last batch that it was to be told of.
    std::uint64_t batch = 0;
    Subscriber* nextLeft = nullptr;
  };
  /// The number of an object and the id of one who listens to it.
  using ObjectAndId = std::pair<std::uint32_t, std::uint64_t>;

  void leave(Subscriber& subscriber) noexcept;
  /// Puts those into mTold that the steps are for, and says how many of them listen to one object.
  std::size_t select(std::span<const Step> steps) noexcept;

  std::map<std::uint64_t, std::shared_ptr<Subscriber>> mAll;
  /// Those that have not left.
  std::map<std::uint64_t, Subscriber*> mOfModel;
  std::map<ObjectAndId, Subscriber*> mOfObjects;
  /// Has room for all of them: no memory is needed when they are told.
  std::vector<Subscriber*> mTold;
  std::uint64_t mBatch = 0;
  Subscriber* mFirstLeft = nullptr;
  Subscriber* mLastLeft = nullptr;
};

}  // namespace Tarvelon::metamodel::native
