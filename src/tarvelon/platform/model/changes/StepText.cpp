#include "tarvelon/platform/model/changes/StepText.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/changes/Steps.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/values/Refusal.h"
#include "tarvelon/platform/model/values/Values.h"

namespace Tarvelon::metamodel::native {

namespace {

/// A stored value, or an element of a list.
std::string shownWord(const Instance& object, unsigned slot, bool isThere, Word word) {
  if (!isThere) return "nothing";
  const auto& properties = object.cls().slotProperties;
  if (slot >= properties.size()) return std::to_string(word.bits);
  const Property& property = *properties[slot];
  switch (property.storage()) {
    case Storage::Reference:
    case Storage::References:
      return shownObject(word.object);
    case Storage::Texts:
      return describe(K7Q::Object(word.text, K7Q::Deviant{}));
    case Storage::Enumerations:
      return property.enumeration()->text(integerOf(word));
    default:
      return describe(toObject(property, &word, K7Q::Deviant{}));
  }
}

std::string_view variable() noexcept {
  const char* given = std::getenv("TARVELON_LOG");
  return given ? given : "";
}

}  // namespace

const bool kLogsSteps = variable() == "steps";

std::string shownObject(const Instance* object) {
  if (!object) return "nothing";
  const std::string text = describe(*object) + " (number " + std::to_string(object->number()) + ")";
  return object->isAlive() ? text : "the destroyed " + text;
}

std::string shownSlot(const Instance& object, unsigned slot) {
  const auto& properties = object.cls().slotProperties;
  return slot < properties.size() ? std::string(properties[slot]->metaName())
                                  : "slot " + std::to_string(slot);
}

std::string shownStep(const Step& step) {
  const std::string object = shownObject(step.object);
  if (step.kind == Step::Kind::Life) {
    const char* word = step.hasBefore ? "destroy " : step.object->isDeleted() ? "restore " : "create ";
    return word + object;
  }
  std::string text = object + "." + shownSlot(*step.object, step.slot);
  if (step.kind == Step::Kind::Move || step.kind == Step::Kind::Exchange) {
    return text + (step.kind == Step::Kind::Move ? ": move [" : ": exchange [") +
           std::to_string(step.before.bits) + (step.kind == Step::Kind::Move ? "] to [" : "] and [") +
           std::to_string(step.after.bits) + "]";
  }
  if (step.kind == Step::Kind::Element) text += "[" + std::to_string(step.index) + "]";
  return text + ": " + shownWord(*step.object, step.slot, step.hasBefore, step.before) + " -> " +
         shownWord(*step.object, step.slot, step.hasAfter, step.after);
}

void logStep(const Step& step) noexcept {
  try {
    std::fprintf(stderr, "step: %s\n", shownStep(step).c_str());
  } catch (const std::exception&) {
    std::fputs("step: no memory for its text\n", stderr);
  }
}

}  // namespace Tarvelon::metamodel::native
