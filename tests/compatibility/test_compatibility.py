"""The comparison with a recorded release, for a small package and a library made for this test."""

import copy
import os
import subprocess
import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).parents[2] / "tools"))
import compatibility

DRINK = {
    "name": "make", "kind": "static", "flags": 8, "parameterNames": " aName", "result": "bar.Drink",
    "self": None, "arguments": ["K7Q.Model", "char vector"],
}
CONSTRUCTOR = {**DRINK, "name": "bar.Drink", "kind": "constructor", "parameterNames": ""}
SIZES = [{**DRINK, "name": name, "parameterNames": "", "result": "bar.Size", "arguments": []}
         for name in ("Small", "Big")]
PACKAGE = {
    "name": "bar",
    "functions": [{**DRINK, "name": "open", "result": "void"}],
    "classes": [
        {"name": "Drink", "fullName": "bar.Drink", "description": "", "access": 2,
         "superclasses": ["bar.Thing", "K7Q.Object"],
         "methods": [CONSTRUCTOR, DRINK, {**DRINK, "arguments": []}],
         "properties": [{"id": 3, "name": "Price", "kind": "value", "multiplicity": 1, "mutability": 0,
                         "attributes": 0, "type": "double scalar"}],
         "metaProperties": [{"name": "Price", "owner": "bar.Drink", "id": 3}]},
        {"name": "Size", "fullName": "bar.Size", "description": "An enumeration", "access": 2,
         "superclasses": [], "methods": SIZES, "properties": [], "metaProperties": []},
    ],
    "packages": [{"name": "bar.cellar", "functions": [], "classes": [], "packages": []}],
}


def facts_of(package):
    texts = {}
    compatibility.package_facts(package, texts)
    return texts


@pytest.fixture
def changed():
    return copy.deepcopy(PACKAGE)


@pytest.fixture
def kept(tmp_path, monkeypatch):
    """The folder of the releases, which contains 0.1.0 of the package."""
    monkeypatch.setattr(compatibility, "KEPT", tmp_path)
    monkeypatch.setattr(compatibility, "ROOT", tmp_path)
    compatibility.record("0.1.0", facts_of(PACKAGE))
    return tmp_path


def lost(changed):
    return list(compatibility.broken(facts_of(PACKAGE), facts_of(changed)))


def test_a_text_reads_back_as_it_was_written():
    for facts in facts_of(PACKAGE).values():
        assert compatibility.read(compatibility.write(facts)) == facts


def test_a_text_has_a_line_for_each_fact_below_its_class():
    assert compatibility.write(facts_of(PACKAGE)["bar"]) == """\
open(K7Q.Model, char vector) : void, static, flags 8, names aName
package
Drink:
  .Drink(K7Q.Model, char vector) : .Drink, flags 8, constructor number 0
  base .Thing
  base K7Q.Object
  class : access 2
  make() : .Drink, static, flags 8, names aName
  make(K7Q.Model, char vector) : .Drink, static, flags 8, names aName
  meta Price : .Drink, id 3
  property Price : double scalar, id 3, kind value, multiplicity 1, mutability 0, attributes 0
Size:
  Big() : .Size, static, flags 8
  Small() : .Size, static, flags 8
  class : access 2
  literal Big : 1
  literal Small : 0
"""


def test_what_is_new_breaks_nothing(changed):
    drink = changed["classes"][0]
    drink["methods"].append({**DRINK, "name": "pour"})
    drink["superclasses"].append("bar.Liquid")
    changed["classes"].append({**drink, "name": "Tea", "fullName": "bar.Tea"})
    changed["classes"][1]["methods"].append({**SIZES[0], "name": "Huge"})
    changed["packages"].append({**PACKAGE["packages"][0], "name": "bar.roof"})

    assert lost(changed) == []


@pytest.mark.parametrize(("member", "line"), [
    ("properties", "gone:    bar.Drink: property Price"),
    ("metaProperties", "gone:    bar.Drink: meta Price"),
    ("methods", "gone:    bar.Drink: make()"),
    ("superclasses", "gone:    bar.Drink: base K7Q.Object"),
])
def test_a_record_that_is_gone_is_named(changed, member, line):
    changed["classes"][0][member].pop()

    assert lost(changed) == [line]


def test_a_class_that_is_gone_is_named_once(changed):
    changed["classes"].pop(0)

    assert lost(changed) == ["gone:    bar.Drink: class"]


def test_a_function_and_a_package_that_are_gone_are_named(changed):
    changed["functions"].clear()
    changed["packages"].clear()

    assert lost(changed) == ["gone:    bar: open(K7Q.Model, char vector)", "gone:    bar.cellar"]


def test_a_property_that_says_something_else_is_told_with_both(changed):
    changed["classes"][0]["properties"][0]["multiplicity"] = 0

    was = "double scalar, id 3, kind value, multiplicity 1, mutability 0, attributes 0"
    now = was.replace("multiplicity 1", "multiplicity 0")
    assert lost(changed) == [f"changed: bar.Drink: property Price: was {was}; is {now}"]


def test_a_literal_before_others_changes_their_values(changed):
    changed["classes"][1]["methods"].insert(0, {**SIZES[0], "name": "Tiny"})

    assert lost(changed) == ["changed: bar.Size: literal Small: was 0; is 1",
                             "changed: bar.Size: literal Big: was 1; is 2"]


def test_a_constructor_before_others_changes_their_places(changed):
    constructors = changed["classes"][0]["methods"]
    constructors.insert(1, {**CONSTRUCTOR, "arguments": ["K7Q.Model", "double scalar"]})
    assert lost(changed) == []

    constructors.insert(0, {**CONSTRUCTOR, "arguments": ["K7Q.Model"]})
    made = "bar.Drink: .Drink(K7Q.Model, char vector): was .Drink, flags 8, constructor number 0"
    assert lost(changed) == [f"changed: {made}; is .Drink, flags 8, constructor number 1"]


def test_two_records_that_nothing_tells_apart_are_refused(changed):
    changed["classes"][0]["methods"].append(DRINK)

    with pytest.raises(SystemExit, match="bar.Drink has make\\(K7Q.Model, char vector\\) twice"):
        facts_of(changed)


def test_a_library_promises_the_names_it_defines_but_no_copies(tmp_path):
    (tmp_path / "lib.cpp").write_text("""
        struct Shown { void here(); };
        void Shown::here() {}
        int data = 1;
        template <class T> T copy(T value) { return value; }
        template int copy(int);
        static void hidden() {}
        auto* used = &hidden;
    """)
    subprocess.run([os.environ.get("CXX", "g++"), "-shared", "-fPIC", "-o", tmp_path / "lib.so", tmp_path / "lib.cpp"], check=True)

    names = {name for _, name in compatibility.exported(tmp_path / "lib.so")}
    assert names == {"Shown::here()", "data", "used"}


def test_a_release_holds_within_its_series(kept, changed, capsys):
    changed["classes"][0]["properties"].clear()

    assert compatibility.check("0.1.1", facts_of(changed), compatibility.kept_releases("0.1.1")) == 1

    text = capsys.readouterr().out
    assert "0.1.0: 16 facts, 1 broken by 0.1.1\n  gone:    bar.Drink: property Price\n" in text
    assert "bring them back" in text and "to 0.2.0" in text
    assert "/usr/bin/python3 tools/compatibility.py record build/release" in text


@pytest.mark.parametrize("version", ["0.2.0", "1.0.0", "0.0.9"])
def test_another_series_owes_it_nothing(kept, version):
    assert compatibility.kept_releases(version) == []


def test_a_series_goes_by_the_major_version_from_1_on(kept):
    for name in ["1.2.0", "1.10.0", "2.0.0"]:
        (kept / name).mkdir()

    assert [each.name for each in compatibility.kept_releases("1.10.3")] == ["1.2.0", "1.10.0"]
    assert compatibility.next_series("1.10.3") == "2.0.0"


def test_a_release_that_breaks_the_one_before_is_not_recorded(kept, changed):
    changed["classes"].clear()

    with pytest.raises(SystemExit):
        compatibility.record("0.1.1", facts_of(changed))
    assert not (kept / "0.1.1").exists()


def test_a_version_is_recorded_again_until_it_has_its_tag(kept, changed, monkeypatch):
    changed["packages"].clear()
    compatibility.record("0.1.0", facts_of(changed))
    assert [each.name for each in (kept / "0.1.0").iterdir()] == ["bar.txt"]

    monkeypatch.setattr(compatibility, "is_released", lambda version: True)
    with pytest.raises(SystemExit, match=r"0.1.0 is released \(there is a tag v0.1.0\)"):
        compatibility.record("0.1.0", facts_of(PACKAGE))
