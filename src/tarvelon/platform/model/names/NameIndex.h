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

/// Finds objects by name below the object that names them: the nearest holder that has a name.
///
/// An entry says under which name an object once stood, and is checked against the object when it is met: so
/// nothing need be taken out when an object is renamed, moved or destroyed, and one that comes back to where
/// it stood finds its entry there. Entries that say nothing any more go with the index, of which a new one is
/// built when it is full.
/// Cost:    some 16 bytes a name. Constant time to enter and to find one, however many objects there are.
/// What
///          takes time is to wait for memory: so a bucket is one line of a cache, and the objects on a path
///          are fetched together.
/// Failure: the constructor and find() allocate.
class NameIndex {
 public:
  /// The index of all objects of the model.
  explicit NameIndex(const NativeModel& model);
  NameIndex(const NameIndex&) = delete;
  NameIndex& operator=(const NameIndex&) = delete;

  /// The object has another name. One that had none, or has none any more, names others than before.
  void noteName(const Instance& object, bool hadName) noexcept;
  /// The object has another owner: it stands elsewhere, or for one without a name the nearest it holds do.
  void noteOwner(const Instance& object) noexcept;
  /// False when there was no room for a name, or too much to note: then an index is to be built anew.
  bool isComplete() const noexcept { return mIsComplete; }

  /// Whether it has an entry that says where the object stands, which is named.
  bool knows(const Instance& object) const noexcept;

  /// What a path of names leads to from the top, where each of them is a name that stands once: null if one
  /// does not, or perhaps not. Allocates nothing.
  Instance* findPath(std::u16string_view path) const noexcept;
  /// The objects of that name below `parent`, null for those that nothing named holds, in owner order.
  std::vector<Instance*> find(const Instance* parent, std::u16string_view name) const;
  /// The first of them, null if there is none.
  Instance* findFirst(const Instance* parent, std::u16string_view name) const;

 private:
  struct Entry {
    std::uint32_t tag;  ///< a part of the hash
    std::uint32_t number;
  };
  /// Entries that share a place; where there are more, the bucket that still has room stands second.
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

  /// So many empty buckets that a hash leads to, and further ones behind those that are full.
  void allocate(std::uint64_t first, std::uint64_t further);
  void enterAll();
  Bucket& bucketOf(std::uint64_t hash) const noexcept {
    return mBuckets[static_cast<std::uint32_t>((hash >> 32) * mFirstCount >> 32)];
  }
  /// The next one of those that share a place, null if there is none.
  const Bucket* behind(const Bucket& bucket) const noexcept {
    return bucket.next == kNone ? nullptr : &mBuckets[bucket.next];
  }
  /// Objects of that name that have an entry below `parent`. A single one stands there.
  std::vector<Instance*> candidates(const Instance* parent, std::u16string_view name) const;
  template <class Visit>
  void forEach(const Instance* parent, std::u16string_view name, Visit visit) const;
  /// The number of the only entry of that hash, kNone if there is none or another.
  std::uint32_t onlyNumber(std::uint64_t hash) const noexcept;
  bool stand(std::span<const std::u16string_view> names, std::span<Instance* const> objects,
             const Instance* parent) const noexcept;
  /// REQUIRES: the object is named, and `holder` is its naming holder.
  void enter(const Instance& object, const Instance* holder) noexcept;
  void enterNamed(const Instance& object) noexcept;
  bool enterBelow(const Instance& object) noexcept;

  const NativeModel& mModel;
  std::unique_ptr<std::byte[], Free> mStorage;
  /// Those that a hash leads to, then the others.
  Bucket* mBuckets = nullptr;
  std::uint32_t mFirstCount = 0;
  std::uint32_t mCapacity = 0;
  std::uint32_t mUsed = 0;
  bool mIsComplete = true;
};

}  // namespace Tarvelon::metamodel::native
