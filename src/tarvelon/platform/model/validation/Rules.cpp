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
  {{"dangling-reference", kError, "what is referred to is there, and stands in a package"},
   kEvery, checkDangling},
  {{"foreign-reference",  kError, "what is referred to stands in the same model"}, kEvery, checkForeign},
  {{"wrong-class",        kError, "a value is of the class that the property takes here"},
   kEvery, checkTypes},
  {{"ownership",          kError, "what an object holds has that object as its one owner"},
   kEvery, checkHeld},
  {{"multiplicity",       kError, "a sequence has no empty entry and none twice"}, kEvery, checkRepeated},
  {{"unknown-literal",    kError, "the value of an enumeration is one of its literals"},
   kEvery, checkLiterals},

  {{"required-reference", kError,   "a required reference is set"}, kEvery, checkRequiredReferences},
  {{"required-text",      kWarning, "a required text was set"}, kEvery, checkRequiredTexts},
  {{"incomplete",         kWarning, "an object has what it says nothing without"}, kEvery, checkIncomplete},
  {{"no-owner",           kWarning, "everything but a package stands in something"}, kEvery, checkHolder},
  {{"value-range",        kError,   "a number lies within its limits"}, kEvery, checkRanges},

  {{"short-name",         kError,   "a short name is a letter, then letters, digits, underscores"},
   of<foundation::NamedElement>, checkShortName},
  {{"duplicate-name",     kError,   "names are unique within a namespace"},
   of<foundation::NamedElement>, checkDuplicateNames},
  {{"name-case",          kError,   "names of a namespace differ in more than case"},
   of<foundation::NamedElement>, checkNamesByCase},

  {{"instance-data",      kError, "an instance reference names data of its port's interface"},
   of<instance::DataPortInstanceRef>, checkDataThroughPort},
  {{"instance-operation", kError, "an instance reference names an operation of its port's interface"},
   of<instance::OperationPortInstanceRef>, checkOperationThroughPort},
  {{"instance-mode",      kError, "an instance reference names a mode of its group and its port's interface"},
   of<instance::ModeDeclarationInstanceRef>, checkModeThroughPort},
  {{"instance-trigger",   kError, "an instance reference names a trigger of its port's interface"},
   of<instance::TriggerInstanceRef>, checkTriggerThroughPort},
  {{"instance-component", kError, "data that no port leads to belongs to the own behavior"},
   of<instance::DataCompInstanceRef>, checkDataOfComponent},
  {{"instance-behavior",  kError, "a runnable or an event belongs to the component's behavior"},
   of<instance::InstanceRef>, checkBehaviorElement},
  {{"instance-port",      kError, "a port belongs to the type of its prototype, and that to the composition"},
   of<instance::CompositionPortInstanceRef>, checkPrototypePort},
  {{"instance-event",     kError, "a path of prototypes leads to the event"},
   of<instance::InstanceEventInCompositionInstanceRef>, checkEventThroughPrototypes},
  {{"own-port",           kError, "a behavior reaches out through ports of its own component"},
   of<instance::InstanceRef>, checkOwnPort},
  {{"option-port",        kError, "an option applies to a port of the own component"},
   of<behavior::PortAPIOption>, checkOptionPort},
  {{"own-behavior",       kError, "elements of a behavior refer to elements of that behavior"},
   of<common::Identifiable>, checkOwnBehavior},

  {{"port-info",          kError, "what is said of a port's element is said of one of its interface"},
   of<port::PortInfo>, checkPortInfo},
  {{"access-direction",   kError, "what is written is provided, what is read or called is required"},
       kEvery, checkAccessDirection},
  {{"connector-end",      kError, "the outer end of a connector is a port of its composition"},
   of<composition::Connector>, checkConnectorEnds},
  {{"connector-direction", kError, "ports that delegate have one direction"},
   of<composition::DelegationConnector>, checkConnectorDirection},
  {{"connector-interface", kError, "ports that are connected have interfaces that fit"},
   of<composition::Connector>, checkConnectorInterfaces},

  {{"order-circle",       kError, "an execution order has a beginning and an end"},
   of<timingExtension::EOCExecutableEntityRef>, checkExecutionOrder},
  {{"order-successor",    kError, "steps of one constraint are ordered by it"},
   of<timingExtension::EOCExecutableEntityRef>, checkSuccessors},
  {{"order-runnable",     kError, "a step's runnable belongs to its component, and that to the base composition"},
   of<timingExtension::EOCExecutableEntityRef>, checkOrderedRunnable},
  {{"composition-circle", kError, "no composition contains itself"},
   of<composition::CompositionComponent>, checkCompositionCircle},
  {{"variant-circle",     kError, "no variant includes itself"},
   of<variant::PredefinedVariant>, checkVariantCircle},
  {{"group-circle",       kError, "no port group is its own inner group"},
   of<port::PortGroup>, checkGroupCircle},

  {{"data-filter",        kError, "a filter has the operands that its kind compares with"},
   of<port::DataFilter>, checkDataFilter},
  {{"mode-group",         kError, "modes differ in number, and the initial mode is one of them"},
   of<common::ModeDeclarationGroup>, checkModes},
  {{"mode-count",         kError, "an event names one mode, and two for a transition"},
   of<behavior::ModeSwitchEvent>, checkModeCount},
  {{"storage-size",       kError, "a least size is no more than the greatest"},
   of<manifest::PersistencyKeyValueDatabase>, checkSizes},

  {{"parameter-value",    kError, "a configured value is what its definition says, and where"},
   of<ecuc::EcucParameterValue>, checkParameterValue},
  {{"reference-value",    kError, "a configured reference names what its definition says"},
   of<ecuc::EcucAbstractReferenceValue>, checkReferenceValue},
  {{"container-value",    kError, "a configured container stands where its definition does"},
   of<ecuc::EcucContainerValue>, checkContainerValue},

  {{"deployed-event",     kError, "a deployed event belongs to the service that is deployed"},
   of<manifest::DdsEventDeployment>, checkEventDeployment},
  {{"event-quality",      kError, "quality is given to an event of the own deployment"},
   of<manifest::DdsEventQosProps>, checkEventQuality},
  {{"service-port",       kError, "a service instance and its port go the same way and speak of one service"},
   of<manifest::ServiceInstanceToPortMapping>, checkServicePort},
  {{"mapped-component",   kError, "what is mapped to an ECU stands in the root composition"},
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
