"""Runs one file of pytest tests for ctest: run_pytest.py FILE.

pytest is content with tests that were skipped, and ctest does not see them. Here the exit status says so, and the
summary says why: a green run has run everything.
"""

import os
import sys

# What ctest is told by SKIP_RETURN_CODE.
SKIPPED = 77

try:
    import pytest
except ModuleNotFoundError:
    print("SKIPPED [1] pytest is missing: './tarvelon install test' installs python3-pytest")
    sys.exit(SKIPPED)


class Skips:
    """Notes whether a test, or a whole file, was skipped, and whether one was left out.

    What cannot hold in a build with sanitizers is marked `uninstrumented` with the reason. Such a build does without
    it: no package is missing there, and nobody could mend it.
    """

    def __init__(self):
        self.any = False
        self.left_out = False

    def pytest_configure(self, config):
        config.addinivalue_line("markers", "uninstrumented(reason): builds with sanitizers do without this test")

    def pytest_collection_modifyitems(self, config, items):
        if "asan" not in os.environ.get("LD_PRELOAD", ""):
            return
        left_out = [item for item in items if item.get_closest_marker("uninstrumented")]
        items[:] = [item for item in items if item not in left_out]
        self.left_out = bool(left_out)
        config.hook.pytest_deselected(items=left_out)

    def pytest_runtest_logreport(self, report):
        self.any |= report.skipped and not hasattr(report, "wasxfail")

    def pytest_collectreport(self, report):
        self.any |= report.skipped


def main(file):
    skips = Skips()
    status = pytest.main(["-q", "-rs", "-p", "no:cacheprovider", file], plugins=[skips])
    passed = status in (pytest.ExitCode.OK, pytest.ExitCode.NO_TESTS_COLLECTED)
    if passed and skips.any:
        return SKIPPED
    return 0 if passed and skips.left_out else status


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
