"""The brake example leaves no memory behind when it is built, reported and closed repeatedly."""

import os
import subprocess
import sys
from pathlib import Path

import pytest

EXAMPLES = Path(__file__).parents[2] / "examples"

# Measures all memory that the allocator has given out. Python's own memory pools are disabled.
ROUNDS = """
import contextlib, ctypes, gc, io, sys
sys.path.append(sys.argv[1])
import brake_by_wire

# The walk through the whole model takes most of the time and makes nothing.
brake_by_wire.report_counts = lambda root: None

class Figures(ctypes.Structure):
    _fields_ = [(name, ctypes.c_size_t) for name in (
        "arena", "ordblks", "smblks", "hblks", "hblkhd", "usmblks", "fsmblks", "uordblks", "fordblks", "keepcost")]

mallinfo = ctypes.CDLL(None).mallinfo2
mallinfo.restype = Figures

def bytes_in_use():
    gc.collect()
    figures = mallinfo()
    return figures.uordblks + figures.hblkhd

def rounds(count):
    for _ in range(count):
        with contextlib.redirect_stdout(io.StringIO()) as report:
            brake_by_wire.main()
        assert "VehicleComputer runs brake_assistant" in report.getvalue()
    return bytes_in_use()

print(rounds(10), rounds(90))
"""


@pytest.mark.uninstrumented("the sanitizer has an allocator of its own")
def test_a_hundred_vehicles_leave_as_much_as_ten():
    run = subprocess.run([sys.executable, "-c", ROUNDS, str(EXAMPLES)], env={**os.environ, "PYTHONMALLOC": "malloc"},
                         check=True, capture_output=True, text=True)
    after_ten, after_all = map(int, run.stdout.split())
    assert abs(after_all - after_ten) <= after_ten / 100
