// Checks of everything besides the objects: numbers, class lists, the index of names, ids.

#include <algorithm>
#include <bit>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/audit/Auditor.h"
#include "tarvelon/platform/model/names/NameIndex.h"
#include "tarvelon/platform/model/names/QualifiedName.h"

namespace Tarvelon::metamodel::native {

namespace {

constexpr const char* kNumbers = "the number of an object is its position";
constexpr const char* kFree = "slabs with free places form a list";
constexpr const char* kClasses = "the lists of the classes contain all objects";

}  // namespace

void Auditor::checkNumbers() {
  const InstanceIndex& index = mModel.instances();
  for (std::size_t slab = 0; slab < index.mSlabs.size(); ++slab) {
    InstanceIndex::Chunk* chunk = index.mSlabs[slab].chunk;
    for (std::uint64_t left = chunk ? chunk->used : 0; left != 0; left &= left - 1) {
      ++mCost;
      const auto offset = static_cast<std::uint32_t>(std::countr_zero(left));
      const Instance& object = *chunk->at(offset);
      const std::size_t number = slab * InstanceIndex::kChunk + offset;
      if (object.number() != number || &object.model() != &mModel) {
        violate(kNumbers, "the object at " + std::to_string(number) + " has the number " +
                              std::to_string(object.number()) +
                              (&object.model() == &mModel ? "" : " and belongs to another model"));
      }
      if (object.hasExpired() && object.numRef() == 0) {
        violate("an expired object is kept only for its handles",
                "the object with the number " + std::to_string(number) + " has no handle");
      }
    }
  }
}

void Auditor::checkFreePlaces() {
  const InstanceIndex& index = mModel.instances();
  std::size_t expected = 0;
  for (const InstanceIndex::Slab& slab : index.mSlabs) {
    if (!slab.chunk || slab.chunk->used != InstanceIndex::kFull) ++expected;
  }
  std::size_t found = 0;
  for (std::uint32_t slab = index.mFirstWithRoom; slab != InstanceIndex::kNone;
       slab = index.mSlabs[slab].nextWithRoom) {
    if (slab >= index.mSlabs.size() || ++found > expected) break;
  }
  if (found != expected) {
    violate(kFree,
            std::to_string(expected) + " slabs have free places, but the list has " + std::to_string(found));
  }
  if (index.mEmpty == InstanceIndex::kNone) return;
  const InstanceIndex::Chunk* kept = index.mSlabs.at(index.mEmpty).chunk;
  if (!kept || kept->used != 0) violate(kFree, "the chunk that is kept empty has objects");
}

void Auditor::checkClasses() {
  const InstanceIndex& index = mModel.instances();
  std::size_t listed = 0;
  for (const InstanceIndex::ClassList& list : index.classes()) {
    std::uint32_t gaps = 0;
    for (std::size_t place = 0; place < list.numbers.size(); ++place) {
      const std::uint32_t number = list.numbers[place];
      if (number == InstanceIndex::kNone) {
        ++gaps;
        continue;
      }
      ++listed;
      const Instance* object = index.find(number);
      if (!isThere(object) || &object->cls() != list.cls) {
        violate(kClasses, "the list of " + std::string(shortName(*list.cls)) + " has the number " +
                              std::to_string(number) + ", but no object of the class has that number");
      }
      const auto* chunk = index.mSlabs[number / InstanceIndex::kChunk].chunk;
      if (chunk->places[number % InstanceIndex::kChunk] != place) {
        violate(kClasses, shownObject(object) + " has a wrong position for the list of its class");
      }
    }
    if (gaps != list.gaps)
      violate(kClasses, "the list of " + std::string(shortName(*list.cls)) + " has a wrong number of gaps");
  }
  std::size_t there = 0;
  index.forEach([&there](const Instance& /*object*/) { ++there; });
  if (listed != there) {
    violate(kClasses,
            std::to_string(there) + " objects exist, but the lists contain " + std::to_string(listed));
  }
}

void Auditor::checkNames() {
  const NameIndex* names = mModel.mNames.get();
  if (!names || !names->isComplete()) return;
  mModel.forEachInstance([&](const Instance& object) {
    ++mCost;
    if (isNamed(object) && !names->knows(object)) {
      violate("the index of names contains all named objects", "it lacks " + shownObject(&object));
    }
  });
}

void Auditor::checkIds() {
  UnnoticedVector<std::pair<std::uint64_t, const Instance*>> numbers;
  UnnoticedVector<std::pair<std::u16string_view, const Instance*>> texts;
  mModel.instances().forEach([&](const Instance& object) {
    if (const Word* id = object.find(ClassData::kIdSlot)) numbers.emplace_back(id->bits, &object);
    if (const Word* id = object.find(ClassData::kForeignIdSlot))
      texts.emplace_back(id->text->view(), &object);
  });
  const auto check = [](auto& ids) {
    std::ranges::sort(ids);
    const auto same = std::ranges::adjacent_find(ids, {}, [](const auto& each) { return each.first; });
    if (same == ids.end()) return;
    violate("ids are unique",
            shownObject(same->second) + " and " + shownObject(std::next(same)->second) + " have the same id");
  };
  check(numbers);
  check(texts);
}

}  // namespace Tarvelon::metamodel::native
