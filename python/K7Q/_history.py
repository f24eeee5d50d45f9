"""Transactions, undo and redo, and change notification."""

from __future__ import annotations

import K7Q
import _tarvelon_host as _host
from K7Q._methods import method as _method

TYPE_CHECKING = False  # importing typing takes longer than importing this whole package
if TYPE_CHECKING:
    from collections.abc import Callable

    from K7Q import Change, ClassObject, Model
    from typing_extensions import Self
del TYPE_CHECKING

__all__ = ["Subscription", "Transaction"]


class Transaction:
    """A transaction: the changes of a model between begin and end. Use it as `with model.transaction(): ...`.

    If an exception leaves the block, all changes of the transaction are rolled back. `rollback()` can also be
    called at any time. Transactions may be nested. Rolling back a transaction also rolls back and ends all
    transactions that were begun after it and are still open.
    """

    def __init__(self, model: Model) -> None:
        self._model = model
        self._native = _host.beginTransaction(model)
        self._has_ended = False

    def commit(self) -> None:
        """Ends the transaction and keeps its changes."""
        _host.commit(self._model, self._native)
        self._has_ended = True

    def rollback(self) -> None:
        """Ends the transaction and rolls back its changes."""
        _host.rollBack(self._model, self._native)
        self._has_ended = True

    def __enter__(self) -> Self:
        if not _host.isOpen(self._model, self._native):
            raise _host.Exception("the transaction has ended already; begin a new one")
        return self

    def __exit__(self, kind: object, error: object, traceback: object) -> None:
        if not _host.isOpen(self._model, self._native):
            # Ended inside the block, by the end of the model, or by an outer transaction. Only the last is an
            # error.
            if kind is None and not self._has_ended and self._model.isvalid():
                raise _host.Exception(
                    "the transaction was rolled back with an outer transaction: all changes of the block are lost"
                )
            return
        try:
            if kind is None:
                self.commit()
        finally:
            if _host.isOpen(self._model, self._native):
                self.rollback()


class Subscription:
    """A registered listener. It is active until `close()`, the end of its `with` block, or the end of the
    model."""

    def __init__(self, model: Model, of: ClassObject | None, listener: Callable[[list[Change]], object]) -> None:
        self._model = model
        self._id = 0  # makes room for the member: storing the id after listen() must not fail
        self._id = _host.listen(model, of, listener, K7Q.Change)

    def close(self) -> None:
        """Removes the listener. Idempotent."""
        _host.unlisten(self._model, self._id)

    def __enter__(self) -> Self:
        return self

    def __exit__(self, kind: object, error: object, traceback: object) -> None:
        self.close()


@_method
def transaction(model: Model, /) -> Transaction:
    """Begins a transaction. If its `with` block raises, all changes of the block are rolled back."""
    return Transaction(model)


@_method
def undo(model: Model, /) -> bool:
    """Undoes the last change or transaction. Returns False if there is nothing to undo. See `history`."""
    return _host.undo(model)


@_method
def redo(model: Model, /) -> bool:
    """Repeats the change that undo() has undone last. Returns False if there is nothing to redo."""
    return _host.redo(model)


def _get_history(model: Model) -> int:
    """The maximum number of changes and transactions that can be undone. 0 at first: set it to keep a
    history."""
    return _host.history(model)[0]


def _can_undo(model: Model) -> int:
    """The number of changes and transactions that undo() can undo at present."""
    return _host.history(model)[1]


def _can_redo(model: Model) -> int:
    """The number of changes and transactions that redo() can repeat at present."""
    return _host.history(model)[2]


def _get_undo_label(model: Model) -> str:
    """The changes that undo() would undo, as a label for a menu: "category of common.Package 'Brakes'".

    Each property of each object is listed once; a created or destroyed object is listed as such. After five
    entries only the number of the others is given. Empty if there is nothing to undo.
    """
    return _host.undoLabel(model)


def _get_redo_label(model: Model) -> str:
    """The changes that redo() would repeat, in the format of `undo_label`."""
    return _host.redoLabel(model)


@_method
def listen(model: Model, listener: Callable[[list[Change]], object], /) -> Subscription:
    """Registers a listener: a function that is called with a list of Change after each change or transaction.

    The listener must not change the model. Exceptions of the listener go to sys.unraisablehook and do not
    affect the change. Returns a Subscription, which removes the listener.
    """
    return Subscription(model, None, listener)


def listen_object(self: ClassObject, listener: Callable[[list[Change]], object], /) -> Subscription:
    """Registers a listener that is called with the changes of this object only. See the model's listen()."""
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
