// Rules for instance references. The target must be reachable through the objects that the reference names as
// its context. An element of a behavior must be referenced within that behavior.

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/validation/Ports.h"
#include "tarvelon/platform/model/validation/Rules.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

using namespace arplatform;  // NOLINT(google-build-using-namespace): the rules name the packages below it

/// The component that contains the object, directly or through its behavior.
const Instance* componentOf(const Instance& object) { return holderOf<component::Component>(&object); }

/// The behavior that contains the object or, if there is none, the behavior of the component that contains
/// it.
const Instance* behaviorFor(const Instance& object) {
  if (const Instance* own = holderOf<behavior::ApplicationComponentBehavior>(&object)) return own;
  const Instance* component = componentOf(object);
  if (isA<component::AtomicComponent>(component))
    return get<component::AtomicComponent, "Behavior">(*component);
  return getOf<component::AdaptiveApplication, "Behavior">(component);
}

const Instance* behaviorOf(const Instance* element) {
  if (isA<behavior::ApplicationComponentBehavior>(element)) return element;
  return holderOf<behavior::ApplicationComponentBehavior>(element);
}

/// "'Torque' does not belong to the interface 'Pedal' of the port 'Speed'; ..."
std::string notOfInterface(const Instance& element, const Instance& port, const Instance& interface) {
  return shown(element) + " does not belong to the interface " + shown(interface) + " of the port " +
         shown(port) + "; refer to an element of that interface, or to another port";
}

/// Reports an element that the interface of the port does not contain. Reports nothing while one of them is
/// missing.
template <class X, FixedString Name>
void requireOfInterface(const Instance& object, const Instance* port, Findings& findings) {
  const Instance* element = get<X, Name>(object);
  const Instance* interface = interfaceOf(port);
  if (!element || !interface || element->owner() == interface) return;
  findings.add<X, Name>(object, notOfInterface(*element, *port, *interface));
}

}  // namespace

void checkDataThroughPort(const Instance& object, Findings& findings) {
  requireOfInterface<instance::DataInstanceRef, "DataElements">(
      object, get<instance::DataPortInstanceRef, "Port">(object), findings);
}

void checkOperationThroughPort(const Instance& object, Findings& findings) {
  using Reference = instance::OperationPortInstanceRef;
  requireOfInterface<Reference, "Operations">(object, get<Reference, "Port">(object), findings);
  const Instance* operation = get<Reference, "Operations">(object);
  for (const Instance* each : all<Reference, "Arguments">(object)) {
    const Instance* argument = getOf<instance::ArgumentDataInstanceRef, "Arguments">(each);
    if (!operation || !argument || argument->owner() == operation) continue;
    findings.add<instance::ArgumentDataInstanceRef, "Arguments">(
        *each, shown(*argument) + " is not an argument of the operation " + shown(*operation) +
                   "; refer to one of its arguments");
  }
}

void checkModeThroughPort(const Instance& object, Findings& findings) {
  using Reference = instance::ModeDeclarationInstanceRef;
  const Instance* port = get<Reference, "Port">(object);
  const Instance* element = get<Reference, "groupElement">(object);
  const Instance* mode = get<Reference, "Mode">(object);
  requireOfInterface<Reference, "groupElement">(object, port, findings);
  if (!mode) return;
  const Instance* group = getOf<interface::ModeDeclarationGroupElement, "ModeGroup">(element);
  const Instance* interface = element ? nullptr : interfaceOf(port);
  const bool isOther = group && mode->owner() != group;
  const bool isUnknown = interface && mode->owner() && !hasModeGroup(*interface, *mode->owner());
  if (!isOther && !isUnknown) return;
  findings.add<Reference, "Mode">(
      object, shown(*mode) + " is not a mode of " +
                  (group ? "the group " + shown(*group) : "the interface " + shown(*interface)) +
                  "; refer to one of its modes, or to another groupElement");
}

void checkTriggerThroughPort(const Instance& object, Findings& findings) {
  requireOfInterface<instance::TriggerInstanceRef, "Trigger">(
      object, get<instance::TriggerInstanceRef, "Port">(object), findings);
}

void checkDataOfComponent(const Instance& object, Findings& findings) {
  const Instance* data = get<instance::DataInstanceRef, "DataElements">(object);
  const Instance* own = behaviorFor(object);
  if (!data || !own || behaviorOf(data) == own) return;
  findings.add<instance::DataInstanceRef, "DataElements">(
      object, shownPath(*data) + " is not data of the behavior " + shown(*own) +
                  "; refer to a variable, parameter or memory that the behavior contains, or use a port");
}

void checkBehaviorElement(const Instance& object, Findings& findings) {
  const Instance* own = behaviorFor(object);
  const bool isRunnable = isA<instance::RunnableInstanceRef>(object);
  const Instance* element = isRunnable ? get<instance::RunnableInstanceRef, "Runnables">(object)
                                       : getOf<instance::EventRef, "Events">(&object);
  if (!own || !element || behaviorOf(element) == own) return;
  const std::string message = shownPath(*element) + " does not belong to the behavior " + shown(*own) +
                              " of this component; refer to an element of that behavior";
  if (isRunnable) {
    findings.add<instance::RunnableInstanceRef, "Runnables">(object, message);
  } else {
    findings.add<instance::EventRef, "Events">(object, message);
  }
}

void checkPrototypePort(const Instance& object, Findings& findings) {
  using Reference = instance::CompositionPortInstanceRef;
  const Instance* port = get<Reference, "Port">(object);
  const Instance* prototype = get<Reference, "ComponentPrototype">(object);
  const Instance* type = getOf<composition::ComponentPrototype, "Type">(prototype);
  if (port && type && port->owner() != type) {
    findings.add<Reference, "Port">(object, "the component " + shown(*prototype) + " has no port " +
                                                shownPath(*port) + ": its type is " + shown(*type) +
                                                "; refer to a port of that type, or to another component");
  }
  const Instance* whole = holderOf<composition::CompositionComponent>(&object);
  if (prototype && whole && prototype->owner() != whole) {
    findings.add<Reference, "ComponentPrototype">(
        object, shownPath(*prototype) + " is not a component of the composition " + shown(*whole) +
                    " that contains the connector; refer to one of its Components");
  }
}

void checkEventThroughPrototypes(const Instance& object, Findings& findings) {
  using Reference = instance::InstanceEventInCompositionInstanceRef;
  const Instance* within = holderOf<composition::CompositionComponent>(&object);
  for (const Instance* prototype : all<Reference, "ComponentPrototype">(object)) {
    if (within && prototype->owner() != within) {
      findings.add<Reference, "ComponentPrototype">(
          object, shownPath(*prototype) + " is not a component of " + shown(*within) +
                      "; refer to a component that the type of the previous one contains");
      return;
    }
    within = getOf<composition::ComponentPrototype, "Type">(prototype);
  }
  const Instance* event = get<Reference, "TimingEvent">(object);
  const Instance* type = event ? componentOf(*event) : nullptr;
  if (!within || !type || type == within) return;
  findings.add<Reference, "TimingEvent">(object,
                                         shownPath(*event) + " is not an event of " + shown(*within) +
                                             ", where the path ends; refer to an event of its behavior");
}

void checkOwnPort(const Instance& object, Findings& findings) {
  const Instance* port = portOf(object);
  if (!port || !port->owner()) return;
  const Instance* behavior = holderOf<behavior::ApplicationComponentBehavior>(&object);
  const Instance* component = behavior ? componentOf(*behavior) : nullptr;
  if (!component || port->owner() == component) return;
  findings.add(object, "uses the port " + shownPath(*port) + " of another component; use a port of " +
                           shown(*component) + " and connect the two ports");
}

void checkOptionPort(const Instance& object, Findings& findings) {
  const Instance* port = get<behavior::PortAPIOption, "Port">(object);
  const Instance* component = componentOf(object);
  if (!port || !port->owner() || !component || port->owner() == component) return;
  findings.add<behavior::PortAPIOption, "Port">(
      object, shownPath(*port) + " is a port of another component; refer to a port of " + shown(*component));
}

void checkOwnBehavior(const Instance& object, Findings& findings) {
  if ((object.presence() & object.cls().referringSlots) == 0) return;
  const Instance* own = findings.behaviorAbove(object);
  if (!own) return;
  forEachIn(object, object.cls().referringSlots, [&](const Instance* element, unsigned slot) {
    const Instance* other = element ? behaviorOf(element) : nullptr;
    if (!other || other == own) return;
    findings.add(object, slot,
                 shownPath(*element) + " belongs to another behavior; refer to an element of " + shown(*own));
  });
}

}  // namespace Tarvelon::metamodel::native::validation
