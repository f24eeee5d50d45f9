#include "platform/tarvelon/validation/Reading.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/tarvelon/Metamodel.h"
#include "platform/tarvelon/api/Validation.h"
#include "platform/tarvelon/validation/Findings.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

std::string classText(const Instance& object) {
  return std::string(object.cls().methods->className().shortName());
}

/// The object and all that hold it, from the root down.
std::vector<const Instance*> lineOf(const Instance& object) {
  std::vector<const Instance*> line;
  for (const Instance* each = &object; each; each = each->owner()) line.push_back(each);
  std::ranges::reverse(line);
  return line;
}

/// How the owner leads to the object: ".comSpec", ".info[2]".
std::string stepTo(const Instance& object) {
  const Instance& owner = *object.owner();
  const unsigned slot = object.ownerSlot();
  std::string step = std::string(".") + hostNameOf(owner.cls(), slot);
  if ((owner.cls().listSlots >> slot & 1) != 0) {
    const Word* word = owner.find(slot);
    step += "[" + std::to_string(word ? word->list->find(&object) : 0) + "]";
  }
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

bool hasName(const Instance& object) noexcept { return isA<foundation::NamedElement>(object); }

std::u16string_view nameOf(const Instance& object) noexcept {
  if (!hasName(object)) return {};
  const Word* word = wordOf<foundation::NamedElement, "Name">(object);
  return word && word->text ? word->text->view() : std::u16string_view();
}

std::string shown(const Instance& object) {
  const auto name = nameOf(object);
  return name.empty() ? classText(object) : "'" + K7Q::String::to_string(name) + "'";
}

std::string shownPath(const Instance& object) {
  std::string path;
  std::string unnamed;
  for (const Instance* each : lineOf(object)) {
    const auto name = nameOf(*each);
    if (!name.empty()) {
      path += "/" + K7Q::String::to_string(name);
      unnamed.clear();
      continue;
    }
    unnamed += each->owner() ? stepTo(*each) : "(" + classText(*each) + ")";
    // One whose name is missing would have had a place in the path.
    if (hasName(*each)) path += std::exchange(unnamed, {});
  }
  return path + unnamed;
}

void Findings::add(const Instance& object, const char* property, std::string message) {
  auto* interface = const_cast<Instance*>(&object);
  mProblems.push_back({K7Q::ClassObject(interface, mDeviant), shownPath(object), property,
                       mRule->description.id, mRule->description.severity, std::move(message)});
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
