#include "python/host/objects/IteratorGuard.h"

#include <memory>

#include "python/host/objects/ElementReader.h"
#include "python/host/objects/Values.h"

namespace pyhost {

namespace {

using Place = std::unique_ptr<K7Q::Generic::IteratorIntf>;

/// Creates native iterators at given positions of the sequence.
class Places {
 public:
  explicit Places(PyObject* sequence) : mSequence(nativeSequence(sequence)) {}

  int size() const { return mSequence.size(); }
  Place begin() const { return mSequence.interface->generic_begin(mSequence.deviant); }
  Place end() const { return mSequence.interface->generic_end(mSequence.deviant); }
  Place last() const {
    Place place = end();
    place->previous(mSequence.deviant);
    return place;
  }
  /// REQUIRES: 0 <= index < size().
  Place at(int index) const {
    // Walks from the nearer end.
    const int size = this->size();
    if (index <= size / 2) {
      Place place = begin();
      for (; index > 0; --index) next(*place);
      return place;
    }
    Place place = end();
    for (; index < size; ++index) place->previous(mSequence.deviant);
    return place;
  }
  void next(K7Q::Generic::IteratorIntf& place) const { place.next(mSequence.deviant); }
  std::int32_t valueAt(const K7Q::Generic::IteratorIntf& place) const {
    const auto ref = place.current(mSequence.deviant);
    return *static_cast<const std::int32_t*>(ref.value());
  }

 private:
  NativeSequence mSequence;
};

HostIterator* asIterator(PyObject* object) noexcept { return reinterpret_cast<HostIterator*>(object); }

bool isIterator(PyObject* object) noexcept {
  return isHostObject(object) && typeOf(object)->kind == TypeKind::Iterator;
}

/// Collects the iterators whose elements will be removed.
class Collector {
 public:
  Collector(PyObject* sequence, std::vector<Reference>& found)
      : mSequence(sequence), mPlaces(sequence), mFound(found) {}

  template <class Test>
  void collectIf(Test test) const {
    for (HostIterator* each = reinterpret_cast<HostSequence*>(mSequence)->iterators; each;
         each = each->next) {
      if (!each->isRetired && test(*nativeIterator(*each)))
        mFound.push_back(Reference::share(asPyObject(&each->base)));
    }
  }
  void collectAt(const K7Q::Generic::IteratorIntf& place) const {
    collectIf([&](const auto& each) { return each.equal(&place); });
  }
  void collectRange(const K7Q::Generic::IteratorIntf& first, const K7Q::Generic::IteratorIntf& last) const {
    const Place place = first.clone();
    for (const Place end = mPlaces.end(); !place->equal(&last); mPlaces.next(*place)) {
      if (place->equal(end.get())) {
        raise(errors().wrongValue, text("erase") +
                                       "expected a first and a last iterator in the order of the sequence; "
                                       "the last one is before the first");
      }
      collectAt(*place);
    }
  }
  void collectElement(const HostIterator& iterator) const {
    const auto* place = nativeIterator(iterator);
    if (place->equal(mPlaces.end().get())) {
      raise(errors().staleIterator, text("erase") + "the iterator is at the end of its sequence");
    }
    collectAt(*place);
  }
  void collectIndex(const ruvo::HostValue& index) const {
    // The call itself refuses an invalid index.
    const double at = index.isNumber() ? index.real() : 0;
    if (at >= 1 && at <= mPlaces.size()) collectAt(*mPlaces.at(static_cast<int>(at) - 1));
  }
  void collectPlaces(int first, int last) const {
    if (first == last) return;
    const Place place = mPlaces.at(first);
    for (int index = first; index < last; ++index, mPlaces.next(*place)) collectAt(*place);
  }
  void collectEdge(bool isLast) const {
    if (mPlaces.size() > 0) collectAt(isLast ? *mPlaces.last() : *mPlaces.begin());
  }
  void collectAll() const {
    const Place end = mPlaces.end();
    collectIf([&](const auto& each) { return !each.equal(end.get()); });
  }
  void collectValue(PyObject* value) const {
    if (!isHostObject(value) || typeOf(value)->kind != TypeKind::Enumeration) return;
    const Place end = mPlaces.end();
    const std::int32_t number = enumerationNumber(value);
    collectIf([&](const auto& each) { return !each.equal(end.get()) && mPlaces.valueAt(each) == number; });
  }

 private:
  std::string text(const char* method) const {
    return std::string(typeOf(mSequence)->cls->shortName()) + "." + method + ": ";
  }

  PyObject* mSequence;
  Places mPlaces;
  std::vector<Reference>& mFound;
};

void collectErased(const Collector& collector, std::span<PyObject* const> arguments,
                   std::span<const ruvo::HostValue> converted) {
  if (arguments.size() == 2 && isIterator(arguments[0]) && isIterator(arguments[1])) {
    collector.collectRange(*nativeIterator(*asIterator(arguments[0])),
                           *nativeIterator(*asIterator(arguments[1])));
  } else if (arguments.size() == 1 && isIterator(arguments[0])) {
    collector.collectElement(*asIterator(arguments[0]));
  } else if (arguments.size() == 1) {
    collector.collectIndex(converted[0]);
  }
}

}  // namespace

void watchIterator(HostIterator& iterator, PyObject* sequence) noexcept {
  HostIterator*& first = reinterpret_cast<HostSequence*>(sequence)->iterators;
  iterator.sequence = Py_NewRef(sequence);
  iterator.previous = nullptr;
  iterator.next = first;
  if (first) first->previous = &iterator;
  first = &iterator;
}

void forgetIterator(HostIterator& iterator) noexcept {
  if (!iterator.sequence) return;
  HostIterator*& place = iterator.previous ? iterator.previous->next
                                           : reinterpret_cast<HostSequence*>(iterator.sequence)->iterators;
  place = iterator.next;
  if (iterator.next) iterator.next->previous = iterator.previous;
}

IteratorsToInvalidate::IteratorsToInvalidate(PyObject* sequence, std::string_view method,
                                             std::span<PyObject* const> arguments,
                                             std::span<const ruvo::HostValue> converted) {
  const auto& walked = *reinterpret_cast<HostSequence*>(sequence);
  const bool isProperty = walked.owner != nullptr;
  if (!walked.iterators || isProperty || elementsOf(*typeOf(sequence)) != Elements::Values) return;
  mSequence = nativeSequence(sequence);
  mSize = mSequence.size();
  const Collector collector(sequence, mIterators);
  if (method == "erase") {
    collectErased(collector, arguments, converted);
  } else if (method == "clear" && arguments.empty()) {
    collector.collectAll();
  } else if ((method == "pop_back" || method == "pop_front") && arguments.empty()) {
    collector.collectEdge(method == "pop_back");
  } else if (method == "removeAll" && arguments.size() == 1) {
    collector.collectValue(arguments[0]);
  }
}

IteratorsToInvalidate::IteratorsToInvalidate(PyObject* sequence, int first, int last) {
  if (!reinterpret_cast<HostSequence*>(sequence)->iterators) return;
  mSequence = nativeSequence(sequence);
  mSize = mSequence.size();
  Collector(sequence, mIterators).collectPlaces(first, last);
}

}  // namespace pyhost
