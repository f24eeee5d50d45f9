"""How two models, or two objects, differ."""

import json as _json
from typing import Any, NamedTuple

import _tarvelon_host as _host


class Path(str):
    """What a reference leads to, as a path; among the values of a property it is told from a text by this."""

    __slots__ = ()

    def __repr__(self):
        return str(self)


class Added(NamedTuple):
    """An object of the newer one, with what it holds, that the older one has not."""

    path: str
    cls: str
    objects: int  #: how many were added, with the object itself

    def __str__(self):
        return f"+ {_counted(self)}"


class Removed(NamedTuple):
    """An object of the older one, with what it holds, that the newer one has not."""

    path: str
    cls: str
    objects: int

    def __str__(self):
        return f"- {_counted(self)}"


class Moved(NamedTuple):
    """An object that stands elsewhere: at another owner, in another property, at another index."""

    path: str
    new_path: str
    cls: str
    place: str  #: "/Brakes.PackagedElement[3]"
    new_place: str

    def __str__(self):
        return f"> {self.path} ({self.cls}): {self.place} -> {self.new_place}"


class Renamed(NamedTuple):
    """An object that has another name at the same owner."""

    path: str
    new_path: str
    cls: str

    def __str__(self):
        return f"> {self.path} ({self.cls}) -> {self.new_path}"


class Changed(NamedTuple):
    """A property with other values. Old and new are plain values, None for none; a reference is a Path, the
    value of an enumeration its literal, and many values are a list."""

    path: str
    cls: str
    property: str
    old: Any
    new: Any

    def __str__(self):
        return f"~ {self.path}.{self.property}: {_shown(self.old)} -> {_shown(self.new)}"


def _counted(difference):
    rest = "" if difference.objects == 1 else f", {difference.objects} objects"
    return f"{difference.path} ({difference.cls}{rest})"


def _shown(value):
    if isinstance(value, list):
        return f"[{', '.join(map(_shown, value))}]"
    if isinstance(value, Path):
        return value
    return "nothing" if value is None else _json.dumps(value, ensure_ascii=False)


def _value(text, is_reference):
    value = _json.loads(text)
    if not is_reference or value is None:
        return value
    return [Path(each) for each in value] if isinstance(value, list) else Path(value)


def _made(kind, path, cls, new_path, place, new_place, prop, before, after, is_reference, objects):
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
    __hash__ = None

    def __init__(self, entries):
        self._entries = tuple(entries)

    def _of(self, kind):
        return [each for each in self._entries if type(each) is kind]

    removed = property(lambda self: self._of(Removed), doc="Those that are Removed.")
    added = property(lambda self: self._of(Added), doc="Those that are Added.")
    moved = property(lambda self: self._of(Moved), doc="Those that are Moved.")
    renamed = property(lambda self: self._of(Renamed), doc="Those that are Renamed.")
    changed = property(lambda self: self._of(Changed), doc="Those that are Changed.")

    def __iter__(self):
        return iter(self._entries)

    def __len__(self):
        return len(self._entries)

    def __getitem__(self, index):
        return self._entries[index]

    def __eq__(self, other):
        return self._entries == other._entries if isinstance(other, Diff) else NotImplemented

    def __str__(self):
        return "\n".join(map(str, self._entries)) or "no differences"

    def __repr__(self):
        return f"<Tarvelon.Diff of {len(self)} differences>"

    def to_json(self, indent=1):
        """A text of JSON: a list with one object for each, its kind under "difference"."""
        records = [{"difference": type(each).__name__.lower(), **each._asdict()} for each in self._entries]
        return _json.dumps(records, ensure_ascii=False, indent=indent)


def diff(older, newer):
    """diff(older, newer): how the newer of two models, or of two objects of one class, differs.

        print(Tarvelon.diff(model, changed))

    prints a line for each difference: `-` removed, `+` added, `>` moved or renamed, `~` changed. Objects are
    the same by qualified name and class; what is left and is otherwise equal was moved or renamed; what has
    no name is told by its owner, its property, what it holds and its order.
    """
    return Diff(_made(*each) for each in _host.differences(older, newer))
