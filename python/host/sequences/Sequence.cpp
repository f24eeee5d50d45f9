#include <algorithm>
#include <vector>

#include "python/host/objects/ElementReader.h"
#include "python/host/objects/Values.h"
#include "python/host/sequences/SequenceEdits.h"
#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Introspection.h"

namespace pyhost {

PyTypeObject sequenceType{};

namespace {

std::string shown(PyObject* sequence) { return std::string(typeOf(sequence)->cls->shortName()); }

Py_ssize_t length(PyObject* sequence) {
  return guarded(Py_ssize_t{-1}, [&] { return Py_ssize_t{ElementReader(sequence).size()}; });
}

/// Converts an index; a negative one counts from the end. Raises K7Q.OutOfBounds.
int position(PyObject* sequence, PyObject* index, int size) {
  // A number too large for Py_ssize_t becomes the largest one, which is out of range for every sequence.
  const Py_ssize_t given = enter(PyNumber_AsSsize_t, index, nullptr);
  if (given == -1 && PyErr_Occurred()) throw PythonError();
  const Py_ssize_t found = given < 0 ? given + size : given;
  if (found >= 0 && found < size) return static_cast<int>(found);
  raise(errors().outOfBounds, shown(sequence) + "[" + toUtf8(owned(PyObject_Repr, index).get()) +
                                  "]: the sequence has " + std::to_string(size) + " elements");
}

[[noreturn]] void raiseNoIndex(PyObject* sequence, PyObject* index) {
  raise(errors().wrongType,
        shown(sequence) + "[]: expected an int from 0 or a slice, got " + describePython(index));
}

/// Like raiseNoIndex(), for an argument of a method, which accepts no slice.
void requireIndex(PyObject* sequence, const char* method, PyObject* index) {
  if (PyIndex_Check(index)) return;
  raise(errors().wrongType,
        shown(sequence) + "." + method + ": expected an int from 0, got " + describePython(index));
}

/// The indices of a slice, in the order of the slice.
std::vector<int> selected(PyObject* slice, int size) {
  Py_ssize_t start = 0;
  Py_ssize_t stop = 0;
  Py_ssize_t step = 0;
  require(PySlice_Unpack, slice, &start, &stop, &step);
  const Py_ssize_t count = PySlice_AdjustIndices(size, &start, &stop, step);
  std::vector<int> indices;
  for (Py_ssize_t i = 0; i < count; ++i) indices.push_back(static_cast<int>(start + i * step));
  return indices;
}

PyObject* subscript(PyObject* sequence, PyObject* index) {
  return guarded([&]() -> PyObject* {
    const ElementReader reader(sequence);
    const int size = reader.size();
    if (PyIndex_Check(index)) return reader.at(position(sequence, index, size));
    if (!PySlice_Check(index)) raiseNoIndex(sequence, index);
    Reference list = owned(PyList_New, 0);
    for (const int at : selected(index, size)) {
      require(PyList_Append, list.get(), Reference(reader.at(at)).get());
    }
    return list.release();
  });
}

/// Called by PySequence_GetItem() and reversed().
PyObject* item(PyObject* sequence, Py_ssize_t index) {
  return guarded([&] { return subscript(sequence, owned(PyLong_FromSsize_t, index).get()); });
}

void eraseAt(PyObject* sequence, int index) {
  changeSequence(sequence, "erase", owned(PyLong_FromLong, index + 1).get());
}

int assignSubscript(PyObject* sequence, PyObject* index, PyObject* value) {
  return guarded(-1, [&] {
    const int size = ElementReader(sequence).size();
    if (PyIndex_Check(index)) {
      const int at = position(sequence, index, size);
      if (!value) {
        eraseAt(sequence, at);
      } else {
        assignItem(sequence, at, value);
      }
      return 0;
    }
    if (!PySlice_Check(index)) raiseNoIndex(sequence, index);
    assignSlice(sequence, index, value);
    return 0;
  });
}

/// The index of the first element from `from` on that equals `value`; `size` if there is none.
int find(const ElementReader& reader, PyObject* value, int from, int size) {
  for (int at = from; at < size; ++at) {
    const int isEqual = enter(PyObject_RichCompareBool, Reference(reader.at(at)).get(), value, Py_EQ);
    require(isEqual);
    if (isEqual == 1) return at;
  }
  return size;
}

/// The native object of a model object; null for other values.
K7Q::NSInterface::ObjectIntf* modelObject(PyObject* value) {
  if (!isHostObject(value) || typeOf(value)->kind != TypeKind::Object) return nullptr;
  const auto info =
      K7Q::DeviantRegistry::getVariantInfo(interfaceOf(value)->getBoundPointer(ruvo::InternedName()));
  using K7Q::NSInterface::ObjectIntf;
  return info.object ? static_cast<ObjectIntf*>(info.object->cast(K7Q::tagsOf<ObjectIntf>())) : nullptr;
}

int contains(PyObject* sequence, PyObject* value) {
  return guarded(-1, [&] {
    const ElementReader reader(sequence);
    // The native search expects elements of the sequence's own kind, so a sequence of texts is not searched
    // for an object.
    const NativeSequence native = reader.holdsObjects() ? nativeSequence(sequence) : NativeSequence();
    if (auto* object = native ? modelObject(value) : nullptr) {
      return native.interface->generic_contains(native.deviant, K7Q::makeObjectRef(object, {})) ? 1 : 0;
    }
    const int size = reader.size();
    return find(reader, value, 0, size) < size ? 1 : 0;
  });
}

PyObject* iterate(PyObject* sequence) {
  return guarded([&] { return walkSequence(sequence); });
}

void requireCount(PyObject* sequence, const char* method, Py_ssize_t count, Py_ssize_t least,
                  Py_ssize_t most) {
  if (count >= least && count <= most) return;
  raise(errors().wrongType, shown(sequence) + "." + method + ": got " + std::to_string(count) +
                                " arguments, expected " + std::to_string(least) +
                                (least == most ? "" : " to " + std::to_string(most)));
}

void extendBy(PyObject* sequence, PyObject* elements) {
  if (!Py_TYPE(elements)->tp_iter && !PySequence_Check(elements)) {
    raise(errors().wrongType,
          shown(sequence) + ".extend: expected elements to iterate, got " + describePython(elements));
  }
  // Copies the elements, because they may come from this sequence, or from a sequence that loses them to this
  // one.
  const Reference list = owned(PySequence_List, elements);
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(list.get()); ++i) {
    changeSequence(sequence, "push_back", PyList_GET_ITEM(list.get(), i));
  }
}

PyObject* addInPlace(PyObject* sequence, PyObject* elements) {
  return guarded([&] {
    extendBy(sequence, elements);
    return Py_NewRef(sequence);
  });
}

PyObject* extend(PyObject* sequence, PyObject* const* arguments, Py_ssize_t count) {
  return guarded([&] {
    requireCount(sequence, "extend", count, 1, 1);
    extendBy(sequence, arguments[0]);
    return Py_NewRef(Py_None);
  });
}

int foundOrRaise(PyObject* sequence, const char* method, PyObject* value, int found, int end) {
  if (found < end) return found;
  raise(errors().wrongValue, shown(sequence) + "." + method + ": " +
                                 toUtf8(owned(PyObject_Repr, value).get()) + " is not in the sequence");
}

/// A bound of index(), with the meaning that it has in a slice.
int bound(PyObject* sequence, PyObject* value, int size) {
  requireIndex(sequence, "index", value);
  const Py_ssize_t given = enter(PyNumber_AsSsize_t, value, nullptr);
  if (given == -1 && PyErr_Occurred()) throw PythonError();
  return static_cast<int>(std::clamp<Py_ssize_t>(given < 0 ? given + size : given, 0, size));
}

PyObject* index(PyObject* sequence, PyObject* const* arguments, Py_ssize_t count) {
  return guarded([&] {
    requireCount(sequence, "index", count, 1, 3);
    const ElementReader reader(sequence);
    const int size = reader.size();
    const int from = count > 1 ? bound(sequence, arguments[1], size) : 0;
    const int end = count > 2 ? bound(sequence, arguments[2], size) : size;
    const int found = from < end ? find(reader, arguments[0], from, end) : end;
    return owned(PyLong_FromLong, foundOrRaise(sequence, "index", arguments[0], found, end)).release();
  });
}

PyObject* countOf(PyObject* sequence, PyObject* const* arguments, Py_ssize_t count) {
  return guarded([&] {
    requireCount(sequence, "count", count, 1, 1);
    PyObject* value = arguments[0];
    const ElementReader reader(sequence);
    const int size = reader.size();
    long result = 0;
    for (int at = find(reader, value, 0, size); at < size; at = find(reader, value, at + 1, size)) ++result;
    return owned(PyLong_FromLong, result).release();
  });
}

PyObject* removeFirst(PyObject* sequence, PyObject* const* arguments, Py_ssize_t count) {
  return guarded([&] {
    requireCount(sequence, "remove", count, 1, 1);
    PyObject* value = arguments[0];
    const ElementReader reader(sequence);
    const int size = reader.size();
    eraseAt(sequence, foundOrRaise(sequence, "remove", value, find(reader, value, 0, size), size));
    return Py_NewRef(Py_None);
  });
}

PyObject* pop(PyObject* sequence, PyObject* const* arguments, Py_ssize_t count) {
  return guarded([&] {
    requireCount(sequence, "pop", count, 0, 1);
    const ElementReader reader(sequence);
    const Reference last = owned(PyLong_FromLong, -1);
    if (count == 1) requireIndex(sequence, "pop", arguments[0]);
    const int size = reader.size();
    if (size == 0) raise(errors().outOfBounds, shown(sequence) + ".pop: the sequence is empty");
    const int at = position(sequence, count == 1 ? arguments[0] : last.get(), size);
    Reference element(reader.at(at));
    eraseAt(sequence, at);
    return element.release();
  });
}

PyObject* sort(PyObject* sequence, PyObject* arguments, PyObject* keywords) {
  return guarded([&] {
    sortSequence(sequence, arguments, keywords);
    return Py_NewRef(Py_None);
  });
}

PyObject* reverse(PyObject* sequence, PyObject* const* /*arguments*/, Py_ssize_t count) {
  return guarded([&] {
    requireCount(sequence, "reverse", count, 0, 0);
    reverseSequence(sequence);
    return Py_NewRef(Py_None);
  });
}

/// Whether the sequence refuses every change: its class has no such methods, or it is the property of an
/// object seen through a read-only view. A sequence that a script creates can be read-only by its class only.
bool isReadOnly(PyObject* sequence) {
  const bool isProperty = reinterpret_cast<HostSequence*>(sequence)->owner != nullptr;
  const bool isRefusing = isProperty && !nativeSequence(sequence).deviant.isWritable();
  return isRefusing || !typeOf(sequence)->cls->findMethods("push_back");
}

PyObject* represent(PyObject* sequence) {
  return guarded([&] {
    const std::string name(shownName(*typeOf(sequence)->cls));
    try {
      const std::string count = std::to_string(ElementReader(sequence).size());
      return toStr("<" + name + " of " + count + (isReadOnly(sequence) ? " immutable>" : ">")).release();
    } catch (const PythonError&) {
      enter(PyErr_Clear);
      return toStr("<" + name + " destroyed>").release();
    }
  });
}

PyMethodDef gMethods[] = {
    fastMethod("index", index,
               "index(value[, start[, stop]]): returns the index, from 0, of the first equal element; raises "
               "K7Q.WrongValue if there is none"),
    fastMethod("pop", pop,
               "pop([index]): removes and returns the element at an index from 0, or the last one"),
    fastMethod("count", countOf, "count(value): returns the number of equal elements"),
    fastMethod("remove", removeFirst,
               "remove(value): removes the first equal element; raises K7Q.WrongValue if there is none"),
    fastMethod("extend", extend, "extend(elements): appends the elements in their order"),
    {"sort", reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(sort)), METH_VARARGS | METH_KEYWORDS,
     "sort(*, key=None, reverse=False): sorts the elements like list.sort(), as one change of the model"},
    fastMethod("reverse", reverse,
               "reverse(): reverses the order of the elements, as one change of the model"),
    {nullptr, nullptr, 0, nullptr}};

PySequenceMethods gSequence{};
PyMappingMethods gMapping{};

}  // namespace

void requireChangeable(PyObject* sequence) {
  if (_PyType_Lookup(Py_TYPE(sequence), toKey("push_back").get())) return;
  raise(errors().wrongType,
        std::string(shownName(*typeOf(sequence)->cls)) +
            " cannot be changed: read the property from the mutable object, if it has one");
}

void readySequenceType() {
  gSequence.sq_length = length;
  gSequence.sq_item = item;
  gSequence.sq_contains = contains;
  gSequence.sq_inplace_concat = addInPlace;
  gMapping.mp_length = length;
  gMapping.mp_subscript = subscript;
  gMapping.mp_ass_subscript = assignSubscript;
  PyTypeObject& type = sequenceType;
  prepareType(
      type, "_tarvelon_host.Sequence", sizeof(HostSequence),
      "The base of all sequences. The host's methods count from 1, Python's operators and methods from 0.");
  Py_SET_TYPE(reinterpret_cast<PyObject*>(&type), &hostMetaType);
  type.tp_base = &hostObjectType;
  type.tp_flags |= Py_TPFLAGS_BASETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION | Py_TPFLAGS_SEQUENCE;
  type.tp_dealloc = deallocatorOf(TypeKind::Sequence);
  type.tp_repr = represent;
  type.tp_iter = iterate;
  type.tp_as_sequence = &gSequence;
  type.tp_as_mapping = &gMapping;
  type.tp_methods = gMethods;
  require(PyType_Ready, &type);
  readySequenceWalkType();
}

}  // namespace pyhost
