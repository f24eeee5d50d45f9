#include <utility>

#include "tarvelon/boundary/k7q/PropertyRecords.h"
#include "tarvelon/platform/k7q/properties/PrimitiveProperties.h"
#include "tarvelon/platform/k7q/properties/ReferenceProperty.h"
#include "tarvelon/platform/k7q/properties/ValueProperties.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace K7Q::mi {

namespace {

using ruvo::InternedName;
using ruvo::factory::PropertyAttributes;

/// The type names are interned on first use, once for each T.
template <class T>
const InternedName& scalarType(bool isOptional) {
  static constinit ruvo::LiteralName plain(ScalarForm<T>::kType);
  static constinit ruvo::LiteralName optional(ScalarForm<T>::kOptionalType);
  return isOptional ? optional.get() : plain.get();
}

/// Adds the record to the class. The class takes ownership, even if adding fails.
void addTo(ruvo::RVOClass& cls, ruvo::RVOPropInfo* record) { cls.addProperty(record, record); }

}  // namespace

void K7qmiPropertyFactory::ClassObject(const char* name, unsigned id, const InternedName& type,
                                       Multiplicity multiplicity, Mutability mutability,
                                       PropertyAttributes attributes) {
  addTo(*mClass,
        new ReferenceProperty(mClassName, name, mMethods, id, type, multiplicity, mutability, attributes));
}

void K7qmiPropertyFactory::DataType(const char* name, unsigned id, const InternedName& type,
                                    PropHelperBase* helper, Multiplicity multiplicity, Mutability mutability,
                                    PropertyAttributes attributes) {
  std::unique_ptr<PropHelperBase> owned(helper);
  addTo(*mClass, new DataTypeProperty(mClassName, name, mMethods, id, type, std::move(owned), multiplicity,
                                      mutability, attributes));
}

void K7qmiPropertyFactory::addString(const char* name, unsigned id, Multiplicity multiplicity,
                                     Mutability mutability, PropertyAttributes attributes) {
  static constinit ruvo::LiteralName type("char");
  addTo(*mClass,
        new StringProperty(mClassName, name, mMethods, id, type.get(), multiplicity, mutability, attributes));
}

template <class T>
void K7qmiPropertyFactory::Primitive(const char* name, unsigned id, Multiplicity multiplicity,
                                     Mutability mutability, PropertyAttributes attributes) {
  const bool isOptional = multiplicity == Multiplicity::Optional;
  const InternedName& type = scalarType<T>(isOptional);
  if (isOptional) {
    addTo(*mClass, new OptionalPrimitiveProperty<T>(mClassName, name, mMethods, id, type, multiplicity,
                                                    mutability, attributes));
  } else {
    addTo(*mClass, new PrimitiveProperty<T>(mClassName, name, mMethods, id, type, multiplicity, mutability,
                                            attributes));
  }
}

template void K7qmiPropertyFactory::Primitive<K7Q::Boolean>(const char*, unsigned, Multiplicity, Mutability,
                                                            PropertyAttributes);
template void K7qmiPropertyFactory::Primitive<K7Q::Integer>(const char*, unsigned, Multiplicity, Mutability,
                                                            PropertyAttributes);
template void K7qmiPropertyFactory::Primitive<K7Q::Double>(const char*, unsigned, Multiplicity, Mutability,
                                                           PropertyAttributes);
template void K7qmiPropertyFactory::Primitive<K7Q::Real>(const char*, unsigned, Multiplicity, Mutability,
                                                         PropertyAttributes);

void K7qmiPropertyFactory::PrimitiveSequence(const char* name, unsigned id, const InternedName& type,
                                             Mutability mutability, PropertyAttributes attributes) {
  addTo(*mClass, new PrimitiveSequenceProperty(mClassName, name, mMethods, id, type, Multiplicity::Many,
                                               mutability, attributes));
}

void K7qmiPropertyFactory::addMetaProperty(const char* name, Lookup lookup, const IntrospectiveMethods& owner,
                                           unsigned id) {
  const InternedName interned(ruvo::internal::makeInterned(name));
  mClass->addMethod(new MetaPropertyEntry(interned, lookup, owner, id));
}

std::string expectedType(const K7qmiProperty& property) { return ruvo::expectedText(property.getDataType()); }

}  // namespace K7Q::mi
