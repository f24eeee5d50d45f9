#include "python/host/objects/NativeViews.h"

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/tarvelon/Names.h"

namespace pyhost {

namespace {

template <class Interface>
Interface* interfaceAs(PyObject* object, K7Q::Deviant& deviant) noexcept {
  const auto info =
      K7Q::DeviantRegistry::getVariantInfo(interfaceOf(object)->getBoundPointer(ruvo::InternedName()));
  deviant = info.deviant;
  return info.object ? static_cast<Interface*>(info.object->cast(K7Q::tagsOf<Interface>())) : nullptr;
}

template <class Edge>
bool standsAt(const HostIterator& iterator, Edge edge) {
  if (!iterator.sequence) return false;
  const NativeSequence sequence = nativeSequence(iterator.sequence);
  const auto* place = nativeIterator(iterator);
  return sequence && place && place->equal(edge(sequence).get());
}

}  // namespace

NativeSequence nativeSequence(PyObject* sequence) noexcept {
  NativeSequence result;
  result.interface = interfaceAs<K7Q::Generic::SequenceIntf>(sequence, result.deviant);
  return result;
}

K7Q::RewritableIntf* asRewritable(const NativeSequence& sequence) noexcept {
  return dynamic_cast<K7Q::RewritableIntf*>(sequence.interface);
}

std::int32_t enumerationNumber(PyObject* value) {
  K7Q::Deviant deviant;
  auto* object = interfaceAs<K7Q::NSInterface::ObjectIntf>(value, deviant);
  return Tarvelon::metamodel::native::enumerationFromObject(K7Q::Object(object, deviant));
}

const K7Q::Generic::IteratorIntf* nativeIterator(const HostIterator& iterator) noexcept {
  K7Q::Deviant deviant;
  auto* object = const_cast<PyObject*>(reinterpret_cast<const PyObject*>(&iterator));
  return interfaceAs<K7Q::Generic::IteratorIntf>(object, deviant);
}

bool standsAtEnd(const HostIterator& iterator) {
  return standsAt(iterator, [](const NativeSequence& sequence) {
    return sequence.interface->generic_end(sequence.deviant);
  });
}

bool standsAtBegin(const HostIterator& iterator) {
  return standsAt(iterator, [](const NativeSequence& sequence) {
    return sequence.interface->generic_begin(sequence.deviant);
  });
}

bool isStale(const HostIterator& iterator) {
  if (iterator.isRetired) return true;
  if (standsAtEnd(iterator)) return false;
  const auto* place = nativeIterator(iterator);
  if (!place) return false;
  try {
    place->current(nativeSequence(iterator.sequence).deviant);
    return false;
  } catch (const K7Q::Exception&) {
    return true;
  }
}

}  // namespace pyhost
