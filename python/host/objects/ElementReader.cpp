#include "python/host/objects/ElementReader.h"

#include <array>

#include "python/host/objects/ErrorNotes.h"
#include "python/host/objects/Values.h"
#include "tarvelon/boundary/ruvo/Method.h"

namespace pyhost {

namespace {

ruvo::RVOClient gClient;
PyTypeObject sequenceWalkType{};

/// Finds the overload of `at` that takes the sequence and an index, counted from 1.
const ruvo::RVOMethodInfo* findAt(ruvo::Class& cls) {
  const ruvo::OverloadSet* overloads = cls.findMethods("at");
  for (const auto* record : overloads->candidates) {
    const auto arguments = record->getSignature()->arguments();
    const bool takesSelf = (record->getFlags() & ruvo::factory::kSelfAsArgument) != 0;
    if (takesSelf && arguments.size() == 2 && arguments[1].kind() == ruvo::internal::TypeKind::Int32)
      return record;
  }
  raise(errors().wrongType, "class '" + std::string(cls.getFullName().view()) + "' has no at(int32 scalar)");
}

Elements elementsOf(const ruvo::RVOMethodInfo& at) {
  const ruvo::InternedName& element = at.getSignature()->result();
  const ruvo::Class* cls =
      element.kind() == ruvo::internal::TypeKind::Class ? ruvo::Class::find(element) : nullptr;
  if (!cls) return Elements::Texts;
  return isEnumeration(*cls) ? Elements::Values : Elements::Objects;
}

struct SequenceWalk {
  PyObject_HEAD PyObject* sequence;
  ElementReader* reader;
  int index;
  int count;
};

SequenceWalk* asWalk(PyObject* object) noexcept { return reinterpret_cast<SequenceWalk*>(object); }

void finish(SequenceWalk* walk) {
  // The members are cleared first: releasing the objects may run Python code, which may use this iterator
  // again.
  delete std::exchange(walk->reader, nullptr);
  drop(std::exchange(walk->sequence, nullptr));
}

PyObject* next(PyObject* object) {
  return guarded([&]() -> PyObject* {
    SequenceWalk* walk = asWalk(object);
    if (!walk->reader) return nullptr;
    if (walk->reader->size() != walk->count) {
      raise(errors().changed, "the sequence changed while it was iterated: it had " +
                                  std::to_string(walk->count) + " elements and has " +
                                  std::to_string(walk->reader->size()) +
                                  "; to change it during the iteration, iterate over list(sequence)");
    }
    if (walk->index < walk->count) return walk->reader->at(walk->index++);
    finish(walk);
    return nullptr;
  });
}

void deallocate(PyObject* object) {
  finish(asWalk(object));
  PyObject_Free(object);
}

}  // namespace

Elements elementsOf(HostType& type) {
  if (!type.at) {
    const ruvo::RVOMethodInfo* at = findAt(*type.cls);
    type.elements = elementsOf(*at);
    type.at = at;
  }
  return type.elements;
}

ElementReader::ElementReader(PyObject* sequence)
    : mSequence(sequence), mInterface(interfaceOf(sequence)), mNative(nativeSequence(sequence)) {
  HostType* type = typeOf(sequence);
  mElements = elementsOf(*type);
  mRecord = type->at;
  mSelf = ruvo::boxInterface(mInterface, type->cls->getFullName());
}

int ElementReader::size() const {
  return withNote(
      [&] { return noteOf(typeOf(mSequence)->cls->shortName(), mSequence); },
      [&] { return mNative ? mNative.size() : ruvo::call(mInterface, "size", {}).slot().int32(); });
}

PyObject* ElementReader::at(int index) const {
  const std::array arguments{ruvo::RVOValue(mSelf), ruvo::RVOValue::ofInt32(index + 1)};
  ruvo::RVOValue result;
  std::uint32_t count = 0;
  withNote([&] { return noteOf(typeOf(mSequence)->cls->shortName(), mSequence); },
           [&] {
             mRecord->invoke(&gClient, count, &result, static_cast<int>(arguments.size()), arguments.data());
           });
  return toPython(ruvo::HostResult(result, mRecord->getSignature()->result()));
}

PyObject* walkSequence(PyObject* sequence) {
  auto reader = std::make_unique<ElementReader>(sequence);
  const int count = reader->size();
  auto* walk = PyObject_New(SequenceWalk, &sequenceWalkType);
  if (!walk) throw PythonError();
  walk->sequence = Py_NewRef(sequence);
  walk->reader = reader.release();
  walk->index = 0;
  walk->count = count;
  return reinterpret_cast<PyObject*>(walk);
}

void readySequenceWalkType() {
  PyTypeObject& type = sequenceWalkType;
  prepareType(type, "_tarvelon_host.SequenceWalk", sizeof(SequenceWalk), nullptr);
  type.tp_flags |= Py_TPFLAGS_DISALLOW_INSTANTIATION;
  type.tp_dealloc = deallocate;
  type.tp_iter = PyObject_SelfIter;
  type.tp_iternext = next;
  require(PyType_Ready, &type);
}

}  // namespace pyhost
