"""The changes of this checkout, for checks that look only at changes."""

import re
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]


def output_of(*command, cwd=ROOT):
    """The output of a command as lines; empty if the command fails."""
    result = subprocess.run(command, cwd=cwd, capture_output=True, text=True)
    return result.stdout.splitlines() if result.returncode == 0 else []


def base():
    """The commit before the change: where this branch leaves origin/main, else the commit ten commits ago."""
    head = output_of("git", "rev-parse", "HEAD")
    found = output_of("git", "merge-base", "HEAD", "origin/main")
    if not found or found == head:
        found = output_of("git", "rev-list", "--max-count=11", "HEAD")[-1:]
    return found[0] if found else None


def changed_files():
    start = base()
    names = output_of("git", "diff", "--name-only", "--diff-filter=d", start) if start else []
    names += output_of("git", "ls-files", "--others", "--exclude-standard")
    return [ROOT / name for name in names]


def changed_lines(start, *folders):
    """For each file below the folders: the numbers of the lines that were added or changed since `start`."""
    found, file = {}, None
    for line in output_of("git", "diff", "--unified=0", "--diff-filter=d", start, "--", *folders):
        if line.startswith("+++ b/"):
            file = found.setdefault(line.removeprefix("+++ b/"), set())
        elif match := re.match(r"@@ -\S+ \+(\d+)(?:,(\d+))? @@", line):
            first, count = int(match[1]), int(match[2] or 1)
            file.update(range(first, first + count))
    return found
