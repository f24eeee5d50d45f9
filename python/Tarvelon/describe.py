"""Prints a published package, class or enumeration: a readable page, or with --json the records."""

from __future__ import annotations

import argparse
import sys
import textwrap
from collections.abc import Iterable, Iterator, Sequence
from typing import Any

import Tarvelon  # noqa: F401  loads the metamodel
import _tarvelon_host as _host
from Tarvelon._output import print_text, to_json

Record = dict[str, Any]

DEFAULT = "Tarvelon.metamodel.arplatform"
MULTIPLICITY = ("0..1", "1", "0..*")
MUTABILITY = ("", "read-only")
ENUMERATION = "An enumeration"


def short(name: str) -> str:
    """The last two parts of a dotted name, as used in scripts."""
    return ".".join(name.split(".")[-2:])


def purpose(name: str) -> str:
    return _host.documentation(name)["purpose"]


def first_sentence(name: str) -> list[str]:
    """The first sentence of a purpose, as lines. Purposes are written so that this sentence can stand
    alone."""
    return paragraph(purpose(name).partition(". ")[0].rstrip("."), " " * 8)


def heading(full_name: str) -> list[str]:
    """The purpose of a package or class, if it has one, and its name."""
    text = paragraph(purpose(full_name))
    return [*text, "", full_name] if text else [full_name]


def constructor_lines(record: Record) -> Iterator[str]:
    """The constructors with the names of their arguments, if the metamodel has them."""
    named = _host.documentation(record["fullName"])["constructors"]
    constructors = [each for each in record["methods"] if each["kind"] == "constructor"]
    for index, each in enumerate(constructors):
        types = [short(argument) for argument in each["arguments"]]
        names = named[index] if index < len(named) else []
        if len(names) == len(types):
            types = [f"{name}: {kind}" for name, kind in zip(names, types)]
        yield f"    {record['name']}({', '.join(types)})"


def signature(method: Record, name: str | None = None) -> str:
    arguments = ", ".join(short(each) for each in method["arguments"])
    result = "" if method["kind"] == "constructor" else f" -> {short(method['result'])}"
    return f"{name or method['name']}({arguments}){result}"


def plain(name: str) -> str:
    """The name of a class for users: a view has the name of its mutable class."""
    package, _, last = name.rpartition(".")
    return short(f"{package}.{last.removeprefix('Immutable')}")


def paragraph(text: str, indent: str = "") -> list[str]:
    return textwrap.wrap(text, 100, initial_indent=indent, subsequent_indent=indent)


def table(rows: Sequence[tuple[str, ...]], indent: str = "    ") -> Iterator[str]:
    """Lines with aligned columns."""
    widths = [max(map(len, column)) for column in zip(*rows)]
    for row in rows:
        yield (indent + "  ".join(cell.ljust(width) for cell, width in zip(row, widths))).rstrip()


def section(title: str, lines: Iterable[str]) -> list[str]:
    lines = list(lines)
    return ["", title, *lines] if lines else []


def lineage(record: Record) -> list[Record]:
    """The class and all its superclasses without duplicates, nearest first."""
    seen, order, queue = set(), [], [record]
    while queue:
        each = queue.pop(0)
        if each["fullName"] not in seen:
            seen.add(each["fullName"])
            order.append(each)
            queue += [_host.describe(name) for name in each["superclasses"]]
    return order


def property_rows(record: Record) -> Iterator[tuple[str, ...]]:
    """Name, multiplicity, type, mutability and owner of each own and inherited property."""
    known = set()
    for owner in lineage(record):
        name = plain(owner["fullName"])
        inherited = "" if name == plain(record["fullName"]) else f"from {name}"
        for each in owner["properties"]:
            if each["name"] not in known:
                known.add(each["name"])
                yield (each["name"], MULTIPLICITY[each["multiplicity"]], _host.plainType(each["type"]),
                       MUTABILITY[each["mutability"]], inherited)


def literals(record: Record) -> list[str]:
    return [each["name"] for each in record["methods"]
            if each["kind"] == "static" and not each["arguments"] and each["result"] == record["fullName"]]


def class_page(record: Record) -> list[str]:
    methods = [each for each in record["methods"] if each["kind"] != "constructor"]
    is_enumeration = record["description"] == ENUMERATION
    values = literals(record) if is_enumeration else []
    lines = heading(record["fullName"])
    if record["description"]:
        lines.append(record["description"])
    lines += section("Superclasses", (f"    {name}" for name in record["superclasses"]))
    lines += section("Constructors", constructor_lines(record))
    lines += section("Literals", table([(name, str(value)) for value, name in enumerate(values)]))
    lines += section("Properties", table(list(property_rows(record))))
    lines += section("Methods", (f"    {signature(each)}" for each in methods if each["name"] not in values))
    entries = [(each["name"], short(each["owner"]), str(each["id"])) for each in record["metaProperties"]]
    return lines + section("Meta properties", table(entries))


def package_page(record: Record) -> list[str]:
    names = {each["name"] for each in record["classes"]}
    enumerations = [each for each in record["classes"] if each["description"] == ENUMERATION]
    classes = [each for each in record["classes"]
               if {f"Immutable{each['name']}", f"{each['name']}MetaProperty"} <= names]
    rest = len(names) - len(classes) - len(enumerations)
    bases = [(each["name"], ", ".join(short(name) for name in each["superclasses"][1:])) for each in classes]
    if not classes:  # this package has no model classes, so no class has companion classes
        others = [each for each in record["classes"] if each not in enumerations]
        bases, rest = [(each["name"], each["description"]) for each in others], 0
    lines = heading(record["name"])
    lines += section("Packages", (line for each in record["packages"] for line in (
        f"    {each['name']}", *first_sentence(each["name"]))))
    lines += section("Functions", (f"    {signature(each)}" for each in record["functions"]))
    sentences = (first_sentence(each["fullName"]) for each in classes or others)
    lines += section("Classes" if rest == 0 else "Classes and their bases",
                     (line for row, sentence in zip(table(bases), sentences) for line in (row, *sentence)))
    lines += section("Enumerations", (line for each in enumerations for line in (
        f"    {each['name']}: {', '.join(literals(each))}", *first_sentence(each["fullName"]))))
    if rest:
        lines += ["", f"and {rest} companions: immutable views, sequences, iterators, meta properties"]
    return lines


def page(record: Record) -> list[str]:
    """The lines of the page of a package or a class."""
    return class_page(record) if "fullName" in record else package_page(record)


def classes_named(short: str) -> list[str]:
    """The name of the platform's class with that short name, or else of the one with the most similar
    name."""
    packages = [f"{DEFAULT}.{each}" for each in _host.memberNames(DEFAULT) if _host.isPackage(f"{DEFAULT}.{each}")]
    names = [f"{package}.{each}" for package in packages for each in _host.memberNames(package)]
    shorts = {name.rpartition(".")[2]: name for name in reversed(names)}
    found = shorts.get(short) or shorts.get(_host.nearest(short, list(shorts)))
    return [found.removeprefix(DEFAULT + ".")] if found else []


def find(name: str) -> Record:
    """The record of a package or class. The name may be relative to one of the metamodel's packages."""
    errors = []
    for prefix in ("", DEFAULT + ".", "Tarvelon.metamodel."):
        try:
            return _host.describe(prefix + name)
        except _host.UnknownName as unknown:
            errors.append(unknown)
    raise refusal(name, errors)


def refusal(name: str, errors: list[_host.UnknownName]) -> _host.UnknownName:
    """The most helpful of the errors: with a similar name, or about an existing package."""
    near = next((each for each in errors if "did you mean" in str(each)), None)
    parent, _, member = name.rpartition(".")
    if not parent:
        found = classes_named(name)
        return _host.UnknownName(f"no package '{name}'; did you mean '{found[0]}'?") if found else near or errors[0]
    try:
        record = find(parent)
    except _host.UnknownName:
        return near or errors[0]
    if "fullName" not in record:
        return near or next(each for each in errors if "has no package or class" in str(each))
    members = [each["name"] for owner in lineage(record) for each in owner["properties"] + owner["methods"]]
    known = member if member in members else _host.nearest(member, members)
    inside = f", which has '{known}'" if known else ""
    return _host.UnknownName(f"'{name}' is not a package or class; describe '{parent}'{inside}")


def main(arguments: list[str] | None = None) -> int:
    parser = argparse.ArgumentParser(prog="tarvelon describe", description=__doc__)
    parser.add_argument("--json", action="store_true",
                        help="print the records as JSON, lists in the order of registration")
    parser.add_argument("name", nargs="?", default=DEFAULT, metavar="NAME",
                        help="the dotted name of a package, class or enumeration, complete or only its end: "
                             f"common.Package (default: {DEFAULT})")
    options = parser.parse_args(arguments)
    try:
        record = find(options.name)
    except _host.UnknownName as unknown:
        is_cured = "did you mean" in str(unknown) or "; describe '" in str(unknown)
        cure = "" if is_cured else "; without a name, describe lists the packages"
        print(f"tarvelon: {unknown}{cure}", file=sys.stderr)
        return 1
    text = to_json(record) if options.json else "\n".join(page(record))
    return 0 if print_text(text) else 1


if __name__ == "__main__":
    sys.exit(main())
