#include "tarvelon/platform/k7q/properties/ValueProperties.h"

#include <utility>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/k7q/values/Characters.h"

namespace K7Q::mi {

DataTypeProperty::DataTypeProperty(const ruvo::InternedName& ownerName, const char* name,
                                   const IntrospectiveMethods* methods, unsigned id,
                                   const ruvo::InternedName& typeName, std::unique_ptr<PropHelperBase> helper,
                                   Multiplicity multiplicity, Mutability mutability,
                                   ruvo::factory::PropertyAttributes attributes)
    : Record(ownerName, name, methods, id, typeName, multiplicity, mutability, attributes),
      mHelper(std::move(helper)) {}

ruvo::RVOValue DataTypeProperty::read(const Target& target) const {
  Object value;
  mMethods->get(value, target.object, target.deviant, mId);
  if (value.isNull()) return ruvo::RVOValue(ruvo::boxInterface(nullptr, mTypeName));
  return mHelper->unboxAndReturn(std::move(value), mTypeName);
}

void DataTypeProperty::setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) {
  const Target target = writable(object);
  const auto* given = value.array();
  const bool isEmpty = hx::hxGetNumberOfElements(given) == 0;
  if (!isEmpty && hx::hxGetClassId(given) != hx::hxObject) throwWrongValue(object, given);
  ClassObject handle(target.object, target.deviant);
  if (!isEmpty && mHelper->boxAndSet(&handle, value, mMethods, mId)) return;
  if (!isOptional()) throwEmptyValue(*this, object);
  mMethods->unset(target.object, target.deviant, mId);
}

ruvo::RVOValue StringProperty::read(const Target& target) const {
  Object value;
  mMethods->get(value, target.object, target.deviant, mId);
  // An unset text reads as an empty text.
  return ruvo::RVOValue(hx::hxCreateString_UTF16(charactersOf(value)));
}

void StringProperty::setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) {
  const Target target = writable(object);
  const auto* given = value.array();
  const bool isText = given && hx::hxGetClassId(given) == hx::hxChar;
  if (!isText && (hx::hxGetNumberOfElements(given) > 0 || !isOptional())) throwWrongValue(object, given);
  const auto characters = hx::hxGetText(given);
  if (characters.empty() && isOptional()) {
    mMethods->unset(target.object, target.deviant, mId);
  } else {
    mMethods->set(target.object, target.deviant, mId, K7Q::String(characters));
  }
}

}  // namespace K7Q::mi
