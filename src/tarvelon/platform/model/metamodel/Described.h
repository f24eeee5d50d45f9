#pragma once

#include "tarvelon/boundary/k7q/Introspection.h"

namespace Tarvelon::metamodel::native {

/// The kinds of objects that do not belong to a class of the metamodel: models, factories and the
/// descriptions of the metamodel.
enum class Described : std::uint8_t { Model, Factory, Class, Property, DataType, Package, Type };

/// The name of the host's class for objects of that kind.
const ruvo::InternedName& ruvoNameOf(Described described, bool immutable);
K7Q::ImmutableType metaTypeOf(Described described, K7Q::Deviant deviant);

/// Returns `self` as the interface with that tag, or null if the interface is not in the list.
template <class... Interfaces, class T>
void* castAmong(T* self, K7Q::CooperativeVisitor::TagPair tag) {
  void* result = nullptr;
  static_cast<void>(((K7Q::tagsOf<Interfaces>().interface == tag.interface &&
                      (result = static_cast<Interfaces*>(self), true)) ||
                     ...));
  return result;
}

}  // namespace Tarvelon::metamodel::native
