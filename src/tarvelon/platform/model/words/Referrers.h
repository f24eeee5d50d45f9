#pragma once

#include <cstdint>

namespace Tarvelon::metamodel::native {

/// One reference to an object: the number of the referring object and its slot.
struct Referrer {
  std::uint32_t instance;
  std::uint8_t slot;
};

/// The set of references to one object. It is stored in a single word of that object.
///
/// One referrer is stored in the word itself, up to eight in an array, more in a hash table. Adding and
/// removing a referrer takes constant time. An object that was never referred to has no such word.
/// Failure: Only reserve() allocates.
class Referrers {
 public:
  /// Works on the given word.
  explicit Referrers(std::uint64_t& word) noexcept : mWord(word) {}

  bool contains(Referrer referrer) const noexcept;
  /// Makes room for one more referrer.
  void reserve();
  /// REQUIRES: room for one more; the referrer is not in the set.
  void insert(Referrer referrer) noexcept;
  /// Removes a referrer if it is in the set. With `keepsRoom` the room stays, so that the referrer can be
  /// inserted again without a reserve().
  void erase(Referrer referrer, bool keepsRoom = false) noexcept;
  bool empty() const noexcept { return mWord == 0 || (!isSingle() && block().size == 0); }
  /// How many more referrers can be inserted without a reserve().
  std::uint32_t room() const noexcept;
  /// Calls visit(Referrer) for each referrer, in no particular order. visit() must not change the set.
  template <class Visit>
  void forEach(Visit visit) const {
    if (mWord == 0) return;
    if (isSingle()) {
      visit(unpack(mWord >> 1));
      return;
    }
    const Block& set = block();
    for (std::uint32_t place = 0; place < set.capacity; ++place) {
      if (set.keys()[place] != 0) visit(unpack(set.keys()[place]));
    }
  }
  /// Frees the storage and empties the set.
  void dispose() noexcept;

 private:
  /// Up to kLinear keys are an array. With a larger capacity, which is a power of two, the keys are a hash
  /// table with linear probing.
  struct Block {
    std::uint32_t size;
    std::uint32_t capacity;
    std::uint64_t* keys() noexcept { return reinterpret_cast<std::uint64_t*>(this + 1); }
    const std::uint64_t* keys() const noexcept { return reinterpret_cast<const std::uint64_t*>(this + 1); }
    bool isHashed() const noexcept { return capacity > kLinear; }
    /// A hash table is filled up to three quarters; above that, searches take long.
    std::uint32_t limit() const noexcept { return isHashed() ? capacity / 4 * 3 : capacity; }
    std::uint32_t home(std::uint64_t key) const noexcept;
  };
  static constexpr std::uint32_t kLinear = 8;

  // Never 0, and at most 41 bits.
  static std::uint64_t pack(Referrer referrer) noexcept {
    return ((std::uint64_t{referrer.instance} << 8) | referrer.slot) + 1;
  }
  static Referrer unpack(std::uint64_t key) noexcept {
    return {static_cast<std::uint32_t>((key - 1) >> 8), static_cast<std::uint8_t>(key - 1)};
  }
  bool isSingle() const noexcept { return (mWord & 1) != 0; }
  Block& block() const noexcept { return *reinterpret_cast<Block*>(mWord); }
  static Block* makeBlock(std::uint32_t capacity);
  static void insertInto(Block& set, std::uint64_t key) noexcept;
  static std::uint32_t find(const Block& set, std::uint64_t key) noexcept;
  static void eraseHashed(Block& set, std::uint32_t place) noexcept;
  void grow(std::uint32_t capacity);

  std::uint64_t& mWord;
};

}  // namespace Tarvelon::metamodel::native
