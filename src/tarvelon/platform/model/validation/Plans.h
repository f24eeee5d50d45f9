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

/// A rule: what must hold for every object of a class. Each is one row of the table in Rules.cpp.
struct Rule {
  K7Q::RuleDescription description;
  /// The rule checks objects of this class and its subclasses. Null for all objects.
  const K7Q::IntrospectiveMethods& (*cls)();
  void (*check)(const Instance&, Findings&);
};

/// Data that is computed once for each class: bit masks of slots, and the rules that apply.
struct ClassPlan {
  std::uint64_t requiredReferences = 0;
  /// Without the name, which has rules of its own.
  std::uint64_t requiredTexts = 0;
  /// Slots that are optional, but without which an object is incomplete: the rows of Plans.cpp.
  std::uint64_t expected = 0;
  std::uint64_t enumerations = 0;
  std::uint64_t numbers = 0;
  /// Whether a property of some class can contain objects of this class.
  bool isHoldable = false;
  std::vector<const Rule*> rules;
};

/// The plans of all classes that a validation pass has met.
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

/// What is wrong with an object that has no value in one of its expected slots.
const char* reasonFor(const ClassData& cls, unsigned slot);

}  // namespace Tarvelon::metamodel::native::validation
