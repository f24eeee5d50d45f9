"""Methods that Python code puts on the host's classes refuse arguments as the host's own methods do."""

from __future__ import annotations as _annotations

import functools as _functools

import _tarvelon_host as _host

TYPE_CHECKING = False  # an import of typing would take longer than all of this
if TYPE_CHECKING:
    from collections.abc import Callable
del TYPE_CHECKING


def method(function: Callable[..., object], name: str | None = None) -> Callable[..., object]:
    """The function as a method: arguments that do not fit raise a K7Q.WrongType with its signature."""
    public = name or function.__name__.lstrip("_")

    @_functools.wraps(function)
    def checked(*arguments: object, **names: object) -> object:
        try:
            return function(*arguments, **names)
        except TypeError as error:
            is_ours = isinstance(error, _host.Exception)
            refused = None if is_ours else _refusal(function, public, arguments, names)
            if refused is None:
                raise
        raise refused

    checked.__name__ = checked.__qualname__ = public
    return checked


def _refusal(function: Callable[..., object], name: str, arguments: tuple[object, ...],
             names: dict[str, object]) -> _host.WrongType | None:
    """The error for arguments that the function does not take; None if it takes them."""
    import inspect  # slow to import, and seldom needed

    signature = inspect.signature(function)
    try:
        signature.bind(*arguments, **names)
    except TypeError as error:
        empty = inspect.Parameter.empty
        own = [each.replace(annotation=empty) for each in signature.parameters.values()]
        shown = signature.replace(parameters=own[1:], return_annotation=inspect.Signature.empty)
        return _host.WrongType(f"{name}: {error}; write {name}{shown}")
    return None
