"""A foreign project that adds the sources with add_subdirectory(): see the folder `parent`."""

import json
import re
import shlex
from pathlib import Path

import pytest
from conftest import CMAKE, CXX, SOURCE

PARENT = Path(__file__).resolve().parent / "parent"

# The cache variables that a build of the library may add to its parent: its own, those of its dependencies
# and of installation.
OURS = re.compile(r"_?(TARVELON|tarvelon|Boost|boost|EXPAT|PC_EXPAT|pkgcfg|__pkg|PKG_CONFIG|FIND_PACKAGE_MESSAGE|_GNUInstallDirs|prefix_result|"
                  r"CMAKE_INSTALL_)")


@pytest.fixture(scope="module")
def targets(prefix):
    """The targets that an installation defines."""
    text = (prefix / "lib/cmake/Tarvelon/TarvelonTargets.cmake").read_text()
    return re.findall(r"^add_library\((Tarvelon::\w+)", text, re.MULTILINE)


@pytest.fixture(scope="module")
def configure(tmp_path_factory, clean_call):
    def run(*definitions):
        build = tmp_path_factory.mktemp("parent")
        clean_call(CMAKE, "-G", "Ninja", "-S", PARENT, "-B", build, f"-DTARVELON_SOURCE={SOURCE}",
                   f"-DCMAKE_CXX_COMPILER={CXX}", "-DCMAKE_BUILD_TYPE=Release", *definitions)
        return build

    return run


@pytest.fixture(scope="module")
def build(configure, targets):
    return configure(f"-DPARENT_TARGETS={';'.join(targets)}")


@pytest.fixture(scope="module")
def commands(build):
    """The compile options of each file, by its name."""
    return {entry["file"]: shlex.split(entry["command"])
            for entry in json.loads((build / "compile_commands.json").read_text())}


def of_library(commands):
    return {file: options for file, options in commands.items() if file.startswith(f"{SOURCE}/src/")}


def test_the_names_of_an_installed_copy_are_there(build, targets):
    assert {"Tarvelon::native", "Tarvelon::host", "Tarvelon::module", "Tarvelon::boundary"} <= {*targets}
    assert build.is_dir()


def test_neither_tests_nor_python_nor_examples_are_built(build, commands, clean_call):
    ours = {str(Path(file).relative_to(SOURCE)).split("/")[0] for file in commands if not file.startswith(str(PARENT))}
    assert ours == {"src", "examples"}
    assert [file for file in commands if "/examples/" in file] == [
        f"{SOURCE}/examples/{name}.cpp" for name in ("first_model", "by_name")]
    assert not (build / "tarvelon/python").exists()
    assert "Total Tests: 0" in clean_call("ctest", "-N", "--test-dir", build)


def test_nothing_of_the_library_is_installed(build, tmp_path, clean_call):
    clean_call(CMAKE, "--install", build, "--prefix", tmp_path / "prefix")

    assert not (tmp_path / "prefix").exists()


def test_the_parents_files_are_compiled_with_the_parents_options(commands):
    own = commands[str(PARENT / "OwnHeaders.cpp")]

    options = [each for each in own if each.startswith(("-W", "-f", "-m", "-D"))]
    assert options == ["-DPARENTS_OWN", "-DNDEBUG", "-Werror", "-Wundef"]
    assert "-std=gnu++20" in own


def test_the_library_looks_into_no_folder_of_the_parent(commands):
    library = of_library(commands)

    assert len(library) > 100
    for file, options in library.items():
        assert not [each for each in options if str(PARENT) in each or each == "-DPARENTS_OWN"], file


def test_the_parents_settings_change_no_file_of_the_library(build, commands):
    ninja = (build / "build.ninja").read_text()

    assert "libtarvelon_native.so" in ninja and "mm_arplatform_mi.so" in ninja
    assert "libtarvelon_natived.so" not in ninja and "mm_arplatform_mid.so" not in ninja
    assert [file for file in commands if "Unity" in file and "tarvelon.dir" in file] == []
    assert all(options[options.index("-Werror") + 1:].count("-Wno-error") == 1
               for options in of_library(commands).values())


def test_a_header_of_the_parent_is_not_taken_for_one_of_the_library(build, clean_call):
    clean_call(CMAKE, "--build", build, "--target", "own_headers")


def variables(build):
    names = re.findall(r"^([\w.+-]+):", (build / "CMakeCache.txt").read_text(), re.MULTILINE)
    return {name for name in names if not name.endswith(("-ADVANCED", "-STRINGS"))}


def test_the_cache_of_the_parent_gets_no_names_but_the_librarys(build, configure):
    without = configure("-DPARENT_WITHOUT_TARVELON=ON")

    assert sorted(name for name in variables(build) - variables(without)
                  if not OURS.match(name) and name not in ("PARENT_TARGETS",)) == []


def test_what_needs_the_python_host_says_so_where_it_is_left_out(tmp_path, clean_call):
    error = clean_call(CMAKE, "-G", "Ninja", "-S", SOURCE, "-B", tmp_path, "-DTARVELON_PYTHON=OFF",
                       f"-DCMAKE_CXX_COMPILER={CXX}", status=1)

    assert "TARVELON_TESTS and TARVELON_BENCH run the Python host: set TARVELON_PYTHON to ON as well" in (
        " ".join(error.split()))
