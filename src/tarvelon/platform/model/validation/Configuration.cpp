// Rules for configured values and their definitions.

#include <bit>
#include <cmath>

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/validation/Rules.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

using namespace arplatform;  // NOLINT(google-build-using-namespace): the rules name the packages below it
using namespace ecuc;        // NOLINT(google-build-using-namespace)

/// Reports a value whose definition is not contained in the definition of the value's container.
template <class X>
void requireDefinedIn(const Instance& value, const Instance* holder, Findings& findings) {
  const Instance* definition = get<X, "Definition">(value);
  const Instance* container = getOf<EcucContainerValue, "Definition">(holder);
  if (isA<EcucModuleConfigurationValues>(holder))
    container = get<EcucModuleConfigurationValues, "Definition">(*holder);
  if (!definition || !container || definition->owner() == container) return;
  findings.add<X, "Definition">(value, shownPath(*definition) + " is not defined in " + shown(*container) +
                                           ", the definition of " + shown(*holder) +
                                           "; refer to a definition from there, or move the value");
}

void requireNumber(const Instance& object, const Instance& definition, Findings& findings) {
  const Word* word = wordOf<EcucNumericalParamValue, "Value">(object);
  const double value = word ? std::bit_cast<double>(word->bits) : 0;
  const char* expected = nullptr;
  if (isA<EcucBooleanParamDef>(definition) && value != 0 && value != 1) expected = "0 or 1";
  if (isA<EcucIntegerParamDef>(definition) && (!std::isfinite(value) || value != std::trunc(value)))
    expected = "a whole number";
  if (isA<EcucEnumerationParamDef>(definition)) expected = "the text of a literal";
  if (!expected) return;
  std::string text = std::to_string(value);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  findings.add<EcucNumericalParamValue, "Value">(
      object, std::string("expected ") + expected + " for the " + classText(definition) + " " +
                  shown(definition) + ", found the number " + text +
                  "; set a value of that kind, or another definition");
}

}  // namespace

void checkParameterValue(const Instance& object, Findings& findings) {
  requireDefinedIn<EcucParameterValue>(object, object.owner(), findings);
  const Instance* definition = get<EcucParameterValue, "Definition">(object);
  if (!definition) return;
  if (isA<EcucNumericalParamValue>(object)) {
    requireNumber(object, *definition, findings);
  } else if (isA<EcucBooleanParamDef>(*definition) || isA<EcucIntegerParamDef>(*definition) ||
             isA<EcucFloatParamDef>(*definition)) {
    findings.add(object,
                 "expected a number for the " + classText(*definition) + " " + shown(*definition) +
                     ", found a text; create an EcucNumericalParamValue, or refer to another definition");
  }
}

void checkReferenceValue(const Instance& object, Findings& findings) {
  requireDefinedIn<EcucAbstractReferenceValue>(object, object.owner(), findings);
  const Instance* definition = get<EcucAbstractReferenceValue, "Definition">(object);
  const Instance* value = getOf<EcucReferenceValue, "Value">(&object);
  if (!definition || !value || !isA<EcucReferenceDef>(*definition) || isA<EcucContainerValue>(*value)) return;
  findings.add<EcucReferenceValue, "Value">(
      object, "expected an EcucContainerValue for the EcucReferenceDef " + shown(*definition) +
                  ", found the " + classText(*value) + " " + shown(*value) +
                  "; refer to an EcucContainerValue, or define it as an EcucForeignReferenceDef");
}

void checkContainerValue(const Instance& object, Findings& findings) {
  requireDefinedIn<EcucContainerValue>(object, object.owner(), findings);
}

}  // namespace Tarvelon::metamodel::native::validation
