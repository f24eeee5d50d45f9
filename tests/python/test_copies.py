"""Copies of objects and models: their contents, their owners, and refused copies."""

import copy
import pickle

import pytest

import K7Q
import Tarvelon
from Tarvelon.metamodel import foundation
from Tarvelon.metamodel.arplatform import behavior, common, component, variant


@pytest.fixture
def other():
    with K7Q.Model.create() as other:
        yield other


@pytest.fixture
def brakes(model):
    """A package with a constant, a set of values of which one refers to the constant, and an empty
    package."""
    brakes = common.Package(model, "Brakes")
    constant = variant.SystemConst(model, "Wheels")
    condition = variant.SystemConstValueSet(model, "Values")
    brakes.PackagedElement += [constant, condition, common.Package(model, "Inner")]
    brakes.category = "STANDARD"
    value = variant.SystemConstValue(model)
    condition.SysConstValue.append(value)
    value.SysConst = constant
    return brakes


def named(package, name):
    return next(each for each in package.PackagedElement if each.Name == name)


def test_a_copy_has_every_value_and_all_that_is_held(brakes):
    copied = brakes.clone()

    assert copied is not brakes and copied != brakes
    assert (copied.Name, copied.category) == ("Brakes", "STANDARD")
    assert [each.Name for each in copied.PackagedElement] == ["Wheels", "Values", "Inner"]
    assert not Tarvelon.diff(brakes, copied)
    assert set(copied.PackagedElement).isdisjoint(set(brakes.PackagedElement))


def test_a_reference_inside_the_copy_leads_to_the_copy(brakes):
    copied = brakes.clone()

    assert named(copied, "Values").SysConstValue[0].SysConst == named(copied, "Wheels")
    assert named(brakes, "Values").SysConstValue[0].SysConst == named(brakes, "Wheels")


def test_a_reference_to_the_outside_stays_in_the_same_model(brakes):
    copied = named(brakes, "Values").clone()

    assert copied.SysConstValue[0].SysConst == named(brakes, "Wheels")


def test_an_object_that_refers_to_itself_is_copied_to_one_that_does(model):
    comment = foundation.Comment(model, "see here")
    comment.AnnotatedElement.append(comment)

    copied = comment.clone()

    assert list(copied.AnnotatedElement) == [copied]


def test_what_the_model_computes_follows(brakes, model):
    root = common.AUTOSAR(model)

    copied = brakes.clone(root)

    assert copied.Owner == root and copied.NestingPackage == root
    assert list(root.NestedPackage) == [copied]


def test_a_copy_without_owner_is_held_by_nothing(brakes, model):
    common.AUTOSAR(model).PackagedElement.append(brakes)

    copied = brakes.clone()

    assert copied.Owner is None and copied.getModel() == model
    assert brakes.Owner is not None


def test_a_copy_goes_behind_the_others_in_the_same_property(brakes, model):
    root = common.AUTOSAR(model)
    root.PackagedElement += [brakes, common.Package(model, "Last")]

    copied = brakes.clone(root)

    assert list(root.PackagedElement)[2] == copied


def test_a_copy_may_go_into_what_is_copied(brakes):
    copied = brakes.clone(named(brakes, "Inner"))

    assert copied.Owner == named(brakes, "Inner")
    assert [each.Name for each in copied.PackagedElement] == ["Wheels", "Values", "Inner"]
    assert len(named(copied, "Inner").PackagedElement) == 0


def test_a_copy_goes_into_the_only_property_that_fits(model):
    runnable = behavior.Runnable(model, "step", "Step")
    held = behavior.ApplicationComponentBehavior(model)

    copied = runnable.clone(held)

    assert list(held.Runnables) == [copied] and copied.symbol == "step"


def test_several_properties_that_fit_are_listed(model):
    access = behavior.IrvAccess(model)
    runnable = behavior.Runnable(model, "step", "Step")

    with pytest.raises(K7Q.WrongValue) as raised:
        access.clone(runnable)

    assert str(raised.value) == (
        "clone of behavior.IrvAccess#0 into behavior.Runnable /Step: the owner can contain it as irvRead, irvWrite; "
        "give the property as well")
    assert access.clone(runnable, property="irvWrite") == runnable.irvWrite[0]
    assert runnable.irvWrite[0].clone(runnable) == runnable.irvWrite[1]


def test_the_property_may_be_named_as_the_metamodel_has_it(model):
    runnable = behavior.Runnable(model, "step", "Step")

    assert behavior.IrvAccess(model).clone(runnable, property="IrvRead") == runnable.irvRead[0]


def test_a_property_that_there_is_not_is_refused_with_those_there_are(model):
    held = variant.SystemConstValueSet(model, "Values")

    with pytest.raises(K7Q.UnknownName) as raised:
        held.clone(held, property="Value")

    assert str(raised.value).startswith(
        "clone of variant.SystemConstValueSet /Values into variant.SystemConstValueSet /Values: the owner contains "
        "no objects as 'Value'; it contains objects as ")
    assert "SysConstValue" in str(raised.value)


@pytest.mark.parametrize("owner", [lambda brakes: None, lambda brakes: brakes.getModel()])
def test_a_property_of_no_owner_is_refused(brakes, owner):
    with pytest.raises(K7Q.WrongValue) as raised:
        brakes.clone(owner(brakes), property="PackagedElement")

    assert str(raised.value) == ("clone: the property 'PackagedElement' is given without an owner; give the owner as "
                                 "well")
    assert brakes.getModel().roots() == [brakes]


def test_a_named_property_of_another_class_is_refused(brakes):
    with pytest.raises(K7Q.WrongType, match="Package.adminData: expected .*AdminData, got .*Package"):
        brakes.clone(brakes, property="adminData")


@pytest.mark.parametrize("arguments", [{}, {"property": "Behavior"}])
def test_a_property_that_has_its_one_object_is_refused(model, arguments):
    atomic = component.AtomicComponent(model)
    atomic.Name = "Controller"
    atomic.Behavior = behavior.ApplicationComponentBehavior(model)
    held = atomic.Behavior

    with pytest.raises(K7Q.WrongValue) as raised:
        held.clone(atomic, **arguments)

    assert str(raised.value) == (
        "clone of behavior.ApplicationComponentBehavior /Controller.Behavior into component.AtomicComponent "
        "/Controller: Behavior holds at most one object and is already set; unset it first")
    assert atomic.Behavior == held


def test_an_owner_that_holds_no_such_object_is_refused(brakes, model):
    with pytest.raises(K7Q.WrongValue) as raised:
        brakes.clone(variant.SystemConstValueSet(model, "Values"))

    assert ": the owner cannot contain a common.Package; it contains objects as " in str(raised.value)
    assert str(raised.value).endswith("; give another owner")


def test_a_copy_goes_into_another_model(brakes, other):
    root = common.AUTOSAR(other)

    copied = brakes.clone(root)

    assert copied.getModel() == other and copied.Owner == root
    assert named(copied, "Values").SysConstValue[0].SysConst == named(copied, "Wheels")
    assert not Tarvelon.diff(brakes, copied)


def test_a_model_as_owner_takes_a_copy_that_nothing_holds(brakes, other):
    copied = brakes.clone(other)

    assert copied.getModel() == other and copied.Owner is None


def test_a_reference_that_leads_outside_is_refused_in_another_model(brakes, other):
    with pytest.raises(K7Q.WrongValue) as raised:
        named(brakes, "Values").clone(other)

    assert str(raised.value) == (
        "clone of variant.SystemConstValueSet /Brakes/Values into another model: 1 reference leads outside the copy: "
        "/Brakes/Values.SysConstValue[0].SysConst -> /Brakes/Wheels; copy an object that contains both ends, or "
        "leave such references out")
    assert other.to_dict() == {"objects": []}


def test_a_reference_that_leads_outside_may_be_left_out(brakes, other):
    copied = named(brakes, "Values").clone(other, leave_out=True)

    assert copied.SysConstValue[0].SysConst is None
    assert named(brakes, "Values").SysConstValue[0].SysConst == named(brakes, "Wheels")


def test_deepcopy_is_clone(brakes, model):
    copied = copy.deepcopy(brakes)

    assert copied.Owner is None and copied.getModel() == model and copied != brakes
    assert not Tarvelon.diff(brakes, copied)


def test_an_object_is_not_copied_without_what_it_holds(package, model):
    for each, name in [(package, "common.Package"), (model, "K7Q.Model")]:
        with pytest.raises(K7Q.WrongType) as raised:
            copy.copy(each)
        assert str(raised.value) == (
            f"{name} cannot be copied without the objects that it contains; clone() copies them as well")


def test_objects_and_models_are_not_pickled(package, model):
    for each in (package, package.asImmutable(), model):
        with pytest.raises(K7Q.WrongType, match="cannot be copied or pickled: "):
            pickle.dumps(each)


@pytest.mark.parametrize("cloned", [lambda model: model.clone(), copy.deepcopy])
def test_a_model_is_copied_whole(brakes, model, cloned):
    model.setUri("car.model")
    common.Package(model, "Alone")

    copied = cloned(model)

    assert copied.getUri() == "" and copied != model and K7Q.Model.find("") is None
    assert not Tarvelon.diff(model, copied)
    assert [each["Name"] for each in copied.to_dict()["objects"]] == ["Brakes", "Alone"]
    copied.close()
    assert brakes.isvalid()


def test_a_view_that_only_reads_is_copied_into_another_model_alone(brakes, other):
    with pytest.raises(K7Q.Exception) as raised:
        brakes.asImmutable().clone()

    assert str(raised.value) == (
        "clone: common.ImmutablePackage is an immutable view and cannot change its model; give the model or an "
        "owner, as in clone(model), or use asMutable()")
    assert type(brakes.asImmutable().clone(other)) is common.Package
    with pytest.raises(K7Q.Exception, match="use its asMutable()"):
        brakes.clone(brakes.asImmutable())


def test_a_frozen_view_takes_no_copy(brakes, model, other):
    frozen = brakes.asDeviant(model.frozen())

    for refused in (lambda: frozen.clone(), lambda: brakes.clone(frozen)):
        with pytest.raises(K7Q.Exception, match="deviant"):
            refused()
    assert frozen.clone(other).Name == "Brakes"


def test_a_destroyed_object_is_neither_copied_nor_an_owner(brakes, model):
    gone = common.Package(model, "Gone")
    gone.destroy()

    for refused in (lambda: gone.clone(), lambda: brakes.clone(gone)):
        with pytest.raises(K7Q.Exception, match="Cannot access NULL ref"):
            refused()


def test_what_is_no_object_is_refused(brakes):
    with pytest.raises(K7Q.WrongType, match="clone: expected an object of a model, got int 3"):
        brakes.clone(3)


def test_arguments_that_do_not_fit_are_refused_with_the_signature(brakes, model):
    for refused, text in [
        (lambda: brakes.clone(1, 2),
         "clone: too many positional arguments; write clone(owner=None, *, property=None, leave_out=False)"),
        (lambda: brakes.clone(onwer=None),
         "clone: got an unexpected keyword argument 'onwer'; write clone(owner=None, *, property=None, "
         "leave_out=False)"),
        (lambda: model.clone(1), "clone: too many positional arguments; write clone()"),
        (lambda: brakes.to_dict(1), "to_dict: too many positional arguments; write to_dict()"),
        (lambda: common.Package.clone(),
         "clone: missing a required argument: 'self'; "
         "write clone(owner=None, *, property=None, leave_out=False)"),
        (lambda: common.Package.clone(model), "clone: expected an object of a model, got K7Q.Model"),
        (lambda: brakes.clone(brakes, property=3), "clone: expected the name of a property, got int 3"),
    ]:
        with pytest.raises(K7Q.WrongType) as raised:
            refused()
        assert str(raised.value) == text


def test_two_ends_of_a_link_are_copied_with_both_and_in_their_order(model):
    held = behavior.ApplicationComponentBehavior(model)
    held.Runnables.append(behavior.Runnable(model, "step", "Step"))
    held.Events += [behavior.TimingEvent(model, 1, name) for name in "ABC"]
    held.Runnables[0].Events += [held.Events[index] for index in (2, 0, 1)]

    copied = held.clone()

    assert [each.Name for each in copied.Runnables[0].Events] == ["C", "A", "B"]
    assert set(copied.Runnables[0].Events) == set(copied.Events)
    assert all(each.StartOnEvent == copied.Runnables[0] for each in copied.Events)
    assert set(held.Runnables[0].Events) == set(held.Events)


def test_a_copy_takes_nothing_from_the_original(model):
    runnable, event = behavior.Runnable(model, "step", "Step"), behavior.TimingEvent(model, 1, "Event")
    event.StartOnEvent = runnable

    without, also = runnable.clone(), event.clone()

    assert list(without.Events) == []  # an event starts one runnable
    assert also.StartOnEvent == runnable and list(runnable.Events) == [event, also]
    assert event.StartOnEvent == runnable


def test_a_copy_is_undone_and_redone_as_one(brakes, model):
    root = common.AUTOSAR(model)
    model.history = 10
    before = model.to_json()

    brakes.clone(root)
    after = model.to_json()
    model.undo()
    assert model.to_json() == before
    model.redo()
    assert model.to_json() == after and len(root.PackagedElement) == 1


def test_a_transaction_that_fails_takes_a_copy_back(brakes, model):
    root = common.AUTOSAR(model)
    before = model.to_json()

    with pytest.raises(KeyError), model.transaction():
        brakes.clone(root)
        brakes.clone()
        raise KeyError

    assert model.to_json() == before and brakes.isvalid()


def test_a_copy_is_found_by_its_name(brakes, model):
    root = common.AUTOSAR(model)
    root.Name = "Top"

    copied = brakes.clone(root)

    assert model.find("/Top/Brakes/Values") == named(copied, "Values")
    assert len(model.instances(variant.SystemConst)) == 2


def test_a_chain_of_a_hundred_thousand_is_copied_without_recursion(model):
    top = last = common.Package(model, "P")
    for _ in range(100_000):
        below = common.Package(model, "P")
        last.PackagedElement.append(below)
        last = below

    copied = top.clone()

    depth = 0
    while copied.PackagedElement:
        copied, depth = copied.PackagedElement[0], depth + 1
    assert depth == 100_000
