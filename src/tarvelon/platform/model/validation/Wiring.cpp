// Rules for ports, port infos and connectors.

#include <string_view>
#include <unordered_set>

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/validation/Ports.h"
#include "tarvelon/platform/model/validation/Rules.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

using namespace arplatform;  // NOLINT(google-build-using-namespace): the rules name the packages below it

std::string notOfPort(const Instance& element, const Instance& port, const Instance& interface) {
  return shownPath(element) + " is not an element of the interface " + shown(interface) + " of the port " +
         shown(port) + "; refer to one of its elements";
}

/// Whether a contained object is part of the interface's contract, in contrast to an annotation.
bool isElementOfInterface(const Instance& held) {
  return isA<common::Data>(held) || isA<interface::Operation>(held) || isA<interface::Trigger>(held) ||
         isA<interface::ModeDeclarationGroupElement>(held);
}

/// Data interfaces may be connected with each other even if their classes differ: their elements are
/// compared.
bool isSameFamily(const Instance& left, const Instance& right) {
  if (isA<interface::DataInterface>(left)) return isA<interface::DataInterface>(right);
  return &left.cls() == &right.cls();
}

/// The first element of the required interface for which the provided interface has no element of the same
/// name.
const Instance* missingElement(const Instance& provided, const Instance& required) {
  std::unordered_set<std::u16string_view> given;
  forEachIn(provided, provided.cls().holdingSlots, [&](const Instance* each, unsigned /*slot*/) {
    if (isElementOfInterface(*each)) given.insert(ownName(*each));
  });
  const Instance* missing = nullptr;
  forEachIn(required, required.cls().holdingSlots, [&](const Instance* wanted, unsigned /*slot*/) {
    if (!missing && isElementOfInterface(*wanted) && !given.contains(ownName(*wanted))) missing = wanted;
  });
  return missing;
}

void requireInterfaces(const Instance& connector, const Instance* providing, const Instance* requiring,
                       Findings& findings) {
  const Instance* provided = interfaceOf(providing);
  const Instance* required = interfaceOf(requiring);
  if (!provided || !required || provided == required) return;
  const std::string ports = "connects the ports " + shownPath(*providing) + " and " + shownPath(*requiring);
  if (!isSameFamily(*provided, *required)) {
    findings.add(connector, ports + ", whose interfaces are a " +
                                provided->cls().methods->className().shortName() + " and a " +
                                required->cls().methods->className().shortName() +
                                "; connect ports with the same kind of interface");
  } else if (const Instance* missing = missingElement(*provided, *required)) {
    findings.add(connector,
                 ports + ", but " + shown(*provided) + " provides no " + shown(*missing) + ", which " +
                     shown(*required) +
                     " requires; give both ports the same interface, or the elements the same names");
  }
}

const Instance* portAt(const Instance* end) {
  return getOf<instance::CompositionPortInstanceRef, "Port">(end);
}

template <class X, FixedString Name>
void requireOuter(const Instance& connector, Findings& findings) {
  const Instance* whole = holderOf<composition::CompositionComponent>(&connector);
  const Instance* port = get<X, Name>(connector);
  if (!port || !whole || port->owner() == whole) return;
  findings.add<X, Name>(connector, shownPath(*port) + " is not a port of the composition " + shown(*whole) +
                                       "; refer to one of its own ports");
}

/// Which kind of port an access point or event must go through.
enum class Need : std::uint8_t { Nothing, Provided, Required };

Need needOf(const Instance& object) {
  using Kind = behavior::DataAccessKind;
  if (isA<behavior::FlowDataAccess>(object)) {
    const auto kind = number<behavior::FlowDataAccess, "Kind">(object);
    return kind == Kind::ImplicitWrite || kind == Kind::ExplicitWrite ? Need::Provided : Need::Required;
  }
  if (isA<behavior::OperationInvokedEvent>(object) || isA<behavior::ModeSwitch>(object))
    return Need::Provided;
  if (isA<behavior::DataReceivedEvent>(object) || isA<behavior::DataReceiveErrorEvent>(object) ||
      isA<behavior::OperationAccess>(object) || isA<behavior::PortParameterAccess>(object) ||
      isA<behavior::ExternalTriggerOccurredEvent>(object))
    return Need::Required;
  return Need::Nothing;
}

}  // namespace

void checkPortInfo(const Instance& object, Findings& findings) {
  const Instance* port = object.owner();
  const Instance* interface = interfaceOf(port);
  if (!interface) return;
  if (isA<port::DataPortInfo>(object)) {
    const Instance* element = get<port::DataPortInfo, "DataElements">(object);
    if (element && element->owner() != interface)
      findings.add<port::DataPortInfo, "DataElements">(object, notOfPort(*element, *port, *interface));
  } else if (isA<port::ClientServerPortInfo>(object)) {
    const Instance* element = get<port::ClientServerPortInfo, "Operations">(object);
    if (element && element->owner() != interface)
      findings.add<port::ClientServerPortInfo, "Operations">(object, notOfPort(*element, *port, *interface));
  } else if (const Instance* group = getOf<port::ModePortInfo, "ModeGroup">(&object)) {
    if (!hasModeGroup(*interface, *group))
      findings.add<port::ModePortInfo, "ModeGroup">(object, notOfPort(*group, *port, *interface));
  }
}

void checkAccessDirection(const Instance& object, Findings& findings) {
  const Need need = needOf(object);
  if (need == Need::Nothing) return;
  // The modes that disable an event may come through other ports than the trigger of the event.
  const std::uint64_t aside =
      isA<behavior::Event>(object) ? bitOf(slotOf<behavior::Event, "DisabledMode">(object)) : 0;
  forEachIn(object, object.cls().holdingSlots & ~aside, [&](const Instance* reference, unsigned slot) {
    const Instance* port = isA<instance::InstanceRef>(reference) ? portOf(*reference) : nullptr;
    if (!port || (need == Need::Provided ? isProvided(*port) : isRequired(*port))) return;
    const char* wanted = need == Need::Provided ? "provides" : "requires";
    findings.add(object, slot,
                 std::string("expected a port that ") + wanted + " its interface, found the " +
                     port->cls().methods->className().shortName() + " " + shown(*port) +
                     "; use another port, or another kind of access");
  });
}

void checkConnectorEnds(const Instance& object, Findings& findings) {
  if (isA<composition::DelegationConnector>(object)) {
    requireOuter<composition::DelegationConnector, "OuterPort">(object, findings);
  } else if (isA<composition::PassThroughConnector>(object)) {
    requireOuter<composition::PassThroughConnector, "RequiredOuterPort">(object, findings);
    requireOuter<composition::PassThroughConnector, "ProvidedOuterPort">(object, findings);
  }
}

void checkConnectorDirection(const Instance& object, Findings& findings) {
  const Instance* outer = get<composition::DelegationConnector, "OuterPort">(object);
  const Instance* inner = portAt(get<composition::DelegationConnector, "InnerPort">(object));
  if (!outer || !inner) return;
  if ((isProvided(*outer) && isProvided(*inner)) || (isRequired(*outer) && isRequired(*inner))) return;
  findings.add(object,
               "delegates the " + std::string(outer->cls().methods->className().shortName()) + " " +
                   shown(*outer) + " to the " + inner->cls().methods->className().shortName() + " " +
                   shown(*inner) +
                   "; delegate a provided port to a provided one, and a required port to a required one");
}

void checkConnectorInterfaces(const Instance& object, Findings& findings) {
  using composition::AssemblyConnector, composition::DelegationConnector, composition::PassThroughConnector;
  if (isA<AssemblyConnector>(object)) {
    requireInterfaces(object, portAt(get<AssemblyConnector, "Provider">(object)),
                      portAt(get<AssemblyConnector, "Requester">(object)), findings);
  } else if (isA<PassThroughConnector>(object)) {
    // Data enters the composition at the required port and leaves it at the provided port. So the required
    // port is checked as the provider of the connector, and the provided port as its requester.
    requireInterfaces(object, get<PassThroughConnector, "RequiredOuterPort">(object),
                      get<PassThroughConnector, "ProvidedOuterPort">(object), findings);
  } else if (isA<DelegationConnector>(object)) {
    const Instance* outer = get<DelegationConnector, "OuterPort">(object);
    const Instance* inner = portAt(get<DelegationConnector, "InnerPort">(object));
    if (!outer || !inner) return;
    // If both ports provide, the inner port serves the outer one; otherwise the outer port serves the inner
    // one.
    if (isProvided(*outer) && isProvided(*inner)) {
      requireInterfaces(object, inner, outer, findings);
    } else {
      requireInterfaces(object, outer, inner, findings);
    }
  }
}

}  // namespace Tarvelon::metamodel::native::validation
