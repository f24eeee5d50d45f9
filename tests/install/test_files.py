"""The files of an installation; each must find the others relative to its own place."""

import re
import subprocess

import pytest
from conftest import BUILD, CXX, SOURCE, VERSION, files_below, install

MAJOR, MINOR, _ = VERSION.split(".")
SERIES = f"0.{MINOR}" if MAJOR == "0" else MAJOR

LIBRARIES = ["hx", "k7q", "native", "ruvo"]
MODULES = ["mm_arplatform_mi.so", "mm_foundation_mi.so"]
COMPONENTS = ["libraries", "development", "python", "documentation"]


def libraries(prefix):
    return [each for each in prefix.rglob("*.so*") if not each.is_symlink()]


def naming(prefix, place):
    """The files below a prefix that contain the path `place`."""
    return [name for name in files_below(prefix) if str(place).encode() in (prefix / name).read_bytes()]


def dynamic_section(library):
    command = ["readelf", "--dynamic", library]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def test_a_library_has_its_version_and_the_links_of_its_series(prefix):
    for name in LIBRARIES:
        base = prefix / "lib" / f"libtarvelon_{name}.so"
        assert base.readlink().name == f"{base.name}.{SERIES}"
        assert base.with_name(f"{base.name}.{SERIES}").readlink().name == f"{base.name}.{VERSION}"
        assert f"soname: [{base.name}.{SERIES}]" in dynamic_section(base)


def test_a_module_is_one_file_under_the_name_that_hosts_open(prefix):
    for name in MODULES:
        assert not (prefix / "lib" / name).is_symlink()
        assert f"soname: [{name}]" in dynamic_section(prefix / "lib" / name)
    assert [each.name for each in sorted((prefix / "lib").glob("mm_*"))] == MODULES


def test_no_file_names_the_tree_it_was_built_in(prefix):
    assert naming(prefix, SOURCE) == naming(prefix, BUILD) == []


def test_every_path_to_a_library_begins_at_the_file_itself(prefix):
    for library in libraries(prefix):
        found = re.findall(r"(?:RUNPATH|RPATH).*\[(.*)\]", dynamic_section(library))
        assert found and all(each.startswith("$ORIGIN") for each in found), (library, found)


def test_every_library_finds_the_others_after_a_move(moved, call):
    for library in libraries(moved):
        lines = [line for line in call("ldd", library).splitlines() if "tarvelon" in line or "mm_" in line]
        assert all(f"=> {moved}/" in line for line in lines), lines


def test_every_header_finds_what_it_includes(prefix, call, tmp_path):
    headers = prefix / "include"
    names = files_below(headers)
    assert all(name.startswith("tarvelon/") for name in names)
    (tmp_path / "all.cpp").write_text("".join(f'#include "{name}"\n' for name in names))

    call(CXX, "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Werror", "-I", headers, "all.cpp")

    assert {"tarvelon/boundary/k7q/Object.h", "tarvelon/platform/model/api/Metamodel.h",
            "tarvelon/arplatform/common/Table.h"} <= {*names}


def test_the_packages_are_there_as_they_stand_in_the_tree_with_their_stubs(prefix):
    places = [SOURCE / "python" / "Tarvelon", SOURCE / "python" / "K7Q", *(BUILD / "python").glob("*-stubs")]

    expected = [f"{place.name}/{name}" for place in places for name in files_below(place) if "__pycache__" not in name]

    packages = prefix / "lib/python3/dist-packages"
    installed = [name for name in files_below(packages) if not name.startswith("_tarvelon_host.")]
    assert [name for name in installed if "__pycache__" not in name] == sorted(expected)


def test_the_packages_come_with_their_bytecode(prefix, call):
    packages = prefix / "lib/python3/dist-packages"
    code = "import sys, Tarvelon; print(sys.modules['K7Q._files'].__loader__, Tarvelon.diff.__code__.co_filename)"
    log = call("sh", "-c", f"/usr/bin/python3 -v -c \"{code}\" 2>&1", PYTHONPATH=str(packages))
    read = [line for line in log.splitlines() if "code object from" in line and str(packages) in line]
    assert read and all(".pyc" in line for line in read), read
    assert str(packages / "Tarvelon" / "_diff.py") in log


def test_documents_and_examples_are_there(prefix):
    for name in ["README.md", "CHANGELOG.md", "LICENSE", "docs/python.md", "docs/compatibility.md"]:
        assert (prefix / "share/doc/tarvelon" / name).read_text() == (SOURCE / name).read_text()
    patterns = ["*.cpp", "*.h", "*.py", "*.arxml"]
    examples = {each.name for pattern in patterns for each in (SOURCE / "examples").glob(pattern)}
    assert examples | {"CMakeLists.txt"} == {*files_below(prefix / "share/tarvelon/examples")}


@pytest.mark.parametrize("folder", ["usr", "opt/tarvelon"])
def test_a_stage_holds_all_and_is_named_nowhere(prefix, tmp_path, folder):
    install(f"/{folder}", DESTDIR=str(tmp_path))

    assert [f"{folder}/{name}" for name in files_below(prefix)] == files_below(tmp_path)
    assert naming(tmp_path, tmp_path) == []


def test_every_file_belongs_to_one_component(prefix, tmp_path):
    for component in COMPONENTS:
        install(tmp_path / component, "--component", component)

    assert sorted(name for each in COMPONENTS for name in files_below(tmp_path / each)) == files_below(prefix)
