#include "tarvelon/platform/model/views/Derived.h"

#include <bit>
#include <memory>

#include "tarvelon/platform/k7q/sequences/HostList.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::metamodel::native {

namespace {

/// The bit mask of the slots whose values the derived property can show.
std::uint64_t slotsOf(const Instance& object, const Property& property) noexcept {
  if (property.derivation() == Derivation::Nothing) return 0;
  if (property.derivation() == Derivation::Owned) return object.cls().holdingSlots;
  const ClassData& owner = property.ownerClass().data();
  const Property* packaged = owner.findProperty("PackagedElement");
  return std::uint64_t{1} << object.cls().placeOf(owner, packaged->id()).slot;
}

/// Calls visit() for the contained objects of the property's class, in order of slots, until visit() returns
/// true.
template <class Visit>
void visitHeld(const Instance& object, const Property& property, Visit visit) {
  const auto isEnough = [&](Instance* held) { return property.type()->isInstance(*held) && visit(*held); };
  for (std::uint64_t slots = object.presence() & slotsOf(object, property); slots != 0; slots &= slots - 1) {
    const auto slot = static_cast<unsigned>(std::countr_zero(slots));
    const Word word = *object.find(slot);
    if (!isList(object, slot)) {
      if (isEnough(word.object)) return;
      continue;
    }
    for (std::uint32_t index = 0; index < word.list->size(); ++index) {
      if (isEnough(word.list->at(index).object)) return;
    }
  }
}

}  // namespace

K7Q::NSInterface::ObjectIntf* derivedValue(const Instance& object, const Property& property) noexcept {
  if (property.derivation() == Derivation::Model) return &object.model();
  if (property.derivation() == Derivation::Root) {
    const Instance* root = &object;
    while (root->owner()) root = root->owner();
    return const_cast<Instance*>(root);
  }
  if (property.derivation() == Derivation::Owned) {
    Instance* first = nullptr;
    visitHeld(object, property, [&first](Instance& held) {
      first = &held;
      return true;
    });
    return first;
  }
  Instance* owner = object.owner();
  if (property.derivation() == Derivation::NearestOwner) {
    while (owner && !property.type()->isInstance(*owner)) owner = owner->owner();
  }
  return owner && property.type()->isInstance(*owner) ? owner : nullptr;
}

std::vector<Instance*> derivedValues(const Instance& object, const Property& property) {
  std::vector<Instance*> values;
  visitHeld(object, property, [&values](Instance& held) {
    values.push_back(&held);
    return false;
  });
  return values;
}

K7Q::Generic::SequenceIntf* readKind(const Instance& object, const ClassMethods& cls, const ReadRow& row,
                                     K7Q::Deviant deviant) {
  const ClassMethods& elements = tableOf(*row.element);
  const Property& list = *cls.data().findProperty(row.property);
  const Property& kind = *elements.data().findProperty("Kind");
  const K7Q::ImmutableModel model(&object.model(), deviant);
  auto result = std::make_unique<K7Q::HostList>(K7Q::kObjectElements, elements.name(false), false, model);
  const WordList* values = listOf(object, object.cls().placeOf(list.ownerClass().data(), list.id()).slot);
  for (std::uint32_t index = 0; values && index < values->size(); ++index) {
    Instance& element = *values->at(index).object;
    const Word* number = element.find(element.cls().placeOf(kind.ownerClass().data(), kind.id()).slot);
    // A kind that was never set reads as the first literal, 0.
    if ((number ? integerOf(*number) : 0) != row.kind) continue;
    result->generic_push_back(deviant, K7Q::makeObjectRef(&element, deviant));
  }
  return result.release();
}

}  // namespace Tarvelon::metamodel::native
