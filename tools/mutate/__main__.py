"""Plants faults in the code, one at a time, and prints the faults that no test detects.

usage: tools/mutate [--count N] [--seed N] [--base REV | --all] [--host] [--keep FILE] [FILE...]

Without files, it chooses faults in the lines below src/tarvelon that differ from origin/main or from the commit ten
commits ago. With --all, or if no line differs, it chooses faults in all lines. It works in a copy of the tree
(build/mutate) and changes nothing in this checkout. First it runs every test once without a fault; gcov records which
lines the test reaches. Then it builds one fault at a time, and runs the tests that reach its line, fast tests first,
until one fails.

A fault survives if all tests pass. Then a test is missing, or the fault does not change the behaviour of the program.
Enter a fault of the second kind in tools/mutate/reasons.txt, with the reason; the tool does not choose it again. The
exit status says whether the tool could do its work, not how many faults have survived.
"""

import argparse
import random
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

from changes import ROOT, base, changed_lines  # noqa: E402
from operators import mutants_of  # noqa: E402
from tree import Tree  # noqa: E402

FOLDERS = [f"src/tarvelon/{name}" for name in ("binding", "collections", "factory", "platform")]
REASONS = Path(__file__).with_name("reasons.txt")
SEPARATOR = " => "


def known_reasons():
    """The entries of reasons.txt, faults that no test can find: (file, text of the line, its replacement)."""
    found = set()
    for line in REASONS.read_text().splitlines() if REASONS.is_file() else []:
        if SEPARATOR in line and not line.startswith("#"):
            file, _, change = line.partition(": ")
            before, _, after = change.partition(SEPARATOR)
            found.add((file, before.strip(), after.partition(" : ")[0].strip()))
    return found


def candidates(arguments):
    """All possible faults in the chosen files and lines."""
    lines = None
    if arguments.files:
        files = [file.resolve().relative_to(ROOT).as_posix() for file in arguments.files]
    else:
        lines = {} if arguments.all else changed_lines(arguments.base or base(), *FOLDERS)
        files = [name for name in lines if name.endswith(".cpp")]
        if not files:
            lines = None
            files = [each.relative_to(ROOT).as_posix() for folder in FOLDERS for each in sorted((ROOT / folder).rglob("*.cpp"))]
    known = known_reasons()
    for file in files:
        for mutant in mutants_of(file, (ROOT / file).read_text(), lines and lines[file]):
            if (file, mutant.before.strip(), " ".join(mutant.after.split())) not in known:
                yield mutant


def report(results):
    by_outcome = {}
    for mutant, outcome, _ in results:
        by_outcome.setdefault(outcome, []).append(mutant)
    for outcome in ("survived", "no test reaches it"):
        for mutant in by_outcome.get(outcome, []):
            print(f"\n{outcome}: {mutant}")
    counts = ", ".join(f"{len(found)} {outcome}" for outcome, found in sorted(by_outcome.items()))
    print(f"\n{len(results)} faults: {counts}")


def main():
    parser = argparse.ArgumentParser(prog="tools/mutate", usage=__doc__.split("\n\n")[1].removeprefix("usage: "))
    parser.add_argument("--count", type=int, default=20)
    parser.add_argument("--seed", type=int, default=None)
    parser.add_argument("--base")
    parser.add_argument("--all", action="store_true")
    parser.add_argument("--host", action="store_true", help="run the tests of the Python host as well")
    parser.add_argument("--keep", type=Path, help="a file to which each result is appended as it comes")
    parser.add_argument("files", nargs="*", type=Path)
    arguments = parser.parse_args()

    seed = arguments.seed if arguments.seed is not None else random.randrange(1 << 32)
    found = list(candidates(arguments))
    chosen = random.Random(seed).sample(found, min(arguments.count, len(found)))
    print(f"{len(chosen)} of {len(found)} faults, --seed {seed}", flush=True)
    if not chosen:
        sys.exit("there is nothing in which a fault can be planted")

    tree = Tree(ROOT, arguments.host)
    tree.prepare({mutant.file for mutant in chosen})
    results = []
    for mutant in sorted(chosen):
        started = time.monotonic()
        outcome, test = tree.try_out(mutant)
        results.append((mutant, outcome, test))
        line = f"{outcome:>18}  {mutant.file}:{mutant.line} {mutant.kind} {test} {time.monotonic() - started:.0f} s"
        print(line, flush=True)
        if arguments.keep:
            with arguments.keep.open("a") as out:
                out.write(f"{line}\n{mutant}\n")
    report(results)
    return 0 if any(outcome in ("killed", "survived") for _, outcome, _ in results) else 1


if __name__ == "__main__":
    sys.exit(main())
