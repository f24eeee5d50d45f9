#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/ut/Memory.h"

namespace Tarvelon::metamodel::native {

class Instance;
class NativeModel;

/// A hash table that finds objects by name and by naming holder. The naming holder of an object is its
/// nearest owner that has a name.
///
/// An entry says that an object once had a certain name and holder. Each lookup checks the entry against the
/// current state of the object. So renaming, moving and destroying objects need not remove entries, and an
/// object that is restored finds its entry again. Obsolete entries remain until the index is full; then a new
/// index is built.
///
/// Cost:    About 16 bytes for each name. Inserting and finding take constant time. Most of this time is
///          spent on waiting for memory; so a bucket is one cache line, and the objects of a path are
///          prefetched together.
/// Failure: The constructor and the find functions allocate; findPath() and the note functions do not.
class NameIndex {
 public:
  /// Builds the index of all objects of the model.
  explicit NameIndex(const NativeModel& model);
  NameIndex(const NameIndex&) = delete;
  NameIndex& operator=(const NameIndex&) = delete;

  /// Records that the object has another name. `hadName` says whether it had a name before; if it gains or
  /// loses its name, the objects below it get another naming holder.
  void noteName(const Instance& object, bool hadName) noexcept;
  /// Records that the object has another owner. If the object has no name, the nearest named objects below it
  /// are entered instead.
  void noteOwner(const Instance& object) noexcept;
  /// False if there was no room for an entry or too many objects to enter. The index must then be rebuilt.
  bool isComplete() const noexcept { return mIsComplete; }

  /// Whether the index has a current entry for the object. REQUIRES: the object has a name.
  bool knows(const Instance& object) const noexcept;

  /// Finds an object by a path of names from the root. Returns null if a name of the path is missing or not
  /// unique, or if this cannot be decided quickly. Allocates nothing.
  Instance* findPath(std::u16string_view path) const noexcept;
  /// Returns the objects with that name below `parent`, in the order of containment. `parent` is their naming
  /// holder, or null for objects without one.
  std::vector<Instance*> find(const Instance* parent, std::u16string_view name) const;
  /// Returns the first of these objects, null if there is none.
  Instance* findFirst(const Instance* parent, std::u16string_view name) const;

 private:
  struct Entry {
    std::uint32_t tag;  ///< the lower half of the hash
    std::uint32_t number;
  };
  /// Entries that share a bucket. If the first bucket is full, overflow buckets are chained to it; the one
  /// that has free places comes second.
  struct alignas(64) Bucket {
    static constexpr std::uint32_t kEntries = 7;
    Entry entries[kEntries];
    std::uint32_t used;
    std::uint32_t next;
    bool contains(const Entry& entry) const noexcept;
  };
  static_assert(sizeof(Bucket) == 64);
  struct Free {
    void operator()(void* storage) const noexcept { utFree(storage); }
  };
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

  /// Allocates `first` empty buckets, which are addressed by hash, and room for `further` overflow buckets.
  void allocate(std::uint64_t first, std::uint64_t further);
  void enterAll();
  Bucket& bucketOf(std::uint64_t hash) const noexcept {
    return mBuckets[static_cast<std::uint32_t>((hash >> 32) * mFirstCount >> 32)];
  }
  /// The next bucket in the chain, null at the end.
  const Bucket* behind(const Bucket& bucket) const noexcept {
    return bucket.next == kNone ? nullptr : &mBuckets[bucket.next];
  }
  /// The objects that have an entry for this name and parent. A single result is known to be below `parent`;
  /// several results must still be checked.
  std::vector<Instance*> candidates(const Instance* parent, std::u16string_view name) const;
  template <class Visit>
  void forEach(const Instance* parent, std::u16string_view name, Visit visit) const;
  /// The object number of the only entry with that hash. kNone if there is no entry or more than one.
  std::uint32_t onlyNumber(std::uint64_t hash) const noexcept;
  bool stand(std::span<const std::u16string_view> names, std::span<Instance* const> objects,
             const Instance* parent) const noexcept;
  /// Enters an object. REQUIRES: the object has a name, and `holder` is its naming holder.
  void enter(const Instance& object, const Instance* holder) noexcept;
  void enterNamed(const Instance& object) noexcept;
  bool enterBelow(const Instance& object) noexcept;

  const NativeModel& mModel;
  std::unique_ptr<std::byte[], Free> mStorage;
  /// The buckets addressed by hash, then the overflow buckets.
  Bucket* mBuckets = nullptr;
  std::uint32_t mFirstCount = 0;
  std::uint32_t mCapacity = 0;
  std::uint32_t mUsed = 0;
  bool mIsComplete = true;
};

}  // namespace Tarvelon::metamodel::native
