"""Copies of models and objects, and models as JSON."""

import json as _json

import _tarvelon_host as _host
from K7Q._methods import method as _method

__all__: list[str] = []

_WIDEST = 16  #: the most blanks that a level of JSON is indented by


@_method
def _clone(self, owner=None, *, property=None, leave_out=False):
    """clone(owner=None, *, property=None, leave_out=False): a copy of the object with all that it holds.

    The owner is an object of this or another model, and holds the copy where the original stands, if it has
    that property and takes one more; otherwise in the only property that can take it, or in the one that is
    named. Without an owner, and with a model as owner, nothing holds the copy.

    References inside the copy lead to the copies, those that lead outside stay. They cannot go along into
    another model: K7Q.WrongValue, or with leave_out=True the copy goes without them. Names stay as they are.
    """
    return _host.cloneObject(self, owner, property, bool(leave_out))


def _clone_model(self):
    """clone(): a new model with a copy of every object. It is bound to no URI and lives while it is held."""
    return _host.cloneModel(self)


def _deepcopy_object(self, memo):
    return _host.cloneObject(self, None, None, False)


def _deepcopy_model(self, memo):
    return _host.cloneModel(self)


def _refuse_copy(self):
    name = f"{type(self).__module__}.{type(self).__name__}".rpartition("arplatform.")[2]
    raise _host.WrongType(
        f"{name} cannot be copied without what it holds, which has one owner; clone() copies both"
    )


@_method
def _to_json(self, indent=1):
    """to_json(indent=1): a text of JSON with the model, or the object and all it holds.

    An object is {"class": ..., then the properties that have a value}, references are qualified names or,
    where there is none, the "id" of what they lead to. indent=None puts all on one line.
    """
    if indent is not None and (not isinstance(indent, int) or not 0 <= indent <= _WIDEST):
        raise _host.WrongType(
            f"to_json: expected an indent from 0 to {_WIDEST}, or None for one line, got {indent!r}"
        )
    return _host.toJson(self, -1 if indent is None else indent)


@_method
def _to_dict(self):
    """to_dict(): what to_json() prints, as dicts, lists and plain values."""
    return _json.loads(_host.toJson(self, -1))


def _members(clone, deepcopy):
    return {"clone": clone, "to_json": _to_json, "to_dict": _to_dict, "__copy__": _refuse_copy,
            "__deepcopy__": deepcopy}


_host.extend("K7Q.ImmutableClassObject", _members(_clone, _deepcopy_object))
_host.extend("K7Q.ImmutableModel", _members(_method(_clone_model, "clone"), _deepcopy_model))
