"""The output of `./tarvelon validate` for users and for programs, and its exit status."""

import json
from typing import NamedTuple

import pytest

import K7Q
from Tarvelon import validate
from Tarvelon.metamodel.arplatform import common, interface, variant


class Misfit(NamedTuple):
    line: int
    column: int
    text: str

    def __str__(self):
        return f"line {self.line}, column {self.column}: {self.text}"


@pytest.fixture
def faulty(model):
    """A package with three errors and a warning."""
    package = common.Package(model, "Brakes")
    package.PackagedElement.extend([variant.SystemConst(model, name) for name in ("Axles", "AXLES", "7")])
    package.PackagedElement.append(common.Package(model))
    package.PackagedElement.append(interface.ModeSwitchInterface(model, "Modes"))
    return package


PAGE = """\
/Brakes/AXLES
  error: Name: the name 'AXLES' differs from 'Axles' of the same namespace only in case, which \
AUTOSAR ignores; rename one of the two [name-case]
/Brakes/7
  error: Name: expected a letter, then letters, digits and underscores, 128 at most; found "7"; rename it, and \
store the readable text in longName [short-name]
/Brakes.PackagedElement[3]
  error: Name: is required and not set; give the Package a short name [short-name]
/Brakes/Modes
  warning: ModeGroup: is not set, and without it the interface switches no modes; set it to a \
ModeDeclarationGroupElement [incomplete]
"""


def test_a_page_groups_the_problems_by_object(faulty):
    assert "\n".join(validate.page("b.xmi", (), faulty.validate())) == PAGE + "b.xmi: 3 errors, 1 warning"


def test_what_does_not_fit_in_the_file_comes_first_and_is_an_error():
    misfits = (Misfit(3, 7, "no property 'Nmae'"),)

    assert validate.page("b.xmi", misfits, []) == [
        "b.xmi: error: line 3, column 7: no property 'Nmae'", "b.xmi: 1 error, 0 warnings"]
    assert validate.count_errors(misfits, []) == 1


def test_a_model_without_problems_says_so():
    assert validate.page("b.xmi", (), []) == ["b.xmi: no problems"]


def test_a_record_holds_all_but_the_object(faulty):
    record = json.loads(json.dumps(validate.record("b.xmi", (Misfit(1, 2, "x"),), faulty.validate())))

    assert record["file"] == "b.xmi"
    assert record["misfits"] == [{"line": 1, "column": 2, "text": "x"}]
    assert [each["rule"] for each in record["problems"]] == ["name-case", "short-name", "short-name", "incomplete"]
    assert set(record["problems"][0]) == {"path", "property", "rule", "severity", "message"}


def test_a_saved_model_is_validated(faulty, tmp_path, capsys):
    path = tmp_path / "brakes.xmi"
    faulty.getModel().save(path)

    assert validate.main([str(path)]) == 1
    assert capsys.readouterr().out == f"{PAGE}{path}: 3 errors, 1 warning\n"


def test_warnings_alone_are_no_failure(model, tmp_path, capsys):
    path = tmp_path / "loose.xmi"
    loose = variant.SystemConst(model, "Loose")
    model.save(path)

    assert validate.main(["--json", str(path)]) == 0
    assert [each["rule"] for each in json.loads(capsys.readouterr().out)["problems"]] == ["no-owner"]
    assert loose.Name == "Loose"


def test_a_script_brings_its_rules(model, tmp_path, capsys):
    path, rules = tmp_path / "brakes.xmi", tmp_path / "rules.py"
    kept = common.Package(model, "Brakes")
    model.save(path)
    rules.write_text("import K7Q\nfrom Tarvelon.metamodel.arplatform import common\n"
                     "K7Q.rule('ours', common.Package)(lambda package: 'not ours')\n")
    try:
        assert validate.main(["--rules", str(rules), str(path)]) == 1
    finally:
        K7Q.forget_rule("ours")
    assert "  error: not ours [ours]" in capsys.readouterr().out.splitlines()
    assert kept.Name == "Brakes"


def test_a_file_that_is_not_there_is_named(tmp_path, capsys):
    assert validate.main([str(tmp_path / "nowhere.xmi")]) == 1
    output = capsys.readouterr()
    assert output.out == "" and output.err.startswith("tarvelon: ") and "nowhere.xmi" in output.err
