"""Runs clang-tidy over the changed sources, with the compile commands of build/clang.

usage: tools/tidy.py [FILE...]

Without files, it checks the sources that differ from origin/main or from the commit ten commits ago. A changed header
is checked through one source that includes it. If nothing differs, it checks one source of each folder. It checks at
most N sources (default 60), because each takes seconds, and prints how many there were.
"""

import argparse
import concurrent.futures
import json
import os
import subprocess
import sys
from pathlib import Path

from changes import ROOT, changed_files, output_of

BUILD = ROOT / "build" / "clang"
HEADERS = {".h", ".hpp", ".inl"}


def compiled_sources():
    commands = json.loads((BUILD / "compile_commands.json").read_text())
    files = {Path(command["file"]) for command in commands}
    return sorted(file for file in files if file.is_relative_to(ROOT) and BUILD not in file.parents)


def includers(sources):
    """For each header, the sources that include it, as recorded by ninja during the build."""
    found, outputs = {}, output_of("ninja", "-C", str(BUILD), "-t", "deps")
    known = {str(source): source for source in sources}
    inputs = []
    for line in outputs + [""]:
        if line.startswith("    "):
            inputs.append(str((BUILD / line.strip()).resolve()))
        elif not line:
            source = next((known[name] for name in inputs if name in known), None)
            for name in inputs if source else []:
                found.setdefault(name, []).append(source)
            inputs = []
    return found


def wanted_sources(files, sources):
    """The sources to check for the changed files. A header is checked through a source that includes it."""
    chosen = [file for file in files if file in sources]
    by_header = includers(sources) if any(file.suffix in HEADERS for file in files) else {}
    for file in files:
        users = by_header.get(str(file), []) if file.suffix in HEADERS else []
        if users and not set(users) & set(chosen):
            chosen.append(users[0])
    return chosen or one_of_each_folder(sources)


def one_of_each_folder(sources):
    return list({source.relative_to(ROOT).parent: source for source in reversed(sources)}.values())


def tidy(source):
    command = ["clang-tidy-14", "-p", str(BUILD), "--quiet", str(source)]
    return subprocess.run(command, cwd=ROOT, capture_output=True, text=True)


def main():
    parser = argparse.ArgumentParser(usage=__doc__.split("\n\n")[1].removeprefix("usage: "))
    parser.add_argument("files", nargs="*", type=Path)
    arguments = parser.parse_args()

    sources = compiled_sources()
    files = [file.resolve() for file in arguments.files] or changed_files()
    chosen = wanted_sources(files, sources)
    print(f"clang-tidy: {len(chosen)} of {len(sources)} sources")
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for result in pool.map(tidy, chosen):
            if result.returncode != 0:
                failed += 1
                print(result.stdout, result.stderr, sep="")
    return 1 if failed or not chosen else 0


if __name__ == "__main__":
    sys.exit(main())
