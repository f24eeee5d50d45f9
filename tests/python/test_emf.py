"""EMF, a foreign program, reads the Ecore file and a model and must find the same contents."""

import importlib.util
import os
import re
import shutil
import subprocess
import sys
from collections import Counter
from pathlib import Path

import pytest

import K7Q
import _tarvelon_host
from Tarvelon.metamodel.arplatform import Factory, behavior, common, variant

ROOT = Path(__file__).resolve().parents[2]
JARS = [Path("/usr/share/java") / f"eclipse-emf-{name}.jar" for name in ("common", "ecore", "ecore-xmi")]

pytestmark = pytest.mark.skipif(
    not shutil.which("javac") or not all(jar.exists() for jar in JARS),
    reason="javac or libeclipse-emf-ecore-xmi-java is missing: './tarvelon install emf' installs them")


def java(*command):
    # A library that is preloaded for our sanitizers must not be loaded into Java.
    environment = {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}
    done = subprocess.run(command, capture_output=True, text=True, timeout=250, env=environment)
    assert (done.returncode, done.stderr) == (0, "")
    return done.stdout


@pytest.fixture(scope="module")
def reader(tmp_path_factory):
    """Reads a model with EMF. Returns the lines of its output, by their first word."""
    folder = tmp_path_factory.mktemp("emf")
    jars = ":".join(map(str, JARS))
    java("javac", "-cp", jars, "-d", folder, ROOT / "tests" / "emf" / "ReadModel.java")
    _tarvelon_host.saveEcore(folder / "tarvelon.ecore")

    def run(model, *copy):
        printed = java("java", "-cp", f"{jars}:{folder}", "ReadModel", folder / "tarvelon.ecore", model, *copy)
        lines = {}
        for line in printed.splitlines():
            kind, _, rest = line.partition(" ")
            lines.setdefault(kind, []).append(rest)
        return lines

    return run


@pytest.fixture
def brakes(tmp_path):
    """The file of the brake example."""
    sys.path.append(str(ROOT / "examples"))
    try:
        import brake_by_wire
        import brake_components
    finally:
        sys.path.pop()
    with Factory.createNewModel() as model:
        brake_by_wire.build(brake_components.maker(model))
        model.save(tmp_path / "brakes.xmi")
    return tmp_path / "brakes.xmi"


def test_the_metamodel_and_the_braking_function_are_right_to_emf(reader, brakes):
    lines = reader(brakes)
    assert lines["metamodel"] == ["OK"]
    assert "error" not in lines and "warning" not in lines
    # The only unset required reference of the example, which its own report mentions too.
    assert [re.sub(r"'[^']*#(\w+)@[^']*'", r"\1", fault) for fault in lines.get("fault", [])] == [
        "The required feature 'DataElements' of TriggerReceiverPortInfo must be set"]


def test_emf_finds_the_same_objects_and_values(reader, brakes):
    lines = reader(brakes)
    text = brakes.read_text(encoding="utf-8")
    ours = Counter(re.findall(r'xmi:id="([^"]*)"', text))
    counts = dict(each.split(" ") for each in lines["count"])
    assert sum(map(int, counts.values())) == len(ours) == 451
    assert int(counts["behavior.Runnable"]) == len(re.findall("<Runnables ", text))
    values = {tuple(each.split(" ")[:2]): each.split(" ")[2:] for each in lines["value"]}
    assert {identity for identity, _ in values} <= set(ours)
    attributes = re.findall(r'^ +(\w+)="', text, re.MULTILINE)
    assert sum(len(each) for each in values.values()) > len(attributes) > 500


def test_emf_reads_every_kind_of_value_as_we_wrote_it(reader, tmp_path):
    text = ' <a> & "b"\t\n\r ä \U0001F600 '
    with K7Q.Model.create() as model:
        package = common.Package(model, text)
        value = variant.SystemConstValue(model)
        value.ValueVariationPoint.extend([text, "second"])
        event = behavior.TimingEvent(model, 0.1, "Event")
        runnable = behavior.Runnable(model, "step", "Step")
        runnable.canBeInvokedConcurrently = True
        runnable.Events.append(event)
        event.StartOnEvent = runnable
        root = common.AUTOSAR(model)
        root.ArxmlFilePackaging = common.ArxmlFilePackagingKind.SingleFile
        error = common.ApplicationError(model, -7, "Error")
        model.save(tmp_path / "a.xmi")
        assert package and error
    lines = reader(tmp_path / "a.xmi")
    found = {}
    for each in lines["value"]:
        _, name, *values = each.split(" ")
        found.setdefault(name, []).append(
            [re.sub(r"(\\u[0-9A-F]{4})+", lambda run: run[0].encode().decode("unicode_escape").encode(
                "utf-16", "surrogatepass").decode("utf-16"), value) for value in values])
    assert [text] in found["Name"]
    assert found["ValueVariationPoint"] == [[text, "second"]]
    assert found["Period"] == [["0.1"]]
    assert found["canBeInvokedConcurrently"] == [["true"]]
    assert found["errorCode"] == [["-7"]]
    assert found["ArxmlFilePackaging"] == [["SingleFile"]]
    assert len(found["StartOnEvent"]) == len(found["Events"]) == 1


def test_what_emf_saves_again_loads_but_for_the_format(reader, brakes, tmp_path):
    reader(brakes, tmp_path / "copy.xmi")
    copy = K7Q.Model.load(tmp_path / "copy.xmi", lenient=True)
    assert [each.text.partition(":")[0] for each in copy.problems] == ["the root element has no tarvelon"]
    copy.save(tmp_path / "again.xmi")
    before, after = reader(brakes), reader(tmp_path / "again.xmi")
    assert (after["count"], after["value"]) == (before["count"], before["value"])
