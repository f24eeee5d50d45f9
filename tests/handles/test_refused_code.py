"""Code with native handles that must not compile, and the compiler's messages."""

import os
import subprocess
from pathlib import Path

import pytest

SOURCES = Path(__file__).resolve().parents[2] / "src"
HEAD = """
#include "tarvelon/platform/model/api/Metamodel.h"
using namespace Tarvelon::metamodel::arplatform;
using common::ImmutablePackage;
using common::Package;
"""


def compile_errors(code):
    command = [os.environ.get("CXX", "g++"), "-std=c++20", "-fsyntax-only", "-I", SOURCES, "-x", "c++", "-"]
    done = subprocess.run(command, input=HEAD + code, capture_output=True, text=True)
    assert (done.returncode == 0) == (done.stderr == ""), done.stderr
    return done.stderr


def test_code_that_reads_through_immutable_handles_compiles():
    assert compile_errors("""
ImmutablePackage view(const Package& package) { return package; }
ImmutablePackage same(const ImmutablePackage& view) { return ImmutablePackage::cast(view); }
Package narrow(const K7Q::Object& object) { return Package::cast(object); }
int count(const ImmutablePackage& view) { return view.get<"ReferenceBase">().size(); }
""") == ""


@pytest.mark.parametrize("code, sentence", [
    ("Package thaw(const ImmutablePackage& view) { return Package::cast(view); }", "use ImmutableX::cast()"),
    ("Package thaw(const K7Q::ImmutableObject& view) { return Package::cast(view); }", "use ImmutableX::cast()"),
    ("Package thaw(const K7Q::ObjectHandle& handle) { return Package::cast(handle); }", "use ImmutableX::cast()"),
])
def test_a_handle_that_only_reads_is_refused_with_a_sentence(code, sentence):
    assert sentence in compile_errors(code)
