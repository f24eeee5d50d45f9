#include "tarvelon/platform/model/validation/Rules.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "tarvelon/platform/model/api/Metamodel.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

using namespace arplatform;  // NOLINT(google-build-using-namespace): the rows name the packages below it

constexpr auto kError = K7Q::Severity::Error;
constexpr auto kWarning = K7Q::Severity::Warning;
constexpr const K7Q::IntrospectiveMethods& (*kEvery)() = nullptr;

template <class X>
const K7Q::IntrospectiveMethods& of() {
  return X::Interface::sIntrospectiveMethods;
}

// The rules that find broken models come first, since the others rely on a model that is not broken.
// clang-format off
constexpr Rule kRules[] = {
  {{"dangling-reference", kError, "the target of a reference exists, and a package contains it"},
   kEvery, checkDangling},
  {{"foreign-reference",  kError, "the target of a reference is in the same model"}, kEvery, checkForeign},
  {{"wrong-class",        kError, "an object in a property has the class that the property requires"},
   kEvery, checkTypes},
  {{"ownership",          kError, "a contained object has exactly one owner"},
   kEvery, checkHeld},
  {{"multiplicity",       kError, "a sequence has no empty and no duplicate entry"}, kEvery, checkRepeated},
  {{"unknown-literal",    kError, "the value of an enumeration is one of its literals"},
   kEvery, checkLiterals},

  {{"required-reference", kError,   "a required reference is set"}, kEvery, checkRequiredReferences},
  {{"required-text",      kWarning, "a required text is set"}, kEvery, checkRequiredTexts},
  {{"incomplete",         kWarning, "an object has the values it is meaningless without"},
   kEvery, checkIncomplete},
  {{"no-owner",           kWarning, "every object except a package has an owner"}, kEvery, checkHolder},
  {{"value-range",        kError,   "a number is within its limits"}, kEvery, checkRanges},

  {{"short-name",         kError,   "a short name is a letter, then letters, digits and underscores"},
   of<foundation::NamedElement>, checkShortName},
  {{"duplicate-name",     kError,   "names are unique within a namespace"},
   of<foundation::NamedElement>, checkDuplicateNames},
  {{"name-case",          kError,   "names in a namespace differ in more than case"},
   of<foundation::NamedElement>, checkNamesByCase},

  {{"instance-data",      kError, "an instance reference targets data of its port's interface"},
   of<instance::DataPortInstanceRef>, checkDataThroughPort},
  {{"instance-operation", kError, "an instance reference targets an operation of its port's interface"},
   of<instance::OperationPortInstanceRef>, checkOperationThroughPort},
  {{"instance-mode",      kError, "an instance reference targets a mode of its group and of its port"},
   of<instance::ModeDeclarationInstanceRef>, checkModeThroughPort},
  {{"instance-trigger",   kError, "an instance reference targets a trigger of its port's interface"},
   of<instance::TriggerInstanceRef>, checkTriggerThroughPort},
  {{"instance-component", kError, "data that is accessed without a port belongs to the same behavior"},
   of<instance::DataCompInstanceRef>, checkDataOfComponent},
  {{"instance-behavior",  kError, "a runnable or an event belongs to the component's behavior"},
   of<instance::InstanceRef>, checkBehaviorElement},
  {{"instance-port",      kError, "a port belongs to its prototype's type, the prototype to the composition"},
   of<instance::CompositionPortInstanceRef>, checkPrototypePort},
  {{"instance-event",     kError, "a path of prototypes leads to the event"},
   of<instance::InstanceEventInCompositionInstanceRef>, checkEventThroughPrototypes},
  {{"own-port",           kError, "a behavior uses only ports of its own component"},
   of<instance::InstanceRef>, checkOwnPort},
  {{"option-port",        kError, "an option applies to a port of its own component"},
   of<behavior::PortAPIOption>, checkOptionPort},
  {{"own-behavior",       kError, "elements of a behavior refer to elements of that behavior"},
   of<common::Identifiable>, checkOwnBehavior},

  {{"port-info",          kError, "a port info describes an element of the port's interface"},
   of<port::PortInfo>, checkPortInfo},
  {{"access-direction",   kError, "writing uses a provided port, reading and calling use a required port"},
       kEvery, checkAccessDirection},
  {{"connector-end",      kError, "the outer end of a connector is a port of its composition"},
   of<composition::Connector>, checkConnectorEnds},
  {{"connector-direction", kError, "a delegation connects ports of the same direction"},
   of<composition::DelegationConnector>, checkConnectorDirection},
  {{"connector-interface", kError, "connected ports have compatible interfaces"},
   of<composition::Connector>, checkConnectorInterfaces},

  {{"order-circle",       kError, "an execution order has no cycle"},
   of<timingExtension::EOCExecutableEntityRef>, checkExecutionOrder},
  {{"order-successor",    kError, "a successor of a step belongs to the same constraint"},
   of<timingExtension::EOCExecutableEntityRef>, checkSuccessors},
  {{"order-runnable",     kError, "a step's runnable belongs to its component in the base composition"},
   of<timingExtension::EOCExecutableEntityRef>, checkOrderedRunnable},
  {{"composition-circle", kError, "no composition contains itself"},
   of<composition::CompositionComponent>, checkCompositionCircle},
  {{"variant-circle",     kError, "no variant includes itself"},
   of<variant::PredefinedVariant>, checkVariantCircle},
  {{"group-circle",       kError, "no port group is its own inner group"},
   of<port::PortGroup>, checkGroupCircle},

  {{"data-filter",        kError, "a filter has the operands that its kind compares with"},
   of<port::DataFilter>, checkDataFilter},
  {{"mode-group",         kError, "modes have different numbers, and the initial mode is one of the group"},
   of<common::ModeDeclarationGroup>, checkModes},
  {{"mode-count",         kError, "a mode switch event refers to one mode, or to two for a transition"},
   of<behavior::ModeSwitchEvent>, checkModeCount},
  {{"storage-size",       kError, "the minimum size is not greater than the maximum size"},
   of<manifest::PersistencyKeyValueDatabase>, checkSizes},

  {{"array-length",       kError, "an array value has as many elements as its type"},
   of<common::Data>, checkArrayLengths},
  {{"data-constraint",    kError, "a number is within the limits of its type"},
   of<common::Data>, checkConstraints},
  {{"table-text",         kError, "a text is one of those in the text table of its type"},
   of<common::Data>, checkTableTexts},

  {{"parameter-value",    kError, "a parameter value fits its definition and is in the right container"},
   of<ecuc::EcucParameterValue>, checkParameterValue},
  {{"reference-value",    kError, "a reference value has the kind of target that its definition requires"},
   of<ecuc::EcucAbstractReferenceValue>, checkReferenceValue},
  {{"container-value",    kError, "a container value is in the container that its definition requires"},
   of<ecuc::EcucContainerValue>, checkContainerValue},

  {{"deployed-event",     kError, "a deployed event belongs to the deployed service interface"},
   of<manifest::DdsEventDeployment>, checkEventDeployment},
  {{"event-quality",      kError, "quality of service is given for an event of the same deployment"},
   of<manifest::DdsEventQosProps>, checkEventQuality},
  {{"service-port",       kError, "a service instance and its port have the same direction and interface"},
   of<manifest::ServiceInstanceToPortMapping>, checkServicePort},
  {{"mapped-component",   kError, "a component that is mapped to an ECU belongs to the root composition"},
   of<system::SwcToEcuMapping>, checkMappedComponent},
};
// clang-format on

}  // namespace

std::span<const Rule> rules() { return kRules; }

const Rule* firstRuleNeedingSoundness() noexcept {
  constexpr std::size_t kSoundness = 6;
  static_assert(std::string_view(kRules[kSoundness - 1].description.id) == "unknown-literal");
  return kRules + kSoundness;
}

const Rule& ruleOf(std::string_view id) {
  return *std::ranges::find(rules(), id,
                            [](const Rule& rule) { return std::string_view(rule.description.id); });
}

}  // namespace Tarvelon::metamodel::native::validation

namespace K7Q {

std::span<const RuleDescription> validationRules() {
  static const auto& kDescriptions = *[] {
    auto list = std::make_unique<std::vector<RuleDescription>>();
    for (const auto& rule : Tarvelon::metamodel::native::validation::rules())
      list->push_back(rule.description);
    return list.release();
  }();
  return kDescriptions;
}

}  // namespace K7Q
