"""Transactions, undo, and listening to changes."""

from __future__ import annotations

import K7Q
import _tarvelon_host as _host
from K7Q._methods import method as _method

TYPE_CHECKING = False  # an import of typing would take longer than all of this
if TYPE_CHECKING:
    from collections.abc import Callable

    from K7Q import Change, ClassObject, Model
    from typing_extensions import Self
del TYPE_CHECKING

__all__ = ["Subscription", "Transaction"]


class Transaction:
    """All changes of a model between begin and end: `with model.transaction(): ...`.

    An exception that leaves the block takes all of them back; `rollback()` does so at any time. They nest:
    taking one back takes back, and ends, those that were begun later and are still open.
    """

    def __init__(self, model: Model) -> None:
        self._model = model
        self._native = _host.beginTransaction(model)
        self._has_ended = False

    def commit(self) -> None:
        """Ends the transaction and keeps what it did."""
        _host.commit(self._model, self._native)
        self._has_ended = True

    def rollback(self) -> None:
        """Ends the transaction and takes back what it did."""
        _host.rollBack(self._model, self._native)
        self._has_ended = True

    def __enter__(self) -> Self:
        if not _host.isOpen(self._model, self._native):
            raise _host.Exception("the transaction has ended already; begin a new one")
        return self

    def __exit__(self, kind: object, error: object, traceback: object) -> None:
        if not _host.isOpen(self._model, self._native):
            # Ended inside or with its model, or by someone else, of whom the block knows nothing.
            if kind is None and not self._has_ended and self._model.isvalid():
                raise _host.Exception(
                    "the transaction was taken back with one that was begun before it: nothing of the block is left"
                )
            return
        try:
            if kind is None:
                self.commit()
        finally:
            if _host.isOpen(self._model, self._native):
                self.rollback()


class Subscription:
    """A listener at work until `close()`, the end of its `with` block or of the model."""

    def __init__(self, model: Model, of: ClassObject | None, listener: Callable[[list[Change]], object]) -> None:
        self._model = model
        self._id = 0  # the place for it: without one a listener might be left that nobody can end
        self._id = _host.listen(model, of, listener, K7Q.Change)

    def close(self) -> None:
        """Ends it; a second time is no error."""
        _host.unlisten(self._model, self._id)

    def __enter__(self) -> Self:
        return self

    def __exit__(self, kind: object, error: object, traceback: object) -> None:
        self.close()


@_method
def transaction(model: Model, /) -> Transaction:
    """All changes in its `with` block are made together or, when it raises, not at all."""
    return Transaction(model)


@_method
def undo(model: Model, /) -> bool:
    """Takes back the last change or transaction; False if the history has none. See `history`."""
    return _host.undo(model)


@_method
def redo(model: Model, /) -> bool:
    """Makes again what undo() took back; False if there is nothing."""
    return _host.redo(model)


def _get_history(model: Model) -> int:
    """How many changes and transactions can be taken back. 0 at first: set it to keep a history."""
    return _host.history(model)[0]


def _can_undo(model: Model) -> int:
    """How many changes and transactions undo() can take back now."""
    return _host.history(model)[1]


def _can_redo(model: Model) -> int:
    """How many redo() can make again now."""
    return _host.history(model)[2]


def _get_undo_label(model: Model) -> str:
    """What undo() would take back, as a menu shows it: "category of common.Package 'Brakes'". Empty for nothing.

    Each property of each object once, five at most and how many more; an object that was made or destroyed as that.
    """
    return _host.undoLabel(model)


def _get_redo_label(model: Model) -> str:
    """What redo() would make again, as `undo_label` tells it."""
    return _host.redoLabel(model)


@_method
def listen(model: Model, listener: Callable[[list[Change]], object], /) -> Subscription:
    """Calls the function with a list of Change after each change or transaction; a Subscription.

    It may not change the model. What it raises goes to sys.unraisablehook, and the model is as changed.
    """
    return Subscription(model, None, listener)


def listen_object(self: ClassObject, listener: Callable[[list[Change]], object], /) -> Subscription:
    """Calls the function with a list of Change of this object after each change or transaction."""
    if not hasattr(self, "getModel"):
        raise _host.WrongType(f"listen: expected an object of a model, got {type(self).__name__}")
    return Subscription(self.getModel(), self, listener)


def _set_history(model: Model, limit: int) -> None:
    _host.setHistory(model, limit)


_host.extend("K7Q.Model", {
    "transaction": transaction,
    "undo": undo,
    "redo": redo,
    "history": property(_get_history, _set_history),
    "undoable": property(_can_undo),
    "redoable": property(_can_redo),
    "undo_label": property(_get_undo_label),
    "redo_label": property(_get_redo_label),
    "listen": listen,
})
_host.extend("K7Q.ClassObject", {"listen": _method(listen_object, "listen")})
