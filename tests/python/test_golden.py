"""Compares the output of `describe --json` with files that were written independently of the rows.

Each file in tests/golden/ describes one package in the format of describe. The file of the root package names its
child packages and does not contain them. A difference means that a row or a pattern of the binding has changed. The
failing test names the class, the first differing paths and both values. Edit a file only for an intended change, and
do not copy the output of describe into it.
"""

import functools
import json
import subprocess
import sys
from pathlib import Path

import pytest

GOLDEN = Path(__file__).resolve().parents[1] / "golden"
ROOT = "Tarvelon.metamodel.arplatform"
SHOWN = 12  # a failure prints at most this number of differences, and counts the others

# Counted by hand: eleven host classes for each class, five for each enumeration.
HOST_CLASSES = {
    "documentation": 10 * 11, "common": 21 * 11 + 5, "variant": 21 * 11 + 5, "interface": 20 * 11 + 6 * 5,
    "port": 79 * 11 + 5 * 5, "component": 6 * 11 + 5, "behavior": 36 * 11 + 8 * 5, "instance": 20 * 11,
    "composition": 7 * 11, "ecuc": 20 * 11, "manifest": 31 * 11 + 6 * 5, "timingExtension": 7 * 11,
    "system": 6 * 11,
}


def golden(package):
    return json.loads((GOLDEN / f"{package}.json").read_text(encoding="utf-8"))


EXPECTED = {package: golden(package) for package in HOST_CLASSES}
EXPECTED_ROOT = golden("arplatform")
CLASSES = [(package, expected) for package, tree in EXPECTED.items() for expected in tree["classes"]]


@functools.lru_cache(maxsize=None)
def run_describe(*names):
    # The result of a failed run is cached too; otherwise hundreds of tests would repeat the run.
    command = [sys.executable, "-P", "-m", "Tarvelon.describe", "--json", *names]
    return subprocess.run(command, capture_output=True, text=True, encoding="utf-8", timeout=300)


@functools.lru_cache(maxsize=None)
def describe(*names):
    """The result of describe for a name or for none, run in another process."""
    done = run_describe(*names)
    if done.returncode != 0:
        pytest.fail(f"{' '.join(done.args)} ended with {done.returncode}:\n{done.stderr}", pytrace=False)
    return json.loads(done.stdout)


def described_class(package, full_name):
    found = [each for each in describe(f"{ROOT}.{package}")["classes"] if each["fullName"] == full_name]
    assert len(found) == 1, f"{full_name} is described {len(found)} times, expected once"
    return found[0]


def label(item):
    """The name of a list's element in a path: `[3 cast]`, so that readers need not count."""
    return f" {item['name']}" if isinstance(item, dict) and isinstance(item.get("name"), str) else ""


def differences(expected, actual, path=""):
    """Yields (path, expected, actual) wherever two trees differ. true differs from 1; a missing value is
    `...`."""
    if isinstance(expected, dict) and isinstance(actual, dict):
        for key in [*expected, *(key for key in actual if key not in expected)]:
            yield from differences(expected.get(key, ...), actual.get(key, ...), f"{path}.{key}".lstrip("."))
    elif isinstance(expected, list) and isinstance(actual, list):
        for index in range(max(len(expected), len(actual))):
            one = expected[index] if index < len(expected) else ...
            other = actual[index] if index < len(actual) else ...
            yield from differences(one, other, f"{path}[{index}{label(one if one is not ... else other)}]")
    elif type(expected) is not type(actual) or expected != actual:
        yield path, expected, actual


def written(value):
    return "nothing" if value is ... else json.dumps(value)


def check(expected, actual, what):
    found = list(differences(expected, actual))
    if not found:
        return
    lines = [f"{path or 'all of it'}\n    expected {written(one)}\n    got      {written(other)}"
             for path, one, other in found[:SHOWN]]
    if len(found) > SHOWN:
        lines.append(f"and {len(found) - SHOWN} more")
    pytest.fail(f"{what}: {len(found)} differences\n" + "\n".join(lines), pytrace=False)


@pytest.mark.parametrize("package, count", HOST_CLASSES.items())
def test_golden_file_holds_every_host_class_once(package, count):
    names = [each["fullName"] for each in EXPECTED[package]["classes"]]
    assert len(names) == len(set(names)) == count


@pytest.mark.parametrize("package", HOST_CLASSES)
def test_package_lists_its_classes_in_order_of_registration(package):
    expected = [each["fullName"] for each in EXPECTED[package]["classes"]]
    check(expected, [each["fullName"] for each in describe(f"{ROOT}.{package}")["classes"]], package)


@pytest.mark.parametrize("package", HOST_CLASSES)
def test_package_besides_its_classes(package):
    expected = {**EXPECTED[package], "classes": []}
    check(expected, {**describe(f"{ROOT}.{package}"), "classes": []}, package)


@pytest.mark.parametrize("package, expected", CLASSES, ids=[each["fullName"] for _, each in CLASSES])
def test_class(package, expected):
    check(expected, described_class(package, expected["fullName"]), expected["fullName"])


def test_root_names_its_functions_classes_and_child_packages():
    tree = describe(ROOT)
    check(EXPECTED_ROOT, {**tree, "packages": [each["name"] for each in tree["packages"]]}, ROOT)


def test_root_holds_its_children_as_they_describe_themselves():
    held = {each["name"]: each for each in describe(ROOT)["packages"]}
    for package in HOST_CLASSES:
        name = f"{ROOT}.{package}"
        assert name in held
        check(describe(name), held[name], f"{name} within {ROOT}")


@pytest.mark.parametrize("package, name", [("common", "Package"), ("variant", "BindingTimeKind")])
def test_class_described_alone_is_the_class_of_its_package(package, name):
    full_name = f"{ROOT}.{package}.{name}"
    check(described_class(package, full_name), describe(full_name), full_name)


def test_without_a_name_the_root_is_described():
    check(describe(ROOT), describe(), "describe without a name")


@pytest.mark.parametrize("expected, actual, found", [
    ({"flags": 8}, {"flags": 8}, []),
    ({"flags": 8}, {"flags": 520}, [("flags", 8, 520)]),
    ({"access": 1}, {"access": True}, [("access", 1, True)]),
    ({"self": None}, {}, [("self", None, ...)]),
    ({}, {"extra": 1}, [("extra", ..., 1)]),
    ({"methods": [{"name": "cast", "flags": 8}]}, {"methods": [{"name": "cast", "flags": 0}]},
     [("methods[0 cast].flags", 8, 0)]),
    (["a", "b"], ["b"], [("[0]", "a", "b"), ("[1]", "b", ...)]),
])
def test_differences_are_found_and_named(expected, actual, found):
    assert list(differences(expected, actual)) == found
