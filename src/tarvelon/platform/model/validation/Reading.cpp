#include "tarvelon/platform/model/validation/Reading.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/api/Validation.h"
#include "tarvelon/platform/model/names/PathText.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/validation/Findings.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

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

const char* hostNameOf(const ClassData& cls, unsigned slot) noexcept {
  // From the end, since each class comes after its bases.
  for (auto place = cls.places.rbegin(); place != cls.places.rend(); ++place) {
    if (place->property && place->slot == slot && place->property->row().isExposed)
      return place->property->row().name;
  }
  return cls.slotProperties[slot]->row().name;
}

std::string classText(const Instance& object) {
  return std::string(object.cls().methods->className().shortName());
}

std::string shown(const Instance& object) {
  const auto name = ownName(object);
  return name.empty() ? classText(object) : ruvo::quotedName(K7Q::String::to_string(name));
}

std::string shownPath(const Instance& object, Places* places) {
  PathText path(object);
  const Instance* each = &object;
  for (; each && ownName(*each).empty(); each = each->owner()) {
    if (!path.prepend(each->owner() ? stepTo(*each, places) : "(" + classText(*each) + ")"))
      return path.text();
  }
  for (; each; each = each->owner()) {
    const auto name = ownName(*each);
    if (!(name.empty() ? path.pass() : path.prependName(name))) break;
  }
  return path.text();
}

bool Findings::isBehavior(const Instance& object) {
  return isA<arplatform::behavior::ApplicationComponentBehavior>(object);
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
  if (!instance) throw WrongType("pathOf: expected an object of a model, got an object without a model");
  return Tarvelon::metamodel::native::validation::shownPath(*instance);
}

}  // namespace K7Q
