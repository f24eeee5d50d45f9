#include "tarvelon/platform/k7q/handles/VariantTable.h"

#include <algorithm>
#include <new>
#include <utility>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/hx/ThreadLocal.h"

namespace K7Q::mi {

TARVELON_THREAD_LOCAL VariantTable::Stock VariantTable::tStock;

VariantTable& VariantTable::instance() noexcept {
  static constinit VariantTable table;
  return table;
}

namespace {

using ruvo::factory::basic::BindingSlot;

void* makeId(Variant& variant, bool isShared) noexcept {
  const auto marks = BindingSlot::kSlotted | (variant.isImmutable != 0 ? BindingSlot::kImmutable : 0) |
                     (isShared ? BindingSlot::kShared : 0);
  return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(&variant) | marks);
}

}  // namespace

void* VariantTable::idOf(const ReferenceCountingIntf& object, Deviant deviant, bool isImmutable) {
  if (object.mIsShared) [[unlikely]] {
    const std::scoped_lock lock(mSharedGuard);
    void* known = find(object, deviant, isImmutable);
    return known ? known : add(object, deviant, isImmutable);
  }
  void* known = find(object, deviant, isImmutable);
  return known ? known : add(object, deviant, isImmutable);
}

void* VariantTable::find(const ReferenceCountingIntf& object, Deviant deviant,
                         bool isImmutable) const noexcept {
  const std::uint32_t first = object.mIsRegistered ? object.mFirstVariant : Variant::kNone;
  for (std::uint32_t index = first; index != Variant::kNone; index = at(index).next) {
    Variant& known = at(index);
    if (known.deviant == deviant && (known.isImmutable != 0) == isImmutable)
      return makeId(known, object.mIsShared);
  }
  return nullptr;
}

void* VariantTable::add(const ReferenceCountingIntf& object, Deviant deviant, bool isImmutable) {
  const std::uint32_t index = take();
  const std::uint32_t next = object.mIsRegistered ? object.mFirstVariant : Variant::kNone;
  auto* native = const_cast<ReferenceCountingIntf*>(&object);
  auto* made = ::new (&at(index)) Variant{{}, native, deviant, next, isImmutable ? 1U : 0U};
  object.mFirstVariant = index;
  object.mIsRegistered = true;
  return makeId(*made, object.mIsShared);
}

void VariantTable::retract(const ReferenceCountingIntf& object) noexcept {
  if (!std::exchange(object.mIsRegistered, false)) return;
  Stock& stock = tStock;
  for (std::uint32_t index = object.mFirstVariant; index != Variant::kNone;) {
    Variant& variant = at(index);
    const std::uint32_t next = variant.next;
    variant.object = nullptr;
    variant.deviant = {};
    const bool isBound = variant.slot.hostObject.load(std::memory_order_acquire) != nullptr;
    put(isBound ? stock.retired : stock.free, index);
    index = next;
  }
  if (!stock.isListed) [[unlikely]]
    list(stock);
  if (stock.free.count + stock.retired.count > kKept) [[unlikely]]
    giveBack(stock);
}

void VariantTable::giveBack(Stock& stock) noexcept {
  const std::scoped_lock lock(mGuard);
  move(stock.free, mLeft.free);
  move(stock.retired, mLeft.retired);
}

std::uint32_t VariantTable::take() {
  Stock& stock = tStock;
  if (stock.free.first == Variant::kNone && stock.retired.count >= stock.sweepAt) sweep(stock);
  if (stock.free.first == Variant::kNone && stock.next == stock.end) fill(stock);
  if (stock.free.first == Variant::kNone) return stock.next++;
  --stock.free.count;
  return std::exchange(stock.free.first, at(stock.free.first).next);
}

void VariantTable::put(List& list, std::uint32_t index) const noexcept {
  at(index).next = std::exchange(list.first, index);
  ++list.count;
}

void VariantTable::move(List& from, List& to, std::uint32_t most) const noexcept {
  for (; from.first != Variant::kNone && most != 0; --most, --from.count) {
    const std::uint32_t index = from.first;
    from.first = at(index).next;
    put(to, index);
  }
}

void VariantTable::sweep(Stock& stock) const noexcept {
  std::uint32_t index = std::exchange(stock.retired, List{}).first;
  while (index != Variant::kNone) {
    const std::uint32_t next = at(index).next;
    // Acquire, because another thread may have destroyed the host object.
    const bool isBound = at(index).slot.hostObject.load(std::memory_order_acquire) != nullptr;
    put(isBound ? stock.retired : stock.free, index);
    index = next;
  }
  stock.sweepAt = std::max(kChunkSize / 2, stock.retired.count * 2);
}

/// Gives the thread more records: free records of other threads, or else new ones.
void VariantTable::fill(Stock& stock) {
  if (!list(stock)) throw bedrock::core::except::bad_alloc();
  const std::scoped_lock lock(mGuard);
  if (mLeft.free.first == Variant::kNone && mLeft.retired.count >= mLeft.sweepAt) sweep(mLeft);
  move(mLeft.free, stock.free, kChunkSize);
  if (stock.free.first != Variant::kNone) return;
  if (mGrantedTo == mCapacity.load(std::memory_order_relaxed)) grow();
  stock.next = mGrantedTo;
  mGrantedTo += kGranted;
  stock.end = mGrantedTo;
}

bool VariantTable::list(Stock& stock) noexcept {
  static TARVELON_THREAD_LOCAL hx::ThreadEnd tEnd{[]() noexcept { instance().inherit(tStock); }};
  if (!stock.isListed) stock.isListed = hx::runAtThreadEnd(tEnd);
  return stock.isListed;
}

void VariantTable::inherit(Stock& stock) noexcept {
  while (stock.next != stock.end) put(stock.free, stock.next++);
  giveBack(stock);
  stock = {};
}

void VariantTable::grow() {
  const std::uint32_t capacity = mCapacity.load(std::memory_order_relaxed);
  const std::uint32_t chunk = capacity >> kChunkBits;
  if (capacity > Variant::kNone - 2 * kChunkSize) throw bedrock::core::except::bad_alloc();
  Variant** chunks = mChunks.load(std::memory_order_relaxed);
  if (chunk == mChunkRoom) {
    const std::uint32_t room = std::max(16U, mChunkRoom * 2);
    auto** larger = static_cast<Variant**>(utCalloc(room + 1, sizeof(void*)));
    if (!larger) throw bedrock::core::except::bad_alloc();
    std::copy_n(chunks, mChunkRoom, larger);
    // Other threads may still read the old array, so it is not freed. The extra last place of the new array
    // points to it, for leak checkers.
    larger[room] = reinterpret_cast<Variant*>(chunks);
    mChunks.store(larger, std::memory_order_release);
    chunks = larger;
    mChunkRoom = room;
  }
  auto* records = static_cast<Variant*>(utCalloc(kChunkSize, sizeof(Variant)));
  if (!records) throw bedrock::core::except::bad_alloc();
  chunks[chunk] = records;
  mCapacity.store(capacity + kChunkSize, std::memory_order_relaxed);
}

}  // namespace K7Q::mi
