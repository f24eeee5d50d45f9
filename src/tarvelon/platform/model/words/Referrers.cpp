#include "tarvelon/platform/model/words/Referrers.h"

#include <cstring>
#include <new>

#include "tarvelon/platform/model/words/Memory.h"

namespace Tarvelon::metamodel::native {

namespace {
constexpr std::uint32_t kFirstCapacity = 2;
constexpr std::uint32_t kNowhere = ~std::uint32_t{0};
}  // namespace

std::uint32_t Referrers::Block::home(std::uint64_t key) const noexcept {
  return static_cast<std::uint32_t>((key * 0x9E3779B97F4A7C15U) >> 32) & (capacity - 1);
}

Referrers::Block* Referrers::makeBlock(std::uint32_t capacity) {
  const std::size_t size = sizeof(Block) + capacity * sizeof(std::uint64_t);
  auto* set = new (allocate(size)) Block{0, capacity};
  std::memset(set->keys(), 0, capacity * sizeof(std::uint64_t));
  return set;
}

std::uint32_t Referrers::find(const Block& set, std::uint64_t key) noexcept {
  if (!set.isHashed()) {
    for (std::uint32_t place = 0; place < set.size; ++place) {
      if (set.keys()[place] == key) return place;
    }
    return kNowhere;
  }
  for (std::uint32_t place = set.home(key); set.keys()[place] != 0;
       place = (place + 1) & (set.capacity - 1)) {
    if (set.keys()[place] == key) return place;
  }
  return kNowhere;
}

bool Referrers::contains(Referrer referrer) const noexcept {
  if (mWord == 0) return false;
  if (isSingle()) return (mWord >> 1) == pack(referrer);
  return find(block(), pack(referrer)) != kNowhere;
}

void Referrers::insertInto(Block& set, std::uint64_t key) noexcept {
  std::uint32_t place = set.size;
  if (set.isHashed()) {
    place = set.home(key);
    while (set.keys()[place] != 0) place = (place + 1) & (set.capacity - 1);
  }
  set.keys()[place] = key;
  ++set.size;
}

void Referrers::grow(std::uint32_t capacity) {
  Block* larger = makeBlock(capacity);
  forEach([larger](Referrer referrer) { insertInto(*larger, pack(referrer)); });
  dispose();
  mWord = reinterpret_cast<std::uintptr_t>(larger);
}

void Referrers::reserve() {
  if (mWord == 0) return;
  if (isSingle()) {
    grow(kFirstCapacity);
    return;
  }
  const Block& set = block();
  if (set.size >= set.limit()) grow(set.capacity * 2);
}

std::uint32_t Referrers::room() const noexcept {
  if (mWord == 0) return 1;
  return isSingle() ? 0 : block().limit() - block().size;
}

void Referrers::insert(Referrer referrer) noexcept {
  if (mWord == 0) {
    mWord = pack(referrer) << 1 | 1;
  } else {
    insertInto(block(), pack(referrer));
  }
}

// Fills the gap with later keys that linear probing would not find across the gap.
void Referrers::eraseHashed(Block& set, std::uint32_t place) noexcept {
  const std::uint32_t mask = set.capacity - 1;
  std::uint32_t gap = place;
  for (std::uint32_t next = (gap + 1) & mask; set.keys()[next] != 0; next = (next + 1) & mask) {
    const std::uint32_t home = set.home(set.keys()[next]);
    if (((next - home) & mask) >= ((next - gap) & mask)) {
      set.keys()[gap] = set.keys()[next];
      gap = next;
    }
  }
  set.keys()[gap] = 0;
}

void Referrers::erase(Referrer referrer, bool keepsRoom) noexcept {
  const std::uint64_t key = pack(referrer);
  if (mWord == 0) return;
  if (isSingle()) {
    if ((mWord >> 1) == key) mWord = 0;
    return;
  }
  Block& set = block();
  const std::uint32_t place = find(set, key);
  if (place == kNowhere) return;
  --set.size;
  if (set.isHashed()) {
    eraseHashed(set, place);
  } else {
    set.keys()[place] = set.keys()[set.size];
    set.keys()[set.size] = 0;
  }
  if (set.size == 0 && !keepsRoom) dispose();
}

void Referrers::dispose() noexcept {
  if (mWord != 0 && !isSingle()) utFree(&block());
  mWord = 0;
}

}  // namespace Tarvelon::metamodel::native
