"""Adds Factory.create(), one method for all create methods of the factory."""

from __future__ import annotations

import _tarvelon_host as _host

TYPE_CHECKING = False  # importing typing takes longer than importing this whole package
if TYPE_CHECKING:
    from collections.abc import Callable
del TYPE_CHECKING

_ROOT = "Tarvelon.metamodel.arplatform"
_PREFIX = "create" + _ROOT.partition(".")[2].replace(".", "")


def _name_of(cls: object) -> str:
    """The name of a class, beginning with its package. The class is given as a type or by name."""
    if isinstance(cls, str):
        return cls.removeprefix(_ROOT + ".")
    if isinstance(cls, type) and issubclass(cls, _host.HostObject):
        return f"{cls.__module__}.{cls.__name__}".removeprefix(_ROOT + ".")
    given = cls.__name__ if isinstance(cls, type) else type(cls).__name__
    raise _host.WrongType(
        f"Factory.create, argument 1: expected a class or its name, as in 'common.Package', got {given}"
    )


def _names(factory: _host.HostObject) -> list[str]:
    """The names of all classes that the factory can create, beginning with their packages."""
    made = [each.removeprefix(_PREFIX) for each in dir(type(factory)) if each.startswith(_PREFIX)]
    packages = [each for each in _host.memberNames(_ROOT) if _host.isPackage(f"{_ROOT}.{each}")]
    return [f"{package}.{each.removeprefix(package)}" for package in packages for each in made
            if each.startswith(package) and each.removeprefix(package)[:1].isupper()]


def _refusal(factory: _host.HostObject, name: str) -> _host.UnknownName:
    """The error for a class that the factory cannot create, with the most similar class."""
    names = {each if "." in name else each.partition(".")[2]: each for each in _names(factory)}
    near = names.get(name) or names.get(_host.nearest(name, list(names)))
    if name.startswith("Tarvelon.metamodel."):
        short = name.removeprefix("Tarvelon.metamodel.")
        try:
            _host.describe(name)
        except _host.UnknownName as unknown:
            return _host.UnknownName(f"Factory.create: {unknown}")
        rest = f"; it creates only classes of arplatform. Construct the object: {short}(model, ...)"
    else:
        rest = f"; did you mean '{near}'?" if near else "; help(Factory) lists the classes that it creates"
    return _host.UnknownName(f"Factory.create: the factory cannot create {_host.quoted(name)}{rest}")


def _unmakeable(cls: type) -> _host.WrongType:
    """The error for a class without a constructor. Calling the class gives the error text with the best
    hint."""
    try:
        cls()
    except _host.WrongType as refused:
        return _host.WrongType(f"Factory.create: {refused}")
    raise AssertionError(cls)


_known: dict[tuple[type, object], Callable[..., object]] = {}  #: cache: method for factory and class


def _create(self: _host.HostObject, /, *arguments: object, **names: object) -> object:
    """create(class, ...): creates an object of the class, which is given as a type or by name.

    factory.create("common.Package", "Brakes") and factory.create(common.Package, "Brakes") are short for
    factory.createmetamodelarplatformcommonPackage("Brakes"). help(Factory) lists the classes with their
    arguments. Raises K7Q.UnknownName for a class that the factory cannot create.
    """
    if arguments and not names:
        try:
            known = _known[type(self), arguments[0]]
        except (KeyError, TypeError):  # not in the cache yet, or not hashable
            pass
        else:
            return known(self, *arguments[1:])
    method = _method_for(self, arguments, names)
    if type(arguments[0]) is str or isinstance(arguments[0], type):
        _known[type(self), arguments[0]] = method
    return method(self, *arguments[1:])


def _method_for(
    self: _host.HostObject, arguments: tuple[object, ...], names: dict[str, object]
) -> Callable[..., object]:
    """Returns the factory's method for the class given by the first argument, or raises the error for it."""
    if not hasattr(type(self), "createNewFactory"):
        given = type(self).__name__
        raise _host.WrongType(f"Factory.create: expected a factory to be called on, got {given}")
    if names or not arguments:
        raise _host.WrongType(
            "Factory.create: expected a class or its name and then the constructor's arguments, by position"
        )
    name = _name_of(arguments[0])
    package, _, short = name.partition(".")
    is_package = _host.isPackage(f"{_ROOT}.{package}")
    made_by = _PREFIX + package + short
    method: Callable[..., object] | None = getattr(type(self), made_by, None) if is_package else None
    if method is None:
        if is_package and short in _host.memberNames(f"{_ROOT}.{package}") and short != "MetaPackage":
            raise _unmakeable(_host.member(f"{_ROOT}.{package}", short))
        raise _refusal(self, name)
    return method


_create.__name__ = _create.__qualname__ = "create"
_host.extend(f"{_ROOT}.Factory", {"create": _create})
