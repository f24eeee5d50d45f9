#pragma once

#include <memory>
#include <vector>

#include "tarvelon/platform/ruvo/ObjectSystem.h"
#include "tarvelon/platform/ruvo/PointerMap.h"

namespace ruvo {

/// What a class declares, and what follows from it and its superclasses once somebody asks.
struct Class::Members {
  struct Derived {
    std::vector<Class*> superClasses;
    std::vector<Class*> linearization;
    /// Inherited ones too; empty until a property is looked for. The slots are those of their owners.
    PointerMap<const PropertySlot> properties;
    /// Those that were looked for and found.
    PointerMap<const OverloadSet> overloads;
    std::vector<std::unique_ptr<OverloadSet>> sets;
    OverloadSet constructors;
    bool isLinearizing = false;
    bool hasProperties = false;
    bool hasConstructors = false;
  };

  Members() = default;
  Members(const Members&) = delete;
  Members& operator=(const Members&) = delete;
  ~Members();

  Derived& derived() {
    if (!mDerived) mDerived = std::make_unique<Derived>();
    return *mDerived;
  }
  /// Gives back what the lists hold in reserve.
  void shrink();

  std::vector<InternedName> superClassNames;
  std::vector<RVOMethodInfo*> methods;
  std::vector<PropertySlot> properties;

 private:
  std::unique_ptr<Derived> mDerived;
};

inline Class::Members& Class::members() {
  if (mState != State::Defined) define();
  return *mMembers;
}

}  // namespace ruvo
