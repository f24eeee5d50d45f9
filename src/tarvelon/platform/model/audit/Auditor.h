#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "tarvelon/platform/model/audit/Unnoticed.h"
#include "tarvelon/platform/model/changes/Steps.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/objects/Slots.h"

namespace Tarvelon::metamodel::native {

/// What an auditor raises: the sentence of Audit.h.
struct Violation {
  std::string text;
};

[[noreturn]] void violate(std::string_view invariant, const std::string& what);

/// An object and a property as an audit names them. They may belong to a model that is broken.
std::string shownObject(const Instance* object);
std::string shownSlot(const Instance& object, unsigned slot);

/// One look at a model. Each function raises Violation for the first invariant that does not hold.
class Auditor {
 public:
  explicit Auditor(const NativeModel& model) noexcept : mModel(model) {}

  void checkAll();
  /// Those objects of the steps that are there, without going through long lists.
  void checkSteps(std::span<const Step> steps);
  /// How much was looked at: objects, values, elements, steps.
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
  /// Of the objects that were checked since the last call of checkObjects() began.
  std::uint64_t mReferences = 0;
  std::uint64_t mReferrers = 0;
  UnnoticedMap<const K7Q::NSInterface::StringIntf*, std::int64_t> mTexts;
};

}  // namespace Tarvelon::metamodel::native
