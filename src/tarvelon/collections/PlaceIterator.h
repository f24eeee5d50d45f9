#pragma once

#include <memory>
#include <typeinfo>

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/boundary/tarvelon/PrimitiveCell.h"

namespace K7Q {

/// The iterator of a sequence that stores its values in a standard container or in a similar one: a position
/// in that container.
///
/// Equality: equal to an iterator of the same type at the same position.
/// Lifetime: becomes invalid like the container's own iterators. The functions do not test the position.
template <class Container>
class PlaceIterator final : public IteratorProxy {
 public:
  using Position = typename Container::const_iterator;
  using IteratorPtr = std::unique_ptr<Generic::IteratorIntf>;

  explicit PlaceIterator(Position position) : mPosition(position) {}
  Generic::Ref current(const Deviant& /*aDeviant*/) const override { return makeRef(*mPosition); }
  void next(const Deviant& /*aDeviant*/) override { ++mPosition; }
  void previous(const Deviant& /*aDeviant*/) override { --mPosition; }
  IteratorPtr clone() const override { return std::make_unique<PlaceIterator>(mPosition); }
  bool equal(const Generic::IteratorIntf* other) const override {
    return other && typeid(*this) == typeid(*other) && mPosition == positionOf(other);
  }

  /// REQUIRES: an iterator of this class.
  static Position positionOf(const Generic::IteratorIntf* iterator) {
    return static_cast<const PlaceIterator*>(iterator)->mPosition;
  }

  /// Calls change(position) with the position of the iterator, and returns a new iterator at the position
  /// that `change` returns. Allocates the new iterator first, so that nothing has changed if memory is
  /// exhausted.
  template <class Change>
  static IteratorPtr changeAt(const Generic::IteratorIntf* iterator, Change change) {
    auto result = std::make_unique<PlaceIterator>(positionOf(iterator));
    result->mPosition = change(result->mPosition);
    return result;
  }

 private:
  Position mPosition;
};

}  // namespace K7Q
