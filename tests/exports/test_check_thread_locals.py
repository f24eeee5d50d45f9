"""The check of thread-local variables, for libraries made for this test."""

import os
import shutil
import subprocess
import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).parent))
import check_thread_locals

READELF = shutil.which("readelf")
FIXED = '__attribute__((tls_model("initial-exec"))) '


@pytest.fixture
def library(tmp_path):
    def make(declaration, name="library"):
        source = tmp_path / f"{name}.cpp"
        source.write_text(f"{declaration};\nchar* first() {{ return kept; }}\n", encoding="utf-8")
        made = tmp_path / f"{name}.so"
        subprocess.run([os.environ.get("CXX", "g++"), "-shared", "-fPIC", "-o", made, source], check=True)
        return str(made)

    return make


def test_a_fixed_place_is_right(library):
    made = library(f"{FIXED}thread_local char kept[100]")
    assert check_thread_locals.bytes_for_each_thread(READELF, made) == 100
    assert check_thread_locals.main([READELF, made]) == 0


def test_a_library_without_any_is_right(library):
    assert check_thread_locals.main([READELF, library("static char kept[100]")]) == 0


def test_one_that_is_asked_for_at_run_time_is_named(library, capsys):
    made = library("thread_local char kept[100]")
    assert check_thread_locals.main([READELF, made]) == 1
    assert f"{made} asks for a thread_local at run time" in capsys.readouterr().out


def test_all_libraries_together_have_a_limit(library, capsys):
    made = [library(f"{FIXED}thread_local char kept[300]", name) for name in ("one", "two")]
    assert check_thread_locals.main([READELF, made[0]]) == 0
    assert check_thread_locals.main([READELF, *made]) == 1
    assert "keep 600 bytes for each thread, 512 at most" in capsys.readouterr().out
