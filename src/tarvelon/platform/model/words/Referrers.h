#pragma once

#include <cstdint>

namespace Tarvelon::metamodel::native {

/// One reference to an object: who refers, by its number in the model, and from which slot.
struct Referrer {
  std::uint32_t instance;
  std::uint8_t slot;
};

/// The set of references to one object, in the one word that an object which is referred to keeps for it.
///
/// One referrer stands in the word itself, a few in a row, more in a hash table: adding and removing one is
/// constant time however many there are, and an object that nobody ever referred to has no such word at all.
/// Failure: only reserve() allocates.
class Referrers {
 public:
  /// A view of the word; changes go through to it.
  explicit Referrers(std::uint64_t& word) noexcept : mWord(word) {}

  bool contains(Referrer referrer) const noexcept;
  /// Makes room for one more.
  void reserve();
  /// REQUIRES: room for one more, not there yet.
  void insert(Referrer referrer) noexcept;
  /// One that is not there is no error. With `keepsRoom` as many can come back without a reserve().
  void erase(Referrer referrer, bool keepsRoom = false) noexcept;
  bool empty() const noexcept { return mWord == 0 || (!isSingle() && block().size == 0); }
  /// How many more fit.
  std::uint32_t room() const noexcept;
  /// Calls visit(Referrer) for each, in no order. The set must not change meanwhile.
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
  /// Releases the storage and leaves the set empty.
  void dispose() noexcept;

 private:
  /// Up to kLinear keys stand in a row; behind that, capacity is a power of two and the place follows from
  /// the key.
  struct Block {
    std::uint32_t size;
    std::uint32_t capacity;
    std::uint64_t* keys() noexcept { return reinterpret_cast<std::uint64_t*>(this + 1); }
    const std::uint64_t* keys() const noexcept { return reinterpret_cast<const std::uint64_t*>(this + 1); }
    bool isHashed() const noexcept { return capacity > kLinear; }
    /// A table that is three quarters full makes long searches.
    std::uint32_t limit() const noexcept { return isHashed() ? capacity / 4 * 3 : capacity; }
    std::uint32_t home(std::uint64_t key) const noexcept;
  };
  static constexpr std::uint32_t kLinear = 8;

  // Never 0, and never more than 41 bits.
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
