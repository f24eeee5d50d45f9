#include "tarvelon/platform/model/objects/InstanceIndex.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string>
#include <utility>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/hx/Blocks.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/words/Memory.h"

namespace Tarvelon::metamodel::native {

namespace {

constexpr std::uint16_t kNoList = std::numeric_limits<std::uint16_t>::max();

/// Makes room for one more element. The capacity grows geometrically, so the amortised cost is constant.
template <class T>
void reserveOne(std::vector<T>& vector) {
  constexpr std::size_t kFirst = 8;
  if (vector.size() == vector.capacity()) vector.reserve(std::max(kFirst, 2 * vector.capacity()));
}

}  // namespace

std::size_t liveObjects() noexcept { return hx::sumOf(hx::Counted::ModelObjects); }

void InstanceIndex::reserve(const ClassData& cls) {
  if (cls.ordinal >= mLists.size()) mLists.resize(cls.ordinal + 1, kNoList);
  if (mLists[cls.ordinal] == kNoList) {
    reserveOne(mClasses);
    mLists[cls.ordinal] = static_cast<std::uint16_t>(mClasses.size());
    mClasses.push_back({&cls, {}});
  }
  reserveOne(listOf(cls).numbers);
  // For tests that let an allocation fail: each object counts as one allocation, whether its chunk has room
  // or not.
  if (hx::tThread.allocationsUntilFailure != 0) utFree(allocate(1));
  if (mFirstWithRoom == kNone) {
    // The greatest number is kNone and cannot be used.
    if (mSlabs.size() == kNone / kChunk) {
      throw K7Q::OutOfRange("a model holds at most " + std::to_string(kNone / kChunk * kChunk) +
                            " objects; make a second model");
    }
    reserveOne(mSlabs);
    mFirstWithRoom = static_cast<std::uint32_t>(mSlabs.size());
    mSlabs.push_back({nullptr, kNone});
  }
  Slab& slab = mSlabs[mFirstWithRoom];
  if (slab.chunk) return;
  if (mEmpty != kNone) {
    slab.chunk = std::exchange(mSlabs[mEmpty].chunk, nullptr);
  } else {
    slab.chunk = allocateArray<Chunk>(1);
    slab.chunk->used = 0;
  }
  mEmpty = mFirstWithRoom;
}

InstanceIndex::ClassList& InstanceIndex::listOf(const ClassData& cls) noexcept {
  return mClasses[mLists[cls.ordinal]];
}

Instance& InstanceIndex::make(NativeModel& model, const ClassData& cls) noexcept {
  const std::uint32_t slabNumber = mFirstWithRoom;
  Slab& slab = mSlabs[slabNumber];
  Chunk& chunk = *slab.chunk;
  if (slabNumber == mEmpty) mEmpty = kNone;
  const auto offset = static_cast<std::uint32_t>(std::countr_one(chunk.used));
  chunk.used |= std::uint64_t{1} << offset;
  if (chunk.used == kFull) mFirstWithRoom = slab.nextWithRoom;

  const std::uint32_t number = slabNumber * kChunk + offset;
  auto& numbers = listOf(cls).numbers;
  chunk.places[offset] = static_cast<std::uint32_t>(numbers.size());
  numbers.push_back(number);
  hx::addTo(hx::Counted::ModelObjects, 1);
  return *::new (&chunk.storage[offset]) Instance(model, cls, number);
}

void InstanceIndex::leaveClass(const Instance& instance) noexcept {
  ClassList& list = listOf(instance.cls());
  list.numbers[place(instance.number())] = kNone;
  ++list.gaps;
  constexpr std::uint32_t kFew = 32;
  if (list.gaps > kFew && list.gaps > list.numbers.size() / 2) closeGaps(list);
}

void InstanceIndex::closeGaps(ClassList& list) noexcept {
  std::erase(list.numbers, kNone);
  list.gaps = 0;
  for (std::uint32_t index = 0; index < list.numbers.size(); ++index) place(list.numbers[index]) = index;
}

void InstanceIndex::free(Instance& instance) noexcept {
  const std::uint32_t slabNumber = instance.number() / kChunk;
  const std::uint32_t offset = instance.number() % kChunk;
  Slab& slab = mSlabs[slabNumber];
  instance.~Instance();
  hx::addTo(hx::Counted::ModelObjects, -1);
  if (slab.chunk->used == kFull) {
    slab.nextWithRoom = mFirstWithRoom;
    mFirstWithRoom = slabNumber;
  }
  slab.chunk->used &= ~(std::uint64_t{1} << offset);
  if (slab.chunk->used == 0) dropEmpty(slabNumber);
}

// One empty chunk is kept, so that creating and destroying a single object repeatedly allocates nothing.
void InstanceIndex::dropEmpty(std::uint32_t slab) noexcept {
  if (mEmpty == kNone && !hx::kHasAsan) {
    mEmpty = slab;
  } else {
    utFree(std::exchange(mSlabs[slab].chunk, nullptr));
  }
}

void InstanceIndex::clear() noexcept {
  mClasses = {};
  mLists = {};
  if (mEmpty == kNone) return;
  utFree(std::exchange(mSlabs[mEmpty].chunk, nullptr));
  mEmpty = kNone;
}

}  // namespace Tarvelon::metamodel::native
