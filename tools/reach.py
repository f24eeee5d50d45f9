"""Prints the labels of the tests that the changes of this checkout can reach, as a regular expression for `ctest -L`.

    /usr/bin/python3 tools/reach.py

`./tarvelon test --changed` uses it. A change is what differs from origin/main, or from ten commits ago, with what is not
committed. The rule with the longest folder decides about a file. A file without a rule reaches every test.
"""

import re
import sys

from changes import ROOT, changed_files

# Tests that go through whole programs: everything below them reaches them.
PROGRAMS = ["python", "examples", "world", "threads", "memory", "docs"]
EVERY = None  # every test

# What a change of a file in this folder can reach.
REACH = {
    ".ci/": [],
    "bench/": [],
    "docs/": ["docs"],
    "examples/": ["docs", "examples", "install", "stubs"],
    "python/": ["compatibility", "docs", "entry", "examples", "install", "python", "stubs"],
    "src/tarvelon/platform/files/": ["compatibility", "exports", "files", "install", "layers", *PROGRAMS],
    "src/tarvelon/platform/model/audit/": ["compatibility", "exports", "layers", "native", "world"],
    "src/tarvelon/platform/model/copy/": ["compatibility", "copy", "exports", "layers", *PROGRAMS],
    "src/tarvelon/platform/model/validation/": ["compatibility", "exports", "layers", "native", *PROGRAMS],
    "tests/fuzz/": [],
    "tests/golden/": ["python"],
    "tests/world/": ["threads", "world"],
    "tests/support/": EVERY,
    "tests/CMakeLists.txt": EVERY,
    "tests/README.md": [],
    "tools/": ["compatibility", "docs", "tools"],
    "CHANGELOG.md": [],
    "CONTRIBUTING.md": ["docs"],
    "README.md": ["docs"],
}


def labels_of(name):
    """The labels that a file reaches; None for all."""
    folders = [folder for folder in REACH if name.startswith(folder)]
    if folders:
        return REACH[max(folders, key=len)]
    area = re.match(r"tests/([^/]+)/", name)
    return [area[1]] if area else EVERY


def labels(names):
    """The labels that the files reach together; None for all."""
    found = set()
    for name in names:
        reached = labels_of(name)
        if reached is EVERY:
            return EVERY
        found.update(reached)
    return sorted(found)


def main():
    found = labels(sorted(file.relative_to(ROOT).as_posix() for file in changed_files()))
    print("." if found is EVERY else f"^({'|'.join(found)})$" if found else "^$")


if __name__ == "__main__":
    sys.exit(main())
