#include "tarvelon/binding/Conversion.h"

#include <memory>

#include "tarvelon/boundary/hx/Array.h"

namespace binding {

K7Q::VariantInfo unbox(const hx::hxArray* array) {
  if (hx::hxGetNumberOfElements(array) == 0) return {};
  const auto* object = static_cast<const ruvo::RVOInterface*>(hx::hxGetElement(array, 0));
  return object ? K7Q::DeviantRegistry::getVariantInfo(object->getBoundPointer(InternedName()))
                : K7Q::VariantInfo();
}

UnboxedInterface unboxAs(const hx::hxArray* array, K7Q::CooperativeVisitor::TagPair tags) {
  const auto info = unbox(array);
  if (!info.object) return {nullptr, info.deviant};
  return {info.object->cast(tags), info.deviant};
}

hx::hxArray* boxAs(const K7Q::ReferenceCountingIntf* object, K7Q::Deviant deviant, bool immutable,
                   const InternedName& className) {
  if (!object) return ruvo::boxInterface(nullptr, className);
  void* id = K7Q::DeviantRegistry::getId(object, deviant, immutable);
  bool wasNew = false;
  const ruvo::RVOInterfacePtr host(ruvo::factory::basic::BindingRegistry::announce(id, className, wasNew));
  if (wasNew) object->addRef();
  return ruvo::boxInterface(host, className);
}

hx::hxArray* boxObject(const K7Q::ObjectHandle& handle, bool immutable, const InternedName& declared) {
  const auto* object = handle.getInterface();
  return boxAs(object, handle.getDeviant(), immutable, object ? object->getRuvoName(immutable) : declared);
}

hx::hxArray* boxMetaProperty(void* dummy, const InternedName& className) {
  struct Free {
    void operator()(void* instance) const noexcept { ::operator delete(instance); }
  };
  std::unique_ptr<void, Free> owned(dummy);
  bool wasNew = false;
  const ruvo::RVOInterfacePtr host(ruvo::factory::basic::BindingRegistry::announce(dummy, className, wasNew));
  static_cast<void>(owned.release());
  return ruvo::boxInterface(host, className);
}

std::string Conversion<std::string>::fromSlot(RVOValue slot) {
  const std::unique_ptr<char, void (*)(void*)> text(hx::hxArrayToString_UTF8(slot.array()),
                                                    [](void* released) { hx::hxFree(released); });
  return text ? std::string(text.get()) : std::string();
}

K7Q::IteratorHandle Conversion<K7Q::IteratorHandle>::fromSlot(RVOValue slot) {
  const auto unboxed = unboxAs(slot.array(), K7Q::tagsOf<K7Q::Generic::IteratorIntf>());
  return {static_cast<K7Q::Generic::IteratorIntf*>(unboxed.interface), unboxed.deviant};
}

hx::hxArray* boxIterator(const K7Q::IteratorHandle& iterator, bool immutable, const InternedName& declared) {
  // The host gets the copy.
  const K7Q::IteratorHandle clone(iterator);  // NOLINT(performance-unnecessary-copy-initialization)
  if (!clone.getInterface()) {
    K7Q::LocalAsserter("kernel/containers/iterator/Iterator", immutable ? 41 : 85) =
        K7Q::Asserter::MakeAlways(K7Q::kNullReference);
  }
  return boxAs(clone.getInterface(), clone.getDeviant(), immutable, declared);
}

}  // namespace binding
