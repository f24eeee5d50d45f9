#pragma once

#include <memory>

#include "tarvelon/platform/k7q/properties/Records.h"

namespace K7Q::mi {

/// An enumeration property.
class DataTypeProperty final : public Record {
 public:
  DataTypeProperty(const ruvo::InternedName& ownerName, const char* name, const IntrospectiveMethods* methods,
                   unsigned id, const ruvo::InternedName& typeName, std::unique_ptr<PropHelperBase> helper,
                   Multiplicity multiplicity, Mutability mutability,
                   ruvo::factory::PropertyAttributes attributes);
  ruvo::RVOValue getValue(ruvo::RVOInterface* object) override { return read(readable(object)); }
  ruvo::RVOValue getSingleValuedValue(ClassObject& object) override { return read(targetOf(object)); }
  void setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) override;
  const char* kind() const override { return "DataType"; }

 private:
  ruvo::RVOValue read(const Target& target) const;
  std::unique_ptr<PropHelperBase> mHelper;
};

/// A text property. Its declared type is "char"; it accepts a "char vector".
class StringProperty final : public Record {
 public:
  using Record::Record;
  ruvo::RVOValue getValue(ruvo::RVOInterface* object) override { return read(readable(object)); }
  ruvo::RVOValue getSingleValuedValue(ClassObject& object) override { return read(targetOf(object)); }
  void setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) override;
  const char* kind() const override { return "String"; }

 private:
  ruvo::RVOValue read(const Target& target) const;
};

}  // namespace K7Q::mi
