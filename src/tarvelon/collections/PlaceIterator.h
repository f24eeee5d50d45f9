#pragma once

#include <memory>
#include <typeinfo>

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/boundary/tarvelon/PrimitiveCell.h"

namespace K7Q {

/// An iterator of a sequence that keeps its values in a container of the standard's shape: a place there.
///
/// Equal:    with an iterator at the same place of a container of the same type.
/// Lifetime: as the container's own iterators; nothing tests a place before it is read or moved.
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

  /// Changes a sequence at an iterator's place and gives an iterator at the place that comes of it. The
  /// result is made first: without memory for it nothing may have changed.
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
