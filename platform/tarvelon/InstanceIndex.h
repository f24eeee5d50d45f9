#pragma once

#include <cstdint>

namespace Tarvelon::metamodel::native {

class Instance;

/// All objects of a model by their numbers: eight bytes each, in chunks, so that it grows without copying.
///
/// A number that has become free is given out again before a new one. Going through the numbers from 0 up
/// visits the objects in an order that only changes where objects go and come.
class InstanceIndex {
 public:
  InstanceIndex() noexcept = default;
  InstanceIndex(const InstanceIndex&) = delete;
  InstanceIndex& operator=(const InstanceIndex&) = delete;
  ~InstanceIndex() { clear(); }

  /// The number for the next insert(); makes the room that it needs.
  std::uint32_t reserve();
  /// REQUIRES: `number` came from reserve() just before.
  void insert(std::uint32_t number, Instance* instance) noexcept;
  void erase(std::uint32_t number) noexcept;
  Instance* at(std::uint32_t number) const noexcept { return reinterpret_cast<Instance*>(entry(number)); }
  /// Calls visit(Instance&) for each in order of number; it may erase the one it is called for.
  template <class Visit>
  void forEach(Visit visit) const {
    for (std::uint32_t number = 0; number < mUsed; ++number) {
      if (!isFree(entry(number))) visit(*at(number));
    }
  }
  /// Forgets everything and releases the storage.
  void clear() noexcept;

 private:
  /// The address of an object or, with bit 0 set, the number of the next free entry.
  using Entry = std::uintptr_t;
  static constexpr std::uint32_t kChunk = 1024;
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};
  static bool isFree(Entry entry) noexcept { return (entry & 1) != 0; }

  Entry& entry(std::uint32_t number) const noexcept { return mChunks[number / kChunk][number % kChunk]; }
  void addChunk();

  Entry** mChunks = nullptr;
  std::uint32_t mChunkCount = 0;
  std::uint32_t mChunkCapacity = 0;
  /// Numbers below were given out.
  std::uint32_t mUsed = 0;
  std::uint32_t mFirstFree = kNone;
};

}  // namespace Tarvelon::metamodel::native
