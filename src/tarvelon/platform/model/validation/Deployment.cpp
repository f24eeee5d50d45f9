// Rules for services, their deployment, and the mapping of software to ECUs.

#include <unordered_set>
#include <vector>

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/validation/Ports.h"
#include "tarvelon/platform/model/validation/Rules.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

using namespace arplatform;  // NOLINT(google-build-using-namespace): the rules name the packages below it

const Instance* deployedBy(const Instance* serviceInstance) {
  return getOf<manifest::AdaptivePlatformServiceInstance, "Deployment">(serviceInstance);
}

/// The composition and all compositions that are used in it, at any depth, through the types of their
/// components.
const std::unordered_set<const Instance*>& compositionsWithin(const Instance& whole, Findings& findings) {
  std::unordered_set<const Instance*>& found = findings.compositionsWithin(whole);
  if (!found.empty()) return found;
  std::vector<const Instance*> open{&whole};
  while (!open.empty()) {
    const Instance* next = open.back();
    open.pop_back();
    if (!isA<composition::CompositionComponent>(next) || !found.insert(next).second) continue;
    for (const Instance* part : all<composition::CompositionComponent, "Components">(*next))
      open.push_back(getOf<composition::ComponentPrototype, "Type">(part));
  }
  return found;
}

const Instance* rootCompositionOf(const Instance& object) {
  const Instance* system = holderOf<system::System>(&object);
  const Instance* root = getOf<system::System, "RootSoftwareComposition">(system);
  return getOf<system::RootSwCompositionPrototype, "SwComposition">(root);
}

}  // namespace

void checkEventDeployment(const Instance& object, Findings& findings) {
  const Instance* event = get<manifest::DdsEventDeployment, "Event">(object);
  const Instance* service = getOf<manifest::ServiceInterfaceDeployment, "ServiceInterface">(object.owner());
  if (!event || !service || event->owner() == service) return;
  findings.add<manifest::DdsEventDeployment, "Event">(
      object, shownPath(*event) + " is not an event of the deployed service " + shown(*service) +
                  "; refer to one of its Events");
}

void checkEventQuality(const Instance& object, Findings& findings) {
  const Instance* event = get<manifest::DdsEventQosProps, "EventDeployment">(object);
  const Instance* deployment = deployedBy(object.owner());
  if (!event || !deployment || event->owner() == deployment) return;
  findings.add<manifest::DdsEventQosProps, "EventDeployment">(
      object, shownPath(*event) + " does not belong to " + shown(*deployment) + ", the deployment of " +
                  shown(*object.owner()) + "; refer to one of its EventDeployment");
}

void checkServicePort(const Instance& object, Findings& findings) {
  using Mapping = manifest::ServiceInstanceToPortMapping;
  const Instance* port = get<Mapping, "Port">(object);
  const Instance* service = get<Mapping, "ServiceInstance">(object);
  if (!port || !service) return;
  const bool isOffered = isA<manifest::ProvidedApServiceInstance>(*service);
  if (isOffered ? !isProvided(*port) : !isRequired(*port)) {
    findings.add<Mapping, "Port">(object, "expected a port that " +
                                              std::string(isOffered ? "provides" : "requires") +
                                              " the service, as " + shown(*service) + " does, found the " +
                                              port->cls().methods->className().shortName() + " " +
                                              shown(*port) + "; refer to another port or another instance");
    return;
  }
  const Instance* interface = interfaceOf(port);
  const Instance* deployed =
      getOf<manifest::ServiceInterfaceDeployment, "ServiceInterface">(deployedBy(service));
  if (!interface || !deployed || interface == deployed) return;
  findings.add<Mapping, "Port">(object, shown(*port) + " has the interface " + shown(*interface) + ", but " +
                                            shown(*service) + " is deployed for " + shown(*deployed) +
                                            "; refer to a port of that interface");
}

void checkMappedComponent(const Instance& object, Findings& findings) {
  const Instance* root = rootCompositionOf(object);
  if (!root) return;
  const auto& compositions = compositionsWithin(*root, findings);
  for (const Instance* prototype : all<system::SwcToEcuMapping, "Component">(object)) {
    if (!prototype || compositions.contains(prototype->owner())) continue;
    findings.add<system::SwcToEcuMapping, "Component">(
        object, shownPath(*prototype) + " is not a component of the system's root composition " +
                    shown(*root) + "; map a component that it contains");
  }
}

namespace {

void requireOfBase(const Instance& step, const Instance& prototype, Findings& findings) {
  const Instance* base = getOf<timingExtension::ExecutionOrderConstraint, "BaseComposition">(step.owner());
  if (!isA<composition::CompositionComponent>(base)) return;
  if (compositionsWithin(*base, findings).contains(prototype.owner())) return;
  findings.add<timingExtension::EOCExecutableEntityRef, "Component">(
      step, shownPath(prototype) + " is not a component of the BaseComposition " + shown(*base) + " of " +
                shown(*step.owner()) + "; refer to a component that it contains");
}

}  // namespace

void checkOrderedRunnable(const Instance& object, Findings& findings) {
  using Step = timingExtension::EOCExecutableEntityRef;
  if (const Instance* prototype = get<Step, "Component">(object)) requireOfBase(object, *prototype, findings);
  const Instance* runnable = get<Step, "Executable">(object);
  const Instance* type = getOf<composition::ComponentPrototype, "Type">(get<Step, "Component">(object));
  const Instance* component = holderOf<component::Component>(runnable);
  if (!component || !type || component == type) return;
  findings.add<Step, "Executable">(object, shownPath(*runnable) + " is not a runnable of the component " +
                                               shown(*get<Step, "Component">(object)) + ", whose type is " +
                                               shown(*type) +
                                               "; refer to a runnable of that type's behavior");
}

}  // namespace Tarvelon::metamodel::native::validation
