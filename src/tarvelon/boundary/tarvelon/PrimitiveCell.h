#pragma once

#include <cstdint>

#include "tarvelon/boundary/k7q/ElementCarrier.h"
#include "tarvelon/boundary/tarvelon/Names.h"

/// The road of a primitive value through the generic interface: a cell on the heap behind a Generic::Ref.
namespace K7Q {

/// Marks the implementations whose elements are stored by value and compared as plain values.
struct TRUE_TYPE {};

/// What the first word of a primitive's Ref points to. The count is a plain integer: a Ref belongs to one
/// thread at a time.
struct PrimitiveCell {
  std::int32_t value;
  std::int32_t count;

  /// The manager of a primitive's Ref: the last reference frees the cell. A null cell is let pass.
  static void manage(void* value, bool take) {
    auto* cell = static_cast<PrimitiveCell*>(value);
    if (!cell) return;
    if (take) {
      ++cell->count;
    } else if (cell->count == 1) {
      delete cell;
    } else {
      --cell->count;
    }
  }
  static bool equal(const void* left, const void* right) {
    return static_cast<const PrimitiveCell*>(left)->value == static_cast<const PrimitiveCell*>(right)->value;
  }
};

/// A Ref around a new cell with a number. Cost: one allocation.
inline Generic::Ref makeNumberRef(std::int32_t value) {
  return {new PrimitiveCell{value, 0}, 0, &PrimitiveCell::manage, &PrimitiveCell::equal};
}

/// A Ref around a new cell with a copy of the value. Cost: one allocation.
template <Tarvelon::metamodel::IsEnumeration T>
Generic::Ref makeRef(T value) {
  static_assert(sizeof(T) == sizeof(std::int32_t), "a Ref's first word can be read as a pointer to T");
  return makeNumberRef(value.value());
}

/// The value that a Ref carries. REQUIRES: a Ref of a primitive with a cell.
template <Tarvelon::metamodel::IsEnumeration T>
T valueOf(const Generic::Ref& ref) noexcept {
  return T(static_cast<int>(*static_cast<const std::int32_t*>(ref.value())));
}

/// A value of an enumeration travels in a cell of its own.
template <Tarvelon::metamodel::IsEnumeration E>
struct ElementCarrier<E> {
  static Generic::Ref toRef(E element) { return makeRef(element); }
  static E fromRef(const Generic::Ref& ref) { return valueOf<E>(ref); }
};

}  // namespace K7Q
