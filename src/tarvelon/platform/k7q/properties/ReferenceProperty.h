#pragma once

#include "tarvelon/platform/k7q/properties/Records.h"

namespace K7Q::mi {

/// A reference property with one value or many.
class ReferenceProperty final : public Record {
 public:
  ReferenceProperty(const ruvo::InternedName& ownerName, const char* name,
                    const IntrospectiveMethods* methods, unsigned id, const ruvo::InternedName& typeName,
                    Multiplicity multiplicity, Mutability mutability,
                    ruvo::factory::PropertyAttributes attributes);
  ruvo::RVOValue getValue(ruvo::RVOInterface* object) override;
  ruvo::RVOValue getSingleValuedValue(ClassObject& object) override;
  void setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) override;
  const char* kind() const override { return "ClassObject"; }

 private:
  ruvo::RVOValue read(const Target& target, bool isImmutable) const;
  /// The class of the empty array for an unset reference, when read through a mutable object.
  ruvo::InternedName mMutableType;
};

/// A property with many texts or many enumeration values.
class PrimitiveSequenceProperty final : public Record {
 public:
  using Record::Record;
  ruvo::RVOValue getSingleValuedValue(ClassObject& object) override;
  void setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) override;
  const char* kind() const override { return "PrimitiveSequence"; }
};

}  // namespace K7Q::mi
