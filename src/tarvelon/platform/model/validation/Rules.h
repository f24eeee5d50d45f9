#pragma once

#include <span>

#include "tarvelon/platform/model/validation/Findings.h"

/// The check functions of all rules, by source file. Rules.cpp says which rule and which class each belongs
/// to.
namespace Tarvelon::metamodel::native::validation {

/// All rules, in the order in which the problems of one object are listed.
std::span<const Rule> rules();

/// The rules before this one find broken objects. If one of them reports an object, no other rule checks this
/// object.
const Rule* firstRuleNeedingSoundness() noexcept;
const Rule& ruleOf(std::string_view id);

using Check = void(const Instance&, Findings&);

// Structure.cpp: rules for objects of every class.
Check checkDangling, checkForeign, checkTypes, checkHeld, checkRepeated, checkRequiredReferences,
    checkRequiredTexts, checkIncomplete, checkLiterals, checkHolder;
/// Whether an object has no owner although some property could contain it and it is not a package.
bool hasNoOwner(const Instance& object, Findings& findings);

// Names.cpp
Check checkShortName, checkDuplicateNames, checkNamesByCase;
/// Checks the names of the root packages, which share one namespace.
void checkRootNames(std::span<const Instance* const> roots, Findings& findings);

// Instances.cpp: instance references and references within a behavior.
Check checkDataThroughPort, checkOperationThroughPort, checkModeThroughPort, checkTriggerThroughPort,
    checkDataOfComponent, checkBehaviorElement, checkPrototypePort, checkEventThroughPrototypes, checkOwnPort,
    checkOptionPort, checkOwnBehavior;

// Wiring.cpp: ports, port infos and connectors.
Check checkPortInfo, checkAccessDirection, checkConnectorEnds, checkConnectorDirection,
    checkConnectorInterfaces;

// Order.cpp: cycles.
Check checkExecutionOrder, checkSuccessors, checkCompositionCircle, checkVariantCircle, checkGroupCircle;

// Values.cpp: ranges and combinations of values.
Check checkRanges, checkDataFilter, checkModes, checkModeCount, checkSizes;

// Types.cpp: the values of data and their types.
Check checkArrayLengths, checkConstraints, checkTableTexts;

// Configuration.cpp: configured values and their definitions.
Check checkParameterValue, checkReferenceValue, checkContainerValue;

// Deployment.cpp: services, machines and ECUs.
Check checkEventDeployment, checkEventQuality, checkServicePort, checkMappedComponent, checkOrderedRunnable;

}  // namespace Tarvelon::metamodel::native::validation
