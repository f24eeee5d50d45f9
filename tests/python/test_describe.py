"""The command `describe`: a page for people, and what it says of unknown names."""

import json
import subprocess
import sys

import pytest

import _tarvelon_host
from Tarvelon import describe

PREFIX = "Tarvelon.metamodel.arplatform"


def output(capsys, *arguments):
    status = describe.main([*arguments])
    printed = capsys.readouterr()
    return status, printed.out, printed.err


def words(page):
    return [line.split() for line in page.splitlines()]


def test_without_a_name_the_root_package_is_shown(capsys):
    status, page, _ = output(capsys)

    assert status == 0
    assert page.startswith(f"{PREFIX}\n\nPackages\n    {PREFIX}.documentation\n    {PREFIX}.common\n")
    assert "\nFunctions\n    MetaPackage() -> K7Q.ImmutablePackage\n" in page


def test_the_page_of_a_package_lists_classes_and_enumerations(capsys):
    _, page, _ = output(capsys, f"{PREFIX}.variant")

    assert "\nClasses and their bases\n    VariationPoint " in page
    assert ["VariationPoint", "common.Identifiable"] in words(page)
    assert "\nEnumerations\n    BindingTimeKind: SystemDesignTime, CodeGenerationTime, " in page
    assert page.endswith("companions: immutable views, sequences, iterators, meta properties\n")


def test_the_page_of_k7q_tells_what_its_classes_are(capsys):
    _, page, _ = output(capsys, "K7Q")

    assert "\nClasses\n" in page
    assert "\n    Model                               A model that can be changed\n" in page


def test_the_page_of_a_class_lists_inherited_properties(capsys):
    _, page, _ = output(capsys, f"{PREFIX}.common.Sd")
    lines = words(page)

    assert "    Sd(K7Q.Model, char vector, char vector)" in page
    assert ["gid", "1", "char", "from", "common.ImmutableSd"] in lines
    assert ["Body", "1", "char", "from", "foundation.ImmutableComment"] in lines
    element = "foundation.ImmutableElement"
    assert ["Owner", "0..1", element, "read-only", "from", element] in lines


def test_the_page_of_an_enumeration_lists_literals_with_values(capsys):
    _, page, _ = output(capsys, f"{PREFIX}.variant.BindingTimeKind")

    assert "\nLiterals\n    SystemDesignTime    0\n    CodeGenerationTime  1\n" in page
    assert ["PreCompileTime", "2"] in words(page) and ["LinkTime", "3"] in words(page)
    assert "    fromString(char) -> variant.BindingTimeKind\n" in page
    assert "    LinkTime()" not in page


def test_the_page_of_a_meta_property_class_lists_owners_and_ids(capsys):
    _, page, _ = output(capsys, f"{PREFIX}.common.SdMetaProperty")

    assert ["Gid", "common.Sd", "1"] in words(page)


@pytest.mark.parametrize("name", [PREFIX, f"{PREFIX}.common", f"{PREFIX}.common.Package", "K7Q", "K7Q.Model"])
def test_json_is_what_the_object_system_says(capsys, name):
    status, text, _ = output(capsys, "--json", name)

    assert status == 0
    assert json.loads(text) == _tarvelon_host.describe(name)


def test_json_of_a_package_holds_its_packages(capsys):
    _, text, _ = output(capsys, "--json", "Tarvelon.metamodel")

    assert {"Tarvelon.metamodel.arplatform", "Tarvelon.metamodel.foundation", "Tarvelon.metamodel.types"} <= {
        package["name"] for package in json.loads(text)["packages"]}


@pytest.mark.parametrize("name, error", [
    (f"{PREFIX}.comon", f"package '{PREFIX}' has no package or class 'comon'; did you mean 'common'?"),
    (f"{PREFIX}.common.Packge",
     f"package '{PREFIX}.common' has no package or class 'Packge'; did you mean 'Package'?"),
    ("common.Packge", f"package '{PREFIX}.common' has no package or class 'Packge'; did you mean 'Package'?"),
    ("nothing.at.all", "no package 'nothing'; without a name, describe lists the packages"),
])
def test_an_unknown_name_ends_with_status_1_and_the_nearest(capsys, name, error):
    status, page, errors = output(capsys, name)

    assert (status, page) == (1, "")
    assert errors == f"tarvelon: {error}\n"


@pytest.mark.parametrize("name, full_name", [
    ("common", f"{PREFIX}.common"), ("common.Package", f"{PREFIX}.common.Package"),
    ("variant.BindingTimeKind", f"{PREFIX}.variant.BindingTimeKind"),
    ("foundation.Package", "Tarvelon.metamodel.foundation.Package"),
])
def test_a_name_may_begin_at_its_package(capsys, name, full_name):
    status, page, _ = output(capsys, name)

    assert status == 0
    assert page.splitlines()[0] == full_name


def test_it_runs_as_a_module():
    command = [sys.executable, "-m", "Tarvelon.describe", "K7Q.Model"]
    done = subprocess.run(command, capture_output=True, text=True, timeout=60)

    assert (done.returncode, done.stderr) == (0, "")
    assert done.stdout.startswith("K7Q.Model\nA model that can be changed\n")


def test_a_reader_that_has_seen_enough_is_no_error():
    line = f"set -o pipefail; {sys.executable} -m Tarvelon.describe --json | head -n 1"
    done = subprocess.run(["bash", "-c", line], capture_output=True, text=True, timeout=60)

    assert (done.returncode, done.stderr) == (0, "")
