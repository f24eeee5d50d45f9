"""The values that the properties of the metamodel refuse; nothing may change."""

import functools

import pytest

import K7Q
import _tarvelon_host
from catalog import host_classes, live_objects, reflection
from Tarvelon.metamodel.arplatform import Factory, common


def is_many(value):
    return hasattr(value, "size") and hasattr(value, "at")


def properties():
    """Each property once: a concrete class that has it, its attribute, and its description."""
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
MANY = [each for each in WRITABLE if each.values[2].upperBound() != 1]
READ_ONLY = [each for each in PROPERTIES if each.values[2].isReadOnly()]


def class_of(description):
    """The class of a reference's values; None for other properties."""
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


def refused(write_it, target, attribute, error):
    """The text of a refused write. Also checks that the property and the model are unchanged."""
    before, objects = state(target, attribute), live_objects()
    with pytest.raises(error) as raised:
        write_it()
    assert isinstance(raised.value, K7Q.Exception)
    assert state(target, attribute) == before and live_objects() == objects
    return str(raised.value)


@functools.lru_cache(maxsize=None)
def published_types():
    below = [cls for name in ("foundation", "types")
             for cls in _tarvelon_host.describe(f"Tarvelon.metamodel.{name}")["classes"]]
    return {(cls["fullName"], each["name"]): each["type"]
            for cls in [*below, *host_classes()] for each in cls["properties"]}


def published_type(cls, attribute):
    """The type of a host property, as the first class of the lineage publishes it."""
    lineage = ((f"{each.__module__}.{each.__name__}", attribute) for each in cls.__mro__)
    return next(published_types()[each] for each in lineage if each in published_types())


def named(target, attribute, description):
    """The beginning of an error text: the property, or the method of its sequence."""
    if description.upperBound() != 1:
        return f"{type(getattr(target, attribute)).__name__}.append"
    kind = published_type(type(target), attribute)
    optional = f"{kind.removeprefix('k7q')} scalar or an empty value"
    kind = {"char": "char vector"}.get(kind, optional if kind.startswith("k7q") else kind)
    return f"{type(target).__name__}.{attribute}: expected {kind}, got"


def filled(cls, attribute, description, model):
    """An object whose property has a value, if a value can be created."""
    target = cls(model)
    value = reflection.Maker(model).value(description.type())
    if value is not None:
        write(target, attribute, value)
    return target


def wrong_kinds(description):
    """Values that no property of that type accepts."""
    values = [b"bytes", object(), [], {}]
    values += [1j] if description.type() in reflection.NUMBERS else [7, 0.5, True]
    return values + (["text"] if description.type() != "char vector" else [])


def shown(value):
    """A Python value as an error shows it."""
    plain = {bool: "logical scalar", int: "int32 scalar", float: "double scalar", str: "char vector"}
    return plain.get(type(value), type(value).__name__)


@pytest.mark.parametrize("cls, attribute, description", WRITABLE)
def test_a_value_of_a_wrong_kind_is_a_type_error(model, cls, attribute, description):
    target = filled(cls, attribute, description, model)
    for value in wrong_kinds(description):
        text = refused(lambda: write(target, attribute, value), target, attribute, TypeError)
        assert text.startswith(named(target, attribute, description))
        assert f"got {shown(value)}" in text or f" takes ({shown(value)}); there " in text


@pytest.mark.parametrize("cls, attribute, description", WRITABLE)
def test_an_object_of_a_wrong_class_is_a_type_error(model, cls, attribute, description):
    target = filled(cls, attribute, description, model)
    wanted = class_of(description)
    candidates = (common.AdminData(model), common.ModeDeclaration(model, "Wrong"))
    wrong = [each for each in candidates if not (wanted and isinstance(each, wanted))]
    # If the property accepts any element, a description of the metamodel is still a wrong value.
    for value in wrong or [common.Package.MetaClass()]:
        text = refused(lambda: write(target, attribute, value), target, attribute, TypeError)
        assert text.startswith(named(target, attribute, description))
        assert f"{type(value).__module__}.{type(value).__name__}" in text


@pytest.mark.parametrize("cls, attribute, description", REFERENCES)
def test_an_object_of_another_model_is_a_value_error(model, other, cls, attribute, description):
    foreign = reflection.Maker(other).value(description.type())
    if foreign is None:
        assert description.type().endswith("InstantiationTimingEventProps")
        return
    target = filled(cls, attribute, description, model)
    text = refused(lambda: write(target, attribute, foreign), target, attribute, ValueError)
    # The error for a property that redefines another one has the narrower property's name.
    assert text.lower().startswith(f"{cls.__name__}.{attribute}: expected ".lower())
    assert " of the same model, got " in text


def ways_to_add(sequence, value):
    """All ways to add an element to a sequence that has at least one."""
    methods = [(name, (value,)) for name in ("append", "push_back", "push_front")]
    methods += [("insert", (1, value)), ("insert", (sequence.begin(), value)), ("replace", (1, value)),
                ("__setitem__", (0, value)), ("__setitem__", (-1, value)), ("extend", ([value],)),
                ("__iadd__", ([value],))]
    return [lambda name=name, given=given: getattr(sequence, name)(*given) for name, given in methods]


@pytest.mark.parametrize("cls, attribute, description", MANY)
def test_no_way_to_add_takes_what_does_not_belong_there(model, other, cls, attribute, description):
    target = filled(cls, attribute, description, model)
    sequence = getattr(target, attribute)
    if not sequence:
        assert description.type().endswith("InstantiationTimingEventProps")
        return
    wrong = [(None, TypeError), (object(), TypeError), (common.Package.MetaClass(), TypeError)]
    wrong += [(0.5, TypeError)]
    if class_of(description):
        wrong += [("text", TypeError), (reflection.Maker(other).value(description.type()), ValueError)]
    for value, error in wrong:
        for add in ways_to_add(sequence, value):
            refused(add, target, attribute, error)


@pytest.mark.parametrize("cls, attribute, description", MANY)
def test_what_holds_many_values_cannot_be_assigned(model, cls, attribute, description):
    target = filled(cls, attribute, description, model)
    value = reflection.Maker(model).value(description.type())
    for given in (value, None, [value], [], "text", 7, object()):
        text = refused(lambda: setattr(target, attribute, given), target, attribute, K7Q.Exception)
        assert "You cannot set a multi-valued property" in text
    with pytest.raises(K7Q.Exception) as raised:
        delattr(target, attribute)
    note, = raised.value.__notes__
    assert note == (f"{cls.__name__}.{attribute} has many values: change its sequence, as in "
                    f"object.{attribute}.append(value)")


@pytest.mark.parametrize("cls, attribute, description", MANY)
def test_an_object_stands_in_a_property_once_and_other_values_as_often_as_they_are_added(
        model, cls, attribute, description):
    target = filled(cls, attribute, description, model)
    sequence = getattr(target, attribute)
    for value in list(sequence):
        for add in ("append", "push_back", "push_front"):
            getattr(sequence, add)(value)
        assert len(sequence) == (1 if class_of(description) else 4) and set(sequence) == {value}


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


@pytest.mark.parametrize("cls, attribute, description", READ_ONLY)
def test_a_computed_property_cannot_be_written(model, cls, attribute, description):
    target = cls(model)
    for value in (None, "text", 7, target, object()):
        text = refused(lambda: setattr(target, attribute, value), target, attribute, K7Q.Exception)
        assert ("You cannot set a multi-valued property" if description.upperBound() != 1 else
                "You cannot set a read-only property") in text
    with pytest.raises(K7Q.Exception) as raised:
        delattr(target, attribute)
    note, = raised.value.__notes__
    assert note == f"{cls.__name__}.{attribute} is computed: change the values that it is computed from"


@pytest.mark.parametrize("cls, attribute, description",
                         [each for each in READ_ONLY if each.values[2].upperBound() != 1])
def test_a_computed_sequence_cannot_be_changed(model, cls, attribute, description):
    target = cls(model)
    sequence = getattr(target, attribute)
    for change in ("append", "push_back", "push_front", "insert", "replace", "erase", "clear", "pop_back"):
        assert not hasattr(sequence, change)
    for change in (lambda: sequence.__iadd__([target]), lambda: sequence.extend([target])):
        assert "cannot be changed" in refused(change, target, attribute, TypeError)


def test_there_are_so_many_of_each():
    """Makes sure that no group is empty. The properties of foundation and types are included."""
    groups = (PROPERTIES, WRITABLE, REFERENCES, MANY, READ_ONLY)
    assert [len(each) for each in groups] == [674, 663, 433, 180, 11]


def test_every_property_of_the_platform_is_among_them():
    covered = {(each.values[2].owner().fullName(), each.values[1]) for each in PROPERTIES}
    published = {(cls["fullName"].replace(".Immutable", "."), each["name"])
                 for package in reflection.packages()
                 for cls in _tarvelon_host.describe(package.__name__)["classes"]
                 for each in cls["properties"]}
    left = {f"{owner.rpartition('.')[2]}.{name}" for owner, name in published - covered}

    # The first property has no concrete class; the others are redefined in every concrete class.
    assert left == {"InstantiationTimingEventProps.Period", "InstantiationTimingEventProps.RefinedEvent",
                    "AdaptivePlatformServiceInstance.Deployment", "CompositionPortInstanceRef.Port",
                    "DataInstanceRef.DataElements", "Port.Type"}
    assert len(published) == 494
