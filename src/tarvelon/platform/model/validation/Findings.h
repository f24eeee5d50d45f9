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

/// The problems that a pass has found, and what its rules share.
class Findings {
 public:
  /// Problems show their objects in that view.
  explicit Findings(K7Q::Deviant deviant, const Instance* top = nullptr) noexcept
      : mDeviant(deviant), mTop(top) {}

  /// The object that was asked, null for a model.
  const Instance* top() const noexcept { return mTop; }

  /// A problem of an object's property, by the host's name for it, under the rule that runs.
  template <class X, FixedString Name>
  void add(const Instance& object, std::string message) {
    add(object, slotOf<X, Name>(object), std::move(message));
  }
  void add(const Instance& object, unsigned slot, std::string message) {
    add(object, hostNameOf(object.cls(), slot), std::move(message));
  }
  /// A problem of the object as a whole.
  void add(const Instance& object, std::string message) { add(object, "", std::move(message)); }

  void begin(const Rule& rule) noexcept { mRule = &rule; }
  std::size_t count() const noexcept { return mFound.size(); }

  struct Found {
    const Instance* object;
    const Rule* rule;
    K7Q::Problem problem;
  };
  std::vector<Found>& found() noexcept { return mFound; }

  /// How far the search for circles has come with an object, for the rule that runs.
  struct Search {
    enum class State : std::uint8_t { New, Open, Done };
    State state = State::New;
    /// Of one that is open, how many steps lead to it.
    std::size_t depth = 0;
  };
  Search& search(const Instance& object) { return mSearches[mRule][&object]; }

  /// What the object stands below, itself if nothing holds it.
  const Instance& rootOf(const Instance& object) {
    const Instance* root = mRoots.of(object);
    return root ? *root : object;
  }
  /// The behavior that holds the object, null if none does.
  const Instance* behaviorAbove(const Instance& object) { return mBehaviors.of(object); }

  /// What a composition consists of, once for all that ask.
  std::unordered_set<const Instance*>& compositionsWithin(const Instance& whole) {
    return mCompositions[&whole];
  }

  /// Whether the model has objects that nothing holds although something should.
  bool hasStrays() const noexcept { return mHasStrays; }
  void noteStrays() noexcept { mHasStrays = true; }

  /// What the rules know of the object's class.
  const ClassPlan& planOf(const Instance& object) { return mPlans.of(object.cls()); }

  struct Named {
    std::size_t hash;
    std::size_t order;
    const Instance* object;
  };
  /// What rules use while they look at one object, kept so that it is not allocated for each.
  struct Room {
    std::vector<Named> named;
    /// Whose namespace `named` lists.
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
