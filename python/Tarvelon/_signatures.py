"""Describes the host's classes in terms of Python: base classes, signatures and types."""

from __future__ import annotations

import functools
import itertools
from typing import Any, NamedTuple

import _tarvelon_host as _host

Record = dict[str, Any]

SCALARS = {
    "void": "None", "Self": "Self",
    "logical scalar": "bool", "int32 scalar": "int", "double scalar": "float", "char vector": "str",
    "k7qlogical": "bool", "k7qint32": "int", "k7qdouble": "float", "char": "str",
}
ARGUMENTS = {"bool": "flag", "int": "number", "float": "number", "str": "text"}
MODEL_OBJECT = "K7Q.ImmutableClassObject"
# These methods return an object of the class itself, of its immutable view, or of the view's mutable class.
OWN_CLASS = ("asDeviant",)
VIEWS = ("asImmutable", "asMutable")


class Signature(NamedTuple):
    """The signature of a method. The types have the host's names."""

    names: tuple[str, ...]
    types: tuple[str, ...]
    result: str
    is_static: bool


def split(full_name: str) -> tuple[str, str]:
    package, _, short = full_name.rpartition(".")
    return package, short


def purpose(record: Record) -> str:
    """The docstring of a class."""
    told = _host.documentation(record["fullName"])["purpose"]
    return told or record["description"] or f"A class of the metamodel: {record['fullName']}"


def argument_names(method: Record) -> tuple[str, ...]:
    """The names of a method's arguments: those of the constructor in the metamodel, those of the record, or
    else names made from their types."""
    count = len(method["arguments"])
    own = tuple(each.strip() for each in method["parameterNames"].split(","))
    for given in (_made_from(method, count), own):
        if len(given) == count and all(map(str.isidentifier, given)):
            return given
    names = [_name_after(each) for each in method["arguments"]]
    numbered = (f"{name}{names[:place].count(name) + 1}" if names.count(name) > 1 else name
                for place, name in enumerate(names))
    return tuple(map(_host.attributeName, numbered))


def _made_from(method: Record, count: int) -> tuple[str, ...]:
    """The argument names that the metamodel gives for a constructor or for a method of the factory; ()
    otherwise."""
    is_factorys = method["name"].startswith("createmetamodel")
    if not is_factorys and method["kind"] != "constructor":
        return ()
    constructors = _host.documentation(method["result"])["constructors"]
    named = (tuple(each[1:] if is_factorys else each) for each in constructors)
    return next((each for each in named if len(each) == count), ())


def _name_after(type_name: str) -> str:
    if type_name in SCALARS:
        return ARGUMENTS[SCALARS[type_name]]
    short = split(type_name)[1].removeprefix("Immutable")
    return "place" if short.endswith("Iterator") else short[0].lower() + short[1:]


@functools.cache
def class_record(full_name: str) -> Record:
    return _host.describe(full_name)


@functools.cache
def lineage(full_name: str) -> tuple[str, ...]:
    """The class and its superclasses in Python's method resolution order, without the host's root types."""
    kinds: tuple[type, ...] = _host.member(*split(full_name)).__mro__
    return tuple(f"{each.__module__}.{each.__name__}" for each in kinds
                 if each.__module__ not in ("builtins", "_tarvelon_host"))


def is_kind_of(narrow: str, wide: str) -> bool:
    return narrow == wide or ("." in narrow and "." in wide and wide in lineage(narrow))


def is_view(full_name: str) -> bool:
    """Whether the class is the immutable view of a class of model objects."""
    package, short = split(full_name)
    return package != "K7Q" and short.startswith("Immutable") and MODEL_OBJECT in lineage(full_name)


def changeable(type_name: str, is_many: bool = False, is_read_only: bool = False) -> str:
    """The type of a property's value when it is read through a mutable object."""
    package, short = split(type_name)
    if is_many:
        element = short.removeprefix("ImmutableSequenceOf").removeprefix("Immutable")
        return f"{package}.{'Immutable' if is_read_only else ''}SequenceOf{element}"
    return f"{package}.{short.removeprefix('Immutable')}" if package else type_name


def signature_of(method: Record) -> Signature:
    first = 1 if method["kind"] == "selfArgument" else 0
    result = "Self" if method["name"] in OWN_CLASS else method["result"]
    return Signature(argument_names(method)[first:], tuple(method["arguments"][first:]), result,
                     method["kind"] == "static")


@functools.cache
def declared(full_name: str, name: str) -> tuple[Signature, ...]:
    """The signatures of a method that the class itself declares."""
    if name in VIEWS and is_view(full_name):
        result = full_name if name == "asImmutable" else changeable(full_name)
        return (Signature((), (), result, False),)
    return tuple(signature_of(each) for each in class_record(full_name)["methods"]
                 if each["name"] == name and each["kind"] != "constructor")


@functools.cache
def overloads(full_name: str, name: str) -> tuple[Signature, ...]:
    """The overloads of a method: the signatures of the class and its bases, without redundant ones."""
    found = list(dict.fromkeys(each for cls in lineage(full_name) for each in declared(cls, name)))
    return tuple(
        each for place, each in enumerate(found)
        if not any(_covers(other, each) and (rank < place or other.result == each.result)
                   for rank, other in enumerate(found) if rank != place))


def _covers(wide: Signature, narrow: Signature) -> bool:
    return len(wide.types) == len(narrow.types) and all(map(is_kind_of, narrow.types, wide.types))


def replaces(found: tuple[Signature, ...], before: tuple[Signature, ...]) -> bool:
    """Whether the overloads `found` accept every call that a base's overloads `before` accept, with fitting
    results."""
    answers = ((next((each for each in found if _covers(each, other)), None), other) for other in before)
    return all(each is not None and is_kind_of(each.result, other.result) for each, other in answers)


def own_methods(record: Record) -> list[tuple[str, tuple[Signature, ...], bool]]:
    """The methods for the stub of a class, without those that it inherits unchanged: the name, the overloads,
    and whether they are compatible with the methods of all bases."""
    full_name, result = record["fullName"], []
    names = [each["name"] for each in record["methods"] if each["kind"] != "constructor"]
    for name in dict.fromkeys([*(VIEWS if MODEL_OBJECT in lineage(full_name) else ()), *names]):
        found = overloads(full_name, name)
        bases = [each for each in lineage(full_name)[1:] if declared(each, name)]
        if not bases or overloads(bases[0], name) != found or _disagree(bases, name):
            result.append((name, found, all(replaces(found, overloads(each, name)) for each in bases)))
    return result


def _disagree(bases: list[str], name: str) -> bool:
    """Whether there are two unrelated bases of which the first does not replace the method of the second.

    At run time Python uses the first base, but a type checker requires a declaration in the class.
    """
    return any(other not in lineage(one) and not replaces(overloads(one, name), overloads(other, name))
               for one, other in itertools.combinations(bases, 2))
