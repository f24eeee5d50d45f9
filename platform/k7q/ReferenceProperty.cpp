#include "platform/k7q/ReferenceProperty.h"

#include "binding/Conversion.h"
#include "platform/k7q/SequenceNames.h"
#include "platform/k7q/Texts.h"

namespace K7Q::mi {

ReferenceProperty::ReferenceProperty(const ruvo::InternedName& ownerName, const char* name,
                                     const IntrospectiveMethods* methods, unsigned id,
                                     const ruvo::InternedName& typeName, Multiplicity multiplicity,
                                     Mutability mutability, ruvo::factory::PropertyAttributes attributes)
    : Record(ownerName, name, methods, id, typeName, multiplicity, mutability, attributes),
      mMutableType(multiplicity == Multiplicity::Many ? ruvo::InternedName() : mutableName(typeName)) {}

ruvo::RVOValue ReferenceProperty::getValue(ruvo::RVOInterface* object) {
  ClassObject handle = classObject(object);
  return isMany() ? getMultiValuedValue(handle, object) : read(handle, isSeenImmutable(object));
}

ruvo::RVOValue ReferenceProperty::getSingleValuedValue(ClassObject& object) { return read(object, false); }

ruvo::RVOValue ReferenceProperty::read(const ClassObject& object, bool isImmutable) const {
  Object value;
  mMethods->get(value, object.getClassObject(), object.getDeviant(), mId);
  return ruvo::RVOValue(binding::boxObject(value, isImmutable, isImmutable ? mTypeName : mMutableType));
}

void ReferenceProperty::setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) {
  const ClassObject handle = writableObject(object);
  const auto* given = value.array();
  if (hx::hxGetNumberOfElements(given) == 0) {
    if (!isOptional()) throwEmptyValue(*this, object);
    return mMethods->unset(handle.getClassObject(), handle.getDeviant(), mId);
  }
  if (hx::hxGetClassId(given) != hx::hxObject) throwWrongValue(object, given);
  const auto unboxed = binding::unboxAs(given, tagsOf<NSInterface::ObjectIntf>());
  const Object target(static_cast<NSInterface::ObjectIntf*>(unboxed.interface), unboxed.deviant);
  target.requireValid(__FILE__, __LINE__);
  mMethods->set(handle.getClassObject(), handle.getDeviant(), mId, target);
}

ruvo::RVOValue PrimitiveSequenceProperty::getSingleValuedValue(ClassObject& object) {
  return getMultiValuedValue(object, nullptr);
}

void PrimitiveSequenceProperty::setValue(ruvo::RVOInterface* object, ruvo::RVOValue /*value*/) {
  requireSettable(object);
}

}  // namespace K7Q::mi
