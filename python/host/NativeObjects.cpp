#include "python/host/NativeObjects.h"

#include <memory>

#include "binding/Conversion.h"
#include "boundary/hx/Array.h"
#include "boundary/k7q/Deviants.h"
#include "python/host/Values.h"

namespace pyhost {

namespace {

template <class Interface>
Interface* interfaceAs(PyObject* value, K7Q::Deviant& deviant) noexcept {
  if (!isHostObject(value)) return nullptr;
  const auto info =
      K7Q::DeviantRegistry::getVariantInfo(interfaceOf(value)->getBoundPointer(ruvo::InternedName()));
  deviant = info.deviant;
  return info.object ? static_cast<Interface*>(info.object->cast(K7Q::tagsOf<Interface>())) : nullptr;
}

[[noreturn]] void refuse(PyObject* value, const char* function, const char* expected) {
  raise(errors().wrongType,
        std::string(function) + ": expected " + expected + ", got " + describePython(value));
}

}  // namespace

K7Q::Model toModel(PyObject* value, const char* function) {
  K7Q::Deviant deviant;
  auto* model = interfaceAs<K7Q::NSInterface::ModelIntf>(value, deviant);
  if (!model) refuse(value, function, "a model");
  return {model, deviant};
}

K7Q::ClassObject toModelObject(PyObject* value, const char* function) {
  K7Q::Deviant deviant;
  auto* object = interfaceAs<K7Q::NSInterface::ClassObjectIntf>(value, deviant);
  if (!object) refuse(value, function, "an object of a model");
  return {object, deviant};
}

bool isImmutableView(PyObject* value) noexcept {
  return K7Q::DeviantRegistry::isImmutable(interfaceOf(value)->getBoundPointer(ruvo::InternedName()));
}

Reference fromModelObject(const K7Q::ObjectHandle& object, bool isImmutable) {
  const auto* interface = object.getInterface();
  if (!interface) return Reference::share(Py_None);
  const std::unique_ptr<hx::hxArray, void (*)(hx::hxArray*)> array(
      binding::boxObject(object, isImmutable, interface->getRuvoName(isImmutable)),
      [](hx::hxArray* each) { hx::hxDestroyArray(each); });
  return owned(toPython(array.get()));
}

}  // namespace pyhost
