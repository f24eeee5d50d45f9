import subprocess
import sys

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import common, variant


@pytest.fixture
def model():
    with K7Q.Model.create() as model:
        yield model


@pytest.fixture
def package(model):
    return common.Package(model, "Brakes")


@pytest.fixture(params=["make", "makeUnique"])
def how(request):
    """The two methods that create a sequence of an enumeration."""
    return request.param


@pytest.fixture
def sequence(model, how):
    """A sequence of an enumeration with its first three literals."""
    sequence = getattr(variant.SequenceOfBindingTimeKind, how)(model)
    sequence += list(variant.BindingTimeKind)[:3]
    return sequence


@pytest.fixture
def python():
    """Runs code in another interpreter; returns its output."""

    def run(code, **options):
        command = [sys.executable, "-c", code]
        done = subprocess.run(command, capture_output=True, text=True, timeout=120, **options)
        assert (done.returncode, done.stderr) == (0, ""), done.stderr
        return done.stdout

    return run
