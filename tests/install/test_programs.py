"""C++ programs outside of this tree, built with an installation at its first place and after it was moved."""

import shutil
import subprocess
from pathlib import Path

import pytest
from conftest import BUILD, CMAKE, CXX, VERSION

NAMES = ["first_model", "by_name"]
MAJOR, MINOR, PATCH = map(int, VERSION.split("."))


@pytest.fixture(params=["prefix", "moved"])
def place(request):
    return request.getfixturevalue(request.param)


@pytest.fixture
def examples(place, tmp_path):
    return Path(shutil.copytree(place / "share/tarvelon/examples", tmp_path / "examples"))


def printed_in_the_tree(name):
    """The output of the same example, built in this tree."""
    return subprocess.run([BUILD / "bin" / name], check=True, capture_output=True, text=True).stdout


def flags(call, place, *arguments):
    folder = str(place / "lib/pkgconfig")
    return call("pkg-config", *arguments, "tarvelon", PKG_CONFIG_PATH=folder).rstrip("\n")


def test_programs_find_the_package_with_cmake(place, examples, call, tmp_path):
    build = tmp_path / "build"
    call(CMAKE, "-G", "Ninja", "-S", examples, "-B", build, f"-DCMAKE_PREFIX_PATH={place}",
         f"-DCMAKE_CXX_COMPILER={CXX}")
    call(CMAKE, "--build", build, "--target", *NAMES)

    for name in NAMES:
        assert call(build / name) == printed_in_the_tree(name)
        assert str(place) in call("ldd", build / name)


@pytest.mark.parametrize("version", [f"{MAJOR}.{MINOR + 1}", f"{MAJOR}.{MINOR}.{PATCH + 1}", f"{MAJOR + 1}.0"])
def test_another_series_or_a_later_version_is_refused(prefix, call, tmp_path, version):
    (tmp_path / "CMakeLists.txt").write_text(
        f"cmake_minimum_required(VERSION 3.25)\nproject(p LANGUAGES NONE)\nfind_package(Tarvelon {version} REQUIRED)\n")

    error = call(CMAKE, "-G", "Ninja", "-S", tmp_path, "-B", tmp_path / "build", f"-DCMAKE_PREFIX_PATH={prefix}", status=1)

    assert f'compatible with requested version "{version}"' in " ".join(error.split())
    assert f"TarvelonConfig.cmake, version: {VERSION}\n" in error


def test_programs_find_the_package_with_pkg_config(place, examples, call):
    # The shell splits the line again, and the folder has a blank in its name.
    command = '"$0" -std=c++20 -o "$1" "$1.cpp" "-DTARVELON_MODULE_PATH=\\"$2\\"" '
    command += flags(call, place, "--cflags", "--libs")
    module = flags(call, place, "--variable=module").replace("\\", "")

    for name in NAMES:
        call("bash", "-c", command, CXX, examples / name, module)
        assert call(examples / name, LD_LIBRARY_PATH=str(place / "lib")) == printed_in_the_tree(name)


def test_pkg_config_tells_the_version(place, call):
    assert flags(call, place, "--modversion") == VERSION
