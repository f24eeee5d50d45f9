#pragma once

#include <cstdint>
#include <limits>
#include <utility>

#include "tarvelon/platform/model/words/Word.h"

namespace Tarvelon::metamodel::native {

/// The values of one many-valued property, in order.
///
/// Room lies on both sides of the elements, so that taking from and adding to either end does not move the
/// others.
///
/// Ownership: the list owns its storage and not what its words point at.
/// Failure:   only make() and reserve() allocate; everything else cannot fail.
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
  /// Sets all of them, to wordAt(0) and so on, as one change.
  template <class WordAt>
  void setAll(WordAt wordAt) noexcept {
    for (std::uint32_t index = 0; index < mSize; ++index) mWords[mFirst + index] = wordAt(index);
    ++mChanges;
  }
  /// Differs from before when elements have come, gone or moved.
  std::uint32_t changes() const noexcept { return mChanges; }

  /// How many more words fit.
  std::uint32_t room() const noexcept { return mCapacity - mSize; }
  /// Makes room for `count` more words.
  void reserve(std::uint32_t count);
  /// REQUIRES: index <= size(), room for one more word.
  void insert(std::uint32_t index, Word word) noexcept;
  /// Keeps the room. REQUIRES: first + count <= size().
  void erase(std::uint32_t first, std::uint32_t count) noexcept;
  /// Takes out as many elements as there are places, which placeAt(0) and so on give in ascending order. Each
  /// of the others moves once at most. Keeps the room.
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
  /// Puts in words where they stand when all of them are there: what eraseMany() has taken out.
  /// REQUIRES: room for them.
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
  /// Gives up room that so few elements do not need.
  void shrink() noexcept;
  /// Takes the element from one place and puts it where it then stands at index `to`.
  void move(std::uint32_t from, std::uint32_t to) noexcept;
  /// Lets two elements change places.
  void exchange(std::uint32_t left, std::uint32_t right) noexcept {
    std::swap(mWords[mFirst + left], mWords[mFirst + right]);
    ++mChanges;
  }
  /// The place of an object, searched from both ends at once; kNotFound if it is not there.
  std::uint32_t find(const Instance* object) const noexcept { return findNearEnds(object, mSize); }
  /// The same, looking at no more than `limit` elements from each end.
  std::uint32_t findNearEnds(const Instance* object, std::uint32_t limit) const noexcept;
  /// Takes out every word for which `isOut` says so; the others keep their order.
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
  /// Moves neighbours to another index, over what stands there.
  void shift(std::uint32_t from, std::uint32_t count, std::uint32_t to) noexcept;

  Word* mWords = nullptr;
  std::uint32_t mCapacity = 0;
  std::uint32_t mFirst = 0;
  std::uint32_t mSize = 0;
  std::uint32_t mChanges = 0;
};

}  // namespace Tarvelon::metamodel::native
