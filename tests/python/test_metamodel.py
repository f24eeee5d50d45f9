"""The metamodel as a whole: the numbers of classes and members, and the peculiarities of packages."""

import functools

import pytest

import K7Q
import _tarvelon_host
from Tarvelon.metamodel.arplatform import Factory, behavior, component, interface, manifest, port

ROOT = "Tarvelon.metamodel.arplatform"
PACKAGES = ["documentation", "common", "variant", "interface", "port", "component", "behavior", "instance",
            "composition", "ecuc", "manifest", "timingExtension", "system"]


@functools.lru_cache(maxsize=None)
def host_classes():
    return [each for package in PACKAGES for each in _tarvelon_host.describe(f"{ROOT}.{package}")["classes"]]


def classes():
    """The mutable classes of the metamodel: those whose first superclass is their immutable class."""
    return [each for each in host_classes() if any(one["name"] == "MetaClass" for one in each["methods"])
            and each["superclasses"][0].endswith(".Immutable" + each["name"])]


def enumerations():
    return [each for each in host_classes() if each["description"] == "An enumeration"]


def constructors(cls):
    return [method for method in cls["methods"] if method["kind"] == "constructor"]


def test_every_class_and_enumeration_is_published_with_its_companions():
    assert len(classes()) == 284
    assert len(enumerations()) == 28
    factories = _tarvelon_host.describe(ROOT)["classes"]
    assert len(host_classes()) + len(factories) == 3266


def test_literals_are_counted():
    literals = [one for each in enumerations() for one in each["methods"]
                if one["kind"] == "static" and one["result"] == each["fullName"] and not one["arguments"]]
    assert len(literals) == 132


def test_abstract_classes_have_no_constructor():
    assert sum(not constructors(each) for each in classes()) == 61
    assert sum(len(constructors(each)) for each in classes()) == 408


def test_classes_with_two_bases_are_thirteen():
    assert sum(len(each["superclasses"]) == 3 for each in classes()) == 13


def test_properties_are_declared_on_the_immutable_classes():
    assert sum(len(each["properties"]) for each in host_classes()) == 494


def test_meta_properties_are_counted():
    lists = {each["name"].removesuffix("MetaProperty"): len(each["metaProperties"]) for each in host_classes()
             if each["metaProperties"]}
    assert len(lists) == 284
    assert sum(lists.values()) == 5474
    assert lists["ApplicationComponentBehavior"] == 37
    assert lists["CompositionComponent"] == max(lists.values()) == 41
    assert min(lists.values()) == 11


def test_the_factory_makes_every_concrete_class():
    factory = next(each for each in _tarvelon_host.describe(ROOT)["classes"] if each["name"] == "Factory")
    assert len(factory["methods"]) == 416
    assert len({method["name"] for method in factory["methods"]}) == 229


@pytest.fixture
def factory():
    with Factory.createNewModel() as model:
        yield Factory.createNewFactory(model)


def test_a_behavior_reads_its_variables_and_parameters_by_kind(factory):
    inside = factory.create("behavior.ApplicationComponentBehavior")
    for kind in behavior.IrvKind:
        inside.IRV.append(factory.create("behavior.IrvData", kind, "", f"{kind}"))
    for kind in behavior.ParameterKind:
        parameter = factory.create("interface.ParameterData", "", f"{kind}")
        parameter.Kind = kind
        inside.Parameters.append(parameter)

    read = {name: [each.Name for each in getattr(inside, name)()] for name in
            ("implicitIrv", "explicitIrv", "constParam", "sharedParam", "pimParam")}

    assert read == {"implicitIrv": ["Implicit"], "explicitIrv": ["Explicit"], "constParam": ["Const"],
                    "sharedParam": ["Shared"], "pimParam": ["Pim"]}


@pytest.mark.parametrize("kind", list(behavior.DataAccessKind), ids=str)
def test_a_runnable_reads_its_accesses_by_kind_in_their_order(factory, kind):
    runnable = factory.create("behavior.Runnable")
    for number, each in enumerate([*behavior.DataAccessKind, kind]):
        access = factory.create("behavior.FlowDataAccess")
        access.Kind, access.Name = each, f"{each}{number}"
        runnable.dataAccess.append(access)
    name = str(kind)[0].lower() + str(kind)[1:]

    found = getattr(runnable, name)()

    assert type(found) is behavior.SequenceOfFlowDataAccess
    assert [each.Name for each in found] == [f"{kind}{list(behavior.DataAccessKind).index(kind)}", f"{kind}5"]


def test_what_a_read_method_gives_is_a_sequence_of_its_own(factory):
    runnable = factory.create("behavior.Runnable")
    runnable.dataAccess.append(factory.create("behavior.FlowDataAccess"))

    found = runnable.implicitWrite()
    found.clear()

    assert len(runnable.dataAccess) == len(runnable.implicitWrite()) == 1


def test_read_methods_stand_on_the_mutable_class_and_want_a_view_that_can_be_written(factory):
    inside = factory.create("behavior.ApplicationComponentBehavior")

    assert not hasattr(inside.asImmutable(), "implicitIrv")
    with pytest.raises(K7Q.Exception, match="read-only because of its deviant"):
        inside.asDeviant(factory.getModel().frozen()).implicitIrv()
    inside.destroy()
    with pytest.raises(K7Q.Exception, match="Cannot access NULL ref"):
        inside.implicitIrv()


def test_a_component_shows_its_ports_in_the_order_of_their_properties(factory):
    sensor = factory.create("component.AtomicComponent")
    client = factory.create("port.ClientPort")
    sender = factory.create("port.DataSenderPort")
    receiver = factory.create("port.DataReceiverPort")
    sensor.ClientPorts.append(client)
    sensor.SenderPorts.append(sender)
    sensor.ReceiverPorts.append(receiver)

    assert list(sensor.Port) == [receiver, sender, client]
    with pytest.raises(AttributeError):
        sensor.Port.append(client)


def test_a_port_info_shows_its_com_spec_and_annotation(factory):
    info = factory.create("port.ClientPortInfo")
    assert info.portCommSpec is None and info.portAnnotation is None

    info.comSpec = factory.create("port.ClientPortComSpec")
    info.annotation = factory.create("port.ClientPortAnnotation")

    assert info.portCommSpec is info.comSpec and info.portAnnotation is info.annotation
    with pytest.raises(K7Q.Exception, match="read-only"):
        info.portCommSpec = None


def test_the_interface_of_a_port_is_its_type_narrowed(factory):
    client = factory.create("port.ClientPort")
    contract = factory.create("interface.ClientServerInterface")

    client.Type = contract

    assert client.Interface is contract
    with pytest.raises(TypeError, match=r"expected .*ClientServerInterface, got .*TriggerInterface"):
        client.Type = factory.create("interface.TriggerInterface")
    assert client.Type is contract


def test_a_property_holds_values_of_an_enumeration(factory):
    Protocol = manifest.TransportLayerProtocolEnum
    deployment = factory.create("manifest.DdsEventDeployment")
    protocols = deployment.TransportProtocol
    assert type(protocols) is manifest.SequenceOfTransportLayerProtocolEnum and len(protocols) == 0

    protocols += [Protocol.Udp, Protocol.Tcp, Protocol.Udp]
    protocols[1] = Protocol.Udp
    del protocols[0]

    assert list(deployment.TransportProtocol) == [Protocol.Udp, Protocol.Udp]
    assert protocols.removeAll(Protocol.Udp) == 2 and not protocols
    view = deployment.asImmutable().TransportProtocol
    assert type(view) is manifest.ImmutableSequenceOfTransportLayerProtocolEnum
    with pytest.raises(TypeError):
        protocols.append(None)
    with pytest.raises(TypeError):
        protocols.append(list(manifest.LogTraceLogModeEnum)[0])


def test_an_iterator_over_a_propertys_values_is_stale_after_a_change(factory):
    protocols = factory.create("manifest.DdsEventDeployment").TransportProtocol
    protocols += list(manifest.TransportLayerProtocolEnum)
    place = protocols.begin()
    protocols.push_front(manifest.TransportLayerProtocolEnum.Udp)

    with pytest.raises(K7Q.StaleIterator):
        place.item()
    assert protocols.erase(protocols.begin()).item() == protocols[0]


def test_a_literal_that_is_a_keyword_has_an_underscore():
    assert str(interface.CseCodeType.None_) == "None"
    assert interface.CseCodeType.fromString("None") == interface.CseCodeType.None_
    assert getattr(interface.CseCodeType, "None") == interface.CseCodeType.None_
    with_none = [each["name"] for each in enumerations() if any(m["name"] == "None" for m in each["methods"])]
    assert len(with_none) == 7


def test_access_kinds_run_from_nought():
    assert [str(kind) for kind in behavior.DataAccessKind] == [
        "ImplicitWrite", "ImplicitRead", "ExplicitWrite", "ExplicitReadByArg", "ExplicitReadByValue"]
    assert behavior.DataAccessKind.ExplicitWrite > behavior.DataAccessKind.ImplicitRead


def test_an_object_comes_back_as_what_it_is(factory):
    reference = factory.create("ecuc.EcucReferenceValue")
    provided = factory.create("port.ServiceProvidedPort")
    reference.Value = provided
    assert reference.Value is provided
    assert type(reference.asImmutable().Value) is port.ImmutableServiceProvidedPort


def test_values_that_run_behind_their_names():
    kinds = list(interface.CseCodeType)
    assert [str(kinds[value]) for value in (0, 11, 12, 21)] == ["None", "CSE10", "CSE20", "CSE100"]
    assert str(kinds[27]) == "CSE1000" and len(kinds) == 28


def test_classes_of_other_packages_are_taken_where_a_property_names_them(factory):
    method = factory.create("common.SwAddrMethod", "Code")
    method.SectionType = behavior.SectionTypeKind.Code
    assert method.SectionType == behavior.SectionTypeKind.Code
    assert component.AtomicComponent.__mro__.index(component.Component) > 0
    assert issubclass(port.ClientPort, port.Port)
