"""Python scripts with an installation, run by the command `tarvelon` and by the interpreter alone."""

import json

import pytest
from conftest import BUILD, PYTHON, SOURCE, VERSION, install

PACKAGES = "lib/python3/dist-packages"

# Records every file that the process opens or maps while it creates a model.
SCRIPT = """
import sys
opened = []
sys.addaudithook(lambda event, arguments: event == "open" and opened.append(str(arguments[0])))
from Tarvelon.metamodel.arplatform import Factory
import Tarvelon
with Factory.createNewModel() as model:
    print(Factory.createNewFactory(model).create("common.Package", sys.argv[1]).Name, Tarvelon.__version__)
opened += [line.split(maxsplit=5)[5].strip() for line in open("/proc/self/maps") if line.count("/")]
print(*opened, sep="\\n")
"""


@pytest.fixture
def command(moved):
    return moved / "bin" / "tarvelon"


@pytest.fixture
def script(tmp_path):
    file = tmp_path / "a script.py"
    file.write_text(SCRIPT)
    return file


def check(output, prefix):
    """Checks the script's output: the result, and that no file of the tree was opened."""
    result, *files = output.splitlines()
    assert result == f"Brakes {VERSION}"
    assert f"{prefix}/lib/mm_arplatform_mi.so" in {each.replace(f"{PACKAGES}/../../", "lib/") for each in files}
    assert [each for each in files if each.startswith((str(SOURCE), str(BUILD)))] == []


def test_the_command_runs_a_script(command, moved, script, call):
    check(call(command, "run", script, "Brakes"), moved)


def test_the_command_runs_through_a_link(command, moved, script, call, tmp_path):
    link = tmp_path / "tarvelon"
    link.symlink_to(command)

    check(call(link, "run", script, "Brakes"), moved)


def test_the_interpreter_alone_runs_a_script(moved, script, call):
    check(call(PYTHON, script, "Brakes", PYTHONPATH=str(moved / PACKAGES)), moved)


def test_every_example_runs(moved, call):
    for example in sorted((SOURCE / "examples").glob("*.py")):
        call(moved / "bin/tarvelon", "run", moved / "share/tarvelon/examples" / example.name)


def test_input_and_exit_status_pass_through(command, call):
    assert call(command, "run", "-", stdin="import K7Q; print(K7Q.models())") == "[]\n"
    call(command, "run", "-c", "raise SystemExit(7)", status=7)


def test_describe_prints_what_is_published(command, call):
    assert "\nTarvelon.metamodel.arplatform.common.Package\n" in call(command, "describe", "common.Package")
    assert json.loads(call(command, "describe", "--json", "variant"))["name"] == "Tarvelon.metamodel.arplatform.variant"


def test_the_shell_has_the_packages_at_hand(command, call):
    text = "print(K7Q.__name__, variant.BindingTimeKind.__name__)\n"

    assert "K7Q BindingTimeKind" in call(command, "shell", stdin=text)


def test_help_names_every_module_that_is_a_command(command, moved, call):
    text = call(command, "--help")

    for file in (moved / PACKAGES / "Tarvelon").glob("[a-z]*.py"):
        assert f"\n  {file.stem} " in text


@pytest.mark.parametrize("name", ["build", "test", "bench", "format", "docs", "install"])
def test_what_belongs_to_a_source_tree_says_so(command, call, name):
    expected = f"tarvelon: {name} works only in a source tree, as ./tarvelon {name}; see tarvelon --help\n"

    assert call(command, name, status=2) == expected


def test_a_command_that_is_misspelt_is_refused_with_the_one_that_is_meant(command, call):
    assert call(command, "descrbe", status=2) == (
        "tarvelon: there is no command 'descrbe'; did you mean 'describe'?; see tarvelon --help\n")


@pytest.mark.parametrize("name", ["_factory", "__init__", "metamodel", "../K7Q/__init__"])
def test_an_unknown_command_is_refused(command, call, name):
    assert call(command, name, status=2) == f"tarvelon: there is no command '{name}'; see tarvelon --help\n"


def test_a_command_that_is_copied_away_says_what_is_missing(command, call, tmp_path):
    (tmp_path / "tarvelon").write_bytes(command.read_bytes())

    error = call("bash", tmp_path / "tarvelon", "run", "-", status=1)

    assert error == (f"tarvelon: the Python packages are missing: expected them in {tmp_path}/../{PACKAGES}; "
                     "install Tarvelon again\n")


def test_a_copy_without_its_module_names_the_file_and_the_cure(call, tmp_path):
    prefix = tmp_path / "prefix"
    install(prefix)
    (prefix / "lib/mm_arplatform_mi.so").unlink()

    error = call(prefix / "bin/tarvelon", "run", "-c", "import Tarvelon", status=1)

    assert "/mm_arplatform_mi.so: the library of the metamodel is missing" in error
    assert error.endswith(", or install Tarvelon again\n")
