"""Measures creating all Python types and their attributes, compared with the same number of plain types.

Each repetition runs in a process of its own and measures both, so that nothing exists before it is first
used. Times are processor times, because other programs on the machine only add to the elapsed time.
"""

import json
import subprocess
import sys
import time
from importlib import import_module

import Tarvelon.metamodel.arplatform as root

CLASSES = 3266
ROUNDS = 15
MOST = 2.0


def packages():
    names = ("documentation", "common", "variant", "interface", "port", "component", "behavior", "instance",
             "composition", "ecuc", "manifest", "timingExtension", "system")
    return [root, *(import_module(f"{root.__name__}.{name}") for name in names)]


def make_all():
    """Creates the Python type of every class by first use, package by package."""
    made = []
    for package in packages():
        for name in dir(package):
            if not name.startswith("__") and isinstance(value := getattr(package, name), type):
                made.append(value)
    return made


def read_all(types):
    """Reads every record of every class as an attribute of its class; returns the number of attributes."""
    count = 0
    for cls in types:
        for name in vars(cls):
            if not name.startswith("__"):
                getattr(cls, name)
        count += len(vars(cls))
    return count


def make_bare(types):
    """Creates plain types with the same names, attributes and order of bases."""
    made = {}
    attributes = [tuple(vars(cls)) for cls in types]
    order = sorted(zip(types, attributes), key=lambda pair: len(pair[0].__mro__))
    started = time.process_time()
    for cls, names in order:
        bases = tuple(made[base] for base in cls.__bases__ if base in made)
        made[cls] = type(cls.__name__, bases, {**dict.fromkeys(names), "__slots__": ()})
    return time.process_time() - started


def measure():
    started = time.process_time()
    types = make_all()
    made = time.process_time()
    attributes = read_all(types)
    read = time.process_time()
    print(json.dumps({"classes": len(types), "attributes": attributes, "making": made - started,
                      "reading": read - made, "bare": make_bare(types)}))


def main():
    command = [sys.executable, __file__, "measure"]
    rounds = [json.loads(subprocess.run(command, check=True, capture_output=True).stdout)
              for _ in range(ROUNDS)]
    if rounds[0]["classes"] != CLASSES:
        raise SystemExit(f"publishing: {rounds[0]['classes']} classes, expected {CLASSES}")
    making, reading, bare = (min(each[what] for each in rounds) for what in ("making", "reading", "bare"))
    print(f"{CLASSES} classes with {rounds[0]['attributes']} attributes, the least of {ROUNDS} processes")
    print(f"  make them             {1000 * making:7.1f} ms")
    print(f"  read each attribute   {1000 * reading:7.1f} ms")
    print(f"  make bare types       {1000 * bare:7.1f} ms")
    print(f"  making and reading, to bare types: {(making + reading) / bare:.2f} (aim: {MOST} at most)")


if __name__ == "__main__":
    measure() if sys.argv[1:] == ["measure"] else main()
