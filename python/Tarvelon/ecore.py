"""Writes the metamodel as an Ecore file. EMF and other programs need this file to open saved models."""

from __future__ import annotations

import argparse
import sys

import K7Q
import _tarvelon_host as _host


def main(arguments: list[str] | None = None) -> int:
    parser = argparse.ArgumentParser(prog="tarvelon ecore", description=__doc__)
    parser.add_argument("file", metavar="FILE", help="the file to write, as in tarvelon.ecore")
    options = parser.parse_args(arguments)
    try:
        _host.saveEcore(options.file)
    except (K7Q.FileError, K7Q.WrongValue) as error:
        print(f"tarvelon: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
