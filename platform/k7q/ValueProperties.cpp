#include "platform/k7q/ValueProperties.h"

#include <utility>

#include "boundary/k7q/Primitives.h"

namespace K7Q::mi {

DataTypeProperty::DataTypeProperty(const ruvo::InternedName& ownerName, const char* name,
                                   const IntrospectiveMethods* methods, unsigned id,
                                   const ruvo::InternedName& typeName, std::unique_ptr<PropHelperBase> helper,
                                   Multiplicity multiplicity, Mutability mutability,
                                   ruvo::factory::PropertyAttributes attributes)
    : Record(ownerName, name, methods, id, typeName, multiplicity, mutability, attributes),
      mHelper(std::move(helper)) {}

ruvo::RVOValue DataTypeProperty::getSingleValuedValue(ClassObject& object) {
  Object value;
  mMethods->get(value, object.getClassObject(), object.getDeviant(), mId);
  if (value.isNull()) return ruvo::RVOValue(ruvo::boxInterface(nullptr, mTypeName));
  return mHelper->unboxAndReturn(std::move(value), mTypeName);
}

void DataTypeProperty::setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) {
  ClassObject handle = writableObject(object);
  const auto* given = value.array();
  const bool isEmpty = hx::hxGetNumberOfElements(given) == 0;
  if (!isEmpty && hx::hxGetClassId(given) != hx::hxObject) throwWrongValue(object, given);
  if (!isEmpty && mHelper->boxAndSet(&handle, value, mMethods, mId)) return;
  if (!isOptional()) throwEmptyValue(*this, object);
  mMethods->unset(handle.getClassObject(), handle.getDeviant(), mId);
}

ruvo::RVOValue StringProperty::getSingleValuedValue(ClassObject& object) {
  auto* native = object.getClassObject();
  const Deviant deviant = object.getDeviant();
  if (!mMethods->has(native, deviant, mId))
    return ruvo::RVOValue(hx::hxCreateString_UTF16(std::u16string_view()));
  Object value;
  mMethods->get(value, native, deviant, mId);
  return ruvo::RVOValue(hx::hxCreateString_UTF16(K7Q::String(value).view()));
}

void StringProperty::setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) {
  const ClassObject handle = writableObject(object);
  const auto* given = value.array();
  const bool isText = given && hx::hxGetClassId(given) == hx::hxChar;
  if (!isText && (hx::hxGetNumberOfElements(given) > 0 || !isOptional())) throwWrongValue(object, given);
  const auto text = hx::hxGetText(given);
  if (text.empty() && isOptional()) {
    mMethods->unset(handle.getClassObject(), handle.getDeviant(), mId);
  } else {
    mMethods->set(handle.getClassObject(), handle.getDeviant(), mId, K7Q::String(text));
  }
}

}  // namespace K7Q::mi
