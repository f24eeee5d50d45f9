// Compares sequences of enumeration values with the bare containers inside them: the cost of the generic
// interface.
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/multi_index/identity.hpp>

#include "tarvelon/arplatform/variant/Names.h"
#include "tarvelon/collections/ListQImpl.h"
#include "tarvelon/collections/MultiIndexImpl.h"

namespace {

using Kind = Tarvelon::metamodel::arplatform::variant::BindingTimeKind;
using K7Q::Generic::Ref;
using K7Q::Generic::SequenceIntf;
using List = K7Q::ListQImpl<Kind>;
using MultiIndex = K7Q::MultiIndexImpl<Kind, false, boost::multi_index::identity<Kind>>;
using Bare = MultiIndex::Container;

constexpr int kListSize = 1000000;
constexpr int kMultiIndexSize = 100000;
constexpr K7Q::Deviant kDeviant{};

/// The i-th of kMultiIndexSize distinct values. The values are not in ascending order.
constexpr int distinct(int i) { return static_cast<int>(std::int64_t{i} * 70001 % kMultiIndexSize); }

/// A vector behind an interface, which allocates each value separately.
struct BoxedVector {
  virtual ~BoxedVector() = default;
  virtual void pushBack(std::unique_ptr<int> value) { mValues.push_back(*value); }
  std::vector<int> mValues;
};

void fillListPlain(benchmark::State& state) {
  for (auto _ : state) {
    const auto list = std::make_unique<BoxedVector>();
    auto* interface = list.get();
    benchmark::DoNotOptimize(interface);
    for (int i = 0; i < kListSize; ++i) interface->pushBack(std::make_unique<int>(i));
    benchmark::DoNotOptimize(list->mValues.data());
  }
}
void fillList(benchmark::State& state) {
  for (auto _ : state) {
    const auto list = std::make_unique<List>();
    SequenceIntf* interface = list.get();
    benchmark::DoNotOptimize(interface);
    for (int i = 0; i < kListSize; ++i) interface->generic_push_back(kDeviant, K7Q::makeRef(Kind(i)));
    benchmark::DoNotOptimize(interface);
  }
}

/// The values, and the references to them for the generic interface.
const std::vector<Kind>& values() {
  static const std::vector<Kind> all = [] {
    std::vector<Kind> made;
    made.reserve(kMultiIndexSize);
    for (int i = 0; i < kMultiIndexSize; ++i) made.emplace_back(distinct(i));
    return made;
  }();
  return all;
}
const std::vector<Ref>& refs() {
  static const std::vector<Ref> all = [] {
    std::vector<Ref> made;
    made.reserve(kMultiIndexSize);
    for (const Kind value : values()) made.push_back(K7Q::makeRef(value));
    return made;
  }();
  return all;
}

/// The bare container and the sequence that contains one. They are filled alternately, so that both have the
/// same memory layout, which affects the time of a search.
struct Pair {
  Pair() {
    for (std::size_t i = 0; i < kMultiIndexSize; ++i) {
      bare.push_back(values()[i]);
      sequence.generic_push_back(kDeviant, refs()[i]);
    }
  }
  Bare bare;
  MultiIndex sequence;
};

Pair& keptPair() {
  static Pair pair;
  return pair;
}

/// Creates a new pair for each iteration; creation and destruction are not part of the measured time.
template <class Action>
void onNewPair(benchmark::State& state, Action action) {
  for (auto _ : state) {
    state.PauseTiming();
    auto pair = std::make_unique<Pair>();
    state.ResumeTiming();
    action(*pair);
    state.PauseTiming();
    pair.reset();
    state.ResumeTiming();
  }
}

void fillMultiIndexPlain(benchmark::State& state) {
  for (auto _ : state) {
    Bare container;
    for (const Kind value : values()) container.push_back(value);
    benchmark::DoNotOptimize(container);
  }
}
void fillMultiIndex(benchmark::State& state) {
  for (auto _ : state) {
    MultiIndex container;
    SequenceIntf* sequence = &container;
    benchmark::DoNotOptimize(sequence);
    for (const Ref& ref : refs()) sequence->generic_push_back(kDeviant, ref);
    benchmark::DoNotOptimize(container);
  }
}

void containsPlain(benchmark::State& state) {
  const auto& index = keptPair().bare.get<2>();
  for (auto _ : state) {
    for (const Kind value : values()) benchmark::DoNotOptimize(index.find(value) != index.end());
  }
}
void contains(benchmark::State& state) {
  const SequenceIntf* sequence = &keptPair().sequence;
  benchmark::DoNotOptimize(sequence);
  for (auto _ : state) {
    for (const Ref& ref : refs()) benchmark::DoNotOptimize(sequence->generic_contains(kDeviant, ref));
  }
}

// Removes and erases from the last index to the first: otherwise moving the later elements would dominate the
// time.
void removeAllPlain(benchmark::State& state) {
  onNewPair(state, [](Pair& pair) {
    auto& index = pair.bare.get<1>();
    for (std::size_t i = kMultiIndexSize; i-- > 0;) {
      auto [first, last] = index.equal_range(values()[i]);
      while (first != last) index.erase(first++);
    }
  });
}
void removeAll(benchmark::State& state) {
  onNewPair(state, [](Pair& pair) {
    SequenceIntf* sequence = &pair.sequence;
    benchmark::DoNotOptimize(sequence);
    for (std::size_t i = kMultiIndexSize; i-- > 0;) sequence->generic_removeAll(kDeviant, refs()[i]);
  });
}

void erasePlain(benchmark::State& state) {
  onNewPair(state, [](Pair& pair) {
    auto position = std::make_unique<Bare::iterator>(pair.bare.end());
    for (int i = 0; i < kMultiIndexSize; ++i) {
      --*position;
      position = std::make_unique<Bare::iterator>(pair.bare.erase(*position));
    }
  });
}
void erase(benchmark::State& state) {
  onNewPair(state, [](Pair& pair) {
    SequenceIntf* sequence = &pair.sequence;
    benchmark::DoNotOptimize(sequence);
    auto position = sequence->generic_end(kDeviant);
    for (int i = 0; i < kMultiIndexSize; ++i) {
      position->previous(kDeviant);
      position = sequence->generic_erase(kDeviant, position.get());
    }
  });
}

BENCHMARK(fillListPlain)->Name("fill a list with 1000000 boxed values/plain struct");
BENCHMARK(fillList)->Name("fill a list with 1000000 boxed values/ListQImpl");
BENCHMARK(fillMultiIndexPlain)->Name("fill a multi-index with 100000 values/plain struct");
BENCHMARK(fillMultiIndex)->Name("fill a multi-index with 100000 values/MultiIndexImpl");
BENCHMARK(containsPlain)->Name("find 100000 values/plain struct");
BENCHMARK(contains)->Name("find 100000 values/MultiIndexImpl");
BENCHMARK(removeAllPlain)->Name("remove 100000 values one by one/plain struct");
BENCHMARK(removeAll)->Name("remove 100000 values one by one/MultiIndexImpl");
BENCHMARK(erasePlain)->Name("erase 100000 values by iterator/plain struct");
BENCHMARK(erase)->Name("erase 100000 values by iterator/MultiIndexImpl");

}  // namespace
