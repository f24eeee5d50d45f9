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

/// A sequence of enumeration values with an ordered index, so that a value is found without a scan. A unique
/// sequence contains a value at most once.
///
/// Elements:  adding a value that a unique sequence already contains changes nothing and is no error. The
///            same holds for replacing an element by a value that the sequence contains at another index.
///            Indices count from 0.
/// Iterators: an iterator stays at its element until the element is removed, even if the value of the element
///            is replaced. An end iterator stays at the end. The functions do not test iterators.
/// Lifetime:  addRef() and release() do nothing. The sequence has an owner, usually a proxy that counts
///            references.
/// Errors:    K7Q::Exception for a wrong index and for an empty sequence; std::bad_alloc. After an exception,
///            the elements are as before.
/// Threads:   one thread at a time.
/// Cost:      one heap allocation for each element. Access by index and moving an iterator take constant
///            time, finding a value takes logarithmic time. Inserting and erasing take linear time in the
///            number of following elements.
template <class T, bool IsUnique, class KeyExtractor>
class MultiIndexImplForPrimitives : public Generic::SequenceIntf {
  using Ordered = boost::multi_index::ordered_non_unique<KeyExtractor>;
  using OrderedUnique = boost::multi_index::ordered_unique<KeyExtractor>;

 public:
  /// Index 0: by position. Index 1: by value, to find all equal elements. Index 2: by value, to find one
  /// element and, in a unique sequence, to reject duplicates.
  using Container = boost::multi_index_container<
      T, boost::multi_index::indexed_by<boost::multi_index::random_access<>, Ordered,
                                        std::conditional_t<IsUnique, OrderedUnique, Ordered>>>;
  using Iterator = PlaceIterator<Container>;
  using IteratorPtr = typename Iterator::IteratorPtr;
  /// A position is a pointer to a node of the container.
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
  /// The result is at the element with that value: the new element or, in a unique sequence, the element that
  /// already had the value.
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
  /// The class is known from T, so the declared name is not used.
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
