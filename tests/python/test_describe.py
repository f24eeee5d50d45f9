"""The command `describe`: pages for users, and errors for unknown names."""

import json
import keyword
import subprocess
import sys
from pathlib import Path

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
    assert page.startswith("The AUTOSAR metamodel: ")
    assert f"\n\n{PREFIX}\n\nPackages\n    {PREFIX}.documentation\n        Texts for people: " in page
    assert f"\n    {PREFIX}.common\n        What all other packages build upon: " in page
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

    assert "    Sd(model: K7Q.Model, gid: char vector, value: char vector)\n" in page
    assert ["gid", "1", "char"] in lines
    assert ["Body", "1", "char", "from", "foundation.Comment"] in lines
    element = "foundation.Element"
    assert ["Owner", "0..1", element, "read-only", "from", element] in lines


@pytest.mark.parametrize("name, beginning", [
    ("behavior.Runnable", "A piece of a component's behavior that the run-time environment starts on events. "),
    ("behavior.ImmutableRunnable", "A piece of a component's behavior "),
    ("behavior.IrvKind", "Whether an inter-runnable variable is accessed implicitly, "),
    ("behavior", "What goes on inside a component: "),
    ("foundation.ValueSpecification", "The base of all values that a model states, such as initial values."),
    ("Tarvelon.metamodel.types", "Data types: "),
    ("Tarvelon.metamodel.arplatform", "The AUTOSAR metamodel: "),
])
def test_a_page_begins_with_the_purpose(capsys, name, beginning):
    _, page, _ = output(capsys, name)

    assert page.startswith(beginning)


def test_the_page_of_a_package_tells_what_each_class_is_in_a_sentence(capsys):
    _, page, _ = output(capsys, "behavior")

    assert ("    Runnable                      common.Identifiable\n"
            "        A piece of a component's behavior that the run-time environment starts on events\n") in page
    assert "    IrvKind: Implicit, Explicit\n        Whether an inter-runnable variable is accessed" in page


def test_every_package_class_and_enumeration_has_a_purpose():
    described = _tarvelon_host.describe("Tarvelon.metamodel")["packages"]
    described += next(each for each in described if each["name"] == PREFIX)["packages"]
    names = [package["name"] for package in described]
    for package in described:
        known = {each["name"] for each in package["classes"]}
        names += [each["fullName"] for each in package["classes"]
                  if each["description"] == describe.ENUMERATION or f"{each['name']}MetaProperty" in known]
    purposes = [_tarvelon_host.documentation(name)["purpose"] for name in names]

    assert len([name for name in names if name.startswith(PREFIX)]) == 14 + 284 + 28
    assert len(names) == 14 + 284 + 28 + 2 + 53 + 11  # with foundation and types
    assert all(purpose.endswith(".") for purpose in purposes)
    assert len(set(purposes)) == len(purposes)


@pytest.mark.parametrize("name, constructors", [
    (f"{PREFIX}.behavior.Runnable", [["model"], ["model", "symbol", "name"]]),
    (f"{PREFIX}.instance.FlowDataPortInstanceRef", [["model"], ["model", "dataElements", "port"]]),
    ("Tarvelon.metamodel.foundation.Package", [["model"], ["model", "name"]]),
    (f"{PREFIX}.behavior.Event", []),
    (f"{PREFIX}.behavior.ImmutableRunnable", []),
    (f"{PREFIX}.behavior.IrvKind", []),
    (f"{PREFIX}.behavior", []),
    ("K7Q.Model", []),
    ("nothing.at.all", []),
])
def test_documentation_names_the_arguments_of_constructors(name, constructors):
    assert _tarvelon_host.documentation(name)["constructors"] == constructors


@pytest.mark.parametrize("name", [
    "", ".", PREFIX + ".", PREFIX + ".behavior.", PREFIX + ".behavior.Immutable", PREFIX + "x", "K7Q.Model",
    PREFIX + ".behavior.Runnable.symbol", PREFIX + ".behavior.SequenceOfRunnable", "Tarvelon.metamodel",
])
def test_what_is_nobodys_name_has_no_purpose(name):
    assert _tarvelon_host.documentation(name)["purpose"] == ""


def test_the_names_of_arguments_are_as_many_as_the_arguments_and_no_keywords():
    counted = 0
    for package in _tarvelon_host.describe("Tarvelon.metamodel.arplatform")["packages"]:
        for record in package["classes"]:
            made = [each["arguments"] for each in record["methods"] if each["kind"] == "constructor"]
            names = _tarvelon_host.documentation(record["fullName"])["constructors"]
            assert [len(each) for each in names] == [len(each) for each in made], record["fullName"]
            assert all(name.isidentifier() and not keyword.iskeyword(name) for each in names for name in each)
            counted += len(names)

    assert counted == 408


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
    ("Runnable", "no package 'Runnable'; did you mean 'behavior.Runnable'?"),
    ("Runable", "no package 'Runable'; did you mean 'behavior.Runnable'?"),
    ("qqqqqqqq", "no package 'qqqqqqqq'; without a name, describe lists the packages"),
    ("common.Qqqqqqqq", f"package '{PREFIX}.common' has no package or class 'Qqqqqqqq'; without a name, describe "
                        "lists the packages"),
    ("common.Package.category", "'common.Package.category' is not a package or class; describe 'common.Package', "
                                "which has 'category'"),
    ("common.Package.nmae", "'common.Package.nmae' is not a package or class; describe 'common.Package', which has "
                            "'Name'"),
    ("common.Package.qqqqqqqq", "'common.Package.qqqqqqqq' is not a package or class; describe 'common.Package'"),
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
    assert full_name in page.splitlines()[:4]


def test_it_runs_as_a_module():
    command = [sys.executable, "-m", "Tarvelon.describe", "K7Q.Model"]
    done = subprocess.run(command, capture_output=True, text=True, timeout=60)

    assert (done.returncode, done.stderr) == (0, "")
    assert done.stdout.startswith("K7Q.Model\nA model that can be changed\n")


def test_a_reader_that_has_seen_enough_is_no_error():
    line = f"set -o pipefail; {sys.executable} -m Tarvelon.describe --json | head -n 1"
    done = subprocess.run(["bash", "-c", line], capture_output=True, text=True, timeout=60)

    assert (done.returncode, done.stderr) == (0, "")


def test_the_purposes_stand_in_the_platform_and_not_in_the_module():
    text = b"A section that only one runnable at a time can be in."
    libraries = Path(_tarvelon_host.__file__).parents[1] / "lib"

    assert text in (libraries / "libtarvelon_native.so").read_bytes()
    assert text not in (libraries / "mm_arplatform_mi.so").read_bytes()
