#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "tarvelon/platform/model/api/Validation.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"

namespace Tarvelon::metamodel::native {
class Instance;
}

namespace Tarvelon::metamodel::native::validation {

class Findings;

/// What must hold of every object of a class: one row of the table in Rules.cpp.
struct Rule {
  K7Q::RuleDescription description;
  /// Objects of the class with that table and below; null for all.
  const K7Q::IntrospectiveMethods& (*cls)();
  void (*check)(const Instance&, Findings&);
};

/// What can be known of the objects of a class before one is seen: a bit for each slot, and the rules.
struct ClassPlan {
  std::uint64_t requiredReferences = 0;
  /// Besides the name, which has rules of its own.
  std::uint64_t requiredTexts = 0;
  /// Optional, but an object without says nothing: the rows of Plans.cpp.
  std::uint64_t expected = 0;
  std::uint64_t enumerations = 0;
  std::uint64_t numbers = 0;
  /// Whether some property of some class can hold such an object.
  bool isHoldable = false;
  std::vector<const Rule*> rules;
};

/// The plans of all classes that a pass has met.
class Plans {
 public:
  const ClassPlan& of(const ClassData& cls) {
    if (cls.ordinal < mPlans.size() && mPlans[cls.ordinal]) return *mPlans[cls.ordinal];
    return make(cls);
  }

 private:
  const ClassPlan& make(const ClassData& cls);

  std::vector<std::unique_ptr<ClassPlan>> mPlans;
};

/// Why an object should have a value in one of its expected slots: what the object is without.
const char* reasonFor(const ClassData& cls, unsigned slot);

}  // namespace Tarvelon::metamodel::native::validation
