"""The results of mypy with the stubs: for correct programs, for wrong programs, and for the stubs
themselves."""

import re
import subprocess
import sys

import pytest

from conftest import BUILT, EXAMPLES, HAND_WRITTEN, PROGRAMS, mypy

REFUSED = PROGRAMS / "refused.py"


def line_of(code):
    lines = REFUSED.read_text(encoding="utf-8").splitlines()
    return next(number for number, line in enumerate(lines, 1) if line.startswith(code))


def test_a_right_program_is_taken(verdicts):
    assert verdicts[PROGRAMS / "accepted.py"] == []


def test_a_right_program_runs():
    subprocess.run([sys.executable, PROGRAMS / "accepted.py"], check=True, timeout=120)


def test_what_is_wrong_is_refused_line_by_line(verdicts):
    lines = enumerate(REFUSED.read_text(encoding="utf-8").splitlines(), 1)
    markers = {number: re.search(r"# refused: \[(.*)\]", line) for number, line in lines}
    expected = {number: set(each[1].split(", ")) for number, each in markers.items() if each}
    refused = {}
    for error in verdicts[REFUSED]:
        refused.setdefault(error.line, set()).add(error.code)
    assert refused == expected and len(expected) > 40


@pytest.mark.parametrize("code, text", [
    ("runnable.symbl  #", '"Runnable" has no attribute "symbl"; maybe "symbol"?'),
    ("runnable.symbol = 3", 'Incompatible types in assignment (expression has type "int", variable has type "str")'),
    ("package.Owner =", 'Property "Owner" defined in "Element" is read-only'),
    ("behavior.Runnable(model, 1", 'No overload variant of "Runnable" matches argument types "Model", "int", "str"'),
])
def test_the_texts_name_what_is_meant(verdicts, code, text):
    assert [each.text for each in verdicts[REFUSED] if each.line == line_of(code)] == [text]


@pytest.mark.parametrize("example", EXAMPLES, ids=lambda each: each.name)
def test_an_example_is_taken(verdicts, example):
    assert verdicts[example] == []


@pytest.mark.parametrize("module", HAND_WRITTEN, ids=lambda each: f"{each.parent.name}.{each.stem}")
def test_a_hand_written_module_is_taken(verdicts, module):
    assert verdicts[module] == []


def test_the_stubs_agree_with_themselves(tmp_path):
    # mypy does not report errors in installed stubs, so they are copied to a folder of sources.
    names = ["K7Q", "Tarvelon", "_tarvelon_host"]
    for name in names:
        (tmp_path / name).symlink_to(BUILT / f"{name}-stubs")
    asked = [argument for name in names for argument in ("-p", name)]
    assert mypy("--cache-dir=mypy_cache_stubs", *asked, MYPYPATH=str(tmp_path), PYTHONPATH="") == []
