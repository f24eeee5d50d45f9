#include "tarvelon/platform/model/names/NameIndex.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/names/OwnerOrder.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/objects/Cursor.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/objects/NearestHolders.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/words/KeyedHash.h"
#include "tarvelon/platform/model/words/Memory.h"

namespace Tarvelon::metamodel::native {

namespace {

/// The average number of names in a bucket.
constexpr std::uint64_t kMean = 5;
/// There is one overflow bucket for each kFurther first buckets.
constexpr std::uint64_t kFurther = 4;
constexpr std::uint64_t kLeast = 16;
constexpr std::size_t kLine = 64;
/// How many names of a path are looked up before the objects that they lead to are read.
constexpr std::size_t kAtOnce = 8;
/// How many levels of objects without a name are searched for named ones; if there are more, the index is
/// rebuilt.
constexpr std::size_t kDeepest = 64;
/// How many owners without a name are passed in search of the naming holder; if there are more, the index is
/// rebuilt.
constexpr unsigned kFarthest = 1024;

/// The naming holder, if it is found within kFarthest steps.
std::optional<const Instance*> nearHolder(const Instance& object) noexcept {
  const Instance* holder = object.owner();
  for (unsigned steps = 0; holder && !isNamed(*holder); holder = holder->owner()) {
    if (++steps == kFarthest) return std::nullopt;
  }
  return holder;
}

/// The key for a parent. All ones for objects without a naming holder.
std::uint64_t numberOf(const Instance* parent) noexcept {
  return parent ? parent->number() : ~std::uint64_t{0};
}

/// Removes the first name from a path. `isLast` says whether it was the last one.
std::u16string_view cutName(std::u16string_view& path, bool& isLast) noexcept {
  const std::size_t end = path.find(u'/');
  const std::u16string_view name = path.substr(0, end);
  isLast = end == std::u16string_view::npos;
  path.remove_prefix(isLast ? path.size() : end + 1);
  return name;
}

void prefetch(const void* first, std::size_t size) noexcept {
  const auto* bytes = static_cast<const char*>(first);
  __builtin_prefetch(bytes);
  __builtin_prefetch(bytes + size - 1);
}

}  // namespace

bool NameIndex::Bucket::contains(const Entry& entry) const noexcept {
  return std::any_of(entries, entries + used, [&entry](const Entry& each) {
    return each.tag == entry.tag && each.number == entry.number;
  });
}

NameIndex::NameIndex(const NativeModel& model) : mModel(model) {
  // An upper bound: the number of objects whose class has a name property. Most of them have a name, and this
  // count reads no object.
  std::uint64_t names = 0;
  for (const InstanceIndex::ClassList& list : mModel.instances().classes()) {
    if (hasName(*list.cls)) names += list.numbers.size() - list.gaps;
  }
  const std::uint64_t first = names / kMean + kLeast;
  allocate(first, first / kFurther);
  enterAll();
  if (mIsComplete) return;
  // Very many objects share one name: adds an overflow bucket for each kEntries names.
  allocate(first, 2 * first + names / Bucket::kEntries);
  enterAll();
}

void NameIndex::allocate(std::uint64_t first, std::uint64_t further) {
  // Even if all objects of a model share one name, they need fewer than 2^32 buckets.
  mFirstCount = static_cast<std::uint32_t>(first);
  mCapacity = static_cast<std::uint32_t>(first + further);
  mUsed = mFirstCount;
  mIsComplete = true;
  const std::size_t size = mCapacity * sizeof(Bucket);
  mStorage.reset();
  mStorage.reset(allocateArray<std::byte>(size + kLine));
  void* start = mStorage.get();
  std::size_t room = size + kLine;
  mBuckets = static_cast<Bucket*>(std::align(kLine, size, start, room));
  for (std::uint32_t bucket = 0; bucket < mFirstCount; ++bucket) {
    mBuckets[bucket].used = 0;
    mBuckets[bucket].next = kNone;
  }
}

void NameIndex::enterAll() {
  NearestHolders<&isNamed> holders;
  mModel.instances().forEach([this, &holders](const Instance& object) {
    if (mIsComplete && object.isAlive() && isNamed(object)) enter(object, holders.of(object));
  });
}

void NameIndex::enter(const Instance& object, const Instance* holder) noexcept {
  const std::uint64_t hash = keyedHash(numberOf(holder), ownName(object));
  const Entry entry{static_cast<std::uint32_t>(hash), object.number()};
  Bucket& first = bucketOf(hash);
  if (first.contains(entry)) return;
  Bucket* bucket = &first;
  if (first.used == Bucket::kEntries && first.next != kNone) {
    bucket = &mBuckets[first.next];
    if (bucket->contains(entry)) return;
  }
  if (bucket->used == Bucket::kEntries) {
    if (mUsed == mCapacity) {
      mIsComplete = false;
      return;
    }
    bucket = &mBuckets[mUsed];
    bucket->used = 0;
    bucket->next = std::exchange(first.next, mUsed++);
  }
  bucket->entries[bucket->used++] = entry;
}

/// Enters an object. REQUIRES: the object has a name.
void NameIndex::enterNamed(const Instance& object) noexcept {
  const auto holder = nearHolder(object);
  if (holder) {
    enter(object, *holder);
  } else {
    mIsComplete = false;
  }
}

/// Enters the nearest named objects below. Returns false if there are more than kDeepest levels without a
/// name.
bool NameIndex::enterBelow(const Instance& object) noexcept {
  std::array<Cursor, kDeepest> open;
  std::size_t depth = 0;
  open[depth++] = Cursor(object, object.cls().holdingSlots);
  while (depth != 0) {
    Cursor& held = open[depth - 1];
    if (!held.next()) {
      --depth;
      continue;
    }
    const Instance& each = *held.value().object;
    if (isNamed(each)) {
      enterNamed(each);
    } else if ((each.presence() & each.cls().holdingSlots) != 0) {
      if (depth == kDeepest) return false;
      open[depth++] = Cursor(each, each.cls().holdingSlots);
    }
  }
  return true;
}

void NameIndex::noteName(const Instance& object, bool hadName) noexcept {
  if (!mIsComplete) return;
  const bool hasOne = isNamed(object);
  if (hasOne) enterNamed(object);
  if (hasOne != hadName && !enterBelow(object)) mIsComplete = false;
}

void NameIndex::noteOwner(const Instance& object) noexcept {
  if (!mIsComplete) return;
  if (isNamed(object)) {
    enterNamed(object);
  } else if (!enterBelow(object)) {
    mIsComplete = false;
  }
}

template <class Visit>
void NameIndex::forEach(const Instance* parent, std::u16string_view name, Visit visit) const {
  const std::uint64_t hash = keyedHash(numberOf(parent), name);
  const auto tag = static_cast<std::uint32_t>(hash);
  for (const Bucket* bucket = &bucketOf(hash); bucket; bucket = behind(*bucket)) {
    for (std::uint32_t place = 0; place < bucket->used; ++place) {
      if (bucket->entries[place].tag != tag) continue;
      Instance* object = mModel.instances().find(bucket->entries[place].number);
      if (object && object->isAlive() && ownName(*object) == name) visit(*object);
    }
  }
}

bool NameIndex::knows(const Instance& object) const noexcept {
  const std::uint64_t hash = keyedHash(numberOf(namingHolder(object)), ownName(object));
  const Entry entry{static_cast<std::uint32_t>(hash), object.number()};
  const Bucket* bucket = &bucketOf(hash);
  while (bucket && !bucket->contains(entry)) bucket = behind(*bucket);
  return bucket != nullptr;
}

std::uint32_t NameIndex::onlyNumber(std::uint64_t hash) const noexcept {
  const auto tag = static_cast<std::uint32_t>(hash);
  std::uint32_t number = kNone;
  for (const Bucket* bucket = &bucketOf(hash); bucket; bucket = behind(*bucket)) {
    for (std::uint32_t place = 0; place < bucket->used; ++place) {
      if (bucket->entries[place].tag != tag) continue;
      if (number != kNone) return kNone;
      number = bucket->entries[place].number;
    }
  }
  return number;
}

/// Whether each object exists, has its name, and is directly below the object before. Reads one level of
/// memory for all objects at a time, so that the waiting times for memory overlap.
bool NameIndex::stand(std::span<const std::u16string_view> names, std::span<Instance* const> objects,
                      const Instance* parent) const noexcept {
  std::array<const Word*, kAtOnce> words;
  for (std::size_t level = 0; level < names.size(); ++level) {
    const Instance& object = *objects[level];
    words[level] = object.isAlive() && hasName(object.cls()) ? object.find(object.cls().nameSlot) : nullptr;
    if (!words[level]) return false;
    __builtin_prefetch(words[level]);
  }
  for (std::size_t level = 0; level < names.size(); ++level) {
    const auto* text = words[level]->text;
    if (!text) return false;
    prefetch(text, sizeof(*text) + names[level].size() * sizeof(char16_t));
  }
  for (std::size_t level = 0; level < names.size(); ++level) {
    if (words[level]->text->view() != names[level] || !isNamedBelow(*objects[level], parent)) return false;
    parent = objects[level];
  }
  return true;
}

Instance* NameIndex::findPath(std::u16string_view path) const noexcept {
  const InstanceIndex& instances = mModel.instances();
  std::array<std::u16string_view, kAtOnce> names;
  std::array<Instance*, kAtOnce> objects;
  Instance* parent = nullptr;
  std::uint64_t number = numberOf(nullptr);
  for (bool isLast = false; !isLast;) {
    std::size_t levels = 0;
    for (; levels < kAtOnce && !isLast; ++levels) {
      names[levels] = cutName(path, isLast);
      number = onlyNumber(keyedHash(number, names[levels]));
      objects[levels] = number == kNone ? nullptr : instances.find(static_cast<std::uint32_t>(number));
      if (!objects[levels]) return nullptr;
      prefetch(objects[levels], sizeof(Instance));
    }
    if (!stand({names.data(), levels}, {objects.data(), levels}, parent)) return nullptr;
    parent = objects[levels - 1];
  }
  return parent;
}

std::vector<Instance*> NameIndex::candidates(const Instance* parent, std::u16string_view name) const {
  std::vector<Instance*> found;
  forEach(parent, name, [&found](Instance& object) { found.push_back(&object); });
  // An object that had the same name before has two entries.
  std::ranges::sort(found);
  found.erase(std::unique(found.begin(), found.end()), found.end());
  if (found.size() == 1 && !isNamedBelow(*found[0], parent)) found.clear();
  return found;
}

std::vector<Instance*> NameIndex::find(const Instance* parent, std::u16string_view name) const {
  std::vector<Instance*> found = candidates(parent, name);
  return found.size() < 2 ? found : OwnerOrder(found, parent).all();
}

Instance* NameIndex::findFirst(const Instance* parent, std::u16string_view name) const {
  const std::vector<Instance*> found = candidates(parent, name);
  if (found.empty()) return nullptr;
  return found.size() == 1 ? found[0] : OwnerOrder(found, parent).first();
}

}  // namespace Tarvelon::metamodel::native
