#include "tarvelon/platform/k7q/values/Texts.h"

#include "tarvelon/boundary/k7q/ClassMetaData.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace K7Q::text {

std::string mismatch(std::string_view where, std::string_view expected, std::string_view given) {
  return std::string(where) + ": expected " + std::string(expected) + ", got " + std::string(given);
}

std::string shown(const hx::hxArray* given) {
  if (hx::hxGetNumberOfElements(given) == 0) return "an empty value";
  return ruvo::describeValue(ruvo::HostValue::ofArray(given));
}

std::string shown(double number) { return ruvo::describeValue(ruvo::HostValue::ofDouble(number)); }

std::string shown(const NSInterface::ObjectIntf& object) {
  return "an object of class " + std::string(object.getRuvoName(false).view());
}

std::string_view shortName(const ruvo::InternedName& dotted) {
  return dotted.view().substr(dotted.view().rfind('.') + 1);
}

std::string indexDetail(std::string_view sequence, std::int64_t index, std::size_t size) {
  return std::string(sequence) + " has " + std::to_string(size) + (size == 1 ? " element" : " elements") +
         "; the index was " + std::to_string(index) + " counted from 0, " + std::to_string(index + 1) +
         " counted from 1";
}

std::string uriTaken(std::u16string_view uri) {
  const std::string name = String::to_string(uri);
  return "the URI \"" + name + "\" is taken by another open model; getNextAvailableModelUri(\"" + name +
         "\") gives a free one";
}

}  // namespace K7Q::text

const char* k7q::getTooManyElementsMessage() { return K7Q::text::kTooManyElements; }

const char* k7q_getTooManyElementsMessage() { return K7Q::text::kTooManyElements; }
