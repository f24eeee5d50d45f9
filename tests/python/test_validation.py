"""Validation of the brake example with one fault for each rule, and of models made for these tests."""

import brake_faults as faults
import pytest
from brake_faults import BEHAVIOR, FAULTS, brake, build, example

import K7Q
from Tarvelon.metamodel import foundation
from Tarvelon.metamodel.arplatform import (Factory, behavior, common, composition, instance, interface, port,
                                           variant)

# Rules that editing cannot break; tests/native/ValidationTest.cpp breaks them.
FORCED = {"foreign-reference", "wrong-class", "ownership", "multiplicity", "unknown-literal"}


@pytest.fixture
def world():
    with Factory.createNewModel() as model:
        yield build(model)


@pytest.mark.parametrize("rule, path, message, severity, also, change", FAULTS)
def test_a_fault_is_reported_with_what_a_person_needs(world, rule, path, message, severity, also, change):
    change(world)
    found = world.model.validate()
    lines = [str(each) for each in found]

    assert f"{severity}: {path}: {message} [{rule}]" in lines
    assert {each.rule for each in found} <= {rule, *also}
    # A reference with an opposite is wrong at both ends.
    ends = 2 if path.endswith(".StartOnEvent") and rule == "own-behavior" else 1
    assert len([each for each in found if each.rule == rule]) == ends


def test_the_example_is_clean(world):
    assert world.model.validate() == []


def test_every_rule_of_the_library_has_a_fault():
    ids = [each.id for each in K7Q.rules()]

    assert len(ids) == len(set(ids))
    assert {each.values[0] for each in FAULTS} | FORCED | {"rule-failed"} == set(ids)


def test_what_may_be_so_is_no_fault(world):
    w = world
    # The disabling mode does not depend on the direction of the data that raises the event.
    modes = w.controller.ModeReceiverPorts[0]
    invoked = w.pedal.Behavior.Events[1]
    w.pedal.ModeReceiverPorts.append(w.new(port.ModeReceiverPort, modes.Interface, "Modes"))
    invoked.DisabledMode.append(example.mode_of(w.new, w.pedal.ModeReceiverPorts[0], 0))
    # A port of both directions may be connected to inner ports that require less than it provides.
    wide = w.new(interface.SenderReceiverInterface, False, "Wide", DataElements=[
        w.new(interface.FlowData, "%d", name, Type=w.controller.Behavior.Parameters[0].Type)
        for name in ("Travel", "Speed", "More")])
    w.brakes.PackagedElement.append(wide)
    outer = w.new(port.DataSenderReceiverPort, wide, "Both")
    w.whole.SenderReceiverPorts.append(outer)
    inner = w.new(instance.CompositionRPortInstanceRef, w.controller.ReceiverPorts[0], w.prototypes.brakeController)
    w.whole.Connectors.append(w.new(composition.DelegationConnector, outer, inner, "Down"))
    # Objects that have no short name in AUTOSAR need no name.
    w.sample.variationPoint = w.new(variant.VariationPoint)
    w.pedal.Behavior.PortAPIOptions[0].PortArgValue[0].Name = ""
    # Data values may be infinite or NaN.
    value = w.new(foundation.NumericalValueSpecification, 0)
    brake.named(w.controller.Behavior.Parameters).Limit.InitValue = value
    for number in (float("inf"), float("-inf"), float("nan")):
        value.Value = task_period(w).Value = number
        assert w.model.validate() == []


def task_period(w):
    return w.configuration.OsOfBrakeEcu.Container[0].SubContainer[0].ParameterValue[3]


def test_a_whole_number_is_finite(world):
    priority = world.configuration.OsOfBrakeEcu.Container[0].SubContainer[0].ParameterValue[0]
    for number, text in ((float("inf"), "inf"), (float("nan"), "nan")):
        priority.Value = number
        assert [each.message for each in world.model.validate()] == [
            f"expected a whole number for the EcucIntegerParamDef 'Priority', found the number {text}; "
            "set a value of that kind, or another definition"]


def test_problems_of_one_object_stand_together(world):
    group = brake.named(brake.named(world.brakes.PackagedElement).Types.PackagedElement).BrakePhase
    for mode in group.Mode:
        mode.Name, mode.Value = "7", -1

    found = [(each.object, each.rule) for each in world.model.validate() if each.object in group.Mode]
    first, *others = group.Mode
    assert found == [(first, "value-range"), (first, "short-name")] + [
        (mode, rule) for mode in others
        for rule in ("value-range", "short-name", "duplicate-name", "mode-group")]


def test_a_circle_elsewhere_is_no_problem_of_what_leads_to_it(model):
    root = common.Package(model, "Top")
    root.PackagedElement += [variant.PredefinedVariant(model, name) for name in "ABC"]
    a, b, c = root.PackagedElement
    for one, other in ((a, b), (b, c), (c, b)):
        one.IncludedVariant.append(other)

    assert a.validate() == []
    assert [each.path for each in root.validate()] == [each.path for each in b.validate()] == ["/Top/B"]


def test_an_object_is_validated_with_all_that_it_holds(world):
    faults.period_of_zero(world)
    faults.name_with_blanks(world)

    assert [each.rule for each in world.controller.validate()] == ["short-name", "value-range"]
    assert world.pedal.validate() == []


def test_problems_come_in_order_of_ownership_and_always_the_same(world):
    for change in (faults.two_elements_of_one_name, faults.runnable_without_a_symbol, faults.group_in_itself,
                   faults.period_of_zero, faults.prototype_without_a_type):
        change(world)
    first = world.model.validate()

    assert first == world.model.validate()
    assert [each.rule for each in first] == ["group-circle", "required-text", "value-range", "duplicate-name",
                                             "required-reference"]


def test_a_problem_tells_all_and_keeps_its_object(world):
    faults.period_of_zero(world)
    (problem,) = world.model.validate()

    assert problem.object is brake.named(world.controller.Behavior.Events).Every10ms
    assert (problem.property, problem.rule, problem.severity) == ("Period", "value-range", "error")
    assert problem.path == BEHAVIOR + "/Every10ms"


def test_a_frozen_model_gives_objects_that_cannot_be_changed(world):
    faults.period_of_zero(world)
    (problem,) = world.model.frozen().validate()

    assert type(problem.object) is behavior.ImmutableTimingEvent
    assert problem.path == BEHAVIOR + "/Every10ms"


def test_an_empty_model_is_clean(model):
    assert model.validate() == []


def test_a_closed_model_and_a_destroyed_object_are_refused(model):
    package = common.Package(model, "Brakes")
    package.destroy()
    with pytest.raises(K7Q.Exception, match="Cannot access NULL ref"):
        package.validate()
    model.close()
    with pytest.raises(K7Q.Exception, match="Cannot access NULL ref"):
        model.validate()


def test_validate_takes_no_argument(model):
    for call in (lambda: model.validate(1, 2), lambda: common.Package(model, "Brakes").validate(1, 2)):
        with pytest.raises(K7Q.WrongType, match=r"^validate: too many positional arguments; write validate\(\)$"):
            call()
    with pytest.raises(K7Q.WrongType, match="^validate: missing a required argument: 'self'; write validate"):
        K7Q.Model.validate()
    with pytest.raises(K7Q.WrongType, match="^validate: expected an object of a model, got "):
        common.Package.validate(model)
    with pytest.raises(K7Q.WrongType, match="^validate: expected a model, got "):
        K7Q.Model.validate("model")


def test_names_of_what_stands_below_something_unnamed_share_its_namespace(model):
    root = common.Package(model, "Top")
    inner = common.SdgCaption(model, "Twice")
    admin = common.AdminData(model)
    admin.sdg.append(common.Sdg(model, "group"))
    admin.sdg[0].sdgCaption = inner
    root.adminData = admin
    root.PackagedElement.append(variant.SystemConst(model, "Twice"))

    assert [(each.rule, each.path) for each in root.validate()] == [("duplicate-name", "/Top/Twice")]


def test_the_root_of_a_model_needs_no_name_and_shares_the_namespace_of_the_others(model):
    for name in ("Brakes", "Steering", "brakes"):
        root = common.AUTOSAR(model)
        root.PackagedElement.append(common.Package(model, name))
    root.PackagedElement.append(common.Package(model, "Steering"))

    assert [(each.rule, each.path) for each in model.validate() if each.rule != "required-text"] == [
        ("name-case", "/brakes"), ("duplicate-name", "/Steering")]
    assert [each.rule for each in root.PackagedElement[1].validate()] == []


def test_what_was_given_no_name_leaves_its_names_to_its_holder(model):
    root = common.Package(model, "Top")
    nameless = common.Package(model)
    root.PackagedElement += [nameless, variant.SystemConst(model, "Twice")]
    nameless.PackagedElement += [variant.SystemConst(model, name) for name in ("Twice", "Inner", "Inner")]

    clashes = [("short-name", "/Top.PackagedElement[0]"), ("duplicate-name", "/Top/Inner")]
    assert [(each.rule, each.path) for each in model.validate()] == clashes + [("duplicate-name", "/Top/Twice")]
    assert [(each.rule, each.path) for each in nameless.validate()] == clashes
    assert {each.object.qualifiedName for each in model.validate()} == {"", "/Top/Inner", "/Top/Twice"}


def test_a_deep_model_is_validated_without_recursion(model):
    root = common.Package(model, "Top")
    data = interface.VariableData(model, "%d", "Deep")
    root.adminData = common.AdminData(model)
    inner = data.InitValue = foundation.ArrayValueSpecification(model)
    for _ in range(50_000):
        inner.Element.append(foundation.ArrayValueSpecification(model))
        inner = inner.Element[0]

    assert {each.rule for each in data.validate()} == {"incomplete", "no-owner"}


def test_each_of_many_faults_in_one_list_is_told_with_its_place(model):
    values = variant.SystemConstValueSet(model, "Values")
    for _ in range(10_000):
        values.SysConstValue.append(variant.SystemConstValue(model))

    places = [each.path for each in values.validate() if each.object != values]
    assert list(dict.fromkeys(places)) == [f"/Values.SysConstValue[{place}]" for place in range(10_000)]
