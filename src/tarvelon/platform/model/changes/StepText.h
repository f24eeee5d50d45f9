#pragma once

#include <string>

/// Texts for steps, for people who look for a fault.
///
/// With `TARVELON_LOG=steps` in the environment the engine prints each step to standard error before it
/// applies it, with the steps of undo, redo and rolled back transactions. The variable is read once, when the
/// library is loaded.
namespace Tarvelon::metamodel::native {

class Instance;
struct Step;

/// An object in a message: "common.Package 'Brakes' (number 3)". Reads a damaged model, too.
std::string shownObject(const Instance* object);
/// The property of a slot: "Name". Slots without a property have a number: "slot 47".
std::string shownSlot(const Instance& object, unsigned slot);
/// A step in one line: "common.Package 'Brakes' (number 3).Name: char vector "Brakes" -> nothing".
/// REQUIRES: the values of the step exist; for the name of a list's element, the step has not been applied.
std::string shownStep(const Step& step);

/// Whether steps are printed.
extern const bool kLogsSteps;
/// Prints a step. Prints nothing if there is no memory for the text.
void logStep(const Step& step) noexcept;

}  // namespace Tarvelon::metamodel::native
