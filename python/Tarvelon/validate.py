"""Says what is wrong with a model in a file: what does not fit in the file, and what AUTOSAR would not take.

Exits with 1 if there is an error, with 0 if there are warnings or nothing.
"""

import argparse
import json
import os
import runpy
import sys
from itertools import groupby

import K7Q


def number_of(count, what):
    return f"{count} {what}{'' if count == 1 else 's'}"


def page(name, misfits, problems):
    """Lines for a person: what does not fit in the file, then the problems of each object."""
    lines = [f"{name}: error: {each}" for each in misfits]
    for path, found in groupby(problems, lambda each: each.path):
        lines.append(path)
        for each in found:
            place = f"{each.property}: " if each.property else ""
            lines.append(f"  {each.severity}: {place}{each.message} [{each.rule}]")
    errors = count_errors(misfits, problems)
    warnings = len(misfits) + len(problems) - errors
    total = f"{number_of(errors, 'error')}, {number_of(warnings, 'warning')}"
    return [*lines, f"{name}: {total if errors or warnings else 'nothing is wrong'}"]


def count_errors(misfits, problems):
    return len(misfits) + sum(each.severity == "error" for each in problems)


def record(name, misfits, problems):
    """The same for a program."""
    return {"file": name,
            "misfits": [each._asdict() for each in misfits],
            "problems": [{key: value for key, value in each._asdict().items() if key != "object"}
                         for each in problems]}


def validate(options):
    for script in options.rules:
        runpy.run_path(script)
    with K7Q.Model.load(options.file, lenient=True) as model:
        misfits, problems = model.problems, model.validate()
        if options.json:
            text = json.dumps(record(options.file, misfits, problems), indent=1, ensure_ascii=False)
        else:
            text = "\n".join(page(options.file, misfits, problems))
    try:
        print(text, flush=True)
    except BrokenPipeError:  # the reader, `head` say, has seen enough
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
    return 1 if count_errors(misfits, problems) else 0


def main(arguments=None):
    parser = argparse.ArgumentParser(prog="tarvelon validate", description=__doc__)
    parser.add_argument("--json", action="store_true", help="print records, for a program")
    parser.add_argument("--rules", action="append", default=[], metavar="SCRIPT",
                        help="run a script before, which adds rules of its own with K7Q.rule")
    parser.add_argument("file", metavar="FILE", help="a model that was saved")
    options = parser.parse_args(arguments)
    try:
        return validate(options)
    except (K7Q.Exception, OSError) as error:
        print(f"tarvelon: {error}", file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
