"""Random programs that mix edits, transactions, history, listeners, files, copies, views, iterators, rules
and threads.

TARVELON_MIXED=600 runs them for ten minutes from a new seed. TARVELON_MIXED_SEED=7 runs one seed again. A
failing program is shrunk and printed; run(PROGRAM) in this file repeats it.
"""

import os
import sys
import tempfile
import time
import traceback
from pathlib import Path

import mixed_reads
import mixed_world
import pytest

import K7Q
from Tarvelon.metamodel.arplatform import common

LENGTH = 120
PROGRAMS = 60  #: without TARVELON_MIXED


def run(program):
    """Runs a program in this process."""
    sys.unraisablehook = lambda each: None if isinstance(each.exc_value, ValueError) else sys.__unraisablehook__(each)
    K7Q.rule("mixed-names", common.Package)(mixed_reads.broken_rule)
    with tempfile.TemporaryDirectory() as folder:
        mixed_world.World(Path(folder)).run(program)


def outcome(program):
    """Runs the program in another process. Returns "" if it succeeds, otherwise the last line of its
    output."""
    reader, writer = os.pipe()
    child = os.fork()
    if child == 0:
        os.dup2(writer, 2)
        status = 1
        try:
            run(program)
            status = 0
        except BaseException:
            traceback.print_exc()
        finally:
            sys.stderr.flush()
            os._exit(status)
    os.close(writer)
    with open(reader, encoding="utf-8", errors="replace") as stream:
        said = stream.read()
    _, status = os.waitpid(child, 0)
    return f"{said}\nended with {os.waitstatus_to_exitcode(status)}" if status else ""


def shortest(program):
    """The shortest version of the program that still fails, found by removing halves, quarters and so on."""
    part = len(program) // 2
    while part:
        at = 0
        while at < len(program):
            shorter = program[:at] + program[at + part:]
            if outcome(shorter):
                program = shorter
            else:
                at += part
        part //= 2
    return program


def require_well(seed):
    program = mixed_world.make_program(seed, LENGTH)
    if not outcome(program):
        return
    program = shortest(program)
    pytest.fail(f"seed {seed}, {len(program)} of {LENGTH} operations:\n"
                + "\n".join(f"    {each!r}," for each in program) + "\n" + outcome(program)[-3000:], pytrace=False)


def seeds():
    chosen = os.environ.get("TARVELON_MIXED_SEED")
    return [int(chosen)] if chosen else range(PROGRAMS)


@pytest.mark.parametrize("seed", seeds())
def test_a_program_of_everything_does_what_a_plain_model_does(seed):
    require_well(seed)


if "TARVELON_MIXED" in os.environ:  # for so many seconds
    def test_many_programs_do_what_a_plain_model_does():
        end = time.monotonic() + float(os.environ["TARVELON_MIXED"])
        seed = first = int.from_bytes(os.urandom(4), "little")
        print(f"from seed {seed} on")
        while time.monotonic() < end:
            require_well(seed)
            seed += 1
        print(f"{seed - first} programs of {LENGTH} operations")


@pytest.mark.parametrize("name", mixed_world.OPERATIONS)
def test_each_operation_is_reached(name):
    programs = [mixed_world.make_program(seed, LENGTH) for seed in range(PROGRAMS)]
    assert any(name == each for program in programs for each, _ in program)
