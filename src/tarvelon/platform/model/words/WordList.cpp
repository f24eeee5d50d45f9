#include "tarvelon/platform/model/words/WordList.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/model/words/Memory.h"

namespace Tarvelon::metamodel::native {

namespace {

// A power of two minus one fills the allocator's blocks.
constexpr std::uint32_t kFirstCapacity = 3;
// Lists of up to this capacity do not shrink.
constexpr std::uint32_t kShrinkAbove = 15;

void moveWords(Word* to, const Word* from, std::uint32_t count) noexcept {
  if (count != 0) std::memmove(to, from, count * sizeof(Word));
}

}  // namespace

WordList* WordList::make() { return new (allocate(sizeof(WordList))) WordList(); }

void WordList::dispose() noexcept {
  utFree(mWords);
  this->~WordList();
  utFree(this);
}

void WordList::relocate(Word* words, std::uint32_t capacity, std::uint32_t first) noexcept {
  if (mSize != 0) std::memcpy(words + first, mWords + mFirst, mSize * sizeof(Word));
  utFree(mWords);
  mWords = words;
  mCapacity = capacity;
  mFirst = first;
}

void WordList::reserve(std::uint32_t count) {
  if (count <= mCapacity - mSize) return;
  if (count > kMaxSize - mSize) {
    throw K7Q::OutOfRange("a sequence holds at most 2147483647 elements; split it");
  }
  const std::uint32_t doubled = mCapacity == 0 ? kFirstCapacity : 2 * mCapacity + 1;
  const std::uint32_t capacity = std::max(doubled, mSize + count);
  // Lists grow at the end far more often than at the front.
  relocate(allocateArray<Word>(capacity), capacity, 0);
}

// Moves the elements to the middle of the storage, so that repeated insertions at the front are cheap.
void WordList::centre() noexcept {
  const std::uint32_t first = (mCapacity - mSize + 1) / 2;
  moveWords(mWords + first, mWords + mFirst, mSize);
  mFirst = first;
}

void WordList::moveToFront() noexcept {
  moveWords(mWords, mWords + mFirst, mSize);
  mFirst = 0;
}

void WordList::shift(std::uint32_t from, std::uint32_t count, std::uint32_t to) noexcept {
  moveWords(mWords + mFirst + to, mWords + mFirst + from, count);
}

void WordList::insert(std::uint32_t index, Word word) noexcept {
  const bool hasRoomBehind = mFirst + mSize < mCapacity;
  const bool isInFront = index < mSize - index;
  if (isInFront && mFirst == 0) centre();
  if (mFirst > 0 && (isInFront || !hasRoomBehind)) {
    moveWords(mWords + mFirst - 1, mWords + mFirst, index);
    --mFirst;
  } else {
    Word* place = mWords + mFirst + index;
    moveWords(place + 1, place, mSize - index);
  }
  mWords[mFirst + index] = word;
  ++mSize;
  ++mChanges;
}

void WordList::erase(std::uint32_t first, std::uint32_t count) noexcept {
  const std::uint32_t behind = mSize - first - count;
  if (first < behind) {
    moveWords(mWords + mFirst + count, mWords + mFirst, first);
    mFirst += count;
  } else {
    moveWords(mWords + mFirst + first, mWords + mFirst + first + count, behind);
  }
  mSize -= count;
  ++mChanges;
}

void WordList::move(std::uint32_t from, std::uint32_t to) noexcept {
  Word* words = mWords + mFirst;
  ++mChanges;
  if (from < to) {
    std::rotate(words + from, words + from + 1, words + to + 1);
  } else {
    std::rotate(words + to, words + from, words + from + 1);
  }
}

std::uint32_t WordList::findNearEnds(const Instance* object, std::uint32_t limit) const noexcept {
  std::uint32_t front = 0;
  std::uint32_t back = mSize;
  while (front < back && front < limit) {
    if (at(front).object == object) return front;
    ++front;
    --back;
    if (at(back).object == object) return back;
  }
  return kNotFound;
}

void WordList::shrink() noexcept {
  if (mCapacity <= kShrinkAbove || mSize >= mCapacity / 4) return;
  const std::uint32_t capacity = std::max(kFirstCapacity, mCapacity / 2);
  // If there is no memory for a smaller block, the list keeps its storage.
  auto* words = static_cast<Word*>(utMalloc(capacity * sizeof(Word)));
  if (words) relocate(words, capacity, (capacity - mSize) / 2);
}

}  // namespace Tarvelon::metamodel::native
