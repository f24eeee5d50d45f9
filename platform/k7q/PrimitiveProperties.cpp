#include "platform/k7q/PrimitiveProperties.h"

#include <cmath>
#include <limits>

#include "platform/k7q/Texts.h"

namespace K7Q::mi {

bool ScalarForm<Integer>::fits(double number) {
  // NaN compares false.
  return number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max() &&
         number == std::trunc(number);
}

template <class T>
ruvo::RVOValue PrimitiveProperty<T>::getSingleValuedValue(ClassObject& object) {
  Object value;
  mMethods->get(value, object.getClassObject(), object.getDeviant(), mId);
  return ScalarForm<T>::toSlot(T(value));
}

template <class T>
void PrimitiveProperty<T>::setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) {
  const ClassObject handle = writableObject(object);
  mMethods->set(handle.getClassObject(), handle.getDeviant(), mId, ScalarForm<T>::fromSlot(value));
}

template <class T>
ruvo::RVOValue OptionalPrimitiveProperty<T>::getSingleValuedValue(ClassObject& object) {
  auto* native = object.getClassObject();
  const Deviant deviant = object.getDeviant();
  // The empty array of the type, which is no class: it holds no objects, and never will.
  if (!mMethods->has(native, deviant, mId)) return ruvo::RVOValue(ruvo::boxInterface(nullptr, mTypeName));
  Object value;
  mMethods->get(value, native, deviant, mId);
  return ruvo::RVOValue(ScalarForm<T>::toArray(T(value)));
}

template <class T>
void OptionalPrimitiveProperty<T>::setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) {
  const ClassObject handle = writableObject(object);
  const auto* given = value.array();
  const std::size_t count = hx::hxGetNumberOfElements(given);
  LocalAsserter(__FILE__, __LINE__) = Asserter(count <= 1).Make("%s", k7q_getTooManyElementsMessage());
  if (count == 0) return mMethods->unset(handle.getClassObject(), handle.getDeviant(), mId);
  const auto classId = hx::hxGetClassId(given);
  if (classId == hx::hxObject || classId == hx::hxChar) throwWrongValue(object, given);
  const double number = hx::hxGetNumber(given, 0);
  if (!ScalarForm<T>::fits(number)) throwOutOfRange(*this, object, given);
  mMethods->set(handle.getClassObject(), handle.getDeviant(), mId, ScalarForm<T>::ofNumber(number));
}

template class PrimitiveProperty<Boolean>;
template class PrimitiveProperty<Integer>;
template class PrimitiveProperty<Double>;
template class PrimitiveProperty<Real>;
template class OptionalPrimitiveProperty<Boolean>;
template class OptionalPrimitiveProperty<Integer>;
template class OptionalPrimitiveProperty<Double>;
template class OptionalPrimitiveProperty<Real>;

}  // namespace K7Q::mi
