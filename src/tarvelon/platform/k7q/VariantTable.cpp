#include "tarvelon/platform/k7q/VariantTable.h"

#include <algorithm>
#include <new>
#include <utility>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ut/Memory.h"

namespace K7Q::mi {

namespace {

using ruvo::factory::basic::BindingSlot;

void* makeId(Variant& variant) noexcept {
  const auto marks = BindingSlot::kSlotted | (variant.isImmutable != 0 ? BindingSlot::kImmutable : 0);
  return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(&variant) | marks);
}

}  // namespace

void* VariantTable::idOf(const ReferenceCountingIntf& object, Deviant deviant, bool isImmutable) {
  const std::uint32_t first = object.mIsRegistered ? object.mFirstVariant : Variant::kNone;
  for (std::uint32_t index = first; index != Variant::kNone; index = at(index).next) {
    Variant& known = at(index);
    if (known.deviant == deviant && (known.isImmutable != 0) == isImmutable) return makeId(known);
  }
  const std::uint32_t index = take();
  auto* native = const_cast<ReferenceCountingIntf*>(&object);
  auto* made = ::new (&at(index)) Variant{{}, native, deviant, first, isImmutable ? 1U : 0U};
  object.mFirstVariant = index;
  object.mIsRegistered = true;
  return makeId(*made);
}

void VariantTable::retract(const ReferenceCountingIntf& object) noexcept {
  if (!std::exchange(object.mIsRegistered, false)) return;
  for (std::uint32_t index = object.mFirstVariant; index != Variant::kNone;) {
    Variant& variant = at(index);
    const std::uint32_t next = variant.next;
    variant.object = nullptr;
    variant.deviant = {};
    if (variant.slot.hostObject) {
      variant.next = std::exchange(mRetired, index);
      ++mRetiredCount;
    } else {
      give(index);
    }
    index = next;
  }
}

std::uint32_t VariantTable::take() {
  if (mFree == Variant::kNone && mRetiredCount >= mSweepAt) sweepRetired();
  if (mFree != Variant::kNone) return std::exchange(mFree, at(mFree).next);
  if (mUsed == mCapacity) grow();
  return mUsed++;
}

void VariantTable::give(std::uint32_t index) noexcept { at(index).next = std::exchange(mFree, index); }

void VariantTable::sweepRetired() noexcept {
  std::uint32_t index = std::exchange(mRetired, Variant::kNone);
  mRetiredCount = 0;
  while (index != Variant::kNone) {
    const std::uint32_t next = at(index).next;
    if (at(index).slot.hostObject) {
      at(index).next = std::exchange(mRetired, index);
      ++mRetiredCount;
    } else {
      give(index);
    }
    index = next;
  }
  mSweepAt = std::max(kChunkSize / 2, mRetiredCount * 2);
}

void VariantTable::grow() {
  const std::uint32_t chunk = mCapacity >> kChunkBits;
  if (mCapacity > Variant::kNone - 2 * kChunkSize) throw bedrock::core::except::bad_alloc();
  if (chunk == mChunkRoom) {
    const std::uint32_t room = std::max(16U, mChunkRoom * 2);
    auto** chunks = static_cast<Variant**>(utCalloc(room, sizeof(Variant*)));
    if (!chunks) throw bedrock::core::except::bad_alloc();
    std::copy_n(mChunks, mChunkRoom, chunks);
    utFree(std::exchange(mChunks, chunks));
    mChunkRoom = room;
  }
  auto* records = static_cast<Variant*>(utCalloc(kChunkSize, sizeof(Variant)));
  if (!records) throw bedrock::core::except::bad_alloc();
  mChunks[chunk] = records;
  mCapacity += kChunkSize;
}

}  // namespace K7Q::mi
