#pragma once

#include <memory>
#include <type_traits>

#include <boost/multi_index/identity.hpp>
#include <boost/multi_index/ordered_index.hpp>
#include <boost/multi_index/random_access_index.hpp>
#include <boost/multi_index_container.hpp>

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/boundary/tarvelon/PrimitiveCell.h"
#include "tarvelon/collections/PlaceIterator.h"
#include "tarvelon/collections/SequenceChecks.h"
#include "tarvelon/collections/SequenceNames.h"

namespace K7Q {

namespace MultiIndexImplInternal {

/// A sequence of values that is at the same time an ordered set of them: it finds a value without a scan, and
/// a unique one holds each value once.
///
/// Elements:  a unique sequence that is given a value which it holds already, or a replacement by one that it
///            holds elsewhere, stays as it is without a message. An index counts from 0.
/// Iterators: stay on their element through every change but its own removal, also when it is replaced; the
///            end stays the end. Nothing tests an iterator that is passed in or moved.
/// Lifetime:  addRef() and release() do nothing: somebody owns the sequence, as a rule a proxy that counts.
/// Failure:   tests come first and raise K7Q::Exception; std::bad_alloc when memory is exhausted. Either way
///            the elements are as before.
/// Threads:   one at a time.
/// Cost:      a node on the heap for each element. Reading at an index and stepping are constant, finding is
///            logarithmic; a change moves the entries of the places behind it.
template <class T, bool IsUnique, class KeyExtractor>
class MultiIndexImplForPrimitives : public Generic::SequenceIntf {
  using Ordered = boost::multi_index::ordered_non_unique<KeyExtractor>;
  using OrderedUnique = boost::multi_index::ordered_unique<KeyExtractor>;

 public:
  /// By place; by value, to find all that are equal; by value, to find one and to refuse what is there.
  using Container = boost::multi_index_container<
      T, boost::multi_index::indexed_by<boost::multi_index::random_access<>, Ordered,
                                        std::conditional_t<IsUnique, OrderedUnique, Ordered>>>;
  using Iterator = PlaceIterator<Container>;
  using IteratorPtr = typename Iterator::IteratorPtr;
  /// A place is a node of the container.
  static_assert(sizeof(typename Iterator::Position) == sizeof(void*), "a position is a pointer to a node");

  Generic::Ref generic_at(const Deviant& /*aDeviant*/, int index) const override {
    SequenceChecks::requireElement({kSite, 251}, index, mContainer.size());
    return makeRef(mContainer.at(static_cast<std::size_t>(index)));
  }
  Generic::Ref generic_front(const Deviant& /*aDeviant*/) const override {
    SequenceChecks::requireNotEmpty({kSite, 261}, mContainer.empty());
    return makeRef(mContainer.front());
  }
  Generic::Ref generic_back(const Deviant& /*aDeviant*/) const override {
    SequenceChecks::requireNotEmpty({kSite, 270}, mContainer.empty());
    return makeRef(mContainer.back());
  }
  IteratorPtr generic_begin(const Deviant& /*aDeviant*/) const override {
    return std::make_unique<Iterator>(mContainer.begin());
  }
  IteratorPtr generic_end(const Deviant& /*aDeviant*/) const override {
    return std::make_unique<Iterator>(mContainer.end());
  }
  void generic_clear(const Deviant& /*aDeviant*/) override { mContainer.clear(); }
  int generic_size(const Deviant& /*aDeviant*/) const override { return static_cast<int>(mContainer.size()); }
  bool generic_empty(const Deviant& /*aDeviant*/) const override { return mContainer.empty(); }

  void generic_insert(const Deviant& /*aDeviant*/, int index, Generic::Ref ref) override {
    SequenceChecks::requirePlace({kSite, 314}, index, mContainer.size());
    mContainer.insert(at(index), valueOf<T>(ref));
  }
  /// The result stands on the element that has the value: on the new one, or in a unique sequence on the one
  /// that was there.
  IteratorPtr generic_insert(const Deviant& /*aDeviant*/, const Generic::IteratorIntf* iterator,
                             Generic::Ref ref) override {
    return Iterator::changeAt(
        iterator, [&](auto position) { return mContainer.insert(position, valueOf<T>(ref)).first; });
  }
  IteratorPtr generic_erase(const Deviant& /*aDeviant*/, const Generic::IteratorIntf* iterator) override {
    return Iterator::changeAt(iterator, [&](auto position) { return mContainer.erase(position); });
  }
  IteratorPtr generic_erase(const Deviant& /*aDeviant*/, const Generic::IteratorIntf* first,
                            const Generic::IteratorIntf* last) override {
    return Iterator::changeAt(
        first, [&](auto position) { return mContainer.erase(position, Iterator::positionOf(last)); });
  }
  void generic_erase(const Deviant& /*aDeviant*/, int index) override {
    SequenceChecks::requireElement({kSite, 351}, index, mContainer.size());
    mContainer.erase(at(index));
  }
  void generic_pop_back(const Deviant& /*aDeviant*/) override {
    SequenceChecks::requireNotEmpty({kSite, 362}, mContainer.empty());
    mContainer.pop_back();
  }
  void generic_pop_front(const Deviant& /*aDeviant*/) override {
    SequenceChecks::requireNotEmpty({kSite, 371}, mContainer.empty());
    mContainer.pop_front();
  }
  void generic_push_back(const Deviant& /*aDeviant*/, Generic::Ref ref) override {
    mContainer.push_back(valueOf<T>(ref));
  }
  void generic_push_front(const Deviant& /*aDeviant*/, Generic::Ref ref) override {
    mContainer.push_front(valueOf<T>(ref));
  }
  void generic_replace(const Deviant& /*aDeviant*/, int index, Generic::Ref ref) override {
    SequenceChecks::requireElement({kSite, 412}, index, mContainer.size());
    byValue().replace(mContainer.template project<1>(at(index)), valueOf<T>(ref));
  }
  bool generic_contains(const Deviant& /*aDeviant*/, Generic::Ref ref) const override {
    const auto& values = mContainer.template get<2>();
    return values.find(valueOf<T>(ref)) != values.end();
  }
  /// The class is known here: the declared name is not needed.
  const char* generic_getRuvoName(bool isSequenceImmutable, bool /*isElementImmutable*/,
                                  const char* /*name*/) const override {
    return isSequenceImmutable ? SequenceNames::kImmutableSequence<T>.data()
                               : SequenceNames::kSequence<T>.data();
  }
  int generic_removeAll(const Deviant& /*aDeviant*/, Generic::Ref ref) override {
    int count = 0;
    auto [first, last] = byValue().equal_range(valueOf<T>(ref));
    for (; first != last; ++count) byValue().erase(first++);
    return count;
  }

 private:
  static constexpr const char* kSite = "kernel/containers/sequence/multi_index/MultiIndexImplForPrimitives";

  auto at(int index) const { return mContainer.begin() + index; }
  auto& byValue() { return mContainer.template get<1>(); }

  Container mContainer;
};

}  // namespace MultiIndexImplInternal

template <class T, bool IsUnique, class KeyExtractor, class IsPrimitive>
class MultiIndexImplBase;

template <class T, bool IsUnique, class KeyExtractor>
class MultiIndexImplBase<T, IsUnique, KeyExtractor, TRUE_TYPE>
    : public MultiIndexImplInternal::MultiIndexImplForPrimitives<T, IsUnique, KeyExtractor> {};

/// The sequence that makeSequence() creates for MULTI_INDEX.
template <class T, bool IsUnique, class KeyExtractor>
class MultiIndexImpl : public MultiIndexImplBase<T, IsUnique, KeyExtractor, TRUE_TYPE> {};

}  // namespace K7Q
