"""The brake example with one fault for each rule that editing can break, and the problem that validation
reports."""

import sys
from pathlib import Path
from types import SimpleNamespace

import pytest

from Tarvelon.metamodel import foundation, types
from Tarvelon.metamodel.arplatform import (behavior, common, component, composition, ecuc, instance, interface,
                                           manifest, port, timingExtension)

# At the end of the path, because the folder contains a file collections.py.
sys.path.append(str(Path(__file__).resolve().parents[2] / "examples"))
import brake_by_wire as example  # noqa: E402
import brake_components as brake  # noqa: E402

def build(model):
    """The brake example, with short names for the objects that the faults change."""
    new = brake.maker(model)
    built = example.build(new)
    components = brake.named(built.components)
    return SimpleNamespace(
        model=model, new=new, root=built.root, brakes=built.root.PackagedElement[0], whole=built.whole,
        controller=components.BrakeController, pedal=components.PedalSensor, wheel=components.WheelActuator,
        diagnostics=components.Diagnostics, parameters=components.BrakeParameters,
        control=brake.named(components.BrakeController.Behavior.Runnables).Control,
        sample=components.PedalSensor.Behavior.Runnables[0], prototypes=brake.named(built.whole.Components),
        connectors=brake.named(built.whole.Connectors), timing=built.timing, system=built.system,
        configuration=built.configuration, adaptive=built.adaptive)


FAULTS = []


def fault(rule, path, message, severity="error", also=()):
    """A change of the example, and the expected problem: its place and its message.

    There must be no other problems, except those of the rules in `also`, which the same change breaks.
    """
    def add(change):
        FAULTS.append(pytest.param(rule, path, message, severity, {*also}, change, id=change.__name__))
        return change
    return add


CONTROLLER = "/Vehicle/BrakeByWire/Components/BrakeController"
BEHAVIOR = CONTROLLER + "/BrakeControllerBehavior"
CONTROL = BEHAVIOR + "/Control"
PEDAL_BEHAVIOR = "/Vehicle/BrakeByWire/Components/PedalSensor/PedalSensorBehavior"
WHOLE = "/Vehicle/BrakeByWire/BrakeSystem"


@fault("required-reference", WHOLE + "/pedalSensor2.Type", "is required and not set; set it to a Component")
def prototype_without_a_type(w):
    w.whole.Components.append(w.new(composition.ComponentPrototype, Name="pedalSensor2"))


@fault("required-reference", CONTROLLER + "/Spare.Interface",
       "is required and not set; set it to a SenderReceiverInterface")
def port_without_an_interface(w):
    w.controller.SenderPorts.append(w.new(port.DataSenderPort, Name="Spare"))


@fault("required-text", BEHAVIOR + "/Spare.symbol",
       "is required and was never set; set it, to the empty text if that is meant", "warning")
def runnable_without_a_symbol(w):
    w.controller.Behavior.Runnables.append(w.new(behavior.Runnable, Name="Spare"))


@fault("incomplete", BEHAVIOR + "/Idle.StartOnEvent",
       "is not set, and without it the event starts no runnable; set it to a Runnable", "warning")
def event_that_starts_nothing(w):
    w.controller.Behavior.Events.append(w.new(behavior.TimingEvent, 0.1, "Idle"))


@fault("incomplete", WHOLE + "/Loose.Provider",
       "is not set, and without it the connector has only one end; set it to a CompositionPPortInstanceRef",
       "warning")
def connector_with_one_end(w):
    end = w.new(instance.CompositionRPortInstanceRef, w.controller.ReceiverPorts[0],
                w.prototypes.brakeController)
    w.whole.Connectors.append(w.new(composition.AssemblyConnector, "Loose", Requester=end))


@fault("no-owner", "/Forgotten",
       "the Runnable has no owner; add it to a package or to another owner, or destroy it", "warning")
def runnable_that_nothing_holds(w):
    w.keep = w.new(behavior.Runnable, "Bbw_Forgotten", "Forgotten")


@fault("value-range", BEHAVIOR + "/Every10ms.Period",
       "expected a period in seconds above 0, found 0; set a valid number")
def period_of_zero(w):
    brake.named(w.controller.Behavior.Events).Every10ms.Period = 0


@fault("value-range", BEHAVIOR + "/Often.Period",
       "expected a period in seconds above 0, found no value, which is read as 0; set a valid number")
def period_that_was_never_set(w):
    w.controller.Behavior.Events.append(w.new(behavior.TimingEvent, Name="Often", StartOnEvent=w.control))


@fault("value-range", "/Vehicle/BrakeByWire/Adaptive/VehicleComputer/Os/Safety.CpuUsage",
       "expected a percentage of the processors from 0 to 100, found 130; set a valid number")
def more_than_all_of_a_processor(w):
    w.adaptive.VehicleComputer.OsModuleInstantiation[0].ResourceGroup[0].CpuUsage = 130


@fault("value-range", "/Vehicle/BrakeByWire/Variants/TwoAxles.SysConstValue[0].Value",
       "expected a finite number, found inf; set a valid number")
def number_without_end(w):
    variants = brake.named(brake.named(w.brakes.PackagedElement).Variants.PackagedElement)
    variants.TwoAxles.SysConstValue[0].Value = float("inf")


@fault("short-name", CONTROLLER + "/Brake Controller Behavior.Name",
       'expected a letter, then letters, digits and underscores, 128 at most; found '
       '"Brake Controller Behavior"; '
       "rename it, and store the readable text in longName")
def name_with_blanks(w):
    w.controller.Behavior.Name = "Brake Controller Behavior"


@fault("short-name", BEHAVIOR + "/7up.Name",
       'expected a letter, then letters, digits and underscores, 128 at most; found "7up"; '
       "rename it, and store the readable text in longName")
def name_that_begins_with_a_digit(w):
    w.controller.Behavior.Runnables.append(w.new(behavior.Runnable, "f", "7up"))


@fault("short-name", BEHAVIOR + "/" + "n" * 129 + ".Name",
       "expected a letter, then letters, digits and underscores, 128 at most; found 129 characters; rename it, and "
       "store the readable text in longName")
def name_that_is_too_long(w):
    w.controller.Behavior.Runnables.append(w.new(behavior.Runnable, "f", "n" * 129))


@fault("short-name", BEHAVIOR + ".Runnables[3].Name",
       "is required and not set; give the Runnable a short name")
def runnable_without_a_name(w):
    w.controller.Behavior.Runnables.append(w.new(behavior.Runnable, symbol="f"))


@fault("duplicate-name", BEHAVIOR + "/Control.Name",
       "the name 'Control' is already used in this namespace, by the Runnable before it; rename one of the two")
def two_elements_of_one_name(w):
    w.controller.Behavior.exclusiveArea.append(w.new(behavior.ExclusiveArea, "Control"))


@fault("duplicate-name", "/Vehicle.Name",
       "the name 'Vehicle' is already used in this namespace, by the AUTOSAR before it; rename one of the two")
def two_roots_of_one_name(w):
    w.keep = w.new(common.Package, "Vehicle")


@fault("name-case", BEHAVIOR + "/CONTROL.Name",
       "the name 'CONTROL' differs from 'Control' of the same namespace only in case, which AUTOSAR ignores; rename "
       "one of the two")
def names_that_differ_in_case(w):
    w.controller.Behavior.exclusiveArea.append(w.new(behavior.ExclusiveArea, "CONTROL"))


@fault("name-case", "/VEHICLE.Name",
       "the name 'VEHICLE' differs from 'Vehicle' of the same namespace only in case, which AUTOSAR ignores; rename "
       "one of the two")
def roots_that_differ_in_case(w):
    w.keep = w.new(common.Package, "VEHICLE")


@fault("dangling-reference", WHOLE + "/pedalSensor2.Type",
       "refers to /Loose, which no package contains because it has no owner; give that object an owner, or refer to "
       "another object", also=["no-owner"])
def reference_to_what_nothing_holds(w):
    w.keep = w.new(component.ParameterComponent, "Loose")
    w.whole.Components.append(w.new(composition.ComponentPrototype, w.keep, "pedalSensor2"))


@fault("instance-data", BEHAVIOR + "/Control/Pedal_Travel.instanceRef.DataElements",
       "'Torque' does not belong to the interface 'PedalTravel' of the port 'Pedal'; refer to an element of that "
       "interface, or to another port")
def data_of_another_interface(w):
    w.control.dataAccess[0].instanceRef.DataElements = w.controller.SenderPorts[0].Interface.DataElements[0]


@fault("instance-operation",
       PEDAL_BEHAVIOR + "/TestInvoked.instanceRef.Operations",
       "'Other' does not belong to the interface 'SelfTest' of the port 'Test'; refer to an element of that "
       "interface, or to another port")
def operation_of_another_interface(w):
    other = w.new(interface.Operation, "Other")
    other_interface = w.new(interface.ClientServerInterface, False, "OtherCalls", Operations=[other])
    w.brakes.PackagedElement.append(other_interface)
    reference = w.pedal.Behavior.Events[1].instanceRef
    for argument in list(reference.Arguments):
        argument.destroy()
    reference.Operations = other


@fault("instance-operation",
       PEDAL_BEHAVIOR + "/TestInvoked.instanceRef.Arguments[0].Arguments",
       "'Foreign' is not an argument of the operation 'Test'; refer to one of its arguments")
def argument_of_another_operation(w):
    kinds = interface.ArgumentDataDirectionKind, interface.ServerArgumentImplPolicyKind
    foreign = w.new(interface.ArgumentData, kinds[0].In, kinds[1].UseVoid, "%d", "Foreign",
                    Type=w.controller.Behavior.Parameters[0].Type)
    calls = w.new(interface.ClientServerInterface, False, "OtherCalls", Operations=[
        w.new(interface.Operation, "Other", Arguments=[foreign])])
    w.brakes.PackagedElement.append(calls)
    w.pedal.Behavior.Events[1].instanceRef.Arguments[0].Arguments = foreign


@fault("instance-mode", BEHAVIOR + "/Degraded.instanceRef[0].Mode",
       "'Startup' is not a mode of the group 'BrakePhase'; refer to one of its modes, or to another groupElement")
def mode_of_another_group(w):
    event = brake.named(w.controller.Behavior.Events).Degraded
    event.instanceRef[0].Mode = w.adaptive.VehicleComputer.FunctionGroup[0].ModeGroup.Mode[0]


@fault("instance-trigger", BEHAVIOR + "/WheelTicked.instanceRef.Trigger",
       "'Tock' does not belong to the interface 'WheelTick' of the port 'Tick'; refer to an element of that "
       "interface, or to another port")
def trigger_of_another_interface(w):
    tock = w.new(interface.Trigger, "Tock", CseCodeFactor=1)
    w.brakes.PackagedElement.append(w.new(interface.TriggerInterface, False, "Other", Triggers=[tock]))
    brake.named(w.controller.Behavior.Events).WheelTicked.instanceRef.Trigger = tock


@fault("instance-component", CONTROL + "/Demand.instanceRef.DataElements",
       "/Vehicle/BrakeByWire/Interfaces/PedalTravel/Travel is not data of the behavior 'BrakeControllerBehavior'; "
       "refer to a variable, parameter or memory that the behavior contains, or use a port")
def variable_that_is_none_of_the_behavior(w):
    w.control.irvWrite[0].instanceRef.DataElements = w.controller.ReceiverPorts[0].Interface.DataElements[0]


@fault("instance-behavior", CONTROLLER + ".instanceMapping.instance[0].Runnables",
       PEDAL_BEHAVIOR + "/Sample does not belong to the behavior "
       "'BrakeControllerBehavior' of this component; refer to an element of that behavior")
def runnable_of_another_component(w):
    w.controller.instanceMapping.instance[0].Runnables = w.sample


@fault("instance-port", WHOLE + "/pedalSensor_Pedal_to_brakeController_Pedal.Provider.ProvidedPort",
       "the component 'pedalSensor' has no port /Vehicle/BrakeByWire/Components/WheelActuator/Wheel: its type is "
       "'PedalSensor'; refer to a port of that type, or to another component",
       also=["connector-interface"])
def port_that_the_prototype_does_not_have(w):
    connector = w.connectors.pedalSensor_Pedal_to_brakeController_Pedal
    connector.Provider.ProvidedPort = w.wheel.SenderPorts[0]


@fault("instance-port", WHOLE + "/Stranger.Provider.ComponentPrototype",
       "/Vehicle/BrakeByWire/Other/elsewhere is not a component of the composition 'BrakeSystem' that contains the "
       "connector; refer to one of its Components")
def prototype_of_another_composition(w):
    elsewhere = w.new(composition.ComponentPrototype, w.pedal, "elsewhere")
    w.brakes.PackagedElement.append(w.new(composition.CompositionComponent, "Other", Components=[elsewhere]))
    ends = w.connectors.pedalSensor_Pedal_to_brakeController_Pedal
    stranger = example.assemble(w.new, elsewhere, w.pedal.SenderPorts[0], w.prototypes.brakeController,
                                ends.Requester.RequiredPort)
    stranger.Name = "Stranger"
    w.whole.Connectors.append(stranger)


@fault("instance-event", CONTROLLER + ".instanceMapping.instance[10].TimingEvent",
       "/Vehicle/BrakeByWire/Components/BrakeController/BrakeControllerBehavior/Every10ms is not an event of "
       "'PedalSensor', where the path ends; refer to an event of its behavior")
def event_that_the_path_does_not_lead_to(w):
    event = brake.named(w.controller.Behavior.Events).Every10ms
    reference = w.new(instance.InstanceEventInCompositionInstanceRef, event,
                      ComponentPrototype=[w.prototypes.pedalSensor])
    w.controller.instanceMapping.instance.append(reference)


@fault("instance-event", CONTROLLER + ".instanceMapping.instance[10].ComponentPrototype",
       "/Vehicle/BrakeByWire/BrakeSystem/wheelActuator is not a component of 'PedalSensor'; refer to a component "
       "that the type of the previous one contains")
def path_that_jumps(w):
    event = brake.named(w.wheel.Behavior.Events).Every10ms
    reference = w.new(instance.InstanceEventInCompositionInstanceRef, event,
                      ComponentPrototype=[w.prototypes.pedalSensor, w.prototypes.wheelActuator])
    w.controller.instanceMapping.instance.append(reference)


@fault("own-port", CONTROL + "/Pedal_Travel.instanceRef",
       "uses the port /Vehicle/BrakeByWire/Components/Other/Pedal of another component; use a port of "
       "'BrakeController' and connect the two ports")
def access_to_a_port_of_another_component(w):
    foreign = brake.receiver(w.new, w.controller.ReceiverPorts[0].Interface, "Pedal")
    w.brakes.PackagedElement[3].PackagedElement.append(
        brake.component_of(w.new, brake.Kind.Application, "Other", ReceiverPorts=[foreign]))
    w.control.dataAccess[0].instanceRef.Port = foreign


@fault("option-port", BEHAVIOR + ".PortAPIOptions[0].Port",
       "/Vehicle/BrakeByWire/Components/PedalSensor/Pedal is a port of another component; refer to a port of "
       "'BrakeController'")
def option_for_a_port_of_another_component(w):
    w.controller.Behavior.PortAPIOptions.append(w.new(behavior.PortAPIOption, Port=w.pedal.SenderPorts[0]))


@fault("own-behavior", BEHAVIOR + "/Every10ms.StartOnEvent",
       PEDAL_BEHAVIOR + "/Sample belongs to another behavior; refer to an element of 'BrakeControllerBehavior'")
def event_that_starts_a_runnable_of_another_behavior(w):
    event = brake.named(w.controller.Behavior.Events).Every10ms
    w.control.Events.remove(event)
    event.StartOnEvent = w.sample


@fault("port-info", CONTROLLER + "/Pedal.info[0].DataElements",
       "/Vehicle/BrakeByWire/Interfaces/WheelTorque/Torque is not an element of the interface 'PedalTravel' of the "
       "port 'Pedal'; refer to one of its elements")
def info_about_an_element_of_another_interface(w):
    w.controller.ReceiverPorts[0].info[0].DataElements = w.controller.SenderPorts[0].Interface.DataElements[0]


@fault("access-direction", CONTROL + "/Pedal_Travel.instanceRef",
       "expected a port that provides its interface, found the DataReceiverPort 'Pedal'; use another port, or "
       "another kind of access")
def write_to_a_required_port(w):
    w.control.dataAccess[0].Kind = behavior.DataAccessKind.ExplicitWrite


@fault("connector-end", WHOLE + "/SpeedIn_to_SpeedOut.ProvidedOuterPort",
       "/Vehicle/BrakeByWire/Components/WheelActuator/Wheel is not a port of the composition 'BrakeSystem'; refer to "
       "one of its own ports")
def outer_port_of_another_component(w):
    w.connectors.SpeedIn_to_SpeedOut.ProvidedOuterPort = w.wheel.SenderPorts[0]


@fault("connector-direction", WHOLE + "/Inward",
       "delegates the DataReceiverPort 'SpeedIn' to the DataSenderPort 'Wheel'; delegate a provided port to a "
       "provided one, and a required port to a required one")
def delegation_against_the_direction(w):
    inner = w.new(instance.CompositionPPortInstanceRef, w.wheel.SenderPorts[0], w.prototypes.wheelActuator)
    inward = w.new(composition.DelegationConnector, w.whole.ReceiverPorts[0], inner, "Inward")
    w.whole.Connectors.append(inward)


@fault("connector-interface", WHOLE + "/Crossed",
       "connects the ports /Vehicle/BrakeByWire/Components/PedalSensor/Pedal and "
       "/Vehicle/BrakeByWire/Components/WheelActuator/Torque, but 'PedalTravel' provides no 'Torque', which "
       "'WheelTorque' requires; give both ports the same interface, or the elements the same names")
def connector_of_interfaces_that_do_not_fit(w):
    p = w.prototypes
    crossed = example.assemble(w.new, p.pedalSensor, w.pedal.SenderPorts[0], p.wheelActuator,
                               w.wheel.ReceiverPorts[0])
    crossed.Name = "Crossed"
    w.whole.Connectors.append(crossed)


@fault("connector-interface", WHOLE + "/Crossed",
       "connects the ports /Vehicle/BrakeByWire/Components/PedalSensor/Test and "
       "/Vehicle/BrakeByWire/Components/WheelActuator/Torque, whose interfaces are a ClientServerInterface and a "
       "SenderReceiverInterface; connect ports with the same kind of interface")
def connector_of_interfaces_of_two_kinds(w):
    p = w.prototypes
    crossed = example.assemble(w.new, p.pedalSensor, w.pedal.ServerPorts[0], p.wheelActuator,
                               w.wheel.ReceiverPorts[0])
    crossed.Name = "Crossed"
    w.whole.Connectors.append(crossed)


@fault("order-circle", "/Vehicle/BrakeByWire/Timing/EndToEnd/PedalToWheel/Sample.Successor",
       "forms a cycle: 'Sample' -> 'Control' -> 'Apply' -> 'Sample'; remove one of the successors")
def order_that_never_ends(w):
    steps = w.timing.EndToEnd.TimingRequirement[0].OrderedElement
    steps[-1].Successor.append(steps[0])


@fault("order-circle", "/Vehicle/BrakeByWire/Timing/EndToEnd/PedalToWheel/Step0.Successor",
       "forms a cycle: 'Step0' -> 'Step1' -> 'Step2' -> 'Step3' -> 'Step4' -> ... 94 more ... -> 'Step99' -> "
       "'Step0'; remove one of the successors")
def long_order_that_never_ends(w):
    steps = [w.new(timingExtension.EOCExecutableEntityRef, f"Step{number}", Executable=w.sample)
             for number in range(100)]
    for step, after in zip(steps, [*steps[1:], steps[0]]):
        step.Successor.append(after)
    w.timing.EndToEnd.TimingRequirement[0].OrderedElement += steps


@fault("order-successor", "/Vehicle/BrakeByWire/Timing/EndToEnd/PedalToWheel/Apply.Successor",
       "/Vehicle/BrakeByWire/Timing/ControlTiming/Other/Elsewhere belongs to another constraint; refer to a step of "
       "'PedalToWheel'")
def successor_in_another_constraint(w):
    elsewhere = w.new(timingExtension.EOCExecutableEntityRef, "Elsewhere", Executable=w.control)
    w.timing.ControlTiming.TimingRequirement.append(
        w.new(timingExtension.ExecutionOrderConstraint, "Other", OrderedElement=[elsewhere]))
    w.timing.EndToEnd.TimingRequirement[0].OrderedElement[-1].Successor.append(elsewhere)


@fault("order-runnable", "/Vehicle/BrakeByWire/Timing/EndToEnd/PedalToWheel/Sample.Executable",
       CONTROL + " is not a runnable of the component 'pedalSensor', whose type is 'PedalSensor'; refer to a "
       "runnable of that type's behavior")
def step_of_another_component(w):
    w.timing.EndToEnd.TimingRequirement[0].OrderedElement[0].Executable = w.control


@fault("order-runnable", "/Vehicle/BrakeByWire/Timing/EndToEnd/PedalToWheel/Sample.Component",
       "/Vehicle/BrakeByWire/Other/elsewhere is not a component of the BaseComposition 'BrakeSystem' of "
       "'PedalToWheel'; refer to a component that it contains")
def step_of_a_component_elsewhere(w):
    elsewhere = w.new(composition.ComponentPrototype, w.pedal, "elsewhere")
    w.brakes.PackagedElement.append(w.new(composition.CompositionComponent, "Other", Components=[elsewhere]))
    w.timing.EndToEnd.TimingRequirement[0].OrderedElement[0].Component = elsewhere


@fault("composition-circle", WHOLE + ".Components",
       "contains itself: 'BrakeSystem' -> 'Inner' -> 'BrakeSystem'; give one of the components another type")
def composition_in_itself(w):
    inner = w.new(composition.CompositionComponent, "Inner", Components=[
        w.new(composition.ComponentPrototype, w.whole, "again")])
    w.brakes.PackagedElement.append(inner)
    w.whole.Components.append(w.new(composition.ComponentPrototype, inner, "inner"))


@fault("variant-circle", "/Vehicle/BrakeByWire/Variants/Estate.IncludedVariant",
       "forms a cycle: 'Estate' -> 'Estate'; remove one of the variants")
def variant_in_itself(w):
    estate = brake.named(brake.named(w.brakes.PackagedElement).Variants.PackagedElement).Estate
    estate.IncludedVariant.append(estate)


@fault("group-circle", CONTROLLER + "/Axle.innerGroup",
       "forms a cycle: 'Axle' -> 'Chassis' -> 'Axle'; remove one of the groups")
def group_in_itself(w):
    axle, chassis = w.controller.portGroup
    axle.innerGroup.append(chassis)


@fault("data-filter", CONTROLLER + "/Pedal.info[0].comSpec.filter.max",
       "is not set, and the kind NewIsWithin needs it; set it, or set another kind")
def filter_without_a_bound(w):
    bounded = w.controller.ReceiverPorts[0].info[0].comSpec.filter
    bounded.DataFilterKind, bounded.min = port.DataFilterKind.NewIsWithin, 3


@fault("data-filter", CONTROLLER + "/Pedal.info[0].comSpec.filter.min",
       "expected at most max, which is 2; found 3; exchange the two values")
def filter_with_bounds_exchanged(w):
    bounded = w.controller.ReceiverPorts[0].info[0].comSpec.filter
    bounded.DataFilterKind, bounded.min, bounded.max = port.DataFilterKind.NewIsOutside, 3, 2


@fault("data-filter", CONTROLLER + "/Pedal.info[0].comSpec.filter.offset",
       "expected a number from 0 to below Period, which is 4; found 4; set which of the N values passes, counted "
       "from 0")
def filter_with_an_offset_beyond_its_period(w):
    every = w.controller.ReceiverPorts[0].info[0].comSpec.filter
    every.DataFilterKind, every.Period, every.offset = port.DataFilterKind.OneEveryN, 4, 4


@fault("mode-group", "/Vehicle/BrakeByWire/Types/BrakePhase.InitialMode",
       "/Vehicle/BrakeByWire/Types/MachineState/Startup is not a mode of this group; refer to a mode of 'BrakePhase'")
def initial_mode_of_another_group(w):
    groups = brake.named(brake.named(w.brakes.PackagedElement).Types.PackagedElement)
    groups.BrakePhase.InitialMode = groups.MachineState.Mode[0]


@fault("mode-group", "/Vehicle/BrakeByWire/Types/BrakePhase/Braking.Value",
       "has the same number as 'Released'; give one of the two modes another number")
def two_modes_of_one_number(w):
    groups = brake.named(brake.named(w.brakes.PackagedElement).Types.PackagedElement)
    groups.BrakePhase.Mode[1].Value = 0


@fault("mode-count", BEHAVIOR + "/Degraded.instanceRef",
       "expected two modes, the one that is left and the one that is entered; found 1; add or remove modes, or "
       "change activation")
def transition_with_one_mode(w):
    brake.named(w.controller.Behavior.Events).Degraded.activation = behavior.ModeActivationKind.OnTransition


@fault("mode-count", BEHAVIOR + "/Degraded.instanceRef",
       "expected one mode, the one that is entered or left; found 1, of which 1 has no Mode; add or remove modes, or "
       "change activation")
def event_of_no_mode(w):
    brake.named(w.controller.Behavior.Events).Degraded.instanceRef[0].Mode = None


@fault("storage-size", "/Vehicle/BrakeByWire/Adaptive/Store.MinimumSustainedSize",
       "expected at most MaximumAllowedSize, which is 65536; found 65537; raise MaximumAllowedSize or lower "
       "MinimumSustainedSize")
def least_size_above_the_greatest(w):
    w.adaptive.Store.MinimumSustainedSize = 65537


TRAVEL = "/Vehicle/BrakeByWire/Interfaces/PedalTravel/Travel"
TYPES = "/Vehicle/BrakeByWire/Types"


def travel_of(w, kind, value):
    """Gives the travel of the pedal a new type and a value."""
    brake.named(w.brakes.PackagedElement).Types.PackagedElement.append(kind)
    travel = w.pedal.SenderPorts[0].Interface.DataElements[0]
    travel.InitValue.destroy()
    travel.Type, travel.InitValue = kind, value


@fault("array-length", TRAVEL + ".InitValue.Element",
       "expected 3 elements for the type " + TYPES + "/Row, found 2; add or remove elements")
def array_of_the_wrong_length(w):
    entry = w.new(types.ImplementationDataTypeElement, "Entry", ArraySize=3)
    values = [brake.number(w.new, number) for number in (1, 2)]
    travel_of(w, w.new(types.ImplementationDataType, "Row", Category="ARRAY", SubElements=[entry]),
              w.new(foundation.ArrayValueSpecification, Element=values))


@fault("data-constraint", TRAVEL + ".InitValue.Value",
       "expected a number below 100, as the constraint " + TYPES + "/Limits says; found 100; change the number, or "
       "refer to another type")
def number_beyond_its_limit(w):
    upper = w.new(types.Limit, "100", IntervalType=types.IntervalTypeEnum.Open)
    rule = w.new(types.DataConstrRule, InternalConstrs=w.new(types.InternalConstrs, UpperLimit=upper))
    limits = w.new(types.DataConstr, "Limits", DataConstrRule=[rule])
    brake.named(w.brakes.PackagedElement).Types.PackagedElement.append(limits)
    props = w.new(types.SwDataDefProps, DataConstr=limits)
    travel_of(w, w.new(types.ImplementationDataType, "Byte", SwDataDefProps=props), brake.number(w.new, 100))


@fault("table-text", TRAVEL + ".InitValue.Value",
       "expected one of the texts 'Off', 'On' of " + TYPES + "/Switch, found 'Onn'; set one of these texts")
def text_that_its_table_does_not_have(w):
    scales = [w.new(types.CompuScale, CompuConst=w.new(types.CompuConst, Vt=text)) for text in ("Off", "On")]
    method = w.new(types.CompuMethod, "Switch", CompuInternalToPhys=w.new(types.Compu, CompuScale=scales))
    brake.named(w.brakes.PackagedElement).Types.PackagedElement.append(method)
    travel_of(w, w.new(types.ApplicationPrimitiveDataType, "State", CompuMethod=method),
              w.new(foundation.TextValueSpecification, "Onn"))


TASK = "/Vehicle/BrakeByWire/Configuration/OsOfBrakeEcu/Brakes/Task10ms"


def task_of(w):
    return w.configuration.OsOfBrakeEcu.Container[0].SubContainer[0]


@fault("parameter-value", TASK + ".ParameterValue[0].Value",
       "expected a whole number for the EcucIntegerParamDef 'Priority', found the number 2.5; "
       "set a value of that kind, or another definition")
def fraction_for_a_whole_number(w):
    task_of(w).ParameterValue[0].Value = 2.5


@fault("parameter-value", TASK + ".ParameterValue[1].Value",
       "expected 0 or 1 for the EcucBooleanParamDef 'Autostart', found the number 2; "
       "set a value of that kind, or another definition")
def number_for_a_truth_value(w):
    task_of(w).ParameterValue[1].Value = 2


@fault("parameter-value", TASK + ".ParameterValue[4]",
       "expected a number for the EcucFloatParamDef 'Period', found a text; create an EcucNumericalParamValue, or "
       "refer to another definition")
def text_for_a_number(w):
    definition = task_of(w).ParameterValue[3].Definition
    task_of(w).ParameterValue.append(w.new(ecuc.EcucTextualParamValue, "fast", definition))


@fault("parameter-value", TASK + ".ParameterValue[0].Definition",
       "/Vehicle/BrakeByWire/Configuration/Os/Application/Depth is not defined in 'Task', the definition of "
       "'Task10ms'; refer to a definition from there, or move the value")
def parameter_of_another_container(w):
    application = w.configuration.Os.Container[0]
    application.Parameter.append(w.new(ecuc.EcucIntegerParamDef, "Depth"))
    task_of(w).ParameterValue[0].Definition = application.Parameter[0]


@fault("reference-value", TASK + ".ReferenceValue[0].Value",
       "expected an EcucContainerValue for the EcucReferenceDef 'Resource', found the Runnable 'Control'; refer to "
       "an EcucContainerValue, or define it as an EcucForeignReferenceDef")
def reference_out_of_the_configuration(w):
    task_of(w).ReferenceValue[0].Value = w.control


@fault("container-value", TASK + ".Definition",
       "/Vehicle/BrakeByWire/Configuration/Os/Application is not defined in 'Application', the definition of "
       "'Brakes'; refer to a definition from there, or move the value")
def container_at_another_place(w):
    task = task_of(w)
    for value in [*task.ParameterValue, *task.ReferenceValue]:
        value.destroy()
    task.Definition = w.configuration.Os.Container[0]


@fault("deployed-event", "/Vehicle/BrakeByWire/Adaptive/OverDds/TorqueTopic.Event",
       "/Vehicle/BrakeByWire/Interfaces/WheelTorque/Torque is not an event of the deployed service 'BrakeService'; "
       "refer to one of its Events")
def deployment_of_an_event_of_nobody(w):
    w.adaptive.OverDds.EventDeployment[0].Event = w.controller.SenderPorts[0].Interface.DataElements[0]


@fault("event-quality", "/Vehicle/BrakeByWire/Adaptive/DdsOffered.EventQosProps[0].EventDeployment",
       "/Vehicle/BrakeByWire/Other/TorqueTopic does not belong to 'OverDds', the deployment of 'DdsOffered'; refer "
       "to one of its EventDeployment")
def quality_of_an_event_of_another_deployment(w):
    service = w.adaptive.BrakeService
    topic = w.new(manifest.DdsEventDeployment, service.Events[0], "TorqueTopic")
    w.brakes.PackagedElement.append(w.new(manifest.DdsServiceInterfaceDeployment, "Other",
                                          ServiceInterface=service, EventDeployment=[topic]))
    w.adaptive.DdsOffered.EventQosProps[0].EventDeployment = topic


@fault("service-port", "/Vehicle/BrakeByWire/Adaptive/DdsOfferedAtOffered.Port",
       "expected a port that provides the service, as 'DdsOffered' does, found the ServiceRequiredPort 'Used'; refer "
       "to another port or another instance")
def service_offered_at_a_required_port(w):
    w.adaptive.DdsOfferedAtOffered.Port = w.adaptive.BrakeAssistant.RequiredPorts[0]


@fault("mapped-component", "/Vehicle/BrakeByWire/System/Vehicle/Mapping/OnWheel.Component",
       "/Vehicle/BrakeByWire/Other/elsewhere is not a component of the system's root composition 'BrakeSystem'; map "
       "a component that it contains")
def mapping_of_a_component_elsewhere(w):
    elsewhere = w.new(composition.ComponentPrototype, w.pedal, "elsewhere")
    w.brakes.PackagedElement.append(w.new(composition.CompositionComponent, "Other", Components=[elsewhere]))
    w.system.Vehicle.Mapping[0].SwMapping[1].Component.append(elsewhere)
