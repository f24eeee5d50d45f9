"""The output of `./tarvelon show`."""

import json
import subprocess
import sys

import pytest

from Tarvelon import show
from Tarvelon.metamodel.arplatform import common, variant


@pytest.fixture
def brakes(model, package):
    package.category = "STANDARD"
    package.adminData = common.AdminData(model)
    inner = common.Package(model, "Inner")
    package.PackagedElement += [variant.SystemConst(model, "Wheels"), inner]
    values = variant.SystemConstValueSet(model, "Values")
    values.SysConstValue.append(variant.SystemConstValue(model, 4, package.PackagedElement[0]))
    inner.PackagedElement.append(values)
    return package


def shown(model, *arguments):
    return show.report(model, show.parse(["brakes.xmi", *arguments]))


def test_a_tree_with_values_and_references(brakes, model):
    assert shown(model, "--depth", "-1") == """\
Brakes (common.Package)
  category = STANDARD
  adminData: (common.AdminData)
  PackagedElement: Wheels (variant.SystemConst)
  PackagedElement: Inner (common.Package)
    PackagedElement: Values (variant.SystemConstValueSet)
      SysConstValue: (variant.SystemConstValue)
        Value = 4.0
        SysConst = /Brakes/Wheels"""


def test_a_tree_ends_at_the_depth_that_is_asked_for(brakes, model):
    assert shown(model, "--depth", "1") == """\
Brakes (common.Package)
  category = STANDARD
  adminData: (common.AdminData)
  PackagedElement: Wheels (variant.SystemConst)
  PackagedElement: Inner (common.Package)
    ... 2 below"""
    assert shown(model, "--depth", "0").splitlines()[-1] == "  ... 5 below"


@pytest.mark.parametrize("path, first", [
    ("/Brakes/Inner", "Inner (common.Package)"), ("Brakes/Wheels", "Wheels (variant.SystemConst)"),
    ("/Brakes.adminData", "(common.AdminData)"),
    ("/Brakes/Inner/Values.SysConstValue[0]", "(variant.SystemConstValue)"),
])
def test_one_object_by_its_path(brakes, model, path, first):
    assert shown(model, path).splitlines()[0] == first


def test_json_of_the_model_and_of_one_object(brakes, model):
    assert shown(model, "--json") == model.to_json()
    assert shown(model, "--json", "/Brakes/Inner") == brakes.PackagedElement[1].to_json()


def test_an_object_below_one_without_a_name_is_found_by_names_alone():
    record = {"class": "a.A", "Name": "A", "x": {"class": "a.X", "y": [{"class": "a.B", "Name": "B"}]}}

    assert show.find([record], "/A/B") == {"class": "a.B", "Name": "B"}
    assert [path for path, _ in show.paths(record)] == ["/A", "/A.x", "/A/B"]


def test_a_path_that_there_is_not(brakes, model):
    assert shown(model, "/Brakes/Nothing") is None


def test_an_empty_model(model):
    assert shown(model) == "no objects"


@pytest.fixture
def file(brakes, model, tmp_path):
    model.save(str(tmp_path / "brakes.xmi"))
    return str(tmp_path / "brakes.xmi")


def test_the_command_prints_a_file(file, model):
    command = [sys.executable, "-P", "-m", "Tarvelon.show", file, "--json"]
    printed = subprocess.run(command, capture_output=True, text=True, check=True).stdout

    assert json.loads(printed)["objects"] == model.to_dict()["objects"]


def test_a_path_that_the_file_has_not_exits_1(file, capsys):
    assert show.main([file, "/Brakes/Nothing"]) == 1
    assert capsys.readouterr().err == (
        f"tarvelon: {file} has no object /Brakes/Nothing; without a path, show prints what there is\n")


def test_a_file_that_there_is_not_exits_1(capsys, tmp_path):
    assert show.main([str(tmp_path / "none.xmi")]) == 1
    assert "none.xmi" in capsys.readouterr().err
