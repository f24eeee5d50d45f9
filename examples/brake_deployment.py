"""The deployment of `brake_by_wire.py`: ECUs with their configuration, and the adaptive platform with its services.

    ./tarvelon run examples/brake_deployment.py
"""

import pathlib
import sys

from Tarvelon.metamodel.arplatform import (Factory, common, component, ecuc, instance, interface, manifest,
                                           port, system)

# The folder of a script is not on the path. Appended at the end, its files cannot hide a standard module.
sys.path.append(str(pathlib.Path(__file__).parent))
import brake_components as brake

Overwrite = interface.PersistencyUpdateStrategyEnum.Overwrite


def make_system(new, brakes, whole):
    """Maps the components to ECUs."""
    p = brake.named(whole.Components)
    central, corner = new(system.EcuInstance, "BrakeEcu"), new(system.EcuInstance, "WheelEcu")
    corner_mapping = new(system.SwcToEcuMapping, corner, "OnWheel", Component=[p.wheelActuator])
    central_mapping = new(system.SwcToEcuMapping, central, "OnCentral", Component=[
        each for each in whole.Components if each != p.wheelActuator])
    root = new(system.RootSwCompositionPrototype, whole, "Root")
    mapping = new(system.SystemMapping, "Mapping", SwMapping=[central_mapping, corner_mapping])
    vehicle = new(system.System, "Vehicle", RootSoftwareComposition=root, Mapping=[mapping])
    return brake.package(new, brakes, "System", [central, corner, vehicle])


def make_configuration(new, brakes, whole):
    """The operating system of the ECU: definitions of parameters, and the configuration of one task."""
    kinds = {"Priority": ecuc.EcucIntegerParamDef, "Autostart": ecuc.EcucBooleanParamDef,
             "Schedule": ecuc.EcucEnumerationParamDef, "Period": ecuc.EcucFloatParamDef}
    parameters = [new(kind, name) for name, kind in kinds.items()]
    resource, runs = new(ecuc.EcucReferenceDef, "Resource"), new(ecuc.EcucForeignReferenceDef, "Runs")
    task_def = new(ecuc.EcucParamConfContainerDef, "Task", Parameter=parameters, Reference=[resource, runs])
    lock_def = new(ecuc.EcucParamConfContainerDef, "Resource")
    os_def = new(ecuc.EcucModuleDef, "Os", Container=[
        new(ecuc.EcucParamConfContainerDef, "Application", SubContainer=[task_def, lock_def])])

    lock = new(ecuc.EcucContainerValue, lock_def, "TorqueLock")
    control = brake.named(whole.Components).brakeController.Type.Behavior.Runnables[1]
    task = new(ecuc.EcucContainerValue, task_def, "Task10ms")
    for definition, value in zip(parameters, (20, 1, "FULL", 0.01)):
        kind = ecuc.EcucTextualParamValue if isinstance(value, str) else ecuc.EcucNumericalParamValue
        task.ParameterValue.append(new(kind, value, definition))
    for definition, target in ((resource, lock), (runs, control)):
        task.ReferenceValue.append(new(ecuc.EcucReferenceValue, target, definition))
    application = new(ecuc.EcucContainerValue, os_def.Container[0], "Brakes", SubContainer=[task, lock])
    values = new(ecuc.EcucModuleConfigurationValues, os_def, "OsOfBrakeEcu", Container=[application])
    return brake.package(new, brakes, "Configuration", [os_def, values])


def make_service(new, t):
    """The service for other functions of the vehicle, and its persistent data."""
    def data(kind, name, *arguments):
        return new(kind, *arguments, brake.Percent, name, Type=t.Share)

    denied = new(common.ApplicationError, 2, "Denied")
    service = new(interface.ServiceInterface, "BrakeService", PossibleError=[denied],
                  Namespaces=[new(common.SymbolProps, "bbw", "Brakes")],
                  Events=[data(interface.FlowData, "TorqueApplied")],
                  Fields=[data(interface.FieldData, "Assist", True, True, False)],
                  Methods=[new(interface.Operation, "Release", FireAndForget=False, PossibleError=[denied])])
    history = new(interface.PersistencyKeyValueInterface, "BrakeHistory", MinimumSustainedSize=4096,
                  DataElements=[data(interface.PersistencyData, "Stops")])
    return service, history


def make_application(new, service, history):
    """An application that provides the service, uses another instance of it, and stores a history."""
    stops, event, method = history.DataElements[0], service.Events[0], service.Methods[0]
    written = new(port.PersistencyProvidedPortInfo, stops,
                  comSpec=new(port.PersistencyProvidedPortComSpec, InitValue=brake.number(new, 0)))
    read = new(port.PersistencyReceiverPortInfo, stops,
               comSpec=new(port.PersistencyReceiverPortComSpec, InitValue=brake.number(new, 0)))
    both = new(port.PersistencyProvidedRequiredPortInfo, stops)
    return new(
        component.AdaptiveApplication, new(instance.ComponentInstanceRef), "BrakeAssistant",
        ProvidedPorts=[new(port.ServiceProvidedPort, service, "Offered", info=[
            new(port.DataSenderPortInfo, event), new(port.ServerPortInfo, method)])],
        RequiredPorts=[new(port.ServiceRequiredPort, service, "Used", info=[
            new(port.DataReceiverPortInfo, event), new(port.ClientPortInfo, method)])],
        PersistencyProvidedPorts=[new(port.PersistencyProvidedPort, history, "Written", info=[written])],
        PersistencyRequiredPorts=[new(port.PersistencyRequiredPort, history, "Read", info=[read])],
        PersistencyProvidedRequiredPorts=[
            new(port.PersistencyProvidedRequiredPort, history, "Kept", info=[both])])


def make_machine(new, states):
    """A machine with its states, the timeouts of one state, and a share of its processors."""
    group = new(interface.ModeDeclarationGroupElement, "MachineState", ModeGroup=states)
    timeout = new(manifest.PerStateTimeout, states.Mode[2], EnterTimeout=0.5, ExitTimeout=2)
    share = new(manifest.ResourceGroup, "Safety", CpuUsage=30, MemUsage=64)
    return new(manifest.Machine, "VehicleComputer", FunctionGroup=[group], PerStateTimeout=[timeout],
               DefaultApplicationEnterTimeout=1,
               OsModuleInstantiation=[new(manifest.OsModuleInstantiation, "Os", ResourceGroup=[share])])


def make_process(new, application, machine, states):
    """The executable, the process that runs it, and the conditions and options of the start."""
    root = new(manifest.RootSwComponentPrototype, application, "Root")
    program = new(manifest.Executable, root, "brake_assistant",
                  BuildType=manifest.BuildTypeEnum.BuildTypeRelease)
    design = new(manifest.ProcessDesign, "Design", Executable=program)
    option = new(manifest.StartupOption, manifest.CommandLineOptionKindEnum.CommandLineLongForm,
                 OptionName="limit", OptionArgument="80")
    start = new(manifest.StartupConfig, "RealTime", StartupOption=[option], SchedulingPriority=40,
                SchedulingPolicy=manifest.SchedulingPolicyKindEnum.SchedulingPolicyFifo)
    when = new(manifest.StateDependentStartupConfig, machine.OsModuleInstantiation[0].ResourceGroup[0], start)
    when.FunctionGroupState.append(new(instance.ModeDeclarationInstanceRef, Mode=states.Mode[1],
                                       groupElement=machine.FunctionGroup[0]))
    log, level = manifest.LogTraceLogModeEnum, manifest.LogTraceDefaultLogLevelEnum.Warn
    process = new(manifest.Process, program, "Assistant", ProcessDesign=design,
                  StateDependentStartupConfig=[when], LogTraceDefaultLogLevel=level,
                  LogTraceLogMode=[log.Console, log.Network])
    place = new(manifest.ProcessToMachineMapping, process, "AssistantOnComputer", Machine=machine)
    return [program, design, new(manifest.StartupConfigSet, "Starts", StartupConfig=[start]), process,
            new(manifest.ProcessToMachineMappingSet, "Places", ProcessToMachineMapping=[place])]


def make_deployment(new, service, application, design):
    """Deploys the service over DDS with quality settings, and also over a user-defined binding."""
    transport = manifest.TransportLayerProtocolEnum
    event = new(manifest.DdsEventDeployment, service.Events[0], "TorqueTopic", TopicName="bbw/torque",
                TransportProtocol=[transport.Udp, transport.Tcp])
    dds = new(manifest.DdsServiceInterfaceDeployment, "OverDds", ServiceInterface=service,
              EventDeployment=[event])
    other = new(manifest.UserDefinedServiceInterfaceDeployment, "OverShm", ServiceInterface=service)

    def over_dds(kind, name):
        quality = new(manifest.DdsEventQosProps, event, QosProfile="reliable")
        return new(kind, "1", "7", name, EventQosProps=[quality])

    offered, used = application.ProvidedPorts[0], application.RequiredPorts[0]
    sides = [(over_dds(manifest.DdsProvidedServiceInstance, "DdsOffered"), dds, offered),
             (over_dds(manifest.DdsRequiredServiceInstance, "DdsUsed"), dds, used),
             (new(manifest.ProvidedUserDefinedServiceInstance, "ShmOffered"), other, offered),
             (new(manifest.RequiredUserDefinedServiceInstance, "ShmUsed"), other, used)]
    for side, deployment, _ in sides:
        side.Deployment = deployment
    mappings = [new(manifest.ServiceInstanceToPortMapping, f"{side.Name}At{port_.Name}", ServiceInstance=side,
                    Port=port_, ProcessDesign=design) for side, _, port_ in sides]
    return [dds, other, *(side for side, _, _ in sides), *mappings]


def make_persistency(new, application, process, t):
    stops = new(manifest.PersistencyKeyValuePair, brake.number(new, 0), t.UInt16, "Stops",
                UpdateStrategy=Overwrite)
    store = new(manifest.PersistencyKeyValueDatabase, "Store", PersistencyUri="/persistency/brakes",
                KeyValuePair=[stops], MaximumAllowedSize=65536)
    return [store, new(manifest.PersistencyPortToKeyValueDatabaseMapping, process,
                       application.PersistencyProvidedRequiredPorts[0], store, "KeptInStore")]


def make_adaptive(new, brakes, t):
    """The adaptive side: service, application, machine, process, deployment, storage."""
    service, history = make_service(new, t)
    application = make_application(new, service, history)
    machine = make_machine(new, t.MachineState)
    running = make_process(new, application, machine, t.MachineState)
    _, design, _, process, _ = running
    return brake.package(new, brakes, "Adaptive", [
        service, history, application, machine, *running, *make_deployment(new, service, application, design),
        *make_persistency(new, application, process, t)])


def main():
    with Factory.createNewModel() as model:
        new = brake.maker(model)
        root = new(common.Package, "BrakeByWire")
        for name, element in vars(make_adaptive(new, root, brake.make_types(new, root))).items():
            print(f"{type(element).__name__:42} {name}")


if __name__ == "__main__":
    main()
