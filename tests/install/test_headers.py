"""The installed headers in a foreign program: equal names in both, and unsuitable compilers and options."""

import shutil
import subprocess

import pytest
from conftest import CXX, files_below

ENTRIES = ["platform/files/Files.h", "platform/ruvo/ObjectSystem.h", "platform/model/api/Metamodel.h",
           "platform/model/api/Reflection.h"]


@pytest.fixture(scope="module")
def names(prefix):
    """The headers' paths below include/tarvelon. Some of them, like types/Table.h, also exist in other
    programs."""
    return files_below(prefix / "include/tarvelon")


@pytest.mark.parametrize("order", ["own first", "own last", "quoted"])
def test_a_header_of_the_same_name_is_the_tools_for_the_tool_and_the_librarys_for_the_library(prefix, names, call,
                                                                                             tmp_path, order):
    own = tmp_path / "own"
    for number, name in enumerate(names):
        (own / name).parent.mkdir(parents=True, exist_ok=True)
        (own / name).write_text(f"#define OWN_{number}\n")
    ours = "".join(f"#include <tarvelon/{name}>\n" for name in ENTRIES)
    taken = "".join(f'#ifdef OWN_{n}\n#error "the library took {name} of the tool"\n#endif\n'
                    for n, name in enumerate(names))
    tools = "".join(f'#include "{name}"\n#ifndef OWN_{n}\n#error "the tool got another {name}"\n#endif\n'
                    for n, name in enumerate(names))
    (tmp_path / "tool.cpp").write_text(ours + taken + tools)
    folders = ["-I", own, "-I", prefix / "include"]

    call(CXX, "-std=c++20", "-fsyntax-only", *{"own first": folders, "own last": folders[2:] + folders[:2],
                                               "quoted": ["-iquote", own, *folders[2:]]}[order], "tool.cpp")

    assert {"types/Table.h", "boundary/k7q/Object.h", "platform/model/api/Metamodel.h"} <= {*names}


def first_error(compiler, prefix, source, *options):
    """The first error of a program with that line of source. The program must not compile."""
    command = [compiler, "-std=c++20", "-Wfatal-errors", *options, "-I", prefix / "include", "-x", "c++", "-"]
    done = subprocess.run(command, input=source, capture_output=True, text=True)
    assert done.returncode != 0
    return next(line for line in done.stderr.splitlines() if "error: " in line).split("error: ")[1].strip('"')


def test_every_header_refuses_what_does_not_fit(prefix, names):
    for name in names:
        error = first_error(CXX, prefix, f"#include <tarvelon/{name}>", "-E", "-fno-rtti")
        assert error.endswith("Tarvelon asks objects for their types: compile without -fno-rtti."), name


@pytest.fixture(params=["g++", "clang++-14"])
def compiler(request):
    if not shutil.which(request.param):
        package = {"g++": "g++", "clang++-14": "clang-14"}[request.param]
        pytest.skip(f"{package} is missing: './tarvelon install ci' installs it")
    return request.param


REFUSED = {
    "-fno-rtti": "Tarvelon asks objects for their types: compile without -fno-rtti.",
    "-fno-exceptions": "Tarvelon throws exceptions: compile without -fno-exceptions.",
    "-std=c++17": "Tarvelon is written in C++20: compile with -std=c++20 or later.",
    "-D_GLIBCXX_DEBUG": "-D_GLIBCXX_DEBUG changes std::vector, which Tarvelon's functions return: "
                        "use -D_GLIBCXX_ASSERTIONS.",
    "-D_GLIBCXX_USE_CXX11_ABI=0": "Tarvelon takes std::string of the C++11 ABI: compile without "
                                  "-D_GLIBCXX_USE_CXX11_ABI=0.",
    "-D_LIBCPP_VERSION=14000": "Tarvelon's libraries are built with libstdc++: compile without -stdlib=libc++.",
}


@pytest.mark.parametrize("option", REFUSED)
def test_an_option_that_does_not_fit_the_libraries_is_refused_in_a_sentence(compiler, prefix, option):
    for name in ENTRIES:
        error = first_error(compiler, prefix, f"#include <tarvelon/{name}>", "-fsyntax-only", option)
        assert error.endswith(REFUSED[option])


def test_a_program_with_checked_containers_runs(compiler, prefix, call, tmp_path):
    example = prefix / "share/tarvelon/examples/first_model.cpp"
    libraries = [f"-ltarvelon_{name}" for name in ("native", "k7q", "ruvo", "hx")]
    call(compiler, "-std=c++20", "-D_GLIBCXX_ASSERTIONS", "-I", prefix / "include", example, "-o", tmp_path / "program",
         "-L", prefix / "lib", *libraries, "-l:mm_foundation_mi.so", "-l:mm_arplatform_mi.so",
         f"-Wl,-rpath,{prefix / 'lib'}")

    assert "\nwheels: 4\n" in call(tmp_path / "program")
