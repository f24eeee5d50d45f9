#pragma once

#include <cstdint>
#include <limits>
#include <utility>

#include "tarvelon/platform/model/words/Word.h"

namespace Tarvelon::metamodel::native {

/// The values of one many-valued property, in order.
///
/// There may be free room before and after the elements, so adding and removing at either end does not move
/// the other elements.
///
/// Ownership: The list owns its storage, but not what its words point to.
/// Failure:   Only make() and reserve() can fail. shrink() keeps the storage if there is no memory for a
///            smaller one.
class WordList {
 public:
  static constexpr std::uint32_t kNotFound = std::numeric_limits<std::uint32_t>::max();
  static constexpr std::uint32_t kMaxSize = std::numeric_limits<std::int32_t>::max();

  static WordList* make();
  void dispose() noexcept;
  WordList(const WordList&) = delete;
  WordList& operator=(const WordList&) = delete;

  std::uint32_t size() const noexcept { return mSize; }
  bool empty() const noexcept { return mSize == 0; }
  Word at(std::uint32_t index) const noexcept { return mWords[mFirst + index]; }
  void set(std::uint32_t index, Word word) noexcept {
    mWords[mFirst + index] = word;
    ++mChanges;
  }
  /// Replaces all words with wordAt(0), wordAt(1) and so on; counts as one change.
  template <class WordAt>
  void setAll(WordAt wordAt) noexcept {
    for (std::uint32_t index = 0; index < mSize; ++index) mWords[mFirst + index] = wordAt(index);
    ++mChanges;
  }
  /// A counter of changes. It differs from an earlier result if words were inserted, removed, moved or
  /// replaced since.
  std::uint32_t changes() const noexcept { return mChanges; }

  /// How many more words fit without a reserve().
  std::uint32_t room() const noexcept { return mCapacity - mSize; }
  /// Makes room for `count` more words.
  void reserve(std::uint32_t count);
  /// REQUIRES: index <= size(), and room for one more word.
  void insert(std::uint32_t index, Word word) noexcept;
  /// Removes words and keeps the room. REQUIRES: first + count <= size().
  void erase(std::uint32_t first, std::uint32_t count) noexcept;
  /// Removes `count` words at the indices placeAt(0), placeAt(1) and so on, which must be in ascending order.
  /// Each other word moves at most once. Keeps the room.
  template <class PlaceAt>
  void eraseMany(std::uint32_t count, PlaceAt placeAt) noexcept {
    std::uint32_t end = placeAt(0);
    for (std::uint32_t gone = 0; gone < count; ++gone) {
      const std::uint32_t from = placeAt(gone) + 1;
      const std::uint32_t to = gone + 1 < count ? placeAt(gone + 1) : mSize;
      shift(from, to - from, end);
      end += to - from;
    }
    mSize -= count;
    ++mChanges;
  }
  /// Inserts words; the inverse of eraseMany(). placeAt(i) is the index of word i in the final list, in
  /// ascending order.
  /// REQUIRES: room for `count` words.
  template <class PlaceAt, class WordAt>
  void insertMany(std::uint32_t count, PlaceAt placeAt, WordAt wordAt) noexcept {
    if (mFirst + mSize + count > mCapacity) moveToFront();
    std::uint32_t end = mSize;
    mSize += count;
    std::uint32_t placed = mSize;
    for (std::uint32_t left = count; left-- > 0;) {
      const std::uint32_t between = placed - placeAt(left) - 1;
      end -= between;
      shift(end, between, placed - between);
      placed = placeAt(left);
      mWords[mFirst + placed] = wordAt(left);
    }
    ++mChanges;
  }
  /// Frees memory if the list has become much smaller than its capacity.
  void shrink() noexcept;
  /// Moves the word at index `from` so that its final index is `to`.
  void move(std::uint32_t from, std::uint32_t to) noexcept;
  /// Swaps two words.
  void exchange(std::uint32_t left, std::uint32_t right) noexcept {
    std::swap(mWords[mFirst + left], mWords[mFirst + right]);
    ++mChanges;
  }
  /// The index of an object, kNotFound if there is none. Searches from both ends at once.
  std::uint32_t find(const Instance* object) const noexcept { return findNearEnds(object, mSize); }
  /// As find(), but looks only at `limit` words from each end.
  std::uint32_t findNearEnds(const Instance* object, std::uint32_t limit) const noexcept;
  /// Removes each word for which `isOut` returns true. The others keep their order.
  template <class Predicate>
  void eraseIf(Predicate isOut) noexcept {
    std::uint32_t kept = 0;
    for (std::uint32_t index = 0; index < mSize; ++index) {
      if (!isOut(at(index))) mWords[mFirst + kept++] = at(index);
    }
    if (kept != mSize) ++mChanges;
    mSize = kept;
    shrink();
  }

 private:
  WordList() noexcept = default;
  ~WordList() = default;
  void relocate(Word* words, std::uint32_t capacity, std::uint32_t first) noexcept;
  void centre() noexcept;
  void moveToFront() noexcept;
  /// Moves `count` neighbouring words to another index and overwrites what is there.
  void shift(std::uint32_t from, std::uint32_t count, std::uint32_t to) noexcept;

  Word* mWords = nullptr;
  std::uint32_t mCapacity = 0;
  std::uint32_t mFirst = 0;
  std::uint32_t mSize = 0;
  std::uint32_t mChanges = 0;
};

}  // namespace Tarvelon::metamodel::native
