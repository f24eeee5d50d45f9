"""Prints how much of the engine the fuzzers' programs reach. `./tarvelon fuzz --coverage` calls it after a
run.

    fuzz_coverage.py ROOT BUILD

BUILD/profiles contains the profiles of the run. Prints the shares of branches, regions (pieces of code
without a branch) and lines that were reached: for each folder below src/tarvelon/platform, for
src/tarvelon/binding, and in total. The Python host is not included, because the fuzzers do not use it.
"""

import json
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

KINDS = ("branches", "regions", "lines")


def folder_of(file, root):
    """The folder to which a file is counted; None if the file is not counted."""
    try:
        parts = Path(file).resolve().relative_to(root / "src" / "tarvelon").parts
    except ValueError:
        return None
    return "/".join(parts[:-1]) if parts[0] in ("platform", "binding") else None


def sums(files, root):
    """Adds up llvm-cov's numbers of each file: {folder: {kind: [reached, all]}}."""
    found = defaultdict(lambda: {kind: [0, 0] for kind in KINDS})
    for file in files:
        folder = folder_of(file["filename"], root)
        if not folder:
            continue
        for kind in KINDS:
            found[folder][kind][0] += file["summary"][kind]["covered"]
            found[folder][kind][1] += file["summary"][kind]["count"]
    return found


def table(found):
    """The sums as lines; the last line is the total."""
    total = {kind: [sum(each[kind][part] for each in found.values()) for part in (0, 1)] for kind in KINDS}
    lines = [f"{'':32}" + "".join(f"{kind:>20}" for kind in KINDS)]
    for name, each in [*sorted(found.items()), ("total", total)]:
        cells = "".join(f"{share(*each[kind]):>20}" for kind in KINDS)
        lines.append(f"{name:32}{cells}")
    return lines


def share(reached, everything):
    return f"{reached}/{everything} {100 * reached / everything:5.1f} %" if everything else "-"


def export(build):
    """llvm-cov's numbers of each file, for the programs and the libraries that they load."""
    merged = build / "profiles" / "all.profdata"
    profiles = sorted((build / "profiles").glob("*.profraw"))
    subprocess.run(["llvm-profdata-14", "merge", "-sparse", *profiles, "-o", merged], check=True)
    programs = [build / "bin" / "tarvelon_fuzz", build / "bin" / "tarvelon_fuzz_load"]
    libraries = [each for each in sorted((build / "lib").glob("*.so*")) if not each.is_symlink()]
    objects = [f"-object={each}" for each in (programs + libraries)[1:]]
    command = ["llvm-cov-14", "export", "-summary-only", f"-instr-profile={merged}", programs[0], *objects]
    result = subprocess.run(command, check=True, capture_output=True, text=True)
    return json.loads(result.stdout)["data"][0]["files"]


def main(root, build):
    for line in table(sums(export(build), root)):
        print(line)
    print("The Python host (python/host) is not in the fuzzers: the tests in tests/python are its own.")


if __name__ == "__main__":
    main(Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve())
