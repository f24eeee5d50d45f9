"""Loads an .arxml file, lists its ports, doubles the periods of its timing events, and prints the changed lines.

    ./tarvelon run examples/change_arxml.py [FILE.arxml [NEW.arxml]]

Without NEW.arxml nothing is saved. FILE.arxml itself is never changed; `model.save()` without a path would do that.
"""

from __future__ import annotations

import difflib
import sys
import tempfile
from pathlib import Path

import K7Q
from Tarvelon.metamodel.arplatform import behavior, port

OWN = Path(__file__).with_name("speed_sensor.arxml")


def list_ports(model: K7Q.Model) -> None:
    for each in model.instances(port.Port):
        interface = each.Type.Name if each.Type else "an interface in another file"
        print(f"{each.qualifiedName}: {interface}")
    for tag, number in model.foreign().items():
        print(f"without a class: {number} {tag}")
    for reference in model.unresolved():
        print(f"line {reference.line}: {reference.path} refers to {reference.target}, which is not in the file")


def slow_down(model: K7Q.Model) -> None:
    for event in model.instances(behavior.TimingEvent):
        event.Period *= 2


def print_changes(old: Path, new: Path) -> None:
    before, after = (each.read_text(encoding="utf-8").splitlines() for each in (old, new))
    print("\n".join(difflib.unified_diff(before, after, lineterm="", n=1)))


def main(source: Path = OWN, target: Path | None = None) -> None:
    with K7Q.Model.load(source) as model, tempfile.TemporaryDirectory() as folder:
        list_ports(model)
        slow_down(model)
        new = target or Path(folder) / source.name
        model.save(new)
        print_changes(source, new)


if __name__ == "__main__":
    main(*map(Path, sys.argv[1:3]))
