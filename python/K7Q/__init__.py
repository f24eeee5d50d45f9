"""The model infrastructure: models, errors, and what all objects of all metamodels have in common.

    with K7Q.Model.create() as model:
        ...                             # the model ends with the block

Every error is a `K7Q.Exception`, and most are also the built-in that Python programs expect: see
`K7Q.WrongType`, `K7Q.WrongValue` and the others.
"""

import sys

import Tarvelon
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
    return model


def _exit(model, kind, error, traceback):
    model.close()


_extend("K7Q.Model", {"__enter__": _enter, "__exit__": _exit})
Tarvelon._show_package(sys.modules[__name__], "K7Q")
