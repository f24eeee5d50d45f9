#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <typeinfo>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/words/Referrers.h"
#include "tarvelon/platform/model/words/Room.h"
#include "tarvelon/platform/model/words/Word.h"

namespace Tarvelon::metamodel::native {

class NativeModel;

/// A model object of any class.
///
/// An object is 72 bytes in the InstanceIndex of its model. It has a separate block of memory if it has more
/// than two values.
///
/// Storage:   Only values that were set take memory. The class gives each of its stored properties a slot
///            (ClassData). One bit for each slot says whether the slot has a value. The words of the present
///            values are stored side by side, in slot order.
/// Ownership: The model owns its objects. The first handle on an object adds a reference to the model;
///            releasing the last handle removes it. If an object is destroyed, or its model closed, while it
///            still has handles, the object stays as a shell without values. Releasing the last handle frees
///            the shell.
/// Changes:   put() and remove() only store a word. Links.h keeps owners, referrers and opposites consistent.
class Instance final : public K7Q::NSInterface::ClassObjectIntf {
 public:
  static constexpr unsigned kMaxSlots = ClassData::kMaxSlots;
  /// The slot in which a referenced object keeps the set of its referrers.
  static constexpr unsigned kReferrerSlot = kMaxSlots;

  Instance(NativeModel& model, const ClassData& cls, std::uint32_t number) noexcept
      : mNumber(number), mClass(&cls), mModel(&model) {}
  ~Instance() override;

  void addRef() const override;
  void release() const override;
  int numRef() const override { return mReferences; }
  /// Returns the object as a ClassObjectIntf if the tag is that of its class, of a base class or of an
  /// interface that the class implements.
  void* cast(K7Q::CooperativeVisitor::TagPair tag) override;
  const ruvo::InternedName& getRuvoName(bool immutable) const override;
  bool isValid(K7Q::Deviant) const override { return isAlive(); }
  K7Q::ImmutableType getMetaType(K7Q::Deviant deviant) const override;
  void destroy(K7Q::Deviant deviant) override;
  K7Q::Model getModel(K7Q::Deviant deviant) const override;

  bool isAlive() const noexcept { return (mState & (kGone | kDeleted)) == 0; }
  /// Whether the object was destroyed but the journal keeps it, so that an undo can restore it.
  bool isDeleted() const noexcept { return (mState & kDeleted) != 0; }
  void markDeleted() noexcept { mState |= kDeleted; }
  void restore() noexcept { mState &= ~kDeleted; }
  const ClassData& cls() const noexcept { return *mClass; }
  NativeModel& model() const noexcept { return *mModel; }
  /// The place of the object in its model's index. The number does not change while the object exists and is
  /// reused afterwards.
  std::uint32_t number() const noexcept { return mNumber; }

  Instance* owner() const noexcept { return mOwner; }
  /// The slot of the owner that contains the object. REQUIRES: the object has an owner.
  unsigned ownerSlot() const noexcept { return (mState >> kOwnerShift) & 0xFF; }
  void setOwner(Instance* owner, unsigned slot) noexcept {
    noteChange();
    mOwner = owner;
    mState = (mState & ~(std::uint64_t{0xFF} << kOwnerShift)) | (std::uint64_t{slot} << kOwnerShift);
  }

  /// Whether a value, a list or the owner of the object was changed since forgetChange(). A change that was
  /// undone counts as a change.
  bool hasChanged() const noexcept { return (mState & kChanged) != 0; }
  void noteChange() noexcept { mState |= kChanged; }
  void forgetChange() noexcept { mState &= ~kChanged; }

  /// The bit mask of the slots that have a value.
  std::uint64_t presence() const noexcept { return mState & kPresence; }
  bool has(unsigned slot) const noexcept { return (mState >> slot & 1) != 0; }
  /// The word in a slot, null if the slot has no value. The next put(), remove() or reserve...() invalidates
  /// the pointer.
  const Word* find(unsigned slot) const noexcept {
    const std::uint64_t bit = std::uint64_t{1} << slot;
    return (mState & bit) != 0 ? words() + std::popcount(mState & (bit - 1)) : nullptr;
  }
  Word* find(unsigned slot) noexcept { return const_cast<Word*>(std::as_const(*this).find(slot)); }
  /// Makes room for `count` more values that steps will put. Only the reserve...() functions can fail.
  void reserve(unsigned count);
  /// Makes room for a word that is put without a step and is never removed. If the model has a journal, this
  /// room is in addition to the free room, which an undo may need.
  [[nodiscard]] LastingRoom reserveLasting();
  /// Puts a word without a step. REQUIRES: the slot has no value, and `room` was reserved for this object.
  void put(unsigned slot, Word word, LastingRoom /*room*/) noexcept { putWord(slot, word); }
  /// Puts the word of a step. REQUIRES: the slot has a value, or room() > 0.
  void put(unsigned slot, Word word, StepRoom /*room*/) noexcept { putWord(slot, word); }
  /// REQUIRES: the slot has a value.
  void remove(unsigned slot, StepRoom room) noexcept;

  /// How many more values can be put without allocating.
  unsigned room() const noexcept { return capacity() - count(); }

  /// Makes room for one more referrer. From the first call on, the object keeps a word for its referrers.
  void reserveReferrer();
  /// REQUIRES: reserveReferrer().
  void addReferrer(Referrer referrer) noexcept;
  /// If `keepsRoom` is true, the freed room stays, so that the referrer can be added again without
  /// allocating.
  void removeReferrer(Referrer referrer, bool keepsRoom = false) noexcept;
  bool isReferredBy(Referrer referrer) const noexcept;

  /// Whether the object is marked as being destroyed. setDying() only sets the mark. markDying() sets the
  /// mark and clears the owner. From then on, the member of the owner holds the next object of a list: the
  /// marked objects form a linked list.
  bool isDying() const noexcept { return (mState & kDying) != 0; }
  void setDying(bool isDying) noexcept { mState = isDying ? mState | kDying : mState & ~kDying; }
  void markDying() noexcept {
    mState |= kDying;
    mOwner = nullptr;
  }
  Instance* nextDying() const noexcept { return mOwner; }
  void setNextDying(Instance* next) noexcept { mOwner = next; }
  /// Drops all values and turns the object into a shell. A shell without handles is freed at once.
  void expire() noexcept;
  bool hasExpired() const noexcept { return (mState & kGone) != 0; }

 private:
  static constexpr std::uint64_t kPresence = (std::uint64_t{1} << 48) - 1;
  static constexpr unsigned kOwnerShift = 48;
  static constexpr std::uint64_t kExternal = std::uint64_t{1} << 56;
  static constexpr std::uint64_t kGone = std::uint64_t{1} << 57;
  static constexpr std::uint64_t kDying = std::uint64_t{1} << 58;
  static constexpr std::uint64_t kDeleted = std::uint64_t{1} << 59;
  static constexpr std::uint64_t kChanged = std::uint64_t{1} << 60;
  static constexpr unsigned kInline = 2;

  bool isExternal() const noexcept { return (mState & kExternal) != 0; }
  const Word* words() const noexcept { return isExternal() ? mWords[0].words : mWords; }
  Word* words() noexcept { return isExternal() ? mWords[0].words : mWords; }
  unsigned count() const noexcept { return static_cast<unsigned>(std::popcount(presence())); }
  unsigned capacity() const noexcept {
    return isExternal() ? static_cast<unsigned>(mWords[1].bits) : kInline;
  }
  void grow(unsigned capacity);
  void putWord(unsigned slot, Word word) noexcept;
  void dropValues() noexcept;

  mutable std::int32_t mReferences = 0;
  std::uint32_t mNumber;
  const ClassData* mClass;
  NativeModel* mModel;
  Instance* mOwner = nullptr;
  std::uint64_t mState = 0;
  /// The values, if there is room for them here. Otherwise a pointer to the values and their capacity.
  Word mWords[kInline] = {};
};
static_assert(sizeof(Instance) == 72);

/// How many objects exist in all models, shells included. Leak tests compare this number before and after.
TARVELON_API std::size_t liveObjects() noexcept;

/// Returns the model object behind an interface, or null if the interface is not one of an Instance.
inline Instance* asInstance(K7Q::NSInterface::ObjectIntf* object) noexcept {
  // One type_info exists, since the class is hidden: comparing its address is enough.
  return object && &typeid(*object) == &typeid(Instance) ? static_cast<Instance*>(object) : nullptr;
}
inline const Instance* asInstance(const K7Q::NSInterface::ObjectIntf* object) noexcept {
  return asInstance(const_cast<K7Q::NSInterface::ObjectIntf*>(object));
}

}  // namespace Tarvelon::metamodel::native
