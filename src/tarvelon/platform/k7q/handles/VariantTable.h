#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"

namespace K7Q::mi {

/// One view of a native object. The address of the record, combined with the mark bits of BindingSlot, is the
/// view's id.
struct Variant {
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  /// Holds the host object of the id. An id points to this member, so it must be the first.
  ruvo::factory::basic::BindingSlot slot;
  /// Null after the object was retracted.
  ReferenceCountingIntf* object = nullptr;
  Deviant deviant;
  /// The index of the object's next view. For a record without an object: the next record in its free list.
  std::uint32_t next = kNone;
  std::uint32_t isImmutable = 0;
};
static_assert(sizeof(Variant) == 32 && offsetof(Variant, slot) == 0);

/// The table of all views. Records never move.
///
/// The views of a native object are a linked list, and the object stores the index of the first one. An
/// object usually has one or two views, so the list is searched without hashing. If an object is retracted
/// while a host object is still bound to one of its views, the record goes into a list of retired records. It
/// is reused only after that host object is destroyed.
///
/// Threads: any. The views of an object belong to the thread that uses the object; the views of a shared
/// object are protected by a lock. Each thread has its own free records and takes them from the table in
/// blocks. Surplus records of a thread, and all its free records when it ends, go back to the table.
class VariantTable {
 public:
  constexpr VariantTable() noexcept = default;
  VariantTable(const VariantTable&) = delete;
  VariantTable& operator=(const VariantTable&) = delete;

  static VariantTable& instance() noexcept;

  /// Finds or creates a view. Throws bedrock::core::except::bad_alloc if there is no memory for a new one.
  void* idOf(const ReferenceCountingIntf& object, Deviant deviant, bool isImmutable);
  void retract(const ReferenceCountingIntf& object) noexcept;
  static VariantInfo infoOf(const void* id) noexcept {
    using ruvo::factory::basic::BindingSlot;
    if (!BindingSlot::isSlotted(id)) return {};
    const auto* variant = reinterpret_cast<const Variant*>(BindingSlot::of(id));
    return {variant->object, variant->deviant};
  }

  /// The number of records, used and unused.
  std::size_t capacity() const noexcept { return mCapacity.load(std::memory_order_relaxed); }

 private:
  static constexpr std::uint32_t kChunkBits = 10;
  static constexpr std::uint32_t kChunkSize = 1U << kChunkBits;
  /// The number of new records that a thread takes at once.
  static constexpr std::uint32_t kGranted = 128;
  /// A thread with more unused records than this returns them to the table. A thread can collect many,
  /// because it may retract views that other threads have created.
  static constexpr std::uint32_t kKept = 4 * kChunkSize;

  /// A linked list of records.
  struct List {
    std::uint32_t first = Variant::kNone;
    std::uint32_t count = 0;
  };
  /// The unused records of a thread.
  struct Stock {
    List free;
    List retired;
    /// The records from `next` to `end` have never been used.
    std::uint32_t next = 0;
    std::uint32_t end = 0;
    /// The number of retired records at which the next sweep starts: twice the number that the last sweep
    /// left, because the cost of a sweep is linear in this number.
    std::uint32_t sweepAt = kChunkSize / 2;
    /// Whether inherit() is registered to run at the thread's end.
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
  // Neither the chunks nor former arrays of chunks are freed: hosts may use ids until the process ends.
  std::atomic<Variant**> mChunks = nullptr;
  std::uint32_t mChunkRoom = 0;
  std::atomic<std::uint32_t> mCapacity = 0;
  /// All records below this index have been given to threads.
  std::uint32_t mGrantedTo = 0;
  /// The records that threads have given back.
  Stock mLeft;
  /// Locked while views of shared objects are found or added.
  std::mutex mSharedGuard;
};

}  // namespace K7Q::mi
