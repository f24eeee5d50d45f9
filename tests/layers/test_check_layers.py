"""The layer check itself: a small tree made for this test passes, and each kind of upward include is
found."""

import subprocess
import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).parent))
import check_layers

# One file of each layer, with everything that it may include.
GOOD = {
    "src/tarvelon/boundary/ruvo/Class.h": ["<string>", "<boost/shared_ptr.hpp>", '"tarvelon/boundary/hx/Array.h"'],
    "src/tarvelon/boundary/hx/Array.h": ["<cstddef>"],
    "src/tarvelon/binding/Record.h": ['"tarvelon/boundary/ruvo/Class.h"'],
    "src/tarvelon/binding/Record.cpp": ['"tarvelon/binding/Record.h"', '"tarvelon/boundary/hx/Array.h"'],
    "src/tarvelon/arplatform/common/Rows.h": ['"tarvelon/boundary/ruvo/Class.h"', '"tarvelon/arplatform/variant/Rows.h"'],
    "src/tarvelon/arplatform/variant/Rows.h": ["<array>"],
    "src/tarvelon/arplatform/common/Package.cpp": [
        '"tarvelon/arplatform/common/Rows.h"',
        '"tarvelon/binding/Record.h"',
        '"tarvelon/module/Wrapper.h"',
    ],
    "src/tarvelon/module/Wrapper.h": ['"tarvelon/boundary/ruvo/Class.h"', '"tarvelon/collections/List.h"', '"tarvelon/factory/Factory.h"'],
    "src/tarvelon/collections/List.h": ["<boost/multi_index_container.hpp>", '"tarvelon/binding/Record.h"', '"tarvelon/module/Wrapper.h"'],
    "src/tarvelon/factory/Factory.h": ['"tarvelon/arplatform/common/Rows.h"'],
    "src/tarvelon/foundation/Rows.h": ['"tarvelon/boundary/ruvo/Class.h"', '"tarvelon/types/Rows.h"'],
    "src/tarvelon/foundation/Publish.cpp": ['"tarvelon/foundation/Rows.h"', '"tarvelon/binding/Record.h"'],
    "src/tarvelon/types/Rows.h": ['"tarvelon/boundary/hx/Array.h"'],
    "src/tarvelon/platform/hx/Array.cpp": ['"tarvelon/boundary/hx/Array.h"', "<dlfcn.h>"],
    "src/tarvelon/platform/ruvo/Tree.h": ['"tarvelon/platform/hx/Pool.h"'],
    "src/tarvelon/platform/hx/Pool.h": ["<memory>"],
    "src/tarvelon/platform/k7q/handles/Model.h": ['"tarvelon/platform/ruvo/Tree.h"', '"tarvelon/platform/hx/Pool.h"', '"tarvelon/binding/Record.h"'],
    "src/tarvelon/platform/model/api/Open.h": ['"tarvelon/boundary/hx/Array.h"', '"tarvelon/types/Rows.h"'],
    "src/tarvelon/platform/model/api/Open.cpp": ['"tarvelon/platform/model/copy/Copy.h"', '"tarvelon/platform/model/api/Open.h"'],
    "src/tarvelon/platform/model/words/Word.h": ['"tarvelon/platform/model/api/Open.h"'],
    "src/tarvelon/platform/model/copy/Copy.h": ['"tarvelon/platform/model/words/Word.h"'],
    "src/tarvelon/platform/model/validation/Rules.h": ['"tarvelon/platform/model/words/Word.h"'],
    "src/tarvelon/platform/files/Files.h": ['"tarvelon/platform/model/api/Open.h"'],
    "src/tarvelon/platform/files/shared/Ids.h": ['"tarvelon/platform/files/Files.h"', "<fcntl.h>"],
    "src/tarvelon/platform/files/xmi/Reader.h": ['"tarvelon/platform/files/shared/Ids.h"', '"tarvelon/platform/model/copy/Copy.h"'],
    "src/tarvelon/platform/files/ecore/Ecore.h": ['"tarvelon/platform/files/shared/Ids.h"'],
    "src/tarvelon/platform/model/changes/Engine.cpp": [
        '"tarvelon/platform/k7q/handles/Model.h"',
        '"tarvelon/arplatform/common/Rows.h"',
        '"tarvelon/foundation/Rows.h"',
        '"tarvelon/types/Rows.h"',
    ],
    "python/host/Host.cpp": ['"tarvelon/platform/ruvo/Tree.h"', "<Python.h>"],
    "tests/module/FrameTest.cpp": ['"tarvelon/module/Wrapper.h"', "<gtest/gtest.h>"],
    "build/release/Generated.h": ['"tarvelon/module/Wrapper.h"'],
}

# A file, an include that it may not have, and a word of the expected complaint.
VIOLATIONS = [
    ("src/tarvelon/boundary/ruvo/Class.h", '"tarvelon/binding/Record.h"', "binding/Record.h"),
    ("src/tarvelon/boundary/ruvo/Class.h", '"tarvelon/platform/hx/Pool.h"', "platform/hx/Pool.h"),
    ("src/tarvelon/boundary/ruvo/Class.h", '"tarvelon/arplatform/common/Rows.h"', "arplatform/common/Rows.h"),
    ("src/tarvelon/boundary/ruvo/Class.h", "<Python.h>", "Python.h"),
    ("src/tarvelon/boundary/ruvo/Class.h", "<tarvelon/platform/hx/Pool.h>", "platform/hx/Pool.h"),
    ("src/tarvelon/binding/Record.h", '"tarvelon/module/Wrapper.h"', "module/Wrapper.h"),
    ("src/tarvelon/binding/Record.cpp", '"tarvelon/platform/ruvo/Tree.h"', "platform/ruvo/Tree.h"),
    ("src/tarvelon/binding/Record.cpp", "<boost/shared_ptr.hpp>", "without Boost"),
    ("src/tarvelon/arplatform/common/Rows.h", '"tarvelon/binding/Record.h"', "binding/Record.h"),
    ("src/tarvelon/arplatform/common/Rows.h", '"tarvelon/foundation/Rows.h"', "foundation/Rows.h"),
    ("src/tarvelon/arplatform/common/Package.cpp", '"tarvelon/platform/model/changes/Engine.h"', "platform/model/changes/Engine.h"),
    ("src/tarvelon/arplatform/common/Package.cpp", '"tarvelon/foundation/Rows.h"', "foundation/Rows.h"),
    ("src/tarvelon/module/Wrapper.h", '"tarvelon/platform/ruvo/Tree.h"', "platform/ruvo/Tree.h"),
    ("src/tarvelon/module/Wrapper.h", '"tarvelon/types/Rows.h"', "types/Rows.h"),
    ("src/tarvelon/collections/List.h", '"tarvelon/platform/k7q/handles/Model.h"', "platform/k7q/handles/Model.h"),
    ("src/tarvelon/factory/Factory.h", '"tarvelon/foundation/Rows.h"', "foundation/Rows.h"),
    ("src/tarvelon/foundation/Publish.cpp", '"tarvelon/arplatform/common/Rows.h"', "arplatform/common/Rows.h"),
    ("src/tarvelon/foundation/Publish.cpp", '"tarvelon/platform/ruvo/Tree.h"', "platform/ruvo/Tree.h"),
    ("src/tarvelon/types/Rows.h", '"tarvelon/module/Wrapper.h"', "module/Wrapper.h"),
    ("src/tarvelon/platform/hx/Pool.h", '"tarvelon/platform/ruvo/Tree.h"', "platform/ruvo/Tree.h"),
    ("src/tarvelon/platform/ruvo/Tree.h", '"tarvelon/platform/k7q/handles/Model.h"', "platform/k7q/handles/Model.h"),
    ("src/tarvelon/platform/k7q/handles/Model.h", '"tarvelon/platform/model/changes/Engine.h"', "platform/model/changes/Engine.h"),
    ("src/tarvelon/platform/k7q/handles/Model.h", '"tarvelon/arplatform/common/Rows.h"', "arplatform/common/Rows.h"),
    ("src/tarvelon/platform/model/words/Word.h", '"tarvelon/platform/model/changes/Engine.h"', "changes/Engine.h"),
    ("src/tarvelon/platform/model/validation/Rules.h", '"tarvelon/platform/model/copy/Copy.h"', "copy/Copy.h"),
    ("src/tarvelon/platform/model/api/Open.h", '"tarvelon/platform/model/words/Word.h"', "words/Word.h"),
    ("src/tarvelon/platform/files/Files.h", '"tarvelon/platform/files/shared/Ids.h"', "shared/Ids.h"),
    ("src/tarvelon/platform/files/shared/Ids.h", '"tarvelon/platform/files/xmi/Reader.h"', "xmi/Reader.h"),
    ("src/tarvelon/platform/files/ecore/Ecore.h", '"tarvelon/platform/files/xmi/Reader.h"', "xmi/Reader.h"),
    ("src/tarvelon/platform/model/changes/Engine.cpp", '"tarvelon/arplatform/common/Package.cpp"', "arplatform/common/Package.cpp"),
    ("src/tarvelon/platform/model/changes/Engine.cpp", '"tarvelon/module/Wrapper.h"', "module/Wrapper.h"),
    ("src/tarvelon/platform/model/changes/Engine.cpp", '"tarvelon/collections/List.h"', "collections/List.h"),
    ("src/tarvelon/platform/model/changes/Engine.cpp", '"tarvelon/factory/Factory.h"', "factory/Factory.h"),
    ("src/tarvelon/platform/model/changes/Engine.cpp", '"Engine.h"', "is no file"),
    ("src/tarvelon/platform/model/changes/Engine.cpp", '"tarvelon/platform/../module/Wrapper.h"', "without .."),
    ("src/tarvelon/platform/model/changes/Engine.cpp", "HEADER_NAME", "macro"),
]


def write(root, tree):
    for name, includes in tree.items():
        path = root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("#pragma once\n" + "".join(f"#include {include}\n" for include in includes))


@pytest.fixture
def tree(tmp_path):
    write(tmp_path, GOOD)
    write(tmp_path, {"src/tarvelon/platform/model/changes/Engine.h": []})
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

    assert complaints == ["helpers/Helper.h: lies in no layer; its folder must be entered in RULES or PLATFORM"]


def test_a_room_of_the_host_does_not_look_up(tree):
    write(tree, {"python/host/objects/Objects.h": ['"python/host/interpreter/Errors.h"', '"python/host/types/Types.h"']})
    write(tree, {"python/host/attic/Old.h": []})

    complaints, _, _ = check_layers.check(tree)

    assert [each.split(": ")[:2] for each in complaints] == [
        ["python/host/attic/Old.h", "lies in no room; its folder must be entered in HOST_ROOMS"],
        ["python/host/objects/Objects.h", "includes python/host/types/Types.h"]]


@pytest.mark.parametrize("change, status", [({}, 0), ({"src/tarvelon/boundary/Bad.h": ['"tarvelon/binding/Record.h"']}, 1)])
def test_the_exit_status_tells(tree, change, status):
    write(tree, change)

    result = subprocess.run([sys.executable, check_layers.__file__, tree], capture_output=True)

    assert result.returncode == status


def test_an_empty_tree_does_not_pass(tmp_path):
    assert check_layers.main([str(tmp_path)]) == 1
