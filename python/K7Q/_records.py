"""What searches, listeners, validation and files answer with: named tuples, made when one is first asked for."""

from __future__ import annotations

from K7Q._tuples import NamedTuple

TYPE_CHECKING = False  # an import of typing would take longer than all of this
if TYPE_CHECKING:
    from collections.abc import Callable
    from typing import Any

    from K7Q import ClassObject, _Found
del TYPE_CHECKING


class Mention(NamedTuple):
    """One reference to an object: who refers, and by which property."""

    object: Any
    property: str


class Change(NamedTuple):
    """One change of one place, as listeners are told of it.

    kind is "set", "added", "removed", "replaced", "moved", "made" or "destroyed"; of the last two there is no
    property. before and after are values of the property, or elements of it; index counts from 0.
    """

    kind: str
    object: ClassObject
    property: str | None
    before: Any
    after: Any
    index: int  # type: ignore[assignment]  # a tuple's own index() is of no use here
    index_before: int


class FileProblem(NamedTuple):
    """Something that is wrong with a file: where, both counted from 1, and what."""

    line: int
    column: int
    text: str

    def __str__(self) -> str:
        return f"line {self.line}, column {self.column}: {self.text}"


class Problem(NamedTuple):
    """One thing that is wrong; `str` of it is a line that says all.

    object    what it is about
    path      where the object stands: "/Brakes/PedalSensor/Pedal.info[0].comSpec"
    property  the property's name, "" for the object as a whole
    rule      the id of the rule: see `K7Q.rules()`
    severity  "error" or "warning"
    message   what was expected, what there is, and the cure
    """

    object: Any
    path: str
    property: str
    rule: str
    severity: str
    message: str

    def __str__(self) -> str:
        place = f"{self.path}.{self.property}" if self.property else self.path
        return f"{self.severity}: {place}: {self.message} [{self.rule}]"


class Rule(NamedTuple):
    """A rule: its id, the severity of its problems, and what must hold.

    A rule of a script has its function and the name of the class whose objects it is called with.
    """

    id: str
    severity: str
    title: str
    function: Callable[[Any], _Found] | None = None
    of: str = ""


for _each in (Mention, Change, FileProblem, Problem, Rule):
    _each.__module__ = "K7Q"  # where people find it
