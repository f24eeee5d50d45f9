#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>

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
/// again.
///
/// Threads: any. The views of an object belong to the thread that uses the object, those of a shared one
///          stand behind a lock. Free records belong to a thread, which gets many at once; what a thread
///          has too many of, or leaves when it ends, goes to the next that asks.
class VariantTable {
 public:
  constexpr VariantTable() noexcept = default;
  VariantTable(const VariantTable&) = delete;
  VariantTable& operator=(const VariantTable&) = delete;

  static VariantTable& instance() noexcept;

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
  std::size_t capacity() const noexcept { return mCapacity.load(std::memory_order_relaxed); }

 private:
  static constexpr std::uint32_t kChunkBits = 10;
  static constexpr std::uint32_t kChunkSize = 1U << kChunkBits;
  /// How many a thread gets at once.
  static constexpr std::uint32_t kGranted = 128;
  /// How many it keeps that nobody uses: what one thread makes another one may retract.
  static constexpr std::uint32_t kKept = 4 * kChunkSize;

  /// A list of records, through their own links.
  struct List {
    std::uint32_t first = Variant::kNone;
    std::uint32_t count = 0;
  };
  /// The records that a thread has at hand.
  struct Stock {
    List free;
    List retired;
    /// Those from `next` to `end` were never used.
    std::uint32_t next = 0;
    std::uint32_t end = 0;
    /// A sweep costs as much as there are retired records: it waits until there are twice as many as the last
    /// one left.
    std::uint32_t sweepAt = kChunkSize / 2;
    /// Whether the table gets it when the thread ends.
    bool isListed = false;
  };
  static TARVELON_THREAD_LOCAL Stock tStock;

  Variant& at(std::uint32_t index) const noexcept {
    Variant* const* chunks = mChunks.load(std::memory_order_acquire);
    return chunks[index >> kChunkBits][index & (kChunkSize - 1)];
  }
  void* find(const ReferenceCountingIntf& object, Deviant deviant, bool isImmutable) const noexcept;
  void* add(const ReferenceCountingIntf& object, Deviant deviant, bool isImmutable);
  std::uint32_t take();
  void put(List& list, std::uint32_t index) const noexcept;
  void move(List& from, List& to, std::uint32_t most = Variant::kNone) const noexcept;
  void sweep(Stock& stock) const noexcept;
  void fill(Stock& stock);
  void giveBack(Stock& stock) noexcept;
  void grow();
  static bool list(Stock& stock) noexcept;
  void inherit(Stock& stock) noexcept;

  std::mutex mGuard;
  // Never freed, nor are former arrays of them: a host may ask for an id until the process ends.
  std::atomic<Variant**> mChunks = nullptr;
  std::uint32_t mChunkRoom = 0;
  std::atomic<std::uint32_t> mCapacity = 0;
  /// Below it all were granted.
  std::uint32_t mGrantedTo = 0;
  /// Left by threads that have ended or had too many.
  Stock mLeft;
  /// Held for the views of shared objects.
  std::mutex mSharedGuard;
};

}  // namespace K7Q::mi
