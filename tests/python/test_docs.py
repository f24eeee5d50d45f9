"""The programs in the documentation run as they are written there."""

import re
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]


PAGES = [each for each in sorted([*(ROOT / "docs").glob("*.md"), ROOT / "README.md"])
         if "```python\n" in each.read_text(encoding="utf-8")]


@pytest.mark.parametrize("page", [str(each.relative_to(ROOT)) for each in PAGES])
def test_the_code_of_a_page_runs_from_top_to_bottom(page):
    text = (ROOT / page).read_text(encoding="utf-8")
    blocks = re.findall(r"^```python\n(.*?)^```", text, re.DOTALL | re.MULTILINE)
    assert blocks

    names = {}
    for block in blocks:
        exec(block, names)
