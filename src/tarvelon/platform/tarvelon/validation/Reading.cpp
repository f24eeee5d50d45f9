#include "tarvelon/platform/tarvelon/validation/Reading.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "tarvelon/platform/tarvelon/Metamodel.h"
#include "tarvelon/platform/tarvelon/QualifiedName.h"
#include "tarvelon/platform/tarvelon/api/Validation.h"
#include "tarvelon/platform/tarvelon/validation/Findings.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

/// The object and all that hold it, from the root down.
std::vector<const Instance*> lineOf(const Instance& object) {
  std::vector<const Instance*> line;
  for (const Instance* each = &object; each; each = each->owner()) line.push_back(each);
  std::ranges::reverse(line);
  return line;
}

std::uint32_t indexIn(const WordList& list, const Instance& object, Places* places) {
  if (!places) return list.find(&object);
  std::uint32_t& last = (*places)[&list];
  for (std::uint32_t index = last; index < list.size(); ++index) {
    if (list.at(index).object == &object) return last = index;
  }
  return last = list.find(&object);
}

/// How the owner leads to the object: ".comSpec", ".info[2]".
std::string stepTo(const Instance& object, Places* places) {
  const Instance& owner = *object.owner();
  const unsigned slot = object.ownerSlot();
  std::string step = std::string(".") + hostNameOf(owner.cls(), slot);
  const Word* word = owner.find(slot);
  if (word && isList(owner, slot)) step += "[" + std::to_string(indexIn(*word->list, object, places)) + "]";
  return step;
}

}  // namespace

void pushHeld(const Instance& object, std::vector<const Instance*>& stack) {
  const auto bottom = static_cast<std::ptrdiff_t>(stack.size());
  forEachIn(object, object.cls().holdingSlots, [&](const Instance* held, unsigned slot) {
    if (held && held->isAlive() && held->owner() == &object && held->ownerSlot() == slot)
      stack.push_back(held);
  });
  std::reverse(stack.begin() + bottom, stack.end());
}

const Instance& rootOf(const Instance& object) noexcept {
  const Instance* root = &object;
  while (root->owner()) root = root->owner();
  return *root;
}

const char* hostNameOf(const ClassData& cls, unsigned slot) noexcept {
  // Each class stands behind its bases.
  for (auto place = cls.places.rbegin(); place != cls.places.rend(); ++place) {
    if (place->property && place->slot == slot && place->property->row().isExposed)
      return place->property->row().name;
  }
  return cls.slotProperties[slot]->row().name;
}

std::u16string_view nameOf(const Instance& object) noexcept { return ownName(object); }

std::string classText(const Instance& object) {
  return std::string(object.cls().methods->className().shortName());
}

std::string shown(const Instance& object) {
  const auto name = nameOf(object);
  return name.empty() ? classText(object) : "'" + K7Q::String::to_string(name) + "'";
}

std::string shownPath(const Instance& object, Places* places) {
  std::string path;
  std::string unnamed;
  for (const Instance* each : lineOf(object)) {
    const auto name = nameOf(*each);
    if (!name.empty()) {
      path += "/" + K7Q::String::to_string(name);
      unnamed.clear();
      continue;
    }
    unnamed += each->owner() ? stepTo(*each, places) : "(" + classText(*each) + ")";
  }
  return path + unnamed;
}

void Findings::add(const Instance& object, const char* property, std::string message) {
  auto* interface = const_cast<Instance*>(&object);
  mFound.push_back({&object,
                    mRule,
                    {K7Q::ClassObject(interface, mDeviant), shownPath(object, &mPlaces), property,
                     mRule->description.id, mRule->description.severity, std::move(message)}});
}

}  // namespace Tarvelon::metamodel::native::validation

namespace K7Q {

std::string pathOf(const ObjectHandle& object) {
  object.requireValid();
  const auto* instance = Tarvelon::metamodel::native::asInstance(object.getInterface());
  if (!instance) throw WrongType("pathOf: expected an object of a model, got another one");
  return Tarvelon::metamodel::native::validation::shownPath(*instance);
}

}  // namespace K7Q
