#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

#include "tarvelon/platform/hx/Sanitizer.h"
#include "tarvelon/platform/model/objects/Instance.h"

namespace Tarvelon::metamodel::native {

/// The storage of all objects of a model, by their numbers, and the list of those of each class in the order
/// in which they were made.
///
/// Objects stand side by side in chunks, so that a number is a place and going through all of them reads
/// memory in order. A number that has become free is given out again before a new one. Going through the
/// numbers from 0 up visits the objects in an order that only changes where objects go and come.
/// Cost: 5 bytes an object beside it, and 4 to 8 in the list of its class.
class InstanceIndex {
 public:
  /// The objects of exactly one class.
  struct ClassList {
    const ClassData* cls;
    /// Numbers; kNone where an object has gone.
    std::vector<std::uint32_t> numbers;
    std::uint32_t gaps = 0;
  };
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

  InstanceIndex() noexcept = default;
  InstanceIndex(const InstanceIndex&) = delete;
  InstanceIndex& operator=(const InstanceIndex&) = delete;
  /// REQUIRES: no object is left.
  ~InstanceIndex() { clear(); }

  /// Makes all the room that the next make() needs, for an object of that class.
  void reserve(const ClassData& cls);
  /// A new object. REQUIRES: reserve() just before.
  Instance& make(NativeModel& model, const ClassData& cls) noexcept;
  /// Takes an object, which is about to expire, out of the list of its class.
  void leaveClass(const Instance& instance) noexcept;
  /// Ends an object that has expired and that nobody holds any more.
  void free(Instance& instance) noexcept;

  /// REQUIRES: there is an object, expired or not, of that number.
  Instance* at(std::uint32_t number) const noexcept {
    return mSlabs[number / kChunk].chunk->at(number % kChunk);
  }
  /// The same for any number, null for one that is free.
  Instance* find(std::uint32_t number) const noexcept {
    if (number / kChunk >= mSlabs.size()) return nullptr;
    Chunk* chunk = mSlabs[number / kChunk].chunk;
    return chunk && (chunk->used >> number % kChunk & 1) != 0 ? chunk->at(number % kChunk) : nullptr;
  }
  /// Calls visit(Instance&) for each that has not expired, in order of number; it may end the one it is
  /// called for.
  template <class Visit>
  void forEach(Visit visit) const {
    for (const Slab& slab : mSlabs) {
      for (std::uint64_t left = slab.chunk ? slab.chunk->used : 0; left != 0; left &= left - 1) {
        Instance& instance = *slab.chunk->at(static_cast<unsigned>(std::countr_zero(left)));
        if (!instance.hasExpired()) visit(instance);
      }
    }
  }
  /// A list for each class of which there were objects, in the order of their first ones.
  const std::vector<ClassList>& classes() const noexcept { return mClasses; }
  /// Forgets the classes and releases all storage in which no object is left.
  void clear() noexcept;

 private:
  friend class Auditor;
  static constexpr std::uint32_t kChunk = hx::kHasAsan ? 1 : 64;
  static constexpr std::uint64_t kFull = ~std::uint64_t{0} >> (64 - kChunk);
  struct Chunk {
    /// A bit for each place in which an object stands.
    std::uint64_t used;
    /// Where each object stands in the list of its class.
    std::uint32_t places[kChunk];
    alignas(Instance) std::byte storage[kChunk][sizeof(Instance)];

    Instance* at(std::uint32_t place) noexcept {
      return std::launder(reinterpret_cast<Instance*>(&storage[place]));
    }
  };
  /// Those with a free place, which one without a chunk has too, are chained.
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
  /// By ordinal of the class: where its list stands.
  std::vector<std::uint16_t> mLists;
  std::uint32_t mFirstWithRoom = kNone;
  /// The one empty slab whose chunk is kept for the next object.
  std::uint32_t mEmpty = kNone;
};

}  // namespace Tarvelon::metamodel::native
