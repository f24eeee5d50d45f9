#pragma once

#include <span>

#include "tarvelon/platform/model/validation/Findings.h"

/// The checks, by what they look at. Each says in Rules.cpp what it stands for and which objects it sees.
namespace Tarvelon::metamodel::native::validation {

/// Every rule, in the order in which the problems of one object are listed.
std::span<const Rule> rules();

/// Rules before this one find what is broken. An object that one of them speaks of is seen by no other rule.
const Rule* firstThatRelies() noexcept;
const Rule& ruleOf(std::string_view id);

using Check = void(const Instance&, Findings&);

// Structure.cpp: what holds of every object, whatever its class.
Check checkDangling, checkForeign, checkTypes, checkHeld, checkRepeated, checkRequiredReferences,
    checkRequiredTexts, checkIncomplete, checkLiterals, checkHolder;
/// Whether nothing holds an object although some property could, and it is no package.
bool isStray(const Instance& object, Findings& findings);

// Names.cpp
Check checkShortName, checkDuplicateNames, checkNamesByCase;
/// The same for the names of objects that nothing holds: they share one namespace as well.
void checkRootNames(std::span<const Instance* const> roots, Findings& findings);

// Instances.cpp: instance references, and what may only be reached within one behavior.
Check checkDataThroughPort, checkOperationThroughPort, checkModeThroughPort, checkTriggerThroughPort,
    checkDataOfComponent, checkBehaviorElement, checkPrototypePort, checkEventThroughPrototypes, checkOwnPort,
    checkOptionPort, checkOwnBehavior;

// Wiring.cpp: ports, their infos and connectors.
Check checkPortInfo, checkAccessDirection, checkConnectorEnds, checkConnectorDirection,
    checkConnectorInterfaces;

// Order.cpp: what may not lead back to itself.
Check checkExecutionOrder, checkSuccessors, checkCompositionCircle, checkVariantCircle, checkGroupCircle;

// Values.cpp: what values may be.
Check checkRanges, checkDataFilter, checkModes, checkModeCount, checkSizes;

// Configuration.cpp: configured values and their definitions.
Check checkParameterValue, checkReferenceValue, checkContainerValue;

// Deployment.cpp: services, machines and ECUs.
Check checkEventDeployment, checkEventQuality, checkServicePort, checkMappedComponent, checkOrderedRunnable;

}  // namespace Tarvelon::metamodel::native::validation
