#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "tarvelon/platform/ruvo/ObjectSystem.h"
#include "tarvelon/platform/ruvo/PointerMap.h"
#include "tarvelon/platform/ruvo/SharedMap.h"

namespace ruvo {

/// The members that a class declares, and the data derived from them and from the superclasses on first use.
///
/// Threads: the declared members don't change after the definition of the class. Derived data is created
/// under ObjectSystem::guard(). Once its flag (hasProperties etc.) is set, any thread reads it without a
/// lock.
struct Class::Members {
  struct Derived {
    std::atomic<bool> hasSuperClasses = false;
    std::atomic<bool> hasLinearization = false;
    std::atomic<bool> hasProperties = false;
    std::atomic<bool> hasConstructors = false;
    bool isLinearizing = false;
    std::vector<Class*> superClasses;
    std::vector<Class*> linearization;
    /// Own and inherited properties. Each slot belongs to the class that declares the property.
    PointerMap<const PropertySlot> properties;
    /// The overload sets found so far: a cache of findMethods().
    SharedMap<const OverloadSet> overloads;
    std::vector<std::unique_ptr<OverloadSet>> sets;
    OverloadSet constructors;
  };

  Members() = default;
  Members(const Members&) = delete;
  Members& operator=(const Members&) = delete;
  ~Members();

  Derived& derived() {
    Derived* made = mDerived.load(std::memory_order_acquire);
    return made ? *made : makeDerived();
  }
  /// Releases the unused capacity of the lists.
  void shrink();

  std::vector<InternedName> superClassNames;
  std::vector<RVOMethodInfo*> methods;
  std::vector<PropertySlot> properties;

 private:
  Derived& makeDerived();

  std::atomic<Derived*> mDerived = nullptr;
};

inline Class::Members& Class::members() {
  if (mState.load(std::memory_order_acquire) != State::Defined) define();
  return *mMembers;
}

}  // namespace ruvo
