"""Writes type stubs for all published packages, for editors and type checkers.

    python3 -m Tarvelon._stubs FOLDER        # writes FOLDER/K7Q-stubs and FOLDER/Tarvelon-stubs

The stub of a class declares its bases in their order, its constructors and methods, and its properties with the
types that they return and accept. A member is left out if the stub of a base declares it in the same way.
"""

from __future__ import annotations

import argparse
import importlib
import inspect
import os
import shutil
import sys
import types
from collections.abc import Callable, Iterator

import K7Q
import _tarvelon_host as _host
from Tarvelon import describe
from Tarvelon._signatures import (Record, SCALARS, Signature, changeable, class_record, declared, lineage,
                                  own_methods, purpose, signature_of, split)

PYTHON_METHODS = ("__init__", "__enter__", "__exit__")
PARTIAL = "partial\n"  # the modules that are not packages of the host have .py files with annotations
FACTORY = "Tarvelon.metamodel.arplatform.Factory"
OPTIONAL, _, MANY = range(3)
READ_ONLY = 1

# Facts that a method's record does not contain: the result may be None, and the class of the elements.
MAY_BE_NOTHING = ("cast", "find", "getContainer")
ELEMENTS = {
    "K7Q.ImmutableClass.superclasses": "ImmutableClass",
    "K7Q.ImmutableClass.properties": "ImmutableProperty",
    "K7Q.ImmutablePackage.classes": "ImmutableClass",
    "K7Q.ImmutablePackage.dataTypes": "ImmutableDataType",
    "K7Q.ImmutablePackage.subPackages": "ImmutablePackage",
}
HEAD = """import builtins
import os
from collections.abc import Callable, Iterable
from typing import Any, Final, Generic, Literal, NamedTuple, TypeAlias, TypeVar, overload
from typing_extensions import Never, Self

"""
KERNEL = """_Held = TypeVar("_Held", bound=ImmutableObject)

class _SequenceOf(ImmutableSequenceOfImmutableObject, Generic[_Held]):
    # What stands in it is known better than its class tells.
    def front(self) -> _Held: ...
    def back(self) -> _Held: ...
    def at(self, number: int, /) -> _Held: ...

_Object = TypeVar("_Object", bound=ImmutableClassObject)
_Copied = TypeVar("_Copied", bound=ClassObject)
_Path: TypeAlias = str | bytes | os.PathLike[str] | os.PathLike[bytes]
_Paths: TypeAlias = list[str] | list[_Path] | tuple[_Path, ...]
_Progress: TypeAlias = Callable[[float], object]
# What a function of a rule may give: nothing, a message, a property and a message, or several of them.
_Found: TypeAlias = str | tuple[str, str] | Iterable[str | tuple[str, str]] | None

class _Find:
    # Of the class: the bound model of a URI. Of a model: the object of a qualified name.
    @overload
    def __get__(self, model: None, cls: type, /) -> Callable[[str], Model | None]: ...
    @overload
    def __get__(self, model: Model, cls: type, /) -> Callable[[str], ClassObject | None]: ...
"""
# Objects found in a mutable model are mutable, and instances() returns objects of the given class.
MODEL = (
    "def find_all(model, path: str, /) -> list[ClassObject]: ...  # type: ignore[override]",
    "def instances(model, cls: type[_Object], /) -> list[_Object]: ...",
    "def objects(model, /) -> list[ClassObject]: ...  # type: ignore[override]",
    "def roots(self) -> list[ClassObject]: ...  # type: ignore[override]",
)


class Body:
    """The lines of a class. Writes the names of other classes so that no member of this class hides them."""

    def __init__(self, module: Module, record: Record, rows: list[Record]) -> None:
        self.module = module
        self.record = record
        self.members = {each["name"] for each in [*rows, *record["methods"]]}
        self.lines: list[str] = []

    def add(self, *lines: str) -> None:
        self.lines += [f"    {line}" for line in lines]

    def shown(self, type_name: str) -> str:
        if type_name in SCALARS:
            return SCALARS[type_name]
        package, short = split(type_name)
        last = split(package)[1]
        is_own = package == self.module.name
        is_hidden = (short if is_own else last) in self.members
        if is_own and not is_hidden:
            return short
        self.module.bring(package, is_hidden)
        return f"{'_' if is_hidden else ''}{last}.{short}"

    def parameters(self, signature: Signature, *first: str) -> str:
        given = [f"{name}: {self.shown(kind)}" for name, kind in zip(signature.names, signature.types)]
        return ", ".join([*first, *given, *(["/"] if given else [])])

    def result(self, name: str, signature: Signature) -> str:
        element = ELEMENTS.get(f"{self.record['fullName']}.{name}")
        shown = f"_SequenceOf[{element}]" if element else self.shown(signature.result)
        return f"{shown} | None" if name in MAY_BE_NOTHING else shown

    def add_method(self, name: str, signatures: tuple[Signature, ...], is_kept: bool) -> None:
        ignored = "" if is_kept else "  # type: ignore[override]"
        for signature in signatures:
            if len(signatures) > 1:
                self.add("@overload")
            if signature.is_static:
                self.add("@staticmethod")
            given = self.parameters(signature, *(() if signature.is_static else ("self",)))
            self.add(f"def {name}({given}) -> {self.result(name, signature)}: ...{ignored}")
            ignored = ""

    def add_constructors(self) -> None:
        made = [signature_of(each) for each in self.record["methods"] if each["kind"] == "constructor"]
        for signature in made:
            if len(made) > 1:
                self.add("@overload")
            self.add(f"def __init__({self.parameters(signature, 'self')}) -> None: ...")
        bases = (class_record(each) for each in lineage(self.record["fullName"]))
        if not made and any(each["kind"] == "constructor" for base in bases for each in base["methods"]):
            # The constructors of a base class cannot create an object of this class.
            self.add("def __init__(self, nothing: Never, /) -> None: ...")

    def add_property(self, row: Record, is_changeable: bool) -> None:
        """The getter of a property as seen through objects of the class, and the setter if it can be set."""
        name, multiplicity, is_read_only = row["name"], row["multiplicity"], row["mutability"] == READ_ONLY
        kind = changeable(row["type"], multiplicity == MANY, is_read_only) if is_changeable else row["type"]
        shown = self.shown(kind)
        taken = f"{shown} | None" if multiplicity == OPTIONAL else shown
        is_writable = is_changeable and not is_read_only
        # An unset text reads as an empty text.
        told = (_host.plainType(row["type"]), describe.MULTIPLICITY[multiplicity],
                "writable" if is_writable else "read-only")
        self.add("@property", f"def {name}(self) -> {shown if shown == 'str' else taken}:",
                 "    " + docstring(", ".join(told)))
        if is_writable:
            self.add(f"@{name}.setter", f"def {name}(self, value: {taken}) -> None: ...")
        if is_writable and multiplicity == OPTIONAL:
            self.add(f"@{name}.deleter", f"def {name}(self) -> None: ...")

    def add_addition(self, name: str, function: types.FunctionType) -> None:
        """A method that Python code adds to a class, with the signature of its definition."""
        if self.record["fullName"] == FACTORY and name == "create":
            self.add_create(function)
            return
        self.add(*function_lines(name, function, is_method=True))

    def add_python_property(self, name: str, addition: property) -> None:
        assert addition.fget is not None
        result = inspect.signature(addition.fget).return_annotation
        self.add("@property", f"def {name}(self) -> {result}:", "    " + docstring(addition.fget.__doc__))
        if addition.fset:
            self.add(f"@{name}.setter", f"def {name}(self, value: {result}) -> None: ...")

    def add_create(self, function: types.FunctionType) -> None:
        """The overloads of Factory.create: for each class by its name, for any class as a type, and for any
        name."""
        self.module.bring("_tarvelon_host")
        self.module.prelude.append('_Object = TypeVar("_Object", bound=_tarvelon_host.HostObject)')
        for method in self.record["methods"]:
            if method["name"].startswith("createmetamodel"):
                made = signature_of(method)
                cls = f'cls: Literal["{describe.short(made.result)}"]'
                given = self.parameters(made, "self", cls) + ("" if made.types else ", /")
                self.add("@overload", f"def create({given}) -> {self.shown(made.result)}: ...")
        self.add("@overload", "def create(self, cls: type[_Object], /, *arguments: object) -> _Object: ...")
        # For names that are computed. Also, an error for a wrong name then has one line instead of four
        # hundred.
        self.add("@overload", "def create(self, cls: str, /, *arguments: object) -> K7Q.ClassObject:",
                 "    " + docstring(function.__doc__))


class Module:
    """The stub of one package."""

    def __init__(self, package: Record) -> None:
        self.package = package
        self.name: str = package["name"]
        parts = [split(each["name"])[1] for each in package["packages"]]
        self.imports = {f"from {self.name} import {each} as {each}" for each in parts}
        self.module = importlib.import_module(self.name)
        for each in getattr(self.module, "_later", ()):
            getattr(self.module, each)
        self.prelude = list(kernel_lines()) if self.name == "K7Q" else []
        self.prelude += [f"{each}: str\n" for each in ("__version__",) if each in vars(self.module)]
        # Names that a package re-exports from its own modules, as Tarvelon does from _diff.
        self.prelude += [f"from {value.__module__} import {each} as {each}\n" for each, value in vars(self.module).items()
                         if getattr(value, "__module__", "").startswith(f"{self.name}._") and each[0] != "_"]

    def bring(self, package: str, is_hidden: bool = False) -> None:
        """Imports a package; under a private name if a member of the class hides its name."""
        parent, last = split(package)
        if is_hidden or parent != self.name:  # its own sub-packages are always imported
            origin = f"from {parent} import {last}" if parent else f"import {last}"
            self.imports.add(f"{origin} as _{last}" if is_hidden else origin)

    def text(self) -> str:
        functions = [line for each in self.package["functions"] for line in self.function_lines(each)]
        classes = [line for each in self.package["classes"] for line in self.class_lines(each)]
        head = [docstring(self.module.__doc__), "", HEAD + "\n".join(sorted(self.imports)), ""]
        return "\n".join([*head, *self.prelude, *functions, *classes])

    def function_lines(self, function: Record) -> Iterator[str]:
        self.bring(split(function["result"])[0])
        yield f"def {function['name']}() -> {function['result']}: ..."
        yield ""

    def class_lines(self, record: Record) -> Iterator[str]:
        kind = _host.member(self.name, record["name"])
        yield f"class {record['name']}({', '.join(self.base(each) for each in kind.__bases__)}):"
        yield "    " + docstring(purpose(record))
        view = f"{self.name}.Immutable{record['name']}"
        is_changeable = view in record["superclasses"]
        rows = class_record(view)["properties"] if is_changeable else record["properties"]
        body = Body(self, record, rows)
        body.add_constructors()
        for row in rows:
            body.add_property(row, is_changeable)
        self.add_methods(body)
        for name, addition in vars(kind).items():
            if isinstance(addition, types.FunctionType):
                body.add_addition(name, addition)
            elif isinstance(addition, staticmethod):
                body.add("@staticmethod", *function_lines(name, addition.__func__))
            elif isinstance(addition, property):
                body.add_python_property(name, addition)
            elif hasattr(addition, "stub"):
                body.add(*addition.stub)
        body.add(*(MODEL if record["fullName"] == "K7Q.Model" else ()))
        yield from body.lines
        yield ""

    def add_methods(self, body: Body) -> None:
        record = body.record
        literals = describe.literals(record) if record["description"] == describe.ENUMERATION else []
        for name in literals:
            body.add(f"{_host.attributeName(name)}: Final[{body.shown(record['fullName'])}]")
        kind = _host.member(self.name, record["name"])
        for name, signatures, is_kept in own_methods(record):
            if name not in literals and not hasattr(vars(kind).get(name), "stub"):
                body.add_method(name, signatures, is_kept)
        for signature in declared(record["fullName"], "append"):
            elements = f"Iterable[{body.shown(signature.types[0])}]"
            body.add(f"def __iadd__(self, elements: {elements}, /) -> Self: ...")
        for entry in record["metaProperties"]:
            result = body.shown("K7Q.ImmutableProperty")
            body.add("@staticmethod", f"def {entry['name']}() -> {result}: ...")

    def base(self, kind: type) -> str:
        if kind.__module__ == self.name:
            return kind.__name__
        self.bring(kind.__module__)
        return f"{split(kind.__module__)[1]}.{kind.__name__}"


def docstring(text: str | None) -> str:
    escaped = (text or "").replace("\\", "\\\\").replace('"""', '\\"\\"\\"')
    return f'"""{escaped}{" " if escaped.endswith(chr(34)) else ""}"""'


class Plain(str):
    """A text that appears in a signature without quotes."""

    def __repr__(self) -> str:
        return str(self)


def function_lines(name: str, function: Callable[..., object], is_method: bool = False) -> Iterator[str]:
    """The stub of a Python function, with its own annotations and with `...` for each default value."""
    signature = inspect.signature(function)
    parameters = [each.replace(annotation=Plain(each.annotation) if each.annotation is not each.empty else each.empty,
                               default=each.empty if each.default is each.empty else Plain("..."))
                  for each in signature.parameters.values()]
    if is_method and not parameters[0].annotation.startswith("_"):  # not a type variable
        parameters[0] = parameters[0].replace(annotation=inspect.Parameter.empty)
    shown = signature.replace(parameters=parameters, return_annotation=Plain(signature.return_annotation))
    yield f"def {name}{shown}:{'' if function.__doc__ else ' ...'}"
    if function.__doc__:
        yield "    " + docstring(function.__doc__)


def kernel_lines() -> Iterator[str]:
    """The names of K7Q that are not classes of the host: errors, functions, and sequences with an element
    type."""
    members = [each for name, each in vars(K7Q).items()
               if not name.startswith("_") and getattr(each, "__module__", None) == "K7Q"]
    classes = [each for each in members if isinstance(each, type)]
    errors = [each for each in classes if issubclass(each, BaseException)]
    for each in sorted(errors, key=lambda each: len(each.__mro__)):
        yield from python_class_lines(each)
    for each in classes:
        if each not in errors:
            yield from python_class_lines(each)
    for function in members:
        if isinstance(function, types.FunctionType):
            yield from (*function_lines(function.__name__, function), "")
    yield KERNEL


def python_class_lines(cls: type) -> Iterator[str]:
    """The stub of a Python class: its fields and methods."""
    is_tuple = issubclass(cls, tuple)
    bases = (each.__name__ if each.__module__ == "K7Q" else f"builtins.{each.__name__}"
             for each in cls.__bases__ if each is not object)
    shown = "NamedTuple" if is_tuple else ", ".join(bases)
    yield f"class {cls.__name__}{f'({shown})' if shown else ''}:"
    yield "    " + docstring(cls.__doc__)
    defaults: dict[str, object] = getattr(cls, "_field_defaults", {})
    for name, kind in vars(cls).get("__annotations__", {}).items():
        ignored = "  # type: ignore[assignment]" if is_tuple and hasattr(tuple, name) else ""
        yield f"    {name}: {kind}{' = ...' if name in defaults else ''}{ignored}"
    for name, member in vars(cls).items():
        is_shown = name.strip("_") == name or name in PYTHON_METHODS
        if isinstance(member, types.FunctionType) and is_shown and member.__module__.startswith("K7Q"):
            yield from (f"    {line}" for line in function_lines(name, member))
    yield ""


def packages(record: Record) -> Iterator[Record]:
    yield record
    for each in record["packages"]:
        yield from packages(each)


def write(folder: str) -> None:
    for root in ("K7Q", "Tarvelon"):
        shutil.rmtree(os.path.join(folder, f"{root}-stubs"), ignore_errors=True)
        for package in packages(_host.describe(root)):
            path = os.path.join(folder, *f"{root}-stubs{package['name'].removeprefix(root)}".split("."))
            is_folder = package["packages"] or package["name"] == root
            file = os.path.join(path, "__init__.pyi") if is_folder else f"{path}.pyi"
            os.makedirs(os.path.dirname(file), exist_ok=True)
            with open(file, "w", encoding="utf-8") as stub:
                stub.write(Module(package).text())
        with open(os.path.join(folder, f"{root}-stubs", "py.typed"), "w", encoding="utf-8") as marker:
            marker.write(PARTIAL)


def main(arguments: list[str] | None = None) -> int:
    parser = argparse.ArgumentParser(prog="python3 -m Tarvelon._stubs", description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", help="the folder for the stub packages")
    write(parser.parse_args(arguments).folder)
    return 0


if __name__ == "__main__":
    sys.exit(main())
