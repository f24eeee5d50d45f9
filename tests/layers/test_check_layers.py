"""The layer check itself: a small made-up tree passes, and each kind of look upwards is found."""

import subprocess
import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).parent))
import check_layers

# One file of every layer, each with all it may include.
GOOD = {
    "boundary/ruvo/Class.h": ["<string>", "<boost/shared_ptr.hpp>", '"boundary/hx/Array.h"'],
    "boundary/hx/Array.h": ["<cstddef>"],
    "binding/Record.h": ['"boundary/ruvo/Class.h"'],
    "binding/Record.cpp": ['"binding/Record.h"', '"boundary/hx/Array.h"'],
    "arplatform/common/Rows.h": ['"boundary/ruvo/Class.h"', '"arplatform/variant/Rows.h"'],
    "arplatform/variant/Rows.h": ["<array>"],
    "arplatform/common/Package.cpp": [
        '"arplatform/common/Rows.h"',
        '"binding/Record.h"',
        '"module/Wrapper.h"',
    ],
    "module/Wrapper.h": ['"boundary/ruvo/Class.h"', '"collections/List.h"', '"factory/Factory.h"'],
    "collections/List.h": ["<boost/multi_index_container.hpp>", '"binding/Record.h"', '"module/Wrapper.h"'],
    "factory/Factory.h": ['"arplatform/common/Rows.h"'],
    "foundation/Rows.h": ['"boundary/ruvo/Class.h"', '"types/Rows.h"'],
    "foundation/Publish.cpp": ['"foundation/Rows.h"', '"binding/Record.h"'],
    "types/Rows.h": ['"boundary/hx/Array.h"'],
    "platform/hx/Array.cpp": ['"boundary/hx/Array.h"', "<dlfcn.h>"],
    "platform/ruvo/Tree.h": ['"platform/hx/Pool.h"'],
    "platform/hx/Pool.h": ["<memory>"],
    "platform/k7q/Model.h": ['"platform/ruvo/Tree.h"', '"platform/hx/Pool.h"', '"binding/Record.h"'],
    "platform/tarvelon/Engine.cpp": [
        '"platform/k7q/Model.h"',
        '"arplatform/common/Rows.h"',
        '"foundation/Rows.h"',
        '"types/Rows.h"',
    ],
    "python/host/Host.cpp": ['"platform/ruvo/Tree.h"', "<Python.h>"],
    "tests/module/FrameTest.cpp": ['"module/Wrapper.h"', "<gtest/gtest.h>"],
    "build/release/Generated.h": ['"module/Wrapper.h"'],
}

# A file, an include that it may not have, and a word that the complaint must hold.
VIOLATIONS = [
    ("boundary/ruvo/Class.h", '"binding/Record.h"', "binding/Record.h"),
    ("boundary/ruvo/Class.h", '"platform/hx/Pool.h"', "platform/hx/Pool.h"),
    ("boundary/ruvo/Class.h", '"arplatform/common/Rows.h"', "arplatform/common/Rows.h"),
    ("boundary/ruvo/Class.h", "<Python.h>", "Python.h"),
    ("boundary/ruvo/Class.h", "<platform/hx/Pool.h>", "platform/hx/Pool.h"),
    ("binding/Record.h", '"module/Wrapper.h"', "module/Wrapper.h"),
    ("binding/Record.cpp", '"platform/ruvo/Tree.h"', "platform/ruvo/Tree.h"),
    ("binding/Record.cpp", "<boost/shared_ptr.hpp>", "without Boost"),
    ("arplatform/common/Rows.h", '"binding/Record.h"', "binding/Record.h"),
    ("arplatform/common/Rows.h", '"foundation/Rows.h"', "foundation/Rows.h"),
    ("arplatform/common/Package.cpp", '"platform/tarvelon/Engine.h"', "platform/tarvelon/Engine.h"),
    ("arplatform/common/Package.cpp", '"foundation/Rows.h"', "foundation/Rows.h"),
    ("module/Wrapper.h", '"platform/ruvo/Tree.h"', "platform/ruvo/Tree.h"),
    ("module/Wrapper.h", '"types/Rows.h"', "types/Rows.h"),
    ("collections/List.h", '"platform/k7q/Model.h"', "platform/k7q/Model.h"),
    ("factory/Factory.h", '"foundation/Rows.h"', "foundation/Rows.h"),
    ("foundation/Publish.cpp", '"arplatform/common/Rows.h"', "arplatform/common/Rows.h"),
    ("foundation/Publish.cpp", '"platform/ruvo/Tree.h"', "platform/ruvo/Tree.h"),
    ("types/Rows.h", '"module/Wrapper.h"', "module/Wrapper.h"),
    ("platform/hx/Pool.h", '"platform/ruvo/Tree.h"', "platform/ruvo/Tree.h"),
    ("platform/ruvo/Tree.h", '"platform/k7q/Model.h"', "platform/k7q/Model.h"),
    ("platform/k7q/Model.h", '"platform/tarvelon/Engine.h"', "platform/tarvelon/Engine.h"),
    ("platform/k7q/Model.h", '"arplatform/common/Rows.h"', "arplatform/common/Rows.h"),
    ("platform/tarvelon/Engine.cpp", '"arplatform/common/Package.cpp"', "arplatform/common/Package.cpp"),
    ("platform/tarvelon/Engine.cpp", '"module/Wrapper.h"', "module/Wrapper.h"),
    ("platform/tarvelon/Engine.cpp", '"collections/List.h"', "collections/List.h"),
    ("platform/tarvelon/Engine.cpp", '"factory/Factory.h"', "factory/Factory.h"),
    ("platform/tarvelon/Engine.cpp", '"Engine.h"', "is no file"),
    ("platform/tarvelon/Engine.cpp", '"platform/../module/Wrapper.h"', "without .."),
    ("platform/tarvelon/Engine.cpp", "HEADER_NAME", "macro"),
]


def write(root, tree):
    for name, includes in tree.items():
        path = root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("#pragma once\n" + "".join(f"#include {include}\n" for include in includes))


@pytest.fixture
def tree(tmp_path):
    write(tmp_path, GOOD)
    write(tmp_path, {"platform/tarvelon/Engine.h": []})
    return tmp_path


def test_a_tree_that_looks_down_passes(tree):
    unread = ("python/", "tests/", "build/")
    read = [includes for name, includes in GOOD.items() if not name.startswith(unread)]

    complaints, files, includes = check_layers.check(tree)

    assert complaints == []
    assert files == len(read) + 1  # and Engine.h, which includes nothing
    assert includes == sum(map(len, read))


@pytest.mark.parametrize("file, include, word", VIOLATIONS)
def test_a_look_upwards_is_found(tree, file, include, word):
    line = len((tree / file).read_text().splitlines()) + 1
    with open(tree / file, "a") as out:
        out.write(f"#  include {include}\n")

    complaints, _, _ = check_layers.check(tree)

    assert len(complaints) == 1
    assert complaints[0].startswith(f"{file}:{line}: ")
    assert word in complaints[0]


def test_a_folder_without_a_rule_is_found(tree):
    write(tree, {"helpers/Helper.h": []})

    complaints, _, _ = check_layers.check(tree)

    assert complaints == ["helpers/Helper.h: lies in no layer; its folder must be entered in RULES"]


@pytest.mark.parametrize("change, status", [({}, 0), ({"boundary/Bad.h": ['"binding/Record.h"']}, 1)])
def test_the_exit_status_tells(tree, change, status):
    write(tree, change)

    result = subprocess.run([sys.executable, check_layers.__file__, tree], capture_output=True)

    assert result.returncode == status


def test_an_empty_tree_does_not_pass(tmp_path):
    assert check_layers.main([str(tmp_path)]) == 1
