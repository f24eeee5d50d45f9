#include "platform/tarvelon/NameIndex.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <unordered_map>
#include <utility>

#include "boundary/k7q/Exception.h"
#include "boundary/k7q/Primitives.h"
#include "platform/tarvelon/ClassData.h"
#include "platform/tarvelon/Held.h"
#include "platform/tarvelon/Instance.h"
#include "platform/tarvelon/Links.h"
#include "platform/tarvelon/Memory.h"
#include "platform/tarvelon/NativeModel.h"
#include "platform/tarvelon/QualifiedName.h"
#include "platform/tarvelon/WordList.h"

namespace Tarvelon::metamodel::native {

namespace {

constexpr std::uint32_t kFirstCapacity = 64;
/// How many entries are looked at for one that is there already.
constexpr unsigned kLooked = 8;
/// How many holders without a name may stand above one another before the index is rather built anew.
constexpr unsigned kDeepest = 64;

std::uint32_t hashOf(const Instance* parent, std::u16string_view name) noexcept {
  std::uint64_t hash = (parent ? parent->number() + 1ULL : 0ULL) * 0x9E3779B97F4A7C15U;
  const char16_t* unit = name.data();
  std::size_t left = name.size();
  for (; left >= 4; left -= 4, unit += 4) {
    std::uint64_t block;
    std::memcpy(&block, unit, sizeof(block));
    hash = (std::rotl(hash, 23) ^ block) * 0xFF51AFD7ED558CCDU;
  }
  for (; left > 0; --left, ++unit) hash = (std::rotl(hash, 23) ^ *unit) * 0xFF51AFD7ED558CCDU;
  hash ^= hash >> 32;
  return static_cast<std::uint32_t>(hash) | 1U;  // 0 says that a place is free
}

std::uint32_t homeOf(std::uint32_t hash, std::uint32_t capacity) noexcept {
  return static_cast<std::uint32_t>((hash * 0x9E3779B97F4A7C15U) >> 32) & (capacity - 1);
}

/// The naming holders of many objects. Where very many without a name stand above one another, some of them
/// are remembered, so that the way up is not gone from each again.
class Holders {
 public:
  const Instance* of(const Instance& object) {
    const Instance* holder = object.owner();
    unsigned steps = 0;
    for (; holder && !isNamed(*holder); holder = holder->owner()) {
      if (++steps % kDeepest != 0) continue;
      const auto known = mFar.find(holder);
      if (known == mFar.end()) {
        mPassed.push_back(holder);
        continue;
      }
      holder = known->second;
      break;
    }
    for (const Instance* each : mPassed) mFar.emplace(each, holder);
    mPassed.clear();
    return holder;
  }

 private:
  std::unordered_map<const Instance*, const Instance*> mFar;
  std::vector<const Instance*> mPassed;
};

/// The way from the root: slots and places in them.
std::vector<std::pair<unsigned, std::uint32_t>> wayTo(const Instance& object) {
  std::vector<std::pair<unsigned, std::uint32_t>> way;
  const Instance* each = &object;
  for (const Instance* owner = each->owner(); owner; each = owner, owner = each->owner()) {
    const unsigned slot = each->ownerSlot();
    way.emplace_back(slot, isList(*owner, slot) ? listOf(*owner, slot)->find(each) : 0U);
  }
  way.emplace_back(0U, each->number());
  std::ranges::reverse(way);
  return way;
}

}  // namespace

bool standsBefore(const Instance& left, const Instance& right) { return wayTo(left) < wayTo(right); }

NameIndex::NameIndex(const NativeModel& model) : mModel(model) {
  // As if all that can have a name had one, which most do: so nobody has to be looked at twice.
  std::uint64_t names = 0;
  for (const InstanceIndex::ClassList& list : mModel.instances().classes()) {
    if (hasName(*list.cls)) names += list.numbers.size() - list.gaps;
  }
  // An eighth as many may come before another one is built, and each pays for eight of that.
  const std::uint64_t capacity = std::max<std::uint64_t>(kFirstCapacity, names + names / 8);
  if (capacity > std::uint64_t{1} << 31) {
    throw K7Q::OutOfRange("a model finds at most 1908874353 objects by name; make a second model");
  }
  mCapacity = static_cast<std::uint32_t>(capacity);
  mHeadCount = std::bit_floor(mCapacity);
  mEntries.reset(allocateArray<Entry>(mCapacity));
  mHeads.reset(allocateArray<std::uint32_t>(mHeadCount));
  std::fill_n(mHeads.get(), mHeadCount, kNone);
  Holders holders;
  mModel.instances().forEach([this, &holders](const Instance& object) {
    if (object.isAlive() && isNamed(object)) enter(object, holders.of(object));
  });
}

void NameIndex::enter(const Instance& object, const Instance* holder) noexcept {
  const std::uint32_t hash = hashOf(holder, ownName(object));
  const std::uint32_t number = object.number();
  std::uint32_t& head = mHeads[homeOf(hash, mHeadCount)];
  // A few are looked at, not all: very many may have the same name.
  std::uint32_t place = head;
  for (unsigned met = 0; place != kNone && met < kLooked; ++met, place = mEntries[place].next) {
    if (mEntries[place].hash == hash && mEntries[place].number == number) return;
  }
  if (mUsed == mCapacity) {
    mIsComplete = false;
    return;
  }
  mEntries[mUsed] = {hash, number, head};
  head = mUsed++;
}

/// Enters the nearest named ones below. False if some stand deeper than `depth`.
bool NameIndex::enterBelow(const Instance& object,
                           unsigned depth) noexcept {  // NOLINT(misc-no-recursion): bounded
  if ((object.presence() & object.cls().holdingSlots) == 0) return true;
  if (depth == 0) return false;
  bool isAll = true;
  forEachHeld(object, [&](Instance& held, unsigned /*slot*/) {
    if (isNamed(held)) {
      enter(held, namingHolder(held));
    } else {
      isAll = enterBelow(held, depth - 1) && isAll;
    }
  });
  return isAll;
}

void NameIndex::noteName(const Instance& object, bool hadName) noexcept {
  if (!mIsComplete) return;
  const bool hasOne = isNamed(object);
  if (hasOne) enter(object, namingHolder(object));
  if (hasOne != hadName && !enterBelow(object, kDeepest)) mIsComplete = false;
}

void NameIndex::noteOwner(const Instance& object) noexcept {
  if (!mIsComplete) return;
  if (isNamed(object)) {
    enter(object, namingHolder(object));
  } else if (!enterBelow(object, kDeepest)) {
    mIsComplete = false;
  }
}

template <class Visit>
void NameIndex::forEach(const Instance* parent, std::u16string_view name, Visit visit) const {
  const std::uint32_t hash = hashOf(parent, name);
  for (std::uint32_t place = mHeads[homeOf(hash, mHeadCount)]; place != kNone; place = mEntries[place].next) {
    if (mEntries[place].hash != hash) continue;
    Instance* object = mModel.instances().find(mEntries[place].number);
    if (!object || !object->isAlive() || ownName(*object) != name || !isNamedBelow(*object, parent)) continue;
    visit(*object);
  }
}

NameIndex::Only NameIndex::findOnly(const Instance* parent, std::u16string_view name) const noexcept {
  Only only{nullptr, true};
  forEach(parent, name, [&only](Instance& object) {
    only.isOnly = only.isOnly && (!only.object || only.object == &object);
    only.object = &object;
  });
  return only;
}

std::vector<Instance*> NameIndex::find(const Instance* parent, std::u16string_view name) const {
  std::vector<Instance*> found;
  forEach(parent, name, [&found](Instance& object) { found.push_back(&object); });
  if (found.size() < 2) return found;
  // One that had the name before stands there twice.
  std::ranges::sort(found);
  found.erase(std::unique(found.begin(), found.end()), found.end());
  std::ranges::sort(found,
                    [](const Instance* left, const Instance* right) { return standsBefore(*left, *right); });
  return found;
}

}  // namespace Tarvelon::metamodel::native
