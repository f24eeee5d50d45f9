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

/// A model. It owns its objects, which are stored in a table by their numbers.
///
/// Lifetime: The model is reference counted: by the handles on the model and by the objects that have
///           handles. The last reference frees the model and all its objects. close() frees the objects at
///           once; objects that still have handles stay as shells.
/// Sources:  Functions that need the journal are in changes/, those that need the index of names in names/.
///           Functions of the boundary interface, creation and destruction are in views/.
class NativeModel final : public K7Q::NSInterface::ModelIntf {
 public:
  static K7Q::Model make(const std::u16string& uri);
  /// Returns the model behind a handle. Raises K7Q::Exception with the text kNullReference for a null handle
  /// and for a closed model.
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
  /// The URI, also of a closed model.
  std::u16string_view uri() const noexcept { return mUri; }

  /// Creates an object of the class without an owner, with room for `values` values.
  Instance& add(const ClassData& cls, unsigned values);
  /// Ends an object. REQUIRES: no other object refers to it or contains it.
  void expire(Instance& instance) noexcept;
  /// Frees the storage of an expired object without handles.
  void free(Instance& instance) noexcept { mInstances.free(instance); }
  Instance& instance(std::uint32_t number) const noexcept { return *mInstances.at(number); }
  const InstanceIndex& instances() const noexcept { return mInstances; }
  /// Calls visit(Instance&) for each object that is not destroyed. The order of two objects does not change
  /// while both exist. `visit` must not create or destroy objects.
  template <class Visit>
  void forEachInstance(Visit visit) const {
    mInstances.forEach([&visit](Instance& instance) {
      if (instance.isAlive()) visit(instance);
    });
  }

  /// The permission to change objects without steps. It is valid until a journal is created. Empty if there
  /// is a journal.
  std::optional<StepRoom> unjournaled() const noexcept {
    return mJournal ? std::nullopt : std::optional(StepRoom());
  }

  /// Keeps the problems that the file library found when it loaded this model. Only that library knows their
  /// type. They are freed with the model. Null if there are none.
  void keepReport(std::shared_ptr<const void> report) noexcept { mReport = std::move(report); }
  const void* report() const noexcept { return mReport.get(); }
  /// Keeps the files from which the file library loaded this model, in the same way. A model into which
  /// loaded objects were copied has the files of their model, but does not own them.
  void keepSources(std::shared_ptr<const void> sources, bool areOwn = true) noexcept {
    mSources = std::move(sources);
    mOwnsSources = areOwn;
  }
  bool ownsSources() const noexcept { return mOwnsSources; }
  const void* sources() const noexcept { return mSources.get(); }
  const std::shared_ptr<const void>& sharedSources() const noexcept { return mSources; }

  /// The journal. Null while there is no transaction, history, listener or watch.
  Journal* journal() const noexcept { return mJournal.get(); }
  Journal& requireJournal();
  /// Frees listeners that were removed, then the journal if nothing needs it any more. Does nothing while
  /// listeners are being called.
  void dropIdleJournal() noexcept;

  /// The index of names. It is built here if it does not exist or is incomplete.
  const NameIndex& names();
  void noteNameOf(const Instance& object, bool hadName) noexcept {
    if (mNames) enterName(object, hadName);
  }
  void noteNamesOf(const Instance& object) noexcept {
    if (mNames) enterOwner(object);
  }

  /// Adds `paid` to the work that is saved up for the next audit of the whole model. Returns true when it
  /// covers the cost of that audit.
  bool addAuditWork(std::uint64_t paid) noexcept { return (mAuditWork += paid) >= mAuditCost; }
  void setAuditCost(std::uint64_t cost) noexcept {
    mAuditWork = 0;
    mAuditCost = cost;
  }

  /// Records that the set of objects that `owner` contains has changed.
  void noteOwnership(const Instance& owner) noexcept { ++mStamps[owner.number() % kStamps]; }
  /// Differs from an earlier result if the set of objects that `owner` contains has changed. It may also
  /// differ without such a change, since several owners share one stamp.
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
  /// Atomic, since any thread may ask whether the model is open.
  std::atomic<bool> mIsClosed = false;
  InstanceIndex mInstances;
  std::unique_ptr<Journal> mJournal;
  std::unique_ptr<NameIndex> mNames;
  std::array<std::uint32_t, kStamps> mStamps{};
  std::u16string mUri;
  std::uint64_t mAuditWork = 0;
  std::uint64_t mAuditCost = 0;
  std::shared_ptr<const void> mReport;
  std::shared_ptr<const void> mSources;
  bool mOwnsSources = false;
};

}  // namespace Tarvelon::metamodel::native
