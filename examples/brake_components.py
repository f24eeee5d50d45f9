"""The component types of `brake_by_wire.py`: their data types, variants, interfaces and ports.

    ./tarvelon run examples/brake_components.py
"""

from types import SimpleNamespace

from Tarvelon.metamodel import foundation, types
from Tarvelon.metamodel.arplatform import (Factory, behavior, common, component, documentation, instance,
                                           interface, port, variant)

Direction = interface.ArgumentDataDirectionKind
Kind = component.AtomicComponentKind
Percent = "%3.1f"


def maker(model):
    """A function that makes an object of a class and sets its properties. A list extends the sequence of a property."""
    factory = Factory.createNewFactory(model)

    def new(kind, *arguments, **properties):
        # The factory makes objects of the packages below arplatform. Objects of foundation and types use constructors.
        own = kind.__module__.startswith(common.__name__.rpartition(".")[0])
        element = factory.create(kind, *arguments) if own else kind(model, *arguments)
        for name, value in properties.items():
            if isinstance(value, list):
                getattr(element, name).extend(value)
            else:
                setattr(element, name, value)
        return element

    return new


def package(new, parent, name, elements):
    """Makes a package with the elements; returns a namespace with the elements by their names."""
    parent.PackagedElement.append(new(common.Package, name, PackagedElement=elements))
    return named(elements)


def named(elements):
    return SimpleNamespace(**{element.Name: element for element in elements})


def number(new, value):
    return new(foundation.NumericalValueSpecification, value)


def modes(new, name, *literals):
    """A group of modes. The first mode is the initial mode."""
    group = new(common.ModeDeclarationGroup, name, OnTransitionValue=255)
    for value, literal in enumerate(literals):
        group.Mode.append(new(common.ModeDeclaration, literal, Value=value))
    group.InitialMode = group.Mode[0]
    return group


def make_documentation(new, brakes):
    """Documents the package: long name and description in a language, revisions, tool-specific data."""
    def sentence(text):
        return new(documentation.MultiLanguageOverviewParagraph,
                   L2=[new(documentation.LOverviewParagraph, language="EN", Body=text)])

    brakes.longName = new(documentation.MultiLanguageLongName,
                          L4=[new(documentation.LLongName, language="EN", Body="Brake by wire")])
    brakes.desc = sentence("Brakes each wheel by what the pedal asks for")
    brakes.introduction = new(documentation.DocumentationBlock)
    change = new(documentation.Modification, sentence("Diagnostics moved behind a port of their own"))
    revision = new(documentation.DocRevision, "2026-11-21", revisionLabel="2.0.0", modification=[change])
    settings = new(common.Sdg, "generator", sdgCaption=new(common.SdgCaption, "Generator"))
    settings.sdgContents += [new(common.Sd, "optimisation", "speed"), new(common.Sdx, brakes)]
    english = new(documentation.LPlainText, language="EN", Body="English")
    brakes.adminData = new(common.AdminData, language="EN", docRevision=[revision], sdg=[settings],
                           usedLanguage=new(documentation.MultiLanguagePlainText, L10=[english]))
    brakes.ReferenceBase.append(new(common.ReferenceBase, True, "default", brakes))


def make_types(new, brakes):
    """Data types, modes, and memory sections for code and data."""
    base = new(types.SwBaseType, "BaseUInt16", BaseTypeSize=16, NativeDeclaration="unsigned short")
    unit = new(types.CompuMethod, "Percent", Unit="%")
    word = new(types.ImplementationDataType, "UInt16", BaseType=base)
    share = new(types.ApplicationPrimitiveDataType, "Share", CompuMethod=unit)
    phases = modes(new, "BrakePhase", "Released", "Braking", "Degraded")
    mapping = new(common.DataTypeMappingSet, "Mapping", ModeRequestTypeMap=[
        new(common.ModeRequestTypeMap, ModeGroupType=phases, ImplementationType=word)])
    mapping.dataTypeMap.append(new(common.DataTypeMap, ApplicationType=share, ImplementationType=word))
    code = new(common.SwAddrMethod, "FastCode", SectionType=behavior.SectionTypeKind.Code)
    return package(new, brakes, "Types", [base, unit, word, share, phases, mapping, code,
                                          modes(new, "MachineState", "Startup", "Driving", "Shutdown")])


def make_variants(new, brakes, unit):
    """A system constant bound at code generation, a criterion bound after the build, and a variant that sets both."""
    axles = new(variant.SystemConst, "BrakedAxles")
    values = new(variant.SystemConstValueSet, "TwoAxles",
                 SysConstValue=[new(variant.SystemConstValue, 2.0, axles)])
    trailer = new(variant.PostBuildVariantCriterion, unit, "Trailer")
    coded = new(variant.PostBuildVariantCriterionValueSet, "NoTrailer", PostBuildVariantCriterionValue=[
        new(variant.PostBuildVariantCriterionValue, 0, trailer)])
    estate = new(variant.PredefinedVariant, "Estate", SysConstValueSet=[values],
                 PostBuildVariantCriterionValueSet=[coded])
    return package(new, brakes, "Variants", [axles, values, trailer, coded, estate])


def only_with_rear_axle(new, variants):
    time = variant.BindingTimeKind.CodeGenerationTime
    condition = new(variant.ConditionByFormula, time, "BrakedAxles == 2", SysConst=[variants.BrakedAxles])
    trailer = new(variant.PostBuildVariantCondition, 0, variants.Trailer)
    return new(variant.VariationPoint, "RearAxle", Condition=condition, PostBuildVariantCondition=[trailer])


def variant_proxies(new, variants, word):
    """Lets the controller's code read the values of the variant for which it was built."""
    kinds = {"Axles": variant.IntegerValueVariationPoint, "Pumps": variant.PositiveIntegerValueVariationPoint,
             "HasTrailer": variant.BooleanValueVariationPoint, "Torque": variant.FloatValueVariationPoint,
             "Pressure": variant.NumericalValueVariationPoint, "TopSpeed": variant.LimitValueVariationPoint}
    proxies = []
    for name, kind in kinds.items():
        value = new(kind, "BrakedAxles", BindingTime=variant.BindingTimeKind.PreCompileTime,
                    SysConst=[variants.BrakedAxles])
        proxies.append(new(variant.VariationPointProxy, name, ValueAccess=value, ImplementationDataType=word))
    return proxies


def make_interfaces(new, brakes, t):
    """The interfaces between components: data, operations, modes, parameters, triggers, non-volatile data."""
    def data(kind, name):
        return new(kind, Percent, name, Type=t.Share, InitValue=number(new, 0))

    def flow(name, *elements):
        return new(interface.SenderReceiverInterface, False, name,
                   DataElements=[data(interface.FlowData, element) for element in elements])

    failed = new(common.ApplicationError, 1, "SensorFailed")
    policy = interface.ServerArgumentImplPolicyKind.UseArgumentType
    test = new(interface.Operation, "Test", PossibleError=[failed], Arguments=[
        new(interface.ArgumentData, Direction.In, policy, Percent, "Limit", Type=t.Share),
        new(interface.ArgumentData, Direction.Out, policy, Percent, "Deviation", Type=t.Share)])
    phase = new(interface.ModeDeclarationGroupElement, "Phase", ModeGroup=t.BrakePhase)
    gain = data(interface.ParameterData, "Gain")
    gain.Kind = behavior.ParameterKind.Const
    return package(new, brakes, "Interfaces", [
        flow("PedalTravel", "Travel", "Speed"), flow("WheelTorque", "Torque"), flow("WheelSpeed", "Speed"),
        new(interface.ClientServerInterface, False, "SelfTest", Operations=[test], PossibleError=[failed]),
        new(interface.ModeSwitchInterface, "BrakeModes", ModeGroup=phase),
        new(interface.ParameterInterface, False, "Calibration", DataElements=[gain]),
        new(interface.TriggerInterface, False, "WheelTick", Triggers=[
            new(interface.Trigger, "Tick", CseCode=interface.CseCodeType.CSE100, CseCodeFactor=6)]),
        new(interface.NvDataInterface, False, "PadWear", DataElements=[data(interface.FlowData, "Wear")])])


def component_of(new, kind, name, **ports):
    return new(component.AtomicComponent, new(instance.ComponentInstanceRef), name, Kind=kind, **ports)


def sender(new, interface_, name):
    """A port that sends the last value of each element."""
    infos = []
    for element in interface_.DataElements:
        spec = new(port.DataSenderNonqueuedPortComSpec, InitValue=number(new, 0), UsesEndToEndProtection=True)
        limit = new(port.DataSenderPortAnnotation, computed=True, limitKind=port.DataLimitKind.Max)
        infos.append(new(port.DataSenderPortInfo, element, comSpec=spec, annotation=limit))
    return new(port.DataSenderPort, interface_, name, info=infos)


def receiver(new, interface_, name):
    """A port that reads the last value of each element, and detects a missing or unchanged value."""
    differs, filtered = port.DataFilterKind.MaskedNewDiffersMaskedOld, port.ProcessingKind.Filtered
    infos = []
    for element in interface_.DataElements:
        changed = new(port.DataFilter, DataFilterKind=differs, mask=0xfff)
        spec = new(port.DataReceiverNonqueuedPortComSpec, AliveTimeout=0.02, HandleNeverReceived=True,
                   HandleTimeoutKind=port.HandleTimeoutKind.Replace, InitValue=number(new, 0), filter=changed)
        age = new(port.DataReceiverPortAnnotation, signalAge=0.01, processingKind=filtered)
        infos.append(new(port.DataReceiverPortInfo, element, comSpec=spec, annotation=age))
    return new(port.DataReceiverPort, interface_, name, info=infos)


def client(new, interface_, name):
    return new(port.ClientPort, interface_, name, info=[new(
        port.ClientPortInfo, interface_.Operations[0], comSpec=new(port.ClientPortComSpec),
        annotation=new(port.ClientPortAnnotation))])


def server(new, interface_, name):
    return new(port.ServerPort, interface_, name, info=[new(
        port.ServerPortInfo, interface_.Operations[0], comSpec=new(port.ServerPortComSpec, QueueLength=2),
        annotation=new(port.ServerPortAnnotation))])


def modes_in(new, interface_, name):
    info = new(port.ModeReceiverPortInfo, interface_.ModeGroup.ModeGroup,
               annotation=new(port.ModeReceiverPortAnnotation))
    return new(port.ModeReceiverPort, interface_, name, info=[info])


def nv_ports(new, wear):
    """Two ports for non-volatile data: one restores the data, one stores it."""
    element = wear.DataElements[0]
    restored = new(port.NvDataReceiverPortComSpec, InitValue=number(new, 0))
    restore = new(port.NvDataReceiverPortInfo, element, ComSpec=restored,
                  Annotation=new(port.NvDataReceiverPortAnnotation))
    stored = new(port.NvDataSenderPortComSpec, InitValue=number(new, 0), InitValueROM=number(new, 0))
    store = new(port.NvDataSenderPortInfo, element, ComSpec=stored,
                Annotation=new(port.NvDataSenderPortAnnotation))
    return {"NvReceiverPorts": [new(port.NvDataReceiverPort, wear, "WearRestored", Info=[restore])],
            "NvSenderPorts": [new(port.NvDataSenderPort, wear, "WearStored", Info=[store])]}


def make_controller(new, i):
    """The application component: reads the pedal and the wheel, and requests torque."""
    read = new(port.ParameterReceiverPortInfo, i.Calibration.DataElements[0],
               annotation=new(port.ParameterReceiverPortAnnotation),
               comSpec=new(port.ParameterReceiverPortComSpec, InitValue=number(new, 1)))
    # The port info of a trigger has no data element, since a trigger carries no data.
    tick = new(port.TriggerReceiverPortInfo, annotation=new(port.TriggerReceiverPortAnnotation))
    controller = component_of(
        new, Kind.Application, "BrakeController", **nv_ports(new, i.PadWear),
        ReceiverPorts=[receiver(new, i.PedalTravel, "Pedal"), receiver(new, i.WheelSpeed, "Wheel")],
        SenderPorts=[sender(new, i.WheelTorque, "Torque")],
        ClientPorts=[client(new, i.SelfTest, "PedalTest")],
        ModeReceiverPorts=[modes_in(new, i.BrakeModes, "Modes")],
        ParameterReceiverPorts=[new(port.ParameterReceiverPort, i.Calibration, "Calibration", info=[read])],
        TriggerReceiverPorts=[new(port.TriggerReceiverPort, i.WheelTick, "Tick", Info=[tick])])
    axle = new(port.PortGroup, "Axle", outerPort=list(controller.ReceiverPorts))
    controller.portGroup += [axle, new(port.PortGroup, "Chassis", innerGroup=[axle])]
    return controller


def make_parameters(new, i):
    """A component that only has calibration parameters."""
    gain = i.Calibration.DataElements[0]
    given = new(port.ParameterSenderPortInfo, gain, annotation=new(port.ParameterSenderPortAnnotation),
                comSpec=new(port.ParameterSenderPortComSpec, InitValue=number(new, 1)))
    calibration = new(port.ParameterSenderPort, i.Calibration, "Calibration", info=[given])
    parameters = new(component.ParameterComponent, "BrakeParameters", ParameterSenderPorts=[calibration])
    parameters.instanceMapping.append(new(instance.ParameterDataPortInstanceRef, gain, calibration))
    return parameters


def make_wheel(new, i):
    """The actuator component: applies the torque, and sends the applied torque through a queued port."""
    torque = i.WheelTorque.DataElements[0]
    queued = new(port.DataReceiverQueuedPortComSpec, QueueLength=4)
    loop = new(port.DataSenderReceiverPort, i.WheelTorque, "TorqueLoop", info=[
        new(port.DataReceiverPortInfo, torque, comSpec=queued),
        new(port.DataSenderPortInfo, torque, comSpec=new(port.DataSenderQueuedPortComSpec))])
    return component_of(new, Kind.SensorActuator, "WheelActuator", SenderReceiverPorts=[loop],
                        SenderPorts=[sender(new, i.WheelSpeed, "Wheel")],
                        ReceiverPorts=[receiver(new, i.WheelTorque, "Torque")])


def make_components(new, brakes, i):
    """The component types with their ports."""
    switched = new(port.ModeSenderPortInfo, i.BrakeModes.ModeGroup.ModeGroup)
    modes_out = new(port.ModeSenderPort, i.BrakeModes, "Modes", Info=[switched])
    wear = new(port.NvDataSenderReceiverPortInfo, i.PadWear.DataElements[0])
    stored = new(port.NvDataSenderReceiverPort, i.PadWear, "Wear", Info=[wear])
    pedal = component_of(new, Kind.SensorActuator, "PedalSensor",
                         SenderPorts=[sender(new, i.PedalTravel, "Pedal")],
                         ServerPorts=[server(new, i.SelfTest, "Test")])
    diagnostics = component_of(new, Kind.Service, "Diagnostics", ModeSenderPorts=[modes_out],
                               ClientPorts=[client(new, i.SelfTest, "PedalTest")])
    memory = component_of(new, Kind.NvBlock, "WearMemory", NvSenderReceiverPorts=[stored])
    return package(new, brakes, "Components", [
        pedal, make_controller(new, i), make_wheel(new, i), diagnostics, memory, make_parameters(new, i)])


def main():
    with Factory.createNewModel() as model:
        new = maker(model)
        root = new(common.Package, "BrakeByWire")
        interfaces = make_interfaces(new, root, make_types(new, root))
        for each in vars(make_components(new, root, interfaces)).values():
            print(f"{each.Name}: {', '.join(port_.Name for port_ in each.Port)}")


if __name__ == "__main__":
    main()
