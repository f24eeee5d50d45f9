// Brake by wire: prints a report of the model of a braking function, from the pedal to the deployed service.
// brake_model.h builds the model. The report uses statically typed classes, and reflection for the counts.
#include <iostream>
#include <set>
#include <string>
#include <tarvelon/platform/model/api/Reflection.h>

#include "brake_model.h"

using namespace Tarvelon::metamodel::arplatform;
namespace foundation = Tarvelon::metamodel::foundation;

namespace {

template <class Named>
std::string nameOf(const Named& element) {
  return K7Q::String::to_string(element.template get<"Name">());
}

void reportPorts(const component::Component& component) {
  std::cout << "  " << nameOf(component) << " (" << classNameOf(component) << ")\n";
  for (const auto& port : component.get<"Port">()) {
    std::cout << "    " << classNameOf(port) << ' ' << nameOf(port) << ": " << nameOf(port.get<"Type">())
              << '\n';
  }
}

std::string endOf(const instance::CompositionPortInstanceRef& reference) {
  return nameOf(reference.get<"ComponentPrototype">()) + "." + nameOf(reference.get<"Port">());
}

void reportWiring(const composition::CompositionComponent& whole) {
  std::cout << "wiring\n";
  for (const auto& connector : whole.get<"Connectors">()) {
    if (const auto wire = composition::AssemblyConnector::cast(connector); !wire.isNull()) {
      std::cout << "  " << endOf(wire.get<"Provider">()) << " -> " << endOf(wire.get<"Requester">()) << '\n';
    } else if (const auto outer = composition::DelegationConnector::cast(connector); !outer.isNull()) {
      std::cout << "  " << endOf(outer.get<"InnerPort">()) << " -> " << nameOf(outer.get<"OuterPort">())
                << " (outside)\n";
    }
  }
}

void reportAccesses(const char* verb,
                    const Tarvelon::metamodel::NativeSequence<behavior::FlowDataAccess>& accesses) {
  for (const auto& access : accesses) {
    const auto place = access.get<"instanceRef">();
    std::cout << "    " << verb << ' ' << nameOf(place.get<"Port">()) << '.'
              << nameOf(place.get<"DataElements">()) << '\n';
  }
}

void reportBehavior(const component::AtomicComponent& component) {
  for (const auto& runnable : component.get<"Behavior">().get<"Runnables">()) {
    std::cout << "  " << nameOf(component) << '.' << nameOf(runnable) << ':';
    for (const auto& event : runnable.get<"Events">()) {
      std::cout << ' ' << classNameOf(event);
      const auto timing = behavior::TimingEvent::cast(event);
      if (!timing.isNull()) std::cout << " (" << 1000 * timing.get<"Period">() << " ms)";
    }
    std::cout << '\n';
    reportAccesses("reads", runnable.read<"implicitRead">());
    reportAccesses("reads on demand", runnable.read<"explicitReadByValue">());
    reportAccesses("writes", runnable.read<"implicitWrite">());
  }
}

void reportDeployment(const brake::Vehicle& vehicle) {
  std::cout << "order and places\n";
  for (const auto& element : vehicle.order.get<"OrderedElement">()) {
    const auto step = timingExtension::EOCExecutableEntityRef::cast(element);
    std::cout << "  " << nameOf(step.get<"Component">()) << '.' << nameOf(step.get<"Executable">());
    for (const auto& next : step.get<"Successor">()) std::cout << " before " << nameOf(next);
    std::cout << '\n';
  }
  for (const auto& mapping : vehicle.mapping.get<"SwMapping">()) {
    std::cout << "  " << nameOf(mapping.get<"EcuInstance">()) << " runs";
    for (const auto& prototype : mapping.get<"Component">()) std::cout << ' ' << nameOf(prototype);
    std::cout << '\n';
  }
  std::cout << "  " << nameOf(vehicle.place.get<"Machine">()) << " runs "
            << nameOf(vehicle.place.get<"Process">().get<"Executable">()) << "\n  "
            << nameOf(vehicle.topic.get<"Event">()) << " goes out as "
            << K7Q::String::to_string(vehicle.topic.get<"TopicName">()) << " over";
  for (const auto& transport : vehicle.topic.get<"TransportProtocol">()) {
    std::cout << ' ' << K7Q::String::to_string(transport.toString());
  }
  std::cout << '\n';
}

struct Counts {
  std::set<std::string> classes;
  std::set<std::string> missing;
  int elements = 0;
  int references = 0;
  int values = 0;
};

/// Counts the element and everything that it contains. Uses reflection to find its properties.
void count(const foundation::Element& element, Counts& counts) {
  const std::string name = classNameOf(element);
  counts.classes.insert(name);
  ++counts.elements;
  for (const auto& property : propertiesOf(element)) {
    if (property.isReadOnly()) continue;
    if (!property->isReference()) {
      counts.values += property.size();
      continue;
    }
    if (property.isRequired() && property.size() == 0) counts.missing.insert(name + "." + property->name());
    if (!property->isContainment()) {
      counts.references += property.size();
      continue;
    }
    for (const auto& held : property.objects()) count(held, counts);
  }
}

void reportCounts(const common::AUTOSAR& root) {
  Counts counts;
  count(root, counts);
  std::cout << "required and not set:" << (counts.missing.empty() ? " nothing" : "");
  for (const auto& name : counts.missing) std::cout << ' ' << name;
  std::cout << '\n'
            << counts.elements << " elements of " << counts.classes.size() << " classes, "
            << counts.references << " references, " << counts.values << " values\n";
}

}  // namespace

int main() {
  const auto model = K7Q::Model::create();
  const auto vehicle = brake::build(model);
  std::cout << "components and their ports\n";
  for (const auto& component : vehicle.components) reportPorts(component);
  reportPorts(vehicle.whole);
  reportWiring(vehicle.whole);
  std::cout << "runnables: what starts them, what they read and write\n";
  for (const auto& component : vehicle.components) reportBehavior(component);
  reportDeployment(vehicle);
  reportCounts(vehicle.root);
  model.close();
  return 0;
}
