#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

#include "tarvelon/platform/hx/Sanitizer.h"
#include "tarvelon/platform/model/objects/Instance.h"

namespace Tarvelon::metamodel::native {

/// The storage of all objects of a model, addressed by number, and a list of the objects of each class in the
/// order of creation.
///
/// Objects are stored in chunks, in the order of their numbers. So an object is found by number in constant
/// time, and iterating over all objects reads memory sequentially. Free numbers are reused before new ones
/// are given out. An object keeps its number, so iterating by number always gives the existing objects in the
/// same order.
/// Cost: 5 bytes for each object besides the object itself, and 4 to 8 bytes in the list of its class.
class InstanceIndex {
 public:
  /// All objects whose class is exactly `cls`.
  struct ClassList {
    const ClassData* cls;
    /// Object numbers in the order of creation; kNone in place of an object that was removed.
    std::vector<std::uint32_t> numbers;
    std::uint32_t gaps = 0;
  };
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

  InstanceIndex() noexcept = default;
  InstanceIndex(const InstanceIndex&) = delete;
  InstanceIndex& operator=(const InstanceIndex&) = delete;
  /// REQUIRES: no object is left.
  ~InstanceIndex() { clear(); }

  /// Makes all the room that the next make() needs for an object of that class.
  void reserve(const ClassData& cls);
  /// Creates an object. REQUIRES: reserve() was called just before.
  Instance& make(NativeModel& model, const ClassData& cls) noexcept;
  /// Removes an object that is about to expire from the list of its class.
  void leaveClass(const Instance& instance) noexcept;
  /// Ends an expired object without handles and frees its number.
  void free(Instance& instance) noexcept;

  /// REQUIRES: the number is that of an object, expired or not.
  Instance* at(std::uint32_t number) const noexcept {
    return mSlabs[number / kChunk].chunk->at(number % kChunk);
  }
  /// As at(), for any number. Null for a free number.
  Instance* find(std::uint32_t number) const noexcept {
    if (number / kChunk >= mSlabs.size()) return nullptr;
    Chunk* chunk = mSlabs[number / kChunk].chunk;
    return chunk && (chunk->used >> number % kChunk & 1) != 0 ? chunk->at(number % kChunk) : nullptr;
  }
  /// Calls visit(Instance&) for each object that has not expired, in order of number. `visit` may free the
  /// object it is called with.
  template <class Visit>
  void forEach(Visit visit) const {
    for (const Slab& slab : mSlabs) {
      for (std::uint64_t left = slab.chunk ? slab.chunk->used : 0; left != 0; left &= left - 1) {
        Instance& instance = *slab.chunk->at(static_cast<unsigned>(std::countr_zero(left)));
        if (!instance.hasExpired()) visit(instance);
      }
    }
  }
  /// One list for each class that has or had objects, in the order in which the classes were first used.
  const std::vector<ClassList>& classes() const noexcept { return mClasses; }
  /// Removes all class lists and frees the empty chunk that is kept.
  void clear() noexcept;

 private:
  friend class Auditor;
  static constexpr std::uint32_t kChunk = hx::kHasAsan ? 1 : 64;
  static constexpr std::uint64_t kFull = ~std::uint64_t{0} >> (64 - kChunk);
  struct Chunk {
    /// A bit for each place that is in use.
    std::uint64_t used;
    /// For each object, its index in the list of its class.
    std::uint32_t places[kChunk];
    alignas(Instance) std::byte storage[kChunk][sizeof(Instance)];

    Instance* at(std::uint32_t place) noexcept {
      return std::launder(reinterpret_cast<Instance*>(&storage[place]));
    }
  };
  /// A range of kChunk numbers. Slabs with a free place, also those without a chunk, form a free list.
  struct Slab {
    Chunk* chunk;
    std::uint32_t nextWithRoom;
  };

  std::uint32_t& place(std::uint32_t number) noexcept {
    return mSlabs[number / kChunk].chunk->places[number % kChunk];
  }
  ClassList& listOf(const ClassData& cls) noexcept;
  void dropEmpty(std::uint32_t slab) noexcept;
  void closeGaps(ClassList& list) noexcept;

  std::vector<Slab> mSlabs;
  std::vector<ClassList> mClasses;
  /// By ordinal of the class: the index of its list in mClasses.
  std::vector<std::uint16_t> mLists;
  std::uint32_t mFirstWithRoom = kNone;
  /// The one empty slab whose chunk is kept for the next object. kNone if there is none.
  std::uint32_t mEmpty = kNone;
};

}  // namespace Tarvelon::metamodel::native
