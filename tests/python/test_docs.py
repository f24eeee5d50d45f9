"""The programs in the documentation run as they are written there."""

import difflib
import re
import shutil
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]


PAGES = [each for each in sorted([*(ROOT / "docs").glob("*.md"), ROOT / "README.md"])
         if "```python\n" in each.read_text(encoding="utf-8")]


@pytest.fixture(autouse=True)
def folder(tmp_path, monkeypatch):
    """Where the programs run: a folder in which they may change the files of the examples."""
    (tmp_path / "examples").mkdir()
    for each in (ROOT / "examples").glob("*.arxml"):
        shutil.copy(each, tmp_path / "examples")
    monkeypatch.chdir(tmp_path)
    return tmp_path


def run_the_code_of(page):
    text = (ROOT / page).read_text(encoding="utf-8")
    blocks = re.findall(r"^```python\n(.*?)^```", text, re.DOTALL | re.MULTILINE)
    assert blocks

    names = {}
    for block in blocks:
        exec(block, names)


@pytest.mark.parametrize("page", [str(each.relative_to(ROOT)) for each in PAGES])
def test_the_code_of_a_page_runs_from_top_to_bottom(page):
    run_the_code_of(page)


def test_the_first_example_changes_the_lines_that_the_readme_shows(folder):
    readme = (ROOT / "README.md").read_text(encoding="utf-8")
    shown = re.search(r"^```diff\n(.*?)^```", readme, re.DOTALL | re.MULTILINE)
    run_the_code_of("README.md")

    texts = [(each / "examples" / "speed_sensor.arxml").read_text(encoding="utf-8") for each in (ROOT, folder)]
    changes = list(difflib.unified_diff(*(each.splitlines(keepends=True) for each in texts)))
    assert "".join(changes[2:]) == shown[1]
