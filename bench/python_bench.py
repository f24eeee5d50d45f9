"""Measures the Python host, compared with a class that pybind11 binds, in the same run.

A ratio below 1 means that the host is faster. Times are processor times. Absolute times mean little on a
shared machine.
"""

import gc
import os
import platform
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass
from typing import Callable

import K7Q
from _tarvelon_bench import Kind, Kinds, Peer, Peers
from Tarvelon.metamodel.arplatform import common, variant

TEXT = "ApplicationComponentName"  # 24 characters, as in the C++ benchmarks
ELEMENTS = 200_000
VALUES = 100_000
ROUNDS = 9


@dataclass
class Figure:
    name: str
    ours: Callable[[int], None]
    peers: Callable[[int], None]
    aim: float
    times: int = 100_000


def best_times(figure):
    """Nanoseconds for a call of each: the best of several rounds, in which the two alternate."""
    best = [float("inf")] * 2
    for _ in range(ROUNDS):
        for which, run in enumerate((figure.ours, figure.peers)):
            started = time.process_time_ns()
            run(figure.times)
            best[which] = min(best[which], (time.process_time_ns() - started) / figure.times)
    return best


def reading(target):
    def run(times):
        for _ in range(times):
            target.name

    return run


def reading_ours(target):
    def run(times):
        for _ in range(times):
            target.Symbol

    return run


def writing(target):
    def run(times):
        for _ in range(times):
            target.name = TEXT

    return run


def writing_ours(target):
    def run(times):
        for _ in range(times):
            target.Symbol = TEXT

    return run


def constructing_ours(times):
    model = K7Q.Model.create()
    for _ in range(times):
        common.SymbolProps(model, TEXT, TEXT)
    model.close()


def constructing(times):
    for _ in range(times):
        peer = Peer()
        peer.symbol = TEXT
        peer.name = TEXT


def package_of(model, count):
    package = common.Package(model, "Elements")
    elements = package.PackagedElement
    for index in range(count):
        elements.push_back(common.SwAddrMethod(model, f"Element{index}"))
    return package


def iterating_ours(package):
    def run(times):
        for element in package.PackagedElement:
            element.Name

    return run


def iterating(peers):
    def run(times):
        for peer in peers:
            peer.name

    return run


def appending(make, value):
    def run(times):
        sequence = make()
        for _ in range(times):
            sequence.append(value)

    return run


def walking(sequence):
    def run(times):
        for _ in sequence:
            pass

    return run


def filled(sequence, values):
    sequence.extend(values * (VALUES // len(values)))
    return sequence


def calling_ours(target):
    def run(times):
        for _ in range(times):
            target.isvalid()

    return run


def calling(target):
    def run(times):
        for _ in range(times):
            target.half()

    return run


def figures(model):
    symbol = common.SymbolProps(model, TEXT, TEXT)
    peer = Peer()
    peer.name = TEXT
    package = package_of(model, ELEMENTS)
    peers = Peers()
    for index in range(ELEMENTS):
        peers.add(f"Element{index}")
    literals, kinds = list(variant.BindingTimeKind), [Kind.First, Kind.Second, Kind.Third, Kind.Fourth]

    def make():
        return variant.SequenceOfBindingTimeKind.make(model)

    return [
        Figure("read a string property", reading_ours(symbol), reading(peer), 1.0),
        Figure("write a string property", writing_ours(symbol), writing(peer), 1.0),
        Figure("construct with two strings", constructing_ours, constructing, 1.5),
        Figure("iterate 200,000 elements, read a string", iterating_ours(package), iterating(peers), 1.0,
               ELEMENTS),
        Figure("append a value of an enumeration", appending(make, literals[1]), appending(Kinds, kinds[1]),
               1.5, VALUES),
        Figure("iterate 100,000 values of an enumeration", walking(filled(make(), literals)),
               walking(filled(Kinds(), kinds)), 1.5, VALUES),
        Figure("call a method without arguments", calling_ours(symbol), calling(peer), 1.0),
    ]


def milliseconds_of(codes, environment):
    """The shortest elapsed time, in milliseconds, of several runs of an interpreter with each code."""
    best = [float("inf")] * len(codes)
    for _ in range(25):
        for index, code in enumerate(codes):
            started = time.perf_counter()
            subprocess.run([sys.executable, "-c", code], check=True, env=environment)
            best[index] = min(best[index], time.perf_counter() - started)
    return [1000 * each for each in best]


def show_import():
    """Prints the time of an import whose bytecode is cached, as it is from the second import on."""
    with tempfile.TemporaryDirectory() as folder:
        environment = {**os.environ, "PYTHONPYCACHEPREFIX": folder, "PYTHONDONTWRITEBYTECODE": ""}
        bare, full = milliseconds_of(["pass", "import Tarvelon"], environment)
    print(f"import Tarvelon adds {full - bare:.1f} ms to a bare interpreter's {bare:.1f} ms (aim: 9 ms at most)")


def main():
    print(f"Python host against pybind11, Python {platform.python_version()}, {os.cpu_count()} cores")
    print(f"{'':42}{'ours':>10}{'pybind11':>10}{'ratio':>8}{'aim':>6}")
    gc.disable()
    with K7Q.Model.create() as model:
        for figure in figures(model):
            ours, peers = best_times(figure)
            print(f"{figure.name:42}{ours:7.0f} ns{peers:7.0f} ns{ours / peers:8.2f}{figure.aim:6.1f}")
    show_import()


if __name__ == "__main__":
    main()
