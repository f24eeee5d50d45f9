"""Runs one file of pytest tests for ctest: run_pytest.py FILE.

pytest succeeds even if tests were skipped, and ctest does not see that. Here the exit status tells ctest that
tests were skipped, and the summary gives the reasons. So a successful run has run all tests.
"""

import os
import sys

# The exit status for skipped tests: SKIP_RETURN_CODE of ctest.
SKIPPED = 77

try:
    import pytest
except ModuleNotFoundError:
    print("SKIPPED [1] pytest is missing: './tarvelon install test' installs python3-pytest")
    sys.exit(SKIPPED)


class Skips:
    """Records whether a test or a whole file was skipped, and whether tests were left out.

    Tests that cannot run in a build with sanitizers are marked `uninstrumented`, with the reason. Such a
    build leaves them out instead of skipping them: no package is missing, so nobody could do anything about
    it.
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
