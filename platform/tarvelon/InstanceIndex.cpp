#include "platform/tarvelon/InstanceIndex.h"

#include <cstring>

#include "boundary/k7q/Exception.h"
#include "platform/tarvelon/Memory.h"

namespace Tarvelon::metamodel::native {

void InstanceIndex::addChunk() {
  if (mChunkCount == mChunkCapacity) {
    const std::uint32_t capacity = mChunkCapacity == 0 ? 8 : 2 * mChunkCapacity;
    auto** chunks = allocateArray<Entry*>(capacity);
    if (mChunkCount != 0) std::memcpy(chunks, mChunks, mChunkCount * sizeof(Entry*));
    utFree(mChunks);
    mChunks = chunks;
    mChunkCapacity = capacity;
  }
  mChunks[mChunkCount] = allocateArray<Entry>(kChunk);
  ++mChunkCount;
}

std::uint32_t InstanceIndex::reserve() {
  if (mFirstFree != kNone) return mFirstFree;
  if (mUsed == kNone) throw K7Q::OutOfRange("a model holds at most 4294967295 objects; make a second model");
  if (mUsed / kChunk == mChunkCount) addChunk();
  return mUsed;
}

void InstanceIndex::insert(std::uint32_t number, Instance* instance) noexcept {
  if (number == mUsed) {
    ++mUsed;
  } else {
    mFirstFree = static_cast<std::uint32_t>(entry(number) >> 1);
  }
  entry(number) = reinterpret_cast<Entry>(instance);
}

void InstanceIndex::erase(std::uint32_t number) noexcept {
  entry(number) = Entry{mFirstFree} << 1 | 1;
  mFirstFree = number;
}

void InstanceIndex::clear() noexcept {
  for (std::uint32_t chunk = 0; chunk < mChunkCount; ++chunk) utFree(mChunks[chunk]);
  utFree(mChunks);
  mChunks = nullptr;
  mChunkCount = mChunkCapacity = mUsed = 0;
  mFirstFree = kNone;
}

}  // namespace Tarvelon::metamodel::native
