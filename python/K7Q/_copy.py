"""Copies of models and objects, and models as JSON."""

from __future__ import annotations

import _tarvelon_host as _host
from K7Q._methods import method as _method

TYPE_CHECKING = False  # an import of typing would take longer than all of this
if TYPE_CHECKING:
    from typing import Any

    from K7Q import ClassObject, ImmutableClassObject, ImmutableModel, Model, _Copied
    from typing_extensions import Never
del TYPE_CHECKING

__all__: list[str] = []

_WIDEST = 16  #: the most blanks that a level of JSON is indented by


@_method
def _clone(
    self: _Copied, owner: ClassObject | Model | None = None, *, property: str | None = None, leave_out: bool = False
) -> _Copied:
    """A copy of the object with all that it holds.

    The owner is an object of this or another model, and holds the copy where the original stands, if it has
    that property and takes one more; otherwise in the only property that can take it, or in the one that is
    named. Without an owner, and with a model as owner, nothing holds the copy.

    References inside the copy lead to the copies, those that lead outside stay. They cannot go along into
    another model: K7Q.WrongValue, or with leave_out=True the copy goes without them. Names stay as they are.
    """
    return _host.cloneObject(self, owner, property, bool(leave_out))


def _clone_view(
    self: ImmutableClassObject, owner: ClassObject | Model | None = None, *, property: str | None = None,
    leave_out: bool = False
) -> ClassObject:
    """A copy of the object with all that it holds, which can be changed: in another model alone."""
    return _host.cloneObject(self, owner, property, bool(leave_out))


def _clone_model(self: ImmutableModel) -> Model:
    """A new model with a copy of every object. It is bound to no URI and lives while it is held."""
    return _host.cloneModel(self)


def _deepcopy(self: _Copied, memo: object) -> _Copied:
    """The object's clone()."""
    return _host.cloneObject(self, None, None, False)


def _deepcopy_view(self: ImmutableClassObject, memo: object) -> ClassObject:
    """The object's clone(), which is refused, since it would stand in a model that is only read."""
    return _host.cloneObject(self, None, None, False)


def _deepcopy_model(self: ImmutableModel, memo: object) -> Model:
    """The model's clone()."""
    return _host.cloneModel(self)


def _refuse_copy(self: object) -> Never:
    """Refused: what an object holds has one owner."""
    name = f"{type(self).__module__}.{type(self).__name__}".rpartition("arplatform.")[2]
    raise _host.WrongType(
        f"{name} cannot be copied without what it holds, which has one owner; clone() copies both"
    )


@_method
def _to_json(self: ImmutableClassObject | ImmutableModel, indent: int | None = 1) -> str:
    """A text of JSON with the model, or the object and all it holds.

    An object is {"class": ..., then the properties that have a value}, references are qualified names or,
    where there is none, the "id" of what they lead to. indent=None puts all on one line.
    """
    if indent is not None and (not isinstance(indent, int) or not 0 <= indent <= _WIDEST):
        raise _host.WrongType(
            f"to_json: expected an indent from 0 to {_WIDEST}, or None for one line, got {indent!r}"
        )
    return _host.toJson(self, -1 if indent is None else indent)


def _nested(rows: list[tuple[int | None, str, dict[str, Any]]]) -> list[dict[str, Any]]:
    """What nothing holds of a list of (holder, property, object), with each object where it is held.

    JSON that is nested itself is read level by level by calls, which end after some hundred.
    """
    roots = []
    for holder, name, each in rows:
        if holder is None:
            roots.append(each)
            continue
        above = rows[holder][2]
        if above[name] is None:
            above[name] = each
        else:
            above[name].append(each)
    return roots


@_method
def _to_dict(self: ImmutableClassObject | ImmutableModel) -> dict[str, Any]:
    """What to_json() prints, as dicts, lists and plain values."""
    import json  # slow to import, and seldom needed

    read: Any = json.loads(_host.toJsonRows(self))
    if isinstance(read, list):
        return _nested(read)[0]
    shown: dict[str, Any] = {**read, "objects": _nested(read["objects"])}
    return shown


_both = {"to_json": _to_json, "to_dict": _to_dict, "__copy__": _refuse_copy}
_host.extend("K7Q.ClassObject", {"clone": _clone, "__deepcopy__": _deepcopy})
_host.extend("K7Q.ImmutableClassObject",
             {**_both, "clone": _method(_clone_view, "clone"), "__deepcopy__": _deepcopy_view})
_host.extend("K7Q.ImmutableModel", {**_both, "clone": _method(_clone_model, "clone"), "__deepcopy__": _deepcopy_model})
