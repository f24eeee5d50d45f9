"""Wraps Python functions so that wrong arguments raise the same error as in the host's own methods."""

from __future__ import annotations

import _tarvelon_host as _host

TYPE_CHECKING = False  # importing typing takes longer than importing this whole package
if TYPE_CHECKING:
    from collections.abc import Callable as _Callable
    from typing import TypeVar as _TypeVar

    _Function = _TypeVar("_Function", bound=_Callable[..., object])


def method(function: _Function, name: str | None = None, *, is_static: bool = False) -> _Function:
    """Wraps a function as a method. Wrong arguments raise a K7Q.WrongType that contains its signature.

    A static method has no first argument for the object.
    """
    called = name or function.__name__.lstrip("_")

    def checked(*arguments: object, **names: object) -> object:
        try:
            return function(*arguments, **names)
        except TypeError as error:
            is_ours = isinstance(error, _host.Exception)
            refused = None if is_ours else _refusal(function, called, arguments, names, is_static)
            if refused is None:
                raise
        raise refused

    # The same as functools.wraps, which is slow to import.
    checked.__module__, checked.__doc__ = function.__module__, function.__doc__
    checked.__name__ = checked.__qualname__ = called
    checked.__wrapped__ = function  # type: ignore[attr-defined]
    return checked  # type: ignore[return-value]


def function(function: _Function) -> _Function:
    """Wraps a function of a package. Errors name it with its package: "K7Q.rule: ..."."""
    package = function.__module__.partition(".")[0]
    checked = method(function, f"{package}.{function.__name__}", is_static=True)
    checked.__name__ = checked.__qualname__ = function.__name__
    return checked


def _refusal(
    function: _Callable[..., object], name: str, arguments: tuple[object, ...], names: dict[str, object],
    is_static: bool
) -> _host.WrongType | None:
    """The error for arguments that the function does not accept; None if it accepts them."""
    import inspect  # slow to import and rarely needed

    signature = inspect.signature(function)
    try:
        signature.bind(*arguments, **names)
    except TypeError as error:
        plain = [each.replace(annotation=each.empty) for each in signature.parameters.values()]
        own = signature.replace(parameters=plain if is_static else plain[1:], return_annotation=signature.empty)
        return _host.WrongType(f"{name}: {error}; write {name}{own}")
    return None
