#include "tarvelon/boundary/ruvo/Interned.h"

#include <atomic>
#include <cstring>
#include <functional>
#include <mutex>
#include <new>
#include <type_traits>
#include <utility>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/ruvo/NameEntry.h"

namespace ruvo::internal {

namespace {

constexpr std::pair<std::string_view, TypeKind> kTypeWords[] = {
    {"void", TypeKind::Void},          {"logical scalar", TypeKind::Logical},
    {"int32 scalar", TypeKind::Int32}, {"double scalar", TypeKind::Double},
    {"char", TypeKind::Char},          {"char vector", TypeKind::CharVector},
};

TypeKind kindOf(std::string_view text) noexcept {
  for (const auto& [word, kind] : kTypeWords) {
    if (word == text) return kind;
  }
  return TypeKind::Class;
}

/// An arena: allocates from large blocks and never frees.
class Arena {
 public:
  void* take(std::size_t bytes) {
    bytes = (bytes + alignof(NameEntry) - 1) / alignof(NameEntry) * alignof(NameEntry);
    if (bytes > kBlock / 4) return newBlock(bytes);
    if (bytes > mLeft) {
      mNext = newBlock(kBlock);
      mLeft = kBlock;
    }
    mLeft -= bytes;
    return std::exchange(mNext, mNext + bytes);
  }

 private:
  /// The header of each block. It links the blocks, so that leak checkers can reach all of them.
  struct alignas(NameEntry) Block {
    Block* former;
  };
  static constexpr std::size_t kBlock = 16384 - sizeof(Block);

  char* newBlock(std::size_t bytes) {
    void* storage = utMalloc(sizeof(Block) + bytes);
    if (!storage) throw bedrock::core::except::bad_alloc();
    mLast = ::new (storage) Block{mLast};
    return reinterpret_cast<char*>(mLast + 1);
  }

  Block* mLast = nullptr;
  char* mNext = nullptr;
  std::size_t mLeft = 0;
};

std::uint32_t hashOf(std::string_view text) noexcept {
  return static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
}

/// The hash table of names: open addressing, with a second array of hashes that probing compares first. An
/// entry never moves within its table, so any thread may search without a lock while another thread adds.
class Places {
 public:
  /// Creates a table with a copy of the former table's entries. The former table stays, because other threads
  /// may still be reading it.
  static const Places* make(std::size_t capacity, const Places* former) {
    auto* storage = utCalloc(1, sizeof(Places) + capacity * (sizeof(Entry) + sizeof(Hash)));
    if (!storage) throw bedrock::core::except::bad_alloc();
    auto* made = ::new (storage) Places(capacity, former);
    for (std::size_t old = 0; former && old < former->mCapacity; ++old) {
      NameEntry* entry = former->entries()[old].load(std::memory_order_relaxed);
      if (entry) made->put(entry, former->hashes()[old].load(std::memory_order_relaxed));
    }
    return made;
  }

  std::size_t capacity() const noexcept { return mCapacity; }

  NameEntry* find(std::string_view text, std::uint32_t hash) const noexcept {
    for (std::size_t i = hash & (mCapacity - 1);; i = (i + 1) & (mCapacity - 1)) {
      NameEntry* entry = entries()[i].load(std::memory_order_acquire);
      if (!entry) return nullptr;
      if (hashes()[i].load(std::memory_order_relaxed) != hash) continue;
      if (std::string_view(entry->text, entry->length) == text) return entry;
    }
  }

  /// Adds an entry. REQUIRES: NameTable's lock is held, the table is not full, and the text is not in the
  /// table.
  void put(NameEntry* entry, std::uint32_t hash) const noexcept {
    std::size_t i = hash & (mCapacity - 1);
    while (entries()[i].load(std::memory_order_relaxed)) i = (i + 1) & (mCapacity - 1);
    hashes()[i].store(hash, std::memory_order_relaxed);
    entries()[i].store(entry, std::memory_order_release);
  }

 private:
  using Entry = std::atomic<NameEntry*>;
  using Hash = std::atomic<std::uint32_t>;

  Places(std::size_t capacity, const Places* former) noexcept : mCapacity(capacity), mFormer(former) {}
  Entry* entries() const noexcept { return reinterpret_cast<Entry*>(const_cast<Places*>(this) + 1); }
  Hash* hashes() const noexcept { return reinterpret_cast<Hash*>(entries() + mCapacity); }

  std::size_t mCapacity;
  /// Never read. It lets LeakSanitizer reach the former table, which readers may still use.
  [[maybe_unused]] const Places* mFormer;
};

/// The table of all interned names.
class NameTable {
 public:
  constexpr NameTable() noexcept = default;

  std::size_t size() const noexcept { return mSize.load(std::memory_order_relaxed); }

  const InternedEntry* find(std::string_view text) const noexcept { return find(text, hashOf(text)); }

  const InternedEntry* make(std::string_view text) {
    const std::uint32_t hash = hashOf(text);
    if (const InternedEntry* known = find(text, hash)) return known;
    const std::scoped_lock lock(mGuard);
    if (const InternedEntry* known = find(text, hash)) return known;
    reserve();
    NameEntry* entry = newEntry(text);
    mPlaces.load(std::memory_order_relaxed)->put(entry, hash);
    mSize.fetch_add(1, std::memory_order_relaxed);
    return entry;
  }

 private:
  /// Large enough for the names of the packages. Untouched pages of zeroed memory cost nothing.
  static constexpr std::size_t kFirst = 16384;

  NameEntry* find(std::string_view text, std::uint32_t hash) const noexcept {
    const Places* places = mPlaces.load(std::memory_order_acquire);
    return places ? places->find(text, hash) : nullptr;
  }

  void reserve() {
    const Places* places = mPlaces.load(std::memory_order_relaxed);
    if (places && (size() + 1) * 4 <= places->capacity() * 3) return;
    mPlaces.store(Places::make(places ? 2 * places->capacity() : kFirst, places), std::memory_order_release);
  }

  NameEntry* newEntry(std::string_view text) {
    void* storage = mArena.take(sizeof(NameEntry) + text.size() + 1);
    char* copy = static_cast<char*>(storage) + sizeof(NameEntry);
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return ::new (storage) NameEntry{{copy, static_cast<std::uint32_t>(text.size()), kindOf(text)}, nullptr};
  }

  std::atomic<const Places*> mPlaces = nullptr;
  std::atomic<std::size_t> mSize = 0;
  std::mutex mGuard;
  Arena mArena;
};

// Never destroyed, because hosts and modules use names until the process ends.
constinit NameTable gNames;
static_assert(std::is_trivially_destructible_v<NameTable>);

}  // namespace

const InternedEntry* makeInterned(std::string_view text) {
  return text.empty() ? nullptr : gNames.make(text);
}

const InternedEntry* makeInterned(const char* text) {
  return text ? makeInterned(std::string_view(text)) : nullptr;
}

const InternedEntry* findInterned(std::string_view text) noexcept {
  return text.empty() ? nullptr : gNames.find(text);
}

std::size_t internedCount() noexcept { return gNames.size(); }

}  // namespace ruvo::internal

// A lock instead of compare-and-exchange: a failed compare-and-exchange may also write the old value back,
// while other threads read the name.
void ruvo::LazyName::keep(InternedName name) const noexcept {
  static constinit std::mutex guard;
  const std::scoped_lock lock(guard);
  const std::atomic_ref kept(mName);
  if (kept.load(std::memory_order_relaxed).empty()) kept.store(name, std::memory_order_release);
}

void ruvo::factory::detail::initStringDataTypes() {
  static const bool isReady = [] {
    for (const auto& [word, kind] : internal::kTypeWords) internal::makeInterned(word);
    return true;
  }();
  static_cast<void>(isReady);
}
