"""An installation of what was built, and an environment without any trace of this tree."""

import os
import re
import subprocess
from functools import partial
from pathlib import Path

import pytest

SOURCE = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ["TARVELON_BUILD"])
CMAKE = os.environ["TARVELON_CMAKE"]
CXX = os.environ["CXX"]
PYTHON = "/usr/bin/python3"
VERSION = re.search(r"project\(tarvelon VERSION (\S+)", (SOURCE / "CMakeLists.txt").read_text())[1]


def install(prefix, *arguments, **environment):
    command = [CMAKE, "--install", BUILD, "--prefix", prefix, *arguments]
    subprocess.run(command, check=True, capture_output=True, env={**os.environ, **environment})


def files_below(folder):
    """The files and links below a folder, by their relative paths."""
    return sorted(str(each.relative_to(folder)) for each in folder.rglob("*") if not each.is_dir())


@pytest.fixture(scope="session")
def prefix(tmp_path_factory):
    """The prefix of a complete installation. Tests only read it."""
    folder = tmp_path_factory.mktemp("installed") / "a prefix"
    install(folder)
    return folder


@pytest.fixture(scope="session")
def moved(tmp_path_factory):
    """The prefix of an installation that was moved after it was made."""
    before = tmp_path_factory.mktemp("before") / "prefix"
    install(before)
    return before.rename(tmp_path_factory.mktemp("after") / "another prefix")


def run_clean(folder, *command, status=0, stdin="", **environment):
    """Runs a program in a folder, in the environment of a user who does not have this tree. Returns its
    output."""
    clean = {"PATH": "/usr/bin:/bin", "HOME": str(folder), "LANG": "C.UTF-8", **environment}
    command = [str(each) for each in command]
    done = subprocess.run(command, cwd=folder, env=clean, input=stdin, capture_output=True, text=True)
    assert done.returncode == status, done.stdout + done.stderr
    return done.stdout if status == 0 else done.stderr


@pytest.fixture
def call(tmp_path):
    return partial(run_clean, tmp_path)


@pytest.fixture(scope="session")
def clean_call(tmp_path_factory):
    """The same, for use by several tests."""
    return partial(run_clean, tmp_path_factory.mktemp("home"))
