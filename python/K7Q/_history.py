"""Transactions, undo, and listening to changes."""

from typing import Any, NamedTuple, Optional

import _tarvelon_host as _host


class Change(NamedTuple):
    """One change of one place, as listeners are told of it.

    kind is "set", "added", "removed", "replaced", "moved", "made" or "destroyed"; of the last two there is no
    property. before and after are values of the property, or elements of it; index counts from 0.
    """

    kind: str
    object: Any
    property: Optional[str]
    before: Any
    after: Any
    index: int
    index_before: int


class Transaction:
    """All changes of a model between begin and end: `with model.transaction(): ...`.

    An exception that leaves the block takes all of them back; `rollback()` does so at any time. They nest.
    """

    def __init__(self, model):
        self._model = model
        self._native = _host.beginTransaction(model)

    def commit(self):
        """Ends the transaction and keeps what it did."""
        _host.commit(self._native)

    def rollback(self):
        """Ends the transaction and takes back what it did."""
        _host.rollBack(self._native)

    def __enter__(self):
        return self

    def __exit__(self, kind, error, traceback):
        if not _host.isOpen(self._native):
            return  # ended inside, or with its model
        if kind is None:
            self.commit()
        else:
            self.rollback()


class Subscription:
    """A listener at work until `close()`, the end of its `with` block or of the model."""

    def __init__(self, model, object, listener):
        self._model = model
        self._id = _host.listen(model, object, lambda changes: listener([Change(*each) for each in changes]))

    def close(self):
        """Ends it; a second time is no error."""
        _host.unlisten(self._model, self._id)

    def __enter__(self):
        return self

    def __exit__(self, kind, error, traceback):
        self.close()


def _transaction(model):
    """transaction(): all changes in its `with` block are made together or, when it raises, not at all."""
    return Transaction(model)


def _undo(model):
    """undo(): takes back the last change or transaction; False if the history has none. See `history`."""
    return _host.undo(model)


def _redo(model):
    """redo(): makes again what undo() took back; False if there is nothing."""
    return _host.redo(model)


def _get_history(model):
    """How many changes and transactions can be taken back. 0 at first: set it to keep a history."""
    return _host.history(model)[0]


def _can_undo(model):
    """How many changes and transactions undo() can take back now."""
    return _host.history(model)[1]


def _can_redo(model):
    """How many redo() can make again now."""
    return _host.history(model)[2]


def _listen(model, listener):
    """listen(function): calls it with a list of Change after each change or transaction; a Subscription.

    It may not change the model. What it raises goes to sys.unraisablehook, and the model is as changed.
    """
    return Subscription(model, None, listener)


def _listen_object(self, listener):
    """listen(function): calls it with a list of Change of this object after each change or transaction."""
    return Subscription(self.getModel(), self, listener)


for each, name in ((_transaction, "transaction"), (_undo, "undo"), (_redo, "redo"), (_listen, "listen"),
                   (_listen_object, "listen")):
    each.__name__ = each.__qualname__ = name

_host.extend("K7Q.Model", {
    "transaction": _transaction,
    "undo": _undo,
    "redo": _redo,
    "history": property(_get_history, lambda model, limit: _host.setHistory(model, limit)),
    "undoable": property(_can_undo),
    "redoable": property(_can_redo),
    "listen": _listen,
})
_host.extend("K7Q.ClassObject", {"listen": _listen_object})
