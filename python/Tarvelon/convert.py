"""Converts models between ARXML and XMI: the suffix of the last file decides. Several ARXML files become one."""

from __future__ import annotations

import argparse
import sys

import K7Q
import Tarvelon  # noqa: F401  loads the metamodel
from Tarvelon.show import load


def main(arguments: list[str] | None = None) -> int:
    parser = argparse.ArgumentParser(prog="tarvelon convert", description=__doc__)
    parser.add_argument("files", nargs="+", metavar="IN", help="the files to read, or a folder with ARXML files")
    parser.add_argument("out", metavar="OUT", help="the file to write: .arxml or .xmi")
    parser.add_argument("--release", metavar="R", help="the AUTOSAR release of an ARXML file, as in R22-11 or 4.3.0")
    parser.add_argument("--lenient", action="store_true",
                        help="read what is right of a file with problems, and leave out what the release does not have")
    options = parser.parse_args(arguments)
    try:
        with load(options.files, lenient=options.lenient) as model:
            model.save(options.out, release=options.release, lenient=options.lenient)
            for each in model.problems:
                print(f"tarvelon: {each}", file=sys.stderr)
    except (K7Q.Exception, OSError) as error:
        print(f"tarvelon: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
