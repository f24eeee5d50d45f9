import os
import re
import shutil
import subprocess
import sys
from pathlib import Path
from typing import NamedTuple

import pytest

import K7Q

ROOT = Path(__file__).resolve().parents[2]
BUILT = Path(K7Q.__file__).parents[1]  # K7Q may be a link; the stubs are in the link's folder
PROGRAMS = ROOT / "tests" / "stubs" / "programs"
EXAMPLES = sorted((ROOT / "examples").glob("*.py"))
HAND_WRITTEN = sorted(each for name in ("K7Q", "Tarvelon") for each in (ROOT / "python" / name).glob("*.py"))


class Error(NamedTuple):
    file: str
    line: int
    code: str
    text: str


def mypy(*arguments, **environment):
    """Runs mypy; returns its errors."""
    command = [sys.executable, "-m", "mypy", f"--config-file={ROOT / 'tests' / 'stubs' / 'mypy.ini'}",
               "--no-error-summary", *map(str, arguments)]
    done = subprocess.run(command, capture_output=True, text=True, timeout=800, env={**os.environ, **environment})
    assert done.stderr == "" and done.returncode in (0, 1), done.stdout + done.stderr
    lines = (re.match(r"(.*?):(\d+): error: (.*?)(?:  \[([\w-]+)\])?$", each) for each in done.stdout.splitlines())
    errors = [Error(Path(each[1]).name, int(each[2]), each[4], each[3]) for each in lines if each]
    assert bool(errors) == (done.returncode == 1), done.stdout
    return errors


@pytest.fixture(scope="session")
def verdicts(tmp_path_factory):
    """Checks programs, examples and hand-written modules with mypy in one run: the errors by the name of a
    copy."""
    folder = tmp_path_factory.mktemp("sources")
    copies = {each: folder / each.name for each in [*EXAMPLES, *PROGRAMS.glob("*.py")]}
    # Under their own names, these would be mistaken for Python's modules or for the described packages.
    copies[ROOT / "examples" / "collections.py"] = folder / "example_collections.py"
    copies |= {each: folder / f"{each.parent.name}_{each.name}" for each in HAND_WRITTEN}
    for source, copy in copies.items():
        shutil.copy(source, copy)
    errors = mypy(*copies.values())
    return {source: [each for each in errors if each.file == copy.name] for source, copy in copies.items()}
