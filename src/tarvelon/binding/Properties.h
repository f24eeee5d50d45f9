#pragma once

#include "tarvelon/binding/ClassBinding.h"
#include "tarvelon/boundary/k7q/PropertyRecords.h"

namespace binding {

/// Adds one property record per exposed row, in ascending id, to the immutable class under definition.
void addProperties(ruvo::RVOClass& cls, const ClassBinding& binding);

/// The type that a reference, enumeration or sequence record reports.
InternedName recordTypeName(const metamodel::PropertyRow& row);

/// The conversions of one enumeration's properties.
class PropHelper final : public K7Q::mi::PropHelperBase {
 public:
  explicit PropHelper(const metamodel::EnumerationName& enumeration) noexcept : mEnumeration(enumeration) {}
  RVOValue unboxAndReturn(K7Q::Object value, const InternedName& typeName) override;
  bool boxAndSet(K7Q::ClassObject* object, RVOValue& value, const K7Q::IntrospectiveMethods* methods,
                 unsigned id) override;

 private:
  const metamodel::EnumerationName& mEnumeration;
};

}  // namespace binding
