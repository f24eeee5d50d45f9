"""Differences of models: each edit is reported as what it is, and nothing else is reported."""

import importlib.util
import json
import sys
from pathlib import Path as File

import pytest

import K7Q
import Tarvelon
from Tarvelon import Added, Changed, Moved, Path, Removed, Renamed
from Tarvelon.metamodel import foundation
from Tarvelon.metamodel.arplatform import behavior, common, variant

EXAMPLES = File(__file__).resolve().parents[2] / "examples"
SPEC = importlib.util.spec_from_file_location("brake_by_wire", EXAMPLES / "brake_by_wire.py")
example = importlib.util.module_from_spec(SPEC)
SPEC.loader.exec_module(example)
sys.path.remove(str(EXAMPLES))


@pytest.fixture
def brake(model):
    """The brake example: the result of its build()."""
    return example.build(example.brake.maker(model))


@pytest.fixture
def before(brake, model):
    """A copy of the example, made before a test edits it."""
    with model.clone() as before:
        yield before


@pytest.fixture
def vehicle(brake):
    return Walker(brake.root)


class Walker:
    """Access to objects by their qualified names."""

    def __init__(self, root):
        self.root = root

    def __call__(self, path):
        first, *names = path[1:].split("/")
        assert first == self.root.Name
        here = self.root
        for name in names:
            here = next(each for each in named_below(here) if each.Name == name)
        return here


def named_below(owner):
    for each in owner.OwnedElement:
        if hasattr(type(each), "Name"):
            yield each
        else:
            yield from named_below(each)


COMPONENTS = "/Vehicle/BrakeByWire/Components"
CONTROLLER = f"{COMPONENTS}/BrakeController"
BEHAVIOR = f"{CONTROLLER}/BrakeControllerBehavior"


def test_the_brake_example_equals_its_copy(before, model):
    difference = Tarvelon.diff(before, model)
    assert not difference and len(difference) == 0 and list(difference) == []
    assert str(difference) == "no differences" and difference.to_json() == "[]"


def test_an_object_equals_its_copy(brake):
    assert not Tarvelon.diff(brake.root, brake.root.clone())
    for each in brake.components:
        assert not Tarvelon.diff(each, each.clone(each.Owner))


def test_a_value_that_was_set_changed_and_unset(vehicle, model):
    package = vehicle("/Vehicle/BrakeByWire")
    before = model.clone()

    package.category = "STANDARD"
    set_ = model.clone()
    package.category = "OTHER"

    path = "/Vehicle/BrakeByWire"
    assert list(Tarvelon.diff(before, set_)) == [
        Changed(path, "common.Package", "category", None, "STANDARD")]
    assert Tarvelon.diff(set_, model)[0][2:] == ("category", "STANDARD", "OTHER")
    assert Tarvelon.diff(model, before)[0][2:] == ("category", "OTHER", None)
    assert str(Tarvelon.diff(before, set_)) == '~ /Vehicle/BrakeByWire.category: nothing -> "STANDARD"'


def test_values_of_each_kind(model):
    with K7Q.Model.create() as other:
        error = common.ApplicationError(model, 7, "E")
        after = error.clone(other)
        after.errorCode = 8
        assert list(Tarvelon.diff(error, after)) == [
            Changed("/E", "common.ApplicationError", "errorCode", 7, 8)]

        event = behavior.TimingEvent(model, 0.5, "T")
        after = event.clone(other)
        after.Period = 1
        [changed] = Tarvelon.diff(event, after)
        assert (changed.old, changed.new) == (0.5, 1.0) and type(changed.new) is float

        runnable = behavior.Runnable(model, "step", "Step")
        after = runnable.clone(other)
        after.canBeInvokedConcurrently = True
        assert Tarvelon.diff(runnable, after)[0][2:] == ("canBeInvokedConcurrently", None, True)

        access = behavior.FlowDataAccess(model)
        after = access.clone(other)
        after.Kind = behavior.DataAccessKind.ImplicitRead
        assert Tarvelon.diff(access, after)[0][2:] == ("Kind", None, "ImplicitRead")

        condition = variant.PostBuildVariantCondition(model)
        after = condition.clone(other)
        after.ValueVariationPoint += ["a", "b"]
        assert Tarvelon.diff(condition, after)[0][2:] == ("ValueVariationPoint", [], ["a", "b"])


def test_a_text_that_was_never_set_and_an_empty_one_are_the_same(model):
    comment = foundation.Comment(model)
    written = foundation.Comment(model, "")

    assert not Tarvelon.diff(comment, written)


def test_an_object_that_was_added_counts_with_what_it_holds(before, vehicle, model):
    inner = common.Package(model, "Inner")
    inner.PackagedElement.append(variant.SystemConst(model, "Wheels"))
    vehicle(COMPONENTS).PackagedElement.append(inner)

    difference = Tarvelon.diff(before, model)

    assert list(difference) == difference.added == [Added(f"{COMPONENTS}/Inner", "common.Package", 2)]
    assert str(difference) == f"+ {COMPONENTS}/Inner (common.Package, 2 objects)"
    assert list(Tarvelon.diff(model, before)) == [Removed(f"{COMPONENTS}/Inner", "common.Package", 2)]


def test_an_object_that_was_destroyed_leaves_its_referrers_changed(before, vehicle, model):
    step = vehicle(BEHAVIOR).Events[0]
    name = step.Name
    step.destroy()

    difference = Tarvelon.diff(before, model)

    assert difference.removed[0].path == f"{BEHAVIOR}/{name}"
    assert not difference.added + difference.moved + difference.renamed
    assert all(name in str(each.old) and each.property == "Events" for each in difference.changed)


def test_a_reference_that_leads_elsewhere(before, vehicle, model):
    event = vehicle(BEHAVIOR).Events[0]
    old = event.StartOnEvent
    event.StartOnEvent = next(each for each in vehicle(BEHAVIOR).Runnables if each != old)

    found = Tarvelon.diff(before, model).changed
    changed, *back = sorted(found, key=lambda each: each.property != "StartOnEvent")

    assert {(each.path, each.property) for each in back} == {
        (path, "Events") for path in (changed.old, changed.new)}
    assert changed == Changed(f"{BEHAVIOR}/{event.Name}", changed.cls, "StartOnEvent",
                              f"{BEHAVIOR}/{old.Name}", f"{BEHAVIOR}/{event.StartOnEvent.Name}")
    assert type(changed.new) is Path
    assert str(changed).endswith(f"{BEHAVIOR}/{old.Name} -> {BEHAVIOR}/{event.StartOnEvent.Name}")


def test_a_renamed_object_is_told_once_whatever_it_holds_and_whoever_refers_to_it(before, vehicle, model):
    vehicle(CONTROLLER).Name = "Controller"

    difference = Tarvelon.diff(before, model)

    assert list(difference) == [
        Renamed(CONTROLLER, f"{COMPONENTS}/Controller", "component.AtomicComponent")]
    assert str(difference) == f"> {CONTROLLER} (component.AtomicComponent) -> {COMPONENTS}/Controller"


def test_the_root_may_be_renamed(before, brake, model):
    brake.root.Name = "Car"

    assert list(Tarvelon.diff(before, model)) == [Renamed("/Vehicle", "/Car", "common.AUTOSAR")]


def test_a_moved_object_is_told_once(before, vehicle, model):
    place = list(vehicle(COMPONENTS).PackagedElement).index(vehicle(CONTROLLER))
    vehicle("/Vehicle/BrakeByWire").PackagedElement.append(vehicle(CONTROLLER))

    difference = Tarvelon.diff(before, model)

    last = len(vehicle("/Vehicle/BrakeByWire").PackagedElement) - 1
    assert list(difference) == [
        Moved(CONTROLLER, "/Vehicle/BrakeByWire/BrakeController", "component.AtomicComponent",
              f"{COMPONENTS}.PackagedElement[{place}]", f"/Vehicle/BrakeByWire.PackagedElement[{last}]")]


def test_a_new_order_is_told_by_the_fewest_that_moved(before, vehicle, model):
    sequence = vehicle(COMPONENTS).PackagedElement
    first = sequence[0]
    sequence.insert(len(sequence), first)

    [moved] = Tarvelon.diff(before, model)

    assert moved.path == moved.new_path == f"{COMPONENTS}/{first.Name}"
    assert moved.place == f"{COMPONENTS}.PackagedElement[0]"
    assert moved.new_place == f"{COMPONENTS}.PackagedElement[{list(sequence).index(first)}]"


def test_what_has_no_name_is_told_by_what_it_is_not_by_where_it_stands(model):
    behaviors = variant.SystemConstValueSet(model, "Values")
    for number in range(5):
        behaviors.SysConstValue.append(variant.SystemConstValue(model))
        behaviors.SysConstValue[number].Value = number
    before = model.clone()

    behaviors.SysConstValue[1].destroy()
    behaviors.SysConstValue.push_front(variant.SystemConstValue(model))

    assert list(Tarvelon.diff(before, model)) == [
        Removed("/Values.SysConstValue[1]", "variant.SystemConstValue", 1),
        Added("/Values.SysConstValue[0]", "variant.SystemConstValue", 1)]


def test_objects_without_name_that_differ_in_a_reference_alone_are_told_apart(model):
    constants = [variant.SystemConst(model, name) for name in ("A", "B", "C")]
    values = variant.SystemConstValueSet(model, "Values")
    for constant in constants:
        values.SysConstValue.append(variant.SystemConstValue(model))
        values.SysConstValue[-1].SysConst = constant
    before = model.clone()

    values.SysConstValue[0].destroy()

    assert list(Tarvelon.diff(before, model)) == [
        Removed("/Values.SysConstValue[0]", "variant.SystemConstValue", 1)]


def test_a_value_of_what_has_no_name_is_changed_in_place(model):
    values = variant.SystemConstValueSet(model, "Values")
    for number in range(3):
        values.SysConstValue.append(variant.SystemConstValue(model))
        values.SysConstValue[number].Value = number
    before = model.clone()

    values.SysConstValue[1].Value = 7

    assert list(Tarvelon.diff(before, model)) == [
        Changed("/Values.SysConstValue[1]", "variant.SystemConstValue", "Value", 1.0, 7.0)]


def test_an_unnamed_object_that_moved_to_another_owner(model):
    sets = [variant.SystemConstValueSet(model, name) for name in "AB"]
    sets[0].SysConstValue.append(variant.SystemConstValue(model))
    before = model.clone()

    sets[1].SysConstValue.append(sets[0].SysConstValue[0])

    assert list(Tarvelon.diff(before, model)) == [
        Moved("/A.SysConstValue[0]", "/B.SysConstValue[0]", "variant.SystemConstValue",
              "/A.SysConstValue[0]", "/B.SysConstValue[0]")]


def test_an_object_of_another_class_under_the_same_name_is_another_object(model, package):
    package.PackagedElement.append(variant.SystemConst(model, "X"))
    before = model.clone()

    package.PackagedElement[0].destroy()
    package.PackagedElement.append(common.Package(model, "X"))

    assert list(Tarvelon.diff(before, model)) == [
        Removed("/Brakes/X", "variant.SystemConst", 1), Added("/Brakes/X", "common.Package", 1)]


def test_what_moved_out_of_a_removed_owner_is_not_removed_with_it(model, package):
    gone, kept = common.Package(model, "Gone"), variant.SystemConst(model, "Kept")
    package.PackagedElement.append(gone)
    gone.PackagedElement += [kept, variant.SystemConst(model, "Other")]
    before = model.clone()

    package.PackagedElement.append(kept)
    gone.destroy()

    assert list(Tarvelon.diff(before, model)) == [
        Removed("/Brakes/Gone", "common.Package", 2),
        Moved("/Brakes/Gone/Kept", "/Brakes/Kept", "variant.SystemConst",
              "/Brakes/Gone.PackagedElement[0]", "/Brakes.PackagedElement[0]")]


def test_two_objects_are_compared_wherever_they_stand(model, package):
    package.PackagedElement.append(variant.SystemConst(model, "Wheels"))
    inner = package.clone(package)
    inner.Name = "Inner"
    inner.PackagedElement[0].category = "VALUE"

    assert list(Tarvelon.diff(package.PackagedElement[0], inner.PackagedElement[0])) == [
        Changed("/Brakes/Wheels", "variant.SystemConst", "category", None, "VALUE")]


def test_a_reference_to_the_outside_is_compared_by_what_it_leads_to(model):
    constants = [variant.SystemConst(model, name) for name in "AB"]
    value = variant.SystemConstValue(model)
    value.SysConst = constants[0]
    same = value.clone()
    assert not Tarvelon.diff(value, same)
    with model.clone() as other:
        there = variant.SystemConstValue(other)
        there.SysConst = constants[0].clone(other)
        assert not Tarvelon.diff(value, there)

    same.SysConst = constants[1]
    assert Tarvelon.diff(value, same)[0][2:] == ("SysConst", "/A", "/B")


def test_views_that_only_read_are_compared(model, package):
    frozen = package.asDeviant(model.frozen())

    assert not Tarvelon.diff(package.asImmutable(), frozen)
    assert not Tarvelon.diff(model.frozen(), model)


@pytest.mark.parametrize("pair", [
    lambda model, package: (model, package), lambda model, package: (package, model),
    lambda model, package: (package, variant.SystemConst(model, "X")),
])
def test_what_is_not_of_one_kind_is_refused(model, package, pair):
    with pytest.raises(K7Q.WrongType, match="^diff: expected two models, or two objects of one class, got "):
        Tarvelon.diff(*pair(model, package))


def test_what_is_no_model_is_refused(model):
    with pytest.raises(K7Q.WrongType, match="diff: expected .*, got int 3"):
        Tarvelon.diff(model, 3)


def test_a_closed_model_is_refused(model):
    closed = model.clone()
    closed.close()
    with pytest.raises(K7Q.Exception, match="Cannot access NULL ref"):
        Tarvelon.diff(model, closed)


def test_differences_are_a_sequence_of_tuples_in_groups(model, package):
    package.PackagedElement += [variant.SystemConst(model, name) for name in ("Old", "Here", "Was")]
    package.PackagedElement.append(common.Package(model, "To"))
    old, here, was, to = package.PackagedElement
    here.category, was.category = "h", "w"
    before = model.clone()
    old.destroy()
    package.category = "c"
    to.PackagedElement.append(here)
    was.Name = "Is"
    package.PackagedElement.append(variant.SystemConstValueSet(model, "New"))

    difference = Tarvelon.diff(before, model)

    assert [type(each) for each in difference] == [Removed, Added, Moved, Renamed, Changed]
    assert [len(each) for each in (difference.removed, difference.added, difference.moved, difference.renamed,
                                   difference.changed)] == [1] * 5
    assert str(difference) == "\n".join([
        "- /Brakes/Old (variant.SystemConst)",
        "+ /Brakes/New (variant.SystemConstValueSet)",
        "> /Brakes/Here (variant.SystemConst): /Brakes.PackagedElement[1] -> /Brakes/To.PackagedElement[0]",
        "> /Brakes/Was (variant.SystemConst) -> /Brakes/Is",
        '~ /Brakes.category: nothing -> "c"'])
    assert difference == Tarvelon.diff(before, model) and difference != Tarvelon.diff(model, model)
    assert difference[0:2] == tuple(difference)[0:2] and difference[-1] == difference.changed[0]
    records = json.loads(difference.to_json())
    assert [each["difference"] for each in records] == ["removed", "added", "moved", "renamed", "changed"]
    assert records[0] == {
        "difference": "removed", "path": "/Brakes/Old", "cls": "variant.SystemConst", "objects": 1}
