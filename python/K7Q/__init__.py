"""The model infrastructure: models, errors, and what all objects of all metamodels have in common.

    with K7Q.Model.create() as model:
        ...                             # the model ends with the block

Every error is a `K7Q.Exception`, and most are also the built-in that Python programs expect: see
`K7Q.WrongType`, `K7Q.WrongValue` and the others.
"""

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


def _enter(model):
    """Gives the model itself; the end of the `with` block closes it."""
    model.getUri()  # raises if the model is closed already
    return model


def _exit(model, kind, error, traceback):
    model.close()


def models():
    """A list of the models that are bound to a URI and open, in the order they were bound.

    `Factory.createNewModel()` binds the model that it makes. A bound model is held until it is closed;
    `K7Q.Model.find(uri)` gives it, or None.
    """
    kind = _modules[__name__].Model
    found = (kind.find(uri) for uri in kind.uris())
    return [model for model in found if model is not None]  # another thread may have closed one meanwhile


_extend("K7Q.Model", {"__enter__": _enter, "__exit__": _exit})

# What each feature puts on models and objects.
from . import _copy, _files, _history, _search, _validation  # noqa: E402, F401
from ._files import FileError, FileProblem, WrongFile  # noqa: E402

# `from K7Q import *` brings all but Exception, which would hide the built-in of that name.
_star = [name for name, value in vars().items() if isinstance(value, type) and value is not Exception]
_Tarvelon._show_package(_modules[__name__], "K7Q", _star)
