// The conversions of enumeration values that the boundary declares.
#include <algorithm>
#include <string_view>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"
#include "tarvelon/platform/model/values/Refusal.h"

namespace Tarvelon::metamodel::native {

K7Q::String enumerationToString(const EnumerationName& enumeration, std::int32_t value) {
  return K7Q::String::fromUtf8(EnumerationType::of(enumeration).text(value));
}

std::int32_t enumerationFromString(const EnumerationName& enumeration, std::string_view literal) {
  const EnumerationType& type = EnumerationType::of(enumeration);
  const auto literals = type.literals();
  const auto found = std::ranges::find(literals, literal);
  if (found == literals.end()) refuseLiteral(type, literal);
  return static_cast<std::int32_t>(found - literals.begin());
}

K7Q::ImmutableDataType enumerationDataType(const EnumerationName& enumeration) {
  return {&EnumerationType::of(enumeration), {}};
}

K7Q::Object enumerationToObject(const EnumerationName& enumeration, std::int32_t value) {
  return EnumerationType::of(enumeration).box(value);
}

std::int32_t enumerationFromObject(const K7Q::Object& object) {
  if (object.isNull()) return 0;
  const EnumerationCell* cell = asCell(object.getInterface());
  if (!cell) refuseAsEnumeration(object);
  return cell->value();
}

}  // namespace Tarvelon::metamodel::native
