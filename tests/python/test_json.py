"""Models as JSON."""

import json
import math

import pytest

import K7Q
from Tarvelon.metamodel import foundation
from Tarvelon.metamodel.arplatform import behavior, common, variant


def test_an_object_has_its_class_and_its_values_and_holds_others(model, package):
    package.category = "STANDARD"
    package.adminData = common.AdminData(model)
    package.PackagedElement.append(variant.SystemConst(model, "Wheels"))

    assert package.to_json() == """{
 "class": "common.Package",
 "Name": "Brakes",
 "category": "STANDARD",
 "adminData": {
  "class": "common.AdminData"
 },
 "PackagedElement": [
  {
   "class": "variant.SystemConst",
   "Name": "Wheels"
  }
 ]
}"""
    assert package.to_dict() == json.loads(package.to_json())


def test_everything_may_stand_on_one_line(package):
    assert package.to_json(indent=None) == '{"class": "common.Package", "Name": "Brakes"}'
    assert package.to_json(indent=0) == '{\n"class": "common.Package",\n"Name": "Brakes"\n}'


def test_values_of_each_kind(model):
    assert behavior.TimingEvent(model, 0.5, "T").to_dict()["Period"] == 0.5
    assert common.ApplicationError(model, -7, "E").to_dict()["errorCode"] == -7
    runnable = behavior.Runnable(model, "step", "Step")
    runnable.canBeInvokedConcurrently = False
    assert runnable.to_dict()["canBeInvokedConcurrently"] is False
    access = behavior.FlowDataAccess(model)
    access.Kind = behavior.DataAccessKind.ExplicitWrite
    assert access.to_dict()["Kind"] == "ExplicitWrite"
    condition = variant.PostBuildVariantCondition(model)
    condition.ValueVariationPoint += ["a", "b", "a"]
    assert condition.to_dict()["ValueVariationPoint"] == ["a", "b", "a"]


@pytest.mark.parametrize("number", [
    0.0, 1.0, -2.5, 1e22, 1e-7, 5e-324, 1.7976931348623157e308, 0.1, 2.0 ** 53])
def test_a_number_is_read_back_as_it_was(model, number):
    read = foundation.NumericalValueSpecification(model, number).to_dict()["Value"]

    assert read == number and type(read) is float


def test_a_number_that_json_has_not_is_a_text(model):
    values = [foundation.NumericalValueSpecification(model, each) for each in (math.inf, -math.inf, math.nan)]

    assert [each.to_dict()["Value"] for each in values] == ["Infinity", "-Infinity", "NaN"]


@pytest.mark.parametrize("text", [
    "a\"b\\c/d", "\n\t\r\x7f", "äöü €", "\U0001f600", "x" * 10_000, "\u2028"])
def test_a_text_is_read_back_as_it_was(model, text):
    made = foundation.Comment(model, text)

    assert made.to_dict()["Body"] == text
    assert made.to_json() == json.dumps(made.to_dict(), ensure_ascii=False, indent=1)


def test_what_is_unset_empty_or_computed_is_absent(model, package):
    package.category = ""
    package.PackagedElement.append(common.Package(model, "Inner"))
    package.PackagedElement[0].destroy()

    assert package.to_dict() == {"class": "common.Package", "Name": "Brakes"}


def test_a_reference_is_a_qualified_name(model, package):
    constant = variant.SystemConst(model, "Wheels")
    value = variant.SystemConstValue(model, 4, constant)
    package.PackagedElement.append(constant)

    assert value.to_dict()["SysConst"] == "/Brakes/Wheels"
    assert "id" not in package.to_dict()["PackagedElement"][0]


def test_what_is_referred_to_and_has_no_name_has_an_id(model, package):
    package.adminData = common.AdminData(model)
    comments = [foundation.Comment(model) for _ in range(2)]
    comments[1].AnnotatedElement += [package.adminData, comments[0], package]

    shown = model.to_dict()["objects"]
    leads_to = ["/Brakes.adminData", "foundation.Comment#1", "/Brakes"]

    assert shown[0]["adminData"]["id"] == "/Brakes.adminData"
    assert shown[1]["id"] == "foundation.Comment#1" and "id" not in shown[0] and "id" not in shown[2]
    assert shown[2]["AnnotatedElement"] == comments[1].to_dict()["AnnotatedElement"] == leads_to


def test_of_equal_names_each_that_is_referred_to_has_an_id(model, package):
    package.PackagedElement += [variant.SystemConst(model, "Same") for _ in range(2)]
    comment = foundation.Comment(model)
    comment.AnnotatedElement.append(package.PackagedElement[1])

    shown = model.to_dict()["objects"]

    assert shown[0]["PackagedElement"][1]["id"] == "/Brakes.PackagedElement[1]"
    assert shown[1]["AnnotatedElement"] == ["/Brakes.PackagedElement[1]"]


def test_a_model_has_its_uri_and_what_nothing_holds(model):
    assert model.to_json() == '{\n "objects": []\n}'
    model.setUri("car.model")
    common.Package(model, "A")
    common.Package(model, "B")

    assert model.to_dict() == {"uri": "car.model", "objects": [
        {"class": "common.Package", "Name": "A"}, {"class": "common.Package", "Name": "B"}]}
    assert model.frozen().to_json() == model.to_json()


def test_a_chain_of_a_hundred_thousand_is_written_without_recursion(model):
    top = last = common.Package(model, "P")
    for _ in range(100_000):
        below = common.Package(model, "P")
        last.PackagedElement.append(below)
        last = below

    assert top.to_json(None).count('"class"') == 100_001


def test_what_is_gone_is_refused(model):
    gone = common.Package(model, "Gone")
    gone.destroy()
    closed = model.clone()
    closed.close()

    for each in (gone, closed):
        with pytest.raises(K7Q.Exception, match="Cannot access NULL ref"):
            each.to_json()


@pytest.mark.parametrize("indent", ["  ", -1, 17, 1.0])
def test_an_indent_that_is_no_number_of_blanks_is_refused(package, indent):
    with pytest.raises(K7Q.WrongType) as raised:
        package.to_json(indent=indent)

    assert str(raised.value) == (
        f"to_json: expected an indent from 0 to 16, or None for one line, got {indent!r}")
