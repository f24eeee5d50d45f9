"""Methods that Python code puts on the host's classes refuse arguments as the host's own methods do."""

import functools as _functools

import _tarvelon_host as _host


def method(function, name=None):
    """The function as a method: arguments that do not fit raise a K7Q.WrongType with its signature."""
    name = name or function.__name__.lstrip("_")

    @_functools.wraps(function)
    def checked(*arguments, **names):
        try:
            return function(*arguments, **names)
        except TypeError as error:
            is_ours = isinstance(error, _host.Exception)
            refused = None if is_ours else _refusal(function, name, arguments, names)
            if refused is None:
                raise
        raise refused

    checked.__name__ = checked.__qualname__ = name
    return checked


def _refusal(function, name, arguments, names):
    """The error for arguments that the function does not take; None if it takes them."""
    import inspect  # slow to import, and seldom needed

    signature = inspect.signature(function)
    try:
        signature.bind(*arguments, **names)
    except TypeError as error:
        own = signature.replace(parameters=list(signature.parameters.values())[1:])
        return _host.WrongType(f"{name}: {error}; write {name}{own}")
    return None
