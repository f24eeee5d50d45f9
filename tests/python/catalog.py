"""Helpers for the tests of the whole metamodel: finding and creating everything in it."""

import functools
import importlib.util
from pathlib import Path

import _tarvelon_host

EXAMPLE = Path(__file__).resolve().parents[2] / "examples" / "every_class.py"
SPEC = importlib.util.spec_from_file_location("every_class", EXAMPLE)
reflection = importlib.util.module_from_spec(SPEC)
SPEC.loader.exec_module(reflection)

ROOT = "Tarvelon.metamodel.arplatform"


@functools.lru_cache(maxsize=None)
def host_classes():
    """The records of all classes that the platform's packages publish, in order of registration."""
    return [each for package in reflection.packages()
            for each in _tarvelon_host.describe(package.__name__)["classes"]]


def metamodel_classes():
    """The records of the metamodel's own classes: those whose first superclass is their immutable class."""
    return [each for each in host_classes() if any(one["name"] == "MetaClass" for one in each["methods"])
            and each["superclasses"][0].endswith(".Immutable" + each["name"])]


def constructors_of(record):
    return [each for each in record["methods"] if each["kind"] == "constructor"]


def class_named(full_name):
    """The Python class with that dotted name."""
    package, _, short = full_name.rpartition(".")
    return getattr(reflection.module_of(package), short)


def live_objects():
    """The number of objects in all models."""
    return _tarvelon_host.statistics()["objects"]
