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

/// The listeners of a model: those of the whole model and those of single objects.
/// Cost: Adding, removing and calling a listener takes time logarithmic in the number of listeners. Listeners
///       of objects that a batch does not change cost nothing.
class Subscribers {
 public:
  /// A listener receives the steps of a batch and the object that it was registered for; the object is null
  /// for a listener of the whole model. A listener of an object must ignore steps of other objects.
  using Listener = std::function<void(std::span<const Step>, const Instance*)>;

  /// REQUIRES: `id` is greater than all ids before.
  void add(std::uint64_t id, Listener listener, const Instance* object);
  /// Removes a listener, or all listeners of an object. A removed listener is not called any more. It stays
  /// in memory until takeLeft() hands it out.
  void leave(std::uint64_t id) noexcept;
  void leaveAll(const Instance& object) noexcept;
  /// Hands out one removed listener, null if there is none.
  std::shared_ptr<void> takeLeft() noexcept;
  bool empty() const noexcept { return mAll.empty(); }

  /// Calls the listeners in the order of their ids, without those that are added during the call. Their
  /// exceptions are ignored. REQUIRES: no listener calls takeLeft().
  void tell(std::span<const Step> steps) noexcept;

 private:
  struct Subscriber {
    std::uint64_t id;
    const Instance* object;
    Listener listener;
    bool hasLeft = false;
    /// The number of the last batch that this listener was selected for.
    std::uint64_t batch = 0;
    Subscriber* nextLeft = nullptr;
  };
  /// The number of an object and the id of one of its listeners.
  using ObjectAndId = std::pair<std::uint32_t, std::uint64_t>;

  void leave(Subscriber& subscriber) noexcept;
  /// Collects in mTold the listeners that the steps concern. Returns how many of them are listeners of single
  /// objects.
  std::size_t select(std::span<const Step> steps) noexcept;

  std::map<std::uint64_t, std::shared_ptr<Subscriber>> mAll;
  /// The listeners that were not removed.
  std::map<std::uint64_t, Subscriber*> mOfModel;
  std::map<ObjectAndId, Subscriber*> mOfObjects;
  /// Has capacity for all listeners, so that calling them allocates nothing here.
  std::vector<Subscriber*> mTold;
  std::uint64_t mBatch = 0;
  Subscriber* mFirstLeft = nullptr;
  Subscriber* mLastLeft = nullptr;
};

}  // namespace Tarvelon::metamodel::native
