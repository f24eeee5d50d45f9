#include "python/host/NativeViews.h"

#include "boundary/k7q/Deviants.h"
#include "boundary/k7q/Exception.h"

namespace pyhost {

namespace {

template <class Interface>
const Interface* interfaceAs(PyObject* object, K7Q::Deviant& deviant) noexcept {
  const auto info =
      K7Q::DeviantRegistry::getVariantInfo(interfaceOf(object)->getBoundPointer(ruvo::InternedName()));
  deviant = info.deviant;
  return info.object ? static_cast<const Interface*>(info.object->cast(K7Q::tagsOf<Interface>())) : nullptr;
}

const K7Q::Generic::IteratorIntf* placeOf(const HostIterator& iterator, K7Q::Deviant& deviant) noexcept {
  auto* object = const_cast<PyObject*>(reinterpret_cast<const PyObject*>(&iterator));
  return interfaceAs<K7Q::Generic::IteratorIntf>(object, deviant);
}

template <class Edge>
bool standsAt(const HostIterator& iterator, Edge edge) {
  if (!iterator.sequence) return false;
  const NativeSequence sequence = nativeSequence(iterator.sequence);
  K7Q::Deviant deviant;
  const auto* place = placeOf(iterator, deviant);
  return sequence && place && place->equal(edge(sequence).get());
}

}  // namespace

NativeSequence nativeSequence(PyObject* sequence) noexcept {
  NativeSequence result;
  result.interface = interfaceAs<K7Q::Generic::SequenceIntf>(sequence, result.deviant);
  return result;
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
  if (standsAtEnd(iterator)) return false;
  K7Q::Deviant deviant;
  const auto* place = placeOf(iterator, deviant);
  if (!place) return false;
  try {
    place->current(deviant);
    return false;
  } catch (const K7Q::Exception&) {
    return true;
  }
}

}  // namespace pyhost
