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

/// A model object of any class: 72 bytes in its model's InstanceIndex, and a block of memory when it has more
/// than two values.
///
/// Only values that were set take room. Each class gives its stored properties slots (ClassData); a bit for
/// each slot says whether there is a value, and the words of those that have one stand packed in slot order.
///
/// Ownership: the model owns its objects. The first handle on an object takes a reference on the model, the
///            last one drops it. An object that was destroyed, or whose model was closed, while handles are
///            left stays as a shell without values, which the last handle frees.
/// Changes:   put() and remove() only store. What a change means for owners and referrers is the business of
///            Links.h.
class Instance final : public K7Q::NSInterface::ClassObjectIntf {
 public:
  static constexpr unsigned kMaxSlots = ClassData::kMaxSlots;
  /// Where an object that is referred to keeps its referrers.
  static constexpr unsigned kReferrerSlot = kMaxSlots;

  Instance(NativeModel& model, const ClassData& cls, std::uint32_t number) noexcept
      : mNumber(number), mClass(&cls), mModel(&model) {}
  ~Instance() override;

  void addRef() const override;
  void release() const override;
  int numRef() const override { return mReferences; }
  /// The object as a ClassObjectIntf, for the tags of its class, of every class above and of the interfaces
  /// it has.
  void* cast(K7Q::CooperativeVisitor::TagPair tag) override;
  const ruvo::InternedName& getRuvoName(bool immutable) const override;
  bool isValid(K7Q::Deviant) const override { return isAlive(); }
  K7Q::ImmutableType getMetaType(K7Q::Deviant deviant) const override;
  void destroy(K7Q::Deviant deviant) override;
  K7Q::Model getModel(K7Q::Deviant deviant) const override;

  bool isAlive() const noexcept { return (mState & (kGone | kBuried)) == 0; }
  /// Whether it is gone for everybody but the journal, which may bring it back.
  bool isBuried() const noexcept { return (mState & kBuried) != 0; }
  void bury() noexcept { mState |= kBuried; }
  void revive() noexcept { mState &= ~kBuried; }
  const ClassData& cls() const noexcept { return *mClass; }
  NativeModel& model() const noexcept { return *mModel; }
  /// The object's place in its model's index: stable while it lives, then given to another.
  std::uint32_t number() const noexcept { return mNumber; }

  Instance* owner() const noexcept { return mOwner; }
  /// The slot of the owner that holds the object. REQUIRES: it has an owner.
  unsigned ownerSlot() const noexcept { return (mState >> kOwnerShift) & 0xFF; }
  void setOwner(Instance* owner, unsigned slot) noexcept {
    mOwner = owner;
    mState = (mState & ~(std::uint64_t{0xFF} << kOwnerShift)) | (std::uint64_t{slot} << kOwnerShift);
  }

  /// A bit for each slot that has a value.
  std::uint64_t presence() const noexcept { return mState & kPresence; }
  bool has(unsigned slot) const noexcept { return (mState >> slot & 1) != 0; }
  /// Null when the slot has no value. A pointer that the next put() or remove() makes stale.
  const Word* find(unsigned slot) const noexcept {
    const std::uint64_t bit = std::uint64_t{1} << slot;
    return (mState & bit) != 0 ? words() + std::popcount(mState & (bit - 1)) : nullptr;
  }
  Word* find(unsigned slot) noexcept { return const_cast<Word*>(std::as_const(*this).find(slot)); }
  /// Makes room for `count` more values that steps put. This and reserveLasting() can fail, the others
  /// cannot.
  void reserve(unsigned count);
  /// Makes room for a word that is put without a step and stays. While the model keeps a journal, that is
  /// room in addition to what there is, which the journal may need.
  [[nodiscard]] LastingRoom reserveLasting();
  /// Puts a word without a step. REQUIRES: the slot has no value; the room was reserved for this object.
  void put(unsigned slot, Word word, LastingRoom /*room*/) noexcept { putWord(slot, word); }
  /// Puts the word of a step. REQUIRES: the slot has a value, or there is room for one more.
  void put(unsigned slot, Word word, StepRoom /*room*/) noexcept { putWord(slot, word); }
  /// REQUIRES: the slot has a value.
  void remove(unsigned slot, StepRoom room) noexcept;

  /// How many more values fit.
  unsigned room() const noexcept { return capacity() - count(); }

  /// From the first referrer on, the object keeps the word for them.
  void reserveReferrer();
  /// REQUIRES: reserveReferrer().
  void addReferrer(Referrer referrer) noexcept;
  /// With `keepsRoom` as many can come back without a reserveReferrer().
  void removeReferrer(Referrer referrer, bool keepsRoom = false) noexcept;
  bool isReferredBy(Referrer referrer) const noexcept;

  /// Marks what is about to be destroyed, and links it up: the owner's place serves as the link.
  bool isDying() const noexcept { return (mState & kDying) != 0; }
  void setDying(bool isDying) noexcept { mState = isDying ? mState | kDying : mState & ~kDying; }
  void markDying() noexcept {
    mState |= kDying;
    mOwner = nullptr;
  }
  Instance* nextDying() const noexcept { return mOwner; }
  void setNextDying(Instance* next) noexcept { mOwner = next; }
  /// Drops every value and turns the object into a shell, which is freed at once when no handle is left on
  /// it.
  void expire() noexcept;
  bool hasExpired() const noexcept { return (mState & kGone) != 0; }

 private:
  static constexpr std::uint64_t kPresence = (std::uint64_t{1} << 48) - 1;
  static constexpr unsigned kOwnerShift = 48;
  static constexpr std::uint64_t kExternal = std::uint64_t{1} << 56;
  static constexpr std::uint64_t kGone = std::uint64_t{1} << 57;
  static constexpr std::uint64_t kDying = std::uint64_t{1} << 58;
  static constexpr std::uint64_t kBuried = std::uint64_t{1} << 59;
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
  /// The values or, when they are more, where they stand and how many there is room for.
  Word mWords[kInline] = {};
};
static_assert(sizeof(Instance) == 72);

/// How many objects there are in all models, shells included: leak tests compare it before and after.
TARVELON_API std::size_t liveObjects() noexcept;

/// The model object behind an interface, null when it is none of ours.
inline Instance* asInstance(K7Q::NSInterface::ObjectIntf* object) noexcept {
  // One type_info exists, since the class is hidden: comparing its address is enough.
  return object && &typeid(*object) == &typeid(Instance) ? static_cast<Instance*>(object) : nullptr;
}
inline const Instance* asInstance(const K7Q::NSInterface::ObjectIntf* object) noexcept {
  return asInstance(const_cast<K7Q::NSInterface::ObjectIntf*>(object));
}

}  // namespace Tarvelon::metamodel::native
