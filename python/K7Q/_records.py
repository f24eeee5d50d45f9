"""Named tuples for the results of searches, listeners, validation and files. Imported on first use."""

from __future__ import annotations

from K7Q._tuples import NamedTuple

TYPE_CHECKING = False  # importing typing takes longer than importing this whole package
if TYPE_CHECKING:
    from collections.abc import Callable
    from typing import Any

    from K7Q import ClassObject, _Found
del TYPE_CHECKING


class Mention(NamedTuple):
    """A reference to an object: the referring object, and the property that refers."""

    object: Any
    property: str


class Change(NamedTuple):
    """A change of one place, as passed to listeners.

    kind is "set", "added", "removed", "replaced", "moved", "made" or "destroyed". property is None for "made"
    and "destroyed". before and after are values of the property, or elements of it; index counts from 0.
    """

    kind: str
    object: ClassObject
    property: str | None
    before: Any
    after: Any
    index: int  # type: ignore[assignment]  # hides index() of tuple, which is not needed here
    index_before: int


class FileProblem(NamedTuple):
    """A problem in a file: line and column, both counted from 1, and a text."""

    line: int
    column: int
    text: str

    def __str__(self) -> str:
        return f"line {self.line}, column {self.column}: {self.text}"


class ForeignContent(NamedTuple):
    """An element of an ARXML file that has no class. It is saved as it stands.

    tag is the name of the element, name its SHORT-NAME or "", path the names of the elements around it and its own
    ("/Bus/Frame"), file the path of the file or "", line counts from 1, xml is the text of the element.
    """

    tag: str
    name: str
    path: str
    file: str
    line: int
    xml: str


class UnresolvedReference(NamedTuple):
    """A reference of an ARXML file whose target is not in the model. It is saved as it stands.

    tag is the name of the element, target the path as it stands in the file, dest the DEST of the reference, path the
    names of the elements around it, file the path of the file or "", line counts from 1.
    """

    tag: str
    target: str
    dest: str
    path: str
    file: str
    line: int


class Problem(NamedTuple):
    """A problem found by validation. `str(problem)` is one line with all details.

    object    the object with the problem
    path      the place of the object: "/Brakes/PedalSensor/Pedal.info[0].comSpec"
    property  the name of the property, "" for the object as a whole
    rule      the id of the broken rule: see `K7Q.rules()`
    severity  "error" or "warning"
    message   what was expected, what was found, and how to correct it
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
    """A validation rule: its id, the severity of its problems, and a title that says what must hold.

    A rule of a script also has its function, and the name of the class for whose objects the function is
    called.
    """

    id: str
    severity: str
    title: str
    function: Callable[[Any], _Found] | None = None
    of: str = ""


for _each in (Mention, Change, FileProblem, ForeignContent, UnresolvedReference, Problem, Rule):
    _each.__module__ = "K7Q"  # so that users see the public module
