#include "platform/tarvelon/InstanceIndex.h"

#include <algorithm>
#include <limits>

#include "boundary/k7q/Exception.h"
#include "platform/tarvelon/ClassData.h"
#include "platform/tarvelon/Instance.h"
#include "platform/tarvelon/Memory.h"

namespace Tarvelon::metamodel::native {

namespace {

constexpr std::uint16_t kNoList = std::numeric_limits<std::uint16_t>::max();

/// Room for one more, in steps that keep the cost of an element constant.
template <class T>
void reserveOne(std::vector<T>& vector) {
  constexpr std::size_t kFirst = 8;
  if (vector.size() == vector.capacity()) vector.reserve(std::max(kFirst, 2 * vector.capacity()));
}

}  // namespace

void InstanceIndex::addChunk() {
  reserveOne(mChunks);
  mChunks.push_back(allocateArray<Chunk>(1));
}

std::uint32_t InstanceIndex::reserve(const ClassData& cls) {
  if (cls.ordinal >= mLists.size()) mLists.resize(cls.ordinal + 1, kNoList);
  if (mLists[cls.ordinal] == kNoList) {
    reserveOne(mClasses);
    mLists[cls.ordinal] = static_cast<std::uint16_t>(mClasses.size());
    mClasses.push_back({&cls, {}});
  }
  reserveOne(listOf(cls).numbers);
  if (mFirstFree != kNone) return mFirstFree;
  if (mUsed == kNone) throw K7Q::OutOfRange("a model holds at most 4294967295 objects; make a second model");
  if (mUsed / kChunk == mChunks.size()) addChunk();
  return mUsed;
}

InstanceIndex::ClassList& InstanceIndex::listOf(const ClassData& cls) noexcept {
  return mClasses[mLists[cls.ordinal]];
}

void InstanceIndex::insert(std::uint32_t number, Instance& instance) noexcept {
  if (number == mUsed) {
    ++mUsed;
  } else {
    mFirstFree = static_cast<std::uint32_t>(entry(number) >> 1);
  }
  auto& numbers = listOf(instance.cls()).numbers;
  entry(number) = reinterpret_cast<Entry>(&instance);
  place(number) = static_cast<std::uint32_t>(numbers.size());
  numbers.push_back(number);
}

void InstanceIndex::erase(const Instance& instance) noexcept {
  const std::uint32_t number = instance.number();
  ClassList& list = listOf(instance.cls());
  list.numbers[place(number)] = kNone;
  ++list.gaps;
  entry(number) = Entry{mFirstFree} << 1 | 1;
  mFirstFree = number;
  constexpr std::uint32_t kFew = 32;
  if (list.gaps > kFew && list.gaps > list.numbers.size() / 2) closeGaps(list);
}

void InstanceIndex::closeGaps(ClassList& list) noexcept {
  std::erase(list.numbers, kNone);
  list.gaps = 0;
  for (std::uint32_t index = 0; index < list.numbers.size(); ++index) place(list.numbers[index]) = index;
}

void InstanceIndex::clear() noexcept {
  for (Chunk* chunk : mChunks) utFree(chunk);
  mChunks = {};
  mClasses = {};
  mLists = {};
  mUsed = 0;
  mFirstFree = kNone;
}

}  // namespace Tarvelon::metamodel::native
