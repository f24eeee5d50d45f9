#include "python/host/objects/ErrorNotes.h"

#include "python/host/objects/NativeViews.h"
#include "python/host/objects/Values.h"
#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/platform/model/api/Search.h"

namespace pyhost {

namespace {

/// The object to which a sequence or an iterator belongs, if it is known; otherwise the sequence or iterator
/// itself. Any other object is returned unchanged.
PyObject* shownBy(PyObject* object) noexcept {
  if (typeOf(object)->kind == TypeKind::Iterator) {
    PyObject* sequence = reinterpret_cast<HostIterator*>(object)->sequence;
    if (!sequence) return object;
    object = sequence;
  }
  if (typeOf(object)->kind != TypeKind::Sequence) return object;
  PyObject* owner = reinterpret_cast<HostSequence*>(object)->owner;
  return owner ? owner : object;
}

/// Says what happened to an object that can no longer be used; empty if it is usable.
std::string lossOf(PyObject* value) {
  if (!value || !isHostObject(value)) return {};
  const auto info = K7Q::DeviantRegistry::getVariantInfo(
      interfaceOf(shownBy(value))->getBoundPointer(ruvo::InternedName()));
  using K7Q::NSInterface::ObjectIntf;
  auto* object =
      info.object ? static_cast<ObjectIntf*>(info.object->cast(K7Q::tagsOf<ObjectIntf>())) : nullptr;
  return object ? Tarvelon::model::lossOf(K7Q::ImmutableObject(object, info.deviant)) : std::string();
}

/// "(9): the sequence has 4 elements, counted from 1" if a sequence method got an int; empty otherwise.
std::string indexOf(PyObject* self, Given arguments) {
  const bool isIndexed = self && typeOf(self)->kind == TypeKind::Sequence && !arguments.empty() &&
                         PyLong_Check(arguments[0]) != 0;
  const NativeSequence sequence = isIndexed ? nativeSequence(self) : NativeSequence();
  if (!sequence) return {};
  const int size = sequence.size();
  return "(" + describePython(arguments[0]).substr(sizeof("int ") - 1) + "): the sequence has " +
         std::to_string(size) + (size == 1 ? " element" : " elements") + ", counted from 1";
}

}  // namespace

std::string lossAmong(PyObject* self, Given arguments) {
  std::string loss = lossOf(self);
  for (std::size_t index = 0; loss.empty() && index < arguments.size(); ++index) {
    loss = lossOf(arguments[index]);
    if (!loss.empty() && self) loss.insert(0, "argument " + std::to_string(index + 1) + ", ");
  }
  return loss;
}

std::string noteOf(std::string_view place, PyObject* self, Given arguments) {
  const std::string where = place.empty() ? std::string() : std::string(place) + ": ";
  if (const std::string loss = lossAmong(self, arguments); !loss.empty()) {
    return where + loss + "; isvalid() tells whether an object can be used";
  }
  if (const std::string index = indexOf(self, arguments); !index.empty()) return std::string(place) + index;
  PyObject* object = self || arguments.empty() ? self : arguments[0];
  const Reference shown(object ? enter(PyObject_Repr, object) : nullptr);
  if (shown) return where + "on " + toUtf8(shown.get());
  enter(PyErr_Clear);
  return {};
}

}  // namespace pyhost
