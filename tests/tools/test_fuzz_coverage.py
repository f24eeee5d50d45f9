"""tools/fuzz_coverage.py: the coverage of the fuzzers, counted by folder."""

import importlib.util
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


def test_the_coverage_of_the_fuzzer_is_counted_by_folder():
    module = importlib.util.spec_from_file_location("fuzz_coverage", ROOT / "tools" / "fuzz_coverage.py")
    coverage = importlib.util.module_from_spec(module)
    module.loader.exec_module(coverage)

    def file(name, reached, everything):
        counts = {"covered": reached, "count": everything}
        return {"filename": str(ROOT / name), "summary": {kind: counts for kind in coverage.KINDS}}

    found = coverage.sums([file("src/tarvelon/platform/files/Ids.cpp", 3, 4),
                           file("src/tarvelon/platform/files/Ids.h", 1, 4),
                           file("src/tarvelon/binding/Methods.cpp", 2, 2),
                           file("src/tarvelon/collections/ListQImpl.h", 0, 9),
                           file("tests/world/World.cpp", 0, 9)], ROOT)

    assert [line.split()[:4] for line in coverage.table(found)[1:]] == [
        ["binding", "2/2", "100.0", "%"], ["platform/files", "4/8", "50.0", "%"], ["total", "6/10", "60.0", "%"]]
