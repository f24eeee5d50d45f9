"""The picture of the rooms, drawn from a small made-up tree, and the one in docs/."""

import sys
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
import house  # noqa: E402

TREE = {
    "src/tarvelon/boundary/hx/Array.h": [],
    "src/tarvelon/platform/model/words/Word.h": ["tarvelon/boundary/hx/Array.h"],
    "src/tarvelon/platform/model/objects/Instance.h": ["tarvelon/platform/model/words/Word.h"],
    "src/tarvelon/platform/model/changes/Links.cpp": ["tarvelon/platform/model/words/Word.h", "tarvelon/platform/model/objects/Instance.h"],
    "python/host/engine/Search.cpp": ["tarvelon/platform/model/changes/Links.h"],
}


@pytest.fixture
def tree(tmp_path):
    for name, includes in TREE.items():
        (tmp_path / name).parent.mkdir(parents=True, exist_ok=True)
        (tmp_path / name).write_text("".join(f'#include "{each}"\n' for each in includes))
    return tmp_path


def test_an_arrow_that_follows_from_others_is_left_out(tree):
    assert house.reduced(house.rooms(tree)) == {
        "boundary": [], "model words": [], "model objects": ["model words"], "model changes": ["model objects"],
        "host engine": ["model changes"]}


def test_a_room_stands_above_all_that_it_includes(tree):
    assert house.levels(house.reduced(house.rooms(tree))) == [
        ["boundary"], ["model words"], ["model objects"], ["model changes"], ["host engine"]]


def test_rooms_that_include_each_other_are_refused(tree):
    (tree / "src/tarvelon/platform/model/words/Word.h").write_text('#include "tarvelon/platform/model/changes/Links.h"\n')

    with pytest.raises(SystemExit, match="^house: rooms include each other: .*model words -> model changes"):
        house.reduced(house.rooms(tree))


def test_the_picture_in_docs_is_the_one_of_the_sources():
    house.main(["--check"])
