#include "platform/k7q/Texts.h"

#include "boundary/k7q/ClassMetaData.h"
#include "boundary/k7q/Primitives.h"
#include "platform/ruvo/ObjectSystem.h"

namespace K7Q::text {

std::string mismatch(std::string_view where, std::string_view expected, std::string_view given) {
  return std::string(where) + ": expected " + std::string(expected) + ", got " + std::string(given);
}

std::string shown(const hx::hxArray* given) {
  using ruvo::HostValue;
  const std::size_t count = hx::hxGetNumberOfElements(given);
  if (count == 0) return "an empty value";
  const auto classId = hx::hxGetClassId(given);
  if (classId == hx::hxChar) return ruvo::describeValue(HostValue::ofText(hx::hxGetText(given)));
  if (classId == hx::hxObject) {
    auto* object = static_cast<ruvo::RVOInterface*>(hx::hxGetElement(given, 0));
    return ruvo::describeValue(HostValue::ofObject(object));
  }
  if (count > 1) return "an array of " + std::to_string(count) + " elements";
  const double number = hx::hxGetNumber(given, 0);
  switch (classId) {
    case hx::hxLogical:
      return ruvo::describeValue(HostValue::ofLogical(number != 0));
    case hx::hxInt32:
      return ruvo::describeValue(HostValue::ofInteger(static_cast<std::int32_t>(number)));
    default:
      return ruvo::describeValue(HostValue::ofDouble(number));
  }
}

std::string shown(const NSInterface::ObjectIntf& object) {
  return "an object of class " + std::string(object.getRuvoName(false).view());
}

std::string_view shortName(const ruvo::InternedName& dotted) {
  return dotted.view().substr(dotted.view().rfind('.') + 1);
}

std::string uriTaken(std::u16string_view uri) {
  const std::string name = String::to_string(uri);
  return "the URI \"" + name + "\" is taken by another open model; getNextAvailableModelUri(\"" + name +
         "\") gives a free one";
}

}  // namespace K7Q::text

const char* k7q::getTooManyElementsMessage() { return K7Q::text::kTooManyElements; }

const char* k7q_getTooManyElementsMessage() { return K7Q::text::kTooManyElements; }
