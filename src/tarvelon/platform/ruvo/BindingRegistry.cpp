#include "tarvelon/boundary/ruvo/BindingRegistry.h"

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/ruvo/HostObject.h"
#include "tarvelon/platform/ruvo/Immortal.h"
#include "tarvelon/platform/ruvo/PointerMap.h"

namespace ruvo::factory::basic {

namespace {

std::size_t gBound = 0;

/// The host objects of ids without a slot.
PointerMap<RVOInterface>& others() noexcept {
  static Immortal<PointerMap<RVOInterface>> map;
  return *map;
}

void bind(void* pointer, HostObject* object) {
  if (BindingSlot::isSlotted(pointer)) {
    BindingSlot::of(pointer)->hostObject = object;
  } else {
    others().insert(pointer, object);
  }
  object->setBound(pointer);
  ++gBound;
}

/// A known object becomes what it is now known to be; an object is never made less than it is.
void narrow(HostObject& object, const InternedName& className) {
  Class& known = classOf(object);
  if (known.getFullName() == className) return;
  Class& named = Class::get(className);
  if (named.isKindOf(known)) object.narrow(named);
}

}  // namespace

RVOInterface* BindingRegistry::announce(void* pointer, const InternedName& className, bool& wasNew) {
  wasNew = false;
  if (!pointer) return nullptr;
  if (RVOInterface* known = find(pointer)) {
    narrow(static_cast<HostObject&>(*known), className);
    return known;
  }
  auto* object = HostObject::create(Class::get(className));
  try {
    bind(pointer, object);
  } catch (...) {
    const RVOInterfacePtr last(object);
    throw;
  }
  wasNew = true;
  return object;
}

RVOInterface* BindingRegistry::announce(void* pointer, const InternedName& className) {
  bool wasNew = false;
  return announce(pointer, className, wasNew);
}

RVOInterface* BindingRegistry::announce(const void* pointer, const InternedName& className) {
  return announce(const_cast<void*>(pointer), className);
}

void BindingRegistry::announceForConstructor(void* pointer, const InternedName& className, hx::hxArray* array,
                                             bool /*flag*/) {
  if (!pointer) return;
  RVOInterface* held = hx::hxGetNumberOfElements(array) != 0 && hx::hxGetClassId(array) == hx::hxObject
                           ? static_cast<RVOInterface*>(hx::hxGetElement(array, 0))
                           : nullptr;
  // A text only where one is needed: behind a constructor nothing is to fail for want of memory.
  const auto refuse = [&className](const char* reason) {
    throw K7Q::Exception(std::string(className.view()) + reason);
  };
  if (!held) refuse(": there is no object under construction; call a constructor through its class");
  auto* object = static_cast<HostObject*>(held);
  if (object->bound()) refuse(": the object under construction is constructed already");
  if (find(pointer)) refuse(": the native object has a host object already; construct a new one");
  bind(pointer, object);
}

void BindingRegistry::remove(const void* pointer) noexcept {
  RVOInterface* object = find(pointer);
  if (!object) return;
  if (BindingSlot::isSlotted(pointer)) {
    BindingSlot::of(pointer)->hostObject = nullptr;
  } else {
    others().erase(pointer);
  }
  static_cast<HostObject*>(object)->setBound(nullptr);
  --gBound;
}

RVOInterface* BindingRegistry::find(const void* pointer) noexcept {
  if (!pointer) return nullptr;
  return BindingSlot::isSlotted(pointer) ? BindingSlot::of(pointer)->hostObject : others().find(pointer);
}

std::size_t BindingRegistry::size() noexcept { return gBound; }

}  // namespace ruvo::factory::basic
