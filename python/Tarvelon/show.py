"""Prints the model in one or more files, or one object of it: as a readable tree, or with --json completely."""

from __future__ import annotations

import argparse
import json
import os
import sys
from collections.abc import Iterator
from typing import Any

import K7Q
import Tarvelon  # noqa: F401  loads the metamodel
from Tarvelon._output import print_text, to_json

DEPTH = 3
Record = dict[str, Any]


def is_object(value: object) -> bool:
    return isinstance(value, dict)


def is_held(value: object) -> bool:
    """Whether the value of a property contains objects, one or many."""
    return is_object(value) or isinstance(value, list) and any(map(is_object, value))


def held(record: Record) -> Iterator[tuple[str, Record]]:
    """The objects contained in an object: (step, record). A step is ".property[index]", with an index from
    0."""
    for name, value in record.items():
        if is_object(value):
            yield f".{name}", value
        elif is_held(value):
            for index, each in enumerate(value):
                yield f".{name}[{index}]", each


def paths(root: Record) -> Iterator[tuple[str, Record]]:
    """An object and all objects that it contains, as (path, record). Paths may be equal."""
    pending = [("", "", root)]  # names of the owners, path if the object has no name, object
    while pending:
        names, unnamed, record = pending.pop()
        if "Name" in record:
            names = unnamed = f"{names}/{record['Name']}"
        yield unnamed, record
        below = [(names, unnamed + step, each) for step, each in held(record)]
        pending += reversed(below)


def find(roots: list[Record], path: str) -> Record | None:
    """The first object with that path or id, as references contain it."""
    wanted = path if path.startswith("/") else f"/{path}"
    for root in roots:
        for found, record in paths(root):
            if found == wanted or record.get("id") == path:
                return record
    return None


def text(value: object) -> str:
    """A value as one line."""
    if isinstance(value, list):
        return ", ".join(map(text, value))
    return value if isinstance(value, str) else json.dumps(value)


def count(record: Record) -> int:
    total, pending = 0, [record]
    while pending:
        total += 1
        pending += [each for _, each in held(pending.pop())]
    return total


def title(record: Record) -> str:
    name = record.get("Name")
    return f"{name} ({record['class']})" if name is not None else f"({record['class']})"


def lines(record: Record, depth: int, indent: str = "") -> Iterator[str]:
    """The lines of a tree: an object, its values, and the objects it contains, down to that depth."""
    pending = [(record, depth, indent, "")]
    while pending:
        record, depth, indent, label = pending.pop()
        yield f"{indent}{label}{title(record)}"
        inner = indent + "  "
        for name, value in record.items():
            if name not in ("class", "Name", "id") and not is_held(value):
                yield f"{inner}{name} = {text(value)}"
        if depth == 0:
            hidden = count(record) - 1
            if hidden:
                yield f"{inner}... {hidden} below"
            continue
        pending += reversed([(each, depth - 1, inner, f"{step[1:].partition('[')[0]}: ")
                             for step, each in held(record)])


def parse(arguments: list[str] | None) -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="tarvelon show", description=__doc__)
    parser.add_argument("files", nargs="+", metavar="FILE",
                        help="the file of a saved model; several ARXML files, or a folder with such files, are one "
                             "model. If the last one does not exist, it is the PATH of the object to print: its "
                             "qualified name, /Brakes/Controller, or its path as in references, /Brakes.adminData "
                             "(default: the whole model)")
    parser.add_argument("--foreign", action="store_true",
                        help="print how many elements of ARXML files have no class, by element name")
    parser.add_argument("--json", action="store_true", help="print everything as JSON")
    parser.add_argument("--depth", type=int, default=DEPTH, metavar="N",
                        help="the number of levels to print below the object; -1 for all (default: %(default)s)")
    options = parser.parse_intermixed_args(arguments)
    options.path = None
    if len(options.files) > 1 and not os.path.exists(options.files[-1]):
        options.path = options.files.pop()
    return options


def load(files: list[str], lenient: bool = False) -> K7Q.Model:
    """The model in one file or folder, or in several ARXML files."""
    return K7Q.Model.load(files[0] if len(files) == 1 else files, lenient=lenient)


def shown_names(files: list[str]) -> str:
    return files[0] if len(files) == 1 else f"{len(files)} files"


def report(model: K7Q.Model, options: argparse.Namespace) -> str | None:
    """The text to print; None if no object has the path."""
    if options.foreign:
        return "\n".join(f"{number:8} {tag}" for tag, number in model.foreign().items()) or "everything has a class"
    data = model.to_dict()
    shown = data["objects"]
    if options.path is not None:
        found = find(shown, options.path)
        if found is None:
            return None
        shown = [found]
    if options.json:
        what = data if options.path is None else shown[0]
        return to_json(what)
    return "\n".join(line for each in shown for line in lines(each, options.depth)) or "no objects"


def main(arguments: list[str] | None = None) -> int:
    options = parse(arguments)
    try:
        with load(options.files) as model:
            output = report(model, options)
    except (K7Q.Exception, OSError) as error:
        print(f"tarvelon: {error}", file=sys.stderr)
        return 1
    if output is None:
        print(f"tarvelon: {shown_names(options.files)} has no object {options.path}; without a path, show prints what "
              "there is", file=sys.stderr)
        return 1
    return 0 if print_text(output) else 1


if __name__ == "__main__":
    sys.exit(main())
