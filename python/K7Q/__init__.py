"""The model infrastructure: models, errors, and the base classes of all metamodels.

    with K7Q.Model.create() as model:
        ...                             # the model is closed at the end of the block

Every error is a `K7Q.Exception`. Most errors are also the built-in exception for the same kind of error:
see `K7Q.WrongType`, `K7Q.WrongValue` and the others.
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

TYPE_CHECKING = False  # importing typing takes longer than importing this whole package
if TYPE_CHECKING:
    from K7Q import Model
del TYPE_CHECKING


def _enter(model: Model) -> Model:
    """Returns the model itself. The model is closed at the end of the `with` block."""
    model.getUri()  # raises if the model is already closed
    return model


def _exit(model: Model, kind: object, error: object, traceback: object) -> None:
    """Closes the model."""
    model.close()


@_function
def models() -> list[Model]:
    """A list of the open models that are bound to a URI, in the order of binding.

    `Factory.createNewModel()` creates and binds a model. A bound model is kept until it is closed, even
    without other references to it. `K7Q.Model.find(uri)` returns a bound model, or None if there is none.
    """
    kind = _modules[__name__].Model
    found = (kind.find(uri) for uri in kind.uris())
    return [model for model in found if model is not None]  # another thread may have closed one


_extend("K7Q.Model", {"__enter__": _enter, "__exit__": _exit})

# Names that are created on first use, and the modules that create them.
_later = dict.fromkeys(("Change", "FileProblem", "ForeignContent", "Mention", "Problem", "Rule", "UnresolvedReference"),
                       "K7Q._records")

# The feature modules: each adds methods to models and objects, and some names to this package.
for _feature in ("_search", "_history", "_copy", "_files", "_validation"):
    __import__(f"K7Q.{_feature}")
    _module = _modules[f"K7Q.{_feature}"]
    for _name in _module.__all__:
        _shown = globals()[_name] = getattr(_module, _name)
        _shown.__module__ = __name__  # so that users see the public module

# `from K7Q import *` imports all names except Exception, which would hide the built-in exception.
_star = [*_later, *(name for name, value in vars().items() if isinstance(value, type) and value is not Exception)]
_Tarvelon._show_package(_modules[__name__], "K7Q", _star, _later)  # type: ignore[attr-defined]
