"""Differences between two models or two objects."""

from __future__ import annotations

import _tarvelon_host as _host
from K7Q._methods import function as _function
from K7Q._tuples import NamedTuple

TYPE_CHECKING = False  # importing typing takes longer than importing this whole package
if TYPE_CHECKING:
    from collections.abc import Iterable, Iterator
    from typing import Any, ClassVar, TypeVar, Union, overload

    from K7Q import ImmutableClassObject, ImmutableModel

    _Kind = TypeVar("_Kind")
    Difference = Union["Added", "Removed", "Moved", "Renamed", "Changed"]


class Path(str):
    """The path of a referenced object. A type of its own, so that the values of references differ from
    texts."""

    __slots__ = ()

    def __repr__(self) -> str:
        return str(self)


class Added(NamedTuple):
    """An object that only the newer model has, with all objects that it contains."""

    path: str
    cls: str
    objects: int  #: the number of added objects: this object and the objects that it contains

    def __str__(self) -> str:
        return f"+ {_counted(self)}"


class Removed(NamedTuple):
    """An object that only the older model has, with all objects that it contains."""

    path: str
    cls: str
    objects: int

    def __str__(self) -> str:
        return f"- {_counted(self)}"


class Moved(NamedTuple):
    """An object that is at another place: it has another owner, property or index."""

    path: str
    new_path: str
    cls: str
    place: str  #: "/Brakes.PackagedElement[3]"
    new_place: str

    def __str__(self) -> str:
        return f"> {self.path} ({self.cls}): {self.place} -> {self.new_place}"


class Renamed(NamedTuple):
    """An object that has another name but the same owner."""

    path: str
    new_path: str
    cls: str

    def __str__(self) -> str:
        return f"> {self.path} ({self.cls}) -> {self.new_path}"


class Changed(NamedTuple):
    """A property with another value. `old` and `new` are plain values, None for no value. A reference is a
    Path, an enumeration value is the name of its literal, and many values are a list."""

    path: str
    cls: str
    property: str
    old: Any
    new: Any

    def __str__(self) -> str:
        return f"~ {self.path}.{self.property}: {_shown(self.old)} -> {_shown(self.new)}"


def _counted(difference: Added | Removed) -> str:
    rest = "" if difference.objects == 1 else f", {difference.objects} objects"
    return f"{difference.path} ({difference.cls}{rest})"


def _shown(value: object) -> str:
    if isinstance(value, list):
        return f"[{', '.join(map(_shown, value))}]"
    if isinstance(value, Path):
        return value
    return "nothing" if value is None else _to_json(value)


def _to_json(value: object, indent: int | None = None) -> str:
    import json  # slow to import and rarely needed

    return json.dumps(value, ensure_ascii=False, indent=indent)


def _value(text: str, is_reference: bool) -> Any:
    import json

    value = json.loads(text)
    if not is_reference or value is None:
        return value
    return [Path(each) for each in value] if isinstance(value, list) else Path(value)


def _made(
    kind: int, path: str, cls: str, new_path: str, place: str, new_place: str, prop: str, before: str, after: str,
    is_reference: bool, objects: int
) -> Difference:
    """Creates a difference from the fields of the C++ interface, where `kind` is a number from 0."""
    if kind < 2:
        return (Added, Removed)[kind](path, cls, objects)
    if kind == 2:
        return Changed(path, cls, prop, _value(before, is_reference), _value(after, is_reference))
    return Moved(path, new_path, cls, place, new_place) if kind == 3 else Renamed(path, new_path, cls)


class Diff:
    """The changes that turn an older model, or object, into a newer one.

    A sequence of Removed, Added, Moved, Renamed and Changed, in this order; each is a named tuple. str()
    returns one line for each difference. bool() is False if there are none. Two Diffs are equal if their
    differences are equal.
    """

    __slots__ = ("_entries",)
    __hash__: ClassVar[None] = None  # type: ignore[assignment]

    def __init__(self, entries: Iterable[Difference]) -> None:
        self._entries = tuple(entries)

    def _of(self, kind: type[_Kind]) -> list[_Kind]:
        return [each for each in self._entries if type(each) is kind]

    @property
    def removed(self) -> list[Removed]:
        """The Removed differences."""
        return self._of(Removed)

    @property
    def added(self) -> list[Added]:
        """The Added differences."""
        return self._of(Added)

    @property
    def moved(self) -> list[Moved]:
        """The Moved differences."""
        return self._of(Moved)

    @property
    def renamed(self) -> list[Renamed]:
        """The Renamed differences."""
        return self._of(Renamed)

    @property
    def changed(self) -> list[Changed]:
        """The Changed differences."""
        return self._of(Changed)

    def __iter__(self) -> Iterator[Difference]:
        return iter(self._entries)

    def __len__(self) -> int:
        return len(self._entries)

    if TYPE_CHECKING:

        @overload
        def __getitem__(self, index: int) -> Difference: ...
        @overload
        def __getitem__(self, index: slice) -> tuple[Difference, ...]: ...

    def __getitem__(self, index: int | slice) -> Difference | tuple[Difference, ...]:
        return self._entries[index]

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Diff):
            return NotImplemented
        return self._entries == other._entries

    def __str__(self) -> str:
        return "\n".join(map(str, self._entries)) or "no differences"

    def __repr__(self) -> str:
        return f"<Tarvelon.Diff of {len(self)} differences>"

    def to_json(self, indent: int | None = 1) -> str:
        """Returns a JSON text: a list with one object for each difference; "difference" is its kind."""
        records = [{"difference": type(each).__name__.lower(), **each._asdict()} for each in self._entries]
        return _to_json(records, indent)


del TYPE_CHECKING


@_function
def diff(older: ImmutableModel | ImmutableClassObject, newer: ImmutableModel | ImmutableClassObject) -> Diff:
    """Compares two models, or two objects of one class, and returns the differences as a Diff.

        print(Tarvelon.diff(model, changed))

    prints a line for each difference: `-` removed, `+` added, `>` moved or renamed, `~` changed. Objects with
    the same qualified name and class are the same object. An object without a partner was moved or renamed if
    an otherwise equal object has no partner either. Objects without a name are matched by their owner, their
    property, their contents and their order.
    """
    return Diff(_made(*each) for each in _host.differences(older, newer))
