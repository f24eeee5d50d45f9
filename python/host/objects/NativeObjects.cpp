#include "python/host/objects/NativeObjects.h"

#include <memory>

#include "python/host/objects/Functions.h"
#include "python/host/objects/Values.h"
#include "tarvelon/binding/Conversion.h"
#include "tarvelon/boundary/hx/Array.h"
#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Primitives.h"

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

bool isModel(PyObject* value) {
  K7Q::Deviant deviant;
  return interfaceAs<K7Q::NSInterface::ModelIntf>(value, deviant) != nullptr;
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

Reference fromValue(const K7Q::Object& value) {
  using Scalar = K7Q::NSInterface::ScalarIntf;
  auto* interface = value.getInterface();
  if (!interface) return Reference::share(Py_None);
  if (const auto* text = dynamic_cast<const K7Q::NSInterface::StringIntf*>(interface)) {
    return owned(toUnicode(text->view()));
  }
  const auto* scalar = dynamic_cast<const Scalar*>(interface);
  if (!scalar) return fromModelObject(value);
  switch (scalar->type()) {
    case Scalar::Type::Boolean:
      return owned(PyBool_FromLong, K7Q::Boolean(value) ? 1 : 0);
    case Scalar::Type::Integer:
      return owned(PyLong_FromLong, K7Q::Integer(value));
    case Scalar::Type::Double:
      return owned(PyFloat_FromDouble, K7Q::Double(value));
    case Scalar::Type::Real:
      return owned(PyFloat_FromDouble, K7Q::Real(value));
  }
  return Reference::share(Py_None);
}

bool isTrue(PyObject* value) {
  const int truth = enter(PyObject_IsTrue, value);
  require(truth);
  return truth == 1;
}

void refuseCount(const FunctionRow& row, std::size_t given) {
  raise(errors().wrongType, std::string(row.name) + ": expected " + std::to_string(row.count) +
                                (row.count == 1 ? " argument" : " arguments") + ", got " +
                                std::to_string(given));
}

}  // namespace pyhost
