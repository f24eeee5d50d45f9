#include "tarvelon/platform/model/copy/Placement.h"

#include <string>
#include <vector>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/model/copy/Paths.h"
#include "tarvelon/platform/model/copy/Visit.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/values/Refusal.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace Tarvelon::metamodel::native {

namespace {

const Property& rowOf(const Instance& owner, unsigned slot) { return *owner.cls().slotProperties[slot]; }

bool fits(const Instance& owner, unsigned slot, const Instance& object) {
  const Property& property = rowOf(owner, slot);
  return !property.isReadOnly() && property.type()->isInstance(object);
}

bool takesOneMore(const Instance& owner, unsigned slot) {
  return isList(owner.cls(), slot) || !owner.has(slot);
}

std::string told(const Instance& object) {
  const std::string path = Paths().path(object);
  const bool saysClass = !object.owner() && !isNamed(object);
  return saysClass ? path : std::string(shortName(object.cls())) + " " + path;
}

std::string clone(const Instance& object, const Instance& owner) {
  return "clone of " + told(object) + " into " + told(owner) + ": ";
}

/// "PackagedElement, adminData"
std::string listed(const Instance& owner, const std::vector<unsigned>& slots) {
  std::string text;
  for (const unsigned slot : slots)
    text.append(text.empty() ? "" : ", ").append(rowOf(owner, slot).row().name);
  return text;
}

std::vector<unsigned> holdingSlots(const Instance& owner) {
  std::vector<unsigned> slots;
  forEachSlot(owner.cls().holdingSlots, [&](unsigned slot) {
    if (!rowOf(owner, slot).isReadOnly()) slots.push_back(slot);
  });
  return slots;
}

[[noreturn]] void refuseTaken(const Instance& object, const Instance& owner, unsigned slot) {
  throw K7Q::WrongValue(clone(object, owner) + rowOf(owner, slot).row().name +
                        " holds at most one object and is already set; unset it first");
}

unsigned namedPlace(const Instance& object, const Instance& owner, std::string_view property) {
  const std::vector<unsigned> slots = holdingSlots(owner);
  for (const unsigned slot : slots) {
    if (property != rowOf(owner, slot).row().name && property != rowOf(owner, slot).metaName()) continue;
    if (!fits(owner, slot, object)) {
      refuseKind(owner.cls(), rowOf(owner, slot),
                 K7Q::Object(const_cast<Instance*>(&object), K7Q::Deviant{}));
    }
    if (!takesOneMore(owner, slot)) refuseTaken(object, owner, slot);
    return slot;
  }
  throw K7Q::UnknownName(clone(object, owner) + "the owner contains no objects as " +
                         ruvo::quotedName(property) + "; it contains objects as " + listed(owner, slots));
}

/// The owner's slot for the property that contains the original. kNoSlot if the owner does not have this
/// property.
unsigned sameProperty(const Instance& object, const Instance& owner) {
  if (!object.owner()) return ClassData::kNoSlot;
  const ClassData& cls = object.owner()->cls();
  for (const ClassData* above : cls.ancestors) {
    if (!owner.cls().isKindOf(above->ordinal)) continue;
    for (const auto& property : above->properties) {
      if (!property || cls.placeOf(*above, property->id()).slot != object.ownerSlot()) continue;
      return owner.cls().placeOf(*above, property->id()).slot;
    }
  }
  return ClassData::kNoSlot;
}

}  // namespace

unsigned placeFor(const Instance& object, const Instance& owner, std::string_view property) {
  if (!property.empty()) return namedPlace(object, owner, property);
  const unsigned same = sameProperty(object, owner);
  if (same != ClassData::kNoSlot && fits(owner, same, object) && takesOneMore(owner, same)) return same;
  std::vector<unsigned> fitting;
  std::vector<unsigned> open;
  for (const unsigned slot : holdingSlots(owner)) {
    if (!fits(owner, slot, object)) continue;
    fitting.push_back(slot);
    if (takesOneMore(owner, slot)) open.push_back(slot);
  }
  if (open.size() == 1) return open.front();
  if (fitting.size() == 1) refuseTaken(object, owner, fitting.front());
  if (!open.empty()) {
    throw K7Q::WrongValue(clone(object, owner) + "the owner can contain it as " + listed(owner, open) +
                          "; give the property as well");
  }
  const std::vector<unsigned> all = holdingSlots(owner);
  if (!fitting.empty()) {
    throw K7Q::WrongValue(clone(object, owner) + listed(owner, fitting) +
                          " hold at most one object each and are already set; unset one first");
  }
  throw K7Q::WrongValue(
      clone(object, owner) + "the owner cannot contain a " + std::string(shortName(object.cls())) +
      (all.empty() ? "; it contains no objects at all; give another owner"
                   : "; it contains objects as " + listed(owner, all) + "; give another owner"));
}

}  // namespace Tarvelon::metamodel::native
