#include "tarvelon/boundary/ruvo/Interned.h"

#include <cstring>
#include <functional>
#include <new>
#include <utility>
#include <vector>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/ruvo/Immortal.h"
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

/// Storage that is never given back, cut from large blocks.
class Arena {
 public:
  void* take(std::size_t bytes) {
    bytes = (bytes + alignof(NameEntry) - 1) / alignof(NameEntry) * alignof(NameEntry);
    if (bytes > kBlock / 4) return newBlock(bytes);
    if (bytes > mLeft) {
      mNext = static_cast<char*>(newBlock(kBlock));
      mLeft = kBlock;
    }
    mLeft -= bytes;
    return std::exchange(mNext, mNext + bytes);
  }

 private:
  static constexpr std::size_t kBlock = 16384;

  void* newBlock(std::size_t bytes) {
    // The place first: a block that is not in the list is lost.
    mBlocks.push_back(nullptr);
    mBlocks.back() = utMalloc(bytes);
    if (!mBlocks.back()) throw bedrock::core::except::bad_alloc();
    return mBlocks.back();
  }

  std::vector<void*> mBlocks;
  char* mNext = nullptr;
  std::size_t mLeft = 0;
};

/// All names: a table of entries with open addressing, and beside it their hashes, which a probe compares
/// first.
class NameTable {
 public:
  std::size_t size() const noexcept { return mSize; }

  const InternedEntry* find(std::string_view text) const noexcept {
    return mEntries.empty() ? nullptr : mEntries[indexOf(text, hashOf(text))];
  }

  const InternedEntry* make(std::string_view text) {
    if ((mSize + 1) * 4 > mEntries.size() * 3) grow();
    const std::uint32_t hash = hashOf(text);
    const std::size_t index = indexOf(text, hash);
    if (!mEntries[index]) {
      mEntries[index] = newEntry(text);
      mHashes[index] = hash;
      ++mSize;
    }
    return mEntries[index];
  }

 private:
  static std::uint32_t hashOf(std::string_view text) noexcept {
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
  }

  /// Where the text stands, or the free place where it would.
  std::size_t indexOf(std::string_view text, std::uint32_t hash) const noexcept {
    const std::size_t mask = mEntries.size() - 1;
    std::size_t i = hash & mask;
    while (mEntries[i] &&
           (mHashes[i] != hash || std::string_view(mEntries[i]->text, mEntries[i]->length) != text)) {
      i = (i + 1) & mask;
    }
    return i;
  }

  NameEntry* newEntry(std::string_view text) {
    void* storage = mArena.take(sizeof(NameEntry) + text.size() + 1);
    char* copy = static_cast<char*>(storage) + sizeof(NameEntry);
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return ::new (storage) NameEntry{{copy, static_cast<std::uint32_t>(text.size()), kindOf(text)}, nullptr};
  }

  void grow() {
    const std::size_t capacity = mEntries.empty() ? 1024 : mEntries.size() * 2;
    std::vector<NameEntry*> entries(capacity);
    std::vector<std::uint32_t> hashes(capacity);
    for (std::size_t old = 0; old < mEntries.size(); ++old) {
      if (!mEntries[old]) continue;
      std::size_t i = mHashes[old] & (capacity - 1);
      while (entries[i]) i = (i + 1) & (capacity - 1);
      entries[i] = mEntries[old];
      hashes[i] = mHashes[old];
    }
    mEntries.swap(entries);
    mHashes.swap(hashes);
  }

  std::vector<NameEntry*> mEntries;
  std::vector<std::uint32_t> mHashes;
  std::size_t mSize = 0;
  Arena mArena;
};

NameTable& table() noexcept {
  static Immortal<NameTable> names;
  return *names;
}

}  // namespace

const InternedEntry* makeInterned(std::string_view text) {
  return text.empty() ? nullptr : table().make(text);
}

const InternedEntry* makeInterned(const char* text) {
  return text ? makeInterned(std::string_view(text)) : nullptr;
}

const InternedEntry* findInterned(std::string_view text) noexcept {
  return text.empty() ? nullptr : table().find(text);
}

std::size_t internedCount() noexcept { return table().size(); }

}  // namespace ruvo::internal

void ruvo::factory::detail::initStringDataTypes() {
  static const bool isReady = [] {
    for (const auto& [word, kind] : internal::kTypeWords) internal::makeInterned(word);
    return true;
  }();
  static_cast<void>(isReady);
}
