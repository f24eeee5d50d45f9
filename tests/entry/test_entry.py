"""The script at the root: what it passes on, when it builds, and its messages when something is missing."""

import json
import os
import re
import shutil
import subprocess
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
ENTRY = ROOT / "tarvelon"

# A project that builds at once: the build only copies one file to Python's path.
PROJECT = """
cmake_minimum_required(VERSION 3.25)
project(small LANGUAGES NONE)
set(copy "${PROJECT_BINARY_DIR}/python/small.py")
set(source "${PROJECT_SOURCE_DIR}/src/small.py")
add_custom_command(OUTPUT "${copy}" DEPENDS "${source}" VERBATIM
                   COMMAND "${CMAKE_COMMAND}" -E copy "${source}" "${copy}")
add_custom_target(runtime ALL DEPENDS "${copy}")
"""
PRESETS = """{"version": 6, "configurePresets": [
  {"name": "release", "generator": "Ninja", "binaryDir": "${sourceDir}/build/release"}]}"""

# The packages that `bare` below lacks for running, and the line that the user is told to type.
MISSING = "cmake ninja-build libboost-dev libexpat1-dev python3-dev"
CURE = f"apt-get install --no-install-recommends {MISSING}\n"


def call(*arguments, entry=ENTRY, cwd=None, path=None, stdin=""):
    environment = {name: value for name, value in os.environ.items() if name != "CXX"}
    if path:
        environment["PATH"] = f"{path}:{environment.get('PATH', os.defpath)}"
    command = [str(entry)] + [str(argument) for argument in arguments]
    return subprocess.run(command, cwd=cwd, env=environment, input=stdin, capture_output=True, text=True)


def fake(folder, name, body):
    """Writes a program `name` into `folder`, which hides the real program on PATH."""
    program = folder / name
    program.write_text("#!/bin/bash\n" + body)
    program.chmod(0o755)


def script(folder, text):
    file = folder / "a script.py"
    file.write_text(text)
    return file


@pytest.fixture
def small(tmp_path):
    """A small source tree of its own, below a folder with a blank in its name."""
    root = tmp_path / "a tree"
    (root / "src").mkdir(parents=True)
    shutil.copy(ENTRY, root)
    (root / "python").mkdir()
    shutil.copy(ROOT / "python" / "tarvelon.sh", root / "python")
    (root / "CMakeLists.txt").write_text(PROJECT)
    (root / "CMakePresets.json").write_text(PRESETS)
    (root / "src" / "small.py").write_text("value = 1\n")
    script(root, "import small; print(small.value)")
    return root


@pytest.fixture
def bare(tmp_path):
    """A PATH like on a machine with g++ only, and an apt-get that records its calls."""
    folder = tmp_path / "bin"
    folder.mkdir()
    fake(folder, "dpkg-query", "echo installed g++\n")
    fake(folder, "apt-get", f'echo "$@" >>"{folder}/calls"\nexit $(cat "{folder}/status")\n')
    fake(folder, "sudo", '"$@"\n')
    fake(folder, "g++", "exit 1\n")
    (folder / "status").write_text("0")
    return folder


def apt_calls(bare):
    calls = bare / "calls"
    return calls.read_text().splitlines() if calls.exists() else []


def test_arguments_input_and_exit_status_pass_through(tmp_path):
    file = script(tmp_path, "import sys; print(sys.argv[1:], sys.stdin.read()); sys.exit(7)")

    result = call("run", file, "--help", "two words", "", stdin="from the caller")

    assert result.stdout == "['--help', 'two words', ''] from the caller\n"
    assert result.returncode == 7


def test_a_script_is_found_from_the_current_folder(tmp_path):
    script(tmp_path, "import os; print(os.getcwd())")

    assert call("run", "a script.py", cwd=tmp_path).stdout == f"{tmp_path}\n"


def test_the_command_works_through_a_link(tmp_path):
    (tmp_path / "link").symlink_to(ENTRY)

    assert call("run", "-c", "print(1)", entry=tmp_path / "link").stdout == "1\n"


def test_a_file_beside_a_script_hides_no_module_of_pythons_own(tmp_path):
    (tmp_path / "collections.py").write_text("raise AssertionError('not this one')\n")

    result = call("run", script(tmp_path, "import pathlib; from collections import Counter; print(Counter('a'))"))

    assert (result.returncode, result.stdout) == (0, "Counter({'a': 1})\n"), result.stderr


def test_an_example_that_imports_files_beside_it_runs():
    result = call("run", ROOT / "examples" / "brake_by_wire.py", cwd="/")

    assert result.returncode == 0, result.stderr
    assert result.stdout.rstrip().splitlines()[-1].lstrip() in (ROOT / "README.md").read_text()


def test_a_script_imports_what_was_built(tmp_path):
    text = "import Tarvelon, _tarvelon_host as host; print(Tarvelon.__file__); print(host.__file__)"

    result = call("run", script(tmp_path, text))

    built = ROOT / "build/release/python"
    assert [Path(name).is_relative_to(built) for name in result.stdout.splitlines()] == [True, True]


def test_describe_passes_its_arguments_on():
    result = call("describe", "--json", "Tarvelon.metamodel.arplatform.variant")

    assert json.loads(result.stdout)["name"] == "Tarvelon.metamodel.arplatform.variant"


def test_the_shell_has_the_packages_at_hand(tmp_path):
    result = call("shell", stdin="print(K7Q.__name__, variant.BindingTimeKind.__name__)\n", cwd=tmp_path)

    assert "K7Q BindingTimeKind" in result.stdout
    assert result.returncode == 0


def test_a_script_that_is_not_there_is_named():
    result = call("run", "nowhere.py")

    assert (result.returncode, result.stdout) == (1, "")
    assert result.stderr == "tarvelon: no such script: nowhere.py\n"


def test_help_names_every_command():
    text = call("--help").stdout

    modules = [file.stem for file in (ROOT / "python" / "Tarvelon").glob("[a-z]*.py")]
    words = "run test fuzz build bench docs format install --version --no-install --preset".split()
    for name in words + modules:
        assert f"\n  {name} " in text


def test_the_version_is_that_of_the_project():
    version = call("--version").stdout.removeprefix("tarvelon ").rstrip()

    assert f"project(tarvelon VERSION {version} " in (ROOT / "CMakeLists.txt").read_text()


@pytest.mark.parametrize("arguments, meant", [
    (["tset"], "test"), (["bild"], "build"), (["descibe", "common"], "describe"), (["rn"], "run"),
    (["test", "--preset", "relase"], "release"), (["build", "--preset=sanitise"], "sanitize"),
    (["install", "bnch"], "bench"), (["run", "examples/first_modl.py"], "examples/first_model.py"),
])
def test_a_misspelt_word_is_answered_with_the_nearest(arguments, meant):
    result = call(*arguments, cwd=ROOT)

    assert result.returncode != 0 and f"; did you mean '{meant}'?" in result.stderr


@pytest.mark.parametrize("arguments", [["qqqqq"], ["test", "--preset", "qqqqq"], ["install", "qqqqq"],
                                       ["run", "qqqqq.py"], ["run", "qqqqq/qqqqq.py"]])
def test_a_word_that_is_near_none_is_answered_without_a_guess(arguments):
    result = call(*arguments, cwd=ROOT)

    assert result.returncode != 0 and "did you mean" not in result.stderr


@pytest.mark.parametrize("given", ["often", "-1", "build/fuzz/found/gone"])
def test_fuzz_takes_seconds_or_a_file(given):
    result = call("fuzz", given, cwd=ROOT)

    assert (result.returncode, result.stdout) == (1, "")
    assert result.stderr == (f"tarvelon: fuzz: expected a number of seconds or a file to run again, got '{given}'\n")


def test_the_coverage_of_the_fuzzer_takes_no_seconds():
    result = call("fuzz", "--coverage", "5", cwd=ROOT)

    assert (result.returncode, result.stdout) == (2, "")
    assert "fuzz --coverage takes no further arguments" in result.stderr


@pytest.mark.parametrize("arguments", [["tset"], ["run"], ["test", "--preset", "relase"], ["install", "all"],
                                       ["docs", "README.md"]])
def test_misuse_has_exit_status_2_and_prints_nothing_to_stdout(arguments):
    result = call(*arguments)

    assert (result.returncode, result.stdout) == (2, "")
    assert result.stderr.endswith("; see ./tarvelon --help\n")


def test_the_first_run_builds_and_keeps_stdout_clean(small):
    result = call("run", small / "a script.py", entry=small / "tarvelon", cwd="/")

    assert (result.returncode, result.stdout) == (0, "1\n")
    assert "building build/release" in result.stderr


def test_a_run_without_a_change_builds_nothing_and_says_nothing(small, tmp_path):
    call("run", small / "a script.py", entry=small / "tarvelon")
    for tool in ["cmake", "ninja", "dpkg-query"]:
        fake(tmp_path, tool, "exit 1\n")

    result = call("run", small / "a script.py", entry=small / "tarvelon", path=tmp_path)

    assert (result.returncode, result.stdout, result.stderr) == (0, "1\n", "")


def test_a_changed_source_is_built_before_the_script_runs(small):
    call("run", small / "a script.py", entry=small / "tarvelon")
    (small / "src" / "small.py").write_text("value = 22\n")

    result = call("run", small / "a script.py", entry=small / "tarvelon")

    assert result.stdout == "22\n"


def test_a_moved_tree_builds_anew(small, tmp_path):
    call("run", small / "a script.py", entry=small / "tarvelon")
    moved = small.rename(tmp_path / "another place")
    (moved / "src" / "small.py").write_text("value = 22\n")

    result = call("run", moved / "a script.py", entry=moved / "tarvelon")

    assert (result.returncode, result.stdout) == (0, "22\n")
    assert "was configured for another folder" in result.stderr


def test_a_failed_build_is_shown_and_nothing_runs(small):
    (small / "src" / "small.py").unlink()

    result = call("run", small / "a script.py", entry=small / "tarvelon")

    assert (result.returncode, result.stdout) == (1, "")
    assert "small.py" in result.stderr and "the build failed" in result.stderr


def test_a_failed_configuration_is_shown(small):
    (small / "CMakeLists.txt").write_text(PROJECT + 'message(FATAL_ERROR "no such luck")\n')

    result = call("run", small / "a script.py", entry=small / "tarvelon")

    assert (result.returncode, result.stdout) == (1, "")
    assert "no such luck" in result.stderr


def test_only_what_is_missing_is_installed(small, bare):
    result = call("install", "run", entry=small / "tarvelon", path=bare)

    assert result.returncode == 0
    assert result.stderr == f"tarvelon: installing: {MISSING}\n"
    assert len(apt_calls(bare)) == 1
    assert apt_calls(bare)[0].endswith(f" install {MISSING}")


@pytest.mark.parametrize("arguments", ["--no-install install run", "install --no-install run"])
def test_no_install_names_what_is_missing_and_the_cure(small, bare, arguments):
    result = call(*arguments.split(), entry=small / "tarvelon", path=bare)

    assert result.returncode == 1
    assert f"missing: {MISSING}\n" in result.stderr
    assert CURE in result.stderr
    assert apt_calls(bare) == []


def test_without_a_network_the_cure_is_named(small, bare):
    (bare / "status").write_text("100")

    result = call("install", "run", entry=small / "tarvelon", path=bare)

    assert result.returncode == 1
    assert f"could not install: {MISSING}\n" in result.stderr
    assert CURE in result.stderr
    assert [line.split()[-1] for line in apt_calls(bare)] == ["python3-dev", "update"]


@pytest.fixture
def compilers(bare):
    """A machine on which everything is installed, whose PATH has clang++-14 but no g++."""
    for name in ["bash", "cat", "cmake", "dirname", "find", "flock", "grep", "mkdir", "mv", "ninja", "nproc", "python3",
                 "readlink", "rm", "sed"]:
        (bare / name).symlink_to(shutil.which(name))
    fake(bare, "dpkg-query", 'shift 3; printf "installed %s\\n" "$@"\n')
    (bare / "g++").unlink()
    fake(bare, "clang++-14", "exit 1\n")
    return bare


def run_small(small, path, **environment):
    command = [small / "tarvelon", "run", small / "a script.py"]
    result = subprocess.run(command, env={"PATH": str(path), **environment}, capture_output=True, text=True)
    assert result.returncode == 0, result.stderr
    cache = (small / "build" / "release" / "CMakeCache.txt").read_text()
    return re.search(r"^CMAKE_CXX_COMPILER:\w+=(.*)$", cache, re.MULTILINE)[1], result.stderr


def test_clang_compiles_where_there_is_no_gxx_and_that_is_said(small, compilers):
    compiler, said = run_small(small, compilers)

    assert compiler == str(compilers / "clang++-14")
    assert "there is no g++: clang++-14 compiles build/release\n" in said


def test_gxx_compiles_where_both_are(small, compilers):
    fake(compilers, "g++", "exit 1\n")

    compiler, said = run_small(small, compilers)

    assert compiler == str(compilers / "g++")
    assert "clang" not in said


def test_the_compiler_that_cxx_names_stays_with_the_folder(small, compilers):
    fake(compilers, "g++", "exit 1\n")
    run_small(small, compilers, CXX="clang++-14")
    (small / "src" / "small.py").write_text("value = 2\n")

    assert run_small(small, compilers)[0] == str(compilers / "clang++-14")


def test_another_compiler_starts_the_folder_over(small, compilers):
    fake(compilers, "g++", "exit 1\n")
    run_small(small, compilers)
    (small / "src" / "small.py").write_text("value = 2\n")

    compiler, said = run_small(small, compilers, CXX="clang++-14")

    assert compiler == str(compilers / "clang++-14")
    assert f"build/release was configured with another compiler, {compilers}/g++: starting over\n" in said


def test_a_compiler_that_there_is_not_is_named(small, compilers):
    command = [small / "tarvelon", "run", small / "a script.py"]
    result = subprocess.run(command, env={"PATH": str(compilers), "CXX": "icpc"}, capture_output=True, text=True)

    assert (result.returncode, result.stderr) == (
        1, "tarvelon: there is no compiler 'icpc': CXX must be the name of one program\n")


@pytest.mark.parametrize("arguments, asked", [("install run", "g++"), ("test --sanitize", "g++"),
                                              ("build --preset clang", "clang-14")])
def test_a_compiler_is_asked_for_where_it_compiles(small, compilers, arguments, asked):
    (compilers / "clang++-14").unlink()
    fake(compilers, "dpkg-query", "")

    result = subprocess.run([small / "tarvelon", "--no-install", *arguments.split()], env={"PATH": str(compilers)},
                            capture_output=True, text=True)

    missing = re.search(r"missing: (.*)\n", result.stderr)[1].split()
    assert [name for name in missing if name in ("g++", "clang-14")] == [asked]


def test_running_asks_for_no_test_packages(bare):
    call("install", "run", path=bare)
    running = apt_calls(bare)[0]
    call("install", "test", path=bare)
    testing = apt_calls(bare)[1]

    assert "libgtest-dev" not in running and "python3-pytest" not in running
    assert "libgtest-dev" in testing and "python3-pytest" in testing
