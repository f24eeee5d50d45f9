"""An installed copy of what was built, and an environment that knows nothing of this tree."""

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
    """The files and links below a folder, by their way from it."""
    return sorted(str(each.relative_to(folder)) for each in folder.rglob("*") if not each.is_dir())


@pytest.fixture(scope="session")
def prefix(tmp_path_factory):
    """The prefix of a whole copy. It is read alone."""
    folder = tmp_path_factory.mktemp("installed") / "a prefix"
    install(folder)
    return folder


@pytest.fixture(scope="session")
def moved(tmp_path_factory):
    """The prefix of a copy that was installed elsewhere and then moved."""
    before = tmp_path_factory.mktemp("before") / "prefix"
    install(before)
    return before.rename(tmp_path_factory.mktemp("after") / "another prefix")


def run_clean(folder, *command, status=0, stdin="", **environment):
    """Runs a program in a folder, as someone would who has never seen this tree; gives what it printed."""
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
    """The same, for what several tests share."""
    return partial(run_clean, tmp_path_factory.mktemp("home"))
