#pragma once

#include "tarvelon/boundary/k7q/Introspection.h"

namespace Tarvelon::metamodel::native {

/// The types of what is no object of the metamodel: models and the descriptions themselves.
enum class Described : std::uint8_t { Model, Factory, Class, Property, DataType, Package, Type };

/// The host class of such a thing.
const ruvo::InternedName& ruvoNameOf(Described described, bool immutable);
K7Q::ImmutableType metaTypeOf(Described described, K7Q::Deviant deviant);

/// `self` as the interface of that tag, if it is one of those listed, else null.
template <class... Interfaces, class T>
void* castAmong(T* self, K7Q::CooperativeVisitor::TagPair tag) {
  void* result = nullptr;
  static_cast<void>(((K7Q::tagsOf<Interfaces>().interface == tag.interface &&
                      (result = static_cast<Interfaces*>(self), true)) ||
                     ...));
  return result;
}

}  // namespace Tarvelon::metamodel::native
