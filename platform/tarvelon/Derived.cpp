#include "platform/tarvelon/Derived.h"

#include <bit>

#include "platform/tarvelon/ClassData.h"
#include "platform/tarvelon/ClassMethods.h"
#include "platform/tarvelon/Instance.h"
#include "platform/tarvelon/NativeModel.h"
#include "platform/tarvelon/WordList.h"

namespace Tarvelon::metamodel::native {

namespace {

/// The slots in which an object can hold values of the property.
std::uint64_t slotsOf(const Instance& object, const Property& property) noexcept {
  if (property.derivation() == Derivation::Nothing) return 0;
  if (property.derivation() == Derivation::Owned) return object.cls().holdingSlots;
  const ClassData& owner = property.ownerClass().data();
  const Property* packaged = owner.findProperty("PackagedElement");
  return std::uint64_t{1} << object.cls().placeOf(owner, packaged->id()).slot;
}

}  // namespace

K7Q::NSInterface::ObjectIntf* derivedValue(const Instance& object, const Property& property) noexcept {
  if (property.derivation() == Derivation::Model) return &object.model();
  if (property.derivation() == Derivation::Root) {
    const Instance* root = &object;
    while (root->owner()) root = root->owner();
    return const_cast<Instance*>(root);
  }
  Instance* owner = object.owner();
  if (property.derivation() == Derivation::NearestOwner) {
    while (owner && !property.type()->isInstance(*owner)) owner = owner->owner();
  }
  return owner && property.type()->isInstance(*owner) ? owner : nullptr;
}

std::vector<Instance*> derivedValues(const Instance& object, const Property& property) {
  std::vector<Instance*> values;
  const auto add = [&values, &property](Instance* held) {
    if (property.type()->isInstance(*held)) values.push_back(held);
  };
  for (std::uint64_t slots = object.presence() & slotsOf(object, property); slots != 0; slots &= slots - 1) {
    const auto slot = static_cast<unsigned>(std::countr_zero(slots));
    const Word word = *object.find(slot);
    if ((object.cls().listSlots >> slot & 1) == 0) {
      add(word.object);
      continue;
    }
    for (std::uint32_t index = 0; index < word.list->size(); ++index) add(word.list->at(index).object);
  }
  return values;
}

}  // namespace Tarvelon::metamodel::native
