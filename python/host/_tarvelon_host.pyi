"""What the packages of the metamodel have in common: the roots of the host's classes.

Import the packages `K7Q` and `Tarvelon.metamodel` instead; these names are for annotations at most.
"""

from collections.abc import Iterable, Iterator as _PythonIterator
from typing import Any, ClassVar, Protocol, SupportsIndex, TypedDict, TypeVar, overload
from typing_extensions import Never, Self

import K7Q
from K7Q import (
    ChangedDuringIteration as ChangedDuringIteration,
    Exception as Exception,
    LoadError as LoadError,
    OutOfBounds as OutOfBounds,
    OutOfRange as OutOfRange,
    StaleIterator as StaleIterator,
    UnknownModule as UnknownModule,
    UnknownName as UnknownName,
    WrongType as WrongType,
    WrongValue as WrongValue,
)

_Element = TypeVar("_Element")
_Held = TypeVar("_Held", covariant=True)
_Taken = TypeVar("_Taken", contravariant=True)
_Value = TypeVar("_Value", bound="Enumeration")

# A sequence tells its elements by what it publishes, so that nothing need be said twice for each class.
class _Holds(Protocol[_Held]):
    def front(self) -> _Held: ...

class _Takes(Protocol[_Taken]):
    def append(self, element: _Taken, /) -> None: ...

class _HoldsAndTakes(Protocol[_Element]):
    def front(self) -> _Element: ...
    def append(self, element: _Element, /) -> None: ...

class HostClass(type):
    """The type of the host's classes."""

    def __iter__(cls: type[_Value]) -> _PythonIterator[_Value]:  # type: ignore[misc]
        """The values of an enumeration, in their order; no other class can be iterated."""

class HostObject(metaclass=HostClass):
    """What every object of the host's classes is."""

    # No class is called but those that declare how.
    def __init__(self, nothing: Never, /) -> None: ...
    def __eq__(self, other: object, /) -> bool: ...
    def __hash__(self) -> int: ...

class Enumeration(HostObject):
    """What every value of an enumeration is."""

    def __lt__(self, other: Self, /) -> bool: ...
    def __le__(self, other: Self, /) -> bool: ...
    def __gt__(self, other: Self, /) -> bool: ...
    def __ge__(self, other: Self, /) -> bool: ...
    def __format__(self, specification: str, /) -> str: ...

class Sequence(HostObject):
    """What every sequence is: the host's methods count from 1, Python's operators and methods from 0.

    Which of these a sequence has depends on whether it can be changed.
    """

    def __len__(self) -> int: ...
    def __contains__(self, element: object, /) -> bool: ...
    def __iter__(self: _Holds[_Element]) -> _PythonIterator[_Element]: ...
    @overload
    def __getitem__(self: _Holds[_Element], index: SupportsIndex, /) -> _Element: ...
    @overload
    def __getitem__(self: _Holds[_Element], indices: slice, /) -> list[_Element]: ...
    def __setitem__(self: _Takes[_Element], index: SupportsIndex, element: _Element, /) -> None: ...
    def __delitem__(self: _Takes[Any], index: SupportsIndex | slice, /) -> None: ...
    def index(self, element: object, start: SupportsIndex = ..., stop: SupportsIndex = ..., /) -> int:
        """The first index from 0 of an equal element; K7Q.WrongValue if there is none."""
    def count(self, element: object, /) -> int:
        """How many elements are equal."""
    def extend(self: _Takes[_Element], elements: Iterable[_Element], /) -> None:
        """Adds one after another, in their order."""
    def remove(self: _Takes[Any], element: object, /) -> None:
        """Takes the first equal element out; K7Q.WrongValue if there is none."""
    def pop(self: _HoldsAndTakes[_Element], index: SupportsIndex = ..., /) -> _Element:
        """Takes the element at an index from 0, or the last one, out and gives it."""

class Iterator(HostObject):
    """What every iterator of the host is: a place in a sequence."""

    __hash__: ClassVar[None]  # type: ignore[assignment]

class MetaProperties(HostObject):
    """What MetaProperty() gives: the descriptions of a class's properties, own and inherited, in the order of its
    list, by their names."""

    def __len__(self) -> int: ...
    def __iter__(self) -> _PythonIterator[K7Q.ImmutableProperty]: ...
    def __contains__(self, name: object, /) -> bool: ...
    def __getitem__(self, name: str, /) -> K7Q.ImmutableProperty: ...

version: str

class _Documentation(TypedDict):
    purpose: str
    constructors: list[list[str]]

def isPackage(name: str, /) -> bool: ...
def member(package: str, name: str, /) -> Any: ...
def memberNames(package: str, /) -> list[str]: ...
def describe(name: str, /) -> dict[str, Any]: ...
def documentation(name: str, /) -> _Documentation: ...
def plainType(name: str, /) -> str: ...
def nearest(name: str, candidates: list[str], /) -> str: ...
def extend(class_name: str, members: dict[str, Any], /) -> None: ...
def attributeName(name: str, /) -> str: ...
def statistics() -> dict[str, int]: ...
