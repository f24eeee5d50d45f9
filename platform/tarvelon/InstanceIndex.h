#pragma once

#include <cstdint>
#include <vector>

namespace Tarvelon::metamodel::native {

struct ClassData;
class Instance;

/// All objects of a model by their numbers, in chunks, so that it grows without copying; and those of each
/// class in the order in which they were made.
///
/// A number that has become free is given out again before a new one. Going through the numbers from 0 up
/// visits the objects in an order that only changes where objects go and come.
/// Cost: 12 bytes an object, and 4 to 8 in the list of its class.
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
  ~InstanceIndex() { clear(); }

  /// The number for the next insert(), of an object of that class; makes the room that it needs.
  std::uint32_t reserve(const ClassData& cls);
  /// REQUIRES: `number` came from reserve() just before.
  void insert(std::uint32_t number, Instance& instance) noexcept;
  void erase(const Instance& instance) noexcept;
  Instance* at(std::uint32_t number) const noexcept { return reinterpret_cast<Instance*>(entry(number)); }
  /// The same for any number, null for one that is free.
  Instance* find(std::uint32_t number) const noexcept {
    return number < mUsed && !isFree(entry(number)) ? at(number) : nullptr;
  }
  /// Calls visit(Instance&) for each in order of number; it may erase the one it is called for.
  template <class Visit>
  void forEach(Visit visit) const {
    for (std::uint32_t number = 0; number < mUsed; ++number) {
      if (!isFree(entry(number))) visit(*at(number));
    }
  }
  /// A list for each class of which there were objects, in the order of their first ones.
  const std::vector<ClassList>& classes() const noexcept { return mClasses; }
  /// Forgets everything and releases the storage.
  void clear() noexcept;

 private:
  /// The address of an object or, with bit 0 set, the number of the next free entry.
  using Entry = std::uintptr_t;
  static constexpr std::uint32_t kChunk = 1024;
  struct Chunk {
    Entry entries[kChunk];
    /// Where each object stands in the list of its class.
    std::uint32_t places[kChunk];
  };
  static bool isFree(Entry entry) noexcept { return (entry & 1) != 0; }

  Entry& entry(std::uint32_t number) const noexcept {
    return mChunks[number / kChunk]->entries[number % kChunk];
  }
  std::uint32_t& place(std::uint32_t number) const noexcept {
    return mChunks[number / kChunk]->places[number % kChunk];
  }
  ClassList& listOf(const ClassData& cls) noexcept;
  void addChunk();
  void closeGaps(ClassList& list) noexcept;

  std::vector<Chunk*> mChunks;
  std::vector<ClassList> mClasses;
  /// By ordinal of the class: where its list stands.
  std::vector<std::uint16_t> mLists;
  /// Numbers below were given out.
  std::uint32_t mUsed = 0;
  std::uint32_t mFirstFree = kNone;
};

}  // namespace Tarvelon::metamodel::native
