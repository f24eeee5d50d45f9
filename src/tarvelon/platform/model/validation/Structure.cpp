// Rules for objects of every class: references, containment and required values.

#include <algorithm>
#include <vector>

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"
#include "tarvelon/platform/model/validation/Rules.h"
#include "tarvelon/platform/model/values/Refusal.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

const Property& propertyAt(const Instance& object, unsigned slot) {
  return *object.cls().slotProperties[slot];
}

std::string typeOf(const Property& property) { return std::string(property.type()->className().shortName()); }

/// Whether the entry is below a root that should have an owner, and the object is not below the same root.
bool isStrayFor(const Instance& object, const Instance& entry, Findings& findings) {
  if (!findings.hasStrays()) return false;
  const Instance& root = findings.rootOf(entry);
  return &root != &findings.rootOf(object) && hasNoOwner(root, findings);
}

bool hasRepeated(std::vector<const Instance*> entries) {
  std::ranges::sort(entries);
  return std::ranges::adjacent_find(entries) != entries.end();
}

}  // namespace

bool hasNoOwner(const Instance& object, Findings& findings) {
  return !object.owner() && !isA<foundation::Package>(object) && findings.planOf(object).isHoldable;
}

void checkDangling(const Instance& object, Findings& findings) {
  forEachIn(object, object.cls().referringSlots, [&](const Instance* entry, unsigned slot) {
    if (!entry) return;
    const Property& property = propertyAt(object, slot);
    if (!entry->isAlive()) {
      findings.add(object, slot,
                   "refers to a " + typeOf(property) +
                       " that was destroyed; set another one, or remove the reference");
    } else if (&entry->model() == &object.model() && isStrayFor(object, *entry, findings)) {
      const Instance& root = findings.rootOf(*entry);
      findings.add(object, slot,
                   "refers to " + shownPath(*entry) + ", which no package contains because " +
                       (&root == entry ? "it" : shown(root)) +
                       " has no owner; give that object an owner, or refer to another object");
    }
  });
}

void checkForeign(const Instance& object, Findings& findings) {
  forEachIn(object, object.cls().referringSlots | object.cls().holdingSlots,
            [&](const Instance* entry, unsigned slot) {
              if (!entry || !entry->isAlive() || &entry->model() == &object.model()) return;
              findings.add(object, slot,
                           "refers to " + shownPath(*entry) +
                               " of another model; create the object in this model and refer to that one");
            });
}

void checkTypes(const Instance& object, Findings& findings) {
  forEachIn(object, object.cls().referringSlots | object.cls().holdingSlots,
            [&](const Instance* entry, unsigned slot) {
              if (!entry || !entry->isAlive()) return;
              const Property& property = propertyAt(object, slot);
              if (property.type()->isInstance(*entry)) return;
              findings.add(object, slot,
                           "expected " + typeOf(property) + ", found the " +
                               entry->cls().methods->className().shortName() + " " + shownPath(*entry) +
                               "; set an object of that class or of a subclass");
            });
}

void checkHeld(const Instance& object, Findings& findings) {
  forEachIn(object, object.cls().holdingSlots, [&](const Instance* entry, unsigned slot) {
    if (!entry) return;
    if (!entry->isAlive()) {
      findings.add(object, slot, "contains an object that was destroyed; remove it");
    } else if (entry->owner() != &object || entry->ownerSlot() != slot) {
      findings.add(
          object, slot,
          "contains " + shown(*entry) +
              ", which is also contained elsewhere; an object has one owner: remove it here or there");
    }
  });
}

void checkRepeated(const Instance& object, Findings& findings) {
  const ClassData& cls = object.cls();
  forEachSlot(object.presence() & cls.listSlots & (cls.referringSlots | cls.holdingSlots),
              [&](unsigned slot) {
                const Objects list(object.find(slot)->list);
                if (list.size() == 1 && list.at(0)) return;
                std::vector<const Instance*> entries = list.copied();
                if (std::ranges::find(entries, nullptr) != entries.end()) {
                  findings.add(object, slot, "has an empty entry; remove it");
                } else if (hasRepeated(std::move(entries))) {
                  findings.add(object, slot, "contains the same object twice; remove the second entry");
                }
              });
}

void checkRequiredReferences(const Instance& object, Findings& findings) {
  forEachSlot(findings.planOf(object).requiredReferences & ~object.presence(), [&](unsigned slot) {
    const Property& property = propertyAt(object, slot);
    findings.add(object, slot, "is required and not set; set it to a " + typeOf(property));
  });
}

void checkRequiredTexts(const Instance& object, Findings& findings) {
  forEachSlot(findings.planOf(object).requiredTexts & ~object.presence(), [&](unsigned slot) {
    findings.add(object, slot, "is required and was never set; set it, to the empty text if that is meant");
  });
}

void checkIncomplete(const Instance& object, Findings& findings) {
  forEachSlot(findings.planOf(object).expected & ~object.presence(), [&](unsigned slot) {
    const Property& property = propertyAt(object, slot);
    findings.add(object, slot,
                 std::string("is not set, and without it ") + reasonFor(object.cls(), slot) +
                     "; set it to a " + typeOf(property));
  });
}

void checkLiterals(const Instance& object, Findings& findings) {
  forEachSlot(findings.planOf(object).enumerations & object.presence(), [&](unsigned slot) {
    const Property& property = propertyAt(object, slot);
    const auto require = [&](Word word) {
      if (property.enumeration()->hasLiteral(integerOf(word))) return;
      findings.add(object, slot,
                   "has the value " + std::to_string(integerOf(word)) + ", which is no literal; set one of " +
                       property.enumeration()->literalList());
    };
    const Word word = *object.find(slot);
    if (!property.isMany()) {
      require(word);
      return;
    }
    for (std::uint32_t index = 0; index < word.list->size(); ++index) require(word.list->at(index));
  });
}

void checkHolder(const Instance& object, Findings& findings) {
  if (!hasNoOwner(object, findings)) return;
  findings.add(object, "the " + std::string(object.cls().methods->className().shortName()) +
                           " has no owner; add it to a package or to another owner, or destroy it");
}

}  // namespace Tarvelon::metamodel::native::validation
