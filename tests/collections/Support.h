#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/arplatform/variant/Names.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/collections/ListQImpl.h"
#include "tarvelon/collections/MultiIndexImpl.h"
#include "tests/collections/Allocations.h"

/// Helpers for the tests of the containers.
namespace collections {

using Kind = Tarvelon::metamodel::arplatform::variant::BindingTimeKind;
using K7Q::Generic::IteratorIntf;
using K7Q::Generic::Ref;
using K7Q::Generic::SequenceIntf;
using IteratorPtr = std::unique_ptr<IteratorIntf>;
using Values = std::vector<int>;

using List = K7Q::ListQImpl<Kind>;
using Multi = K7Q::MultiIndexImpl<Kind, false, boost::multi_index::identity<Kind>>;
using Unique = K7Q::MultiIndexImpl<Kind, true, boost::multi_index::identity<Kind>>;

/// The containers ignore the deviant.
inline constexpr K7Q::Deviant kDeviant{};

/// A value with any number, even if no literal has the number.
inline Ref ref(int value) { return K7Q::makeRef(Kind(value)); }
inline int value(const Ref& ref) { return K7Q::valueOf<Kind>(ref).value(); }
inline int value(const IteratorIntf& iterator) { return value(iterator.current(kDeviant)); }

inline void push(SequenceIntf& sequence, const Values& values) {
  for (int each : values) sequence.generic_push_back(kDeviant, ref(each));
}

/// The elements, read by index.
inline Values valuesOf(const SequenceIntf& sequence) {
  Values values;
  for (int i = 0; i < sequence.generic_size(kDeviant); ++i) {
    values.push_back(value(sequence.generic_at(kDeviant, i)));
  }
  return values;
}

/// The elements, read with an iterator.
inline Values walk(const SequenceIntf& sequence) {
  Values values;
  const auto end = sequence.generic_end(kDeviant);
  for (auto i = sequence.generic_begin(kDeviant); !i->equal(end.get()); i->next(kDeviant)) {
    values.push_back(value(*i));
  }
  return values;
}

/// An iterator `index` elements behind the first.
inline IteratorPtr iteratorAt(const SequenceIntf& sequence, int index) {
  auto iterator = sequence.generic_begin(kDeviant);
  for (int i = 0; i < index; ++i) iterator->next(kDeviant);
  return iterator;
}

/// The text of the K7Q::Exception that `action` raises; "nothing was raised" if there is none.
template <class Action>
std::string raised(Action action) {
  try {
    action();
  } catch (const K7Q::Exception& exception) {
    return exception.what();
  }
  return "nothing was raised";
}

inline std::string failure(const char* message, const char* site, int line) {
  return std::string("Assertion failed: ") + message + " at " + site + ":" + std::to_string(line) + ": ";
}

}  // namespace collections
