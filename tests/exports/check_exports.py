"""Compares the names that a shared library exports with a stored list.

usage: check_exports.py NM LIBRARY LIST

LIST contains the demangled names, sorted, one on each line. If the library does not export a name of the list, a host
that looks up this name fails. If it exports another name, programs may begin to depend on that name.
"""

import subprocess
import sys
from pathlib import Path


def exported(nm, library):
    """The demangled names of the library's defined and visible symbols."""
    command = [nm, "--dynamic", "--defined-only", "--demangle", library]
    output = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    # A line is: address, a letter for the kind, name. The name may contain blanks.
    return sorted(line.split(maxsplit=2)[2] for line in output.splitlines())


def differences(kept, found):
    """One line for each name that is in only one of the lists, and one if the kept list is not sorted."""
    lines = []
    if kept != sorted(set(kept)):
        lines.append("the kept list is not sorted, or names something twice")
    lines += [f"missing:    {name}" for name in sorted(set(kept) - set(found))]
    lines += [f"unexpected: {name}" for name in sorted(set(found) - set(kept))]
    return lines


def main(arguments):
    if len(arguments) != 3:
        sys.exit(__doc__)
    nm, library, kept_file = arguments
    kept = Path(kept_file).read_text(encoding="utf-8").splitlines()
    found = exported(nm, library)
    lines = differences(kept, found)
    print(f"{library} exports {len(found)} names, {kept_file} holds {len(kept)}")
    print("\n".join(lines))
    if lines:
        print("Mark with TARVELON_API what must be seen and nothing else; a new name is entered in the list.")
    return 1 if lines else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
