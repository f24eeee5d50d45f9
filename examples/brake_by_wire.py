"""Brake by wire: builds the model of a braking function from the pedal to the deployed service, and prints a report.

    ./tarvelon run examples/brake_by_wire.py [FILE]       # with FILE: also saves the model to that file
"""

import pathlib
import sys
from collections import Counter
from types import SimpleNamespace

from Tarvelon.metamodel import foundation
from Tarvelon.metamodel.arplatform import (Factory, behavior, common, component, composition, instance,
                                           interface, port, timingExtension)

# The folder of a script is not on the path. Appended at the end, its files cannot hide a standard module.
sys.path.append(str(pathlib.Path(__file__).parent))
import brake_components as brake
import brake_deployment as deployment

Access = behavior.DataAccessKind


def data_access(new, runnable, kind, port_):
    """Adds an access to each data element of the port: the runnable reads or writes the element."""
    for element in port_.Interface.DataElements:
        where = new(instance.FlowDataPortInstanceRef, element, port_)
        runnable.dataAccess.append(new(behavior.FlowDataAccess, where, kind, f"{port_.Name}_{element.Name}"))


def mode_of(new, port_, number_):
    element = port_.Interface.ModeGroup
    return new(instance.ModeDeclarationInstanceRef, Port=port_, groupElement=element,
               Mode=element.ModeGroup.Mode[number_])


def operation_of(new, port_):
    operation = port_.Interface.Operations[0]
    return new(instance.OperationPortInstanceRef, port_, operation, Arguments=[
        new(instance.ArgumentDataInstanceRef, argument) for argument in operation.Arguments])


def behave(new, component_, runnables, starts):
    """Gives a component its behavior, with runnables and the events that start them."""
    kind = behavior.TerminateAndRestartKind.NoSupport
    name = f"{component_.Name}Behavior"
    result = new(behavior.ApplicationComponentBehavior, kind, name, Runnables=runnables)
    for event, runnable in starts:
        event.StartOnEvent = runnable
        runnable.Events.append(event)
        result.Events.append(event)
    component_.Behavior = result
    component_.instanceMapping.instance += [new(instance.RunnableInstanceRef, each) for each in runnables]
    component_.instanceMapping.instance += [new(instance.EventRef, event) for event, _ in starts]
    return result


def runnable_of(new, name, **properties):
    """A runnable. The first argument of the constructor is the name of the function in the code."""
    return new(behavior.Runnable, f"Bbw_{name}", name, **properties)


def behave_pedal(new, sensor, t):
    """Samples the pedal every 5 ms. Other components can call an operation that tests the sensor."""
    sample, test = runnable_of(new, "Sample", SwAddrMethod=t.FastCode), runnable_of(new, "Test")
    data_access(new, sample, Access.ImplicitWrite, sensor.SenderPorts[0])
    invoked = new(behavior.OperationInvokedEvent, operation_of(new, sensor.ServerPorts[0]), "TestInvoked")
    sent = new(behavior.DataWriteCompletedEvent, "Written", dataAccess=sample.dataAccess[0])
    result = behave(new, sensor, [sample, test], [
        (new(behavior.TimingEvent, 0.005, "Every5ms"), sample), (invoked, test), (sent, test)])
    option = new(behavior.PortAPIOption, Port=sensor.ServerPorts[0], PortArgValue=[
        new(behavior.PortDefinedArgumentValue, brake.number(new, 1), t.UInt16, "SensorId")])
    result.PortAPIOptions.append(option)
    sensor.ServerPorts[0].PortAPIOption = option


def controller_data(new, behavior_, t):
    """The data of the controller: parameters, inter-runnable variables, memory and an exclusive area."""
    def data(kind, name, *arguments):
        return new(kind, *arguments, brake.Percent, name, Type=t.Share)

    for name, kind in (("Const", "Limit"), ("Shared", "Ramp"), ("Pim", "Offset")):
        parameter = data(interface.ParameterData, kind)
        parameter.Kind = getattr(behavior.ParameterKind, name)
        behavior_.Parameters.append(parameter)
    behavior_.IRV += [data(behavior.IrvData, "Demand", behavior.IrvKind.Implicit),
                      data(behavior.IrvData, "Fault", behavior.IrvKind.Explicit)]
    behavior_.ArTypedPIM.append(data(interface.VariableData, "Filtered"))
    behavior_.StaticMemory.append(data(interface.VariableData, "Cycles"))
    behavior_.exclusiveArea.append(new(behavior.ExclusiveArea, "TorqueAccess"))
    wear = new(behavior.PerInstanceMemory, "Wear_t", "typedef uint16 Wear_t;", brake.number(new, 0), "Wear")
    behavior_.PIM.append(wear)
    needs = new(behavior.NvBlockNeeds, "WearNeeds", RestoreAtStart=True, StoreAtShutdown=True)
    storage = new(behavior.ServiceDependency, "WearStorage", PIM=wear, ServiceNeeds=needs)
    behavior_.ServiceDependency.append(storage)
    behavior_.DataTypeMapping.append(t.Mapping)
    behavior_.IncludedDataTypeSets.append(new(behavior.IncludedDataTypeSet, "BBW_", DataTypes=[t.UInt16]))


def control_accesses(new, control, lost, controller):
    """The accesses of the controller's runnables to data, parameters, memory, operations and modes."""
    own = controller.Behavior
    for port_ in controller.ReceiverPorts:
        data_access(new, control, Access.ImplicitRead, port_)
    data_access(new, control, Access.ImplicitWrite, controller.SenderPorts[0])
    data_access(new, control, Access.ExplicitReadByArg, controller.NvReceiverPorts[0])
    data_access(new, lost, Access.ExplicitReadByValue, controller.ReceiverPorts[0])
    data_access(new, lost, Access.ExplicitWrite, controller.NvSenderPorts[0])
    for sequence in (control.irvWrite, lost.irvRead):
        where = new(instance.FlowDataCompInstanceRef, own.IRV[0])
        sequence.append(new(behavior.IrvAccess, where, "Demand"))
    for parameter in own.Parameters:
        where = new(instance.ParameterDataCompInstanceRef, parameter)
        control.compParamRead.append(new(behavior.ComponentParameterAccess, where, parameter.Name))
    calibration = controller.ParameterReceiverPorts[0]
    where = new(instance.ParameterDataPortInstanceRef, calibration.Interface.DataElements[0], calibration)
    control.portParamRead.append(new(behavior.PortParameterAccess, where, "Gain"))
    for memory, sequence in ((own.ArTypedPIM[0], control.VariableDataWrite),
                             (own.StaticMemory[0], lost.VariableDataRead)):
        where = new(instance.VariableDataCompInstanceRef, memory)
        sequence.append(new(behavior.VariableDataAccess, where, memory.Name))
    call = operation_of(new, controller.ClientPorts[0])
    wait = new(behavior.OperationBlockingAccess, "Test", Timeout=0.05, instanceRef=[call])
    lost.operationBlockingCall.append(wait)
    control.ModeAccessPoint.append(new(behavior.ModeAccess, mode_of(new, controller.ModeReceiverPorts[0], 1)))
    control.runInsideExclusiveArea.append(own.exclusiveArea[0])
    lost.canEnterExclusiveArea.append(own.exclusiveArea[0])


def behave_controller(new, controller, variants, t):
    """Runs the control every 10 ms, except in degraded mode. Reacts to a lost pedal signal and to a change of mode."""
    init, control, lost = (runnable_of(new, name) for name in ("Init", "Control", "PedalLost"))
    fallback = new(behavior.InternalTrigger, "Fallback", IsQueued=True)
    lost.InternalTriggeringPoint += [fallback, new(behavior.Internal, "FallbackAgain", Trigger=fallback)]
    pedal, trigger = controller.ReceiverPorts[0], controller.TriggerReceiverPorts[0]
    modes = controller.ModeReceiverPorts[0]

    def travel():
        return new(instance.FlowDataPortInstanceRef, pedal.Interface.DataElements[0], pedal)

    every = new(behavior.TimingEvent, 0.01, "Every10ms", DisabledMode=[mode_of(new, modes, 2)])
    every.variationPoint = brake.only_with_rear_axle(new, variants)
    changed = new(behavior.ModeSwitchEvent, behavior.ModeActivationKind.OnEntry, "Degraded")
    changed.instanceRef.append(mode_of(new, modes, 2))
    tick = new(instance.TriggerInstanceRef, Trigger=trigger.Interface.Triggers[0], Port=trigger)
    behavior_ = behave(new, controller, [init, control, lost], [
        (new(behavior.InitEvent, "Start"), init), (every, control), (changed, lost),
        (new(behavior.DataReceivedEvent, travel(), "PedalMoved"), control),
        (new(behavior.DataReceiveErrorEvent, travel(), "PedalSilent"), lost),
        (new(behavior.ExternalTriggerOccurredEvent, tick, "WheelTicked"), control),
        (new(behavior.InternalTriggerOccurredEvent, "Fallback", InternalTriggeringPoint=fallback), control)])
    controller_data(new, behavior_, t)
    control_accesses(new, control, lost, controller)
    behavior_.variationPointProxy += brake.variant_proxies(new, variants, t.UInt16)


def behave_others(new, c):
    """The wheel actuator applies the torque. The diagnostics component tests the pedal and switches the modes."""
    apply = runnable_of(new, "Apply", canBeInvokedConcurrently=True)
    data_access(new, apply, Access.ImplicitRead, c.WheelActuator.ReceiverPorts[0])
    data_access(new, apply, Access.ImplicitWrite, c.WheelActuator.SenderPorts[0])
    data_access(new, apply, Access.ExplicitWrite, c.WheelActuator.SenderReceiverPorts[0])
    sent = new(behavior.DataSendCompletedEvent, "Sent", dataAccess=apply.dataAccess[-1])
    every = new(behavior.TimingEvent, 0.01, "Every10ms")
    behave(new, c.WheelActuator, [apply], [(every, apply), (sent, apply)])

    check = runnable_of(new, "Check")
    ask = operation_of(new, c.Diagnostics.ClientPorts[0])
    check.OperationNonBlockingCall.append(new(behavior.OperationNonBlockingAccess, "Test", instanceRef=[ask]))
    degraded = mode_of(new, c.Diagnostics.ModeSenderPorts[0], 2)
    check.ModeSwitchPoint.append(new(behavior.ModeSwitch, degraded, "Degrade"))
    behave(new, c.Diagnostics, [check], [(new(behavior.TimingEvent, 0.1, "Every100ms"), check)])


def assemble(new, provider, provided, requester, required):
    """Connects a provided port of one prototype to a required port of another."""
    name = f"{provider.Name}_{provided.Name}_to_{requester.Name}_{required.Name}"
    return new(composition.AssemblyConnector, name,
               Provider=new(instance.CompositionPPortInstanceRef, provided, provider),
               Requester=new(instance.CompositionRPortInstanceRef, required, requester))


def prototype_name(type_):
    return type_.Name[0].lower() + type_.Name[1:]


def make_composition(new, brakes, i, c, t):
    """The composition: one prototype of each component, connectors, and outer ports for the rest of the vehicle."""
    whole = new(composition.CompositionComponent, "BrakeSystem", DataTypeMappingSet=[t.Mapping])
    for each in vars(c).values():
        whole.Components.append(new(composition.ComponentPrototype, each, prototype_name(each)))
    p = brake.named(whole.Components)
    pedal, wheel, control = c.PedalSensor, c.WheelActuator, c.BrakeController
    modes, wear = c.Diagnostics.ModeSenderPorts[0], c.WearMemory.NvSenderReceiverPorts[0]
    whole.Connectors += [
        assemble(new, p.pedalSensor, pedal.SenderPorts[0], p.brakeController, control.ReceiverPorts[0]),
        assemble(new, p.wheelActuator, wheel.SenderPorts[0], p.brakeController, control.ReceiverPorts[1]),
        assemble(new, p.brakeController, control.SenderPorts[0], p.wheelActuator, wheel.ReceiverPorts[0]),
        assemble(new, p.pedalSensor, pedal.ServerPorts[0], p.brakeController, control.ClientPorts[0]),
        assemble(new, p.pedalSensor, pedal.ServerPorts[0], p.diagnostics, c.Diagnostics.ClientPorts[0]),
        assemble(new, p.diagnostics, modes, p.brakeController, control.ModeReceiverPorts[0]),
        assemble(new, p.wearMemory, wear, p.brakeController, control.NvReceiverPorts[0]),
        assemble(new, p.brakeController, control.NvSenderPorts[0], p.wearMemory, wear),
        assemble(new, p.brakeParameters, c.BrakeParameters.ParameterSenderPorts[0],
                 p.brakeController, control.ParameterReceiverPorts[0])]
    outer = new(port.TriggerReceiverPort, i.WheelTick, "Tick")
    inner = new(instance.CompositionRPortInstanceRef, control.TriggerReceiverPorts[0], p.brakeController)
    whole.TriggerReceiverPorts.append(outer)
    speed_in = new(port.DataReceiverPort, i.WheelSpeed, "SpeedIn")
    speed_out = new(port.DataSenderPort, i.WheelSpeed, "SpeedOut")
    whole.ReceiverPorts.append(speed_in)
    whole.SenderPorts.append(speed_out)
    whole.Connectors += [new(composition.DelegationConnector, outer, inner, "Tick_to_brakeController"),
                         new(composition.PassThroughConnector, speed_in, speed_out, "SpeedIn_to_SpeedOut")]
    brakes.PackagedElement.append(whole)
    return whole


def make_timing(new, brakes, whole):
    """The execution order: sample the pedal, then compute the torque, then apply the torque."""
    p = brake.named(whole.Components)
    steps = []
    for prototype, index in ((p.pedalSensor, 0), (p.brakeController, 1), (p.wheelActuator, 0)):
        runnable = prototype.Type.Behavior.Runnables[index]
        steps.append(new(timingExtension.EOCExecutableEntityRef, runnable.Name,
                         Executable=runnable, Component=prototype))
    for step, after in zip(steps, steps[1:]):
        step.Successor.append(after)
    order = new(timingExtension.ExecutionOrderConstraint, "PedalToWheel",
                OrderedElement=steps, BaseComposition=whole)
    return brake.package(new, brakes, "Timing", [
        new(timingExtension.VfbTiming, whole, "EndToEnd", TimingRequirement=[order]),
        new(timingExtension.SwcTiming, "ControlTiming", Behavior=p.brakeController.Type.Behavior)])


def values_of(element, row):
    """A list with the values of a property: none, one or many."""
    name = row.name()
    names = [each for each in (name, name[0].lower() + name[1:]) if hasattr(element, each)]
    value = getattr(element, names[0]) if names else None
    if value is None or value == "":
        return []
    return [value] if row.upperBound() == 1 else list(value)


def walk(element):
    """The element and everything that it contains, found by reflection."""
    yield element
    for row in element.MetaProperty():
        if row.isContainment() and not row.isReadOnly():
            for held in values_of(element, row):
                yield from walk(held)


def count(root):
    """Counts the model: elements by package, values and references by kind, and unset required properties."""
    packages, classes, facts, missing = Counter(), set(), Counter(), []
    for element in walk(root):
        metaclass = element.MetaClass()
        packages[metaclass.package().rpartition(".")[2]] += 1
        classes.add(metaclass.fullName())
        facts["elements"] += 1
        for row in element.MetaProperty():
            values = values_of(element, row)
            refers = values and isinstance(values[0], foundation.Element)
            if not row.isReadOnly() and not row.isContainment():
                facts["references" if refers else "values"] += len(values)
            if row.lowerBound() and not values and not row.type().startswith("char"):
                missing.append(f"{metaclass.name()}.{row.name()}")
    return packages, classes, facts, missing


def report_ports(c):
    print("components and their ports")
    for each in c:
        kind = f", {each.Kind}" if isinstance(each, component.AtomicComponentPorts) else ""
        print(f"  {each.Name} ({type(each).__name__}{kind})")
        for port_ in each.Port:
            infos = port_.info if hasattr(port_, "info") else port_.Info
            specs = sorted({type(info.portCommSpec).__name__ for info in infos if info.portCommSpec})
            line = f"    {type(port_).__name__:32} {port_.Name:13} {port_.Type.Name:15} {' '.join(specs)}"
            print(line.rstrip())


def end(reference):
    return f"{reference.ComponentPrototype.Name}.{reference.Port.Name}"


def report_wiring(whole):
    print("wiring")
    for wire in whole.Connectors:
        if isinstance(wire, composition.AssemblyConnector):
            print(f"  {end(wire.Provider)} -> {end(wire.Requester)}")
        elif isinstance(wire, composition.DelegationConnector):
            print(f"  {wire.OuterPort.Name} (outside) -> {end(wire.InnerPort)}")
        else:
            print(f"  {wire.RequiredOuterPort.Name} (outside) -> {wire.ProvidedOuterPort.Name} (outside)")


def started_by(event):
    period = f" {event.Period * 1000:g} ms" if isinstance(event, behavior.TimingEvent) else ""
    return f"{type(event).__name__.removesuffix('Event')}{period}"


def report_behavior(c):
    print("runnables: what starts them, what they read and write")
    ways = {"reads": ("implicitRead", "explicitReadByArg", "explicitReadByValue"),
            "writes": ("implicitWrite", "explicitWrite")}
    for each in c:
        for runnable in each.Behavior.Runnables if getattr(each, "Behavior", None) else ():
            print(f"  {each.Name}.{runnable.Name}: {', '.join(map(started_by, runnable.Events))}")
            for verb, views in ways.items():
                for view in views:
                    for access in getattr(runnable, view)():
                        place = access.instanceRef
                        print(f"    {verb} {place.Port.Name}.{place.DataElements.Name} ({view})")


def report_deployment(s, timing, configuration, adaptive):
    print("order, places, configuration")
    for step in timing.EndToEnd.TimingRequirement[0].OrderedElement:
        after = ", ".join(each.Name for each in step.Successor) or "nothing"
        print(f"  {step.Component.Name}.{step.Executable.Name} before {after}")
    for mapping in s.Vehicle.Mapping[0].SwMapping:
        print(f"  {mapping.EcuInstance.Name} runs {', '.join(each.Name for each in mapping.Component)}")
    for task in configuration.OsOfBrakeEcu.Container[0].SubContainer:
        parts = [f"{each.Definition.Name} = {each.Value}" for each in task.ParameterValue]
        parts += [f"{each.Definition.Name} -> {each.Value.Name}" for each in task.ReferenceValue]
        print(f"  {task.Definition.Name} {task.Name} {', '.join(parts)}".rstrip())
    for place in adaptive.Places.ProcessToMachineMapping:
        start = place.Process.StateDependentStartupConfig[0]
        state = start.FunctionGroupState[0].Mode
        print(f"  {place.Machine.Name} runs {place.Process.Executable.Name} in {state.Name}")
    topic = adaptive.OverDds.EventDeployment[0]
    transports = ", ".join(map(str, topic.TransportProtocol))
    print(f"  {topic.Event.Name} goes out as {topic.TopicName} over {transports}")


def report_counts(root):
    packages, classes, facts, missing = count(root)
    print("counts")
    for name, elements in sorted(packages.items()):
        print(f"  {name:16} {elements:4}")
    print(f"  required and not set: {', '.join(missing) or 'nothing'}")
    print(f"  {facts['elements']} elements of {len(classes)} classes,"
          f" {facts['references']} references, {facts['values']} values")


def build(new):
    """Builds the whole model; returns its root and the objects for the report."""
    root = new(common.AUTOSAR, Name="Vehicle", ArxmlFilePackaging=common.ArxmlFilePackagingKind.Modular,
               ComponentQualifiedName="/BrakeByWire/BrakeSystem", ImplementationQualifiedName="",
               InternalBehaviorQualifiedName="", DataTypePackage="/BrakeByWire/Types",
               InterfacePackage="/BrakeByWire/Interfaces")
    brakes = new(common.Package, "BrakeByWire")
    root.PackagedElement.append(brakes)
    brake.make_documentation(new, brakes)
    t = brake.make_types(new, brakes)
    v = brake.make_variants(new, brakes, t.Percent)
    i = brake.make_interfaces(new, brakes, t)
    c = brake.make_components(new, brakes, i)
    behave_pedal(new, c.PedalSensor, t)
    behave_controller(new, c.BrakeController, v, t)
    behave_others(new, c)
    whole = make_composition(new, brakes, i, c, t)
    return SimpleNamespace(
        root=root, components=vars(c).values(), whole=whole,
        system=deployment.make_system(new, brakes, whole), timing=make_timing(new, brakes, whole),
        configuration=deployment.make_configuration(new, brakes, whole),
        adaptive=deployment.make_adaptive(new, brakes, t))


def main(path=None):
    with Factory.createNewModel() as model:
        built = build(brake.maker(model))
        report_ports([*built.components, built.whole, built.adaptive.BrakeAssistant])
        report_wiring(built.whole)
        report_behavior(built.components)
        report_deployment(built.system, built.timing, built.configuration, built.adaptive)
        report_counts(built.root)
        if path:
            # No AUTOSAR release has all classes of this model: what R22-11 does not have is left out of an ARXML file.
            model.save(path, lenient=True)


if __name__ == "__main__":
    main(*sys.argv[1:2])
