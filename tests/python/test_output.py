"""The output of the commands to a terminal with few characters, to a closed pipe, and to a full disk."""

import json
import os
import subprocess
import sys

import pytest

from Tarvelon.metamodel.arplatform import common, variant


@pytest.fixture
def file(model, package, tmp_path):
    package.PackagedElement.append(variant.SystemConst(model, "Räder\u20ac\U0001f600"))
    package.PackagedElement.append(common.Package(model, "7"))
    model.save(tmp_path / "brakes.xmi")
    return str(tmp_path / "brakes.xmi")


def run(*arguments, **options):
    command = [sys.executable, "-P", "-m", *arguments]
    return subprocess.run(command, stderr=subprocess.PIPE, **{"stdout": subprocess.PIPE, **options})


COMMANDS = ["Tarvelon.show", "Tarvelon.validate", "Tarvelon.describe"]


def target(command, file):
    return "common.Package" if command == "Tarvelon.describe" else file


@pytest.mark.parametrize("encoding, shown", [
    ("ascii", rb"R\xe4der\u20ac\U0001f600"), ("latin-1", b"R\xe4der\\u20ac\\U0001f600"),
    ("utf-8", "Räder\u20ac\U0001f600".encode())])
@pytest.mark.parametrize("command", COMMANDS[:2])
def test_what_a_terminal_has_no_character_for_is_escaped(command, encoding, shown, file):
    done = run(command, file, env={**os.environ, "PYTHONIOENCODING": encoding})

    assert shown in done.stdout and done.stderr == b""


@pytest.mark.parametrize("encoding", ["ascii", "latin-1", "utf-8"])
@pytest.mark.parametrize("command", COMMANDS)
def test_json_is_json_in_every_encoding(command, encoding, file):
    done = run(command, "--json", target(command, file), env={**os.environ, "PYTHONIOENCODING": encoding})

    assert ("R\u00e4der\u20ac\U0001f600" in str(json.loads(done.stdout.decode(encoding)))) == (
        command != "Tarvelon.describe")


@pytest.mark.parametrize("command", COMMANDS)
def test_a_disk_that_is_full_is_said_and_exits_1(command, file):
    with open("/dev/full", "wb") as full:
        done = run(command, target(command, file), stdout=full)

    assert done.returncode == 1
    assert done.stderr == b"tarvelon: the output cannot be written: No space left on device\n"


@pytest.mark.parametrize("command", COMMANDS)
def test_a_reader_that_has_seen_enough_is_no_error(command, file):
    reading, writing = os.pipe()
    os.close(reading)
    done = run(command, target(command, file), stdout=writing)
    os.close(writing)

    assert done.returncode == (1 if command == "Tarvelon.validate" else 0)
    assert done.stderr == b""


def test_a_script_of_rules_that_ends_the_program_is_not_taken_for_a_model_without_problems(file, tmp_path):
    (tmp_path / "rules.py").write_text("raise SystemExit(0)\n")
    done = run("Tarvelon.validate", "--rules", str(tmp_path / "rules.py"), file)

    assert done.returncode == 1 and done.stdout == b""
    assert done.stderr.decode() == (f"tarvelon: the script {tmp_path}/rules.py has ended the program with exit(0); "
                                    "a script with rules must not call exit()\n")


def test_a_rule_may_speak_of_half_of_a_surrogate_pair(file, tmp_path):
    (tmp_path / "rules.py").write_text("import K7Q\nfrom Tarvelon.metamodel.arplatform import variant\n"
                                       "K7Q.rule('ours', variant.SystemConst)(lambda each: 'half \\ud800')\n")
    done = run("Tarvelon.validate", "--rules", str(tmp_path / "rules.py"), file)

    assert b"  error: half \\ud800 [ours]\n" in done.stdout
