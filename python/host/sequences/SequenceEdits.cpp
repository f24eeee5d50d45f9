#include "python/host/sequences/SequenceEdits.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "python/host/objects/Values.h"
#include "python/host/sequences/SequenceContents.h"

namespace pyhost {

namespace {

using K7Q::Generic::Ref;

/// The indices of a slice in a sequence of `size` elements.
struct Slice {
  Py_ssize_t start = 0;
  Py_ssize_t stop = 0;
  Py_ssize_t step = 0;
  Py_ssize_t count = 0;

  Slice(PyObject* slice, std::size_t size) {
    require(PySlice_Unpack, slice, &start, &stop, &step);
    count = PySlice_AdjustIndices(static_cast<Py_ssize_t>(size), &start, &stop, step);
  }
  std::size_t place(std::size_t index) const noexcept {
    return static_cast<std::size_t>(start + static_cast<Py_ssize_t>(index) * step);
  }
  std::size_t length() const noexcept { return static_cast<std::size_t>(count); }
};

struct Hash {
  const SequenceContents* access;
  std::size_t operator()(const Ref& element) const noexcept { return access->hash(element); }
};
struct Same {
  const SequenceContents* access;
  bool operator()(const Ref& left, const Ref& right) const noexcept { return access->isSame(left, right); }
};
using ElementSet = std::unordered_set<Ref, Hash, Same>;
using ElementPlaces = std::unordered_map<Ref, std::size_t, Hash, Same>;

std::string shown(PyObject* sequence) { return std::string(typeOf(sequence)->cls->shortName()); }

Contents elementsOf(const SequenceContents& access, PyObject* sequence, PyObject* values) {
  if (!Py_TYPE(values)->tp_iter && !PySequence_Check(values)) {
    raise(errors().wrongType,
          shown(sequence) + ": expected elements to iterate for a slice, got " + describePython(values));
  }
  // Copies the elements, because they may come from this sequence.
  const Reference list = owned(PySequence_List, values);
  Contents elements;
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(list.get()); ++i) {
    const std::string where = shown(sequence) + ": element " + std::to_string(i) + " of a slice: ";
    elements.push_back(access.element(PyList_GET_ITEM(list.get(), i), where));
  }
  return elements;
}

/// The contents after an assignment to a slice without a step. In a unique sequence, given elements from
/// outside the slice are moved into it.
Contents withRun(const SequenceContents& access, const Contents& before, const Slice& slice,
                 const Contents& given, bool isUnique) {
  ElementSet moved(0, Hash{&access}, Same{&access});
  Contents after;
  const auto addOthers = [&](std::size_t from, std::size_t to) {
    for (std::size_t place = from; place < to; ++place) {
      if (!moved.contains(before[place])) after.push_back(before[place]);
    }
  };
  if (isUnique) moved.insert(given.begin(), given.end());
  const auto start = static_cast<std::size_t>(slice.start);
  addOthers(0, start);
  for (const Ref& element : given) {
    if (!isUnique || moved.erase(element) != 0) after.push_back(element);
  }
  if (isUnique) moved.insert(given.begin(), given.end());
  addOthers(start + slice.length(), before.size());
  return after;
}

/// The contents after an assignment to a slice with a step. In a unique sequence, an element that is already
/// in the sequence is swapped.
Contents withPlaces(const SequenceContents& access, Contents contents, const Slice& slice,
                    const Contents& given, bool isUnique) {
  ElementPlaces places(0, Hash{&access}, Same{&access});
  for (std::size_t place = 0; isUnique && place < contents.size(); ++place)
    places.emplace(contents[place], place);
  for (std::size_t index = 0; index < given.size(); ++index) {
    const std::size_t place = slice.place(index);
    const auto found = places.find(given[index]);
    if (found != places.end()) {
      std::swap(contents[found->second], contents[place]);
      places[contents[found->second]] = found->second;
      found->second = place;
    } else {
      if (isUnique) {
        places.erase(contents[place]);
        places.emplace(given[index], place);
      }
      contents[place] = given[index];
    }
  }
  return contents;
}

void requireLength(PyObject* sequence, const Slice& slice, std::size_t given) {
  if (slice.length() == given) return;
  raise(errors().wrongValue, shown(sequence) + ": a slice with a step of " + std::to_string(slice.step) +
                                 " has " + std::to_string(slice.count) + " elements here, got " +
                                 std::to_string(given) + "; give one for each element of the slice");
}

Contents without(const Contents& before, const Slice& slice) {
  std::vector<bool> goes(before.size());
  for (std::size_t index = 0; index < slice.length(); ++index) goes[slice.place(index)] = true;
  Contents after;
  for (std::size_t place = 0; place < before.size(); ++place) {
    if (!goes[place]) after.push_back(before[place]);
  }
  return after;
}

/// Starts at the end, because then the lower indices stay valid.
void eraseEach(PyObject* sequence, const Slice& slice) {
  std::vector<std::size_t> places;
  for (std::size_t index = 0; index < slice.length(); ++index) places.push_back(slice.place(index));
  std::ranges::sort(places, std::ranges::greater());
  for (const std::size_t place : places) {
    changeSequence(sequence, "erase", owned(PyLong_FromSize_t, place + 1).get());
  }
}

/// Copies the elements into a Python list, lets `inList` change their order, and writes the result.
template <class Reorder>
void reorder(PyObject* sequence, Reorder inList) {
  requireChangeable(sequence);
  const SequenceContents access(sequence);
  const Contents before = access.read();
  const Reference list = owned(PySequence_List, sequence);
  inList(list.get());
  Contents after;
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(list.get()); ++i) {
    after.push_back(access.element(PyList_GET_ITEM(list.get(), i), shown(sequence) + ": "));
  }
  const Contents now = access.read();
  if (!std::equal(before.begin(), before.end(), now.begin(), now.end(), Same{&access})) {
    raise(errors().changed,
          shown(sequence) +
              ": the sequence changed while it was sorted; the key function must not change the model");
  }
  access.write(after);
}

[[noreturn]] void refuseSort(const std::string& given) {
  raise(errors().wrongType, "sort: expected only key= and reverse=, given by name, got " + given);
}

/// Checks the arguments of sort(), because the list would raise a TypeError that is not a K7Q.Exception.
void requireSortArguments(PyObject* arguments, PyObject* keywords) {
  if (PyTuple_GET_SIZE(arguments) != 0) refuseSort(describePython(PyTuple_GET_ITEM(arguments, 0)));
  PyObject *name = nullptr, *value = nullptr;
  for (Py_ssize_t at = 0; keywords && PyDict_Next(keywords, &at, &name, &value);) {
    const std::string given = toUtf8(name);
    if (given != "key" && given != "reverse") refuseSort("'" + given + "'");
  }
}

}  // namespace

void assignSlice(PyObject* sequence, PyObject* asked, PyObject* values) {
  requireChangeable(sequence);
  const SequenceContents access(sequence);
  const Contents given = values ? elementsOf(access, sequence, values) : Contents();
  const Contents before = access.read();
  const Slice slice(asked, before.size());
  if (!values && access.keepsIterators()) {
    eraseEach(sequence, slice);
  } else if (!values) {
    access.write(without(before, slice));
  } else if (slice.step == 1) {
    access.write(withRun(access, before, slice, given, access.isUnique()));
  } else {
    requireLength(sequence, slice, given.size());
    access.write(withPlaces(access, before, slice, given, access.isUnique()));
  }
}

void assignItem(PyObject* sequence, int at, PyObject* value) {
  changeSequence(sequence, "replace", owned(PyLong_FromLong, at + 1).get(), value);
  const SequenceContents access(sequence);
  if (!access.keepsIterators()) return;
  Contents contents = access.read();
  const Ref element = access.element(value, shown(sequence) + ": ");
  Ref& place = contents[static_cast<std::size_t>(at)];
  if (access.isSame(place, element)) return;
  const auto isElement = [&](const Ref& each) { return access.isSame(each, element); };
  std::swap(place, *std::find_if(contents.begin(), contents.end(), isElement));
  access.write(contents);
}

void sortSequence(PyObject* sequence, PyObject* arguments, PyObject* keywords) {
  requireSortArguments(arguments, keywords);
  reorder(sequence, [&](PyObject* list) {
    const Reference sort = owned(PyObject_GetAttrString, list, "sort");
    owned(PyObject_Call, sort.get(), arguments, keywords);
  });
}

void reverseSequence(PyObject* sequence) {
  reorder(sequence, [](PyObject* list) { require(PyList_Reverse, list); });
}

}  // namespace pyhost
