#pragma once

#include <cstdint>

#include "tarvelon/boundary/k7q/ElementCarrier.h"
#include "tarvelon/boundary/tarvelon/Names.h"

/// Passes an enumeration value through the type-erased interface of sequences: the value is in a cell on the
/// heap, to which a Generic::Ref points. Programs use NativeSequence instead, which converts the values.
///
/// Example:
///   sequence.generic_push_back(deviant, makeRef(VisibilityKind(VisibilityKind::Private)));
///   const auto kind = valueOf<VisibilityKind>(sequence.generic_at(deviant, 0));
namespace K7Q {

/// Selects the implementations of sequences that store their elements by value and compare them as plain
/// values.
struct TRUE_TYPE {};

/// The cell of an enumeration value. `count` is the number of Refs that share the cell. It is a plain
/// integer, because one thread at a time uses a Ref and its copies.
struct PrimitiveCell {
  std::int32_t value;
  std::int32_t count;

  /// The Generic::Ref::Manager of cells: the release of the last reference frees the cell. Null is allowed.
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
  /// The Generic::Ref::Equality of cells. REQUIRES: neither is null.
  static bool equal(const void* left, const void* right) {
    return static_cast<const PrimitiveCell*>(left)->value == static_cast<const PrimitiveCell*>(right)->value;
  }
};

/// Creates a Ref with a new cell for the number. Cost: one allocation.
inline Generic::Ref makeNumberRef(std::int32_t value) {
  return {new PrimitiveCell{value, 0}, 0, &PrimitiveCell::manage, &PrimitiveCell::equal};
}

/// Creates a Ref with a new cell for the enumeration value. Cost: one allocation.
template <Tarvelon::metamodel::IsEnumeration T>
Generic::Ref makeRef(T value) {
  static_assert(sizeof(T) == sizeof(std::int32_t), "a Ref's first word can be read as a pointer to T");
  return makeNumberRef(value.value());
}

/// The enumeration value of a Ref. REQUIRES: makeRef() or makeNumberRef() created the Ref.
template <Tarvelon::metamodel::IsEnumeration T>
T valueOf(const Generic::Ref& ref) noexcept {
  return T(static_cast<int>(*static_cast<const std::int32_t*>(ref.value())));
}

/// The ElementCarrier of enumeration values: each value gets a cell of its own.
template <Tarvelon::metamodel::IsEnumeration E>
struct ElementCarrier<E> {
  static Generic::Ref toRef(E element) { return makeRef(element); }
  static E fromRef(const Generic::Ref& ref) { return valueOf<E>(ref); }
};

}  // namespace K7Q
