#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "tarvelon/platform/model/audit/Unnoticed.h"
#include "tarvelon/platform/model/changes/StepText.h"
#include "tarvelon/platform/model/changes/Steps.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/objects/Slots.h"

namespace Tarvelon::metamodel::native {

/// The exception of an audit, with the sentence described in Audit.h.
struct Violation {
  std::string text;
};

[[noreturn]] void violate(std::string_view invariant, const std::string& what);

/// One audit of a model. Each check function raises Violation for the first invariant that does not hold.
class Auditor {
 public:
  explicit Auditor(const NativeModel& model) noexcept : mModel(model) {}

  void checkAll();
  /// Checks the objects of the given steps, without reading long lists.
  void checkSteps(std::span<const Step> steps);
  /// How many objects, values, elements and steps were read.
  std::uint64_t cost() const noexcept { return mCost; }

 private:
  void checkNumbers();
  void checkFreePlaces();
  void checkClasses();

  void checkOwners();
  void checkOwned(const Instance& owner, Instance& held, unsigned slot);
  void checkObjects();
  void checkReferences(const Instance& object, std::uint32_t longest);
  void checkReference(const Instance& object, unsigned slot, const Instance& element);
  void checkOpposite(const Instance& object, unsigned slot, const Instance& element);
  void checkReferrers(const Instance& object);
  void checkValues(const Instance& object);
  void countText(const Instance& object, Word word);

  void checkNames();
  void checkIds();
  void checkJournal();
  void checkHistory(const Journal& journal);
  void checkBuried(const Journal* journal);

  bool isThere(const Instance* object) const noexcept;

  const NativeModel& mModel;
  std::uint64_t mCost = 0;
  /// Counted since checkObjects() was last begun.
  std::uint64_t mReferences = 0;
  std::uint64_t mReferrers = 0;
  UnnoticedMap<const K7Q::NSInterface::StringIntf*, std::int64_t> mTexts;
};

}  // namespace Tarvelon::metamodel::native
