"""Validates a model in one or more files: prints the problems of the file and the rules of AUTOSAR that the model breaks.

The exit status is 1 if there is an error, and 0 if there are only warnings or no problems.
"""

from __future__ import annotations

import argparse
import runpy
import sys
from collections.abc import Sequence
from itertools import groupby
from typing import Any

import K7Q
from Tarvelon._output import print_text, to_json
from Tarvelon.show import load, shown_names


def number_of(count: int, what: str) -> str:
    return f"{count} {what}{'' if count == 1 else 's'}"


def page(name: str, misfits: Sequence[K7Q.FileProblem], problems: list[K7Q.Problem]) -> list[str]:
    """The report for users: problems of the file, then the problems of each object."""
    lines = [f"{name}: error: {each}" for each in misfits]
    for path, found in groupby(problems, lambda each: each.path):
        lines.append(path)
        for each in found:
            place = f"{each.property}: " if each.property else ""
            lines.append(f"  {each.severity}: {place}{each.message} [{each.rule}]")
    errors = count_errors(misfits, problems)
    warnings = len(misfits) + len(problems) - errors
    total = f"{number_of(errors, 'error')}, {number_of(warnings, 'warning')}"
    return [*lines, f"{name}: {total if errors or warnings else 'no problems'}"]


def count_errors(misfits: Sequence[K7Q.FileProblem], problems: list[K7Q.Problem]) -> int:
    return len(misfits) + sum(each.severity == "error" for each in problems)


def record(
    name: str, misfits: Sequence[K7Q.FileProblem], problems: list[K7Q.Problem]
) -> dict[str, Any]:
    """The report for programs."""
    return {"file": name,
            "misfits": [each._asdict() for each in misfits],
            "problems": [{key: value for key, value in each._asdict().items() if key != "object"}
                         for each in problems]}


def add_rules(script: str) -> None:
    try:
        runpy.run_path(script)
    except SystemExit as end:  # otherwise the command would end as if the file had no problems
        raise K7Q.WrongValue(f"the script {script} has ended the program with exit({end.code!r}); "
                             "a script with rules must not call exit()") from None


def validate(options: argparse.Namespace) -> int:
    for script in options.rules:
        add_rules(script)
    name = shown_names(options.files)
    with load(options.files, lenient=True) as model:
        misfits, problems = model.problems, model.validate()
        if options.json:
            text = to_json(record(name, misfits, problems))
        else:
            text = "\n".join(page(name, misfits, problems))
    return 0 if print_text(text) and not count_errors(misfits, problems) else 1


def main(arguments: list[str] | None = None) -> int:
    parser = argparse.ArgumentParser(prog="tarvelon validate", description=__doc__)
    parser.add_argument("--json", action="store_true", help="print the problems as JSON")
    parser.add_argument("--rules", action="append", default=[], metavar="SCRIPT",
                        help="first run a script that adds rules with K7Q.rule; may be given more than once")
    parser.add_argument("files", nargs="+", metavar="FILE",
                        help="the file of a saved model; several ARXML files, or a folder with such files, are one "
                             "model")
    options = parser.parse_args(arguments)
    try:
        return validate(options)
    except (K7Q.Exception, OSError) as error:
        print(f"tarvelon: {error}", file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
