#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

/// What is wrong with a model, as far as the metamodel and AUTOSAR say.
///
/// Nothing is refused while a model is edited that only becomes right with a later step: a port without an
/// interface, two runnables of one name. Validation finds what is left of that, all in one pass.
/// Threads: one at a time for each model.
namespace K7Q {

/// An error makes the model wrong: what reads it cannot know what was meant. A warning is what AUTOSAR
/// allows and hardly anybody wants.
enum class Severity : std::uint8_t { Error, Warning };

struct Problem {
  /// What it is about, seen as the model or object was that validate() was given; holds the model.
  ClassObject object;
  /// Where the object stands: "/Brakes/PedalSensor/Pedal.info[0].comSpec". The names of the object and of
  /// those that hold it, from the root; behind the last named one, the properties that lead to the object,
  /// with the index from 0 in one of many values. An object that has no name, and none above it, is
  /// "(class)". Of more than 1000 levels or 4096 bytes there is the end alone, behind "...".
  std::string path;
  /// The host's name of the property, empty for the object as a whole.
  std::string property;
  /// Which rule: "required-reference". Never changes once it was published.
  std::string rule;
  Severity severity = Severity::Error;
  /// What was expected, what there is, and the cure. UTF-8.
  std::string message;
};

/// A rule of the library.
struct RuleDescription {
  const char* id;
  Severity severity;
  /// What must hold, as a sentence's end: "a required reference is set".
  const char* title;
};

/// All problems of a model: objects in order of ownership from each root on, roots in order of creation; of
/// one object in the order of validationRules(). The same model gives the same problems.
/// Raises kNullReference for a closed model. Cost: a few hundred nanoseconds an object.
TARVELON_API std::vector<Problem> validate(const Model& model);
/// Those of an object and of all that it holds. Raises kNullReference for an object that is not valid.
TARVELON_API std::vector<Problem> validate(const ClassObject& object);

/// What validate() looks at, in its order: objects of that class and below. For rules of one's own.
/// Raises K7Q::UnknownName for a name that no class has ("Tarvelon.metamodel.arplatform.behavior.Runnable").
TARVELON_API std::vector<ClassObject> validatedObjects(const Model& model, std::string_view className);
TARVELON_API std::vector<ClassObject> validatedObjects(const ClassObject& object, std::string_view className);

/// The rules, in their order.
TARVELON_API std::span<const RuleDescription> validationRules();

/// Where an object stands, as Problem::path says it. Raises kNullReference for an object that is not valid.
TARVELON_API std::string pathOf(const ObjectHandle& object);

}  // namespace K7Q
