"""What every property of the metamodel refuses, and that nothing changes then."""

import importlib.util
from pathlib import Path

import pytest

import K7Q
import _tarvelon_host
from Tarvelon.metamodel.arplatform import Factory, common

EXAMPLE = Path(__file__).resolve().parents[2] / "examples" / "every_class.py"
SPEC = importlib.util.spec_from_file_location("every_class", EXAMPLE)
reflection = importlib.util.module_from_spec(SPEC)
SPEC.loader.exec_module(reflection)


def is_many(value):
    return hasattr(value, "size") and hasattr(value, "at")


def properties():
    """Each property once: a class that can be made and has it, its attribute and its description."""
    seen = set()
    for cls in reflection.concrete_classes():
        for description in cls.MetaProperty():
            attribute, name = reflection.attribute_of(cls, description), description.name()
            owner = description.owner().fullName()
            if attribute is None or not owner.startswith("Tarvelon.metamodel.") or (owner, name) in seen:
                continue
            seen.add((owner, name))
            yield pytest.param(cls, attribute, description, id=f"{cls.__name__}.{attribute}")


PROPERTIES = list(properties())
WRITABLE = [each for each in PROPERTIES if not each.values[2].isReadOnly()]


def class_of(description):
    """The class of a reference's values, None for other properties."""
    package, _, short = description.type().rpartition(".")
    named = getattr(reflection.module_of(package), short) if package else None
    return None if named is None or hasattr(named, "fromString") else named


REFERENCES = [each for each in WRITABLE if class_of(each.values[2])]


@pytest.fixture(scope="module")
def model():
    with Factory.createNewModel() as made:
        yield made


@pytest.fixture(scope="module")
def other():
    with Factory.createNewModel() as made:
        yield made


def write(target, attribute, value):
    present = getattr(target, attribute)
    if is_many(present):
        present.append(value)
    else:
        setattr(target, attribute, value)


def state(target, attribute):
    present = getattr(target, attribute)
    return list(present) if is_many(present) else present


def filled(cls, attribute, description, model):
    """An object whose property has a value, if one can be made."""
    target = cls(model)
    value = reflection.Maker(model).value(description.type())
    if value is not None:
        write(target, attribute, value)
    return target


def wrong_kinds(description):
    """Values that no property of that type takes."""
    values = [b"bytes", object(), [], {}]
    values += [1j] if description.type() in reflection.NUMBERS else [7, 0.5, True]
    return values + (["text"] if description.type() != "char vector" else [])


@pytest.mark.parametrize("cls, attribute, description", WRITABLE)
def test_a_value_of_a_wrong_kind_is_a_type_error(model, cls, attribute, description):
    target = filled(cls, attribute, description, model)
    before = state(target, attribute)
    for value in wrong_kinds(description):
        with pytest.raises(TypeError) as raised:
            write(target, attribute, value)
        assert isinstance(raised.value, K7Q.Exception)
        assert state(target, attribute) == before


@pytest.mark.parametrize("cls, attribute, description", WRITABLE)
def test_an_object_of_a_wrong_class_is_a_type_error(model, cls, attribute, description):
    target = filled(cls, attribute, description, model)
    before = state(target, attribute)
    wanted = class_of(description)
    candidates = (common.AdminData(model), common.ModeDeclaration(model, "Wrong"))
    wrong = [each for each in candidates if not (wanted and isinstance(each, wanted))]
    # Where any element may stand, a description of the metamodel still may not.
    for value in wrong or [common.Package.MetaClass()]:
        with pytest.raises(TypeError):
            write(target, attribute, value)
        assert state(target, attribute) == before


@pytest.mark.parametrize("cls, attribute, description", REFERENCES)
def test_an_object_of_another_model_is_a_value_error(model, other, cls, attribute, description):
    foreign = reflection.Maker(other).value(description.type())
    if foreign is None:
        assert description.type().endswith("InstantiationTimingEventProps")
        return
    target = filled(cls, attribute, description, model)
    before = state(target, attribute)
    with pytest.raises(ValueError) as raised:
        write(target, attribute, foreign)
    assert isinstance(raised.value, K7Q.Exception) and state(target, attribute) == before


@pytest.mark.parametrize("cls, attribute, description", WRITABLE)
def test_nothing_unsets_an_optional_property_and_no_other(model, cls, attribute, description):
    target = filled(cls, attribute, description, model)
    before = state(target, attribute)
    if description.upperBound() != 1:
        with pytest.raises(K7Q.Exception):
            setattr(target, attribute, None)
        with pytest.raises(TypeError):
            getattr(target, attribute).append(None)
        assert state(target, attribute) == before
    elif description.lowerBound() == 1:
        with pytest.raises(ValueError):
            setattr(target, attribute, None)
        assert state(target, attribute) == before
    else:
        setattr(target, attribute, None)
        assert state(target, attribute) in (None, "")


@pytest.mark.parametrize("cls, attribute, description", WRITABLE)
def test_an_immutable_view_refuses_every_value(model, cls, attribute, description):
    target = filled(cls, attribute, description, model)
    before = state(target, attribute)
    value = reflection.Maker(model).value(description.type())
    for view in (target.asImmutable(), target.asDeviant(model.frozen())):
        with pytest.raises((K7Q.Exception, AttributeError)):
            write(view, attribute, value)
    assert state(target, attribute) == before


@pytest.mark.parametrize("cls, attribute, description",
                         [each for each in PROPERTIES if each.values[2].isReadOnly()])
def test_a_computed_property_cannot_be_written(model, cls, attribute, description):
    target = cls(model)
    before = state(target, attribute)
    with pytest.raises(K7Q.Exception):
        setattr(target, attribute, None)
    assert state(target, attribute) == before


def test_every_property_of_the_platform_is_among_them():
    covered = {(each.values[2].owner().fullName(), each.values[1]) for each in PROPERTIES}
    published = {(cls["fullName"].replace(".Immutable", "."), each["name"])
                 for package in reflection.packages()
                 for cls in _tarvelon_host.describe(package.__name__)["classes"]
                 for each in cls["properties"]}
    left = {f"{owner.rpartition('.')[2]}.{name}" for owner, name in published - covered}

    # No object of the first can be made; the others are redefined by every class that can be made.
    assert left == {"InstantiationTimingEventProps.Period", "InstantiationTimingEventProps.RefinedEvent",
                    "AdaptivePlatformServiceInstance.Deployment", "CompositionPortInstanceRef.Port",
                    "DataInstanceRef.DataElements", "Port.Type"}
    assert len(published) == 494
