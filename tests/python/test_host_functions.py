"""The functions of the extension module. The Python packages call them by position, but anybody can call
them."""

import types

import pytest

import K7Q
import _tarvelon_host
from Tarvelon.metamodel.arplatform import common, variant

MOST = 5  #: the greatest number of arguments of a function of the module
FUNCTIONS = {name: each for name, each in vars(_tarvelon_host).items() if isinstance(each, types.BuiltinFunctionType)}


def counts():
    """The number of arguments of each function, from its own error text."""
    found = {}
    for name, function in FUNCTIONS.items():
        try:
            function(*[None] * 99)
        except K7Q.WrongType as error:
            said, _, given = str(error).removeprefix(f"{name}: expected ").partition(" argument")
            assert given.endswith(", got 99")
            found[name] = int(said)
    return found


COUNTS = counts()


@pytest.fixture(autouse=True)
def in_a_folder_of_its_own(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)


def test_every_function_says_how_many_arguments_it_takes():
    assert COUNTS.keys() == FUNCTIONS.keys()
    assert len(COUNTS) == 49 and max(COUNTS.values()) == MOST


@pytest.mark.parametrize("name", COUNTS)
def test_another_number_of_arguments_is_refused(name, package):
    for count in range(MOST + 3):
        if count == COUNTS[name]:
            continue
        for value in (None, package, "x"):
            with pytest.raises(K7Q.WrongType, match=f"^{name}: expected {COUNTS[name]} arguments?, got {count}$"):
                FUNCTIONS[name](*[value] * count)


@pytest.mark.parametrize("name", COUNTS)
def test_arguments_by_name_are_refused(name):
    with pytest.raises(TypeError):
        FUNCTIONS[name](*[None] * COUNTS[name], nothing=1)


def values(model, package):
    """A value of each kind that a script can have."""
    closed = K7Q.Model.create()
    gone = common.Package(closed, "gone")
    closed.close()
    destroyed = common.Package(model, "destroyed")
    destroyed.destroy()
    return [None, True, 0, -1, 2 ** 100, 1.5, "", "x", "\ud800", "a\0b", b"x", [], [None], {}, {1: 2}, (), object(), int, len,
            model, model.frozen(), package, package.asImmutable(), package.asDeviant(model.frozen()), closed, gone, destroyed,
            package.PackagedElement, package.PackagedElement.begin(), variant.BindingTimeKind.LinkTime, common, common.Package, common.SequenceOfPackage,
            _tarvelon_host.HostObject, _tarvelon_host.beginTransaction(K7Q.Model.create()), K7Q.WrongType]


@pytest.mark.parametrize("name", [name for name in COUNTS if name not in ("extend", "statistics", "validationRules")])
def test_arguments_of_any_kind_are_taken_or_refused(name, model, package):
    taken = 0
    for first in values(model, package):
        for other in values(model, package):
            arguments = [first, *[other] * (COUNTS[name] - 1)]
            try:
                FUNCTIONS[name](*arguments)
                taken += 1
            except (K7Q.Exception, TypeError, ValueError, OverflowError, OSError):
                pass
    assert model.isvalid() and package.Name == "Brakes"


@pytest.mark.parametrize("name", [name for name in COUNTS if COUNTS[name]])
def test_what_is_no_argument_for_it_is_a_wrong_type(name):
    class Nothing:
        """An object that is not a model, object, text, number, callable or container."""

    with pytest.raises(TypeError):
        FUNCTIONS[name](*[Nothing()] * COUNTS[name])


def test_members_for_a_class_are_a_dict():
    for members in (None, [], "x", [("a", 1)]):
        with pytest.raises(K7Q.WrongType):
            _tarvelon_host.extend("K7Q.Model", members)


def test_members_that_have_no_names_are_refused_when_the_class_is_made(python):
    code = """
import _tarvelon_host, K7Q
from Tarvelon.metamodel.arplatform import common
_tarvelon_host.extend("Tarvelon.metamodel.arplatform.common.Package", {1: 2})
for _ in range(2):
    try:
        common.Package
    except TypeError:
        print("refused")
"""
    assert python(code) == "refused\nrefused\n"


def test_a_wide_indentation_is_one_that_can_be_had(model, package):
    assert _tarvelon_host.toJson(package, 2 ** 40).startswith("{\n ")


def test_the_nearest_of_long_names_is_found_at_once():
    name = "a" * 100_000
    assert _tarvelon_host.nearest(name, ["b" * 100_000]) == ""
    for near in (name[:50_000] + "b" + name[50_000:], name[:-3], "ba" + name[1:]):
        assert _tarvelon_host.nearest(name, [name + "bbbb", near]) == near
