#pragma once

#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "tarvelon/boundary/tarvelon/Typed.h"
#include "tarvelon/platform/model/api/Validation.h"
#include "tarvelon/platform/model/objects/NearestHolders.h"
#include "tarvelon/platform/model/validation/Plans.h"
#include "tarvelon/platform/model/validation/Reading.h"

namespace Tarvelon::metamodel::native::validation {

/// The problems that a validation pass has found, and data that its rules share.
class Findings {
 public:
  /// `deviant` is the view of the handles in the problems. `top` is the validated object.
  explicit Findings(K7Q::Deviant deviant, const Instance* top = nullptr) noexcept
      : mDeviant(deviant), mTop(top) {}

  /// The object that is validated, null for a model.
  const Instance* top() const noexcept { return mTop; }

  /// Adds a problem with a property of an object, for the current rule. `Name` is the name that the host
  /// shows.
  template <class X, FixedString Name>
  void add(const Instance& object, std::string message) {
    add(object, slotOf<X, Name>(object), std::move(message));
  }
  void add(const Instance& object, unsigned slot, std::string message) {
    add(object, hostNameOf(object.cls(), slot), std::move(message));
  }
  /// Adds a problem with the whole object.
  void add(const Instance& object, std::string message) { add(object, "", std::move(message)); }

  void begin(const Rule& rule) noexcept { mRule = &rule; }
  std::size_t count() const noexcept { return mFound.size(); }

  struct Found {
    const Instance* object;
    const Rule* rule;
    K7Q::Problem problem;
  };
  std::vector<Found>& found() noexcept { return mFound; }

  /// The state of an object in the search for cycles, for the current rule.
  struct Search {
    enum class State : std::uint8_t { New, Open, Done };
    State state = State::New;
    /// For an open object: the number of steps that lead to it.
    std::size_t depth = 0;
  };
  Search& search(const Instance& object) { return mSearches[mRule][&object]; }

  /// The root of the object's tree; the object itself if it has no owner.
  const Instance& rootOf(const Instance& object) {
    const Instance* root = mRoots.of(object);
    return root ? *root : object;
  }
  /// The nearest behavior above the object, null if there is none.
  const Instance* behaviorAbove(const Instance& object) { return mBehaviors.of(object); }

  /// The set of compositions that a composition uses. It is cached; the caller fills it if it is empty.
  std::unordered_set<const Instance*>& compositionsWithin(const Instance& whole) {
    return mCompositions[&whole];
  }

  /// Whether the model has objects without an owner that should have one.
  bool hasStrays() const noexcept { return mHasStrays; }
  void noteStrays() noexcept { mHasStrays = true; }

  /// The precomputed data for the object's class.
  const ClassPlan& planOf(const Instance& object) { return mPlans.of(object.cls()); }

  struct Named {
    std::size_t hash;
    std::size_t order;
    const Instance* object;
  };
  /// Buffers that rules use while they check one object. They are kept to avoid an allocation for each
  /// object.
  struct Room {
    std::vector<Named> named;
    /// The object whose namespace `named` lists.
    const Instance* namespaceOf = nullptr;
    std::vector<Named> values;
    std::vector<const Instance*> open;
  };
  Room& room() noexcept { return mRoom; }

 private:
  void add(const Instance& object, const char* property, std::string message);

  static bool isRoot(const Instance& object) { return !object.owner(); }
  static bool isBehavior(const Instance& object);

  K7Q::Deviant mDeviant;
  const Instance* mTop;
  const Rule* mRule = nullptr;
  bool mHasStrays = false;
  Room mRoom;
  Plans mPlans;
  Places mPlaces;
  NearestHolders<&isRoot> mRoots;
  NearestHolders<&isBehavior> mBehaviors;
  std::vector<Found> mFound;
  std::unordered_map<const Instance*, std::unordered_set<const Instance*>> mCompositions;
  std::unordered_map<const Rule*, std::unordered_map<const Instance*, Search>> mSearches;
};

}  // namespace Tarvelon::metamodel::native::validation
