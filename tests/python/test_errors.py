"""The exception for each kind of error; nothing may change."""

import traceback
import weakref

import pytest

import K7Q
import _tarvelon_host
from Tarvelon.metamodel.arplatform import common, component, variant


@pytest.mark.parametrize("name, builtin", [
    ("WrongType", TypeError), ("OutOfRange", OverflowError), ("WrongValue", ValueError),
    ("OutOfBounds", IndexError), ("UnknownName", AttributeError), ("UnknownModule", ModuleNotFoundError),
    ("LoadError", ImportError),
    ("ChangedDuringIteration", RuntimeError), ("StaleIterator", TypeError), ("StaleIterator", IndexError),
])
def test_every_error_is_a_k7q_exception_and_a_builtin(name, builtin):
    error = getattr(K7Q, name)

    assert issubclass(error, K7Q.Exception) and issubclass(error, builtin)
    assert error.__module__ == "K7Q" and error.__doc__


def test_a_text_of_the_native_side_is_that_class_alone_and_unchanged(package):
    with pytest.raises(K7Q.Exception) as raised:
        package.ReferenceBase.front()

    assert type(raised.value) is K7Q.Exception
    assert str(raised.value).startswith("Assertion failed: sequence is empty at ")


def test_an_unknown_attribute_names_the_nearest(package):
    with pytest.raises(AttributeError) as raised:
        package.categry

    assert str(raised.value) == ("class 'Tarvelon.metamodel.arplatform.common.Package' has no property or "
                                 "method 'categry'; did you mean 'category'?")


def test_an_assignment_to_an_unknown_attribute_names_the_nearest(package):
    with pytest.raises(AttributeError, match="did you mean 'category'?"):
        package.categry = "x"


def test_nothing_near_is_not_guessed(package):
    with pytest.raises(K7Q.UnknownName) as raised:
        package.zzzzzzzzz

    assert str(raised.value).endswith("has no property or method 'zzzzzzzzz'")


def test_the_interpreter_adds_no_second_guess(package):
    try:
        package.Nam
    except AttributeError as error:
        text = "".join(traceback.format_exception(error))

    assert text.count("did you mean") == 1
    assert "Did you mean" not in text


def test_an_unknown_attribute_is_asked_for_without_an_error(package):
    assert not hasattr(package, "categry")
    assert getattr(package, "categry", 5) == 5


def test_a_method_cannot_be_assigned_or_deleted(package):
    with pytest.raises(AttributeError, match="Package.isvalid is not a property"):
        package.isvalid = 1
    with pytest.raises(AttributeError, match="Package.isvalid is not a property"):
        del package.isvalid


def test_an_unknown_member_of_a_class_names_the_nearest():
    with pytest.raises(AttributeError, match="'LinkTme'; did you mean 'LinkTime'?"):
        variant.BindingTimeKind.LinkTme


def test_no_constructor_takes_these_arguments(model):
    with pytest.raises(TypeError) as raised:
        common.Package(model, 5)

    assert str(raised.value) == ("Package: no constructor takes (K7Q.Model, int32 scalar); there are\n"
                                 "    Package(K7Q.Model)\n"
                                 "    Package(K7Q.Model, char vector)")


def test_no_signature_takes_these_arguments(package):
    with pytest.raises(TypeError) as raised:
        package.destroy(1)

    assert "Package.destroy: no signature takes (int32 scalar); there" in str(raised.value)
    assert package.isvalid()


def test_an_abstract_class_has_no_constructor(model):
    text = "Identifiable' is abstract: .* one of its subclasses: .*common.ApplicationError, .* more$"
    with pytest.raises(TypeError, match=text):
        common.Identifiable(model)


def test_keyword_arguments_are_refused(model):
    with pytest.raises(TypeError, match="Package: arguments are given by position"):
        common.Package(model, name="x")
    with pytest.raises(TypeError, match="Model.create: arguments are given by position"):
        K7Q.Model.create(name="x")


def test_a_foreign_argument_is_named_with_its_place(model):
    with pytest.raises(TypeError, match=r"Package, argument 2: expected a bool, .* got list"):
        common.Package(model, ["x"])


def test_a_foreign_argument_is_answered_with_the_signatures(model, package):
    with pytest.raises(K7Q.WrongType) as raised:
        common.Package(model, b"x")
    assert str(raised.value).endswith(
        "got bytes; there are\n    Package(K7Q.Model) -> common.Package\n"
        "    Package(K7Q.Model, char vector) -> common.Package")

    with pytest.raises(K7Q.WrongType) as raised:
        package.asDeviant([])
    assert "got list; there is\n    asDeviant(K7Q.ImmutableModel) -> common.Package" in str(raised.value)

    with pytest.raises(K7Q.WrongType) as raised:
        model.setUri(b"x")
    assert str(raised.value).endswith("got bytes; there is\n    setUri(char vector) -> void")


def test_signatures_are_shown_once_and_as_they_are_called(package):
    with pytest.raises(K7Q.WrongType) as raised:
        package.asImmutable(package)
    assert str(raised.value).endswith("there is\n    asImmutable()")

    with pytest.raises(K7Q.WrongType) as raised:
        package.isvalid(1)
    assert str(raised.value).endswith("there is\n    isvalid()")


def test_a_destroyed_object_is_refused_by_name_through_every_door(model):
    base = common.ReferenceBase(model)
    gone = common.Package(model, "Gone")
    gone.destroy()
    text = r"ReferenceBase\.Package: expected .*common\.Package that exists in the model, got .* destroyed"

    with pytest.raises(K7Q.WrongValue, match=text):
        base.Package = gone
    with pytest.raises(K7Q.WrongValue, match=text):
        common.ReferenceBase(model, True, "label", gone)
    assert base.Package is None


def test_a_weak_proxy_is_no_model_object(model, package):
    with pytest.raises(K7Q.WrongType, match="Package.cast, argument 1: expected a bool, .* got weakref.ProxyType"):
        common.Package.cast(weakref.proxy(package))
    with pytest.raises(K7Q.WrongType, match="SequenceOfReferenceBase.append, argument 1: .* got weakref.ProxyType"):
        package.ReferenceBase.append(weakref.proxy(package))


def test_what_is_no_index_is_refused_under_the_name_of_the_method(package):
    with pytest.raises(K7Q.WrongType, match="SequenceOfReferenceBase.pop: expected an int from 0, got str 'a'"):
        package.ReferenceBase.pop("a")
    with pytest.raises(K7Q.WrongType, match="SequenceOfReferenceBase.index: expected an int from 0, got slice"):
        package.ReferenceBase.index("a", slice(1))


def test_a_name_with_a_nul_is_shown_whole(package):
    with pytest.raises(AttributeError) as raised:
        getattr(package, "a\0b")

    assert "'a\0b'" in str(raised.value)


@pytest.mark.parametrize("read, cure", [
    (lambda package: package.asImmutable().destroy, "common.Package has it, but this is an immutable view"),
    (lambda package: package.OwnedElement.append, "foundation.SequenceOfElement has it"),
    (lambda package: package.getModel().frozen().close, "K7Q.Model has it"),
])
def test_what_only_the_changeable_class_has_says_so(package, read, cure):
    with pytest.raises(AttributeError, match=cure):
        read(package)


def test_too_many_arguments_are_refused(model):
    with pytest.raises(TypeError, match="got 20 arguments"):
        common.Package(model, *range(19))


def test_an_unset_model_raises_the_null_text():
    with pytest.raises(K7Q.Exception, match="Cannot access NULL ref"):
        common.Package(None)


def test_a_write_through_an_immutable_object_is_refused(package):
    with pytest.raises(K7Q.Exception, match="through an immutable object"):
        package.asImmutable().Name = "x"

    assert package.Name == "Brakes"


def test_a_write_to_a_read_only_property_is_refused(package):
    with pytest.raises(K7Q.Exception, match="You cannot set a read-only property"):
        package.NestingPackage = package


def test_a_write_to_a_many_valued_property_is_refused(model, package):
    with pytest.raises(K7Q.Exception, match="You cannot set a multi-valued property"):
        package.ReferenceBase = common.ReferenceBase(model)


@pytest.mark.parametrize("value", ["x", None, [1], "\0", 2**80, object()])
def test_what_cannot_be_set_says_so_before_the_value_is_looked_at(package, value):
    with pytest.raises(K7Q.Exception, match="You cannot set a multi-valued property"):
        package.asImmutable().ReferenceBase = value
    with pytest.raises(K7Q.Exception, match="You cannot set a read-only property"):
        package.asImmutable().Owner = value
    with pytest.raises(K7Q.Exception, match="through an immutable object"):
        package.asImmutable().Name = value


def noted(write):
    """The text of an error that does not name the property, and its note, which does."""
    with pytest.raises(K7Q.Exception) as raised:
        write()
    assert type(raised.value) is K7Q.Exception
    assert "".join(traceback.format_exception(raised.value)).endswith("\n".join(raised.value.__notes__) + "\n")
    return str(raised.value).partition(" at ")[0], raised.value.__notes__


MANY = "Assertion failed: You cannot set a multi-valued property"
READ_ONLY = "Assertion failed: You cannot set a read-only property"


@pytest.mark.parametrize("value", [None, "x", [], object()])
def test_a_refused_write_says_below_which_property_it_was_and_what_to_do(model, package, value):
    assert noted(lambda: setattr(package, "ReferenceBase", value)) == (MANY, [
        "Package.ReferenceBase has many values: change its sequence, as in object.ReferenceBase.append(value)"])
    assert noted(lambda: setattr(package, "NestingPackage", value)) == (READ_ONLY, [
        "Package.NestingPackage is computed: change the values that it is computed from"])
    assert noted(lambda: setattr(component.AtomicComponent(model), "Port", value)) == (MANY, [
        "AtomicComponent.Port is computed: change the values that it is computed from"])
    text, notes = noted(lambda: setattr(package.asImmutable(), "Name", value))
    assert text.startswith("You cannot set a property through an immutable object")
    assert notes == ["ImmutablePackage.Name was not set: on <common.ImmutablePackage 'Brakes' immutable>"]


def test_a_refused_del_says_below_which_property_it_was(model, package):
    def remove():
        del package.ReferenceBase

    assert noted(remove)[0] == MANY and "Package.ReferenceBase has many values" in noted(remove)[1][0]
    text, notes = noted(lambda: setattr(package.asDeviant(model.frozen()), "Name", "x"))
    assert "the view is read-only" in text
    assert notes == ["Package.Name was not set: on <common.Package 'Brakes' immutable>"]


def test_a_text_that_names_the_property_has_no_note(package):
    with pytest.raises(K7Q.WrongType, match="Package.Name: expected ") as raised:
        package.Name = 5
    assert not hasattr(raised.value, "__notes__")


def test_a_write_on_a_frozen_view_is_refused(model, package):
    frozen = package.asDeviant(model.frozen())

    with pytest.raises(K7Q.Exception, match="read-only"):
        frozen.Name = "x"

    assert (package.Name, frozen.Name) == ("Brakes", "Brakes")


def test_a_class_cannot_be_subclassed():
    with pytest.raises(TypeError, match="cannot be subclassed in Python"):
        class Mine(common.Package):
            pass


def test_a_root_class_cannot_be_subclassed():
    with pytest.raises(TypeError, match="cannot be subclassed in Python"):
        class Mine(_tarvelon_host.HostObject):
            pass


@pytest.mark.parametrize("change", [
    lambda: setattr(common.Package, "extra", 1), lambda: delattr(common.Package, "Name"),
    lambda: type.__setattr__(common.Package, "extra", 1),
])
def test_a_class_cannot_be_changed(change):
    with pytest.raises((AttributeError, TypeError)):
        change()

    assert not hasattr(common.Package, "extra") and hasattr(common.Package, "Name")


def test_an_object_cannot_change_its_class(package):
    with pytest.raises(AttributeError):
        package.__class__ = common.Sdg


@pytest.mark.parametrize("make", [lambda cls: object.__new__(cls), lambda cls: type.__call__(cls)])
def test_there_is_no_way_around_the_constructor(make):
    with pytest.raises(TypeError):
        make(common.Package)


@pytest.mark.parametrize("cls", [common.SequenceOfPackage, common.PackageIterator, variant.BindingTimeKind])
def test_what_has_no_constructor_says_where_it_comes_from(model, cls):
    with pytest.raises(K7Q.WrongType, match="constructor|enumeration"):
        cls(model)


def test_a_model_says_how_it_is_made():
    with pytest.raises(TypeError) as raised:
        K7Q.Model()

    assert str(raised.value) == "K7Q.Model has no constructor: write K7Q.Model.create()"


def test_a_property_descriptor_refuses_foreign_objects(model):
    with pytest.raises(TypeError, match="ImmutableNamedElement.Name: expected an object of class"):
        common.Package.Name.__get__(common.AdminData(model))
    with pytest.raises(TypeError):
        common.Package.Name.__set__(5, "x")


def test_a_failed_native_allocation_is_a_memory_error(package):
    import ctypes
    from pathlib import Path

    library = ctypes.CDLL(str(Path(_tarvelon_host.__file__).parent.parent / "lib" / "libtarvelon_hx.so"))
    fail = getattr(library, "_Z16utFailAllocationm")
    sequences = package.ReferenceBase  # so that only the call itself allocates
    for countdown in range(1, 4):
        fail(ctypes.c_ulong(countdown))
        try:
            sequences.begin()
        except MemoryError:
            pass
        finally:
            fail(ctypes.c_ulong(0))
        assert package.Name == "Brakes"
