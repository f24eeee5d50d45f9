"""The model infrastructure: models, errors, and what all objects of all metamodels have in common.

    with K7Q.Model.create() as model:
        ...                             # the model ends with the block

Every error is a `K7Q.Exception`, and most are also the built-in that Python programs expect: see
`K7Q.WrongType`, `K7Q.WrongValue` and the others.
"""

from __future__ import annotations as _annotations

from sys import modules as _modules

import Tarvelon as _Tarvelon
from _tarvelon_host import (
    ChangedDuringIteration,
    Exception,
    LoadError,
    OutOfBounds,
    OutOfRange,
    StaleIterator,
    UnknownModule,
    UnknownName,
    WrongType,
    WrongValue,
)
from _tarvelon_host import extend as _extend
from K7Q._methods import function as _function

TYPE_CHECKING = False  # an import of typing would take longer than all of this
if TYPE_CHECKING:
    from K7Q import Model
del TYPE_CHECKING


def _enter(model: Model) -> Model:
    """Gives the model itself; the end of the `with` block closes it."""
    model.getUri()  # raises if the model is closed already
    return model


def _exit(model: Model, kind: object, error: object, traceback: object) -> None:
    """Closes the model."""
    model.close()


@_function
def models() -> list[Model]:
    """A list of the models that are bound to a URI and open, in the order they were bound.

    `Factory.createNewModel()` binds the model that it makes. A bound model is held until it is closed;
    `K7Q.Model.find(uri)` gives it, or None.
    """
    kind = _modules[__name__].Model
    found = (kind.find(uri) for uri in kind.uris())
    return [model for model in found if model is not None]  # another thread may have closed one meanwhile


_extend("K7Q.Model", {"__enter__": _enter, "__exit__": _exit})

# What is made when it is first asked for, by the module it comes from.
_later = dict.fromkeys(("Change", "FileProblem", "Mention", "Problem", "Rule"), "K7Q._records")

# What each feature puts on models and objects, and what it shows here.
for _feature in ("_search", "_history", "_copy", "_files", "_validation"):
    __import__(f"K7Q.{_feature}")
    _module = _modules[f"K7Q.{_feature}"]
    for _name in _module.__all__:
        _shown = globals()[_name] = getattr(_module, _name)
        _shown.__module__ = __name__  # where people find it

# `from K7Q import *` brings all but Exception, which would hide the built-in of that name.
_star = [*_later, *(name for name, value in vars().items() if isinstance(value, type) and value is not Exception)]
_Tarvelon._show_package(_modules[__name__], "K7Q", _star, _later)  # type: ignore[attr-defined]
