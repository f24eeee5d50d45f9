#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

/// Finding what is wrong in a model, by the rules of the metamodel and of AUTOSAR.
///
/// While a model is edited, states that a later step makes right are allowed: a port without an interface,
/// two runnables with one name. Validation finds such states in a single pass over the model.
///
/// Example:
///   for (const Problem& each : validate(model)) std::puts((each.path + ": " + each.message).c_str());
///
/// Threads: One thread at a time for each model.
namespace K7Q {

/// Error: the model is wrong, since a program that reads it cannot know what was meant. Warning: AUTOSAR
/// allows this, but it is rarely intended.
enum class Severity : std::uint8_t { Error, Warning };

/// One problem that a rule has found.
struct Problem {
  /// The object that is wrong. The handle keeps the model alive. It is writable or read-only, like the handle
  /// that was given to validate().
  ClassObject object;
  /// Where the object is: "/Brakes/PedalSensor/Pedal.info[0].comSpec". The path consists of the names of the
  /// object and of its owners, from the root; below the last named owner follow the properties that lead to
  /// the object, with an index from 0 for many-valued ones. An object without a name and without a named
  /// owner is "(class)". A path of more than 1000 levels or 4096 bytes is shortened to its end, after "...".
  std::string path;
  /// The name under which the host shows the property. Empty if the problem is about the whole object.
  std::string property;
  /// The id of the rule: "required-reference". A published id never changes.
  std::string rule;
  Severity severity = Severity::Error;
  /// What was expected, what was found, and how to correct it. UTF-8.
  std::string message;
};

/// One of the rules that validate() checks.
struct RuleDescription {
  const char* id;
  Severity severity;
  /// What must hold, without a full stop: "a required reference is set".
  const char* title;
};

/// Returns all problems of a model. They are in the order of containment, beginning at each root; roots are
/// in the order of model::objects(). Problems of one object are in the order of validationRules(). The same
/// model always gives the same problems. Raises K7Q::Exception for a closed model.
/// Cost: A few hundred nanoseconds for each object.
TARVELON_API std::vector<Problem> validate(const Model& model);
/// Returns the problems of an object and of everything that it contains. Raises K7Q::Exception for an object
/// that is not valid.
TARVELON_API std::vector<Problem> validate(const ClassObject& object);

/// Returns the objects of that class and of its subclasses, in the order in which validate() visits them.
/// This is meant for rules that a program adds itself.
/// Raises K7Q::UnknownName for an unknown class. The name is the full one:
/// "Tarvelon.metamodel.arplatform.behavior.Runnable".
TARVELON_API std::vector<ClassObject> validatedObjects(const Model& model, std::string_view className);
TARVELON_API std::vector<ClassObject> validatedObjects(const ClassObject& object, std::string_view className);

/// Returns the descriptions of all rules, in their order.
TARVELON_API std::span<const RuleDescription> validationRules();

/// Returns the path of an object in the form of Problem::path. Raises K7Q::Exception for an object that is
/// not valid.
TARVELON_API std::string pathOf(const ObjectHandle& object);

}  // namespace K7Q
