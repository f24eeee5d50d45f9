#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/boundary/tarvelon/PrimitiveCell.h"
#include "tarvelon/collections/CopyOnWrite.h"
#include "tarvelon/collections/PlaceIterator.h"
#include "tarvelon/collections/SequenceChecks.h"

namespace K7Q {

namespace ListQImplInternal {

/// A list of enumeration values in a copy-on-write vector.
///
/// Elements:  a value may be in the list several times. Indices count from 0.
/// Iterators: an iterator is a position in the vector. Any change of the list may invalidate the iterator: it
///            may then refer to another element or to freed memory. The functions do not test iterators.
/// Lifetime:  addRef() and release() do nothing. The list has an owner, usually a proxy that counts
///            references.
/// Errors:    K7Q::Exception for a wrong index and for an empty list; std::bad_alloc. After an exception, the
///            elements are as before, except that generic_removeAll() may have removed some.
/// Threads:   one thread at a time.
/// Cost:      an empty list has no memory of its own. Searching takes linear time.
template <class T>
class ListQImplForPrimitives : public Generic::SequenceIntf {
 public:
  using Elements = std::vector<T>;
  using Iterator = PlaceIterator<Elements>;
  using IteratorPtr = typename Iterator::IteratorPtr;

  Generic::Ref generic_at(const Deviant& /*aDeviant*/, int index) const override {
    SequenceChecks::requireElement({kSite, 131}, index, mStorage.size());
    return makeRef(elements().at(static_cast<std::size_t>(index)));
  }
  Generic::Ref generic_front(const Deviant& /*aDeviant*/) const override {
    SequenceChecks::requireNotEmpty({kSite, 141}, elements().empty());
    return makeRef(elements().front());
  }
  Generic::Ref generic_back(const Deviant& /*aDeviant*/) const override {
    SequenceChecks::requireNotEmpty({kSite, 150}, elements().empty());
    return makeRef(elements().back());
  }

  // An iterator must refer to a vector that no other list shares, so these two make the payload private.
  IteratorPtr generic_begin(const Deviant& /*aDeviant*/) const override {
    Performance::COWDataAccessToken<Elements> token;
    return std::make_unique<Iterator>(mStorage.publicDataRef(token).cbegin());
  }
  IteratorPtr generic_end(const Deviant& /*aDeviant*/) const override {
    Performance::COWDataAccessToken<Elements> token;
    return std::make_unique<Iterator>(mStorage.publicDataRef(token).cend());
  }

  /// Does not free the memory of the vector.
  void generic_clear(const Deviant& /*aDeviant*/) override { mStorage.detachedData().clear(); }
  int generic_size(const Deviant& /*aDeviant*/) const override { return static_cast<int>(mStorage.size()); }
  bool generic_empty(const Deviant& /*aDeviant*/) const override { return elements().empty(); }

  void generic_insert(const Deviant& /*aDeviant*/, int index, Generic::Ref ref) override {
    SequenceChecks::requirePlace({kSite, 200}, index, mStorage.size());
    const T value = valueOf<T>(ref);
    Elements& own = mStorage.detachedData();
    own.insert(own.cbegin() + index, value);
  }
  IteratorPtr generic_insert(const Deviant& /*aDeviant*/, const Generic::IteratorIntf* iterator,
                             Generic::Ref ref) override {
    const T value = valueOf<T>(ref);
    return Iterator::changeAt(iterator,
                              [&](const auto& position) { return mStorage.insert(position, value); });
  }
  IteratorPtr generic_erase(const Deviant& /*aDeviant*/, const Generic::IteratorIntf* iterator) override {
    return Iterator::changeAt(iterator, [&](const auto& position) { return mStorage.erase(position); });
  }
  IteratorPtr generic_erase(const Deviant& /*aDeviant*/, const Generic::IteratorIntf* first,
                            const Generic::IteratorIntf* last) override {
    return Iterator::changeAt(first, [&](const auto& position) {
      const auto start = elements().cbegin();
      const auto begin = position - start;
      const auto end = Iterator::positionOf(last) - start;
      Elements& own = mStorage.detachedData();
      return own.erase(own.cbegin() + begin, own.cbegin() + end);
    });
  }
  void generic_erase(const Deviant& /*aDeviant*/, int index) override {
    SequenceChecks::requireElement({kSite, 243}, index, mStorage.size());
    Elements& own = mStorage.detachedData();
    own.erase(own.cbegin() + index);
  }
  void generic_pop_back(const Deviant& /*aDeviant*/) override {
    SequenceChecks::requireNotEmpty({kSite, 254}, elements().empty());
    mStorage.detachedData().pop_back();
  }
  void generic_pop_front(const Deviant& /*aDeviant*/) override {
    SequenceChecks::requireNotEmpty({kSite, 262}, elements().empty());
    mStorage.erase(elements().cbegin());
  }
  void generic_push_back(const Deviant& /*aDeviant*/, Generic::Ref ref) override {
    const T value = valueOf<T>(ref);
    mStorage.detachedData().push_back(value);
  }
  void generic_push_front(const Deviant& /*aDeviant*/, Generic::Ref ref) override {
    mStorage.insert(elements().cbegin(), valueOf<T>(ref));
  }
  void generic_replace(const Deviant& /*aDeviant*/, int index, Generic::Ref ref) override {
    SequenceChecks::requireElement({kSite, 309}, index, mStorage.size());
    const T value = valueOf<T>(ref);
    mStorage.detachedData()[static_cast<std::size_t>(index)] = value;
  }
  bool generic_contains(const Deviant& /*aDeviant*/, Generic::Ref ref) const override {
    return std::find(elements().cbegin(), elements().cend(), valueOf<T>(ref)) != elements().cend();
  }
  const char* generic_getRuvoName(bool /*isSequenceImmutable*/, bool /*isElementImmutable*/,
                                  const char* name) const override {
    return name;
  }
  int generic_removeAll(const Deviant& aDeviant, Generic::Ref ref) override {
    const T value = valueOf<T>(ref);
    int count = 0;
    auto scan = elements().cbegin();
    auto limit = elements().cend();
    while (scan != limit) {
      if (*scan != value) {
        ++scan;
        continue;
      }
      const Iterator match(scan);
      const IteratorPtr behind = this->generic_erase(aDeviant, &match);
      scan = Iterator::positionOf(behind.get());
      ++count;
      // Erasing has shortened the vector, and may have replaced a shared vector by a private copy.
      limit = elements().cend();
    }
    return count;
  }

 private:
  static constexpr const char* kSite = "kernel/containers/sequence/list/ListQImplForPrimitives";

  const Elements& elements() const noexcept { return mStorage.data(); }

  mutable Performance::COWWrapperContainerSequential<Elements> mStorage;
};

}  // namespace ListQImplInternal

template <class T, class IsPrimitive>
class ListQImplBase;

template <class T>
class ListQImplBase<T, TRUE_TYPE> : public ListQImplInternal::ListQImplForPrimitives<T> {};

/// The list that makeSequence() creates for STD_VECTOR.
template <class T>
class ListQImpl : public ListQImplBase<T, TRUE_TYPE> {};

}  // namespace K7Q
