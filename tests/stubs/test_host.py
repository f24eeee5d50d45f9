"""Compares the stubs with the running host: they must describe each class correctly and completely."""

import ast
import builtins
import importlib
import os
import re
import subprocess
import sys

import pytest

import K7Q
import _tarvelon_host
from Tarvelon.metamodel.arplatform import Factory
from conftest import BUILT, ROOT

sys.path.append(str(ROOT / "examples"))
reflection = importlib.import_module("every_class")
sys.path.pop()

# Differences that stubtest reports but that are no errors. A method of the host is neither a staticmethod nor
# a Python function. The host's classes are only subclassed by other classes of the host. A literal whose name
# is a keyword has a second name that programs don't use. Objects have methods for `copy` that only raise.
# `find` of the class is not `find` of its objects.
KNOWN = (
    r" is inconsistent, stub is a staticmethod but runtime is not$",
    r"\.MetaPackage is not a function$",
    r" cannot be subclassed at runtime, but isn't marked with @final in the stub$",
    r"\.None is not present in stub$",
    r"\.HostObject\.__(deep)?copy__ is not present in stub$",
    r"^K7Q\.Model\.find variable differs from runtime type def ",
    r"^K7Q\._tuples\.NamedTuple\.",  # mypy treats it as typing.NamedTuple
)


def stub_modules():
    for name in ("K7Q", "Tarvelon"):
        root = BUILT / f"{name}-stubs"
        for file in sorted(root.rglob("*.pyi")):
            parts = file.relative_to(root).with_suffix("").parts
            yield ".".join([name, *(each for each in parts if each != "__init__")]), file


MODULES = dict(stub_modules())


def stub_classes(name):
    tree = ast.parse(MODULES[name].read_text(encoding="utf-8"))
    return {each.name: each for each in tree.body if isinstance(each, ast.ClassDef) and not each.name.startswith("_")}


CLASSES = {name: stub_classes(name) for name in MODULES}


def is_hosts(module, name):
    """Whether a class is one of the host's classes, not a Python class."""
    return issubclass(getattr(importlib.import_module(module), name), _tarvelon_host.HostObject)


def test_stubtest_finds_no_difference(tmp_path):
    for name in ("K7Q", "Tarvelon", "_tarvelon_host"):
        (tmp_path / name).symlink_to(BUILT / f"{name}-stubs")
    command = [sys.executable, "-m", "mypy.stubtest", "--concise", "K7Q", "Tarvelon.metamodel", "_tarvelon_host"]
    done = subprocess.run(command, capture_output=True, text=True, timeout=800,
                          env={**os.environ, "MYPYPATH": str(tmp_path)})
    lines = done.stdout.splitlines()
    assert [each for each in lines if not any(re.search(known, each) for known in KNOWN)] == [], done.stderr
    # Checks that stubtest has really looked: each known difference must occur.
    assert all(any(re.search(known, each) for each in lines) for known in KNOWN)


def test_every_class_of_every_package_stands_in_its_stub():
    packages = ["K7Q", "Tarvelon.metamodel.types", "Tarvelon.metamodel.foundation", "Tarvelon.metamodel.arplatform",
                *(each.__name__ for each in reflection.packages())]
    for name in packages:
        published = [each["name"] for each in _tarvelon_host.describe(name)["classes"]]
        assert [each for each in CLASSES[name] if is_hosts(name, each)] == published
    assert sum(len(_tarvelon_host.describe(each)["classes"]) for each in packages) == 3879


def named(module, text):
    """The class named by an expression of a stub: of its own module or of an imported one."""
    first, _, last = text.rpartition(".")
    if text == "NamedTuple":
        return tuple
    if not first:
        return getattr(importlib.import_module(module) if last in CLASSES[module] else builtins, last)
    modules = {each.rpartition(".")[2]: each for each in [*MODULES, "_tarvelon_host", "builtins"]}
    package = modules.get(first) or modules[first.removeprefix("_")]
    return getattr(importlib.import_module(package), last)


@pytest.mark.parametrize("module", MODULES)
def test_bases_stand_in_the_order_in_which_python_sees_them(module):
    for name, written in CLASSES[module].items():
        bases = tuple(named(module, ast.unparse(each)) for each in written.bases)
        assert (bases or (object,)) == getattr(importlib.import_module(module), name).__bases__


def test_a_class_says_what_it_is_for_and_names_the_arguments_of_its_constructors():
    constructors = 0
    for module, classes in CLASSES.items():
        for name, written in classes.items():
            told = _tarvelon_host.documentation(f"{module}.{name}")
            assert not told["purpose"] or ast.get_docstring(written) == told["purpose"]
            made = [[each.arg for each in member.args.posonlyargs[1:]] for member in written.body
                    if isinstance(member, ast.FunctionDef) and member.name == "__init__"]
            if is_hosts(module, name):
                assert made == (told["constructors"] or [["nothing"]] * len(made))
            constructors += len(told["constructors"])
    assert constructors == 474


def property_of(cls, attribute):
    """The type of a property in the stub, whether it may be None, and whether it can be set."""
    for base in cls.__mro__:
        written = CLASSES.get(base.__module__, {}).get(base.__name__)
        members = written.body if written else []
        found = [each for each in members if isinstance(each, ast.FunctionDef) and each.name == attribute]
        if found:
            kind, _, rest = ast.unparse(found[0].returns).partition(" | ")
            return named(base.__module__, kind), rest == "None", len(found) > 1
    raise AssertionError(f"{cls.__name__}.{attribute} stands in no stub")


@pytest.fixture(scope="module")
def model():
    with Factory.createNewModel() as made:
        yield made


@pytest.fixture(scope="module")
def maker(model):
    return reflection.Maker(model)


def properties():
    for cls in reflection.concrete_classes():
        for description in cls.MetaProperty():
            attribute = reflection.attribute_of(cls, description)
            if attribute is not None:
                yield pytest.param(cls, attribute, description, id=f"{cls.__name__}.{attribute}")


@pytest.mark.parametrize("cls, attribute, description", properties())
def test_a_property_reads_as_its_stub_says(model, maker, cls, attribute, description):
    target = cls(model)
    unset = getattr(target, attribute)
    kind, may_be_none, is_set = property_of(cls, attribute)
    assert is_set == (not description.isReadOnly())
    # An unset required reference is None too, but the stub describes it as set.
    is_required = description.lowerBound() == 1 and issubclass(kind, K7Q.ImmutableObject)
    assert unset is not None or may_be_none or is_required
    if is_set:
        reflection.write_and_read(target, attribute, description, maker)
    for owner in (target, target.asImmutable()):
        kind, may_be_none, _ = property_of(type(owner), attribute)
        value = getattr(owner, attribute)
        if value is None:
            continue
        # The object of a reference may be an instance of a subclass; sequences and values have exactly this
        # class.
        assert isinstance(value, kind) if issubclass(kind, K7Q.ImmutableObject) else type(value) is kind


@pytest.mark.parametrize("cls", list(reflection.concrete_classes()), ids=lambda each: each.__name__)
def test_a_view_leads_where_its_stub_says(model, cls):
    target = cls(model)
    view = target.asImmutable()
    for owner, method in ((target, "asImmutable"), (view, "asImmutable"), (view, "asMutable")):
        assert type(getattr(owner, method)()) is property_of(type(owner), method)[0]
