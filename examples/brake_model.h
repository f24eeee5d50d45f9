#pragma once

// The model of brake_by_wire.cpp: a braking function from the pedal to the service that reports its torque.
#include <string>
#include <tarvelon/boundary/k7q/Object.h>
#include <tarvelon/platform/model/api/Metamodel.h>
#include <vector>

namespace brake {

using namespace Tarvelon::metamodel::arplatform;
namespace foundation = Tarvelon::metamodel::foundation;
namespace types = Tarvelon::metamodel::types;
using K7Q::Model;
using Text = const char16_t*;

/// The objects with which the report of the model begins.
struct Vehicle {
  common::AUTOSAR root;
  std::vector<component::AtomicComponent> components;
  composition::CompositionComponent whole;
  timingExtension::ExecutionOrderConstraint order;
  system::SystemMapping mapping;
  manifest::ProcessToMachineMapping place;
  manifest::DdsEventDeployment topic;
};

struct Interfaces {
  interface::SenderReceiverInterface pedalTravel;
  interface::SenderReceiverInterface wheelTorque;
  interface::ClientServerInterface selfTest;
};

struct Components {
  component::AtomicComponent pedal;
  component::AtomicComponent controller;
  component::AtomicComponent wheel;
};

inline common::Package package(const Model& model, const common::Package& parent, Text name) {
  auto result = common::Package::create(model, name);
  parent.add<"PackagedElement">(result);
  return result;
}

inline foundation::NumericalValueSpecification number(const Model& model, double value) {
  return foundation::NumericalValueSpecification::create(model, value);
}

/// A data element whose values are percentages.
inline interface::FlowData share(const Model& model, const types::ApplicationPrimitiveDataType& type,
                                 Text name) {
  return interface::FlowData::create(model, u"%3.1f", name)
      .set<"Type">(type)
      .set<"InitValue">(number(model, 0));
}

/// The interfaces between components: data elements, and an operation.
inline Interfaces makeInterfaces(const Model& model, const common::Package& brakes,
                                 const types::ApplicationPrimitiveDataType& type) {
  const auto isService = false;
  const auto travel = interface::SenderReceiverInterface::create(model, isService, u"PedalTravel")
                          .add<"DataElements">(share(model, type, u"Travel"), share(model, type, u"Speed"));
  const auto torque = interface::SenderReceiverInterface::create(model, isService, u"WheelTorque")
                          .add<"DataElements">(share(model, type, u"Torque"));

  const auto failed = common::ApplicationError::create(model, 1, u"SensorFailed");
  const auto test = interface::Operation::create(model, u"Test").add<"PossibleError">(failed);
  const auto selfTest = interface::ClientServerInterface::create(model, isService, u"SelfTest")
                            .add<"PossibleError">(failed)
                            .add<"Operations">(test);
  package(model, brakes, u"Interfaces").add<"PackagedElement">(travel, torque, selfTest);
  return {travel, torque, selfTest};
}

/// A port that sends the last value of each element.
inline port::DataSenderPort sender(const Model& model, const interface::SenderReceiverInterface& type,
                                   Text name) {
  auto result = port::DataSenderPort::create(model, type, name);
  for (const auto& element : type.get<"DataElements">()) {
    const auto spec = port::DataSenderNonqueuedPortComSpec::create(model)
                          .set<"InitValue">(number(model, 0))
                          .set<"UsesEndToEndProtection">(true);
    result.add<"info">(port::DataSenderPortInfo::create(model, element).set<"comSpec">(spec));
  }
  return result;
}

/// A port that reads the last value of each element, and detects a missing value.
inline port::DataReceiverPort receiver(const Model& model, const interface::SenderReceiverInterface& type,
                                       Text name) {
  auto result = port::DataReceiverPort::create(model, type, name);
  for (const auto& element : type.get<"DataElements">()) {
    const auto spec = port::DataReceiverNonqueuedPortComSpec::create(model)
                          .set<"InitValue">(number(model, 0))
                          .set<"AliveTimeout">(0.02)
                          .set<"HandleTimeoutKind">(port::HandleTimeoutKind::Replace);
    result.add<"info">(port::DataReceiverPortInfo::create(model, element).set<"comSpec">(spec));
  }
  return result;
}

inline port::ServerPort server(const Model& model, const interface::ClientServerInterface& type, Text name) {
  const auto spec = port::ServerPortComSpec::create(model).set<"QueueLength">(2);
  return port::ServerPort::create(model, type, name)
      .add<"info">(port::ServerPortInfo::create(model, type.get<"Operations">()[0]).set<"comSpec">(spec));
}

inline port::ClientPort client(const Model& model, const interface::ClientServerInterface& type, Text name) {
  const auto info = port::ClientPortInfo::create(model, type.get<"Operations">()[0]);
  return port::ClientPort::create(model, type, name)
      .add<"info">(info.set<"comSpec">(port::ClientPortComSpec::create(model)));
}

inline component::AtomicComponent component(const Model& model, component::AtomicComponentKind kind,
                                            Text name) {
  return component::AtomicComponent::create(model, instance::ComponentInstanceRef::create(model), name)
      .set<"Kind">(kind);
}

inline Components makeComponents(const Model& model, const common::Package& brakes, const Interfaces& i) {
  using Kind = component::AtomicComponentKind;
  const auto pedal = component(model, Kind::SensorActuator, u"PedalSensor")
                         .add<"SenderPorts">(sender(model, i.pedalTravel, u"Pedal"))
                         .add<"ServerPorts">(server(model, i.selfTest, u"Test"));
  const auto controller = component(model, Kind::Application, u"BrakeController")
                              .add<"ReceiverPorts">(receiver(model, i.pedalTravel, u"Pedal"))
                              .add<"SenderPorts">(sender(model, i.wheelTorque, u"Torque"))
                              .add<"ClientPorts">(client(model, i.selfTest, u"PedalTest"));
  const auto wheel = component(model, Kind::SensorActuator, u"WheelActuator")
                         .add<"ReceiverPorts">(receiver(model, i.wheelTorque, u"Torque"));
  package(model, brakes, u"Components").add<"PackagedElement">(pedal, controller, wheel);
  return {pedal, controller, wheel};
}

/// A runnable. Its symbol is the name of the function in the code.
inline behavior::Runnable runnable(const Model& model, const std::u16string& name) {
  return behavior::Runnable::create(model, u"Bbw_" + name, name);
}

/// Adds an access to each data element of the port: the runnable reads or writes the element.
template <class Port>
void accessData(const Model& model, const behavior::Runnable& runnable, behavior::DataAccessKind kind,
                const Port& port) {
  for (const auto& element : port.template get<"Interface">().template get<"DataElements">()) {
    const auto where = instance::FlowDataPortInstanceRef::create(model, element, port);
    runnable.add<"dataAccess">(
        behavior::FlowDataAccess::create(model, where, kind, element.template get<"Name">()));
  }
}

struct Start {
  behavior::Event event;
  behavior::Runnable runnable;
};

/// Gives a component its behavior, with runnables and the events that start them.
inline void behave(const Model& model, const component::AtomicComponent& component,
                   const std::vector<behavior::Runnable>& runnables, const std::vector<Start>& starts) {
  using Restart = behavior::TerminateAndRestartKind;
  const auto name = std::u16string(component.get<"Name">()) + u"Behavior";
  const auto result = behavior::ApplicationComponentBehavior::create(model, Restart::NoSupport, name);
  for (const auto& each : runnables) result.add<"Runnables">(each);
  for (const auto& [event, started] : starts) {
    event.set<"StartOnEvent">(started);
    started.add<"Events">(event);
    result.add<"Events">(event);
  }
  component.set<"Behavior">(result);
}

/// Samples the pedal every 5 ms and tests it on demand. Computes torque every 10 ms or when the pedal moves.
inline void makeBehavior(const Model& model, const Components& c) {
  using Access = behavior::DataAccessKind;
  const auto testPort = c.pedal.get<"ServerPorts">()[0];
  const auto pedalPort = c.controller.get<"ReceiverPorts">()[0];

  const auto sample = runnable(model, u"Sample");
  const auto test = runnable(model, u"Test");
  accessData(model, sample, Access::ImplicitWrite, c.pedal.get<"SenderPorts">()[0]);
  const auto called = instance::OperationPortInstanceRef::create(
      model, testPort, testPort.get<"Interface">().get<"Operations">()[0]);
  behave(model, c.pedal, {sample, test},
         {{behavior::TimingEvent::create(model, 0.005, u"Every5ms"), sample},
          {behavior::OperationInvokedEvent::create(model, called, u"TestInvoked"), test}});

  const auto control = runnable(model, u"Control");
  accessData(model, control, Access::ImplicitRead, pedalPort);
  accessData(model, control, Access::ImplicitWrite, c.controller.get<"SenderPorts">()[0]);
  const auto travel = instance::FlowDataPortInstanceRef::create(
      model, pedalPort.get<"Interface">().get<"DataElements">()[0], pedalPort);
  behave(model, c.controller, {control},
         {{behavior::TimingEvent::create(model, 0.01, u"Every10ms"), control},
          {behavior::DataReceivedEvent::create(model, travel, u"PedalMoved"), control}});

  const auto apply = runnable(model, u"Apply").set<"canBeInvokedConcurrently">(true);
  accessData(model, apply, Access::ExplicitReadByValue, c.wheel.get<"ReceiverPorts">()[0]);
  behave(model, c.wheel, {apply}, {{behavior::TimingEvent::create(model, 0.01, u"Every10ms"), apply}});
}

/// Connects a provided port of one prototype to a required port of another.
inline composition::AssemblyConnector assemble(const Model& model,
                                               const composition::ComponentPrototype& provider,
                                               const port::ProvidedPort& provided,
                                               const composition::ComponentPrototype& requester,
                                               const port::RequiredPort& required) {
  const auto name = std::u16string(provided.get<"Name">()) + u"_to_" + required.get<"Name">().c_str();
  return composition::AssemblyConnector::create(model, name)
      .set<"Provider">(instance::CompositionPPortInstanceRef::create(model, provided, provider))
      .set<"Requester">(instance::CompositionRPortInstanceRef::create(model, required, requester));
}

/// The composition: one prototype of each component, connectors, and an outer port for the test of the pedal.
inline composition::CompositionComponent makeComposition(const Model& model, const common::Package& brakes,
                                                         const Interfaces& i, const Components& c) {
  const auto pedal = composition::ComponentPrototype::create(model, c.pedal, u"pedal");
  const auto controller = composition::ComponentPrototype::create(model, c.controller, u"controller");
  const auto wheel = composition::ComponentPrototype::create(model, c.wheel, u"wheel");
  const auto travel = c.pedal.get<"SenderPorts">()[0];
  const auto torque = c.controller.get<"SenderPorts">()[0];
  const auto test = c.pedal.get<"ServerPorts">()[0];
  const auto outside = port::ServerPort::create(model, i.selfTest, u"Test");
  const auto inside = instance::CompositionPPortInstanceRef::create(model, test, pedal);

  auto whole = composition::CompositionComponent::create(model, u"BrakeSystem")
                   .add<"ServerPorts">(outside)
                   .add<"Components">(pedal, controller, wheel)
                   .add<"Connectors">(
                       assemble(model, pedal, travel, controller, c.controller.get<"ReceiverPorts">()[0]),
                       assemble(model, controller, torque, wheel, c.wheel.get<"ReceiverPorts">()[0]),
                       assemble(model, pedal, test, controller, c.controller.get<"ClientPorts">()[0]),
                       composition::DelegationConnector::create(model, outside, inside, u"Test"));
  brakes.add<"PackagedElement">(whole);
  return whole;
}

/// The execution order: sample the pedal, then compute the torque, then apply the torque.
inline timingExtension::ExecutionOrderConstraint makeTiming(const Model& model, const common::Package& brakes,
                                                            const composition::CompositionComponent& whole) {
  auto order =
      timingExtension::ExecutionOrderConstraint::create(model, u"PedalToWheel").set<"BaseComposition">(whole);
  timingExtension::EOCExecutableEntityRef before;
  for (const auto& prototype : whole.get<"Components">()) {
    const auto type = component::AtomicComponent::cast(prototype.get<"Type">());
    const auto first = type.get<"Behavior">().get<"Runnables">()[0];
    const auto step = timingExtension::EOCExecutableEntityRef::create(model, first.get<"Name">())
                          .set<"Executable">(first)
                          .set<"Component">(prototype);
    order.add<"OrderedElement">(step);
    if (!before.isNull()) before.add<"Successor">(step);
    before = step;
  }
  brakes.add<"PackagedElement">(
      timingExtension::VfbTiming::create(model, whole, u"EndToEnd").add<"TimingRequirement">(order));
  return order;
}

/// Maps the components to ECUs.
inline system::SystemMapping makeSystem(const Model& model, const common::Package& brakes,
                                        const composition::CompositionComponent& whole) {
  const auto prototypes = whole.get<"Components">();
  const auto central = system::EcuInstance::create(model, u"BrakeEcu");
  const auto corner = system::EcuInstance::create(model, u"WheelEcu");
  auto mapping =
      system::SystemMapping::create(model, u"Mapping")
          .add<"SwMapping">(
              system::SwcToEcuMapping::create(model, central, u"OnCentral")
                  .add<"Component">(prototypes[0], prototypes[1]),
              system::SwcToEcuMapping::create(model, corner, u"OnWheel").add<"Component">(prototypes[2]));
  const auto vehicle =
      system::System::create(model, u"Vehicle")
          .set<"RootSoftwareComposition">(system::RootSwCompositionPrototype::create(model, whole, u"Root"))
          .add<"Mapping">(mapping);
  package(model, brakes, u"System").add<"PackagedElement">(central, corner, vehicle);
  return mapping;
}

/// The service that reports the torque to the vehicle.
inline interface::ServiceInterface makeService(const Model& model, const common::Package& adaptive,
                                               const types::ApplicationPrimitiveDataType& type) {
  auto service = interface::ServiceInterface::create(model, u"BrakeService")
                     .add<"Namespaces">(common::SymbolProps::create(model, u"bbw", u"Brakes"))
                     .add<"Events">(share(model, type, u"TorqueApplied"));
  adaptive.add<"PackagedElement">(service);
  return service;
}

/// The application that provides the service.
inline component::AdaptiveApplication makeApplication(const Model& model, const common::Package& adaptive,
                                                      const interface::ServiceInterface& service) {
  const auto port = port::ServiceProvidedPort::create(model, service, u"Offered")
                        .add<"info">(port::DataSenderPortInfo::create(model, service.get<"Events">()[0]));
  const auto instances = instance::ComponentInstanceRef::create(model);
  auto application =
      component::AdaptiveApplication::create(model, instances, u"BrakeAssistant").add<"ProvidedPorts">(port);
  adaptive.add<"PackagedElement">(application);
  return application;
}

/// Deploys the service over DDS, and maps it to a port.
inline manifest::DdsEventDeployment makeDeployment(const Model& model, const common::Package& adaptive,
                                                   const interface::ServiceInterface& service,
                                                   const component::AdaptiveApplication& application) {
  using Transport = manifest::TransportLayerProtocolEnum;
  auto topic = manifest::DdsEventDeployment::create(model, service.get<"Events">()[0], u"TorqueTopic")
                   .set<"TopicName">(u"bbw/torque")
                   .add<"TransportProtocol">(Transport::Udp, Transport::Tcp);
  const auto deployment = manifest::DdsServiceInterfaceDeployment::create(model, u"OverDds")
                              .set<"ServiceInterface">(service)
                              .add<"EventDeployment">(topic);
  const auto quality = manifest::DdsEventQosProps::create(model, topic).set<"QosProfile">(u"reliable");
  const auto offered = manifest::DdsProvidedServiceInstance::create(model, u"1", u"7", u"DdsOffered")
                           .set<"Deployment">(deployment)
                           .add<"EventQosProps">(quality);
  const auto atPort = manifest::ServiceInstanceToPortMapping::create(model, u"OfferedOverDds")
                          .set<"ServiceInstance">(offered)
                          .set<"Port">(application.get<"ProvidedPorts">()[0]);
  adaptive.add<"PackagedElement">(deployment, offered, atPort);
  return topic;
}

/// The machine, and the process that runs the application on the machine.
inline manifest::ProcessToMachineMapping makeProcess(const Model& model, const common::Package& adaptive,
                                                     const component::AdaptiveApplication& application) {
  const auto share = manifest::ResourceGroup::create(model, u"Safety").set<"CpuUsage">(30);
  const auto machine =
      manifest::Machine::create(model, u"VehicleComputer")
          .set<"DefaultApplicationEnterTimeout">(1.0)
          .add<"OsModuleInstantiation">(
              manifest::OsModuleInstantiation::create(model, u"Os").add<"ResourceGroup">(share));
  const auto program = manifest::Executable::create(
      model, manifest::RootSwComponentPrototype::create(model, application, u"Root"), u"brake_assistant");
  const auto start = manifest::StartupConfig::create(model, u"RealTime")
                         .set<"SchedulingPriority">(40)
                         .set<"SchedulingPolicy">(manifest::SchedulingPolicyKindEnum::SchedulingPolicyFifo);
  const auto process = manifest::Process::create(model, program, u"Assistant")
                           .add<"StateDependentStartupConfig">(
                               manifest::StateDependentStartupConfig::create(model, share, start));
  auto place = manifest::ProcessToMachineMapping::create(model, process, u"AssistantOnComputer")
                   .set<"Machine">(machine);
  adaptive.add<"PackagedElement">(
      machine, program, manifest::StartupConfigSet::create(model, u"Starts").add<"StartupConfig">(start),
      process,
      manifest::ProcessToMachineMappingSet::create(model, u"Places").add<"ProcessToMachineMapping">(place));
  return place;
}

/// Builds the whole model, classic and adaptive.
inline Vehicle build(const Model& model) {
  const auto root = common::AUTOSAR::create(model).set<"Name">(u"Vehicle");
  const auto brakes = common::Package::create(model, u"BrakeByWire");
  root.add<"PackagedElement">(brakes);
  const auto share = types::ApplicationPrimitiveDataType::create(model, u"Share");
  package(model, brakes, u"Types").add<"PackagedElement">(share);
  const auto interfaces = makeInterfaces(model, brakes, share);
  const auto components = makeComponents(model, brakes, interfaces);
  makeBehavior(model, components);
  const auto whole = makeComposition(model, brakes, interfaces, components);
  const auto adaptive = package(model, brakes, u"Adaptive");
  const auto service = makeService(model, adaptive, share);
  const auto application = makeApplication(model, adaptive, service);
  return {root,
          {components.pedal, components.controller, components.wheel},
          whole,
          makeTiming(model, brakes, whole),
          makeSystem(model, brakes, whole),
          makeProcess(model, adaptive, application),
          makeDeployment(model, adaptive, service, application)};
}

}  // namespace brake
