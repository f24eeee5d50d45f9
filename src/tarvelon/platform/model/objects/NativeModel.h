#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/InstanceIndex.h"

namespace Tarvelon::metamodel::native {

class Journal;
class NameIndex;

/// A model: owns its objects, in a table by their numbers.
///
/// Lifetime: counted by handles on the model and by objects that have handles; the last of them frees it with
///           all objects. close() frees the objects at once, except for shells that handles still hold.
/// Sources:  the functions for the journal are in changes/, those for the index of names in names/, those of
///           the boundary's interface and the model's life in views/.
class NativeModel final : public K7Q::NSInterface::ModelIntf {
 public:
  static K7Q::Model make(const std::u16string& uri);
  /// The model behind a handle. Raises kNullReference for an empty one and a closed model.
  static NativeModel& require(const K7Q::Model& model);

  void addRef() const override { ++mReferences; }
  void release() const override {
    if (--mReferences == 0) delete this;
  }
  int numRef() const override { return mReferences; }
  void* cast(K7Q::CooperativeVisitor::TagPair tag) override;
  const ruvo::InternedName& getRuvoName(bool immutable) const override;
  bool isValid(K7Q::Deviant) const override { return !mIsClosed.load(std::memory_order_relaxed); }
  K7Q::ImmutableType getMetaType(K7Q::Deviant deviant) const override;
  void setUri(K7Q::Deviant deviant, std::u16string_view uri) override;
  std::u16string getUri(K7Q::Deviant deviant) const override;
  void close() override;
  bool isClosed() const noexcept { return mIsClosed; }
  /// Of a closed model, too.
  std::u16string_view uri() const noexcept { return mUri; }

  /// A new object of the class, with room for that many values, owned by nobody.
  Instance& add(const ClassData& cls, unsigned values);
  /// Ends an object that is linked to no other any more.
  void expire(Instance& instance) noexcept;
  /// Frees the storage of an expired object that nobody holds.
  void free(Instance& instance) noexcept { mInstances.free(instance); }
  Instance& instance(std::uint32_t number) const noexcept { return *mInstances.at(number); }
  const InstanceIndex& instances() const noexcept { return mInstances; }
  /// Calls visit(Instance&) for each object that is not gone, in an order that changes only where objects
  /// come and go. It must not make or destroy any.
  template <class Visit>
  void forEachInstance(Visit visit) const {
    mInstances.forEach([&visit](Instance& instance) {
      if (instance.isAlive()) visit(instance);
    });
  }

  /// The right to change objects without steps, which holds until a journal is begun; none while there is
  /// one.
  std::optional<StepRoom> unjournaled() const noexcept {
    return mJournal ? std::nullopt : std::optional(StepRoom());
  }

  /// What the library of files has to say of the file that the model came from, which knows its kind. It goes
  /// with the model. Null for nothing.
  void keepReport(std::shared_ptr<const void> report) noexcept { mReport = std::move(report); }
  const void* report() const noexcept { return mReport.get(); }

  /// Null while nobody asks for steps.
  Journal* journal() const noexcept { return mJournal.get(); }
  Journal& requireJournal();
  /// Lets listeners go that have left, and gives up a journal that nobody asks any more. Does nothing while
  /// listeners are told of a change.
  void dropIdleJournal() noexcept;

  /// The index of names, built when it is asked for and not complete.
  const NameIndex& names();
  void noteNameOf(const Instance& object, bool hadName) noexcept {
    if (mNames) enterName(object, hadName);
  }
  void noteNamesOf(const Instance& object) noexcept {
    if (mNames) enterOwner(object);
  }

  /// Pays for the next look of an audit at the whole model. True when that is paid.
  bool payForAudit(std::uint64_t paid) noexcept { return (mAuditPaid += paid) >= mAuditPrice; }
  void setAuditPrice(std::uint64_t price) noexcept {
    mAuditPaid = 0;
    mAuditPrice = price;
  }

  /// Says that what `owner` holds has changed.
  void noteOwnership(const Instance& owner) noexcept { ++mStamps[owner.number() % kStamps]; }
  /// Differs from before when what `owner` holds has changed, and now and then when it has not.
  std::uint32_t ownershipStamp(const Instance& owner) const noexcept {
    return mStamps[owner.number() % kStamps];
  }

 private:
  friend class Auditor;
  explicit NativeModel(std::u16string uri);
  ~NativeModel() override;
  void enterName(const Instance& object, bool hadName) noexcept;
  void enterOwner(const Instance& object) noexcept;
  void expireAll() noexcept;

  static constexpr std::uint32_t kStamps = 64;

  mutable std::int32_t mReferences = 0;
  /// Any thread may ask whether the model is open.
  std::atomic<bool> mIsClosed = false;
  InstanceIndex mInstances;
  std::unique_ptr<Journal> mJournal;
  std::unique_ptr<NameIndex> mNames;
  std::array<std::uint32_t, kStamps> mStamps{};
  std::u16string mUri;
  std::uint64_t mAuditPaid = 0;
  std::uint64_t mAuditPrice = 0;
  std::shared_ptr<const void> mReport;
};

}  // namespace Tarvelon::metamodel::native
