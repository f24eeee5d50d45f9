#include "tarvelon/platform/k7q/properties/PrimitiveProperties.h"

#include <cmath>
#include <limits>

#include "tarvelon/platform/k7q/values/Texts.h"

namespace K7Q::mi {

bool ScalarForm<Integer>::fits(double number) {
  // NaN compares false.
  return number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max() &&
         number == std::trunc(number);
}

template <class T>
ruvo::RVOValue PrimitiveProperty<T>::read(const Target& target) const {
  Object value;
  mMethods->get(value, target.object, target.deviant, mId);
  return ScalarForm<T>::toSlot(T(value));
}

template <class T>
void PrimitiveProperty<T>::setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) {
  const Target target = writable(object);
  mMethods->set(target.object, target.deviant, mId, ScalarForm<T>::fromSlot(value));
}

template <class T>
ruvo::RVOValue OptionalPrimitiveProperty<T>::read(const Target& target) const {
  Object value;
  mMethods->get(value, target.object, target.deviant, mId);
  // An unset property is read as an empty object array with the name of the scalar type as its class name.
  // No class has that name, so no object can be an element of the array.
  if (value.isNull()) return ruvo::RVOValue(ruvo::boxInterface(nullptr, mTypeName));
  return ruvo::RVOValue(ScalarForm<T>::toArray(T(value)));
}

template <class T>
void OptionalPrimitiveProperty<T>::setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) {
  const Target target = writable(object);
  const auto* given = value.array();
  const std::size_t count = hx::hxGetNumberOfElements(given);
  LocalAsserter(__FILE__, __LINE__) = Asserter(count <= 1).Make("%s", k7q_getTooManyElementsMessage());
  if (count == 0) return mMethods->unset(target.object, target.deviant, mId);
  const auto classId = hx::hxGetClassId(given);
  if (classId == hx::hxObject || classId == hx::hxChar) throwWrongValue(object, given);
  const double number = hx::hxGetNumber(given, 0);
  if (!ScalarForm<T>::fits(number)) throwOutOfRange(*this, object, given);
  mMethods->set(target.object, target.deviant, mId, ScalarForm<T>::ofNumber(number));
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
