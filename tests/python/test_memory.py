"""Memory runs out at any point of a script: a MemoryError is raised, the model is unchanged, and the same
action then succeeds. Each point is tested in its own process.

TARVELON_EVERY_ALLOCATION=1 in the environment tests every point instead of a selection.
"""

import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).parent))
import failing_memory  # noqa: E402

_library = os.environ.get("TARVELON_FAILING_MALLOC", "")
pytestmark = pytest.mark.uninstrumented("a sanitizer has a malloc of its own")


def run(scenario, stride, **environment):
    """The wrong outcomes, and the number of points."""
    if os.environ.get("TARVELON_EVERY_ALLOCATION"):
        stride = 1
    # All modules are compiled again, so that the number of allocations of an import is always the same.
    with tempfile.TemporaryDirectory() as nowhere:
        done = subprocess.run(
            [sys.executable, "-B", "-X", f"pycache_prefix={nowhere}", failing_memory.__file__, scenario, str(stride)],
            env={**os.environ, "LD_PRELOAD": _library, **environment}, capture_output=True, text=True,
        )
    assert done.returncode == 0, done.stderr
    *faults, last = done.stdout.splitlines()
    return faults, int(re.fullmatch(r"(\d+) points", last)[1])


@pytest.mark.parametrize("scenario", failing_memory.ACTIONS)
def test_an_allocation_that_fails_changes_nothing_and_can_be_tried_again(scenario):
    faults, points = run(scenario, failing_memory.ACTIONS[scenario][2])
    assert faults == []
    assert (points == 0) == (scenario in ("undo", "redo")), points


@pytest.mark.parametrize("scenario", failing_memory.ACTIONS)
def test_an_allocation_of_python_that_fails_changes_nothing(scenario):
    faults, points = run(scenario, 7 * failing_memory.ACTIONS[scenario][2], PYTHONMALLOC="malloc")
    assert faults == []
    assert points > 0


@pytest.mark.parametrize("pool", [{}, {"PYTHONMALLOC": "malloc"}], ids=["native", "python"])
def test_a_listener_that_there_is_no_memory_to_tell_is_reported(pool):
    faults, points = run("listeners", 1, **pool)
    assert faults == []
    assert points > 0


def test_an_import_without_memory_can_be_tried_again():
    faults, points = run("import", 37)
    assert faults == []
    assert points > 30


def test_packages_that_were_touched_without_memory_are_whole_when_they_are_touched_again():
    faults, points = run("packages", 41)
    assert faults == []
    assert points > 30
