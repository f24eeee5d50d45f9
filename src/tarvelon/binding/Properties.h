#pragma once

#include "tarvelon/binding/ClassBinding.h"
#include "tarvelon/boundary/k7q/PropertyRecords.h"

namespace binding {

/// Adds one property record for each exposed row to the immutable class that is being defined, in ascending
/// id.
void addProperties(ruvo::RVOClass& cls, const ClassBinding& binding);

/// The type name that the record of a reference, an enumeration or a many-valued property reports.
InternedName recordTypeName(const metamodel::PropertyRow& row);

/// Converts the values of one enumeration for its property records.
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
