#include "tarvelon/platform/k7q/properties/ReferenceProperty.h"

#include "tarvelon/binding/Conversion.h"
#include "tarvelon/platform/k7q/sequences/SequenceNames.h"
#include "tarvelon/platform/k7q/values/Texts.h"

namespace K7Q::mi {

ReferenceProperty::ReferenceProperty(const ruvo::InternedName& ownerName, const char* name,
                                     const IntrospectiveMethods* methods, unsigned id,
                                     const ruvo::InternedName& typeName, Multiplicity multiplicity,
                                     Mutability mutability, ruvo::factory::PropertyAttributes attributes)
    : Record(ownerName, name, methods, id, typeName, multiplicity, mutability, attributes),
      mMutableType(multiplicity == Multiplicity::Many ? ruvo::InternedName() : mutableName(typeName)) {}

ruvo::RVOValue ReferenceProperty::getValue(ruvo::RVOInterface* object) {
  return isMany() ? K7qmiProperty::getValue(object) : read(readable(object), isSeenImmutable(object));
}

ruvo::RVOValue ReferenceProperty::getSingleValuedValue(ClassObject& object) {
  return read(targetOf(object), false);
}

ruvo::RVOValue ReferenceProperty::read(const Target& target, bool isImmutable) const {
  Object value;
  mMethods->get(value, target.object, target.deviant, mId);
  return ruvo::RVOValue(binding::boxObject(value, isImmutable, isImmutable ? mTypeName : mMutableType));
}

void ReferenceProperty::setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) {
  const Target target = writable(object);
  const auto* given = value.array();
  if (hx::hxGetNumberOfElements(given) == 0) {
    if (!isOptional()) throwEmptyValue(*this, object);
    return mMethods->unset(target.object, target.deviant, mId);
  }
  if (hx::hxGetClassId(given) != hx::hxObject) throwWrongValue(object, given);
  const auto unboxed = binding::unboxAs(given, tagsOf<NSInterface::ObjectIntf>());
  const Object referred(static_cast<NSInterface::ObjectIntf*>(unboxed.interface), unboxed.deviant);
  mMethods->set(target.object, target.deviant, mId, referred);
}

ruvo::RVOValue PrimitiveSequenceProperty::getSingleValuedValue(ClassObject& object) {
  return getMultiValuedValue(object, nullptr);
}

void PrimitiveSequenceProperty::setValue(ruvo::RVOInterface* object, ruvo::RVOValue /*value*/) {
  requireSettable(object);
}

}  // namespace K7Q::mi
