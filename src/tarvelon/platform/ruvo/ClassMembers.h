#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "tarvelon/platform/ruvo/ObjectSystem.h"
#include "tarvelon/platform/ruvo/PointerMap.h"
#include "tarvelon/platform/ruvo/SharedMap.h"

namespace ruvo {

/// What a class declares, and what follows from it and its superclasses once somebody asks.
///
/// Threads: what is declared stays as it is once the class is defined. What follows is made under
/// ObjectSystem::guard(), and read without it when its mark says that it is there.
struct Class::Members {
  struct Derived {
    std::atomic<bool> hasSuperClasses = false;
    std::atomic<bool> hasLinearization = false;
    std::atomic<bool> hasProperties = false;
    std::atomic<bool> hasConstructors = false;
    bool isLinearizing = false;
    std::vector<Class*> superClasses;
    std::vector<Class*> linearization;
    /// Inherited ones too. The slots are those of their owners.
    PointerMap<const PropertySlot> properties;
    /// Those that were looked for and found.
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
  /// Gives back what the lists hold in reserve.
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
