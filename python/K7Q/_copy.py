"""Copies of models and objects, and models as JSON."""

from __future__ import annotations

import _tarvelon_host as _host
from K7Q._methods import method as _method

TYPE_CHECKING = False  # importing typing takes longer than importing this whole package
if TYPE_CHECKING:
    from typing import Any

    from K7Q import ClassObject, ImmutableClassObject, ImmutableModel, Model, _Copied
    from typing_extensions import Never
del TYPE_CHECKING

__all__: list[str] = []

_WIDEST = 16  #: the largest number of blanks for one level of JSON


@_method
def _clone(
    self: _Copied, owner: ClassObject | Model | None = None, *, property: str | None = None, leave_out: bool = False
) -> _Copied:
    """Returns a copy of the object and of all objects that it contains.

    `owner` is an object of this or another model; it becomes the owner of the copy. The copy goes into
    `property`. Without `property`, it goes into the same property as the original if the owner has that
    property and it has room; otherwise into the only property of the owner that accepts the copy. If `owner`
    is None or a model, the copy has no owner.

    References between copied objects lead to the copies. References to other objects are kept, unless the
    target's opposite property can have only one value. In another model they cannot be kept: K7Q.WrongValue
    is raised, or with leave_out=True these references are left out. Names are not changed.
    """
    return _host.cloneObject(self, owner, property, bool(leave_out))


def _clone_view(
    self: ImmutableClassObject, owner: ClassObject | Model | None = None, *, property: str | None = None,
    leave_out: bool = False
) -> ClassObject:
    """Returns a mutable copy of the object and of all objects that it contains. The copy must go into another
    model."""
    return _host.cloneObject(self, owner, property, bool(leave_out))


def _clone_model(self: ImmutableModel) -> Model:
    """Returns a new model with a copy of every object. It is bound to no URI and is closed with its last
    reference."""
    return _host.cloneModel(self)


def _deepcopy(self: _Copied, memo: object) -> _Copied:
    """The same as clone() of the object."""
    return _host.cloneObject(self, None, None, False)


def _deepcopy_view(self: ImmutableClassObject, memo: object) -> ClassObject:
    """The same as clone() of the object, which raises: the copy would go into a model that is read-only
    here."""
    return _host.cloneObject(self, None, None, False)


def _deepcopy_model(self: ImmutableModel, memo: object) -> Model:
    """The same as clone() of the model."""
    return _host.cloneModel(self)


def _refuse_copy(self: object) -> Never:
    """Raises K7Q.WrongType, because a shallow copy is impossible: a contained object has only one owner."""
    name = f"{type(self).__module__}.{type(self).__name__}".rpartition("arplatform.")[2]
    raise _host.WrongType(
        f"{name} cannot be copied without the objects that it contains; clone() copies them as well"
    )


@_method
def _to_json(self: ImmutableClassObject | ImmutableModel, indent: int | None = 1) -> str:
    """Returns the model, or the object with all objects that it contains, as a JSON text.

    An object is {"class": ..., then the properties that have a value}. A reference is the qualified name of
    the target, or the target's "id" if it has no qualified name. indent=None writes everything on one line.
    """
    if indent is not None and (not isinstance(indent, int) or not 0 <= indent <= _WIDEST):
        raise _host.WrongType(
            f"to_json: expected an indent from 0 to {_WIDEST}, or None for one line, got {indent!r}"
        )
    return _host.toJson(self, -1 if indent is None else indent)


def _nested(rows: list[tuple[int | None, str, dict[str, Any]]]) -> list[dict[str, Any]]:
    """Builds the tree of objects from a list of (owner, property, object), and returns its roots.

    The rows are flat because json.loads() is recursive: it fails if JSON is nested some hundred levels deep.
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
    """Returns the contents of to_json() as dicts, lists and plain values."""
    import json  # slow to import and rarely needed

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
