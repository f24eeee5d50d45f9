#include "tarvelon/boundary/ruvo/BindingRegistry.h"

#include <mutex>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/hx/Blocks.h"
#include "tarvelon/platform/ruvo/HostObject.h"
#include "tarvelon/platform/ruvo/Immortal.h"
#include "tarvelon/platform/ruvo/PointerMap.h"

namespace ruvo::factory::basic {

namespace {

/// The host objects of ids without a binding slot: one table for all threads.
class Others {
 public:
  RVOInterface* find(const void* pointer) noexcept {
    const std::scoped_lock lock(mGuard);
    return mMap.find(pointer);
  }
  void insert(const void* pointer, RVOInterface* object) {
    const std::scoped_lock lock(mGuard);
    mMap.insert(pointer, object);
  }
  void erase(const void* pointer) noexcept {
    const std::scoped_lock lock(mGuard);
    mMap.erase(pointer);
  }

 private:
  std::mutex mGuard;
  PointerMap<RVOInterface> mMap;
};

Others& others() noexcept {
  static Immortal<Others> others;
  return *others;
}

void bind(void* pointer, HostObject* object) {
  if (BindingSlot::isSlotted(pointer)) {
    // Atomic, because another thread may read the slot when it looks for records without a host object.
    BindingSlot::of(pointer)->hostObject.store(object, std::memory_order_release);
  } else {
    others().insert(pointer, object);
  }
  object->setBound(pointer);
  hx::addTo(hx::Counted::Bindings, 1);
}

/// Creates the host object of a shared native object. Both live until the process ends.
RVOInterface* announceShared(void* pointer, const InternedName& className, bool& wasNew) {
  static constinit std::mutex guard;
  Class& cls = Class::get(className);
  auto& slot = BindingSlot::of(pointer)->hostObject;
  const std::scoped_lock lock(guard);
  // Another thread may have created the host object in the meantime.
  if (RVOInterface* known = slot.load(std::memory_order_acquire)) return known;
  auto* object = HostObject::create(cls);
  object->share();
  object->setBound(pointer);
  slot.store(object, std::memory_order_release);
  wasNew = true;
  return object;
}

/// Changes the class of the object to the named class if that is a subclass of its present class. The class
/// is never changed to a superclass. A shared object always has its final class.
void narrow(HostObject& object, const InternedName& className) {
  Class& known = classOf(object);
  if (known.getFullName() == className || BindingSlot::isShared(object.bound())) return;
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
  if (BindingSlot::isShared(pointer)) return announceShared(pointer, className, wasNew);
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
  // The text is built only when needed: a successful call must not fail for lack of memory here.
  const auto refuse = [&className](const char* reason) {
    throw K7Q::Exception(std::string(className.view()) + reason);
  };
  if (!held) refuse(": no object is under construction; call the constructor through its class");
  auto* object = static_cast<HostObject*>(held);
  if (object->bound()) refuse(": the object under construction is already constructed");
  if (find(pointer)) refuse(": the native object already has a host object; construct a new one");
  bind(pointer, object);
}

void BindingRegistry::remove(const void* pointer) noexcept {
  RVOInterface* object = find(pointer);
  if (!object) return;
  if (BindingSlot::isSlotted(pointer)) {
    BindingSlot::of(pointer)->hostObject.store(nullptr, std::memory_order_release);
  } else {
    others().erase(pointer);
  }
  static_cast<HostObject*>(object)->setBound(nullptr);
  hx::addTo(hx::Counted::Bindings, -1);
}

RVOInterface* BindingRegistry::find(const void* pointer) noexcept {
  if (!pointer) return nullptr;
  if (!BindingSlot::isSlotted(pointer)) return others().find(pointer);
  return BindingSlot::of(pointer)->hostObject.load(std::memory_order_acquire);
}

std::size_t BindingRegistry::size() noexcept { return hx::sumOf(hx::Counted::Bindings); }

}  // namespace ruvo::factory::basic
