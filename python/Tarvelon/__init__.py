"""AUTOSAR models: the packages of the metamodel under their dotted names.

    import K7Q
    from Tarvelon.metamodel.arplatform import common

    model = K7Q.Model.create()
    brakes = common.Package(model, "Brakes")

Packages are modules that are created when they are imported. Classes are types that are created on first use.
"""

from __future__ import annotations as _annotations

import _collections_abc
import sys

try:
    import _tarvelon_host as _host
except ModuleNotFoundError as missing:
    if missing.name != "_tarvelon_host":
        raise
    raise ImportError(
        f"the extension module _tarvelon_host is not on the path of {sys.executable}: expected it beside the "
        f"folder of the package Tarvelon, made for Python {sys.version_info.major}.{sys.version_info.minor}; "
        "build it with './tarvelon build' or install Tarvelon again, run scripts with 'tarvelon run'"
    ) from None


__version__ = _host.version

TYPE_CHECKING = False  # importing typing takes longer than importing this whole package
if TYPE_CHECKING:
    from collections.abc import Iterable, Mapping
    from importlib.machinery import ModuleSpec
    from types import ModuleType
del TYPE_CHECKING


def _member(module_name: str, name: str) -> object:
    """Returns the class or function of that name in a package of the host, or raises K7Q.UnknownName.

    The hint of the error also considers the module's own names, `K7Q.WrongType` for example.
    """
    try:
        return _host.member(module_name, name)
    except _host.UnknownName as unknown:
        names = vars(sys.modules[module_name])
        own = [each for each in (*names, *names.get("_later", ())) if not each.startswith("_")]
        near = "" if "did you mean" in str(unknown) or name.startswith("_") else _host.nearest(name, own)
        if not near:
            raise
        better = _host.UnknownName(f"{unknown}; did you mean '{near}'?")
        better.name = name
        raise better from None


def _show_package(
    module: ModuleType, name: str, star: Iterable[str] | None = None, later: Mapping[str, str] = {}
) -> None:
    """Makes the packages, classes and functions of a host package available as attributes of a module.

    `star` are the module's own names for a star import, in addition to the host's names; None means Python's
    default. `later` maps names to the modules that define them. Such a module is imported when one of its
    names is first used.
    """

    def __getattr__(attribute: str) -> object:
        if attribute == "__all__" and star is not None:
            return [*star, *_host.memberNames(name)]
        if attribute.startswith("__"):
            raise AttributeError(f"module '{module.__name__}' has no attribute '{attribute}'")
        if attribute in later:
            __import__(later[attribute])
            value = getattr(sys.modules[later[attribute]], attribute)
            setattr(module, attribute, value)
            return value
        full_name = f"{name}.{attribute}"
        if _host.isPackage(full_name):
            __import__(full_name)
            return sys.modules[full_name]
        value = _member(name, attribute)
        setattr(module, attribute, value)
        return value

    def __dir__() -> list[str]:
        return sorted({*vars(module), *later, *_host.memberNames(name)})

    vars(module).update(__getattr__=__getattr__, __dir__=__dir__)


class _PackageLoader:
    @staticmethod
    def create_module(spec: ModuleSpec) -> None:
        """Returns None: the import system creates a standard module."""

    @staticmethod
    def exec_module(module: ModuleType) -> None:
        purpose = _host.documentation(module.__name__)["purpose"]
        text = f"The package {module.__name__}: dir() lists its contents."
        module.__doc__ = f"{purpose}\n\n{text}" if purpose else text
        _show_package(module, module.__name__, star=())


class _PackageFinder:
    """Finds the packages of the host: imports below `Tarvelon` or `K7Q` for which there is no file."""

    @staticmethod
    def find_spec(name: str, path: object = None, target: object = None) -> ModuleSpec | None:
        parent, _, last = name.rpartition(".")
        if not name.startswith(("Tarvelon.", "K7Q.")) or last.startswith("__"):
            return None
        if _host.isPackage(name):
            kind = type(__spec__)  # type: ignore[name-defined]
            spec: ModuleSpec = kind(name, _PackageLoader, is_package=True)
            spec.submodule_search_locations = []
            return spec
        if not _host.isPackage(parent):
            return None
        try:
            _member(parent, last)
        except _host.UnknownName as unknown:
            raise _host.UnknownModule(str(unknown)) from None
        error = _host.UnknownModule(f"{name} is not a package; write: from {parent} import {last}")
        error.name = name  # help("K7Q.Model") tries an import first and then the attribute
        raise error


# If this module is reloaded, the finder of the first load is removed.
sys.meta_path[:] = [each for each in sys.meta_path if getattr(each, "__module__", "") != __name__]
sys.meta_path.append(_PackageFinder)
_collections_abc.Sequence.register(_host.Sequence)
_later = dict.fromkeys(("Added", "Changed", "Diff", "Moved", "Path", "Removed", "Renamed", "diff"), "Tarvelon._diff")
_show_package(sys.modules[__name__], "Tarvelon", ["K7Q", *_later], _later)

# These modules add members to classes. They must be imported before the classes are first used.
import K7Q  # noqa: E402
import Tarvelon._factory  # noqa: E402
