"""How two models, or two objects, differ."""

from __future__ import annotations

import _tarvelon_host as _host
from K7Q._methods import function as _function
from K7Q._tuples import NamedTuple

TYPE_CHECKING = False  # an import of typing would take longer than all of this
if TYPE_CHECKING:
    from collections.abc import Iterable, Iterator
    from typing import Any, ClassVar, TypeVar, Union, overload

    from K7Q import ImmutableClassObject, ImmutableModel

    _Kind = TypeVar("_Kind")
    Difference = Union["Added", "Removed", "Moved", "Renamed", "Changed"]


class Path(str):
    """What a reference leads to, as a path; among the values of a property it is told from a text by this."""

    __slots__ = ()

    def __repr__(self) -> str:
        return str(self)


class Added(NamedTuple):
    """An object of the newer one, with what it holds, that the older one has not."""

    path: str
    cls: str
    objects: int  #: how many were added, with the object itself

    def __str__(self) -> str:
        return f"+ {_counted(self)}"


class Removed(NamedTuple):
    """An object of the older one, with what it holds, that the newer one has not."""

    path: str
    cls: str
    objects: int

    def __str__(self) -> str:
        return f"- {_counted(self)}"


class Moved(NamedTuple):
    """An object that stands elsewhere: at another owner, in another property, at another index."""

    path: str
    new_path: str
    cls: str
    place: str  #: "/Brakes.PackagedElement[3]"
    new_place: str

    def __str__(self) -> str:
        return f"> {self.path} ({self.cls}): {self.place} -> {self.new_place}"


class Renamed(NamedTuple):
    """An object that has another name at the same owner."""

    path: str
    new_path: str
    cls: str

    def __str__(self) -> str:
        return f"> {self.path} ({self.cls}) -> {self.new_path}"


class Changed(NamedTuple):
    """A property with other values. Old and new are plain values, None for none; a reference is a Path, the
    value of an enumeration its literal, and many values are a list."""

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
    import json  # slow to import, and seldom needed

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
    """A difference of the C++ interface, whose kinds are counted from 0."""
    if kind < 2:
        return (Added, Removed)[kind](path, cls, objects)
    if kind == 2:
        return Changed(path, cls, prop, _value(before, is_reference), _value(after, is_reference))
    return Moved(path, new_path, cls, place, new_place) if kind == 3 else Renamed(path, new_path, cls)


class Diff:
    """What must be done to an older model, or object, to make it equal to a newer one.

    A sequence of Removed, Added, Moved, Renamed and Changed, in this order; each is a named tuple. str() has
    a line for each, bool() says whether there are any, and two are equal when they hold the same.
    """

    __slots__ = ("_entries",)
    __hash__: ClassVar[None] = None  # type: ignore[assignment]

    def __init__(self, entries: Iterable[Difference]) -> None:
        self._entries = tuple(entries)

    def _of(self, kind: type[_Kind]) -> list[_Kind]:
        return [each for each in self._entries if type(each) is kind]

    @property
    def removed(self) -> list[Removed]:
        """Those that are Removed."""
        return self._of(Removed)

    @property
    def added(self) -> list[Added]:
        """Those that are Added."""
        return self._of(Added)

    @property
    def moved(self) -> list[Moved]:
        """Those that are Moved."""
        return self._of(Moved)

    @property
    def renamed(self) -> list[Renamed]:
        """Those that are Renamed."""
        return self._of(Renamed)

    @property
    def changed(self) -> list[Changed]:
        """Those that are Changed."""
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
        """A text of JSON: a list with one object for each, its kind under "difference"."""
        records = [{"difference": type(each).__name__.lower(), **each._asdict()} for each in self._entries]
        return _to_json(records, indent)


del TYPE_CHECKING


@_function
def diff(older: ImmutableModel | ImmutableClassObject, newer: ImmutableModel | ImmutableClassObject) -> Diff:
    """How the newer of two models, or of two objects of one class, differs.

        print(Tarvelon.diff(model, changed))

    prints a line for each difference: `-` removed, `+` added, `>` moved or renamed, `~` changed. Objects are
    the same by qualified name and class; what is left and is otherwise equal was moved or renamed; what has
    no name is told by its owner, its property, what it holds and its order.
    """
    return Diff(_made(*each) for each in _host.differences(older, newer))
