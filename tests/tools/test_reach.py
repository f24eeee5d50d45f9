"""Which tests a change can reach."""

import re
import sys
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
import reach  # noqa: E402

# The folders of tests/ that hold data or programs of other tests, and no tests of their own.
WITHOUT_TESTS = {"fuzz", "golden", "preload", "support", "__pycache__"}
AREAS = {each.name for each in (ROOT / "tests").iterdir() if each.is_dir()} - WITHOUT_TESTS | {"examples"}


@pytest.mark.parametrize("names, expected", [
    (["docs/model.md"], ["docs"]),
    (["tests/hx/ArrayTest.cpp", "tests/ruvo/ClassTest.cpp"], ["hx", "ruvo"]),
    (["tests/world/State.cpp"], ["threads", "world"]),
    (["src/tarvelon/platform/model/copy/Json.cpp"], ["compatibility", "copy", "docs", "examples", "exports", "layers", "memory", "python", "threads", "world"]),
    (["CHANGELOG.md"], []),
    ([], []),
])
def test_the_longest_folder_decides(names, expected):
    assert reach.labels(names) == expected


@pytest.mark.parametrize("name", ["src/tarvelon/boundary/k7q/Object.h", "src/tarvelon/platform/model/changes/Links.cpp", "CMakeLists.txt",
                                  "tests/support/CMakeLists.txt", "tests/CMakeLists.txt", "tarvelon", "a new file"])
def test_a_file_without_a_rule_reaches_every_test(name):
    assert reach.labels(["docs/model.md", name]) is None


def test_every_label_of_a_rule_is_an_area_of_tests():
    named = {label for labels in reach.REACH.values() if labels for label in labels}

    assert named - AREAS == set()


def test_every_folder_of_a_rule_exists():
    assert [name for name in reach.REACH if not (ROOT / name).exists()] == []


def test_the_rows_print_as_a_regular_expression(monkeypatch, capsys):
    for names, text, matched in [(["docs/a.md", "tests/hx/A.cpp"], "^(docs|hx)$", "hx"), (["x"], ".", "native"), ([], "^$", None)]:
        monkeypatch.setattr(reach, "changed_files", lambda names=names: [reach.ROOT / name for name in names])
        reach.main()
        printed = capsys.readouterr().out.strip()
        assert printed == text
        assert bool(re.search(printed, matched or "native")) == (matched is not None)
