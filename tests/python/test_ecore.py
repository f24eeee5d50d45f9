"""The metamodel as an Ecore file: it must agree with the metamodel."""

import subprocess
import sys
import xml.etree.ElementTree as xml
from collections import Counter

import pytest

from Tarvelon import ecore
from Tarvelon.metamodel import arplatform, foundation, types

XSI = "{http://www.w3.org/2001/XMLSchema-instance}type"


@pytest.fixture(scope="module")
def root(tmp_path_factory):
    path = tmp_path_factory.mktemp("ecore") / "tarvelon.ecore"
    assert ecore.main([str(path)]) == 0
    return xml.parse(path).getroot()


@pytest.fixture(scope="module")
def packages(root):
    """All packages with classifiers, by their paths in the file."""
    found = {}

    def visit(package, path):
        for below in package.findall("eSubpackages"):
            visit(below, f"{path}/{below.get('name')}")
        found[path] = package

    visit(root, "#/")
    return {path: package for path, package in found.items() if package.find("eClassifiers") is not None}


@pytest.fixture(scope="module")
def classes(packages):
    """All classes by their paths."""
    return {f"{path}/{each.get('name')}": each for path, package in packages.items()
            for each in package.findall("eClassifiers") if each.get(XSI) == "ecore:EClass"}


def features(classes, path):
    """The own and inherited features of a class, without duplicates."""
    found, waiting = {}, [path]
    while waiting:
        name = waiting.pop()
        for feature in classes[name].findall("eStructuralFeatures"):
            found[name, feature.get("name")] = feature
        waiting += classes[name].get("eSuperTypes", "").split()
    return found


def described():
    """The descriptions of all packages with classes."""
    root = arplatform.MetaPackage()
    return [foundation.MetaPackage(), types.MetaPackage(), *root.subPackages()]


def test_all_packages_classes_and_enumerations_are_there(packages, classes):
    assert len(packages) == 16
    for package in described():
        short = package.name()
        path = next(each for each in packages if each.endswith(f"/{short}"))
        for cls in package.classes():
            abstract = classes[f"{path}/{cls.name()}"].get("abstract") == "true"
            assert abstract == cls.isAbstract(), cls.name()
        literals = {each.get("name"): [literal.get("name") for literal in each.findall("eLiterals")]
                    for each in packages[path].findall("eClassifiers") if each.get(XSI) == "ecore:EEnum"}
        assert len(literals) == len(list(package.dataTypes()))


def test_every_package_has_a_namespace_of_its_own(root, packages):
    spaces = [package.get("nsURI") for package in root.iter("eSubpackages")]
    assert len(set(spaces)) == len(spaces)
    assert packages["#//arplatform/behavior"].get("nsURI") == "urn:tarvelon:metamodel:arplatform.behavior"
    assert packages["#//foundation"].get("nsURI") == "urn:tarvelon:metamodel:foundation"
    assert len({package.get("nsPrefix") for package in packages.values()}) == len(packages)


def test_no_class_has_two_features_of_one_name_whatever_their_case(classes):
    for path in classes:
        names = Counter(name.lower() for _, name in features(classes, path))
        assert {name: count for name, count in names.items() if count > 1} == {}, path


def test_every_reference_leads_to_a_class_or_enumeration(packages, classes):
    known = set(classes) | {f"{path}/{each.get('name')}" for path, package in packages.items()
                            for each in package.findall("eClassifiers")}
    for path, cls in classes.items():
        assert set(cls.get("eSuperTypes", "").split()) <= known, path
        for feature in cls.findall("eStructuralFeatures"):
            kind = feature.get("eType")
            assert kind in known or kind.startswith("ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//E")


def test_a_feature_says_what_its_property_is(classes):
    runnable = {name: dict(feature.attrib) for (_, name), feature
                in features(classes, "#//arplatform/behavior/Runnable").items()}
    reference = {XSI: "ecore:EReference", "upperBound": "-1"}
    assert runnable["dataAccess"] == reference | {
        "name": "dataAccess", "eType": "#//arplatform/behavior/FlowDataAccess", "containment": "true"}
    assert runnable["Events"] == reference | {
        "name": "Events", "eType": "#//arplatform/behavior/Event",
        "eOpposite": "#//arplatform/behavior/Event/StartOnEvent"}
    assert runnable["symbol"]["lowerBound"] == "1"
    assert runnable["symbol"]["defaultValueLiteral"] == ""
    assert runnable["canBeInvokedConcurrently"]["defaultValueLiteral"] == "false"
    assert runnable["OwnedElement"]["derived"] == runnable["OwnedElement"]["volatile"] == "true"
    assert "containment" not in runnable["OwnedElement"]


def test_a_redefinition_has_no_feature_of_its_own(classes):
    names = {name for _, name in features(classes, "#//arplatform/port/ServerPort")}
    assert "Type" in names and "Interface" not in names
    assert {"dataTypeMap", "OwnedElement"} <= {
        name for _, name in features(classes, "#//arplatform/common/DataTypeMappingSet")}


def test_what_cannot_be_written_ends_with_a_message(tmp_path, capsys):
    assert ecore.main([str(tmp_path / "gone" / "a.ecore")]) == 1
    assert capsys.readouterr().err.startswith(f"tarvelon: cannot save '{tmp_path}/gone/a.ecore': ")


def test_the_command_runs_as_a_module(tmp_path):
    command = [sys.executable, "-P", "-m", "Tarvelon.ecore", str(tmp_path / "a.ecore")]
    assert subprocess.run(command, timeout=60).returncode == 0
    assert (tmp_path / "a.ecore").read_text().startswith("<?xml")
