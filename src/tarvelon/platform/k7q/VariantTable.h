#pragma once

#include <cstddef>
#include <cstdint>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"

namespace K7Q::mi {

/// One view of a native object. Its address, with the marks of BindingSlot, is the view's id.
struct Variant {
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  /// The host object of the id; an id points here, so this stands first.
  ruvo::factory::basic::BindingSlot slot;
  /// Null once the object was retracted.
  ReferenceCountingIntf* object = nullptr;
  Deviant deviant;
  /// The object's next view, or the next record of the list that a record without object stands in.
  std::uint32_t next = kNone;
  std::uint32_t isImmutable = 0;
};
static_assert(sizeof(Variant) == 32 && offsetof(Variant, slot) == 0);

/// All views, in records that never move.
///
/// A native object knows the first of its records, and each record the next: there are one or two as a rule,
/// so an id is found by walking, without hashing. A record whose object goes while a host object is bound to
/// it waits in a list of its own until that host object has gone too; only then is its address given out
/// again. Threads: one at a time.
class VariantTable {
 public:
  constexpr VariantTable() noexcept = default;
  VariantTable(const VariantTable&) = delete;
  VariantTable& operator=(const VariantTable&) = delete;

  /// Throws bedrock::core::except::bad_alloc for a view that is new when there is no room for it.
  void* idOf(const ReferenceCountingIntf& object, Deviant deviant, bool isImmutable);
  void retract(const ReferenceCountingIntf& object) noexcept;
  static VariantInfo infoOf(const void* id) noexcept {
    using ruvo::factory::basic::BindingSlot;
    if (!BindingSlot::isSlotted(id)) return {};
    const auto* variant = reinterpret_cast<const Variant*>(BindingSlot::of(id));
    return {variant->object, variant->deviant};
  }

  /// How many records there are, used and unused.
  std::size_t capacity() const noexcept { return mCapacity; }

 private:
  static constexpr std::uint32_t kChunkBits = 10;
  static constexpr std::uint32_t kChunkSize = 1U << kChunkBits;

  Variant& at(std::uint32_t index) const noexcept {
    return mChunks[index >> kChunkBits][index & (kChunkSize - 1)];
  }
  std::uint32_t take();
  void give(std::uint32_t index) noexcept;
  void sweepRetired() noexcept;
  void grow();

  // Never freed: a host may ask for an id until the process ends.
  Variant** mChunks = nullptr;
  std::uint32_t mChunkRoom = 0;
  std::uint32_t mCapacity = 0;
  std::uint32_t mUsed = 0;
  std::uint32_t mFree = Variant::kNone;
  std::uint32_t mRetired = Variant::kNone;
  std::uint32_t mRetiredCount = 0;
  /// A sweep costs as much as there are retired records: it waits until there are twice as many as the last
  /// one left.
  std::uint32_t mSweepAt = kChunkSize / 2;
};

}  // namespace K7Q::mi
