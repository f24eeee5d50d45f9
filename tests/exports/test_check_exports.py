"""The check of exports, for a library made for this test."""

import os
import shutil
import subprocess
import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).parent))
import check_exports

SOURCE = """
#define SHOWN __attribute__((visibility("default")))
extern "C" SHOWN void start() {}
namespace kind { struct SHOWN Kind { bool isValid() const; }; bool Kind::isValid() const { return true; } }
void hidden() {}
"""
NAMES = ["kind::Kind::isValid() const", "start"]


@pytest.fixture(scope="module")
def library(tmp_path_factory):
    folder = tmp_path_factory.mktemp("exports")
    (folder / "lib.cpp").write_text(SOURCE)
    command = [os.environ.get("CXX", "g++"), "-shared", "-fPIC", "-fvisibility=hidden", "-o", folder / "lib.so", folder / "lib.cpp"]
    subprocess.run(command, check=True)
    return folder / "lib.so"


def status(library, tmp_path, names):
    kept = tmp_path / "kept.txt"
    kept.write_text("".join(name + "\n" for name in names))
    return check_exports.main([shutil.which("nm"), str(library), str(kept)])


def test_the_shown_names_are_found_and_the_hidden_one_is_not(library):
    assert check_exports.exported("nm", library) == NAMES


def test_the_same_list_passes(library, tmp_path):
    assert status(library, tmp_path, NAMES) == 0


def test_a_missing_name_is_told(library, tmp_path, capsys):
    assert status(library, tmp_path, NAMES + ["stop"]) == 1
    assert "missing:    stop" in capsys.readouterr().out


def test_an_unexpected_name_is_told(library, tmp_path, capsys):
    assert status(library, tmp_path, NAMES[:1]) == 1
    assert "unexpected: start" in capsys.readouterr().out


@pytest.mark.parametrize("names", [NAMES[::-1], NAMES + NAMES[1:]])
def test_a_list_out_of_order_is_told(library, tmp_path, capsys, names):
    assert status(library, tmp_path, names) == 1
    assert "not sorted" in capsys.readouterr().out
